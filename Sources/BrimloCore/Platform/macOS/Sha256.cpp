#include "BrimloCore/Platform/Sha256.h"

#include <algorithm>
#include <limits>

#include <CommonCrypto/CommonDigest.h>

namespace Brimlo {

struct Sha256::State {
    CC_SHA256_CTX context{};
};

Sha256::Sha256()
    : state_{std::make_unique<State>()} {
    CC_SHA256_Init(&state_->context);
}

Sha256::~Sha256() = default;

void Sha256::update(std::span<const std::byte> bytes) {
    constexpr std::size_t kMost = std::numeric_limits<CC_LONG>::max();
    while (!bytes.empty()) {
        const auto part = bytes.first(std::min(bytes.size(), kMost));
        CC_SHA256_Update(&state_->context, part.data(), static_cast<CC_LONG>(part.size()));
        bytes = bytes.subspan(part.size());
    }
}

std::optional<Sha256::Digest> Sha256::finish() {
    Digest digest{};
    CC_SHA256_Final(digest.data(), &state_->context);
    CC_SHA256_Init(&state_->context);
    return digest;
}

}  // namespace Brimlo
