#pragma once

#include "installer/Image.h"
#include "installer/Refused.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <optional>

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace palvera::installer {

/// Why `act` refuses; nothing when it goes through.
inline std::optional<Refusal> refusalOf(const auto& act)
{
    try {
        act();
        return std::nullopt;
    } catch (const Refused& refused) {
        return refused.why;
    }
}

inline void PrintTo(Refusal refusal, std::ostream* out)
{
    *out << textOf({refusal}).toStdString();
}

/// A file without a name that holds `bytes`, at its beginning.
inline FileDescriptor memoryFile(const QByteArray& bytes)
{
    FileDescriptor file(::memfd_create("file", MFD_CLOEXEC));
    EXPECT_EQ(::pwrite(file.number(), bytes.constData(), static_cast<std::size_t>(bytes.size()), 0), bytes.size());
    return file;
}

inline QByteArray contentOf(const FileDescriptor& file)
{
    struct stat found{};
    ::fstat(file.number(), &found);
    QByteArray bytes(found.st_size, '\0');
    EXPECT_EQ(::pread(file.number(), bytes.data(), static_cast<std::size_t>(bytes.size()), 0), bytes.size());
    return bytes;
}

inline void makeFile(const QString& path, const QByteArray& bytes, mode_t mode = 0644)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    ::chmod(QFile::encodeName(path).constData(), mode);
}

inline QStringList namesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace palvera::installer
