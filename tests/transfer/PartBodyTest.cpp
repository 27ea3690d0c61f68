#include "transfer/PartBody.h"
#include "transfer/UploadFailures.h"

#include "files/BulkBuffer.h"
#include "files/FileError.h"

#include "support/Files.h"

#include <QTemporaryFile>

#include <gtest/gtest.h>

namespace palvera {
namespace {

struct PartBodyTest : testing::Test {
    const QByteArray content = patterned(3'000'000);
    QTemporaryFile file;
    BulkBuffer buffer{2'000'000};

    void SetUp() override
    {
        ASSERT_TRUE(file.open());
        writeFile(file.fileName(), content);
    }
    static QByteArray drain(PartBody& body, qint64 step)
    {
        QByteArray all;
        QByteArray piece(step, '\0');
        while (all.size() < body.size())
            all += piece.left(qsizetype(body.read(all.size(), {piece.data(), std::size_t(step)})));
        return all;
    }
};

TEST_F(PartBodyTest, givesThePartsBytesHoweverTheyAreAskedForAndToARetryWithoutReadingAgain)
{
    auto source = SourceFile::open(file.fileName());
    for (qint64 step : {1LL << 16, 700'001LL, 5'000'000LL}) {
        PartBody body(source, {.offset = 1'000'000, .length = 1'500'000}, buffer.first(1'500'000));
        EXPECT_EQ(drain(body, step), content.mid(1'000'000, 1'500'000)) << step;
        writeFile(file.fileName(), QByteArray(3'000'000, 'x'));
        EXPECT_EQ(drain(body, 300), content.mid(1'000'000, 1'500'000)) << step;
        writeFile(file.fileName(), content);
    }
}

TEST_F(PartBodyTest, aFileThatShrankIsNotSent)
{
    auto source = SourceFile::open(file.fileName());
    PartBody body(source, {.offset = 1'000'000, .length = 2'000'000}, buffer.first(2'000'000));
    file.resize(2'500'000);
    QByteArray piece(1 << 20, '\0');
    EXPECT_EQ(body.read(0, {piece.data(), 1000}), 1000u);
    EXPECT_THROW(body.read(1'490'000, {piece.data(), 20'000}), SourceChanged);
}

TEST_F(PartBodyTest, aPartWithoutABufferIsReadAnewForEachAttempt)
{
    auto source = SourceFile::open(file.fileName());
    PartBody body(source, {.offset = 1'000'000, .length = 1'500'000}, {});
    EXPECT_EQ(drain(body, 700'001), content.mid(1'000'000, 1'500'000));
    writeFile(file.fileName(), QByteArray(3'000'000, 'x'));
    EXPECT_EQ(drain(body, 300), QByteArray(1'500'000, 'x'));
    file.resize(2'000'000);
    QByteArray piece(1000, '\0');
    EXPECT_THROW(body.read(1'200'000, {piece.data(), 1000}), SourceChanged);
}

TEST_F(PartBodyTest, aPartTooLargeForMemoryIsAClearFailure)
{
    EXPECT_THROW(BulkBuffer{std::numeric_limits<qint64>::max()}, FileError);
}

} // namespace
} // namespace palvera
