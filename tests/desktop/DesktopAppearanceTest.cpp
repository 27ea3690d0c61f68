#include "desktop/DesktopAppearance.h"
#include "tests/desktop/BusFixture.h"

#include <QDBusVariant>

namespace palvera {
namespace {

using testing::ElementsAre;

const QString group = "org.freedesktop.appearance";
const QString key = "color-scheme";

/// The settings of a desktop, as its portal offers them.
class FakePortal final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    QVariant scheme = 0U;
    int asked = 0;

public Q_SLOTS:
    QDBusVariant Read(const QString& inGroup, const QString& forKey)
    {
        ++asked;
        return QDBusVariant(inGroup == group && forKey == key ? scheme : QVariant("another setting"));
    }

Q_SIGNALS:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);
};

struct DesktopAppearanceTest : BusFixture {
    FakePortal portal;

    void appear() { offer(portal, "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Desktop"); }
    /// Waits until the portal is asked: by then the one who asks hears of changes.
    void untilAsked()
    {
        ASSERT_TRUE(pumpUntil([&] { return portal.asked > 0; }));
        portal.asked = 0;
    }
    void change(const QVariant& value, const QString& ofKey = key, const QString& inGroup = group)
    {
        Q_EMIT portal.SettingChanged(inGroup, ofKey, QDBusVariant(value));
    }
};

TEST_F(DesktopAppearanceTest, needsNoPortalAndFollowsEachChangeOfThatSettingAloneOnceThereIsOne)
{
    EXPECT_TRUE(DesktopAppearance(true, "unix:path=" + folder.filePath("nobody")).isDark());
    DesktopAppearance appearance(false, address);
    appear();
    DesktopAppearance later(false, address);
    untilAsked();
    QList<bool> told;
    QObject::connect(&appearance, &DesktopAppearance::changed, [&] { told.append(appearance.isDark()); });
    change(1U, "contrast");
    change(1U, key, "org.example.appearance");
    for (uint scheme : {2U, 1U, 2U, 2U, 1U, 1U, 2U})
        change(scheme);
    EXPECT_TRUE(pumpUntil([&] { return told.size() >= 4; }));
    DesktopAppearance last(false, address); // once it has asked, all that was told before has arrived
    untilAsked();
    EXPECT_THAT(told, ElementsAre(true, false, true, false));
}

TEST_F(DesktopAppearanceTest, takesWhatTheDesktopPrefersAndKeepsTheFallbackWithoutAPreferenceThatMakesSense)
{
    appear();
    for (bool fallback : {false, true}) {
        const uint other = fallback ? 2 : 1;                                         // light or dark
        portal.scheme = fallback ? QVariant::fromValue(QDBusVariant(other)) : other; // wrapped twice, as portals do
        DesktopAppearance appearance(fallback, address);
        EXPECT_EQ(appearance.isDark(), fallback) << "before the answer";
        for (const QVariant& scheme : QVariantList{0U, 7U, "dark", "1", "2", 1, 2, true, QStringList{"1"}}) {
            ASSERT_TRUE(pumpUntil([&] { return appearance.isDark() != fallback; }));
            change(scheme);
            ASSERT_TRUE(pumpUntil([&] { return appearance.isDark() == fallback; })) << scheme.typeName();
            change(other);
        }
    }
}

} // namespace
} // namespace palvera

#include "DesktopAppearanceTest.moc"
