#include "service/SignInRecords.h"
#include "service/JsonReader.h"
#include "support/Json.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

TEST(SignInRecordsTest, aUserMayHaveNoName)
{
    EXPECT_EQ(decoded<Me>(R"({"user":{"id":"u","email":"e"}})"), (Me{.user = {.id = "u", .email = "e"}}));
    EXPECT_EQ(decoded<SignedIn>(R"({"user":{"id":"u","email":"e","name":"N"}})").user.name, "N");
    EXPECT_THROW(decoded<Me>(R"({"user":{"id":"u"}})"), DecodingError);
    EXPECT_THROW(decoded<Me>(R"({"user":null})"), DecodingError);
}

TEST(SignInRecordsTest, aConfigurationSaysWhichWaysAreOpen)
{
    EXPECT_EQ(decoded<AuthConfig>(R"({"devAuth":true,"workos":false})"), (AuthConfig{.devAuth = true}));
    EXPECT_EQ(decoded<AuthConfig>(R"({"devAuth":false,"workos":true,"environment":"qa","social":["google"]})"),
              (AuthConfig{.workos = true, .environment = "qa", .social = QList<QString>{"google"}}));
    EXPECT_THROW(decoded<AuthConfig>(R"({"devAuth":1,"workos":false})"), DecodingError);
    EXPECT_THROW(decoded<AuthConfig>(R"({"devAuth":true})"), DecodingError);
}

TEST(SignInRecordsTest, anAddressSignsInBySsoOrElseByPassword)
{
    const struct {
        MethodAnswer answer;
        Method expected;
    } cases[] = {
        {{"sso", "https://idp.example/login?a=%2F"}, SsoMethod{"https://idp.example/login?a=%2F"}},
        {{"sso", {}}, PasswordMethod{}},
        {{"sso", "not an address"}, PasswordMethod{}},
        {{"sso", ""}, PasswordMethod{}},
        {{"sso", "javascript:alert(1)"}, PasswordMethod{}},
        {{"password", "https://idp.example"}, PasswordMethod{}},
        {{"magic", "https://idp.example"}, PasswordMethod{}},
    };
    for (const auto& each : cases)
        EXPECT_EQ(methodFrom(each.answer), each.expected) << each.answer.url.value_or("none").toStdString();
    EXPECT_THROW(decoded<MethodAnswer>(R"({"url":"https://idp.example"})"), DecodingError);
}

TEST(SignInRecordsTest, aStepSaysWhatComesNext)
{
    const struct {
        const char* answer;
        SignInStep expected;
    } cases[] = {
        {R"({"user":{"id":"u","email":"e"}})", {SignInStep::SignedIn{}}},
        {R"({"user":null,"next":"totp"})", {SignInStep::SignedIn{}}},
        {R"({"user":1,"next":7})", {SignInStep::SignedIn{}}},
        {R"({"next":"verify_email"})", {SignInStep::VerifyEmail{}}},
        {R"({"next":"totp"})", {SignInStep::Totp{}}},
        {R"({"next":"enrol_totp","qrCode":"q","secret":"s"})", {SignInStep::EnrolTotp{"q", "s"}}},
        {R"({"next":"sso","url":"https://idp.example/x"})", {SignInStep::Sso{"https://idp.example/x"}}},
    };
    for (const auto& each : cases)
        EXPECT_EQ(decoded<SignInStep>(each.answer), each.expected) << each.answer;
}

TEST(SignInRecordsTest, aStepThatCannotBeTakenFails)
{
    const QString noAddress = "The single sign-on step named no address.";
    const struct {
        const char* answer;
        const char* key;
        QString text;
    } cases[] = {
        {R"({"next":"sso"})", "url", noAddress},
        {R"({"next":"sso","url":null})", "url", noAddress},
        {R"({"next":"sso","url":"no address"})", "url", noAddress},
        {R"({"next":"sso","url":1})", "url", "“url” is not what it should be."},
        {R"({"next":"dance"})", "next", "An unknown sign-in step: dance."},
        {R"({})", "next", "An unknown sign-in step: none."},
        {R"({"next":null})", "next", "An unknown sign-in step: none."},
        {R"({"next":1})", "next", "“next” is not what it should be."},
        {R"({"next":"enrol_totp","qrCode":"q"})", "secret", "“secret” is missing."},
    };
    for (const auto& each : cases) {
        try {
            decoded<SignInStep>(each.answer);
            ADD_FAILURE() << each.answer;
        } catch (const DecodingError& error) {
            EXPECT_EQ(error.key(), each.key) << each.answer;
            EXPECT_EQ(error.text(), each.text) << each.answer;
        }
    }
}

} // namespace
} // namespace palvera
