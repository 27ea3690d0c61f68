#include "PlatformHarness.h"

#include "support/Files.h"

#include <QTemporaryDir>

namespace palvera::local {
namespace {

TEST(RestartTest, anUploadGoesOnWithThePartsThatHadArrivedWhole)
{
    QTemporaryDir disk;
    const PlatformOptions options{.partSize = 10, .folder = disk.filePath("platform"), .signInNeeded = false};
    std::optional<PlatformHarness> harness{options};
    const auto complete = [&](const QByteArrayList& parts) {
        return harness->ask("POST " + row + "/transfer/complete", completion(1, parts)).status;
    };
    harness->start();
    const auto first = harness->send(1, 1), third = harness->send(1, 3), torn = harness->send(1, 2);
    const RequestHead again{.method = "PUT", .target = harness->partTarget(1, 1)};
    harness->platform.openPart(again, 10, {}).receiver->write(std::span("XXXX", 4)); // and then it breaks off
    QFile log(options.folder + "/parts-1.log");
    ASSERT_TRUE(log.resize(log.size() - 1)) << "as when its last line did not reach the disk whole";
    harness.emplace(options);
    EXPECT_EQ(complete({first, torn, third}), 400);
    EXPECT_EQ(complete({first, harness->send(1, 2), third}), 200);
    harness->ask("POST " + row + "/asset", '{' + upload(1).split(',')[0] + R"(,"filename":"a.mov"})");
    harness.emplace(options);
    EXPECT_TRUE(harness->report()["filed"].toBool());
    const auto stored = harness->report()["path"].toString();
    EXPECT_TRUE(stored.startsWith(options.folder + "/objects/"));
    EXPECT_EQ(readFile(stored), film);
}

} // namespace
} // namespace palvera::local
