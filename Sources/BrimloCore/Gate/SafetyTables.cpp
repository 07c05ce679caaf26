#include "BrimloCore/Gate/SafetyTables.h"

#include "BrimloCore/Gate/ProtectedRows.h"
#include "BrimloCore/Platform/Posix/Stat.h"
#include "BrimloCore/Platform/ProtectedPlaces.h"
#include "BrimloCore/Platform/SystemPaths.h"
#include "BrimloCore/Support/Glob.h"
#include "BrimloCore/Support/MovedFolders.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include <sys/stat.h>

namespace Brimlo {

namespace {

using Texts = std::vector<std::string>;

constexpr std::array<std::string_view, 4> kUserOwnedRoots{
    "/Applications",
    "/Volumes",
    "/opt/homebrew",
    "/usr/local",
};

constexpr std::string_view kProtected = "protected location";

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

bool isCached(std::string_view rest) {
    while (!rest.empty()) {
        if (ProtectedRows::isCacheName(std::string{cutComponent(rest)})) {
            return true;
        }
    }
    return false;
}

/// Whether `place` is at or below a place whose contents are protected.
bool mayNeverGo(const std::string& place) {
    const ProtectedRows& rows = ProtectedRows::ofThisSystem();
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
bool isAnyThere(const ProtectedRows::Set& rows, const std::string& path, const std::string& place) {
    return rows.anyBelow(place, [&](const ProtectedRows::Row& row) {
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
    for (const MovedFolders::Move& move : MovedFolders::ofEnvironment()) {
        steads_.push_back(
            {place(StoragePaths::expandTilde(move.folder)), Text::folded(move.usual)});
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
    const ProtectedRows& rows = ProtectedRows::ofThisSystem();
    if (std::ranges::find(loweredNamed_, place) != loweredNamed_.end() ||
        std::ranges::any_of(
            names, [&](const std::string& text) { return rows.whole.contains(text); })) {
        return text(kProtected);
    }
    if (std::ranges::any_of(names, mayNeverGo)) {
        return text(ProtectedRows::kCredentials);
    }
    for (const ProtectedRows::Row& folder : rows.agents.rows()) {
        const std::optional<std::string_view> rest = Path::below(folder.lower, place);
        if (rest && !rest->empty() && !rest->contains('/') &&
            ProtectedRows::isAgentFileName(name)) {
            return "agent settings or credentials";
        }
    }
    if (ProtectedRows::isSecretName(name)) {
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
    const ProtectedRows& rows = ProtectedRows::ofThisSystem();
    const std::string actual{path};
    if (rows.never.hasBelow(place) || rows.profiles.hasBelow(place) ||
        rows.agents.hasBelow(place) || isAnyThere(rows.files, actual, place) ||
        holdsAnotherHomesRows(actual, place)) {
        return text(ProtectedRows::kCredentials);
    }
    const auto isPlaceHeld = [&](const std::string& other) {
        return Path::below(place, other).has_value();
    };
    if (rows.whole.hasBelow(place) || std::ranges::any_of(loweredNamed_, isPlaceHeld) ||
        std::ranges::any_of(loweredHomes_, isPlaceHeld)) {
        return text(ProtectedRows::kHolds);
    }
    return std::nullopt;
}

/// Whether a row exists in a program's own home at, above or below `path`. Such a home is refused
/// only for rows that exist: every program has one.
bool SafetyTables::holdsAnotherHomesRows(const std::string& path, const std::string& place) const {
    const ProtectedRows& rows = ProtectedRows::ofThisSystem();
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
    const std::vector<ProtectedRows::Node>& nodes = ProtectedRows::ofThisSystem().nodes;
    std::vector<Found> found(nodes.size(), Found::missing);
    std::string path;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const ProtectedRows::Node& node = nodes[i];
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
                .reason = ProtectedRows::kHolds,
            });
        }
    }
    return landmarks;
}

}  // namespace Brimlo
