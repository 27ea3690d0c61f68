#include "app/shell/SettingsView.h"

#include "files/Folders.h"
#include "files/Preferences.h"
#include "session/Session.h"

#include <QLocale>

namespace palvera {

namespace {

const QString uploadsKey = QStringLiteral("pv.uploadsAtOnce");
const QString downloadsKey = QStringLiteral("pv.downloadsAtOnce");
const QString notifiesKey = QStringLiteral("pv.notifications");
const QString awakeKey = QStringLiteral("pv.keepAwake");
const QString backgroundKey = QStringLiteral("pv.background");
constexpr double megabyte = 1'000'000;

int countIn(const Preferences& preferences, const QString& key, int otherwise)
{
    bool isNumber = false;
    const int count = preferences.string(key).value_or(QString()).toInt(&isNumber);
    return isNumber ? std::clamp(count, 1, SettingsView::mostAtOnce) : otherwise;
}

bool isOn(const Preferences& preferences, const QString& key)
{
    return preferences.string(key) != QStringLiteral("off");
}

QString limitText(qint64 bytesPerSecond)
{
    auto locale = QLocale();
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return bytesPerSecond == 0 ? QString() : locale.toString(double(bytesPerSecond) / megabyte, 'g', 8);
}

/// As the user writes numbers, or with a point.
std::optional<qint64> limitIn(const QString& text)
{
    const auto words = text.trimmed();
    bool isNumber = false;
    const double rate = QLocale().toDouble(words, &isNumber);
    return words.isEmpty() ? std::optional<qint64>(0) : rateFrom(isNumber ? QString::number(rate, 'g', 12) : words);
}

} // namespace

SettingsView::SettingsView(Environment environment, QObject* parent)
    : QObject(parent), m_environment(std::move(environment)), m_tasks(m_environment.main)
{
    refresh();
}

Transfers::Settings SettingsView::transfersIn(const Preferences& preferences)
{
    Transfers::Settings settings;
    settings.uploads = countIn(preferences, uploadsKey, settings.uploads);
    settings.downloads = countIn(preferences, downloadsKey, settings.downloads);
    settings.keepsAwake = isOn(preferences, awakeKey);
    return settings;
}

void SettingsView::refresh()
{
    m_environment.preferences.reread();
    m_atOnce = transfersIn(m_environment.preferences);
    m_limits = lineLimitsIn(m_environment.preferences);
    m_notifies = isOn(m_environment.preferences, notifiesKey);
    m_isInBackground = m_environment.preferences.string(backgroundKey) == QStringLiteral("on");
    Q_EMIT changed();
    m_tasks.start(findFolder());
}

QUrl SettingsView::proposedFolder() const
{
    return QUrl::fromLocalFile(m_folder.isEmpty() ? proposedDownloadsFolder() : m_folder);
}

void SettingsView::chooseDownloadsFolder(const QUrl& folder)
{
    if (folder.isLocalFile())
        m_tasks.start(keepFolder(folder.toLocalFile()));
}

Task<void> SettingsView::findFolder()
{
    const auto found = co_await m_environment.session.downloadsFolder();
    if (std::exchange(m_folder, found.value_or(QString())) != m_folder)
        Q_EMIT folderChanged();
}

Task<void> SettingsView::keepFolder(QString path)
{
    co_await m_environment.session.setDownloadsFolder(path);
    co_await findFolder();
    Q_EMIT changed();
}

void SettingsView::setUploadsAtOnce(int count)
{
    m_atOnce.uploads = std::clamp(count, 1, mostAtOnce);
    m_environment.preferences.setString(uploadsKey, QString::number(m_atOnce.uploads));
    m_environment.transfers.setAtOnce(m_atOnce.uploads, m_atOnce.downloads);
    Q_EMIT changed();
}

void SettingsView::setDownloadsAtOnce(int count)
{
    m_atOnce.downloads = std::clamp(count, 1, mostAtOnce);
    m_environment.preferences.setString(downloadsKey, QString::number(m_atOnce.downloads));
    m_environment.transfers.setAtOnce(m_atOnce.uploads, m_atOnce.downloads);
    Q_EMIT changed();
}

QString SettingsView::uploadLimit() const
{
    return limitText(m_limits.rates.up);
}

QString SettingsView::downloadLimit() const
{
    return limitText(m_limits.rates.down);
}

bool SettingsView::limitUploads(const QString& rate)
{
    return limit(m_limits.rates.up, rate);
}

bool SettingsView::limitDownloads(const QString& rate)
{
    return limit(m_limits.rates.down, rate);
}

bool SettingsView::limit(qint64& rate, const QString& text)
{
    const auto wanted = limitIn(text);
    if (wanted && std::exchange(rate, *wanted) != *wanted)
        keepLimits();
    return wanted.has_value();
}

QString SettingsView::timeText(QTime time)
{
    return time.toString(QStringLiteral("HH:mm"));
}

LineLimits::Hours SettingsView::hours() const
{
    const LineLimits::Hours ofWork{.from = QTime(8, 0), .to = QTime(19, 0)};
    return m_limits.hours ? *m_limits.hours : m_lastHours.value_or(ofWork);
}

void SettingsView::setLimitedByHours(bool limited)
{
    if (limited == isLimitedByHours())
        return;
    const auto last = hours();
    m_lastHours = last;
    m_limits.hours = limited ? std::optional(last) : std::nullopt;
    keepLimits();
}

bool SettingsView::limitHours(const QString& from, const QString& to)
{
    const auto wanted = hoursFrom(from.trimmed() + u'-' + to.trimmed());
    if (!wanted)
        return false;
    if (std::exchange(m_limits.hours, wanted) != wanted)
        keepLimits();
    return true;
}

void SettingsView::keepLimits()
{
    storeLineLimits(m_environment.preferences, m_limits);
    m_environment.shares.set(m_limits.at(localTime(m_environment.clock.wallNow())));
    Q_EMIT changed();
}

void SettingsView::setNotifies(bool notifies)
{
    m_notifies = notifies;
    keep(notifiesKey, notifies);
}

void SettingsView::setKeepsAwake(bool keeps)
{
    m_atOnce.keepsAwake = keeps;
    m_environment.transfers.setKeepsAwake(keeps);
    keep(awakeKey, keeps);
}

void SettingsView::setInBackground(bool stays)
{
    m_isInBackground = stays;
    if (stays)
        m_environment.preferences.setString(backgroundKey, QStringLiteral("on"));
    else
        m_environment.preferences.remove(backgroundKey);
    if (m_environment.setAutostart)
        m_environment.setAutostart(stays);
    Q_EMIT changed();
}

void SettingsView::keep(const QString& key, bool value)
{
    if (value)
        m_environment.preferences.remove(key);
    else
        m_environment.preferences.setString(key, QStringLiteral("off"));
    Q_EMIT changed();
}

QString SettingsView::problem() const
{
    return m_environment.preferences.problem();
}

} // namespace palvera
