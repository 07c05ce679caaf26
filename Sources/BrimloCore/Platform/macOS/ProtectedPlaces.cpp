#include "BrimloCore/Platform/ProtectedPlaces.h"

#include <array>

namespace Brimlo::Platform {

namespace {

constexpr std::array<std::string_view, 16> kWhole{
    "~/.config",
    "~/.local/share",
    "~/.local/bin",
    "~/bin",
    "~/Dropbox",
    "~/Nextcloud",
    "~/OneDrive",
    "~/VirtualBox VMs",
    "~/Library/Containers",
    "~/Library/Group Containers",
    "~/Library/LaunchAgents",
    "~/Library/Fonts",
    "~/Library/Messages",
    "~/Library/Application Support/MobileSync",
    "~/Library/Application Support/Code",
    "~/Library/Application Support/Steam",
};

constexpr std::array<std::string_view, 34> kNever{
    "~/Library/Accounts",
    "~/Library/Calendars",
    "~/Library/Cookies",
    "~/Library/HomeKit",
    "~/Library/IdentityServices",
    "~/Library/Mail",
    "~/Library/Messages/chat.db",
    "~/Library/Reminders",
    "~/Library/Safari",
    "~/Library/Application Support/AddressBook",
    "~/Library/Application Support/CallHistoryDB",
    // Stores of passwords.
    "~/Library/Application Support/1Password",
    "~/Library/Application Support/Bitwarden",
    "~/Library/Application Support/Bitwarden CLI",
    "~/Library/Application Support/KeePassXC",
    "~/Library/Application Support/keepassxc",
    "~/Library/Application Support/Enpass",
    "~/Library/Application Support/gopass",
    // Mail and chats.
    "~/.thunderbird",
    "~/.purple",
    "~/.irssi",
    "~/.weechat",
    "~/Library/Thunderbird",
    "~/Library/Application Support/Mailspring",
    "~/Library/Application Support/protonmail",
    // Money.
    "~/.bitcoin",
    "~/.electrum",
    "~/.ethereum/keystore",
    "~/Library/Application Support/Bitcoin",
    "~/Library/Application Support/Exodus",
    "~/Library/Application Support/Ledger Live",
    "~/Library/Ethereum/keystore",
    // Games.
    "~/Library/Application Support/Steam/userdata",
    "~/Library/Application Support/Steam/config/loginusers.vdf",
};

constexpr std::array<std::string_view, 19> kProfiles{
    "~/Library/Application Support/Arc/User Data",
    "~/Library/Application Support/BraveSoftware",
    "~/Library/Application Support/Chromium",
    "~/Library/Application Support/Firefox",
    "~/Library/Application Support/Google/Chrome",
    "~/Library/Application Support/LibreWolf",
    "~/Library/Application Support/Microsoft Edge",
    "~/Library/Application Support/Vivaldi",
    "~/Library/Application Support/com.operasoftware.Opera",
    "~/Library/Application Support/com.operasoftware.OperaGX",
    "~/Library/Application Support/zen",
    "~/Library/Application Support/Signal",
    "~/Library/Application Support/Telegram Desktop",
    "~/Library/Application Support/Element",
    "~/Library/Application Support/Microsoft/Skype for Desktop",
    "~/Library/Application Support/Microsoft/Teams",
    "~/Library/Application Support/Slack",
    "~/Library/Application Support/WhatsApp",
    "~/Library/Application Support/discord",
};

}  // namespace

ProtectedPlaces protectedPlaces() {
    return {
        .whole = kWhole,
        .never = kNever,
        .profiles = kProfiles,
        .carveOuts = {},
        .named = {},
        .steads = {},
    };
}

}  // namespace Brimlo::Platform
