#include "desktop/Notices.h"
#include "tests/desktop/BusFixture.h"
#include "tests/support/QtPrinting.h"

#include <QDBusConnection>
#include <QVariantMap>

#include <gmock/gmock.h>

namespace palvera {
namespace {

/// What shows notices on a desktop.
class FakeDesktop final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QStringList shown;
    QVariantMap hints;

public Q_SLOTS:
    uint Notify(const QString& program, uint, const QString& icon, const QString& title, const QString& text,
                const QStringList&, const QVariantMap& given, int)
    {
        shown.append(program + u'|' + icon + u'|' + title + u'|' + text);
        hints = given;
        return 1;
    }
};

class NoticesTest : public BusFixture {
protected:
    FakeDesktop desktop;

    bool appear()
    {
        auto bus = QDBusConnection::connectToBus(address, QStringLiteral("desktop"));
        return bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), &desktop,
                                  QDBusConnection::ExportAllSlots) &&
               bus.registerService(QStringLiteral("org.freedesktop.Notifications"));
    }
    void TearDown() override
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("desktop"));
        BusFixture::TearDown();
    }
};

TEST_F(NoticesTest, reachTheDesktopAsPlainText)
{
    ASSERT_TRUE(appear());
    DesktopNotices notices(address);
    notices.show("Transfers finished", "“<b>reel & 1</b>.mov” is done.");
    notices.show("Again", "");
    ASSERT_TRUE(pumpUntil([&] { return desktop.shown.size() == 2; }));
    EXPECT_EQ(desktop.shown.first().toStdString(),
              "Palvera|palvera|Transfers finished|“&lt;b&gt;reel &amp; 1&lt;/b&gt;.mov” is done.");
    EXPECT_EQ(desktop.hints.value("desktop-entry"), "palvera");
}

TEST_F(NoticesTest, areLostWhileNothingShowsThemAndSeenAgainAfterwards)
{
    DesktopNotices nobody(QStringLiteral("unix:path=/nonexistent/bus"));
    nobody.show("No bus", "");
    DesktopNotices notices(address);
    notices.show("Too early", "");
    ASSERT_TRUE(appear());
    notices.show("Transfers finished", "");
    ASSERT_TRUE(pumpUntil([&] { return !desktop.shown.isEmpty(); }));
    EXPECT_THAT(desktop.shown, testing::ElementsAre("Palvera|palvera|Transfers finished|"));
}

} // namespace
} // namespace palvera

#include "NoticesTest.moc"
