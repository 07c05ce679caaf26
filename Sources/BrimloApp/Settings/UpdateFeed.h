#pragma once

#include <QtCore/QUrl>

#include <optional>

namespace Brimlo {

/// What a feed of updates says, and what is believed of one.
struct UpdateFeed {
    QString version;  ///< The newest one: numbers with dots between.
    QString notes;    ///< What is new in it: plain text of several lines, perhaps none.
    QString link;     ///< An https address to fetch it from; empty when none is told.

    bool operator==(const UpdateFeed&) const = default;

    /// Whether an address may be asked: https, or http by a loopback number; no user name in it.
    [[nodiscard]] static bool mayAsk(const QUrl& address);

    /// Whether the signature (Ed25519, RFC 8032) was made over exactly these bytes. It and the
    /// public key are in base64; a malformed one signs nothing.
    [[nodiscard]] static bool isSigned(
        const QByteArray& bytes, const QByteArray& signature, const QByteArray& key);

    /// The feed in a JSON document, fit to be shown: control characters are replaced, long notes
    /// cut. Nullopt without a "version", or when that, "notes" or "link" is not what it should be.
    [[nodiscard]] static std::optional<UpdateFeed> decode(const QByteArray& bytes);
};

}  // namespace Brimlo
