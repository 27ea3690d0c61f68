#include "PlatformHarness.h"

#include "localplatform/softkey/Cryptography.h"
#include "localplatform/softkey/SoftKey.h"

#include <QJsonDocument>

#include <openssl/x509.h>

namespace palvera::local {
namespace {

using namespace std::chrono_literals;

QByteArray text(const QByteArray& bytes)
{
    return bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

QByteArray publicKeyOf(const SoftPasskey& passkey)
{
    unsigned char* der = nullptr;
    const int size = i2d_PUBKEY(passkey.key.get(), &der);
    const QByteArray bytes(reinterpret_cast<char*>(der), size);
    OPENSSL_free(der);
    return bytes;
}

/// An assertion as it should be, but for what a test spoils.
struct Assertion {
    QByteArray type = "webauthn.get", origin = "https://localhost", crossOrigin = "false", challenge = {};
    QByteArray relyingParty = "localhost";
    char flags = 0x05; // present and verified
    QByteArray signature = {};
    QByteArray rawId = {};
};

struct DoorsTest : testing::Test, PlatformHarness {
    const SoftPasskey passkey = SoftPasskey::make("localhost", "ada", false);

    DoorsTest()
    {
        ask("POST /sign-in/passkey/add", R"({"email":"ada@northlight.example","id":")" + text(passkey.id) +
                                             R"(","publicKey":")" + text(publicKeyOf(passkey)) + "\"}");
    }

    QByteArray sign(const QByteArray& data) const { return signature(passkey.key.get(), data); }
    /// The answer to it, by its status and its reason, and for what it counts.
    std::string answerTo(Assertion it, std::chrono::minutes late = {})
    {
        const auto challenge = QJsonDocument::fromJson(ask("POST /api/auth/passkey/options", {}).body).object();
        now += late;
        if (it.challenge.isNull())
            it.challenge = challenge["options"].toObject()["challenge"].toString().toUtf8();
        const auto clientData = R"({"type":")" + it.type + R"(","challenge":")" + it.challenge + R"(","origin":")" +
                                it.origin + R"(","crossOrigin":)" + it.crossOrigin + '}';
        const auto data = sha256(it.relyingParty) + it.flags + QByteArray(4, '\0');
        const auto signature = it.signature.isNull() ? sign(data + sha256(clientData)) : it.signature;
        const auto before = platform.violations().size();
        const auto reply =
            ask("POST /api/auth/passkey",
                R"({"challengeId":")" + challenge["challengeId"].toString().toUtf8() + R"(","response":{"id":")" +
                    text(passkey.id) + R"(","rawId":")" + (it.rawId.isNull() ? text(passkey.id) : it.rawId) +
                    R"(","type":"public-key","authenticatorAttachment":"platform","clientExtensionResults":{},)"
                    R"("response":{"clientDataJSON":")" +
                    text(clientData) + R"(","authenticatorData":")" + text(data) + R"(","signature":")" +
                    text(signature) + "\"}}}");
        const auto counts = platform.violations().size() > before ? ", a violation" : "";
        return std::to_string(reply.status) + counts;
    }
};

TEST_F(DoorsTest, anAssertionIsTakenAsItShouldBeAndInNoOtherWay)
{
    EXPECT_EQ(answerTo({}), "200");
    EXPECT_EQ(answerTo({}, 6min), "401") << "too late";
    const std::string improper = "400, a violation";
    EXPECT_EQ(answerTo({.type = "webauthn.create"}), improper);
    EXPECT_EQ(answerTo({.origin = "http://localhost:80"}), improper);
    EXPECT_EQ(answerTo({.crossOrigin = "true"}), improper);
    EXPECT_EQ(answerTo({.challenge = "AAAA"}), improper);
    EXPECT_EQ(answerTo({.relyingParty = "bank.example"}), improper);
    EXPECT_EQ(answerTo({.flags = 0x01}), improper) << "nobody was verified";
    EXPECT_EQ(answerTo({.flags = 0x04}), improper) << "nobody was there";
    EXPECT_EQ(answerTo({.signature = sign("something else")}), improper);
    EXPECT_EQ(answerTo({.rawId = "AAAA"}), improper);
}

TEST_F(DoorsTest, aGrantServesOnceAndInTime)
{
    const auto redeem = [&](const QByteArray& page, std::chrono::seconds late = {}) {
        now += late;
        const auto grant = page.mid(page.indexOf("grant=") + 6).split('"')[0].replace("%2D", "-");
        return ask("POST /api/auth/native/redeem", R"({"grant":")" + grant + "\"}").status;
    };
    const auto finish = [&] { return ask("GET /sign-in/finish?account=eve%40harbour%2Eexample").body; };
    const auto page = finish();
    EXPECT_TRUE(page.contains("You are signed in. You can close this page."));
    EXPECT_EQ(redeem(page), 200);
    EXPECT_EQ(redeem(page), 401);
    EXPECT_EQ(redeem(finish(), 121s), 401);
}

TEST_F(DoorsTest, theIdentityProviderKnowsItsBrowsersAgain)
{
    const QByteArray start = "GET /api/auth/workos/start?native=1&return=%2F";
    const std::pair<QByteArray, QByteArray> known{"Cookie", "pv_identity=eve@harbour.example"};
    const auto isSignedIn = [](const Reply& reply) { return reply.body.contains("grant="); };
    EXPECT_TRUE(isSignedIn(ask(start + "&provider=google", {}, {known})));
    EXPECT_TRUE(isSignedIn(ask(start + "&email=eve%40harbour.example", {}, {known})));
    EXPECT_FALSE(isSignedIn(ask(start + "&email=ada%40northlight.example", {}, {known}))) << "somebody else is meant";
    EXPECT_FALSE(isSignedIn(ask(start)));
    EXPECT_EQ(platform.violations(), QStringList());
}

} // namespace
} // namespace palvera::local
