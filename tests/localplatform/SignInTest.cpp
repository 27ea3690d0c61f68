#include "PlatformHarness.h"

#include <gmock/gmock.h>

namespace palvera::local {
namespace {

/// Someone who is not signed in, with a cookie jar.
class SignInTest : public testing::Test {
protected:
    SignInTest() { harness.cookie.clear(); }

    JsonAnswer post(const QByteArray& path, const QJsonObject& json)
    {
        auto body = QJsonDocument(json).toJson();
        auto reply = harness.ask(
            {.method = "POST", .target = "/api/auth/" + path, .headers = harness.serviceHeaders(body)}, body);
        if (auto cookie = headerOf(reply.headers, "Set-Cookie"); !cookie.isNull())
            harness.cookie = cookie.left(cookie.indexOf(';'));
        setCookie = headerOf(reply.headers, "Set-Cookie");
        return {.status = reply.status, .json = QJsonDocument::fromJson(reply.body).object()};
    }

    JsonAnswer enter(const QByteArray& path, const char* email, const char* secret)
    {
        return post(path, {{QStringLiteral("email"), QLatin1String(email)},
                           {QStringLiteral("password"), QLatin1String(secret)}});
    }

    JsonAnswer code(const QByteArray& path, const char* digits)
    {
        return post(path, {{QStringLiteral("code"), QLatin1String(digits)}});
    }

    int me() { return harness.get("me").status; }

    PlatformHarness harness;
    QByteArray setCookie;
};

TEST_F(SignInTest, aPasswordOpensAPersistentSessionThatOnlyTheCookieHolds)
{
    EXPECT_EQ(me(), 401);
    EXPECT_EQ(enter("password", "ada@northlight.example", "wrong").status, 401);
    EXPECT_TRUE(enter("password", "ada@northlight.example", "reel-one").json.contains(QStringLiteral("user")));
    EXPECT_THAT(setCookie.toStdString(),
                testing::AllOf(testing::HasSubstr("HttpOnly"), testing::HasSubstr("Max-Age=")));
    EXPECT_EQ(me(), 200);
    harness.now += std::chrono::hours(24 * 31);
    EXPECT_EQ(me(), 401);
}

TEST_F(SignInTest, aCodeFinishesWhatThePasswordBegan)
{
    struct Case {
        const char* email;
        const char* secret;
        const char* next;
        QByteArray path;
        const char* digits;
    };
    const Case cases[] = {{"ben@northlight.example", "reel-two", "verify_email", "verify", "246810"},
                          {"cleo@northlight.example", "reel-three", "totp", "totp", "135790"},
                          {"dov@northlight.example", "reel-four", "enrol_totp", "totp", "135790"}};
    for (const auto& [email, secret, next, path, digits] : cases) {
        harness.cookie.clear();
        EXPECT_EQ(enter("password", email, secret).text("next"), QLatin1String(next));
        EXPECT_EQ(me(), 401) << email;
        EXPECT_EQ(harness.get("orgs").status, 401) << email;
        EXPECT_EQ(code(path, "000000").status, 401) << email;
        EXPECT_EQ(code(path, digits).status, 200) << email;
        EXPECT_EQ(me(), 200) << email;
    }
}

TEST_F(SignInTest, enrolmentBringsAPictureAndAKey)
{
    auto step = enter("password", "dov@northlight.example", "reel-four");
    auto picture = step.text("qrCode").section(u',', 1).toLatin1();
    EXPECT_TRUE(QByteArray::fromBase64(picture).startsWith("\x89PNG"));
    EXPECT_FALSE(step.text("secret").isEmpty());
}

TEST_F(SignInTest, theOtherDoorsAnswerInTheirOwnWay)
{
    struct Case {
        const char* email;
        const char* secret;
        int password;
        int migrate;
        int login;
    };
    const Case cases[] = {{"eve@harbour.example", "any", 200, 401, 401},
                          {"finn@harbour.example", "reel-six", 401, 200, 401},
                          {"gus@harbour.example", "reel-seven", 401, 401, 401},
                          {"hana@kestrel.example", "open-sesame", 401, 401, 200}};
    for (const auto& [email, secret, password, migrate, login] : cases) {
        EXPECT_EQ(enter("password", email, secret).status, password) << email;
        EXPECT_EQ(enter("migrate", email, secret).status, migrate) << email;
        EXPECT_EQ(enter("login", email, secret).status, login) << email;
    }
    EXPECT_THAT(enter("migrate", "gus@harbour.example", "reel-seven").text("message").toStdString(),
                testing::HasSubstr("renewing"));
    EXPECT_EQ(post("methods", {{QStringLiteral("email"), QStringLiteral("eve@harbour.example")}}).text("method"),
              QStringLiteral("sso"));
}

TEST_F(SignInTest, aGrantFromTheSignInPageIsGoodOnce)
{
    auto page = harness.ask({.method = "GET", .target = "/sign-in/finish?account=ada%40northlight%2Eexample"});
    auto location = headerOf(page.headers, "Location");
    ASSERT_TRUE(location.startsWith("palvera://sign-in?grant="));
    QJsonObject grant{
        {QStringLiteral("grant"), QString::fromLatin1(QByteArray::fromPercentEncoding(location.mid(24)))}};
    EXPECT_EQ(post("native/redeem", grant).status, 200);
    EXPECT_EQ(post("native/redeem", grant).status, 401);
    auto refused = harness.ask({.method = "GET", .target = "/sign-in/finish"});
    EXPECT_EQ(headerOf(refused.headers, "Location"), "palvera://sign-in?error=access%5Fdenied");
}

TEST_F(SignInTest, aPasskeyMustSignTheChallengeItWasGiven)
{
    auto options = harness.call("POST", "auth/passkey/options").json;
    auto challenge = options[QStringLiteral("options")][QStringLiteral("challenge")].toString();
    auto assertionFor = [&](const QString& text) {
        auto client = QJsonDocument(QJsonObject{{QStringLiteral("challenge"), text}}).toJson();
        QJsonObject response{
            {QStringLiteral("clientDataJSON"), QString::fromLatin1(client.toBase64(QByteArray::Base64UrlEncoding))},
            {QStringLiteral("authenticatorData"), QStringLiteral("eA")},
            {QStringLiteral("signature"), QStringLiteral("eA")}};
        QJsonObject assertion{{QStringLiteral("id"), QStringLiteral("eA")},
                              {QStringLiteral("rawId"), QStringLiteral("eA")},
                              {QStringLiteral("type"), QStringLiteral("public-key")},
                              {QStringLiteral("response"), response},
                              {QStringLiteral("authenticatorAttachment"), QStringLiteral("platform")},
                              {QStringLiteral("clientExtensionResults"), QJsonObject()}};
        return QJsonObject{{QStringLiteral("response"), assertion},
                           {QStringLiteral("challengeId"), options[QStringLiteral("challengeId")]}};
    };
    EXPECT_EQ(post("passkey", assertionFor(challenge)).status, 200);
    EXPECT_EQ(post("passkey", assertionFor(challenge)).status, 401); // a challenge is good once
    EXPECT_EQ(violationsOf(harness), "");
}

TEST_F(SignInTest, signingOutEndsTheSession)
{
    enter("password", "ada@northlight.example", "reel-one");
    auto kept = harness.cookie;
    EXPECT_EQ(harness.call("POST", "auth/logout").status, 200);
    harness.cookie = kept;
    EXPECT_EQ(me(), 401);
}

} // namespace
} // namespace palvera::local
