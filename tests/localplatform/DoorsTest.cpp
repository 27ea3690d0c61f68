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
    QByteArray bytes(i2d_PUBKEY(passkey.key.get(), nullptr), '\0');
    auto* end = reinterpret_cast<unsigned char*>(bytes.data());
    i2d_PUBKEY(passkey.key.get(), &end);
    return bytes;
}

struct DoorsTest : testing::Test, PlatformHarness {
    const SoftPasskey passkey = SoftPasskey::make("localhost", "ada", false);

    DoorsTest()
    {
        ask("POST /sign-in/passkey/add", R"({"email":"ada@northlight.example","id":")" + text(passkey.id) +
                                             R"(","publicKey":")" + text(publicKeyOf(passkey)) + "\"}");
    }

    /// The status that answers an assertion in which `is` has taken the place of `was`.
    int answerTo(const QByteArray& was, const QByteArray& is, std::chrono::minutes late = {})
    {
        const auto challenge = QJsonDocument::fromJson(ask("POST /api/auth/passkey/options", {}).body).object();
        now += late;
        const auto clientData = R"({"type":"webauthn.get","challenge":")" +
                                challenge["options"]["challenge"].toString().toUtf8() +
                                R"(","origin":"https://localhost","crossOrigin":false})";
        const auto key = sha256("localhost") + QByteArray("\x05\0\0\0\0", 5); // somebody is present, and verified
        const auto said = with(clientData, was, is), signedData = with(key, was, is);
        const auto body = R"({"challengeId":")" + challenge["challengeId"].toString().toUtf8() +
                          R"(","response":{"id":")" + text(passkey.id) + R"(","rawId":")" + text(passkey.id) +
                          R"(","type":"public-key","authenticatorAttachment":"platform","clientExtensionResults":{},)"
                          R"("response":{"clientDataJSON":")" +
                          text(said) + R"(","authenticatorData":")" + text(signedData) + R"(","signature":")" +
                          text(signature(passkey.key.get(), signedData + sha256(said))) + "\"}}}";
        return ask("POST /api/auth/passkey", with(body, was, is)).status;
    }
};

TEST_F(DoorsTest, anAssertionIsTakenAsItShouldBeAndInNoOtherWay)
{
    EXPECT_EQ(answerTo("-", "-"), 200);
    EXPECT_EQ(answerTo("-", "-", 6min), 401) << "too late";
    const std::pair<QByteArray, QByteArray> improper[] = {
        {"webauthn.get", "webauthn.create"},
        {"https://localhost", "http://localhost:80"},
        {"false", "true"},
        {R"("challenge":")", R"("challenge":"A)"},
        {sha256("localhost"), sha256("bank.example")},
        {QByteArray("\x05\0\0", 3), QByteArray("\x01\0\0", 3)}, // nobody was verified
        {QByteArray("\x05\0\0", 3), QByteArray("\x04\0\0", 3)}, // nobody was there
        {R"("signature":")", R"("signature":"A)"},
        {R"("rawId":")", R"("rawId":"A)"},
    };
    for (const auto& [was, is] : improper) {
        const auto before = platform.violations().size();
        EXPECT_EQ(answerTo(was, is), 400) << is.toStdString();
        EXPECT_EQ(platform.violations().size(), before + 1) << is.toStdString();
    }
}

TEST_F(DoorsTest, aGrantServesOnceAndInTime)
{
    const auto redeem = [&](const QByteArray& page) {
        const auto grant = page.mid(page.indexOf("grant=") + 6).split('"')[0].replace("%2D", "-");
        return ask("POST /api/auth/native/redeem", R"({"grant":")" + grant + "\"}").status;
    };
    const auto finish = [&] { return ask("GET /sign-in/finish?account=eve%40harbour%2Eexample").body; };
    const auto page = finish();
    EXPECT_TRUE(page.contains("You are signed in. You can close this page."));
    EXPECT_EQ(redeem(page), 200);
    EXPECT_EQ(redeem(page), 401);
    const auto late = finish();
    now += 121s;
    EXPECT_EQ(redeem(late), 401);
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
