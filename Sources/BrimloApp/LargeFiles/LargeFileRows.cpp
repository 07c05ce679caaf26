#include "BrimloApp/LargeFiles/LargeFileRows.h"

#include "BrimloApp/LargeFiles/LargeFileSearch.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Models/Bytes.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace Brimlo {

LargeFileRows::LargeFileRows(LargeFileSearch& search)
    : search_{search}
    , rows_{
          *this,
          {
           {"name", [](const LargeFile& file) { return shown(file.name); }},
           {"path", [](const LargeFile& file) { return shown(file.path); }},
           {"size", [](const LargeFile& file) { return number(file.size); }},
           }} {
    connect(&search, &LargeFileSearch::filesChanged, this, &LargeFileRows::refresh);
}

void LargeFileRows::refresh() {
    std::vector<LargeFile> rows;
    std::int64_t total = 0;
    for (const auto& file : search_.files()) {
        rows.push_back(
            {.id = file->id(),
             .name = std::string{file->name()},
             .path = file->path(),
             .size = file->size});
        total = Bytes::sum(total, file->size);
    }
    rows_.set(std::move(rows));
    if (std::exchange(totalBytes_, total) != total) {
        Q_EMIT totalBytesChanged();
    }
}

double LargeFileRows::totalBytes() const {
    return number(totalBytes_);
}

void LargeFileRows::trash(int row) {
    const LargeFile* chosen = rows_.at(row);
    if (chosen == nullptr) {
        return;
    }
    const auto& files = search_.files();
    const auto file =
        std::ranges::find(files, chosen->id, [](const auto& each) { return each->id(); });
    if (file != files.end()) {
        // Copied, because the list that holds it is about to change.
        search_.trash(std::shared_ptr{*file});
    }
}

void LargeFileRows::reveal(int row) {
    if (const LargeFile* chosen = rows_.at(row)) {
        search_.reveal(chosen->path);
    }
}

}  // namespace Brimlo
