#include "files/SourceFile.h"
#include "files/FileError.h"
#include "support/QtPrinting.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace palvera {
namespace {

struct SourceFileTest : testing::Test {
    QTemporaryDir root;
    QString path = root.filePath("master.mov");

    void SetUp() override { append("0123456789"); }

    void append(const QByteArray& bytes) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::Append));
        file.write(bytes);
    }

    static QString failureOf(const QString& file)
    {
        try {
            SourceFile::open(file);
            return "opened";
        } catch (const FileError& error) {
            return error.text();
        }
    }
};

TEST_F(SourceFileTest, readsWhatIsThereAndLessOnlyAtTheEnd)
{
    const auto file = SourceFile::open(path);
    const struct {
        qint64 offset;
        qsizetype length;
        const char* expected;
    } cases[] = {{0, 4, "0123"}, {6, 4, "6789"}, {7, 4, "789"}, {10, 4, ""}, {100, 4, ""}, {3, 0, ""}};
    for (const auto& each : cases) {
        QByteArray bytes(each.length, '?');
        const qint64 count = file.readAt(each.offset, {bytes.data(), std::size_t(bytes.size())});
        EXPECT_EQ(bytes.left(count), each.expected) << each.offset;
    }
}

TEST_F(SourceFileTest, seesTheSizeOfTheMoment)
{
    const auto file = SourceFile::open(path);
    EXPECT_EQ(file.size(), 10);
    append("more");
    EXPECT_EQ(file.size(), 14);
}

TEST_F(SourceFileTest, aHintChangesNothing)
{
    auto file = SourceFile::open(path);
    file.willNeed(0, 1 << 20);
    const auto moved = std::move(file);
    char byte = 0;
    EXPECT_EQ(moved.readAt(9, {&byte, 1}), 1);
    EXPECT_EQ(byte, '9');
}

TEST_F(SourceFileTest, saysWhichFileCannotBeReadAndWhy)
{
    EXPECT_EQ(failureOf(root.filePath("missing.mov")), "“missing.mov” cannot be opened: No such file or directory.");
    EXPECT_EQ(failureOf(root.path() + "/."), "“.” cannot be opened: Is a directory.");
}

TEST_F(SourceFileTest, doesNotWaitForTheOtherEndOfAPipe)
{
    const QString pipe = root.filePath("pipe");
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(failureOf(pipe), "“pipe” cannot be opened: Invalid argument.");
}

TEST_F(SourceFileTest, aReadThatFailsIsNeverAnEnd)
{
    const auto file = SourceFile::open(path);
    char byte = 0;
    EXPECT_THROW(file.readAt(-1, {&byte, 1}), FileError);
}

} // namespace
} // namespace palvera
