#include "cli/UploadErrand.h"

#include "cli/Commands.h"
#include "support/QtPrinting.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace palvera::cli {

using namespace Qt::StringLiterals;

namespace {

TEST(UploadErrand, refusesWhatIsNoFile)
{
    QTemporaryDir folder;
    auto file = folder.filePath(u"a b.mov"_s);
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    EXPECT_TRUE(objectionTo(file).contains(u"is empty"));
    written.write("film");
    EXPECT_EQ(objectionTo(file), QString());
    EXPECT_TRUE(objectionTo(folder.path()).contains(u"is a folder"));
    EXPECT_TRUE(objectionTo(folder.filePath(u"none"_s)).contains(u"There is no file"));
    EXPECT_TRUE(objectionTo(u"/dev/null"_s).contains(u"not an ordinary file"));
}

TEST(UploadErrand, namesBinFoldersAsThePlatformDoes)
{
    EXPECT_EQ(binFolder({}), std::nullopt);
    EXPECT_EQ(binFolder(u""_s), std::nullopt);
    EXPECT_EQ(binFolder(u"Rushes"_s), u"Rushes/"_s);
    EXPECT_EQ(binFolder(u"Rushes/Day 1/"_s), u"Rushes/Day 1/"_s);
}

} // namespace

} // namespace palvera::cli
