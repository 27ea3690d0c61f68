#include "files/SourcePath.h"

#include <QDir>

#include <algorithm>
#include <filesystem>

#include <sys/stat.h>

namespace palvera {

namespace {

constexpr char16_t firstByte = 0xDC00; // only bytes from 0x80 on are no UTF-8
constexpr char16_t lowest = firstByte + 0x80, highest = firstByte + 0xFF;

/// How many bytes at the beginning of `bytes`, which is not empty, are one character of UTF-8; 0 when they are none.
qsizetype lengthOfCharacter(QByteArrayView bytes)
{
    constexpr qsizetype longest = 4;
    for (qsizetype length = 1; length <= std::min(longest, bytes.size()); ++length)
        if (bytes.first(length).isValidUtf8())
            return length;
    return 0;
}

bool standsForByte(QStringView path, qsizetype at)
{
    const auto c = path[at].unicode();
    return c >= lowest && c <= highest && !(at > 0 && path[at - 1].isHighSurrogate());
}

} // namespace

QString pathFromBytes(const QByteArray& bytes)
{
    if (bytes.isValidUtf8())
        return QString::fromUtf8(bytes);
    QString path;
    for (QByteArrayView rest(bytes); !rest.isEmpty();) {
        const auto length = lengthOfCharacter(rest);
        if (length > 0)
            path += QString::fromUtf8(rest.first(length));
        else
            path += QChar(char16_t(firstByte + uchar(rest.front())));
        rest = rest.sliced(std::max<qsizetype>(length, 1));
    }
    return path;
}

QByteArray pathToBytes(const QString& path)
{
    QByteArray bytes;
    qsizetype begin = 0;
    for (qsizetype i = 0; i < path.size(); ++i) {
        if (!standsForByte(path, i))
            continue;
        bytes += QStringView(path).sliced(begin, i - begin).toUtf8() + char(path[i].unicode() - firstByte);
        begin = i + 1;
    }
    return bytes + QStringView(path).sliced(begin).toUtf8();
}

QString absolutePath(const QString& path)
{
    std::error_code failure;
    const auto folder = std::filesystem::current_path(failure).native();
    const auto above = path.startsWith(u'/') ? QString() : pathFromBytes(QByteArray::fromStdString(folder)) + u'/';
    return QDir::cleanPath(above + path);
}

QString readableName(const QString& path)
{
    const auto characters = path.sliced(path.lastIndexOf(u'/') + 1).toUcs4(); // halves of pairs come out as U+FFFD
    return QString::fromUcs4(reinterpret_cast<const char32_t*>(characters.constData()), characters.size());
}

std::optional<PathStatus> statusOf(const QString& path)
{
    struct stat status{};
    if (::stat(pathToBytes(path).constData(), &status) != 0)
        return {};
    return PathStatus{
        .isFolder = S_ISDIR(status.st_mode), .isOrdinary = S_ISREG(status.st_mode), .size = qint64(status.st_size)};
}

} // namespace palvera
