#include "ServiceTest.h"

#include "service/SignInOperations.h"

namespace palvera {
namespace {

using SignInOperationsTest = ServiceTest;

TEST_F(SignInOperationsTest, eachIsOneRequest)
{
    const QByteArray user = R"({"user":{"id":"u","email":"e"}})";
    const LoginBody login{.email = "a@b.c", .password = "pass/word"};
    const QByteArray loginJson = R"({"email":"a@b.c","password":"pass/word"})";
    const auto run = [this](auto operation) { simulation.run(std::move(operation)); };
    const struct {
        QByteArray answer;
        std::function<void()> call;
        QByteArray request;
        QByteArray body;
    } cases[] = {
        {R"({"devAuth":true,"workos":true})", [&] { run(authConfig(api)); }, "GET auth/config", ""},
        {user, [&] { run(currentUser(api)); }, "GET me", ""},
        {user, [&] { run(signInWithPassword(api, login)); }, "POST auth/password", loginJson},
        {user, [&] { run(migratePassword(api, login)); }, "POST auth/migrate", loginJson},
        {"ignored", [&] { run(signInDirectly(api, login)); }, "POST auth/login", loginJson},
        {user, [&] { run(verifyEmailCode(api, {.code = "123"})); }, "POST auth/verify", R"({"code":"123"})"},
        {user, [&] { run(verifyAuthenticatorCode(api, {.code = "123"})); }, "POST auth/totp", R"({"code":"123"})"},
        {"ignored", [&] { run(resendEmailCode(api)); }, "POST auth/verify/resend", ""},
        {"ignored", [&] { run(forgotPassword(api, {.email = "a@b.c"})); }, "POST auth/forgot", R"({"email":"a@b.c"})"},
        {user, [&] { run(redeemGrant(api, {.grant = "g"})); }, "POST auth/native/redeem", R"({"grant":"g"})"},
    };
    for (const auto& each : cases) {
        client.answer(200, each.answer);
        each.call();
        QByteArray expected = each.request;
        EXPECT_EQ(lastRequest(), expected.replace(' ', " https://service.test/api/"));
        EXPECT_EQ(lastBody(), each.body) << each.request.toStdString();
    }
}

TEST_F(SignInOperationsTest, theMethodOfAnAddressIsAskedFor)
{
    client.answer(200, R"({"method":"sso","url":"https://idp.example"})");
    EXPECT_EQ(simulation.run(signInMethod(api, "a@b.c")), Method(SsoMethod{"https://idp.example"}));
    EXPECT_EQ(lastRequest(), "POST https://service.test/api/auth/methods");
    EXPECT_EQ(lastBody(), R"({"email":"a@b.c"})");
    client.answer(200, R"({"method":"sso"})");
    EXPECT_EQ(simulation.run(signInMethod(api, "a@b.c")), Method(PasswordMethod{}));
}

TEST_F(SignInOperationsTest, aRefusalReachesTheCaller)
{
    client.answer(401, R"({"message":"Wrong password.","error":"invalid_credentials"})");
    const auto error = failureOf<APIError>(signInWithPassword(api, {.email = "e", .password = "p"}));
    EXPECT_EQ(error.status(), 401);
    EXPECT_EQ(error.code(), "invalid_credentials");
}

TEST_F(SignInOperationsTest, aBrowserStartsAtTheService)
{
    const QByteArray start = "https://service.test/api/auth/workos/start?native=1&return=%2F";
    EXPECT_EQ(webStartURL(api, {}, {}), start);
    EXPECT_EQ(webStartURL(api, "google", {}), start + "&provider=google");
    EXPECT_EQ(webStartURL(api, {}, "a+b@c.d"), start + "&email=a%2Bb%40c%2Ed");
    EXPECT_EQ(webStartURL(api, "google", "a@b.c"), start + "&provider=google&email=a%40b%2Ec");
}

} // namespace
} // namespace palvera
