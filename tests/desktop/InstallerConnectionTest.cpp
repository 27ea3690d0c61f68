#include "desktop/InstallerConnection.h"
#include "tests/desktop/BusFixture.h"
#include "tests/support/Files.h"

#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>

#include <unistd.h>

namespace palvera {
namespace {

using testing::ElementsAre;

const QString installerName = "example.palvera.Palvera.Installer";

class FakeService final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "example.palvera.Palvera.Installer1")

public:
    QStringList asked;
    QString answer;
    bool isSilent = false;

public Q_SLOTS:
    QString PrepareWithImage(const QDBusUnixFileDescriptor& image, const QString& target, const QVariantMap& announced)
    {
        QByteArray bytes(5, 0);
        EXPECT_EQ(::pread(image.fileDescriptor(), bytes.data(), 5, 0), 5);
        return take(
            {QString::fromLatin1(bytes), target, announced["version"].toString(), announced["build"].toString()});
    }
    QString InstallWithTarget(const QString& target) { return take({target}); }

private:
    QString take(const QStringList& arguments)
    {
        asked.append(arguments.join(u'|'));
        if (isSilent)
            setDelayedReply(true);
        return answer;
    }
};

struct InstallerConnectionTest : BusFixture {
    FakeService service;
    QStringList heard;
    std::unique_ptr<BusInstallerConnection> connection;

    void SetUp() override
    {
        BusFixture::SetUp();
        connection = std::make_unique<BusInstallerConnection>("example.palvera.Palvera", address);
        connection->invalidated = [this] { heard.append("invalid"); };
    }
    void offerService() { offer(service, "/example/palvera/Palvera/Installer", installerName); }
    std::unique_ptr<PVInstallerProtocol> proxy()
    {
        return connection->remoteObject([this](const InstallerTrouble& trouble) {
            heard.append(trouble.isMissing ? "missing" : "failed: " + trouble.description.left(40));
        });
    }
    QStringList install()
    {
        proxy()->installWithTarget("/opt/palvera", [this](const QString& error) { heard.append("answer: " + error); });
        pumpUntil([&] { return !heard.isEmpty(); });
        return std::exchange(heard, {});
    }
};

TEST_F(InstallerConnectionTest, handsTheOpenImageOverAndBringsTheAnswer)
{
    offerService();
    service.answer = "The update is damaged.";
    const auto image = folder.filePath("image");
    writeFile(image, "image");
    for (const QString& path : {image, folder.filePath("nowhere")})
        proxy()->prepareWithImage(path, "/opt/palvera", {"1.5", "58"},
                                  [this](const QString& error) { heard.append(error); });
    pumpUntil([&] { return heard.size() == 2; });
    EXPECT_THAT(heard, ElementsAre("The download is gone.", "The update is damaged."));
    EXPECT_THAT(service.asked, ElementsAre("image|/opt/palvera|1.5|58"));
    heard.clear();
    service.answer = "";
    EXPECT_THAT(install(), ElementsAre("answer: "));
}

TEST_F(InstallerConnectionTest, tellsAMissingInstallerFromOneThatDoesNotAnswerAndSaysWhenTheConnectionBreaks)
{
    EXPECT_THAT(install(), ElementsAre("missing")) << "no such name";
    QObject another;
    offer(another, "/other", installerName);
    EXPECT_THAT(install(), ElementsAre("missing")) << "something else of that name";
    service.isSilent = true;
    const auto askInVain = [&] {
        offerService();
        proxy()->installWithTarget("/opt/palvera", [](const QString&) { ADD_FAILURE(); });
        pumpUntil([&] { return !std::exchange(service.asked, {}).isEmpty(); });
        EXPECT_THAT(heard, testing::IsEmpty());
    };
    askInVain();
    QDBusConnection::disconnectFromBus("service"); // as one that is killed
    pumpUntil([&] { return !heard.isEmpty(); });
    EXPECT_THAT(std::exchange(heard, {}), ElementsAre("failed: Message recipient disconnected from mess"));
    askInVain();
    daemon.kill();
    pumpUntil([&] { return heard.size() == 2; });
    heard.sort();
    EXPECT_THAT(std::exchange(heard, {}),
                ElementsAre(testing::Property(&QString::toStdString, testing::StartsWith("failed: ")), "invalid"));
    connection = std::make_unique<BusInstallerConnection>("example.palvera.Palvera", address);
    EXPECT_THAT(install(), ElementsAre("missing")) << "no bus";
}

} // namespace
} // namespace palvera

#include "InstallerConnectionTest.moc"
