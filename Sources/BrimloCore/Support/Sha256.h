#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

struct evp_md_ctx_st;
struct evp_md_st;

namespace Brimlo {

/// The SHA-256 (FIPS 180-4) of bytes that come piece by piece; one object serves for many texts.
class Sha256 {
public:
    using Digest = std::array<std::uint8_t, 32>;

    Sha256();

    void update(std::span<const std::byte> bytes);

    /// The digest of what came since the last one; begins anew. Nullopt when the system has no
    /// SHA-256 to offer: no digest is ever made up.
    [[nodiscard]] std::optional<Digest> finish();

private:
    struct Free {
        void operator()(evp_md_st* algorithm) const;
        void operator()(evp_md_ctx_st* context) const;
    };

    void begin();

    std::unique_ptr<evp_md_st, Free> algorithm_;
    std::unique_ptr<evp_md_ctx_st, Free> context_;
    bool isSound_ = false;  ///< Every step since `begin` succeeded.
};

}  // namespace Brimlo
