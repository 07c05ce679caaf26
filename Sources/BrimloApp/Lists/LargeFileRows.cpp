#include "BrimloApp/Lists/LargeFileRows.h"

#include "BrimloCore/Models/Bytes.h"

#include <algorithm>
#include <memory>

namespace Brimlo {

LargeFileRows::LargeFileRows(QObject* parent)
    : SourceRows{
          {
           {"name", [](const LargeFileRow& row) { return shown(row.name); }},
           {"path", [](const LargeFileRow& row) { return shown(row.path); }},
           {"size", [](const LargeFileRow& row) { return number(row.size); }},
           },
          {&AppModel::largeFilesChanged},
          parent
} {}

void LargeFileRows::refresh() {
    std::vector<LargeFileRow> rows;
    std::int64_t total = 0;
    if (source() != nullptr) {
        for (const auto& file : source()->largeFiles()) {
            rows.push_back(
                {.id = file->id, .name = file->name, .path = file->path, .size = file->size});
            total = Bytes::sum(total, file->size);
        }
    }
    setRows(std::move(rows));
    if (std::exchange(totalBytes_, total) != total) {
        Q_EMIT totalBytesChanged();
    }
}

void LargeFileRows::trash(const int row) {
    const LargeFileRow* const found = this->row(row);
    if (found == nullptr || source() == nullptr) {
        return;
    }
    const auto& files = source()->largeFiles();
    const auto file =
        std::ranges::find(files, found->id, [](const auto& each) { return each->id; });
    if (file != files.end()) {
        // A copy, because the list that holds it is about to change.
        source()->trashLargeFile(std::shared_ptr{*file});
    }
}

void LargeFileRows::reveal(const int row) {
    if (const LargeFileRow* const found = this->row(row)) {
        source()->reveal({found->path});
    }
}

}  // namespace Brimlo
