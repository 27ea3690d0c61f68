#include "FileFixture.h"

#include "files/SourceFile.h"

#include <sys/stat.h>

namespace palvera {
namespace {

struct SourceFileTest : FileFixture {
    void SetUp() override { writeFile(path, "0123456789"); }
};

TEST_F(SourceFileTest, readsWhatIsThereAndLessOnlyAtTheEnd)
{
    const auto file = SourceFile::open(path);
    file.willNeed(0, 1 << 20); // changes nothing
    const std::tuple<qint64, qsizetype, const char*> cases[] = {{0, 4, "0123"}, {6, 4, "6789"}, {7, 4, "789"},
                                                                {10, 4, ""},    {100, 4, ""},   {3, 0, ""}};
    for (const auto& [offset, length, expected] : cases) {
        QByteArray bytes(length, '?');
        EXPECT_EQ(bytes.left(file.readAt(offset, {bytes.data(), std::size_t(length)})), expected) << offset;
    }
    char byte = 0;
    EXPECT_THROW(file.readAt(-1, {&byte, 1}), FileError) << "a read that fails is no end";
    EXPECT_EQ(file.identity().size, 10);
    writeFile(path, "more", QIODevice::Append);
    EXPECT_EQ(file.identity().size, 14) << "of this moment";
}

TEST_F(SourceFileTest, saysWhichFileCannotBeReadAndWhy)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(root.filePath("pipe")).constData(), 0600), 0);
    const std::pair<const char*, const char*> cases[] = {
        {"missing.mov", "“missing.mov” cannot be opened: No such file or directory."},
        {".", "“.” cannot be opened: Is a directory."},
        {"pipe", "“pipe” cannot be opened: Invalid argument."}, // and without waiting for its other end
    };
    for (const auto& [name, text] : cases)
        EXPECT_EQ(failureOf([&] { SourceFile::open(root.filePath(name)); }), text);
}

} // namespace
} // namespace palvera
