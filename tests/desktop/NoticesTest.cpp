#include "desktop/Notices.h"
#include "tests/desktop/BusFixture.h"

#include <QVariantMap>

namespace palvera {
namespace {

/// What shows notices on a desktop.
class FakeDesktop final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QStringList shown;

public Q_SLOTS:
    uint Notify(const QString& program, uint, const QString& icon, const QString& title, const QString& text,
                const QStringList&, const QVariantMap& hints, int)
    {
        shown.append(QStringList{program, icon, title, text, hints.value("desktop-entry").toString()}.join('|'));
        return 1;
    }
};

using NoticesTest = BusFixture;

TEST_F(NoticesTest, reachTheDesktopAsPlainTextAndAreLostWhileNothingShowsThem)
{
    DesktopNotices("test.Program", "unix:path=/nonexistent/bus").show("No bus", "");
    DesktopNotices notices("test.Program", address);
    notices.show("Too early", "");
    FakeDesktop desktop;
    offer(desktop, "/org/freedesktop/Notifications", "org.freedesktop.Notifications");
    notices.show("Transfers finished", "“<b>reel & 1</b>.mov” is done.");
    notices.show("Again", "");
    ASSERT_TRUE(pumpUntil([&] { return desktop.shown.size() == 2; }));
    EXPECT_THAT(desktop.shown,
                testing::ElementsAre(
                    "Palvera|palvera|Transfers finished|“&lt;b&gt;reel &amp; 1&lt;/b&gt;.mov” is done.|test.Program",
                    "Palvera|palvera|Again||test.Program"));
}

} // namespace
} // namespace palvera

#include "NoticesTest.moc"
