#include "service/ServiceTest.h"

#include "session/PasskeyRules.h"
#include "session/PasskeySignIn.h"
#include "session/PasskeyTexts.h"
#include "session/SignInDoorError.h"
#include "support/FakePasskeyService.h"

namespace palvera {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Credential = PasskeyChallenge::Credential;
using Kind = PasskeyPrompt::Kind;

TEST(PasskeyRules, bytesAreReadFromEitherAlphabetPaddedOrNot)
{
    const std::pair<const char*, std::optional<QByteArray>> cases[] = {
        {"", ""},
        {"-_8", QByteArray("\xfb\xff", 2)},
        {"+/8=", QByteArray("\xfb\xff", 2)},
        {"MDEyMzQ1Njc4OWFiY2RlZjAxMjM0NTY3ODlhYmNkZWY", "0123456789abcdef0123456789abcdef"},
        {"a", {}},
        {"ab cd", {}},
        {"ab*d", {}},
        {"é", {}},
        {"ab=d", {}},
    };
    for (const auto& [text, bytes] : cases)
        EXPECT_EQ(fromBase64Url(text), bytes) << text;
    EXPECT_EQ(toBase64Url(QByteArray("\xfb\xff\xbf\x01", 4)), "-_-_AQ");
}

TEST(PasskeyRules, aServiceMayAskForPasskeysOfItsOwnSiteAlone)
{
    const std::tuple<const char*, const char*, bool, bool> cases[] = {
        // what is asked for, where, whether that is this machine, and whether it may be
        {"platform.palvera.example", "platform.palvera.example", false, true},
        {"palvera.example", "platform.palvera.example", false, true},
        {"example", "platform.palvera.example", false, false},
        {"vera.example", "platform.palvera.example", false, false},
        {".palvera.example", "platform.palvera.example", false, false},
        {"www.platform.palvera.example", "platform.palvera.example", false, false},
        {"bank.example", "platform.palvera.example", false, false},
        {"", "platform.palvera.example", false, false},
        {"", "", false, false},
        {"localhost", "127.0.0.1", true, true},
        {"localhost", "localhost", true, true},
        {"localhost", "platform.palvera.example", false, false},
        {"0.0.1", "127.0.0.1", true, true}, // which no key holds a passkey for
        {"bank.example", "localhost", true, false},
    };
    for (const auto& [relyingParty, host, isLoopback, may] : cases)
        EXPECT_EQ(mayAskFor(relyingParty, host, isLoopback), may) << relyingParty << " at " << host;
}

TEST(PasskeyTexts, sayWhatIsWrongAndNameEachAccount)
{
    const std::tuple<int, bool, const char*> cases[] = {
        // how many tries are left, whether the last one was wrong, and what is said
        {8, false, ""},
        {7, true, "That PIN is not right. 7 tries left."},
        {-1, true, "That PIN is not right."},
        {1, false, "One try left. After that the security key locks."},
    };
    for (const auto& [left, isWrong, note] : cases)
        EXPECT_EQ(noteFor({.kind = Kind::pin, .triesLeft = left, .isWrong = isWrong}), note);
    EXPECT_EQ(accountsOf({.names = {"ada\n", "", "\u202E"}}), QStringList({"ada ", "Account 2", "Account 3"}));
}

struct PasskeySignInTest : ServiceTest {
    FakePasskeyService keys;
    PasskeySignIn passkey{*api, keys};

    /// How asking for that ended: the bodies sent, or the failure's text.
    QString outcomeWith(const QByteArray& options, const PasskeyAnswer& answer = {.credential = "id"})
    {
        client.handler = [&](const HttpRequest&) { // one answer for both
            return HttpResponse{.status = 200,
                                .body =
                                    R"({"challengeId":"c","user":{"id":"u","email":"e"},"options":)" + options + '}'};
        };
        QString outcome;
        const auto sign = [](PasskeySignIn& with, QString& how) -> Task<void> {
            auto ended = co_await outcomeOf(with.signIn());
            how = ended.failure ? describe(ended.failure) : QStringLiteral("signed in");
        };
        simulation.start(sign(passkey, outcome));
        simulation.settle();
        if (outcome.isEmpty())
            keys.answer(answer);
        simulation.settle();
        return outcome;
    }
};

TEST_F(PasskeySignInTest, hasTheChallengeSignedAndSendsTheAnswer)
{
    const PasskeyAnswer answer{
        .credential = "\xff\xfe", .authenticatorData = "data", .signature = "signature", .user = "user"};
    EXPECT_EQ(outcomeWith(R"({"challenge":"+/8=","rpId":"Service.test","timeout":5,"userVerification":"required",
                              "allowCredentials":[{"id":"aWQ","transports":["usb"]},{"id":"*"},{"id":"-_8="}]})",
                          answer),
              "signed in");
    const QByteArray clientData =
        R"({"type":"webauthn.get","challenge":"-_8","origin":"https://service.test","crossOrigin":false})";
    ASSERT_EQ(keys.requests.size(), 1u);
    EXPECT_EQ(keys.requests[0].clientData, clientData);
    EXPECT_EQ(keys.requests[0].relyingParty, "service.test");
    EXPECT_EQ(keys.requests[0].allowed, QList<QByteArray>({"id", "\xfb\xff"})) << "what cannot be read is left out";
    EXPECT_THAT(asked(), ElementsAre("POST auth/passkey/options", "POST auth/passkey"));
    const QByteArray sent = R"({"challengeId":"c","response":{"authenticatorAttachment":"platform",)"
                            R"("clientExtensionResults":{},"id":"__4","rawId":"__4","response":{)"
                            R"("authenticatorData":"ZGF0YQ","clientDataJSON":")" +
                            toBase64Url(clientData).toUtf8() +
                            R"(","signature":"c2lnbmF0dXJl","userHandle":"dXNlcg"},"type":"public-key"}})";
    EXPECT_EQ(lastBody(), sent);
    outcomeWith(R"({"challenge":"+/8="})");
    EXPECT_EQ(keys.requests[1].relyingParty, "service.test") << "the service's own, where none is named";
    EXPECT_THAT(keys.requests[1].allowed, IsEmpty());
    EXPECT_FALSE(lastBody().contains("userHandle"));
}

TEST_F(PasskeySignInTest, nothingIsSignedThatCannotBeReadOrIsOfAnotherSite)
{
    for (const char* options : {R"({"challenge":"a*b"})", R"({"challenge":""})", R"({"challenge":"a"})"})
        EXPECT_EQ(outcomeWith(options), "The platform sent a challenge this app could not read.") << options;
    EXPECT_EQ(outcomeWith(R"({"challenge":"AAAA","rpId":"bank.example"})"),
              "The platform asked for a passkey of another site.");
    EXPECT_THAT(keys.requests, IsEmpty());
}

} // namespace
} // namespace palvera
