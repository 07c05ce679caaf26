#pragma once

#include "BrimloCore/Support/Uuid.h"

#include <cstddef>
#include <cstring>
#include <functional>

/// Lets rows be known by an identifier.
template <>
struct std::hash<Brimlo::Uuid> {
    std::size_t operator()(const Brimlo::Uuid& id) const noexcept {
        // Its bytes are random already.
        std::size_t first = 0;
        std::memcpy(&first, id.bytes.data(), sizeof(first));
        return first;
    }
};
