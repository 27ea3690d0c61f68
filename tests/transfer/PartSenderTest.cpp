#include "UploadHarness.h"

#include "support/FakeHttpClient.h"
#include "support/Json.h"
#include "support/ScopedVariable.h"
#include "transfer/PartBody.h"
#include "transfer/URLPool.h"
#include "transfer/UploadFailures.h"

namespace palvera {
namespace {

TEST(PartSenderTest, triesAPartEightTimesEachAtAFreshAddressAndTheOthersAreStillSent)
{
    Delivery delivery(12 * partSize);
    delivery.fail(Operation::put, status(503), 8, 0, 3);
    {
        Life life(delivery);
        EXPECT_EQ(life.send(), "Storage answered 503 on a part.");
        EXPECT_EQ(delivery.journal().done.size(), 11u);
        EXPECT_EQ(life.count(Operation::complete), 0u);
        auto tries = life.network.seen(Operation::put);
        std::erase_if(tries, [](const auto& put) { return put.part != 3; });
        std::vector<double> waits; // and the signing before each try, which takes hundredths
        for (std::size_t i = 1; i < tries.size(); ++i)
            waits.push_back(std::round(10 * secondsBetween(tries[i - 1].ended, tries[i].at)) / 10);
        EXPECT_THAT(waits, ElementsAre(1, 2, 4, 8, 16, 30, 30));
        EXPECT_EQ(std::ranges::count_if(life.network.seen(Operation::parts),
                                        [](const auto& signing) { return signing.body.contains("\"from\":3,"); }),
                  8);
    }
    Life again(delivery);
    again.deliver();
    EXPECT_EQ(again.progress.front().sent, 11 * partSize);
    EXPECT_THAT(again.partsSent(), ElementsAre(3));
}

TEST(PartSenderTest, anAnswerThatIsNoSuccessSettlesNoPartThoughItHasATag)
{
    Delivery delivery(1);
    Life life(delivery);
    life.network.conditions.atStorage = [](HttpResponse& answer) { answer.status = 302; };
    EXPECT_EQ(life.send(), "Storage answered 302 on a part.");
    EXPECT_THAT(delivery.journal().done, IsEmpty());
}

TEST(PartSenderTest, whatOnlyTheUserCanMendEndsTheUploadAtOnceAndItIsGoneOnWith)
{
    const char *const plain = "http://platform.test/api", *const encrypted = "https://platform.test/api";
    const auto distrust = [](HttpResponse&) { throw TransportError(TransportError::Kind::untrusted, "Expired."); };
    const std::tuple<const char*, local::Fault, void (*)(HttpResponse&), std::string, std::size_t> cases[] = {
        {plain, status(401), nullptr, "The platform is having trouble.", 0},
        {encrypted, {}, nullptr, "The platform's address for storage is not encrypted, so it was not used.", 0},
        {plain, {}, distrust, "Expired.", 1},
    };
    for (const auto& [service, signing, atStorage, message, puts] : cases) {
        Delivery delivery(1);
        delivery.fail(Operation::parts, signing);
        Life life(delivery);
        life.network.conditions.atStorage = atStorage;
        const ScopedVariable named("PV_API", service);
        EXPECT_EQ(life.send(), message);
        EXPECT_EQ(life.count(Operation::parts), 1u);
        EXPECT_EQ(life.count(Operation::put), puts);
        EXPECT_LT(life.world.clock.elapsed(), 1s);
        EXPECT_EQ(delivery.journal().key, pictureMaster.deliverableId);
    }
}

TEST(PartBodyTest, givesNoByteBeyondThePartAndNoneOfAFileThatEndsBefore)
{
    const Delivery delivery(30);
    const auto source = SourceFile::open(delivery.path());
    PartBody body(source, {.offset = 10, .length = 15});
    QByteArray piece(20, '\0');
    EXPECT_EQ(body.read(8, {piece.data(), 20}), 7u);
    EXPECT_EQ(piece.first(7), delivery.content().mid(18, 7));
    QFile::resize(delivery.path(), 24);
    EXPECT_THROW(body.read(8, {piece.data(), 20}), SourceChanged);
}

const local::Fault stall{.kind = Kind::stallMidBody, .bytes = 50'000};
const local::Fault noAddress =
    answering({{"urls", QJsonArray{QJsonObject{{"partNumber", 1}, {"url", "not an address"}}}}});

/// What it is, and the message in which an upload ends that meets it again and again.
const std::tuple<const char*, Operation, local::Fault, const char*> troubles[] = {
    {"reset at once", Operation::put, {.kind = Kind::resetBeforeReading}, "The connection was cut."},
    {"reset in the body", Operation::put, {.kind = Kind::resetMidBody, .bytes = 33'333}, "The connection was cut."},
    {"stalled in the body", Operation::put, stall, "The connection stopped moving for 20 seconds."},
    {"stalled before the answer", Operation::put, {.kind = Kind::stallAfterBody}, "The request timed out."},
    {"its answer lost", Operation::put, {.kind = Kind::loseAnswer}, "The connection was cut."},
    {"expired", Operation::put, {.kind = Kind::expired}, "Storage answered 403 on a part."},
    {"no tag", Operation::put, {.kind = Kind::noTag}, "The storage service returned no ETag."},
    {"lower case tag", Operation::put, {.kind = Kind::lowerCaseTag}, ""},
    {"bare tag", Operation::put, {.kind = Kind::bareTag}, ""},
    {"slow answer", Operation::put, {.latency = 40s}, ""},
    {"unsigned", Operation::parts, {.kind = Kind::unsignedPart, .part = 2}, "The platform did not sign part 2."},
    {"no signing", Operation::parts, status(500), "The platform is having trouble."},
    {"a page for a signing",
     Operation::parts,
     {.kind = Kind::html},
     "That was not an answer of the platform. A proxy or a sign-in page of the network may stand in between."},
    {"the signing lost", Operation::parts, {.kind = Kind::loseAnswer}, "The connection was cut."},
    {"no address", Operation::parts, noAddress, "The upload failed."},
    {"no start", Operation::start, status(500), "The platform is having trouble."},
    {"not covered", Operation::start, answering({{"partCount", 4}}),
     "The platform cut the file into parts that do not add up to it."},
    {"no completion", Operation::complete, status(503), "The platform is having trouble."},
    {"completion refused", Operation::complete, status(409), "The platform is having trouble."},
    {"not filed", Operation::asset, status(400), "The platform is having trouble."},
};

TEST(UploadTroubleTest, thatPassesEndsInAFiledFileAndThatLastsInItsOwnMessageAndAJournalToGoOnFrom)
{
    for (const auto& [about, operation, fault, message] : troubles) {
        SCOPED_TRACE(about);
        Delivery passing;
        passing.fail(operation, fault, 3, 1);
        Life(passing).deliver();
        Delivery lasting;
        lasting.fail(operation, fault, 0);
        {
            Life life(lasting);
            EXPECT_EQ(life.send(), message);
            EXPECT_EQ(lasting.journal().key.isEmpty(), *message == '\0' || operation == Operation::start);
            EXPECT_FALSE(life.isAnythingInFlight());
        }
        lasting.platform.faults().clear();
        Life(lasting).deliver();
    }
}

TEST(UploadTroubleTest, aStallIsNoticedBetweenTwentyAndTwentyTwoSecondsAfterTheLastMove)
{
    Simulation world;
    auto watcher = std::make_shared<SendWatcher>(world.clock);
    world.start([](SendWatcher& moving, Clock& clock) -> Task<void> {
        for (int i = 0; i < 4;
             ++i) { // until 60 s; a count that stays while the connection drains, or a limit holds it, is none
            co_await clock.sleep(15s);
            i == 3 ? moving.held() : moving.progressed(50, 0);
        }
    }(*watcher, world.clock));
    EXPECT_THROW(world.run(watchStall(watcher, 100, world.clock)), Stalled);
    EXPECT_EQ(world.clock.elapsed(), 82s);
}

TEST(UploadTroubleTest, aPartThatCrawlsIsSentAnewByALaneThatHasNothingToDo)
{
    Delivery delivery(64 * partSize);
    delivery.fail(Operation::put, {.bytesPerSecond = 500}, 1, 0, 5);
    Life life(delivery);
    life.network.conditions.bytesPerSecond = 5e4; // two seconds a part
    life.deliver();
    EXPECT_EQ(delivery.timesStored(5), 1);
    EXPECT_LT(secondsBetween({}, Clock::Moment(life.world.clock.elapsed())), 16 * 1.35);
}

TEST(UploadTroubleTest, onALineThatKeepsBreakingOnePartAtATimeIsTried)
{
    Delivery delivery(8 * partSize);
    delivery.fail(Operation::put, {.kind = Kind::resetMidBody, .bytes = 50'000}, 24);
    Life life(delivery);
    life.network.conditions.bytesPerSecond = 1e5;
    life.deliver();
    const auto puts = life.network.seen(Operation::put);
    for (std::size_t i = 18; i < 24; ++i) // once all have broken twice, and two a third time
        EXPECT_GE(puts[i].at, puts[i - 1].ended) << i;
}

TEST(URLPoolTest, signsSixteenFromTheMissingOrForgottenPartOnAndTrustsAnAddressForEightMinutesAndNoLonger)
{
    Simulation world;
    FakeHttpClient client{world.clock};
    API api{{.client = client, .executor = world.executor()}};
    URLPool pool{world.executor(), world.clock, api, {.target = TransferTarget::Bin{}, .sessionId = "s"}, 100};
    std::optional<int> unsignedPart;
    std::vector<std::pair<int, int>> signings;
    client.handler = [&](const HttpRequest& request) {
        const auto body = jsonObject(request.body);
        auto [from, to] = signings.emplace_back(body["from"].toInt(), body["to"].toInt());
        QJsonArray urls;
        for (int part = from; part <= to; ++part)
            if (part != unsignedPart)
                urls.append(QJsonObject{{"partNumber", part},
                                        {"url", QString("https://s/%1?try=%2").arg(part).arg(signings.size())}});
        return HttpResponse{.status = 200, .body = QJsonDocument(QJsonObject{{"urls", urls}}).toJson()};
    };
    const auto urlFor = [&](int part) { return world.run(pool.urlFor(part)); };
    EXPECT_EQ(urlFor(20), "https://s/20?try=1");
    EXPECT_EQ(urlFor(35), "https://s/35?try=1");
    EXPECT_EQ(urlFor(36), "https://s/36?try=2");
    EXPECT_EQ(urlFor(95), "https://s/95?try=3");
    world.run(pool.forget(22));
    EXPECT_EQ(urlFor(22), "https://s/22?try=4");
    EXPECT_EQ(urlFor(21), "https://s/21?try=1") << "which nobody forgot";
    EXPECT_THAT(signings, ElementsAre(std::pair(20, 35), std::pair(36, 51), std::pair(95, 100), std::pair(22, 37)));
    world.clock.advance(480s - 1ns);
    EXPECT_EQ(urlFor(21), "https://s/21?try=1");
    world.clock.advance(1ns);
    unsignedPart = 21;
    EXPECT_EQ(inWords(world.run(outcomeOf(pool.urlFor(21))).failure), "The platform did not sign part 21.");
    EXPECT_EQ(urlFor(22), "https://s/22?try=5") << "though it is signed by the way";
}

} // namespace
} // namespace palvera
