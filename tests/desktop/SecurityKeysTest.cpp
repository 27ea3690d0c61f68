#include "desktop/SecurityKeys.h"

#include "async/TaskGroup.h"
#include "desktop/KeyTalk.h"
#include "localplatform/softkey/Cryptography.h"
#include "localplatform/softkey/SoftKey.h"
#include "tests/support/LoopFixture.h"

#include <boost/asio/bind_cancellation_slot.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/io_context.hpp>

#include <openssl/evp.h>

#include <gmock/gmock.h>

namespace palvera {
namespace {

using local::sha256;
using local::SoftKey;
using local::SoftPasskey;
using Kind = PasskeyPrompt::Kind;
using namespace std::chrono_literals;

const QByteArray site = "auth.palvera.example";

bool isSignedBy(const PasskeyAnswer& answer, const SoftPasskey& passkey, const QByteArray& clientData)
{
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    const auto data = answer.authenticatorData + sha256(clientData);
    const auto bytes = [](const QByteArray& from) { return reinterpret_cast<const unsigned char*>(from.constData()); };
    return EVP_DigestVerifyInit(context.get(), nullptr, EVP_sha256(), nullptr, passkey.key.get()) == 1 &&
           EVP_DigestVerify(context.get(), bytes(answer.signature), std::size_t(answer.signature.size()), bytes(data),
                            std::size_t(data.size())) == 1;
}

/// Real threads and software keys, with a user who does what is written down.
struct SecurityKeysTest : LoopFixture {
    /// What the user does at a prompt; at a PIN they enter the next of `pins`, if there is one.
    struct Script {
        std::vector<const char*> pins = {};
        int account = 0;
        std::map<Kind, std::function<void()>> does = {};
    };

    const SoftPasskey ada = SoftPasskey::make(site, "ada", false), ben = SoftPasskey::make(site, "ben", true),
                      cleo = SoftPasskey::make(site, "", true), eve = SoftPasskey::make(site, "eve", true);
    SoftKey key{{.pin = "2468", .passkeys = {ada, ben, cleo}}};
    SoftKey finger{{.pin = "13579", .knowsFinger = true, .passkeys = {eve}}};
    std::vector<SoftKey*> plugged{&key};
    boost::asio::io_context io{1};
    const boost::asio::executor_work_guard<boost::asio::io_context::executor_type> work{io.get_executor()};
    boost::asio::cancellation_signal cut;
    PasskeyRequest request{
        .clientData = R"({"type":"webauthn.get"})", .relyingParty = site, .allowed = {"other", ada.id}};
    std::optional<PasskeyAnswer> answer;
    SecurityKeys keys{io.get_executor(), [this] {
                          KeyList list{.keys = {fido_dev_info_new(8), {8}}};
                          list.count = SoftKey::fill(list.keys.get(), plugged);
                          return list;
                      }};

    void TearDown() override { EXPECT_EQ(key.endlessWaits() + finger.endlessWaits(), 0); }
    static std::string wordsFor(const PasskeyPrompt& prompt)
    {
        if (prompt.kind == Kind::pin)
            return "pin " + std::to_string(prompt.triesLeft) + (prompt.isWrong ? " wrong, " : ", ");
        if (prompt.kind == Kind::account)
            return "account " + prompt.names.join('|').toStdString() + ", ";
        if (prompt.kind == Kind::insert)
            return "insert, ";
        return prompt.kind == Kind::which ? "which, " : ""; // a touch is asked for only when the key waits for it
    }

    /// What the user was asked, and how it ended: with the name of the passkey that has signed, or a failure's text.
    std::string attempt(const Script& script)
    {
        std::string asked, end;
        std::size_t nextPin = 0;
        QObject listener;
        QObject::connect(&keys, &SecurityKeys::promptChanged, &listener, [&] {
            const auto prompt = keys.prompt();
            asked += wordsFor(prompt);
            if (const auto does = script.does.find(prompt.kind); does != script.does.end())
                does->second();
            else if (prompt.kind == Kind::pin && nextPin < script.pins.size())
                keys.enterPin(Pin(script.pins[nextPin++]));
            else if (prompt.kind == Kind::account)
                keys.choose(script.account);
        });
        answer.reset();
        boost::asio::co_spawn(io, outcomeOf(keys.assertion(request)),
                              boost::asio::bind_cancellation_slot(
                                  cut.slot(), [&](std::exception_ptr failure, Outcome<PasskeyAnswer> outcome) {
                                      answer = std::move(outcome.value);
                                      if (outcome.failure)
                                          failure = outcome.failure;
                                      if (failureAs<PasskeyCancelled>(failure))
                                          end = "cancelled";
                                      else if (failure)
                                          end = isCancellation(failure) ? "cut off" : describe(failure).toStdString();
                                      else
                                          end = signer();
                                  }));
        while (end.empty())
            io.run_one();
        io.poll();
        EXPECT_EQ(keys.prompt(), PasskeyPrompt());
        return asked + end;
    }
    std::string signer() const
    {
        EXPECT_EQ(answer->authenticatorData.left(32), sha256(site));
        EXPECT_EQ(answer->authenticatorData[32] & 0x05, 0x05) << "nobody was there, or was verified";
        for (const auto& [name, passkey] : {std::pair("ada", &ada), {"ben", &ben}, {"cleo", &cleo}, {"eve", &eve}})
            if (isSignedBy(*answer, *passkey, request.clientData) && answer->credential == passkey->id &&
                (answer->user.isEmpty() || answer->user == passkey->user))
                return name;
        return "signed by nobody";
    }
};

TEST_F(SecurityKeysTest, theRightPasskeySignsOnceItsUserIsVerified)
{
    EXPECT_EQ(attempt({.pins = {"2468"}}), "pin 8, ada");
    EXPECT_EQ(attempt({.pins = {"1111", "2468"}}), "pin 8, pin 7 wrong, ada");
    EXPECT_EQ(attempt({.does = {{Kind::pin, [&] { keys.cancel(); }}}}), "pin 8, cancelled");
    request.allowed.clear();
    EXPECT_EQ(attempt({.pins = {"2468"}, .account = 1}), "pin 8, account ben|, cleo");
    request.relyingParty = "elsewhere.example";
    EXPECT_EQ(attempt({.pins = {"2468"}}), "pin 8, This security key holds no passkey for Palvera.");
}

TEST_F(SecurityKeysTest, aKeyWithoutAPinOrWithAFingerIsNotAskedForOne)
{
    request.allowed.clear();
    plugged = {&finger};
    EXPECT_EQ(attempt({}), "eve");
    SoftKey bare({.passkeys = {ben}});
    plugged = {&bare};
    EXPECT_EQ(attempt({}), "This security key has no PIN yet. Set one in your browser's settings.");
    bare.setPlugged(false);
}

TEST_F(SecurityKeysTest, itLocksAfterTooManyWrongPins)
{
    EXPECT_EQ(attempt({.pins = std::vector<const char*>(8, "1111")}),
              "pin 8, pin 7 wrong, pin 6 wrong, pin 5 wrong, pin 4 wrong, pin 3 wrong, pin 2 wrong, pin 1 wrong, "
              "This security key is locked: its PIN was wrong too often.");
    EXPECT_EQ(attempt({.pins = {"2468"}}), "This security key is locked: its PIN was wrong too often.") << "at once";
}

TEST_F(SecurityKeysTest, whileItWaitsForATouchItCanBeCancelledTouchedOrTakenOut)
{
    key.setTouched(false);
    const auto whileItBlinks = [&](const std::function<void()>& does) {
        return attempt({.pins = {"2468"}, .does = {{Kind::touch, does}}});
    };
    EXPECT_EQ(whileItBlinks([&] { keys.cancel(); }), "pin 8, cancelled");
    EXPECT_GE(key.cancellations(), 1) << "it still blinks";
    EXPECT_EQ(whileItBlinks([&] { cut.emit(boost::asio::cancellation_type::terminal); }), "pin 8, cut off");
    EXPECT_EQ(whileItBlinks([&] { key.touch(); }), "pin 8, ada");
    key.setTouched(false);
    EXPECT_EQ(whileItBlinks([&] { key.setPlugged(false); }),
              "pin 8, This security key was taken out. Put it in and try again.");
}

TEST_F(SecurityKeysTest, itWaitsForAKeyThatIsOfUse)
{
    SoftKey older({.isFido2 = false});
    key.setPlugged(false);
    plugged = {&older, &key};
    EXPECT_EQ(attempt({.pins = {"2468"}, .does = {{Kind::insert, [&] { key.setPlugged(true); }}}}),
              "insert, pin 8, ada");
    key.setPlugged(false);
    EXPECT_EQ(attempt({.does = {{Kind::insert, [&] { keys.cancel(); }}}}), "insert, cancelled");
    older.setPlugged(false);
}

TEST_F(SecurityKeysTest, ofSeveralTheOneIsMeantThatIsTouched)
{
    request.allowed.clear();
    plugged = {&key, &finger};
    const auto among = [&](const std::function<void()>& does) {
        key.setTouched(false);
        finger.setTouched(false);
        return attempt(
            {.pins = {"2468"}, .account = 0, .does = {{Kind::which, does}, {Kind::touch, [&] { key.touch(); }}}});
    };
    EXPECT_EQ(among([&] { finger.touch(); }), "which, eve");
    EXPECT_GE(key.cancellations(), 1) << "the other one still blinks";
    EXPECT_EQ(among([&] { key.touch(); }), "which, pin 8, account ben|, ben");
    EXPECT_EQ(among([&] { keys.cancel(); }), "which, cancelled");
    key.setTouched(false);
    const auto takeOut = [&] { std::ranges::for_each(plugged, [](auto* each) { each->setPlugged(false); }); };
    EXPECT_EQ(attempt({.does = {{Kind::which, takeOut}, {Kind::insert, [&] { keys.cancel(); }}}}),
              "which, insert, cancelled");
    key.setPlugged(true);
    finger.setPlugged(true);
    EXPECT_EQ(among([&] { finger.setPlugged(false); }), "which, pin 8, account ben|, ben") << "the one that is left";
}

TEST_F(SecurityKeysTest, oneThatIsOfUseIsNoticedWhenItIsLookedFor)
{
    SoftKey older({.isFido2 = false});
    plugged = {&older};
    int changes = 0;
    QObject::connect(&keys, &SecurityKeys::presentChanged, &keys, [&] { ++changes; });
    const auto look = [&](std::vector<SoftKey*> there) {
        plugged = std::move(there);
        keys.look();
        io.run_one();
        return keys.isPresent();
    };
    EXPECT_FALSE(look({}));
    EXPECT_FALSE(look({&older}));
    EXPECT_TRUE(look({&older, &key}));
    EXPECT_TRUE(look({&key, &finger}));
    EXPECT_FALSE(look({&older}));
    EXPECT_EQ(changes, 2);
    key.setPlugged(false);
}

} // namespace
} // namespace palvera
