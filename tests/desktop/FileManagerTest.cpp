#include "desktop/FileManager.h"
#include "tests/desktop/BusFixture.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>

namespace palvera {
namespace {

using testing::ElementsAre;

class FakeFileManager final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    QStringList shown;

public Q_SLOTS:
    void ShowItems(const QStringList& uris, const QString&) { shown += uris; }
};

/// Opens folders in the place of the desktop.
class FakeOpener final : public QObject {
    Q_OBJECT

public:
    QStringList opened;

    FakeOpener() { QDesktopServices::setUrlHandler("file", this, "open"); }
    ~FakeOpener() override { QDesktopServices::unsetUrlHandler("file"); }

public Q_SLOTS:
    void open(const QUrl& url) { opened += url.toLocalFile(); }
};

TEST_F(BusFixture, aFileIsShownByTheFileManagerElseItsFolderIsOpened)
{
    FakeOpener opener;
    const auto path = folder.filePath("a #1 % ü.mov");
    ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
    showInFolder(path, address);
    ASSERT_TRUE(pumpUntil([&] { return !opener.opened.isEmpty(); })) << "nobody shows files here";

    FakeFileManager manager;
    offer(manager, "/org/freedesktop/FileManager1", "org.freedesktop.FileManager1");
    showInFolder(path, address);
    ASSERT_TRUE(pumpUntil([&] { return !manager.shown.isEmpty(); }));
    EXPECT_THAT(manager.shown, ElementsAre("file://" + folder.path() + "/a%20%231%20%25%20%C3%BC.mov"));
    QFile::remove(path);
    showInFolder(path, address);
    showInFolder(folder.filePath("missing"), "unix:path=/nowhere");
    EXPECT_THAT(opener.opened, ElementsAre(folder.path(), folder.path(), folder.path()));
    openFile(path);
    EXPECT_EQ(opener.opened.last(), path);
    QDBusConnection::disconnectFromBus("palvera-files");
}

} // namespace
} // namespace palvera

#include "FileManagerTest.moc"
