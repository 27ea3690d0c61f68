#include "desktop/DesktopAppearance.h"
#include "tests/desktop/BusFixture.h"

#include <QDBusVariant>

namespace palvera {
namespace {

using testing::ElementsAre;

/// One of the settings that are followed, and what it comes to.
struct Setting {
    const char* group;
    const char* key;
    Appearance fallback;
    QVariant preferred; ///< other than the fallback
    Appearance then;
    QVariantList senseless;
};

const QVariantList noScheme{0U, 7U, "dark", "1", "2", 1, 2, true, QStringList{"1"}};
const Setting settings[] = {
    {"org.freedesktop.appearance", "color-scheme", {}, 1U, {.dark = true}, noScheme},
    {"org.freedesktop.appearance", "color-scheme", {.dark = true}, 2U, {}, noScheme},
    {"org.gnome.desktop.interface", "enable-animations", {}, false, {.still = true}, {true, 0U, "false"}},
    {"org.gnome.desktop.interface", "text-scaling-factor", {}, 1.25, {.textScale = 1.25}, {0.0, -1.0, qQNaN(), "2", 2}},
    {"org.gnome.desktop.interface", "text-scaling-factor", {}, 900.0, {.textScale = 3}, {}},
};

/// The settings of a desktop, as its portal offers them.
class FakePortal final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    QVariantMap values; ///< by their keys
    int asked = 0;

public Q_SLOTS:
    QDBusVariant Read(const QString& group, const QString& key)
    {
        ++asked;
        return QDBusVariant(values.value(group + key, "another setting"));
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
        ASSERT_TRUE(pumpUntil([&] { return portal.asked >= 3; }));
        portal.asked = 0;
    }
    void change(const QVariant& value, const QString& key = "color-scheme",
                const QString& group = "org.freedesktop.appearance")
    {
        Q_EMIT portal.SettingChanged(group, key, QDBusVariant(value));
    }
};

TEST_F(DesktopAppearanceTest, needsNoPortalAndFollowsEachChangeOfThatSettingAloneOnceThereIsOne)
{
    EXPECT_TRUE(DesktopAppearance({.dark = true}, "unix:path=" + folder.filePath("nobody")).now().dark);
    DesktopAppearance appearance({}, address);
    appear();
    DesktopAppearance later({}, address);
    untilAsked();
    QList<bool> told;
    QObject::connect(&appearance, &DesktopAppearance::changed, [&] { told.append(appearance.now().dark); });
    change(1U, "contrast");
    change(1U, "color-scheme", "org.example.appearance");
    for (uint scheme : {2U, 1U, 2U, 2U, 1U, 1U, 2U})
        change(scheme);
    EXPECT_TRUE(pumpUntil([&] { return told.size() >= 4; }));
    DesktopAppearance last({}, address); // once it has asked, all that was told before has arrived
    untilAsked();
    EXPECT_THAT(told, ElementsAre(true, false, true, false));
}

TEST_F(DesktopAppearanceTest, takesWhatTheDesktopPrefersAndKeepsTheFallbackWithoutAPreferenceThatMakesSense)
{
    appear();
    for (const auto& [group, key, fallback, preferred, then, senseless] : settings) {
        SCOPED_TRACE(key);
        const bool isWrapped = fallback.dark; // twice, as portals do
        portal.values = {{QString(group) + key, isWrapped ? QVariant::fromValue(QDBusVariant(preferred)) : preferred}};
        DesktopAppearance appearance(fallback, address);
        EXPECT_EQ(appearance.now(), fallback) << "before the answer";
        ASSERT_TRUE(pumpUntil([&] { return appearance.now() == then; }));
        for (const auto& value : senseless) {
            change(value, key, group);
            ASSERT_TRUE(pumpUntil([&] { return appearance.now() == fallback; })) << value.typeName();
            change(preferred, key, group);
            ASSERT_TRUE(pumpUntil([&] { return appearance.now() == then; }));
        }
    }
}

} // namespace
} // namespace palvera

#include "DesktopAppearanceTest.moc"
