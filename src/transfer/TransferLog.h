#pragma once

#include "async/Clock.h"

#include <QString>

#include <mutex>

namespace palvera {

/// The lines that one upload run adds to the plain-text transfer log. Any thread; each line is one append, so that
/// several uploads, in several processes, may log at once. Failures are ignored: the log is never worth an upload.
class TransferLog {
public:
    /// Logs to "Logs/Palvera/transfers.log" under `libraryFolder`, made on the way, and writes the "start" line.
    static QString pathIn(const QString& libraryFolder);
    TransferLog(const QString& libraryFolder, const QString& filename, Clock& clock);

    /// `part` (from 1) of `bytes` bytes was confirmed after `seconds`.
    void part(int part, qint64 bytes, double seconds);
    /// The file, of `bytes` bytes in all, is delivered. The average counts them all, earlier runs' parts included.
    void done(qint64 bytes);

private:
    void write(const QString& text);

    Clock& m_clock;
    const Clock::Moment m_began;
    const QString m_path;
    std::mutex m_lock; // one line at a time
};

/// "part   17   104.9 MB     6.3 s   16.64 MB/s": decimal units.
QString partLine(int part, qint64 bytes, double seconds);
/// "done  53.69 GB in 2500 s  average 21.47 MB/s": decimal units.
QString doneLine(qint64 bytes, double seconds);

} // namespace palvera
