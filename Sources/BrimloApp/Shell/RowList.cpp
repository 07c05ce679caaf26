#include "BrimloApp/Shell/RowList.h"

#include <algorithm>
#include <cstddef>

namespace Brimlo {

int RowList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || content_ == nullptr ? 0 : content_->count();
}

QVariant RowList::data(const QModelIndex& index, const int role) const {
    return index.isValid() && content_ != nullptr
               ? content_->value(index.row(), role - Qt::UserRole)
               : QVariant{};
}

int RowList::rowBeginningWith(const QString& text, const int row) const {
    const QHash<int, QByteArray> roles = roleNames();
    const int nameRole = roles.key("name", -1);
    const int pathRole = roles.key("path", -1);
    const auto nameOf = [&](int each) {
        const QString name = nameRole < 0 ? QString{} : data(index(each), nameRole).toString();
        return !name.isEmpty() || pathRole < 0
                   ? name
                   : data(index(each), pathRole).toString().section('/', -1);
    };
    const int rows = count();
    for (int i = 0; i < rows; ++i) {
        const int each = (std::max(row, 0) + i) % rows;
        if (nameOf(each).startsWith(text, Qt::CaseInsensitive)) {
            return each;
        }
    }
    return -1;
}

QHash<int, QByteArray> RowList::roleNames() const {
    const std::vector<const char*> roles =
        content_ != nullptr ? content_->roles() : std::vector<const char*>{};
    QHash<int, QByteArray> names;
    for (std::size_t i = 0; i < roles.size(); ++i) {
        names.insert(Qt::UserRole + static_cast<int>(i), roles[i]);
    }
    return names;
}

}  // namespace Brimlo
