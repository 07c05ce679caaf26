#include "BrimloCore/Support/Sha256.h"

#include <openssl/evp.h>

namespace Brimlo {

void Sha256::Free::operator()(evp_md_st* algorithm) const {
    EVP_MD_free(algorithm);
}

void Sha256::Free::operator()(evp_md_ctx_st* context) const {
    EVP_MD_CTX_free(context);
}

// Fetched once: asked for by name at each start, the algorithm is searched for each time.
Sha256::Sha256()
    : algorithm_{EVP_MD_fetch(nullptr, "SHA2-256", nullptr)}
    , context_{EVP_MD_CTX_new()} {
    begin();
}

void Sha256::begin() {
    isSound_ = algorithm_ && context_ &&
               EVP_DigestInit_ex2(context_.get(), algorithm_.get(), nullptr) == 1;
}

void Sha256::update(std::span<const std::byte> bytes) {
    isSound_ = isSound_ && EVP_DigestUpdate(context_.get(), bytes.data(), bytes.size()) == 1;
}

std::optional<Sha256::Digest> Sha256::finish() {
    Digest digest{};
    const bool isDone = isSound_ && EVP_DigestFinal_ex(context_.get(), digest.data(), nullptr) == 1;
    begin();
    return isDone ? std::optional{digest} : std::nullopt;
}

}  // namespace Brimlo
