#pragma once

#include <QtCore/QtGlobal>

#include <type_traits>
#include <utility>

namespace Brimlo {

/// Stores a value in a field of `object` and emits `changed`, when it is another one.
template <typename Object, typename T>
void assign(Object& object, T& field, std::type_identity_t<T> value, void (Object::*changed)()) {
    if (field != value) {
        field = std::move(value);
        Q_EMIT(object.*changed)();
    }
}

}  // namespace Brimlo
