#include "BrimloCore/Cleaner/DuplicateExtras.h"

#include "BrimloCore/Cleaner/FileReader.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/CloneFile.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Platform/UnsureBlocks.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace Brimlo {

namespace {

using Platform::Descriptor;
using Platform::FileVersion;
/// Why an extra was not replaced.
using Reason = std::string;

constexpr const char* kIsChanged = "was changed meanwhile";

/// Whether the entry called `name` is this file.
bool isAt(int folder, const std::string& name, const FileVersion& file) {
    const Descriptor entry = FileReader::open(folder, name);
    const auto found = FileVersion::of(entry.number());
    return found && found->holdsTheBytesOf(file);
}

/// The replacement of one extra.
class Replacement {
public:
    Replacement(const std::string& path, std::array<FileReader, 2>& readers)
        : readers_{readers}
        , folder_{::open(
              std::string{Path::parent(path)}.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)}
        , name_{Path::name(path)}
        , temporary_{name_ + ".brimlo-clone"}
        , extra_{FileReader::open(folder_.number(), name_)}
        , version_{FileVersion::of(extra_.number())} {}

    /// Replaces the extra with a clone of `original`, and adds its bytes to `sharedBytes`.
    std::optional<Reason> by(const Descriptor& original, std::int64_t& sharedBytes) {
        if (!original || !version_) {
            return "is no longer equal";
        }
        if (version_->names > 1) {
            return "has other names, which would not share";
        }
        const auto extents = Platform::sharedExtents(extra_.number());
        if (extents && extents == Platform::sharedExtents(original.number())) {
            return std::nullopt;
        }
        if (const auto held = Platform::holdWriters(extra_.number()); !held) {
            return held.error().description;
        }
        const auto clone = Platform::cloneFile(original.number(), folder_.number(), temporary_);
        if (!clone) {
            return "clonefile failed: " + clone.error().description;
        }
        const auto reason = replaceExtra(*clone);
        sharedBytes = Bytes::sum(sharedBytes, reason ? 0 : version_->length);
        return reason;
    }

private:
    std::optional<Reason> replaceExtra(const Descriptor& clone) {
        if (!holdsTheSame(clone)) {
            remove();
            return "is no longer equal";
        }
        Platform::copyTimesAndMode(extra_.number(), clone.number());
        const auto made = FileVersion::of(clone.number());
        if (!made || !isUntouched()) {
            remove();
            return kIsChanged;
        }
        if (const auto done = exchange(); !done) {
            remove();
            return done.error().description;
        }
        if (isAt(folder_.number(), temporary_, *version_) &&
            Platform::isUndisturbed(extra_.number())) {
            remove();
            return std::nullopt;
        }
        // The exchanged file is not the compared one, or a program is waiting to write to it.
        if (exchange() && isAt(folder_.number(), temporary_, *made)) {
            remove();
            return kIsChanged;
        }
        return std::string{kIsChanged} + "; a second version of it is " + temporary_;
    }

    /// Whether both files have the same content and no writer came while that was read.
    [[nodiscard]] bool holdsTheSame(const Descriptor& clone) {
        return FileReader::holdTheSame(readers_, extra_, clone, [&] {
            return !readers_[0].isCancelled() && Platform::isUndisturbed(extra_.number());
        });
    }

    /// Whether the extra is unchanged since before the comparison.
    [[nodiscard]] bool isUntouched() const {
        return FileVersion::of(extra_.number()) == version_ &&
               Platform::isUndisturbed(extra_.number());
    }

    [[nodiscard]] std::expected<void, Error> exchange() const {
        return Platform::exchange(folder_.number(), temporary_, name_);
    }

    void remove() const { unlinkat(folder_.number(), temporary_.c_str(), 0); }

    std::array<FileReader, 2>& readers_;
    Descriptor folder_;
    std::string name_;
    std::string temporary_;
    Descriptor extra_;
    std::optional<FileVersion> version_;  ///< Of the extra, before it was compared.
};

using Reasons = CopyChoice::Reasons;

/// The copy that the extras of a group are compared with: the first that stays and still exists;
/// without any, the first of all that still exists.
const std::string& kept(const DuplicateGroup& group, const Reasons& reasons) {
    const std::string* next = nullptr;
    for (std::size_t i = 0; i < group.copies.size(); ++i) {
        const std::string& path = group.copies[i].path;
        if ((!reasons[i] && next != nullptr) || !Platform::FileIdentity::of(path)) {
            continue;
        }
        if (reasons[i]) {
            return path;
        }
        next = &path;
    }
    return next != nullptr ? *next : group.copies.front().path;
}

}  // namespace

std::string CloneReport::sentence() const {
    if (failures.empty()) {
        return "Replaced duplicates with clones, sharing " + Fmt::bytes(sharedBytes) + ".";
    }
    const bool mayBeTheVolume = std::ranges::any_of(
        failures, [](const std::string& line) { return line.contains(": clonefile failed: "); });
    return "Cloned some duplicates; " + std::to_string(failures.size()) + " failed" +
           (mayBeTheVolume ? " (different volume?)." : ".");
}

namespace DuplicateExtras {

CleanPlan plan(const std::vector<DuplicateGroup>& groups, const CopyChoice& choice) {
    const std::vector<Reasons> reasons = choice.reasons(groups);
    std::vector<std::string> copyOf(groups.size());
    std::set<std::string_view> staying;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const auto& copies = groups[i].copies;
        for (std::size_t place = 0; place < copies.size(); ++place) {
            if (reasons[i][place]) {
                staying.insert(copies[place].path);
            }
        }
        if (!copies.empty()) {
            copyOf[i] = kept(groups[i], reasons[i]);
            staying.insert(copyOf[i]);
        }
    }
    std::vector<CleanItem> items;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        for (const auto& [path, written] : groups[i].copies) {
            if (!staying.contains(path)) {
                items.push_back({.path = path, .size = groups[i].size, .ruleID = {}, .risk = {}});
                items.back().copyOf = copyOf[i];
            }
        }
    }
    return CleanPlan{items}.measured();
}

std::optional<std::string> cloneRefusal(const DuplicateGroup& group) {
    if (std::ranges::count_if(group.paths(), Platform::mayClone) > 1) {
        return std::nullopt;
    }
    return "This volume has no clones. Btrfs, XFS and APFS have.";
}

CloneReport clone(
    const std::vector<DuplicateGroup>& groups,
    const CopyChoice& choice,
    const ScanControl* control,
    const std::function<void(const std::string& path)>& progress) {
    CloneReport report;
    std::array readers{FileReader{control}, FileReader{control}};
    const std::vector<Reasons> reasons = choice.reasons(groups);
    for (std::size_t group = 0; group < groups.size(); ++group) {
        const auto& copies = groups[group].copies;
        const auto stays = [](const auto& reason) { return reason.has_value(); };
        const auto first = std::ranges::find_if(reasons[group], stays) - reasons[group].begin();
        for (std::size_t i = 0; i < copies.size(); ++i) {
            if (reasons[group][i]) {
                continue;
            }
            const std::string& path = copies[i].path;
            if (progress) {
                progress(path);
            }
            if (readers[0].isCancelled()) {
                return report;
            }
            const auto& staying = copies[static_cast<std::size_t>(first)].path;
            const Descriptor original = FileReader::open(staying);
            if (const auto reason = Replacement{path, readers}.by(original, report.sharedBytes)) {
                report.failures.push_back(path + ": " + *reason);
            }
        }
    }
    return report;
}

}  // namespace DuplicateExtras

}  // namespace Brimlo
