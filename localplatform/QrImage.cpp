#include "localplatform/QrImage.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QtEndian>

namespace palvera::local {

namespace {

constexpr int modules = 29;
constexpr int quiet = 4; // blank modules around the code
constexpr int dots = 6;  // pixels of one module

quint32 crcOf(const QByteArray& bytes)
{
    quint32 crc = ~0U;
    for (char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xedb88320U : 0);
    }
    return ~crc;
}

QByteArray bigEndian(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

QByteArray chunk(const QByteArray& type, const QByteArray& data)
{
    return bigEndian(static_cast<quint32>(data.size())) + type + data + bigEndian(crcOf(type + data));
}

bool isFinder(int x, int y)
{
    return (x < 8 && y < 8) || (x >= modules - 8 && y < 8) || (x < 8 && y >= modules - 8);
}

bool isDarkInFinder(int x, int y)
{
    int column = x < 8 ? x : modules - 1 - x, row = y < 8 ? y : modules - 1 - y;
    int ring = std::max(std::abs(column - 3), std::abs(row - 3));
    return ring == 3 || ring < 2;
}

bool isDark(const QByteArray& noise, int x, int y)
{
    if (x < 0 || y < 0 || x >= modules || y >= modules)
        return false;
    if (isFinder(x, y))
        return isDarkInFinder(x, y);
    int bit = (y * modules + x) % (static_cast<int>(noise.size()) * 8);
    return noise[bit / 8] >> (bit % 8) & 1;
}

} // namespace

QString qrImage(const QByteArray& secret)
{
    auto noise = QCryptographicHash::hash(secret, QCryptographicHash::Sha512);
    constexpr int side = (modules + 2 * quiet) * dots;
    QByteArray pixels;
    for (int y = 0; y < side; ++y) {
        pixels.append('\0'); // no filter
        for (int x = 0; x < side; ++x)
            pixels.append(isDark(noise, x / dots - quiet, y / dots - quiet) ? '\0' : '\xff');
    }
    QByteArray header = bigEndian(side) + bigEndian(side) + QByteArray("\x08\0\0\0\0", 5); // eight bits of grey
    QByteArray png = "\x89PNG\r\n\x1a\n" + chunk("IHDR", header) + chunk("IDAT", qCompress(pixels).mid(4)) +
                     chunk("IEND", {}); // qCompress puts the length first
    return QStringLiteral("data:image/png;base64,") + QString::fromLatin1(png.toBase64());
}

} // namespace palvera::local
