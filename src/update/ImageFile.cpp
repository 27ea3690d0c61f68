#include "update/ImageFile.h"

#include "files/FileError.h"
#include "files/Quantities.h"
#include "update/Updater.h"

#include <QObject>
#include <QStorageInfo>

#include <filesystem>

namespace palvera {

namespace {

constexpr qint64 largestImage = 1LL << 30;

} // namespace

ImageFile::ImageFile(const QString& path, qint64 room, std::function<void(double)> progress)
    : m_file(path), m_room(room), m_progress(std::move(progress))
{
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        throw FileError(QObject::tr("The update could not be stored: %1.").arg(m_file.errorString()));
}

bool ImageFile::expect(const HttpResponse& head)
{
    m_total = head.header("Content-Length").toLongLong();
    if (head.isSuccess() && m_total > m_room)
        throw UpdateError(m_total > largestImage
                              ? QObject::tr("The update is too large: %1.").arg(byteCountText(m_total))
                              : QObject::tr("There is not enough room on the disk for the update of %1.")
                                    .arg(byteCountText(m_total)));
    return head.isSuccess();
}

void ImageFile::take(std::span<const char> bytes)
{
    if (m_file.write(bytes.data(), qint64(bytes.size())) != qint64(bytes.size()))
        throw FileError(QObject::tr("The update could not be stored: %1.").arg(m_file.errorString()));
    m_taken += qint64(bytes.size());
    const int percent = percentOf(m_taken, m_total);
    if (std::exchange(m_percent, percent) != percent)
        m_progress(fractionOf(m_taken, m_total));
}

qint64 makeImageFolder(const QString& path)
{
    namespace fs = std::filesystem;
    const fs::path folder(path.toStdString());
    std::error_code failure;
    fs::remove_all(folder, failure);
    if (!failure)
        fs::create_directories(folder, failure);
    if (failure)
        throwFileError(path, QT_TRANSLATE_NOOP("QObject", "“%1” cannot be made anew: %2."), failure.value());
    fs::permissions(folder, fs::perms::owner_all, failure);
    return std::min(largestImage, QStorageInfo(path).bytesAvailable() / 2);
}

void removeImageFolder(const QString& path)
{
    std::error_code ignored; // the next one is made in its place
    std::filesystem::remove_all(path.toStdString(), ignored);
}

} // namespace palvera
