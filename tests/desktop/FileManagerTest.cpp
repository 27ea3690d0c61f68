#include "desktop/FileManager.h"
#include "tests/desktop/BusFixture.h"
#include "tests/support/Files.h"

#include <QDesktopServices>
#include <QUrl>

namespace palvera {
namespace {

using testing::ElementsAre;

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

TEST_F(BusFixture, whereNobodyShowsFilesTheirFolderIsOpened)
{
    FakeOpener opener;
    const auto path = folder.filePath("a #1 % ü.mov");
    writeFile(path, {});
    showInFolder(path, address);
    ASSERT_TRUE(pumpUntil([&] { return !opener.opened.isEmpty(); }));
    showInFolder(folder.filePath("missing"), address);
    openFile(path);
    EXPECT_THAT(opener.opened, ElementsAre(folder.path(), folder.path(), path));
    QDBusConnection::disconnectFromBus("palvera-files");
}

} // namespace
} // namespace palvera

#include "FileManagerTest.moc"
