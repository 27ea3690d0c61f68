#include "files/SmallFile.h"

#include "support/QtPrinting.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace palvera {
namespace {

TEST(SmallFileTest, onlyAnOrdinaryFileOfModestSizeIsRead)
{
    QTemporaryDir folder;
    auto at = [&](const char* name) { return folder.filePath(name); };
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
        {folder.path(), 10, {}},        {at("none"), 10, {}}, {"/dev/zero", 1000, {}},
    };
    for (const auto& [path, limit, read] : cases)
        EXPECT_EQ(readSmallFile(path, limit), read) << path.toStdString() << " " << limit;
}

TEST(SmallFileTest, aLineIsAddedToAFileOfTheOwnersAndToNothingElse)
{
    QTemporaryDir folder;
    QFile::link(folder.filePath("elsewhere"), folder.filePath("link"));
    appendToFile(folder.filePath("link"), "text");
    EXPECT_FALSE(QFile::exists(folder.filePath("elsewhere")));
    appendToFile(folder.filePath("log"), "text");
    EXPECT_EQ(QFile::permissions(folder.filePath("log")) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

} // namespace
} // namespace palvera
