#include "update/UpdateRules.h"

#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

TEST(UpdateRulesTest, aBuildIsNewerByItsNumberAlone)
{
    const std::tuple<const char*, const char*, bool> rows[]{
        {"58", "57", true},  {"57", "57", false},  {"+58", "57", true}, {"-1", "57", false},
        {"", "57", false},   {"58b", "57", false}, {"058", "57", true}, {"9223372036854775808", "57", false},
        {"100", "99", true}, {"1", "", true},      {"1", "abc", true},  {"0", "", false}};
    for (const auto& [offered, running, newer] : rows)
        EXPECT_EQ(isNewer(offered, running), newer) << offered << " after " << running;
}

TEST(UpdateRulesTest, aFeedsRecordNeedsThreeTextsAndMayHaveNotes)
{
    const Updater::Release plain{.version = "1.5", .build = "58", .url = "https://a/b", .notes = {}};
    auto withNotes = plain;
    withNotes.notes = "New";
    const QByteArray start = R"({"version":"1.5","build":"58","url":"https://a/b")";
    const std::pair<QByteArray, std::optional<Updater::Release>> rows[]{
        {start + "}", plain},
        {start + R"(,"notes":null,"more":[1]})", plain},
        {start + R"(,"notes":"New"})", withNotes},
        {start + R"(,"notes":7})", {}},
        {R"({"version":"1.5","build":58,"url":"https://a/b"})", {}},
        {R"({"version":"1.5","build":"58"})", {}},
        {"[" + start + "}]", {}},
        {"<html>", {}},
        {"", {}}};
    for (const auto& [body, release] : rows)
        EXPECT_EQ(decodeRelease(body), release) << body.toStdString();
}

TEST(UpdateRulesTest, onlyWhatIsEncryptedIsReadOrThisMachineWhereTheFeedIsThere)
{
    const QByteArray far = "https://feed.test/latest.json", here = "http://127.0.0.1:80/latest.json";
    const std::tuple<QByteArray, QByteArray, bool> rows[]{
        {"https://cdn.test/a", far, true},   {"HTTPS://cdn.test/a", here, true},
        {"http://cdn.test/a", far, false},   {"http://cdn.test/a", here, false},
        {"http://127.0.0.1/a", far, false},  {"http://localhost:8/a", here, true},
        {"file:///etc/passwd", here, false}, {"", here, false}};
    for (const auto& [url, feed, allowed] : rows)
        EXPECT_EQ(isAllowedAddress(url, feed), allowed) << url.toStdString() << " from " << feed.toStdString();
}

TEST(UpdateRulesTest, anImageIsNamedByItsVersionWhichIsNoPath)
{
    EXPECT_EQ(imageName("1.5"), "Palvera-1.5.dmg");
    EXPECT_EQ(imageName("../../.bashrc"), "Palvera-.._.._.bashrc.dmg");
    EXPECT_EQ(imageName(QString::fromLatin1("a\0\n/", 4)), "Palvera-a _.dmg");
    EXPECT_LE(imageName(QString(4'000, QChar(0x20AC))).toUtf8().size(), 255);
}

TEST(UpdateRulesTest, thePillSaysWhereTheUpdateStandsAndWhatATapDoes)
{
    const Updater::Release release{.version = "1.5", .build = "58", .url = "u", .notes = "Faster.\nNicer."};
    const QString offer = "Palvera 1.5, build 58, is available.\n\nFaster.\nNicer.";
    const std::pair<Updater::Phase, PillLook> rows[]{
        {Updater::Available{}, {.symbol = "arrow.down.circle", .text = "Install", .tooltip = offer}},
        {Updater::Downloading{0.009}, {.text = "0%", .percent = 0, .tooltip = offer}},
        {Updater::Preparing{}, {.text = "Checking", .tooltip = offer, .isBusy = true}},
        {Updater::Restarting{}, {.text = "Restarting", .tooltip = offer, .isBusy = true}},
        {Updater::Ready{},
         {.symbol = "arrow.clockwise",
          .text = "Restart",
          .tooltip = "Palvera 1.5 is ready. Restart to use it; you stay signed in."}},
        {Updater::Failed{"The update is damaged."},
         {.symbol = "exclamationmark.triangle.fill", .text = "Retry update", .tooltip = "The update is damaged."}}};
    for (const auto& [phase, look] : rows)
        EXPECT_EQ(pillFor(release, phase), look) << phase.index();
    const Updater::Release hostile{.version = "1.5\u202E\n<b>", .build = "58", .url = "u", .notes = {}};
    EXPECT_EQ(pillFor(hostile, Updater::Idle{}).tooltip, "Palvera 1.5 <b>, build 58, is available.");
}

} // namespace
} // namespace palvera
