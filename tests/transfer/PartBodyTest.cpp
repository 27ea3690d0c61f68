#include "transfer/PartBody.h"
#include "transfer/UploadFailures.h"

#include "support/Files.h"

#include <QTemporaryFile>

#include <gtest/gtest.h>

namespace palvera {
namespace {

TEST(PartBodyTest, givesThePartsBytesHoweverTheyAreAskedForAndAgainToARetryUntilTheFileEndsBefore)
{
    const QByteArray content = patterned(3'000'000);
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    writeFile(file.fileName(), content);
    auto source = SourceFile::open(file.fileName());
    PartBody body(source, {.offset = 1'000'000, .length = 1'500'000});
    for (qint64 step : {1LL << 16, 700'001LL, 5'000'000LL}) {
        QByteArray all;
        QByteArray piece(step, '\0');
        while (all.size() < body.size())
            all += piece.left(qsizetype(body.read(all.size(), {piece.data(), std::size_t(step)})));
        EXPECT_EQ(all, content.mid(1'000'000, 1'500'000)) << step;
    }
    file.resize(2'499'999);
    QByteArray piece(1000, '\0');
    EXPECT_EQ(body.read(0, {piece.data(), 1000}), 1000u);
    EXPECT_THROW(body.read(1'499'900, {piece.data(), 1000}), SourceChanged);
}

} // namespace
} // namespace palvera
