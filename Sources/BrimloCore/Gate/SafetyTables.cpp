#include "BrimloCore/Gate/SafetyTables.h"

#include "BrimloCore/Platform/Posix/Stat.h"
#include "BrimloCore/Platform/ProtectedPlaces.h"
#include "BrimloCore/Platform/SystemPaths.h"
#include "BrimloCore/Support/Glob.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <utility>

#include <sys/stat.h>

namespace Brimlo {

namespace {

using Rows = Platform::ProtectedPlaces::Rows;
using Texts = std::vector<std::string>;

// The rows of every system; `Platform::protectedPlaces` adds those of one system. "~" stands for
// the home folder at the time of the check.

/// Folders that may not go themselves; their contents may.
constexpr std::array<std::string_view, 31> kWhole{
    "/",
    "/System",
    "/Library",
    "/Users",
    "/Applications",
    "/usr",
    "/bin",
    "/sbin",
    "/private",
    "/var",
    "/etc",
    "/opt",
    "/Volumes",
    "/cores",
    "~",
    "~/Library",
    "~/Documents",
    "~/Desktop",
    "~/Downloads",
    "~/Pictures",
    "~/Movies",
    "~/Music",
    "~/Public",
    "~/Applications",
    "~/.ssh",
    "~/.gnupg",
    "~/Library/Keychains",
    "~/Library/Application Support",
    "~/Library/Preferences",
    "~/Library/Mobile Documents",
    "~/Library/CloudStorage",
};

/// Folders and files that may not go, with all their contents.
constexpr std::array<std::string_view, 49> kNever{
    "~/.ssh",
    "~/.gnupg",
    "~/.aws",
    "~/.kube",
    "~/.config/gcloud",
    "~/.azure",
    "~/Library/Keychains",
    "~/.claude/projects",
    "~/.claude/CLAUDE.md",
    "~/.claude/agents",
    "~/.claude/commands",
    "~/.claude/skills",
    "~/.claude.json",
    "~/.password-store",
    "~/.netrc",
    "~/.git-credentials",
    "~/.config/git/credentials",
    "~/.pgpass",
    "~/.my.cnf",
    "~/.mylogin.cnf",
    "~/.config/gh",
    "~/.config/hub",
    "~/.config/glab-cli",
    "~/.config/github-copilot",
    "~/.config/containers",
    "~/.config/doctl",
    "~/.config/hcloud",
    "~/.config/scw",
    "~/.config/linode-cli",
    "~/.config/helm",
    "~/.config/argocd",
    "~/.config/rclone",
    "~/.config/borg",
    "~/.config/restic",
    "~/.config/netlify",
    "~/.config/ngrok",
    "~/.oci",
    "~/.fly",
    "~/.cloudflared",
    "~/.ngrok2",
    "~/.databrickscfg",
    "~/.dbt",
    "~/.boto",
    "~/.s3cfg",
    "~/.passwd-s3fs",
    "~/.terraformrc",
    "~/.vault-token",
    "~/.yarnrc.yml",
    "~/.jupyter",
};

/// Files with credentials among other files of a tool. They never go, and a folder above them does
/// not go while they exist.
constexpr std::array<std::string_view, 25> kFiles{
    "~/.android/adbkey",
    "~/.cache/huggingface/stored_tokens",
    "~/.cache/huggingface/token",
    "~/.cargo/credentials",
    "~/.cargo/credentials.toml",
    "~/.composer/auth.json",
    "~/.config/configstore/firebase-tools.json",
    "~/.config/dart/pub-credentials.json",
    "~/.docker/config.json",
    "~/.docker/contexts",
    "~/.docker/trust",
    "~/.gem/credentials",
    "~/.gradle/gradle.properties",
    "~/.hex/hex.config",
    "~/.kaggle/kaggle.json",
    "~/.m2/settings-security.xml",
    "~/.m2/settings.xml",
    "~/.minikube/ca.key",
    "~/.nuget/NuGet/NuGet.Config",
    "~/.pub-cache/credentials.json",
    "~/.pulumi/credentials.json",
    "~/.pulumi/stacks",
    "~/.subversion/auth",
    "~/.terraform.d/credentials.tfrc.json",
    "~/.wrangler/config",
};

/// Caches that may go although their parents hold credentials.
constexpr std::array<std::string_view, 3> kCarveOuts{
    "~/.kube/cache",
    "~/.kube/http-cache",
    "~/.aws/cli/cache",
};

/// Names of caches in a profile: the program recreates them or does without.
constexpr std::array<std::string_view, 26> kCacheNames{
    "cache",
    "cache_*",
    "caches",
    "cache2",
    "cacheddata",
    "cachestorage",
    "code cache",
    "crash reports",
    "crashpad",
    "dawncache",
    "dawngraphitecache",
    "dawnwebgpucache",
    "gpucache",
    "graphitedawncache",
    "grshadercache",
    "logs",
    "media_cache",
    "optguideondeviceclassifiermodel",
    "optguideondevicemodel",
    "optimization_guide_model_store",
    "safe browsing",
    "shader-cache",
    "shadercache",
    "startupcache",
    "thumbnails",
    "tmp",
};

constexpr std::array<std::string_view, 3> kAgentFolders{"~/.claude", "~/.codex", "~/.gemini"};

constexpr std::array<std::string_view, 3> kAgentFileBeginnings{"settings", "auth", "oauth"};

constexpr std::array<std::string_view, 4> kUserOwnedRoots{
    "/Applications",
    "/Volumes",
    "/opt/homebrew",
    "/usr/local",
};

constexpr std::array<std::string_view, 12> kSecretNames{
    ".env",
    "credentials",
    "credentials.json",
    "auth.json",
    ".git-credentials",
    ".netrc",
    ".npmrc",
    ".pgpass",
    ".pypirc",
    "token.json",
    "wallet.dat",
    ".vault-token",
};

constexpr std::array<std::string_view, 8> kSecretEndings{
    ".p12", ".pfx", ".keychain-db", ".kdbx", ".kdb", ".jks", ".keystore", ".ppk"};

constexpr std::string_view kProtected = "protected location";
constexpr std::string_view kHolds = "holds a protected location";
constexpr std::string_view kCredentials = "holds credentials, settings or agent memory";

bool looksLikeASecret(std::string_view lowerName) {
    const auto endsName = [&](std::string_view ending) { return lowerName.ends_with(ending); };
    return std::ranges::find(kSecretNames, lowerName) != kSecretNames.end() ||
           std::ranges::any_of(kSecretEndings, endsName) || lowerName.starts_with("id_");
}

bool isWholeVolume(std::string_view path) {
    constexpr std::string_view kVolumes = "/Volumes/";
    return path.starts_with(kVolumes) && !path.substr(kVolumes.size()).contains('/');
}

bool isIn(const Texts& places, std::string_view path) {
    return std::ranges::any_of(
        places, [&](const std::string& place) { return Path::below(place, path).has_value(); });
}

bool exists(const std::string& path) {
    struct stat status{};
    return lstat(path.c_str(), &status) == 0;
}

/// Cuts the first component off `path`, and the slash after it.
std::string_view cutComponent(std::string_view& path) {
    const std::size_t end = std::min(path.find('/'), path.size());
    const std::string_view component = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    return component;
}

/// Cuts the common first components off `pattern`, where "*" matches any one, and `path`. False
/// when they differ before one of them ends.
bool follow(std::string_view& pattern, std::string_view& path) {
    while (!pattern.empty() && !path.empty()) {
        const std::string_view wanted = cutComponent(pattern);
        const std::string_view component = cutComponent(path);
        if (wanted != component && wanted != "*") {
            return false;
        }
    }
    return true;
}

struct Row {
    std::string text;
    std::string lower;
    std::string_view reason;  ///< Why a folder that holds it may not go.
};

/// Rows in the order of their lower-case texts, so that those above and below a place are found
/// without a look at all of them.
class RowSet {
public:
    void add(Rows texts, std::string_view reason) {
        for (const std::string_view text : texts) {
            rows_.push_back({std::string{text}, Text::folded(text), reason});
        }
        std::ranges::stable_sort(rows_, {}, &Row::lower);
    }

    [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }

    [[nodiscard]] bool contains(std::string_view place) const {
        return std::ranges::binary_search(rows_, place, {}, &Row::lower);
    }

    /// Whether `is` holds for what `place` adds to any row that is `place` or above it.
    [[nodiscard]] bool anyAbove(std::string_view place, const auto& is) const {
        for (std::string_view above = place;;) {
            if (contains(above) && is(Path::below(above, place).value_or(""))) {
                return true;
            }
            const std::size_t slash = above.rfind('/');
            if (slash == std::string_view::npos || above == "/") {
                return false;
            }
            above = above.substr(0, std::max<std::size_t>(slash, 1));
        }
    }

    [[nodiscard]] bool hasAbove(std::string_view place) const {
        return anyAbove(place, [](std::string_view) { return true; });
    }

    /// Whether `is` holds for any row that is `place` or below it.
    [[nodiscard]] bool anyBelow(std::string_view place, const auto& is) const {
        for (auto row = std::ranges::lower_bound(rows_, place, {}, &Row::lower);
             row != rows_.end() && row->lower.starts_with(place);
             ++row) {
            if (Path::below(place, row->lower) && is(*row)) {
                return true;
            }
        }
        return false;
    }

    [[nodiscard]] bool hasBelow(std::string_view place) const {
        return anyBelow(place, [](const Row&) { return true; });
    }

private:
    std::vector<Row> rows_;
};

/// A place of the tables, or a folder above one: below a missing folder no place is looked up.
struct Node {
    std::string text;
    std::size_t parent;  ///< Its index; a node without a parent has its own.
    bool isPlace = false;
    std::string_view reason;
};

/// The rows that don't change while the program runs.
struct FixedRows {
    RowSet whole;
    RowSet never;
    RowSet files;
    RowSet profiles;
    RowSet agents;
    Texts carveOuts;
    std::vector<Node> nodes;
};

/// The places and the folders above them, each after its parent.
std::vector<Node> nodesOf(const std::vector<Row>& rows) {
    std::map<std::string, Node> byText;
    for (const Row& row : rows) {
        Node& node = byText[row.text];
        node.isPlace = true;
        node.reason = row.reason;
        std::string_view above = row.text;
        while (above.starts_with("~/")) {
            above = Path::parent(above);
            byText.try_emplace(std::string{above});
        }
    }
    std::vector<Node> nodes;
    std::map<std::string_view, std::size_t> numbers;
    for (auto& [text, node] : byText) {
        const auto parent = numbers.find(Path::parent(text));
        const std::size_t number = nodes.size();
        nodes.push_back(
            {text, parent == numbers.end() ? number : parent->second, node.isPlace, node.reason});
        numbers.emplace(text, number);
    }
    return nodes;
}

const FixedRows& fixedRows() {
    static const FixedRows kRows = [] {
        const Platform::ProtectedPlaces places = Platform::protectedPlaces();
        FixedRows rows;
        rows.whole.add(kWhole, kHolds);
        rows.whole.add(places.whole, kHolds);
        rows.never.add(kNever, kCredentials);
        rows.never.add(places.never, kCredentials);
        rows.files.add(kFiles, kCredentials);
        rows.profiles.add(places.profiles, kCredentials);
        rows.agents.add(kAgentFolders, kCredentials);
        RowSet own;
        own.add(std::array{StoragePaths::kSupport}, "holds Brimlo's own data");
        std::vector<Row> all;
        for (const RowSet* set :
             {&rows.whole, &rows.never, &rows.files, &rows.profiles, &rows.agents, &own}) {
            all.insert(all.end(), set->rows().begin(), set->rows().end());
        }
        for (const Rows list : {Rows{kCarveOuts}, places.carveOuts}) {
            std::ranges::transform(list, std::back_inserter(rows.carveOuts), Text::folded);
        }
        rows.nodes = nodesOf(all);
        return rows;
    }();
    return kRows;
}

bool isCached(std::string_view rest) {
    while (!rest.empty()) {
        const std::string component{cutComponent(rest)};
        const auto isIt = [&](std::string_view name) {
            return Glob::matches(component, std::string{name});
        };
        if (std::ranges::any_of(kCacheNames, isIt)) {
            return true;
        }
    }
    return false;
}

/// Whether `place` is at or below a place whose contents are protected.
bool mayNeverGo(const std::string& place) {
    const FixedRows& rows = fixedRows();
    const auto isCarved = [&](std::string_view pattern) {
        std::string_view rest = place;
        return follow(pattern, rest) && pattern.empty();
    };
    if (std::ranges::any_of(rows.carveOuts, isCarved)) {
        return false;
    }
    return rows.never.hasAbove(place) || rows.files.hasAbove(place) ||
           rows.profiles.anyAbove(place, [](std::string_view rest) { return !isCached(rest); });
}

/// Whether one of `rows` below `place` exists in the folder `path`, which stands for `place`.
bool isAnyThere(const RowSet& rows, const std::string& path, const std::string& place) {
    return rows.anyBelow(place, [&](const Row& row) {
        return row.lower != place && exists(path + row.text.substr(place.size()));
    });
}

std::optional<std::string> text(std::string_view reason) {
    return std::string{reason};
}

}  // namespace

SafetyTables::SafetyTables() {
    homes_.push_back(StoragePaths::home());
    if (std::string real = Path::resolved(homes_.front()); real != homes_.front()) {
        homes_.push_back(std::move(real));
    }
    for (const std::string_view root : kUserOwnedRoots) {
        userOwned_.emplace_back(root);
    }
    for (const std::string& home : homes_) {
        if (home != "/") {  // A home folder "/" does not make the whole disk the user's.
            userOwned_.push_back(Text::decomposed(home));
            loweredHomes_.push_back(Text::folded(home));
        }
    }
    const std::string own = StoragePaths::expandTilde(StoragePaths::kSupport);
    ownData_ = {place(own), place(Path::resolved(own))};
    Platform::ProtectedPlaces places = Platform::protectedPlaces();
    for (const std::string& folder : places.named) {
        named_.push_back(Platform::withoutPrivatePrefix(Path::standardized(folder)));
        loweredNamed_.push_back(place(named_.back()));
    }
    for (Platform::ProtectedPlaces::Stead& stead : places.steads) {
        std::string folder = place(stead.folder);
        if (folder != stead.standsFor) {
            steads_.push_back({std::move(folder), std::move(stead.standsFor)});
        }
    }
}

std::string SafetyTables::place(std::string_view path) const {
    std::string lower = Text::folded(path);
    for (const std::string& home : loweredHomes_) {
        if (Path::below(home, lower)) {
            return "~" + lower.substr(home.size());
        }
    }
    return lower;
}

/// `place`, and its name in each program's own home that contains it.
Texts SafetyTables::namesInHome(const std::string& place) const {
    Texts names{place};
    for (const Stead& stead : steads_) {
        std::string_view pattern = stead.folder;
        std::string_view rest = place;
        if (follow(pattern, rest) && pattern.empty() && !rest.empty()) {
            names.push_back(stead.standsFor + "/" + std::string{rest});
        }
    }
    return names;
}

std::optional<std::string> SafetyTables::check(std::string_view path) const {
    const std::string exact = Text::decomposed(path);
    const std::string place = this->place(path);
    const std::string_view name = Path::name(place);
    const Texts names = namesInHome(place);
    const FixedRows& rows = fixedRows();
    if (std::ranges::find(loweredNamed_, place) != loweredNamed_.end() ||
        std::ranges::any_of(
            names, [&](const std::string& text) { return rows.whole.contains(text); })) {
        return text(kProtected);
    }
    if (std::ranges::any_of(names, mayNeverGo)) {
        return text(kCredentials);
    }
    const auto startsName = [&](std::string_view text) { return name.starts_with(text); };
    for (const Row& folder : rows.agents.rows()) {
        const std::optional<std::string_view> rest = Path::below(folder.lower, place);
        if (rest && !rest->empty() && !rest->contains('/') &&
            std::ranges::any_of(kAgentFileBeginnings, startsName)) {
            return "agent settings or credentials";
        }
    }
    if (looksLikeASecret(name)) {
        return "looks like a secret";
    }
    // The system would cut the path off at a NUL and act on another one.
    if (!Path::isUsable(path) || !isIn(userOwned_, exact)) {
        return "outside user-owned locations";
    }
    if (isWholeVolume(exact)) {
        return "whole volume";
    }
    const auto isBelow = [&](const std::string& own) {
        return Path::below(place, own).has_value();
    };
    if (isIn(ownData_, place) || std::ranges::any_of(ownData_, isBelow)) {
        return "holds Brimlo's own data";
    }
    return std::nullopt;
}

std::optional<std::string> SafetyTables::checkAsAWhole(std::string_view path) const {
    if (auto reason = check(path)) {
        return reason;
    }
    const std::string place = this->place(path);
    const FixedRows& rows = fixedRows();
    const std::string actual{path};
    if (rows.never.hasBelow(place) || rows.profiles.hasBelow(place) ||
        rows.agents.hasBelow(place) || isAnyThere(rows.files, actual, place) ||
        holdsAnotherHomesRows(actual, place)) {
        return text(kCredentials);
    }
    const auto isPlaceHeld = [&](const std::string& other) {
        return Path::below(place, other).has_value();
    };
    if (rows.whole.hasBelow(place) || std::ranges::any_of(loweredNamed_, isPlaceHeld) ||
        std::ranges::any_of(loweredHomes_, isPlaceHeld)) {
        return text(kHolds);
    }
    return std::nullopt;
}

/// Whether a row exists in a program's own home at, above or below `path`. Such a home is refused
/// only for rows that exist: every program has one.
bool SafetyTables::holdsAnotherHomesRows(const std::string& path, const std::string& place) const {
    const FixedRows& rows = fixedRows();
    return std::ranges::any_of(steads_, [&](const Stead& stead) {
        std::string_view pattern = stead.folder;
        std::string_view rest = place;
        if (!follow(pattern, rest)) {
            return false;
        }
        Glob::Pattern folders{.fixed = path};
        while (!pattern.empty()) {
            const std::string component{cutComponent(pattern)};
            folders.rest.push_back({component, component == "*"});
        }
        const std::string standsFor =
            rest.empty() ? stead.standsFor : stead.standsFor + "/" + std::string{rest};
        return std::ranges::any_of(Glob::expand(folders), [&](const std::string& folder) {
            return isAnyThere(rows.never, folder, standsFor) ||
                   isAnyThere(rows.files, folder, standsFor) ||
                   isAnyThere(rows.profiles, folder, standsFor) ||
                   isAnyThere(rows.agents, folder, standsFor);
        });
    });
}

std::vector<SafetyTables::Landmark> SafetyTables::landmarks() const {
    enum class Found { missing, plain, behindALink };
    std::vector<Landmark> landmarks;
    struct stat status{};
    const std::vector<Node>& nodes = fixedRows().nodes;
    std::vector<Found> found(nodes.size(), Found::missing);
    std::string path;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const Node& node = nodes[i];
        const Found above = node.parent == i ? Found::plain : found[node.parent];
        const bool isInHome = node.text.starts_with('~');
        if (above == Found::missing || (isInHome && loweredHomes_.empty())) {
            continue;
        }
        path = isInHome ? homes_.front() : "";
        path.append(node.text, isInHome ? 1 : 0);
        if (lstat(path.c_str(), &status) != 0) {
            continue;
        }
        const bool isLink = S_ISLNK(status.st_mode);
        if (isLink && stat(path.c_str(), &status) != 0) {
            continue;
        }
        // Symlinks of the home itself don't count: `homes_` has both names.
        const bool isElsewhere = node.text != "~" && (isLink || above == Found::behindALink);
        found[i] = isElsewhere ? Found::behindALink : Found::plain;
        if (node.isPlace) {
            landmarks.push_back({
                .path = path,
                .real = isInHome && !isElsewhere ? homes_.back() + node.text.substr(1)
                                                 : Path::resolved(path),
                .isBehindALink = isElsewhere,
                .identity = Platform::identityOf(status),
                .reason = node.reason,
            });
        }
    }
    for (const std::string& folder : named_) {
        if (stat(folder.c_str(), &status) == 0) {
            landmarks.push_back({
                .path = folder,
                .real = Path::resolved(folder),
                .isBehindALink = true,
                .identity = Platform::identityOf(status),
                .reason = kHolds,
            });
        }
    }
    return landmarks;
}

}  // namespace Brimlo
