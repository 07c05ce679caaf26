#include "BrimloApp/Shell/RowOrder.h"

#include "BrimloApp/Shell/Shown.h"

#include <utility>

namespace Brimlo {

RowOrder::RowOrder(QStringList keys)
    : keys_{std::move(keys)}
    , key_{keys_.front()} {}

void RowOrder::setKey(const QString& key) {
    if (keys_.contains(key)) {
        assign(*this, key_, key, &RowOrder::changed);
    }
}

void RowOrder::setAscending(bool ascending) {
    assign(*this, ascending_, ascending, &RowOrder::changed);
}

void RowOrder::sortBy(const QString& key) {
    if (key == key_) {
        setAscending(!ascending_);
    } else {
        setKey(key);
    }
}

}  // namespace Brimlo
