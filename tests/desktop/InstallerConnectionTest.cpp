#include "desktop/InstallerConnection.h"
#include "tests/desktop/BusFixture.h"

#include <QDBusContext>

namespace palvera {
namespace {

using testing::ElementsAre;

const QString installerName = "example.palvera.Palvera.Installer";

class SilentInstaller final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "example.palvera.Palvera.Installer1")

public:
    int asked = 0;

public Q_SLOTS:
    QString InstallWithTarget(const QString&)
    {
        ++asked;
        setDelayedReply(true);
        return {};
    }
};

struct InstallerConnectionTest : BusFixture {
    SilentInstaller installer;
    QStringList heard;
    std::unique_ptr<BusInstallerConnection> connection;

    void connect()
    {
        connection = std::make_unique<BusInstallerConnection>("example.palvera.Palvera", address);
        connection->invalidated = [this] { heard.append("invalid"); };
    }
    std::unique_ptr<PVInstallerProtocol> proxy()
    {
        return connection->remoteObject([this](const InstallerTrouble& trouble) {
            heard.append(trouble.isMissing ? "missing" : "failed: " + trouble.description.left(40));
        });
    }
    /// What is heard once the installer is asked, and `then` has happened.
    QStringList install(const std::function<void()>& then = [] {}, qsizetype words = 1)
    {
        proxy()->installWithTarget("/opt/palvera", [](const QString&) { ADD_FAILURE(); });
        then();
        pumpUntil([&] { return heard.size() == words; });
        heard.sort();
        return std::exchange(heard, {});
    }
    void untilAsked()
    {
        pumpUntil([&] { return std::exchange(installer.asked, 0) == 1; });
        EXPECT_THAT(heard, testing::IsEmpty());
    }
};

TEST_F(InstallerConnectionTest, tellsAMissingInstallerFromOneThatDoesNotAnswerAndSaysWhenTheConnectionBreaks)
{
    connect();
    proxy()->prepareWithImage(folder.filePath("nowhere"), {}, {}, [this](const QString& no) { heard.append(no); });
    EXPECT_THAT(std::exchange(heard, {}), ElementsAre("The download is gone."));
    EXPECT_THAT(install(), ElementsAre("missing")) << "no such name";
    QObject another;
    offer(another, "/other", installerName);
    EXPECT_THAT(install(), ElementsAre("missing")) << "something else of that name";
    const auto offerInstaller = [&] { offer(installer, "/example/palvera/Palvera/Installer", installerName); };
    offerInstaller();
    const auto killInstaller = [&] {
        untilAsked();
        QDBusConnection::disconnectFromBus("service");
    };
    EXPECT_THAT(install(killInstaller), ElementsAre("failed: Message recipient disconnected from mess"));
    offerInstaller();
    const auto killBus = [&] {
        untilAsked();
        daemon.kill();
    };
    EXPECT_THAT(install(killBus, 2),
                ElementsAre(testing::Property(&QString::toStdString, testing::StartsWith("failed: ")), "invalid"));
    connect();
    EXPECT_THAT(install(), ElementsAre("missing")) << "no bus";
}

} // namespace
} // namespace palvera

#include "InstallerConnectionTest.moc"
