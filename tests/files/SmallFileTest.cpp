#include "FileFixture.h"

#include "files/SmallFile.h"

#include <sys/stat.h>

namespace palvera {
namespace {

struct SmallFileTest : FileFixture {
    QString at(const char* name) const { return root.filePath(name); }
};

TEST_F(SmallFileTest, onlyAnOrdinaryFileOfModestSizeIsRead)
{
    appendToFile(at("file"), "12345");
    appendToFile(at("file"), "67890");
    QFile::link(at("file"), at("link"));
    ASSERT_EQ(::mkfifo(at("pipe").toUtf8().constData(), 0600), 0); // opening which would wait for ever
    const struct {
        QString path;
        qint64 limit;
        std::optional<QByteArray> read;
    } cases[] = {
        {at("file"), 10, "1234567890"}, {at("file"), 9, {}},  {at("link"), 10, {}},    {at("pipe"), 10, {}},
        {root.path(), 10, {}},          {at("none"), 10, {}}, {"/dev/zero", 1000, {}},
    };
    for (const auto& [path, limit, read] : cases)
        EXPECT_EQ(readSmallFile(path, limit), read) << path.toStdString() << " " << limit;
}

TEST_F(SmallFileTest, aLineIsAddedToAFileOfTheOwnersAndToNothingElse)
{
    QFile::link(at("elsewhere"), at("link"));
    appendToFile(at("link"), "text");
    EXPECT_FALSE(QFile::exists(at("elsewhere")));
    appendToFile(at("log"), "text");
    EXPECT_EQ(QFile::permissions(at("log")) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

} // namespace
} // namespace palvera
