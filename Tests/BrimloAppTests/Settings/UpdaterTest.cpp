#include "BrimloApp/Settings/Updater.h"

#include "BrimloAppTests/Support/AppTest.h"
#include "BrimloCoreTests/Support/Words.h"

#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <memory>

#include <openssl/evp.h>

namespace Brimlo {
namespace {

QByteArray answer(const QByteArray& body, const QByteArray& head = "200 OK") {
    const auto length = QByteArray::number(body.size());
    return "HTTP/1.1 " + head + "\r\nContent-Length: " + length + "\r\n\r\n" + body;
}

using Key = std::shared_ptr<EVP_PKEY>;

unsigned char* raw(QByteArray& bytes) {
    return reinterpret_cast<unsigned char*>(bytes.data());
}

QByteArray signatureOf(QByteArray text, const Key& key) {
    const std::shared_ptr<EVP_MD_CTX> context{EVP_MD_CTX_new(), EVP_MD_CTX_free};
    QByteArray result{64, ' '};
    std::size_t length = 64;
    EVP_DigestSignInit(context.get(), nullptr, nullptr, nullptr, key.get());
    EVP_DigestSign(context.get(), raw(result), &length, raw(text), std::size_t(text.size()));
    return result.toBase64();
}

/// Asks a server on the loopback device, which answers each path with the bytes given for it.
class UpdaterTest : public Testing::AppTest {
protected:
    UpdaterTest() {
        server_.listen(QHostAddress::LocalHost);
        QObject::connect(&server_, &QTcpServer::newConnection, [this] {
            auto* const socket = server_.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, [this, socket] {
                asked_.append(socket->readAll());  // One as small as these comes in one piece.
                const auto path = asked_.last().split(' ').value(1);
                socket->write(path == "/feed" ? feed_ : path == "/2" ? answer(text_) : signature_);
            });
        });
        QByteArray key{32, ' '};
        std::size_t length = 32;
        EVP_PKEY_get_raw_public_key(key_.get(), raw(key), &length);
        port_ = QString::number(server_.serverPort());
        source_ = {QUrl{"http://127.0.0.1:" + port_ + "/feed"}, key.toBase64(), "1.9.0"};
    }

    /// How things stand after a check, and what is offered.
    static std::string check(Updater& updater) {
        updater.checkForUpdates();
        EXPECT_TRUE(!updater.canCheck() && updater.isChecking());
        waitFor([&] { return updater.canCheck(); });
        const QString offered = updater.updateVersion() + "|" + updater.updateNotes();
        return (updater.status() + " " + offered + "|" + updater.updateLink()).toStdString();
    }

    std::string check(const QByteArray& feed, const QByteArray& signature) {
        feed_ = feed;
        signature_ = signature;
        Updater updater{source_};
        return check(updater);
    }

    std::string checkSigned(const QByteArray& text) {
        return check(answer(text), answer(signatureOf(text, key_) + "\n"));
    }

    const Key key_{EVP_PKEY_Q_keygen(nullptr, nullptr, "ED25519"), EVP_PKEY_free};
    const QByteArray text_ = R"({"version": "2"})";
    const QByteArray right_ = answer(signatureOf(text_, key_));
    const std::string failed_ = "Could not check for updates: ";
    QByteArray feed_ = answer(text_);  ///< The server's answers, with their headers.
    QByteArray signature_ = right_;
    QStringList asked_;  ///< The requests, as they came.
    QString port_;
    UpdateSource source_;
    QTcpServer server_;
};

TEST_F(UpdaterTest, BelievesWhatIsSignedAndMakesSense) {
    const QByteArray all = R"({"version":"1.10","link":"https://x","notes":"a\r\n\t\u001b\u202e"})";
    const QByteArray verbose = R"({"version":"2", "notes": ")" + QByteArray(20'000, 'n') + "\"}";
    const auto wide = QByteArray{R"({"version":"1.9","link":"https://x"})"}.leftJustified(1 << 18);
    EXPECT_EQ(checkSigned(all), "Version 1.10 is available. 1.10|a\n \uFFFD\uFFFD|https://x");
    EXPECT_EQ(checkSigned(verbose), "Version 2 is available. 2|" + std::string(10'000, 'n') + "|");
    EXPECT_EQ(checkSigned(wide), "Brimlo 1.9.0 is up to date. ||");
    EXPECT_EQ(checkSigned(R"({"version":"1.8.9","notes":null})"), "Brimlo 1.9.0 is up to date. ||");
    for (const auto& text : Testing::words(R"(<html> [] {} {"version":2} {"version":"2-beta"}
            {"version":"2\n"} {"version":"2.99999999999"} {"version":"2","notes":["a"]}
            {"version":"2","link":{}} {"version":"2","link":"javascript:alert"}
            {"version":"2","link":"http://127.0.0.1"} {"version":"2","link":"https:///etc"}
            {"version":"2","link":"https://x@y.org"})")) {
        const auto expected = failed_ + "the answer could not be understood. ||";
        EXPECT_EQ(checkSigned(text.c_str()), expected) << text;
    }
}

TEST_F(UpdaterTest, TrustsNoServer) {
    const Key stranger{EVP_PKEY_Q_keygen(nullptr, nullptr, "ED25519"), EVP_PKEY_free};
    const auto otherText = answer(signatureOf("2", key_));
    const auto otherKey = answer(signatureOf(text_, stranger));
    for (const auto& signature : {otherText, otherKey, answer("")}) {
        EXPECT_EQ(check(answer(text_), signature), failed_ + "the signature does not match. ||");
    }
    const auto odd = failed_ + "the server did not answer as expected. ";
    const auto none = answer("", "404 No");
    EXPECT_EQ(check(answer(text_), none), odd + "||");
    EXPECT_EQ(check(none, right_), odd + "||");
    EXPECT_EQ(check(answer("", "204 No"), right_), odd + "||");
    const auto elsewhere = "http://localhost:" + port_.toStdString() + "/2";
    for (const auto& to : Testing::words("file:///x /feed https://127.0.0.1:1/2 " + elsewhere)) {
        EXPECT_EQ(
            check(answer("", "302 Found\r\nLocation: " + QByteArray(to.c_str())), right_),
            odd + "||");
    }
    EXPECT_FALSE(asked_.join("").contains("/2"));
    const auto endless = "HTTP/1.1 200 OK\r\n\r\n" + QByteArray(1 << 20, ' ');
    const auto tooLong = failed_ + "the answer is too long. ||";
    EXPECT_EQ(check(answer(text_), endless), tooLong);
    const auto pieces = ("3e8\r\n" + QByteArray(1000, ' ') + "\r\n").repeated(1000);
    const QByteArray inPieces = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + pieces;
    EXPECT_EQ(check(inPieces, right_), tooLong);
    EXPECT_EQ(check(answer(QByteArray(256 * 1024 + 1, ' ')), right_), tooLong);
    Updater updater{source_};
    feed_ = answer("", "302 Found\r\nLocation: /2");
    EXPECT_EQ(check(updater), "Version 2 is available. 2||");
    feed_ = none;
    EXPECT_EQ(check(updater), odd + "2||");  // What was found stays.
    source_.timeLimit = std::chrono::milliseconds{200};
    const auto slow = failed_ + "the server took too long. ||";
    EXPECT_EQ(check("", right_), slow);
    EXPECT_EQ(check(answer(text_), answer("x").chopped(1)), slow);
}

TEST_F(UpdaterTest, AsksOnlyWhereItMayAndTellsNothingOfTheUser) {
    auto feeds = Testing::words(R"(x https://x.org/f http://x.org/f http://localhost/f
        http://127.0.0.1/f http://[::1]/f https://u@x.org/f file:///f)");
    std::erase_if(feeds, [](const auto& feed) { return !UpdateFeed::mayAsk(QUrl{feed.c_str()}); });
    EXPECT_EQ(feeds, Testing::words("https://x.org/f http://127.0.0.1/f http://[::1]/f"));
    EXPECT_EQ(Updater{UpdateSource{}}.status(), "Updates come with the system's packages.");
    qputenv("LC_ALL", "de_DE.UTF-8");
    feed_ = answer(text_, "200 OK\r\nSet-Cookie: id=1");
    Updater updater{source_};
    check(updater);
    const QString request = "GET %1 HTTP/1.1\r\nHost: 127.0.0.1:" + port_ +
                            "\r\nUser-Agent: Brimlo\r\nAccept-Language: *\r\n"
                            "Accept-Encoding: identity\r\nConnection: Keep-Alive\r\n\r\n";
    EXPECT_EQ(asked_, (QStringList{request.arg("/feed"), request.arg("/feed.sig")}));
    feed_ = "";
    auto gone = std::make_unique<Updater>(source_);
    gone->checkForUpdates();
    waitFor([&] { return asked_.size() == 3; });
    gone.reset();
    server_.close();
    EXPECT_EQ(check(updater), failed_ + "the server could not be reached. 2||");
}

TEST_F(UpdaterTest, ChecksOnceADayUnlessToldNotTo) {
    const auto ago = [](int seconds) {
        const auto date = QDateTime::currentDateTimeUtc().addSecs(-seconds);
        return "\"lastAnswer\":\"" + date.toString(Qt::ISODate).toStdString() + "\"}";
    };
    const std::pair<std::string, bool> cases[] = {
        {"{\"automaticallyChecks\":",                     true },
        {"{\"lastAnswer\":\"soon\"}",                     true },
        {"{" + ago(86'000),                               false},
        {"{" + ago(86'800),                               true },
        {"{" + ago(-9'000),                               true },
        {"{\"automaticallyChecks\":0," + ago(86'800),     true },
        {"{\"automaticallyChecks\":false," + ago(86'800), false},
    };
    for (const auto& [text, checks] : cases) {
        write("Library/Application Support/Brimlo/updates.json", text);
        Updater updater{source_};
        updater.startAutomaticChecks();
        EXPECT_EQ(updater.isChecking(), checks) << text;
    }
    Updater updater{source_};
    updater.setAutomaticallyChecks(true);
    EXPECT_TRUE(Updater{source_}.automaticallyChecks());
    check(updater);
    Updater next{source_};
    next.startAutomaticChecks();
    EXPECT_FALSE(next.isChecking());
}

}  // namespace
}  // namespace Brimlo
