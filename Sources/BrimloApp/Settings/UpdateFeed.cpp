#include "BrimloApp/Settings/UpdateFeed.h"

#include "BrimloCore/Support/Json.h"
#include "BrimloCore/Support/Text.h"

#include <QtCore/QRegularExpression>
#include <QtNetwork/QHostAddress>

#include <memory>

#include <openssl/evp.h>

namespace Brimlo {

namespace {

constexpr qsizetype kLongest = 10'000;  // Characters of the notes, and of a link.

std::basic_string<unsigned char> raw(const QByteArray& bytes) {
    return {bytes.begin(), bytes.end()};
}

/// Keeps line ends, whichever system they come from.
QString cleaned(const std::string& text) {
    QStringList lines = QString::fromStdString(text).left(kLongest).split('\n');
    for (QString& line : lines) {
        line.replace('\t', ' ').remove('\r');
        line = QString::fromStdString(Text::printable(line.toStdString()));
    }
    return lines.join('\n').trimmed();
}

}  // namespace

bool UpdateFeed::mayAsk(const QUrl& address) {
    const bool isSafe = address.scheme() == "https" ||
                        (address.scheme() == "http" && QHostAddress{address.host()}.isLoopback());
    return isSafe && !address.host().isEmpty() && address.userInfo().isEmpty();
}

bool UpdateFeed::isSigned(
    const QByteArray& bytes, const QByteArray& signature, const QByteArray& key) {
    const auto text = raw(bytes);
    const auto rawKey = raw(QByteArray::fromBase64(key));
    const auto made = raw(QByteArray::fromBase64(signature));
    // OpenSSL itself refuses a key or a signature of another length.
    const std::shared_ptr<EVP_PKEY> publicKey{
        EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, rawKey.data(), rawKey.size()),
        EVP_PKEY_free};
    const std::shared_ptr<EVP_MD_CTX> context{EVP_MD_CTX_new(), EVP_MD_CTX_free};
    return publicKey && context &&
           EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, publicKey.get()) == 1 &&
           EVP_DigestVerify(context.get(), made.data(), made.size(), text.data(), text.size()) == 1;
}

std::optional<UpdateFeed> UpdateFeed::decode(const QByteArray& bytes) {
    const auto document = Json::parse(bytes.toStdString());
    if (!document) {
        return std::nullopt;
    }
    Json::FieldReader reader{*document};
    const UpdateFeed feed{
        .version = QString::fromStdString(reader.text("version")),
        .notes = cleaned(reader.optionalText("notes").value_or("")),
        .link = QString::fromStdString(reader.optionalText("link").value_or(""))};
    static const QRegularExpression version{R"(\A[0-9]{1,6}(\.[0-9]{1,6}){0,3}\z)"};
    const QUrl link{feed.link, QUrl::StrictMode};
    const bool isLink = link.scheme() == "https" && mayAsk(link) && feed.link.size() <= kLongest;
    const bool isSound = !reader.error() && version.match(feed.version).hasMatch() &&
                         (isLink || feed.link.isEmpty());
    return isSound ? std::optional{feed} : std::nullopt;
}

}  // namespace Brimlo
