#include "desktop/Callbacks.h"

#include "desktop/DesktopActivation.h"
#include "desktop/MessageSocket.h"
#include "tests/desktop/BusFixture.h"
#include "tests/support/Files.h"
#include "tests/support/ScopedVariable.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QFileInfo>

#include <sys/stat.h>

namespace palvera {
namespace {

using testing::ElementsAre;

const QByteArray address = "palvera://sign-in?grant=g%C3%A9";

TEST(ArrivalTest, addressesLeaveTheArgumentsAndNoOthersAreTaken)
{
    const ScopedVariable token("XDG_ACTIVATION_TOKEN", "wayland"), startup("DESKTOP_STARTUP_ID", "x_TIME7");
    char program[] = "palvera", first[] = "PALVERA:?grant=a", other[] = "palveras:b", odd[] = "x palvera:c";
    char last[] = "palvera://sign-in?grant=d";
    char* argv[] = {program, first, other, odd, last, nullptr};
    int argc = 5;
    EXPECT_EQ(takeArrival(argc, argv),
              (Arrival{.addresses = {"PALVERA:?grant=a", "palvera://sign-in?grant=d"}, .token = "wayland"}));
    ASSERT_EQ(argc, 3);
    EXPECT_STREQ(argv[1], "palveras:b");
    EXPECT_EQ(argv[3], nullptr);
    EXPECT_EQ(QByteArray(first, sizeof first), QByteArray(sizeof first, '\0')) << "where all users can read it";
    EXPECT_EQ(QByteArray(last, sizeof last), QByteArray(sizeof last, '\0'));
    const ScopedVariable none("XDG_ACTIVATION_TOKEN", {});
    EXPECT_EQ(takeArrival(argc = 1, argv).token, "x_TIME7");
}

TEST(ArrivalTest, oneProgramUnderstandsTheOtherAndNothingElse)
{
    for (const Arrival& arrival : {Arrival{}, Arrival{.addresses = {address}, .token = "t \"é\""}})
        EXPECT_EQ(arrivalFrom(toMessage(arrival)), arrival);
    EXPECT_EQ(arrivalFrom(R"({"addresses":["https://elsewhere.test",7,"palvera:x"],"token":3})"),
              (Arrival{.addresses = {"palvera:x"}}));
    for (const char* message : {"", "raise", "[]", "{"})
        EXPECT_EQ(arrivalFrom(message), std::nullopt) << message;
}

struct CallbacksTest : LoopFixture {
    QTemporaryDir folder;
    QList<Arrival> heard;

    std::unique_ptr<CallbackListener> listen()
    {
        return std::make_unique<CallbackListener>([this](const Arrival& arrival) { heard.append(arrival); },
                                                  folder.path());
    }
    QString own() const { return folder.filePath(QStringLiteral("palvera/waiting-%1").arg(::getpid())); }
    /// As a socket of another process that began to wait that many seconds ago.
    void giveAway(int number, int seconds)
    {
        const auto path = folder.filePath(QStringLiteral("palvera/waiting-%1").arg(number));
        ASSERT_TRUE(QFile::rename(own(), path));
        const timespec then{.tv_sec = ::time(nullptr) - seconds}, times[] = {then, then};
        ASSERT_EQ(::utimensat(AT_FDCWD, path.toUtf8().constData(), times, 0), 0);
    }
    HandOver handOver(const QByteArray& callback = address, const QByteArray& token = {})
    {
        return palvera::handOver({.addresses = {callback}, .token = token}, folder.path());
    }
    QStringList waiting() const { return QDir(folder.filePath("palvera")).entryList(QDir::System | QDir::Files); }
};

TEST_F(CallbacksTest, whoBeganToWaitLastGetsThemUnlessItIsGone)
{
    EXPECT_EQ(handOver(), HandOver::nobody);
    const CallbackListener older([](const Arrival&) { ADD_FAILURE(); }, folder.path());
    giveAway(1, 20);
    const auto newer = listen();
    giveAway(2, 10);
    auto gone = listen();
    giveAway(3, 0);
    gone.reset(); // which leaves what was renamed, as one does that is killed
    auto ours = listen();
    EXPECT_EQ(handOver(), HandOver::ours);
    ours.reset();
    EXPECT_EQ(waiting(), QStringList({"waiting-1", "waiting-2", "waiting-3"}));
    EXPECT_EQ(handOver(address + QByteArray(MessageSocket::longestMessage, 'x')), HandOver::nobody);
    EXPECT_EQ(handOver(address, "token"), HandOver::done) << "what nobody sends costs nobody their socket";
    EXPECT_TRUE(pumpUntil([&] { return heard == QList{Arrival{.addresses = {address}, .token = "token"}}; }));
    EXPECT_EQ(waiting(), QStringList({"waiting-1", "waiting-2"}));
}

TEST_F(CallbacksTest, nobodyListensWhereSomebodyElseCouldPutASocket)
{
    const auto path = folder.filePath("palvera");
    const std::function<void()> preparations[] = {
        [&] { ASSERT_TRUE(QDir().mkdir(path) && ::chmod(path.toUtf8().constData(), 0770) == 0); },
        [&] {
            const auto elsewhere = folder.filePath("elsewhere");
            ASSERT_TRUE(QDir().mkdir(elsewhere) && ::chmod(elsewhere.toUtf8().constData(), 0700) == 0);
            ASSERT_TRUE(QFile::link(elsewhere, path));
        },
        [&] { writeFile(path, {}); },
    };
    for (const auto& prepare : preparations) {
        prepare();
        const auto listener = listen();
        EXPECT_EQ(handOver(), HandOver::nobody);
        EXPECT_EQ(waiting(), QStringList());
        EXPECT_TRUE(QFile::remove(path) || QDir(path).removeRecursively());
    }
}

TEST_F(CallbacksTest, maySeeItsListenerGoWhileItIsCalled)
{
    std::unique_ptr<CallbackListener> once;
    once = std::make_unique<CallbackListener>(
        [&](const Arrival& arrival) {
            once.reset();
            heard.append(arrival);
        },
        folder.path());
    giveAway(1, 0);
    EXPECT_EQ(handOver(), HandOver::done);
    EXPECT_EQ(handOver(), HandOver::done);
    EXPECT_TRUE(pumpUntil([&] { return !heard.isEmpty(); }));
    QTimer::singleShot(100, [&] { heard.append(Arrival{}); });
    EXPECT_TRUE(pumpUntil([&] { return heard.size() == 2; }));
    EXPECT_EQ(heard.last(), Arrival{}) << "the second one came to nobody";
}

using DesktopActivationTest = BusFixture;

TEST_F(DesktopActivationTest, isCalledOverTheBusAndTheFirstKeepsTheName)
{
    QList<Arrival> heard;
    const auto hear = [&](const Arrival& arrival) { heard.append(arrival); };
    const DesktopActivation first("example.palvera.My-Program", hear, address);
    const DesktopActivation second("example.palvera.My-Program", [](const Arrival&) { ADD_FAILURE(); }, address);
    const DesktopActivation without("example.palvera.My-Program", hear, "unix:path=/nonexistent/bus");
    const QVariantMap token{{"desktop-startup-id", "x_TIME1"}},
        both{{"desktop-startup-id", "x"}, {"activation-token", "w"}};
    const std::pair<QString, QVariantList> calls[] = {
        {"Activate", {both}},
        {"Open", {QStringList{"https://elsewhere.test", palvera::address}, token}},
        {"ActivateAction", {"new", QVariantList(), token}},
    };
    for (const auto& [method, arguments] : calls) {
        auto message = QDBusMessage::createMethodCall("example.palvera.My-Program", "/example/palvera/My_Program",
                                                      "org.freedesktop.Application", method);
        message.setArguments(arguments);
        const auto pending = QDBusConnection::connectToBus(address, "caller").asyncCall(message);
        pumpUntil([&] { return pending.isFinished(); });
        EXPECT_EQ(pending.reply().type(), QDBusMessage::ReplyMessage) << method.toStdString();
    }
    QDBusConnection::disconnectFromBus("caller");
    EXPECT_THAT(heard, ElementsAre(Arrival{.token = "w"}, Arrival{.addresses = {palvera::address}, .token = "x_TIME1"},
                                   Arrival{.token = "x_TIME1"}));
}

} // namespace
} // namespace palvera
