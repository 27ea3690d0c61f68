#pragma once

#include "http/HttpClient.h"

#include <QFile>

namespace palvera {

/// The image of an update while it arrives, written as it comes. On the strand of the session that fetches it.
class ImageFile final : public BodySink {
public:
    /// Makes the file at `path`, which must not exist, for at most `room` bytes. `progress` is called with the fraction
    /// whenever the whole percent has changed. Throws FileError.
    ImageFile(const QString& path, qint64 room, std::function<void(double fraction)> progress);

    /// Takes note of the head of the answer, whose body is worth having only where this says so. Throws UpdateError
    /// for an image that is too large.
    bool expect(const HttpResponse& head);
    qint64 room() const override { return m_room; }
    /// Throws FileError.
    void take(std::span<const char> bytes) override;

private:
    QFile m_file;
    const qint64 m_room;
    const std::function<void(double)> m_progress;
    qint64 m_total = 0; // 0 while unknown
    qint64 m_taken = 0;
    int m_percent = 0;
};

/// Makes the folder at `path`, in the place of whatever is there, for images: where it is a link, that goes, and not
/// what it leads to. Gives how many bytes an image may have: no more than 1 GiB, nor half of the room that is left.
/// Blocks on the disk. Throws FileError.
qint64 makeImageFolder(const QString& path);
/// Removes it with all that is in it. Blocks on the disk.
void removeImageFolder(const QString& path);

} // namespace palvera
