#include "platform/DesktopAppearance.h"
#include "tests/platform/BusFixture.h"

#include <QDBusConnection>
#include <QDBusVariant>

namespace palvera {
namespace {

/// The settings of a desktop, as its portal offers them.
class FakePortal final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    QVariant scheme = 0U;
    int asked = 0;

public Q_SLOTS:
    QDBusVariant Read(const QString& group, const QString& key)
    {
        ++asked;
        bool known = group == "org.freedesktop.appearance" && key == "color-scheme";
        return QDBusVariant(known ? scheme : QVariant(QString("another setting")));
    }

Q_SIGNALS:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);
};

class DesktopAppearanceTest : public BusFixture {
protected:
    void SetUp() override
    {
        BusFixture::SetUp();
        if (IsSkipped())
            return;
        auto bus = QDBusConnection::connectToBus(address, QStringLiteral("portal"));
        ASSERT_TRUE(bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), &portal,
                                       QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
        ASSERT_TRUE(bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    }
    void TearDown() override
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
        BusFixture::TearDown();
    }
    /// Lets the question and its answer through.
    void expectAnswered(DesktopAppearance& appearance, bool dark)
    {
        ASSERT_TRUE(pumpUntil([&] { return portal.asked > 0; }));
        portal.asked = 0;
        // Messages keep their order: once a change after the answer is heard, the answer was.
        change(2U);
        ASSERT_TRUE(pumpUntil([&] { return !appearance.isDark(); }));
        change(1U);
        ASSERT_TRUE(pumpUntil([&] { return appearance.isDark(); }));
        if (!dark)
            change(2U);
        ASSERT_TRUE(pumpUntil([&] { return appearance.isDark() == dark; }));
    }
    void change(const QVariant& value, const QString& key = "color-scheme",
                const QString& group = "org.freedesktop.appearance")
    {
        Q_EMIT portal.SettingChanged(group, key, QDBusVariant(value));
    }

    FakePortal portal;
};

TEST_F(DesktopAppearanceTest, takesWhatTheDesktopPrefers)
{
    const std::vector<std::tuple<QVariant, bool, bool>> cases = {
        {1U, false, true},
        {2U, true, false},
        {QVariant::fromValue(QDBusVariant(1U)), false, true}, // wrapped twice, as portals do
        {QVariant::fromValue(QDBusVariant(2U)), true, false},
    };
    for (const auto& [scheme, fallback, dark] : cases) {
        portal.scheme = scheme;
        DesktopAppearance appearance(fallback, address);
        EXPECT_EQ(appearance.isDark(), fallback) << "before the answer";
        EXPECT_TRUE(pumpUntil([&] { return appearance.isDark() == dark; }));
    }
}

TEST_F(DesktopAppearanceTest, followsEachChangeAndTellsOfItOnce)
{
    DesktopAppearance appearance(false, address);
    int told = 0;
    QObject::connect(&appearance, &DesktopAppearance::changed, [&] { ++told; });
    expectAnswered(appearance, true);
    told = 0;
    change(1U);
    change(0U, "contrast");
    change(2U, "color-scheme", "org.example.appearance");
    change(QString("dark"), "accent-color");
    change(2U);
    ASSERT_TRUE(pumpUntil([&] { return !appearance.isDark(); }));
    EXPECT_EQ(told, 1);
}

TEST_F(DesktopAppearanceTest, keepsTheFallbackWithoutAPreferenceOrAnAnswerThatMakesSense)
{
    for (const QVariant& scheme : {QVariant(0U), QVariant(7U), QVariant("dark"), QVariant(QStringList{"1"})}) {
        for (bool fallback : {false, true}) {
            DesktopAppearance appearance(fallback, address);
            expectAnswered(appearance, !fallback);
            change(scheme);
            EXPECT_TRUE(pumpUntil([&] { return appearance.isDark() == fallback; })) << scheme.typeName();
        }
    }
}

TEST_F(DesktopAppearanceTest, withoutABusThereIsTheFallback)
{
    EXPECT_TRUE(DesktopAppearance(true, "unix:path=" + m_folder.filePath("nobody")).isDark());
    EXPECT_FALSE(DesktopAppearance(false, "unix:path=" + m_folder.filePath("nobody")).isDark());
}

} // namespace
} // namespace palvera

#include "DesktopAppearanceTest.moc"
