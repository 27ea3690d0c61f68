#include "installer/Unpack.h"

#include "tests/installer/Support.h"

#include <QTemporaryDir>

#include <archive.h>
#include <archive_entry.h>

#include <fcntl.h>
#include <sys/sysmacros.h>

namespace palvera::installer {
namespace {

struct Item {
    QByteArray path;
    QByteArray data = {}; // of a file; of a link, where it leads
    mode_t kind = AE_IFREG;
    mode_t mode = 0644;
    bool isHardLink = false;
};

const std::vector<Item> soundItems{
    {"bin", {}, AE_IFDIR}, {"lib", {}, AE_IFDIR},      {"bin/palvera", "#!/bin/sh\n", AE_IFREG, 0755},
    {"lib/one", "one"},    {"lib/deep", {}, AE_IFDIR}, {"lib/two", "one", AE_IFLNK}};

QByteArray archiveOf(const std::vector<Item>& items)
{
    QByteArray bytes(1 << 20, '\0');
    std::size_t size = 0;
    const std::unique_ptr<archive, decltype(&archive_write_free)> out(archive_write_new(), archive_write_free);
    archive_write_set_format_gnutar(out.get());
    archive_write_add_filter_zstd(out.get());
    archive_write_open_memory(out.get(), bytes.data(), static_cast<std::size_t>(bytes.size()), &size);
    for (const auto& item : items) {
        const std::unique_ptr<archive_entry, decltype(&archive_entry_free)> entry(archive_entry_new(),
                                                                                  archive_entry_free);
        archive_entry_set_pathname(entry.get(), item.path.constData());
        archive_entry_set_filetype(entry.get(), item.kind);
        archive_entry_set_perm(entry.get(), item.mode);
        archive_entry_set_uid(entry.get(), 1234);
        archive_entry_set_size(entry.get(), item.kind == AE_IFREG && !item.isHardLink ? item.data.size() : 0);
        archive_entry_set_rdev(entry.get(), makedev(1, 3));
        if (item.isHardLink)
            archive_entry_set_hardlink(entry.get(), item.data.constData());
        else if (item.kind == AE_IFLNK)
            archive_entry_set_symlink(entry.get(), item.data.constData());
        EXPECT_EQ(archive_write_header(out.get(), entry.get()), ARCHIVE_OK) << archive_error_string(out.get());
        if (item.kind == AE_IFREG && !item.isHardLink)
            archive_write_data(out.get(), item.data.constData(), static_cast<std::size_t>(item.data.size()));
    }
    EXPECT_EQ(archive_write_close(out.get()), ARCHIVE_OK);
    return bytes.first(static_cast<qsizetype>(size));
}

Manifest manifestOf(const std::vector<Item>& items)
{
    Manifest manifest{.files = static_cast<qint64>(items.size())};
    for (const auto& item : items)
        manifest.unpackedSize += item.kind == AE_IFREG && !item.isHardLink ? item.data.size() : 0;
    return manifest;
}

class UnpackTest : public testing::Test {
protected:
    UnpackTest()
    {
        ::umask(022);
        QDir(m_outside.path()).mkpath("build");
        QDir(m_outside.path()).mkpath("victim");
    }

    std::optional<Refusal> unpackAll(const Manifest& manifest, const QByteArray& archive)
    {
        const FileDescriptor folder(::open(QFile::encodeName(m_build).constData(), O_RDONLY | O_DIRECTORY));
        return refusalOf([&] { unpack(manifest, memoryFile(archive), folder); });
    }

    mode_t modeOf(const char* name) const
    {
        struct stat found{};
        ::lstat(QFile::encodeName(m_build + '/' + name).constData(), &found);
        return found.st_mode;
    }

    QTemporaryDir m_outside;
    const QString m_build = m_outside.filePath("build");
};

QByteArray deepPath(int folders)
{
    return QByteArray("d/").repeated(folders) + "file";
}

std::vector<Item> deepItems(int folders)
{
    std::vector<Item> items;
    for (int depth = 1; depth <= folders; ++depth)
        items.push_back({QByteArray("d/").repeated(depth).chopped(1), {}, AE_IFDIR});
    items.push_back({deepPath(folders), "x"});
    return items;
}

// The name `victim/new` is free, so that O_EXCL alone saves nothing there.
TEST_F(UnpackTest, refusesStrangeContentAndLeavesNothingOutside)
{
    const auto outside = QFile::encodeName(m_outside.path());
    for (const auto& [name, extra] : std::vector<std::pair<const char*, std::vector<Item>>>{
             {"climbs", {{"../victim/new", "evil"}}},
             {"climbs in the middle", {{"lib/../../victim/new", "evil"}}},
             {"absolute", {{outside + "/victim/new", "evil"}}},
             {"absolute link, and through it", {{"lib/out", outside + "/victim", AE_IFLNK}, {"lib/out/new", "evil"}}},
             {"link that climbs out", {{"lib/out", "../../victim", AE_IFLNK}}},
             {"link that climbs out behind a name", {{"lib/out", "deep/../../../victim", AE_IFLNK}}},
             {"link that climbs out from where another leads",
              {{"lib/deep/up", "../..", AE_IFLNK}, {"lib/out", "deep/up/../victim", AE_IFLNK}}},
             {"link to nothing", {{"lib/out", "", AE_IFLNK}}},
             {"file over a link", {{"lib/link", "new", AE_IFLNK}, {"lib/link", "evil"}}},
             {"file through a folder's link", {{"link", "lib", AE_IFLNK}, {"link/new", "evil"}}},
             {"hard link", {{"lib/hard", "/etc/passwd", AE_IFREG, 0644, true}}},
             {"hard link inside", {{"lib/hard", "lib/one", AE_IFREG, 0644, true}}},
             {"device", {{"lib/device", {}, AE_IFCHR}}},
             {"pipe", {{"lib/pipe", {}, AE_IFIFO}}},
             {"file twice", {{"bin/palvera", "evil"}}},
             {"folder twice", {{"bin", {}, AE_IFDIR}}},
             {"file as a folder", {{"lib/one/new", "evil"}}},
             {"folder that was not listed", {{"share/new", "evil"}}},
             {"a dot in the way", {{"lib/./new", "evil"}}},
             {"a piece without a name", {{"lib//new", "evil"}}},
             {"a piece too long", {{QByteArray(256, 'x'), "evil"}}},
             {"too deep", deepItems(32)}}) {
        QDir(m_build).removeRecursively();
        QDir().mkpath(m_build);
        auto items = soundItems;
        std::ranges::copy(extra, std::back_inserter(items));
        EXPECT_EQ(unpackAll(manifestOf(items), archiveOf(items)), Refusal::strangeContent) << name;
        EXPECT_EQ(namesIn(m_outside.path()), (QStringList{"build", "victim"})) << name;
        EXPECT_EQ(namesIn(m_outside.filePath("victim")), QStringList()) << name;
    }
}

TEST_F(UnpackTest, takesFilesFoldersAndLinksThatStayInside)
{
    auto items = soundItems;
    items.push_back({QByteArray(255, 'x'), "long"});
    items.push_back({"lib/up", "../bin/palvera", AE_IFLNK});
    items.push_back({"set-id", "x", AE_IFREG, 06777});
    std::ranges::copy(deepItems(31), std::back_inserter(items));
    ASSERT_EQ(unpackAll(manifestOf(items), archiveOf(items)), std::nullopt);
    EXPECT_EQ(namesIn(m_build).size(), 5);
    EXPECT_TRUE(QFile::exists(m_build + '/' + deepPath(31)));
    EXPECT_EQ(QFile(m_build + "/lib/one").size(), 3);
    EXPECT_EQ(modeOf("bin/palvera"), S_IFREG | 0755);
    EXPECT_EQ(modeOf("set-id"), S_IFREG | 0755);
    EXPECT_EQ(modeOf("lib/one"), S_IFREG | 0644);
    EXPECT_EQ(modeOf("lib"), S_IFDIR | 0755);
    EXPECT_EQ(QFile::symLinkTarget(m_build + "/lib/up"), m_build + "/bin/palvera");
    struct stat found{};
    ::lstat(QFile::encodeName(m_build + "/lib/one").constData(), &found);
    EXPECT_EQ(found.st_uid, ::geteuid());
}

TEST_F(UnpackTest, holdsExactlyAsMuchAsTheManifestSays)
{
    std::vector<Item> items{{"a", QByteArray(100'000, '\0')}, {"b", "b"}};
    for (const auto& [moreFiles, moreBytes] : {std::pair(-1, 0), {1, 0}, {0, -1}, {0, 1}}) {
        auto manifest = manifestOf(items);
        manifest.files += moreFiles;
        manifest.unpackedSize += moreBytes;
        EXPECT_EQ(unpackAll(manifest, archiveOf(items)), Refusal::strangeContent) << moreFiles << moreBytes;
        EXPECT_LE(namesIn(m_build).size(), manifest.files) << moreFiles << moreBytes;
        for (const auto& left : namesIn(m_build))
            QFile::remove(m_build + '/' + left);
    }
    auto bomb = manifestOf(items);
    bomb.unpackedSize = 50'000;
    EXPECT_EQ(unpackAll(bomb, archiveOf(items)), Refusal::strangeContent);
    EXPECT_EQ(namesIn(m_build), QStringList()) << "what is too large is refused before it is written";
}

TEST_F(UnpackTest, refusesWhatIsNoArchive)
{
    const auto whole = archiveOf(soundItems);
    auto broken = whole;
    broken[broken.size() / 2] = static_cast<char>(broken[broken.size() / 2] ^ 0x55);
    for (const auto& bytes : {QByteArray(5000, 'x'), whole.first(whole.size() / 2), broken})
        EXPECT_NE(unpackAll(manifestOf(soundItems), bytes), std::nullopt) << bytes.size();
}

} // namespace
} // namespace palvera::installer
