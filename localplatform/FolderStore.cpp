#include "localplatform/FolderStore.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace palvera::local {

namespace {

class Descriptor {
public:
    Descriptor(const QString& path, int flags) : m_number(::open(QFile::encodeName(path).constData(), flags, 0644))
    {
        if (m_number < 0)
            throw std::system_error(errno, std::generic_category(), path.toStdString());
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { ::close(m_number); }

    void writeAt(qint64 offset, std::span<const char> bytes) const
    {
        while (!bytes.empty()) {
            auto wrote = ::pwrite(m_number, bytes.data(), bytes.size(), offset);
            if (wrote < 0 && errno == EINTR)
                continue;
            if (wrote <= 0)
                throw std::system_error(errno, std::generic_category(), "writing a part");
            offset += wrote;
            bytes = bytes.subspan(static_cast<std::size_t>(wrote));
        }
    }

    void readAt(qint64 offset, std::span<char> into) const
    {
        while (!into.empty()) {
            auto got = ::pread(m_number, into.data(), into.size(), offset);
            if (got < 0 && errno == EINTR)
                continue;
            if (got <= 0)
                throw std::system_error(errno, std::generic_category(), "reading an object");
            offset += got;
            into = into.subspan(static_cast<std::size_t>(got));
        }
    }

    qint64 size() const
    {
        struct stat state{};
        if (::fstat(m_number, &state) != 0)
            throw std::system_error(errno, std::generic_category(), "reading an object");
        return state.st_size;
    }

private:
    int m_number;
};

class FileObject final : public StoredObject {
public:
    explicit FileObject(QString path) : m_path(std::move(path)), m_file(m_path, O_RDONLY | O_CLOEXEC) {}

    qint64 size() const override { return m_file.size(); }
    void read(qint64 offset, std::span<char> into) const override { m_file.readAt(offset, into); }
    QString path() const override { return m_path; }

private:
    QString m_path;
    Descriptor m_file;
};

/// Writes a part to its place in the staging file.
class PlacedWriter final : public PartWriter {
public:
    PlacedWriter(const QString& staging, qint64 offset) : m_file(staging, O_WRONLY | O_CREAT | O_CLOEXEC), m_at(offset)
    {}

    void write(std::span<const char> bytes) override
    {
        m_file.writeAt(m_at, bytes);
        m_at += static_cast<qint64>(bytes.size());
    }
    void keep() override {}

private:
    Descriptor m_file;
    qint64 m_at;
};

/// Writes a part that is there already, or arriving, to a file of its own and copies it to its place when it is whole.
class BesideWriter final : public PartWriter {
public:
    BesideWriter(const QString& staging, qint64 offset, int copy)
        : m_staging(staging),
          m_path(staging + QStringLiteral(".copy") + QString::number(copy)),
          m_offset(offset),
          m_file(m_path, O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC)
    {}
    ~BesideWriter() override { QFile::remove(m_path); }

    void write(std::span<const char> bytes) override
    {
        m_file.writeAt(m_length, bytes);
        m_length += static_cast<qint64>(bytes.size());
    }

    void keep() override
    {
        Descriptor staging(m_staging, O_WRONLY | O_CREAT | O_CLOEXEC);
        std::vector<char> buffer(1 << 20);
        for (qint64 done = 0; done < m_length;) {
            auto slice = std::span(buffer).first(static_cast<std::size_t>(std::min<qint64>(1 << 20, m_length - done)));
            m_file.readAt(done, slice);
            staging.writeAt(m_offset + done, slice);
            done += static_cast<qint64>(slice.size());
        }
    }

private:
    QString m_staging;
    QString m_path;
    qint64 m_offset;
    Descriptor m_file;
    qint64 m_length = 0;
};

class FolderStore final : public ByteStore {
public:
    explicit FolderStore(const QString& folder)
        : m_staging(folder + QStringLiteral("/staging/")), m_objects(folder + QStringLiteral("/objects/"))
    {
        QDir().mkpath(m_staging);
        QDir().mkpath(m_objects);
    }

    std::unique_ptr<PartWriter> openPart(const Staging& staging, const PartSpan& span, Part part) override
    {
        if (part == Part::again)
            return std::make_unique<BesideWriter>(stagingPath(staging), span.offset, ++m_copies);
        return std::make_unique<PlacedWriter>(stagingPath(staging), span.offset);
    }

    void assemble(const Staging& staging) override
    {
        QDir().mkpath(m_objects + QString::number(staging.serial));
        if (::rename(QFile::encodeName(stagingPath(staging)), QFile::encodeName(objectPath(staging))) != 0)
            throw std::system_error(errno, std::generic_category(), "assembling an object");
    }

    void drop(const Staging& staging) override { QFile::remove(stagingPath(staging)); }

    std::shared_ptr<const StoredObject> object(const Staging& staging) override
    {
        return std::make_shared<FileObject>(objectPath(staging));
    }

private:
    QString stagingPath(const Staging& staging) const { return m_staging + QString::number(staging.serial); }
    QString objectPath(const Staging& staging) const
    {
        return m_objects + QString::number(staging.serial) + u'/' + staging.filename;
    }

    QString m_staging;
    QString m_objects;
    int m_copies = 0;
};

} // namespace

std::unique_ptr<ByteStore> makeFolderStore(const QString& folder)
{
    return std::make_unique<FolderStore>(folder);
}

std::shared_ptr<const StoredObject> openObject(const QString& path)
{
    return std::make_shared<FileObject>(path);
}

} // namespace palvera::local
