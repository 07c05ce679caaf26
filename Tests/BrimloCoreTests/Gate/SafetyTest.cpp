#include "BrimloCore/Gate/Safety.h"

#include "BrimloCoreTests/Support/Words.h"
#include "Support/TempHome.h"

#include <cstdlib>
#include <utility>

#include <pwd.h>
#include <unistd.h>

namespace Brimlo {
namespace {

using namespace std::string_literals;

constexpr const char* kPasses = "";
constexpr const char* kProtected = "protected location";
constexpr const char* kHolds = "holds a protected location";
constexpr const char* kCredentials = "holds credentials, settings or agent memory";
constexpr const char* kAgent = "agent settings or credentials";
constexpr const char* kSecret = "looks like a secret";
constexpr const char* kOwnData = "holds Brimlo's own data";
constexpr const char* kLinked = "reached through a link into a protected location";
constexpr const char* kOutside = "outside user-owned locations";

class SafetyTest : public Testing::TempHome {
protected:
    /// In `paths`, words, "~" stands for the folder `home_`.
    void expect(const std::string& verdict, const std::string& paths) const {
        for (const std::string& path : Testing::words(paths)) {
            const std::string full = path.starts_with('~') ? home_ + path.substr(1) : path;
            EXPECT_EQ(Safety::judge(full).refusal.value_or(kPasses), verdict) << full;
        }
    }

    std::string home_ = home();
};

TEST_F(SafetyTest, JudgesTextStepByStep) {
    expect(kProtected, "/ // /USR /usr/../usr/. /Volumes ~ ~/documents/ ~/.ssh ~//LIBRARY");
    expect(kCredentials, R"(~/.ssh/config ~/.SSH/config ~/.aws ~/.aws/cli/cache-old ~/.kube/config
        ~/.aws/cli/cache/../x ~/.claude/claude.md ~/.claude/projects/settings.json)");
    expect(kAgent, "~/.claude/settings.local.json ~/.codex/auth.json ~/.Gemini/OAuth_x");
    expect(kSecret, R"(~/.kube/cache/token.json ~/.codex/x/auth.json ~/.claude/id_settings
        ~/code/.ENV /tmp/.npmrc ~/code/my.P12 ~/x/login.keychain-db ~/Downloads/id_ed25519.pub
        ~/code/id_stuff /Volumes/Backup/.env)");
    expect(kOutside, R"(/APPLICATIONS/Foo.app /Applicationsx/Foo.app /opt/other /tmp/x
        /usr/local/../lib /Users/Shared/x ~x/y /System/Volumes/Data~/x /volumes/Backup/old)");
    expect("whole volume", "/Volumes/Backup /Volumes//Backup/");
    expect(kPasses, R"(~/Library/Caches ~/Documents/old ~/Documentsx ~/.config/gcloudx ~/.ssh2/x
        ~/.aws/cli/cache ~/.kube/cache/x ~/.KUBE/Http-Cache ~/code/.ssh/x
        ~/.claude/projects-old ~/.gemini/oldauth ~/.claude/cache/settings.json ~/code/.env.local
        ~/a/auth.json/x /Applications/Foo.app /usr/local /opt/homebrew /Volumes/Backup/old)");
    // A mark that joins with the slash before it hides nothing, and neither does a NUL.
    expect(kCredentials, "~/.ssh/\u0301x ~/.ssh/\0 ~/.\u212Aube/config"s);
    expect(kOutside, "~/.ssh\0/x ~/code/x\0"s);
}

TEST_F(SafetyTest, FollowsTheFoldersOfToolsToWhereVariablesMoveThem) {
    const std::string paths = "~/tools/cargo/credentials.toml ~/tools/gradle/gradle.properties";
    expect(kPasses, paths);
    setenv("CARGO_HOME", (home_ + "/tools/./cargo/").c_str(), 1);
    setenv("GRADLE_USER_HOME", (home_ + "/tools/gradle").c_str(), 1);
    expect(kCredentials, paths);
    expect(kPasses, "~/tools/cargo/registry/cache ~/tools/gradle/caches ~/tools/cargo");
    write("tools/cargo/credentials.toml");
    expect(kCredentials, "~/tools/cargo ~/tools");
    setenv("XDG_CACHE_HOME", home_.c_str(), 1);  // The gate only ever refuses more.
    expect(kProtected, "~ ~/Documents");
    expect(kCredentials, "~/.ssh/config");
}

TEST_F(SafetyTest, KnowsTheHomesOfThisSystem) {
    write(".config/user-dirs.dirs", "XDG_VIDEOS_DIR=\"$HOME/Filme\"\n");
    setenv("XDG_DATA_HOME", at("data/share").c_str(), 1);
    expect(kProtected, "~/Filme ~/.config ~/.local/share ~/snap/firefox ~/data/share");
    expect(kHolds, "~/data ~/.var");
    expect(kCredentials, R"(~/.local/share/keyrings/x ~/.git-credentials ~/.thunderbird/a/Mail
        ~/.mozilla/firefox ~/.mozilla/firefox/a.default/logins.json ~/.bitcoin ~/.config/dconf/user
        ~/.mozilla ~/.local ~/.codex ~/data/share/keyrings/x ~/snap/x/9/.config/chromium/Default
        ~/.var/app/some.App/data/keyrings ~/.var/app/some.App/.mozilla/firefox/a)");
    expect(kSecret, "~/Downloads/passwords.kdbx ~/code/release.keystore");
    expect(kPasses, R"(~/Filme/old.mkv ~/.config/some ~/.local/share/some ~/.cache ~/.gradle
        ~/.mozilla/firefox/a.default/shader-cache ~/.config/google-chrome/Default/GPUCache/x
        ~/.var/app/some.App ~/.var/app/some.App/data ~/.local/share/Anki2/me/backups/x)");
    // What holds a file with credentials may go without it, and a program's own home likewise.
    write(".gradle/gradle.properties");
    write(".var/app/some.App/data/keyrings/login.keyring");
    write("snap/some/7/.ssh/known_hosts");
    expect(kCredentials, R"(~/.gradle/gradle.properties ~/.gradle ~/.var/app/some.App
        ~/.var/app/some.App/data ~/snap/some ~/snap/some/7)");
    expect(kPasses, "~/.gradle/caches ~/.var/app/other.App ~/snap/some/7/x");
    unsetenv("XDG_DATA_HOME");
    expect(kPasses, "~/data ~/data/share");
}

TEST_F(SafetyTest, KeepsWhatIsOrHoldsAProtectedPlaceByALink) {
    makeFolder("dotfiles/config/gcloud");
    makeFolder("vault/claude/cache");
    makeFolder("vault/deep/ssh");
    link(".ssh", "vault/deep/ssh");
    link(".config", "dotfiles/config");
    link(".claude", "vault/claude");
    expect(kProtected, "~/dotfiles/config ~/vault/deep/ssh");
    expect(kCredentials, "~/vault ~/vault/deep ~/vault/deep/ssh/missing");
    expect(kHolds, "~/dotfiles");
    expect(kAgent, "~/vault/claude/settings.json");
    expect(kPasses, "~/vault/other ~/dotfiles/config/some ~/vault/claude/cache");
}

TEST_F(SafetyTest, ReadsTheHomeAnewInAnySpelling) {
    link("linked", makeFolder("real"));
    const std::pair<std::string, std::string> cases[] = {
        {home() + "/",               home()          },
        {"//" + home() + "/./x/../", home()          },
        {at("linked"),               at("linked")    },
        {at("linked"),               at("real")      },
        {at("Jos\u00E9"),            at("Jose\u0301")},
        {at("Jose\u0301"),           at("Jos\u00E9") },
    };
    for (const auto& [spelled, folder] : cases) {
        setenv("HOME", spelled.c_str(), 1);
        home_ = folder;
        expect(kProtected, "~ ~/DESKTOP");
        expect(kCredentials, "~/.ssh/x");
        expect(kPasses, "~/x");
        EXPECT_EQ(Safety::judge(folder + "/x", Safety::Chosen::byRule).refusal, std::nullopt);
    }
    expect(kOutside, at("x"));
    home_ = getpwuid(getuid())->pw_dir;
    for (const char* unusable : {"", "relative"}) {
        setenv("HOME", unusable, 1);
        expect(kProtected, "~");
        expect(kOutside, at("x"));
    }
    unsetenv("HOME");
    expect(kCredentials, "~/.ssh/x");
    setenv("HOME", "/", 1);
    expect(kOutside, "/x/y /.aws/x");
}

TEST_F(SafetyTest, KeepsTheProgramsOwnData) {
    makeFolder("dot/Library/Application Support/Brimlo/Rules");
    link("Library", "dot/Library");
    const std::string own = "/Library/Application Support/Brimlo";
    for (const std::string& path :
         {own,
          own + "/journal.json",
          "/LIBRARY/application support/brimlo"s,
          "/dot"s,
          "/dot" + own + "/Rules/a"}) {
        EXPECT_EQ(Safety::judge(home() + path).refusal, kOwnData) << path;
    }
    expect(kPasses, "~/dot/x ~/Library/x");
    EXPECT_EQ(Safety::judge(home() + own + " 2").refusal, std::nullopt);
}

TEST_F(SafetyTest, LetsNoLinkLeadARuleIntoAProtectedPlace) {
    for (const char* folder :
         {"Documents", "big/thumbs", ".config/gcloud", "papers", "private/aws"}) {
        makeFolder(folder);
    }
    link("Music", "papers");
    link(".aws", "private/aws");
    const struct {
        const char* target;
        std::string byRule;
    } cases[] = {
        {"big/thumbs", kPasses },
        {"Documents",  kLinked },
        {"papers",     kLinked }, // Music by another name.
        {".config",    kLinked },
        {"private",    kLinked },
        {".",          kLinked },
        {"..",         kOutside},
    };
    for (const auto& c : cases) {
        const std::string item = link(
                                     std::string{".cache/of-"} + std::to_string(&c - cases),
                                     std::string{"../"} + c.target) +
                                 "/x";
        EXPECT_EQ(Safety::judge(item, Safety::Chosen::byRule).refusal.value_or(kPasses), c.byRule)
            << c.target;
        EXPECT_EQ(
            Safety::judge(item).refusal.value_or(kPasses), c.byRule == kLinked ? kPasses : c.byRule)
            << c.target;
    }
    // A rule that names the folder itself knows where it leads.
    EXPECT_EQ(Safety::judge(at("Music/x"), Safety::Chosen::byRule).refusal, std::nullopt);
}

TEST_F(SafetyTest, JudgesALinkWhereItStandsAndByItsParents) {
    makeFolder(".ssh/keys");
    makeFolder(".kube/cache");
    makeFolder("code/a");
    link("Caches", ".ssh");
    link("twice", "Caches");
    link("crooked", "code/a/../../twice/../.kube");
    link("toCache", at(".kube/cache"));
    link("system", "/usr");
    link("itself", "itself");
    link("ping", "code/pong");
    link("code/pong", "../ping");
    link("dangling", "missing/x");
    link(".aws/out", "../code");
    expect(kCredentials, R"(~/Caches/link ~/Caches/keys/missing/x ~/twice/keys ~/crooked/config
        ~/.aws/out/a)");
    expect(kSecret, "~/toCache/.env");
    expect(kOutside, "~/system/x");
    expect(kPasses, R"(~/Caches ~/Caches/ ~/crooked/cache/x ~/toCache/x ~/system ~/system/local/x
        ~/itself ~/itself/x ~/ping/x/y ~/dangling ~/dangling/x)");
}

}  // namespace
}  // namespace Brimlo
