#include "UploadHarness.h"

namespace palvera {
namespace {

TEST(CompletionTest, orFilingWhoseAnswerWasLostIsRecognised)
{
    const local::Fault fault{.kind = Kind::loseAnswer};
    const std::pair<Operation, TransferTarget> cases[] = {
        {Operation::complete, pictureMaster}, {Operation::complete, binFolder}, {Operation::asset, pictureMaster}};
    for (const auto& [operation, target] : cases) {
        Delivery once;
        once.fail(operation, fault);
        Life(once).deliver(target);
        Delivery delivery;
        for (auto each : {operation, Operation::asset, Operation::bin})
            delivery.fail(each, fault, 0);
        {
            Life life(delivery);
            EXPECT_EQ(life.send(target), "The connection was cut.");
            EXPECT_LT(life.world.clock.elapsed(), 10s);
        }
        delivery.platform.faults().clear();
        Life again(delivery);
        again.deliver(target);
        EXPECT_THAT(again.partsSent(), IsEmpty());
    }
}

TEST(CompletionTest, ofAnUploadThatThePlatformForgotIsSentAfreshAndNotCalledDone)
{
    const local::Fault forgotten{.kind = Kind::status, .status = 404, .message = "No such upload."};
    for (const auto& target : bothTargets) {
        Delivery delivery;
        cutOff(delivery, target);
        delivery.fail(Operation::complete, forgotten);
        delivery.fail(Operation::asset, forgotten);
        const auto object = delivery.upload()["object"].toString();
        QJsonArray others{QJsonObject{{"key", object}, {"size", delivery.content().size() - 1}},
                          QJsonObject{{"key", "2. " + object}, {"size", delivery.content().size()}}};
        delivery.fail(Operation::bin, answering({{"objects", others}}));
        Life again(delivery);
        again.deliver(target);
        EXPECT_THAT(again.remarks, ElementsAre("The platform does not know this upload any more: "
                                               "it is sent from its start."));
        EXPECT_EQ(again.count(Operation::put), 5u);
    }
    Delivery delivery;
    cutOff(delivery);
    auto halfWay = delivery.journal();
    halfWay.done.erase(3);
    delivery.journals.saveJournal(halfWay);
    delivery.fail(Operation::parts, forgotten, 3);
    Life(delivery).deliver();
}

TEST(CompletionTest, thatThePlatformIsStillAtIsWaitedFor)
{
    const std::tuple<Operation, local::Fault, TransferTarget> cases[] = {
        {Operation::complete, status(409), pictureMaster},
        {Operation::complete, {.kind = Kind::stallAfterBody}, pictureMaster},
        {Operation::complete, answering({{"object", "another"}}), binFolder}};
    for (const auto& [operation, fault, target] : cases) {
        Delivery delivery;
        delivery.fail(operation, fault, 3);
        delivery.fail(Operation::asset, status(409), 3);
        delivery.fail(Operation::bin, answering({{"objects", QJsonArray()}}), 3);
        Life life(delivery);
        life.deliver(target);
        EXPECT_TRUE(std::ranges::any_of(life.progress, [](const UploadProgress& now) {
            return now.trouble && now.trouble->reason == "Finishing on the platform.";
        }));
    }
}

} // namespace
} // namespace palvera
