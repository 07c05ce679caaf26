#include "BrimloApp/Shell/RowList.h"

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
