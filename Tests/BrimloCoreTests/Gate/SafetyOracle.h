#pragma once

#include "BrimloCore/Platform/ProtectedPlaces.h"
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

inline bool isInside(const std::string& path, const std::string& place) {
    return path.starts_with(place) && (path.size() == place.size() || path[place.size()] == '/');
}

inline bool isIn(const std::string& path, const Texts& places) {
    return std::ranges::any_of(
        places, [&](const std::string& place) { return isInside(path, place); });
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
        for (const Row& row : rows_) {
            places_.push_back(row.path);
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
        if (path == "/") {
            return path;
        }
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

    /// What may be said of a path.
    struct Opinion {
        Verdict byTables;
        Texts byLinks;

        /// Where the tables let the path pass, only its identity with a protected place may still
        /// stop it, and what lies in a credentials folder under another name has to be stopped.
        [[nodiscard]] bool allows(const Verdict& verdict) const {
            if (byTables) {
                return verdict == byTables;
            }
            return verdict ? has(byLinks, *verdict) : !has(byLinks, kCredentials);
        }
    };

    [[nodiscard]] Opinion opinion(const std::string& canonical) const {
        const std::string resolved = resolvedParent(canonical);
        Verdict reason = checkAsAWhole(canonical);
        reason = reason ? reason : checkAsAWhole(resolved);
        return {reason, reason ? Texts{} : reasonsByLinks(resolved)};
    }

    /// What the rows at or above `path` say.
    [[nodiscard]] Verdict check(const std::string& path) const {
        const std::string text = lower(path);
        const std::string folder = text.substr(0, text.rfind('/'));
        const std::string name = text.substr(folder.size() + 1);
        const auto begins = [&](const char* beginning) { return name.starts_with(beginning); };
        const auto ends = [&](const std::string& ending) { return name.ends_with(ending); };
        const Texts names = namesOf(text);
        if (anyRow(kWhole, [&](const Row& row) { return has(names, row.lower); })) {
            return "protected location";
        }
        if (std::ranges::any_of(names, [&](const std::string& each) { return isSecret(each); })) {
            return kCredentials;
        }
        if (anyRow(kAgent, [&](const Row& row) { return row.lower == folder; }) &&
            (begins("settings") || begins("auth") || begins("oauth"))) {
            return "agent settings or credentials";
        }
        const Texts secrets =
            words(R"(.env credentials credentials.json auth.json .netrc .npmrc .pypirc token.json
                .git-credentials .pgpass wallet.dat .vault-token)");
        if (has(secrets, name) || begins("id_") ||
            std::ranges::any_of(
                words(".p12 .pfx .keychain-db .kdbx .kdb .jks .keystore .ppk"), ends)) {
            return "looks like a secret";
        }
        if (!isIn(plain(path), roots_)) {
            return "outside user-owned locations";
        }
        if (split(path).size() < 3 && path.starts_with("/Volumes/")) {
            return "whole volume";
        }
        const bool isOwn = anyRow(kOwn, [&](const Row& row) {
            return isInside(text, row.lower) || isInside(row.lower, text);
        });
        return isOwn ? Verdict{"holds Brimlo's own data"} : std::nullopt;
    }

    /// What they and the rows below `path` say.
    [[nodiscard]] Verdict checkAsAWhole(const std::string& path) const {
        if (const Verdict reason = check(path)) {
            return reason;
        }
        const std::string text = lower(path);
        const auto isHeld = [&](const Row& row) { return isInside(row.lower, text); };
        if (anyRow(kNever | kProfile | kAgent, isHeld) || anyThere(kFile, path, text) ||
            std::ranges::any_of(
                steads_, [&](const Stead& stead) { return anyThereIn(stead, path, text); })) {
            return kCredentials;
        }
        return anyRow(kWhole, isHeld) ? Verdict{"holds a protected location"} : std::nullopt;
    }

    /// What is said of the other names of a place: each folder above `path`, or `path` itself, that
    /// is the very same one as a protected place is replaced by that place's name. And why `path`,
    /// free of links, may not go when places of the tables lie in it by their links.
    [[nodiscard]] Texts reasonsByLinks(const std::string& path) const {
        struct Ancestor {
            struct stat status;
            std::string rest;
        };
        std::vector<Ancestor> ancestors;
        std::string rest;
        for (Texts above = split(path); !above.empty(); above.pop_back()) {
            struct stat here{};
            if ((rest.empty() ? lstat : stat)(joined(above).c_str(), &here) == 0) {
                ancestors.push_back({here, rest});
            }
            rest = "/" + above.back() + rest;
        }
        Texts reasons;
        for (const Row& row : rows_) {
            struct stat there{};
            if (stat(row.path.c_str(), &there) != 0) {
                continue;
            }
            for (const Ancestor& here : ancestors) {
                if (here.status.st_dev == there.st_dev && here.status.st_ino == there.st_ino) {
                    reasons.push_back(checkAsAWhole(row.path + here.rest).value_or("passes"));
                }
            }
            if (isInside(lower(fs::canonical(row.path)), lower(path))) {
                reasons.emplace_back(
                    row.kind == kOwn     ? "holds Brimlo's own data"
                    : row.kind == kWhole ? "holds a protected location"
                                         : kCredentials);
            }
        }
        return reasons;
    }

    /// All of the tables, as they stand: first those of every system.
    [[nodiscard]] const Texts& places() const { return places_; }
    [[nodiscard]] Texts commonPlaces() const {
        return {places_.begin(), places_.begin() + static_cast<std::ptrdiff_t>(common_)};
    }

private:
    // A place may be of several kinds and has a row for each.
    static constexpr unsigned kWhole = 1;
    static constexpr unsigned kNever = 2;
    static constexpr unsigned kFile = 4;
    static constexpr unsigned kProfile = 8;
    static constexpr unsigned kAgent = 16;
    static constexpr unsigned kOwn = 32;

    struct Row {
        std::string path;
        std::string lower;
        unsigned kind;
    };

    struct Stead {
        Texts folder;  ///< Lower-cased components; a star is any one.
        std::string standsFor;
    };

    [[nodiscard]] bool anyRow(unsigned kinds, const auto& isWanted) const {
        return std::ranges::any_of(
            rows_, [&](const Row& row) { return (row.kind & kinds) != 0 && isWanted(row); });
    }

    /// Whether the components of `pattern` begin those of `path`, as far as both go.
    static bool fits(const Texts& pattern, const Texts& path) {
        const auto both = static_cast<std::ptrdiff_t>(std::min(pattern.size(), path.size()));
        return std::equal(
            pattern.begin(),
            pattern.begin() + both,
            path.begin(),
            [](const std::string& wanted, const std::string& name) {
                return wanted == "*" || wanted == name;
            });
    }

    static std::string behind(const Texts& parts, std::size_t depth) {
        return parts.size() > depth
                   ? joined({parts.begin() + static_cast<std::ptrdiff_t>(depth), parts.end()})
                   : "";
    }

    /// `text` and what it is in the homes that it lies in.
    [[nodiscard]] Texts namesOf(const std::string& text) const {
        Texts names{text};
        const Texts parts = split(text);
        for (const Stead& stead : steads_) {
            if (parts.size() > stead.folder.size() && fits(stead.folder, parts)) {
                names.push_back(stead.standsFor + behind(parts, stead.folder.size()));
            }
        }
        return names;
    }

    [[nodiscard]] bool isSecret(const std::string& text) const {
        const Texts parts = split(text);
        if (std::ranges::any_of(carved_, [&](const Texts& carved) {
                return parts.size() >= carved.size() && fits(carved, parts);
            })) {
            return false;
        }
        static const Texts kCaches = words(
            R"(cache caches cache2 cacheddata cachestorage code_cache crash_reports crashpad dawncache
            dawngraphitecache dawnwebgpucache gpucache graphitedawncache grshadercache logs
            media_cache optguideondeviceclassifiermodel optguideondevicemodel
            optimization_guide_model_store safe_browsing shader-cache shadercache startupcache
            thumbnails tmp)");
        return anyRow(kNever | kFile | kProfile, [&](const Row& row) {
            if (!isInside(text, row.lower)) {
                return false;
            }
            const Texts rest = split(text.substr(row.lower.size()));
            return row.kind != kProfile || std::ranges::none_of(rest, [&](std::string part) {
                       std::ranges::replace(part, ' ', '_');
                       return has(kCaches, part) || part.starts_with("cache_");
                   });
        });
    }

    /// Whether a row of these kinds that lies in `text` is there, when `path` stands for `text`.
    [[nodiscard]] bool anyThere(
        unsigned kinds, const std::string& path, const std::string& text) const {
        const std::size_t depth = split(text).size();
        return anyRow(kinds, [&](const Row& row) {
            struct stat status{};
            return isInside(row.lower, text) &&
                   lstat((path + behind(split(row.path), depth)).c_str(), &status) == 0;
        });
    }

    [[nodiscard]] bool anyThereIn(
        const Stead& stead, const std::string& path, const std::string& text) const {
        const Texts parts = split(text);
        if (!fits(stead.folder, parts)) {
            return false;
        }
        Texts folders{path};
        for (std::size_t i = parts.size(); i < stead.folder.size(); ++i) {
            Texts inside;
            for (const std::string& folder : folders) {
                std::error_code ignored;
                for (const auto& entry : fs::directory_iterator{folder, ignored}) {
                    const std::string name = entry.path().filename();
                    const bool isAny = stead.folder[i] == "*" && !name.starts_with('.');
                    if (isAny || name == stead.folder[i]) {
                        inside.push_back(entry.path());
                    }
                }
            }
            folders = inside;
        }
        const std::string standsFor = stead.standsFor + behind(parts, stead.folder.size());
        return std::ranges::any_of(folders, [&](const std::string& folder) {
            return anyThere(kNever | kFile | kProfile | kAgent, folder, standsFor);
        });
    }

    void addRows(const std::string& home) {
        const auto at = [&](const std::string& name) {
            return name.starts_with('~') ? home + name.substr(1) : name;
        };
        const auto addAll = [&](unsigned kind, const auto& names) {
            for (const auto& name : names) {
                const std::string path = at(std::string{name});
                rows_.push_back({path, lower(path), kind});
            }
        };
        // A space in a name is written "_" here.
        const auto add = [&](unsigned kind, const char* text) {
            Texts names = words(text);
            for (std::string& name : names) {
                std::ranges::replace(name, '_', ' ');
            }
            addAll(kind, names);
        };
        add(kWhole,
            R"(/ /System /Library /Users /Applications /usr /bin /sbin /private /var /etc /opt
            /Volumes /cores ~ ~/Library ~/Documents ~/Desktop ~/Downloads ~/Pictures ~/Movies
            ~/Music ~/Public ~/Applications ~/.ssh ~/.gnupg ~/Library/Keychains
            ~/Library/Application_Support ~/Library/Preferences ~/Library/Mobile_Documents
            ~/Library/CloudStorage)");
        add(kNever, R"(~/.ssh ~/.gnupg ~/.aws ~/.kube ~/.config/gcloud ~/.azure
            ~/Library/Keychains ~/.claude/projects ~/.claude/CLAUDE.md ~/.claude/agents
            ~/.claude/commands ~/.claude/skills ~/.claude.json ~/.password-store ~/.netrc
            ~/.git-credentials ~/.config/git/credentials ~/.pgpass ~/.my.cnf ~/.mylogin.cnf
            ~/.config/gh ~/.config/hub ~/.config/glab-cli ~/.config/github-copilot
            ~/.config/containers ~/.config/doctl ~/.config/hcloud ~/.config/scw
            ~/.config/linode-cli ~/.config/helm ~/.config/argocd ~/.config/rclone ~/.config/borg
            ~/.config/restic ~/.config/netlify ~/.config/ngrok ~/.oci ~/.fly ~/.cloudflared
            ~/.ngrok2 ~/.databrickscfg ~/.dbt ~/.boto ~/.s3cfg ~/.passwd-s3fs ~/.terraformrc
            ~/.vault-token ~/.yarnrc.yml ~/.jupyter)");
        addAll(kFile, words(R"(~/.android/adbkey ~/.cache/huggingface/token ~/.cargo/credentials
            ~/.cargo/credentials.toml ~/.composer/auth.json ~/.docker/config.json ~/.docker/contexts
            ~/.docker/trust ~/.gem/credentials ~/.gradle/gradle.properties ~/.hex/hex.config
            ~/.kaggle/kaggle.json ~/.m2/settings-security.xml ~/.m2/settings.xml ~/.minikube/ca.key
            ~/.config/configstore/firebase-tools.json ~/.config/dart/pub-credentials.json
            ~/.nuget/NuGet/NuGet.Config ~/.pub-cache/credentials.json ~/.pulumi/credentials.json
            ~/.pulumi/stacks ~/.subversion/auth ~/.terraform.d/credentials.tfrc.json
            ~/.wrangler/config ~/.cache/huggingface/stored_tokens)"));
        add(kAgent, "~/.claude ~/.codex ~/.gemini");
        add(kOwn, "~/Library/Application_Support/Brimlo");
        common_ = common_ == 0 ? rows_.size() : common_;
        roots_.push_back(plain(home));

        // The system's own rows are data; what they mean is told here a second time.
        const Platform::ProtectedPlaces system = Platform::protectedPlaces();
        addAll(kWhole, system.whole);
        addAll(kWhole, system.named);
        addAll(kNever, system.never);
        addAll(kProfile, system.profiles);
        Texts carved = words("~/.kube/cache ~/.kube/http-cache ~/.aws/cli/cache");
        carved.insert(carved.end(), system.carveOuts.begin(), system.carveOuts.end());
        for (const std::string& name : carved) {
            carved_.push_back(split(lower(at(name))));
        }
        for (const auto& stead : system.steads) {
            if (stead.folder != at(stead.standsFor)) {
                steads_.push_back({split(lower(at(stead.folder))), lower(at(stead.standsFor))});
            }
        }
    }

    std::vector<Row> rows_;
    Texts roots_;
    std::vector<Texts> carved_;
    std::vector<Stead> steads_;
    Texts places_;
    std::size_t common_ = 0;
};

}  // namespace Brimlo::Testing
