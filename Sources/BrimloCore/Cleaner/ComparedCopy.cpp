#include "BrimloCore/Cleaner/ComparedCopy.h"

#include "BrimloCore/Cleaner/FileReader.h"

#include <algorithm>
#include <utility>

namespace Brimlo {

namespace {

using Platform::FileVersion;

std::string unequal(const std::string& staying) {
    return "is no longer equal to " + staying;
}

std::optional<FileVersion> versionAt(const std::string& path) {
    return FileVersion::of(FileReader::open(path).number());
}

}  // namespace

std::expected<ComparedCopy, std::string> ComparedCopy::of(
    const std::string& extra, const std::string& staying, const std::function<bool()>& isStopped) {
    const std::array open{FileReader::open(extra), FileReader::open(staying)};
    const std::array versions{FileVersion::of(open[0].number()), FileVersion::of(open[1].number())};
    if (!versions[1]) {
        return std::unexpected("the copy to keep, " + staying + ", can't be read");
    }
    if (versions[0] && versions[0]->identity == versions[1]->identity) {
        return std::unexpected("is the same file as " + staying);
    }
    std::array readers{FileReader{}, FileReader{}};
    const auto goesOn = [&] { return !isStopped || !isStopped(); };
    if (!versions[0] || versions[0]->length != versions[1]->length ||
        !FileReader::holdTheSame(readers, open[0], open[1], goesOn)) {
        return std::unexpected(unequal(staying));
    }
    ComparedCopy compared{
        {File{extra, *versions[0]}, File{staying, *versions[1]}}
    };
    if (auto reason = compared.refusal()) {
        return std::unexpected(*std::move(reason));
    }
    return compared;
}

std::optional<std::string> ComparedCopy::refusal() const {
    const bool holds = std::ranges::all_of(files_, [](const File& file) {
        const auto now = versionAt(file.path);
        return now && now->holdsTheBytesOf(file.version);
    });
    return holds ? std::nullopt : std::optional{unequal(files_[1].path)};
}

}  // namespace Brimlo
