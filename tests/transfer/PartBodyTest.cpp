#include "transfer/PartBody.h"

#include "files/BulkBuffer.h"
#include "files/FileError.h"

#include <QTemporaryFile>

#include <gtest/gtest.h>

#include <numeric>

namespace palvera {
namespace {

struct PartBodyTest : testing::Test {
    QByteArray content = QByteArray(3'000'000, '\0');
    QTemporaryFile file;

    void SetUp() override
    {
        std::iota(content.begin(), content.end(), 1); // no two neighbouring bytes alike
        ASSERT_TRUE(file.open());
        rewrite(content);
    }
    void rewrite(const QByteArray& bytes)
    {
        file.seek(0);
        file.write(bytes);
        file.flush();
    }
    static QByteArray drain(PartBody& body, qint64 from, qint64 step)
    {
        QByteArray all;
        QByteArray piece(step, '\0');
        for (qint64 at = from; at < body.size();) {
            auto count = body.read(at, {piece.data(), std::size_t(step)});
            all += piece.left(qsizetype(count));
            at += qint64(count);
        }
        return all;
    }
};

TEST_F(PartBodyTest, givesExactlyThePartsBytesHoweverTheyAreAskedFor)
{
    auto source = SourceFile::open(file.fileName());
    for (qint64 step : {1LL << 16, 700'001LL, 5'000'000LL}) {
        BulkBuffer buffer(1'500'000);
        PartBody body(source, {.offset = 1'000'000, .length = 1'500'000}, buffer.first(1'500'000));
        EXPECT_EQ(drain(body, 0, step), content.mid(1'000'000, 1'500'000)) << step;
    }
}

TEST_F(PartBodyTest, aRetrySendsTheBytesOfTheFirstAttemptWithoutReadingAgain)
{
    auto source = SourceFile::open(file.fileName());
    BulkBuffer buffer(1000);
    PartBody body(source, {.offset = 0, .length = 1000}, buffer.first(1000));
    drain(body, 0, 1000);
    rewrite(QByteArray(3'000'000, 'x'));
    EXPECT_EQ(drain(body, 0, 300), content.left(1000));
}

TEST_F(PartBodyTest, aFileThatShrankIsNotSent)
{
    auto source = SourceFile::open(file.fileName());
    BulkBuffer buffer(2'000'000);
    PartBody body(source, {.offset = 1'000'000, .length = 2'000'000}, buffer.first(2'000'000));
    file.resize(2'500'000);
    QByteArray piece(1 << 20, '\0');
    EXPECT_EQ(body.read(0, {piece.data(), 1000}), 1000u);
    EXPECT_THROW(body.read(1'490'000, {piece.data(), 20'000}), SourceChanged);
}

TEST_F(PartBodyTest, aPartTooLargeForMemoryIsAClearFailure)
{
    EXPECT_THROW(BulkBuffer{std::numeric_limits<qint64>::max()}, FileError);
}

} // namespace
} // namespace palvera
