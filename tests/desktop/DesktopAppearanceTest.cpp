#include "desktop/DesktopAppearance.h"
#include "tests/desktop/BusFixture.h"

#include <QDBusConnection>
#include <QDBusMessage>
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

/// Hears what the portal tells everybody.
class Listener final : public QObject {
    Q_OBJECT

public:
    QStringList heard; ///< the settings

public Q_SLOTS:
    void hear(const QDBusMessage& signal) { heard.append(signal.arguments().value(1).toString()); }
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
        auto listening = QDBusConnection::connectToBus(address, QStringLiteral("listener"));
        ASSERT_TRUE(listening.connect({}, {}, QStringLiteral("org.freedesktop.portal.Settings"),
                                      QStringLiteral("SettingChanged"), &listener, SLOT(hear(QDBusMessage))));
    }
    void TearDown() override
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("listener"));
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

    /// Lets through what the portal has sent: what it sends after that has arrived, if at another connection.
    void letThrough()
    {
        listener.heard.clear();
        change(0U, "contrast");
        ASSERT_TRUE(pumpUntil([&] { return listener.heard.contains("contrast"); }));
    }

    FakePortal portal;
    Listener listener;
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
    expectAnswered(appearance, true);
    QList<bool> told;
    QObject::connect(&appearance, &DesktopAppearance::changed, [&] { told.append(appearance.isDark()); });
    change(1U);
    change(2U);
    change(2U);
    change(1U);
    change(1U);
    change(2U);
    ASSERT_TRUE(pumpUntil([&] { return told.size() >= 3; }));
    EXPECT_EQ(told, QList<bool>({false, true, false}));
}

TEST_F(DesktopAppearanceTest, takesNoOtherSettingForIt)
{
    const std::vector<std::pair<QString, QString>> others = {{"org.freedesktop.appearance", "contrast"},
                                                             {"org.example.appearance", "color-scheme"}};
    for (const auto& [group, key] : others) {
        DesktopAppearance appearance(false, address);
        expectAnswered(appearance, true);
        int told = 0;
        QObject::connect(&appearance, &DesktopAppearance::changed, [&] { ++told; });
        change(2U, key, group);
        change(1U); // takes back what the other setting did, so that it is told of
        change(2U);
        ASSERT_TRUE(pumpUntil([&] { return !appearance.isDark(); }));
        EXPECT_TRUE(pumpUntil([&] { return told > 0; }));
        EXPECT_EQ(told, 1) << group.toStdString() << ' ' << key.toStdString();
    }
}

TEST_F(DesktopAppearanceTest, followsAPortalThatComesLater)
{
    auto bus = QDBusConnection(QStringLiteral("portal"));
    ASSERT_TRUE(bus.unregisterService(QStringLiteral("org.freedesktop.portal.Desktop")));
    DesktopAppearance appearance(false, address);
    ASSERT_TRUE(bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    change(1U);
    EXPECT_TRUE(pumpUntil([&] { return appearance.isDark(); }));
}

TEST_F(DesktopAppearanceTest, keepsTheFallbackWithoutAPreferenceOrAnAnswerThatMakesSense)
{
    const QVariantList schemes = {0U, 7U, "dark", "1", "2", 1, 2, true, QStringList{"1"}};
    for (const QVariant& scheme : schemes) {
        for (bool fallback : {false, true}) {
            portal.scheme = scheme;
            DesktopAppearance appearance(fallback, address);
            ASSERT_TRUE(pumpUntil([&] { return portal.asked > 0; }));
            portal.asked = 0;
            letThrough();
            EXPECT_EQ(appearance.isDark(), fallback) << "answered " << scheme.typeName();
            change(fallback ? 2U : 1U);
            ASSERT_TRUE(pumpUntil([&] { return appearance.isDark() != fallback; }));
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
