#include "transfer/TransferLog.h"

#include "files/Folders.h"
#include "files/SmallFile.h"
#include "text/VisibleText.h"

#include <QDateTime>

namespace palvera {

namespace {

double megabytesPerSecond(qint64 bytes, double seconds)
{
    return seconds > 0 ? double(bytes) / seconds / 1e6 : 0.0;
}

QString timeOf(const Clock& clock)
{
    auto sinceEpoch = std::chrono::duration_cast<std::chrono::milliseconds>(clock.wallNow().time_since_epoch());
    return QDateTime::fromMSecsSinceEpoch(sinceEpoch.count()).toString(QStringLiteral("HH:mm:ss"));
}

} // namespace

QString partLine(int part, qint64 bytes, double seconds)
{
    return QString::asprintf("part %4d  %6.1f MB  %6.1f s  %6.2f MB/s", part, double(bytes) / 1e6, seconds,
                             megabytesPerSecond(bytes, seconds));
}

QString doneLine(qint64 bytes, double seconds)
{
    return QString::asprintf("done  %.2f GB in %.0f s  average %.2f MB/s", double(bytes) / 1e9, seconds,
                             megabytesPerSecond(bytes, seconds));
}

QString TransferLog::pathIn(const QString& libraryFolder)
{
    return libraryFolder + QStringLiteral("/Logs/Palvera/transfers.log");
}

TransferLog::TransferLog(const QString& libraryFolder, const QString& filename, Clock& clock)
    : m_clock(clock), m_began(clock.now()), m_path(pathIn(libraryFolder))
{
    makePrivateFolder(libraryFolder + QStringLiteral("/Logs/Palvera"));
    write(QStringLiteral("── ") + timeOf(clock) + QStringLiteral(" start ") + visibleText(filename));
}

void TransferLog::part(int part, qint64 bytes, double seconds)
{
    write(timeOf(m_clock) + QLatin1Char(' ') + partLine(part, bytes, seconds));
}

void TransferLog::done(qint64 bytes)
{
    write(timeOf(m_clock) + QLatin1Char(' ') + doneLine(bytes, secondsBetween(m_began, m_clock.now())));
}

void TransferLog::write(const QString& text)
{
    std::lock_guard guard(m_lock);
    appendToFile(m_path, text.toUtf8() + '\n');
}

} // namespace palvera
