#include "installer/Unpack.h"

#include "installer/Refused.h"
#include "installer/Tree.h"

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <cerrno>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace palvera::installer {

namespace {

constexpr std::size_t blockSize = 1 << 20; // bytes
constexpr qsizetype longestPiece = 255;    // bytes, of every file system that we meet
constexpr qsizetype deepest = 32;          // folders; whoever removes the tree holds a descriptor for each

[[noreturn]] void refuseContent()
{
    throw Refused{Refusal::strangeContent};
}

QByteArrayList piecesOf(QByteArray path)
{
    if (path.endsWith('/')) // so a tar marks a folder
        path.chop(1);
    const auto pieces = path.split('/');
    const bool isFit = pieces.size() <= deepest && std::ranges::all_of(pieces, [](const QByteArray& piece) {
                           return !piece.isEmpty() && piece != "." && piece != ".." && piece.size() <= longestPiece;
                       });
    if (!isFit)
        refuseContent();
    return pieces;
}

/// Whether a link in a folder `depth` below the top leads inside. It may first climb, over folders that are real ones,
/// then only descend: "sub/link/../../x" would climb from wherever `link` leads.
bool leadsInside(const QByteArray& target, qsizetype depth)
{
    if (target.isEmpty() || target.startsWith('/'))
        return false;
    bool descends = false;
    for (const auto& piece : target.split('/')) {
        if (piece == ".." && (descends || --depth < 0))
            return false;
        descends = descends || piece != "..";
    }
    return true;
}

/// One pass over an archive. libarchive's own writer is not used: it goes by paths, and it restores owners, set-id bits
/// and attributes.
class Unpacking {
public:
    Unpacking(const Manifest& manifest, const FileDescriptor& folder) : m_manifest(manifest), m_folder(folder) {}

    void run(const FileDescriptor& file)
    {
        // These two alone: each further format is one parser more. A warning says that another program would be run.
        if (!m_archive || archive_read_support_format_tar(m_archive.get()) != ARCHIVE_OK ||
            archive_read_support_filter_zstd(m_archive.get()) != ARCHIVE_OK ||
            archive_read_open_fd(m_archive.get(), file.number(), blockSize) != ARCHIVE_OK)
            throw Refused{Refusal::damaged};
        archive_entry* entry = nullptr;
        while (isThereMore(archive_read_next_header(m_archive.get(), &entry))) {
            if (++m_entries > m_manifest.files)
                refuseContent();
            take(entry);
        }
        if (m_entries != m_manifest.files || m_bytes != m_manifest.unpackedSize)
            refuseContent();
    }

private:
    static bool isThereMore(int state)
    {
        if (state != ARCHIVE_OK && state != ARCHIVE_EOF)
            throw Refused{Refusal::damaged};
        return state == ARCHIVE_OK;
    }

    void take(archive_entry* entry)
    {
        if (archive_entry_hardlink(entry))
            refuseContent();
        auto pieces = piecesOf(archive_entry_pathname(entry));
        const auto name = pieces.takeLast();
        const auto parent = openParent(pieces);
        switch (archive_entry_filetype(entry)) {
        case AE_IFDIR:
            requireMade(::mkdirat(parent.number(), name.constData(), 0755) == 0);
            return;
        case AE_IFLNK: {
            const QByteArray target = archive_entry_symlink(entry);
            if (!leadsInside(target, pieces.size()))
                refuseContent();
            requireMade(::symlinkat(target.constData(), parent.number(), name.constData()) == 0);
            return;
        }
        case AE_IFREG:
            return write(entry, parent, name);
        default: // devices and pipes, numbers of the archive's and not of ours
            refuseContent();
        }
    }

    FileDescriptor openParent(const QByteArrayList& pieces) const
    {
        FileDescriptor at = openFolder(m_folder, ".");
        for (const auto& piece : pieces)
            at = openFolder(at, piece);
        if (at.number() < 0) // a link or a file stands there, or nothing
            refuseContent();
        return at;
    }

    static void requireMade(bool isMade)
    {
        if (!isMade && errno == EEXIST)
            refuseContent();
        if (!isMade)
            throwNotStored();
    }

    void write(archive_entry* entry, const FileDescriptor& parent, const QByteArray& name)
    {
        const auto size = archive_entry_size_is_set(entry) ? qint64{archive_entry_size(entry)} : -1;
        if (size < 0 || size > m_manifest.unpackedSize - m_bytes)
            refuseContent();
        m_bytes += size;
        const mode_t mode = archive_entry_mode(entry) & S_IXUSR ? 0755 : 0644;
        FileDescriptor file(
            ::openat(parent.number(), name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
        requireMade(file.number() >= 0);
        const void* block = nullptr;
        std::size_t count = 0;
        la_int64_t from = 0;
        qint64 written = 0;
        while (isThereMore(archive_read_data_block(m_archive.get(), &block, &count, &from))) {
            if (from != written || static_cast<qint64>(count) > size - written) // a file with holes, or one that lies
                refuseContent();
            writeAll(file, {static_cast<const char*>(block), static_cast<qsizetype>(count)});
            written += static_cast<qint64>(count);
        }
        if (written != size)
            refuseContent();
        sync(file);
        if (!file.close())
            throwNotStored();
    }

    const Manifest& m_manifest;
    const FileDescriptor& m_folder;
    const std::unique_ptr<archive, decltype([](archive* each) { archive_read_free(each); })> m_archive{
        archive_read_new()};
    qint64 m_bytes = 0;
    qint64 m_entries = 0;
};

} // namespace

void unpack(const Manifest& manifest, const FileDescriptor& archive, const FileDescriptor& folder)
{
    Unpacking(manifest, folder).run(archive);
}

} // namespace palvera::installer
