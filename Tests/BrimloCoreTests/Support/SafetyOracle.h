#pragma once

#include "BrimloCoreTests/Support/Words.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <sys/stat.h>

/// A second gate that is written to be read, not to be fast: it walks every list and asks
/// realpath() for what a link means. Its idea of Unicode is just large enough for a few letters.
namespace Brimlo::Testing {

namespace fs = std::filesystem;

using Texts = std::vector<std::string>;
using Verdict = std::optional<std::string>;

inline constexpr const char* kCredentials = "holds credentials, settings or agent memory";

inline Texts split(const std::string& path) {
    std::istringstream stream{path};
    Texts parts;
    for (std::string part; std::getline(stream, part, '/');) {
        if (!part.empty()) {
            parts.push_back(part);
        }
    }
    return parts;
}

inline std::string joined(const Texts& parts) {
    std::string path;
    for (const std::string& part : parts) {
        path += "/" + part;
    }
    return path.empty() ? "/" : path;
}

inline void replaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t i = text.find(from); i != std::string::npos;
         i = text.find(from, i + to.size())) {
        text.replace(i, from.size(), to);
    }
}

/// One spelling for all that a reader takes for the same text.
inline std::string plain(std::string text) {
    replaceAll(text, "\u00E9", "e\u0301");
    replaceAll(text, "\u00C9", "E\u0301");
    replaceAll(text, "\u212A", "K");
    return text;
}

inline std::string lower(std::string text) {
    text = plain(std::move(text));
    for (char& c : text) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    }
    return text;
}

inline bool isIn(const std::string& path, const Texts& places) {
    return std::ranges::any_of(places, [&](const std::string& place) {
        return path == place || path.starts_with(place + "/");
    });
}

inline bool has(const Texts& texts, const std::string& text) {
    return std::ranges::count(texts, text) > 0;
}

class Oracle {
public:
    explicit Oracle(const std::string& home) {
        roots_ = {"/Applications", "/Volumes", "/opt/homebrew", "/usr/local"};
        addRows(home);
        std::error_code isMissing;
        if (const fs::path real = fs::canonical(home, isMissing); !isMissing && real != home) {
            addRows(real);  // The same home by its other name.
        }
    }

    [[nodiscard]] static std::string canonical(const std::string& path) {
        Texts kept;
        for (const std::string& part :
             split(path.starts_with("/") ? path : fs::current_path().string() + "/" + path)) {
            if (part == ".." && !kept.empty()) {
                kept.pop_back();
            } else if (part != "." && part != "..") {
                kept.push_back(part);
            }
        }
        return joined(kept);
    }

    /// Of the folders above, the longest that realpath() can follow is followed. A link to
    /// nothing is taken for what it names.
    [[nodiscard]] static std::string resolvedParent(const std::string& path) {
        Texts above = split(path);
        Texts rest;
        std::array<char, PATH_MAX> real{};
        do {
            rest.insert(rest.begin(), above.back());
            above.pop_back();
            std::error_code noLink;
            while (realpath(joined(above).c_str(), real.data()) == nullptr && errno == ENOENT) {
                const fs::path target = fs::read_symlink(joined(above), noLink);
                if (noLink) {
                    break;
                }
                above.pop_back();
                above = split((fs::path{joined(above)} / target).string());
            }
        } while (realpath(joined(above).c_str(), real.data()) == nullptr);
        above = split(real.data());
        above.insert(above.end(), rest.begin(), rest.end());
        return joined(above);
    }

    [[nodiscard]] Verdict check(const std::string& path) const {
        const std::string text = lower(path);
        const std::string folder = text.substr(0, text.rfind('/'));
        const std::string name = text.substr(folder.size() + 1);
        const auto begins = [&](const char* beginning) { return name.starts_with(beginning); };
        if (has(exact_, text)) {
            return "protected location";
        }
        if (!isIn(text, caches_) && isIn(text, never_)) {
            return kCredentials;
        }
        if (has(agents_, folder) && (begins("settings") || begins("auth") || begins("oauth"))) {
            return "agent settings or credentials";
        }
        const Texts secrets =
            words(".env credentials credentials.json auth.json .netrc .npmrc .pypirc token.json");
        if (has(secrets, name) || name.ends_with(".p12") || name.ends_with(".keychain-db") ||
            begins("id_")) {
            return "looks like a secret";
        }
        if (!isIn(plain(path), roots_)) {
            return "outside user-owned locations";
        }
        if (split(path).size() < 3 && path.starts_with("/Volumes/")) {
            return "whole volume";
        }
        const auto isAbove = [&](const std::string& own) { return isIn(own, {text}); };
        if (isIn(text, own_) || std::ranges::any_of(own_, isAbove)) {
            return "holds Brimlo's own data";
        }
        return std::nullopt;
    }

    /// What is said of the other names of a place: each folder above `path`, or `path` itself, that
    /// is the very same one as a protected place is replaced by that place's name.
    [[nodiscard]] Texts aliasReasons(const std::string& path) const {
        Texts reasons;
        std::string rest;
        for (Texts above = split(path); !above.empty(); above.pop_back()) {
            struct stat here {};
            struct stat there {};
            if ((rest.empty() ? lstat : stat)(joined(above).c_str(), &here) == 0) {
                for (const std::string& place : places_) {
                    if (stat(place.c_str(), &there) == 0 && here.st_dev == there.st_dev &&
                        here.st_ino == there.st_ino) {
                        reasons.push_back(check(place + rest).value_or("passes"));
                    }
                }
            }
            rest = "/" + above.back() + rest;
        }
        return reasons;
    }

    /// All of the tables, as they stand.
    [[nodiscard]] const Texts& places() const { return places_; }

private:
    void addRows(const std::string& home) {
        // A space in a name is written "_" here.
        const auto add = [&](Texts& list, const char* names) {
            for (std::string name : words(names)) {
                std::ranges::replace(name, '_', ' ');
                const std::string place = name.starts_with('~') ? home + name.substr(1) : name;
                list.push_back(lower(place));
                places_.push_back(place);
            }
        };
        add(exact_,
            R"(/ /System /Library /Users /Applications /usr /bin /sbin /private /var /etc /opt
            /Volumes /cores ~ ~/Library ~/Documents ~/Desktop ~/Downloads ~/Pictures ~/Movies
            ~/Music ~/Public ~/Applications ~/.ssh ~/.gnupg ~/Library/Keychains
            ~/Library/Application_Support ~/Library/Preferences ~/Library/Mobile_Documents
            ~/Library/CloudStorage)");
        add(never_, R"(~/.ssh ~/.gnupg ~/.aws ~/.kube ~/.config/gcloud ~/.azure
            ~/Library/Keychains ~/.claude/projects ~/.claude/CLAUDE.md ~/.claude/agents
            ~/.claude/commands ~/.claude/skills ~/.password-store)");
        add(agents_, "~/.claude ~/.codex ~/.gemini");
        add(caches_, "~/.kube/cache ~/.kube/http-cache ~/.aws/cli/cache");
        add(own_, "~/Library/Application_Support/Brimlo");
        roots_.push_back(plain(home));
    }

    Texts exact_, never_, agents_, caches_, own_;  ///< In lower case.
    Texts roots_;
    Texts places_;
};

}  // namespace Brimlo::Testing
