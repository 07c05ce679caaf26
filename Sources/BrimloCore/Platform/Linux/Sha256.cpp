#include "BrimloCore/Platform/Sha256.h"

#include <openssl/evp.h>

namespace Brimlo {

struct Sha256::State {
    struct Free {
        void operator()(EVP_MD* held) const { EVP_MD_free(held); }
        void operator()(EVP_MD_CTX* held) const { EVP_MD_CTX_free(held); }
    };

    // Fetched once: by name, the algorithm would be looked up at each start.
    std::unique_ptr<EVP_MD, Free> algorithm{EVP_MD_fetch(nullptr, "SHA2-256", nullptr)};
    std::unique_ptr<EVP_MD_CTX, Free> context{EVP_MD_CTX_new()};
    bool isSound = false;  ///< Every step since `begin` succeeded.

    void begin() {
        isSound = algorithm && context &&
                  EVP_DigestInit_ex2(context.get(), algorithm.get(), nullptr) == 1;
    }
};

Sha256::Sha256()
    : state_{std::make_unique<State>()} {
    state_->begin();
}

Sha256::~Sha256() = default;

void Sha256::update(std::span<const std::byte> bytes) {
    state_->isSound =
        state_->isSound && EVP_DigestUpdate(state_->context.get(), bytes.data(), bytes.size()) == 1;
}

std::optional<Sha256::Digest> Sha256::finish() {
    Digest digest{};
    const bool isDone =
        state_->isSound && EVP_DigestFinal_ex(state_->context.get(), digest.data(), nullptr) == 1;
    state_->begin();
    return isDone ? std::optional{digest} : std::nullopt;
}

}  // namespace Brimlo
