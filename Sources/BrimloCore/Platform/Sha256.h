#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace Brimlo {

/// The SHA-256 (FIPS 180-4) of bytes given in pieces; one object serves for many texts.
class Sha256 {
public:
    using Digest = std::array<std::uint8_t, 32>;

    Sha256();
    ~Sha256();
    Sha256(const Sha256&) = delete;
    Sha256& operator=(const Sha256&) = delete;
    Sha256(Sha256&&) = delete;
    Sha256& operator=(Sha256&&) = delete;

    void update(std::span<const std::byte> bytes);

    /// The digest of the bytes since the last one; starts anew. Nullopt when the system offers no
    /// SHA-256.
    [[nodiscard]] std::optional<Digest> finish();

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace Brimlo
