#include "transfers/RetryRules.h"

#include "files/FileError.h"
#include "http/TransportError.h"
#include "service/APIError.h"

#include <gtest/gtest.h>

namespace palvera {
namespace {

TEST(RetryRulesTest, onlyAnAnswerThatRefusesIsFinal)
{
    const std::pair<qint64, bool> table[] = {{0, true},    {400, false}, {401, false}, {403, false}, {408, true},
                                             {409, false}, {429, true},  {499, false}, {500, true},  {599, true}};
    for (auto [status, retryable] : table)
        EXPECT_EQ(isRetryable(std::make_exception_ptr(APIError(status, "no"))), retryable) << status;
    using Kind = TransportError::Kind;
    for (auto kind : {Kind::noNetwork, Kind::connect, Kind::proxy, Kind::tls, Kind::untrusted, Kind::idle})
        EXPECT_EQ(isRetryable(std::make_exception_ptr(TransportError(kind, "no"))),
                  kind != Kind::proxy && kind != Kind::untrusted);
    EXPECT_TRUE(isRetryable(std::make_exception_ptr(FileError("no"))));
    EXPECT_TRUE(isRetryable(std::make_exception_ptr(std::runtime_error("no"))));
}

TEST(RetryRulesTest, onlyItsExactCodeMakesADoubt)
{
    const std::pair<std::optional<QString>, bool> table[] = {
        {"delivery_doubt", true}, {"delivery_doubts", false}, {"Delivery_Doubt", false}, {{}, false}};
    for (const auto& [code, doubts] : table)
        EXPECT_EQ(isDeliveryDoubt(std::make_exception_ptr(APIError(409, "no", code))), doubts)
            << code.value_or("none").toStdString();
    EXPECT_FALSE(isDeliveryDoubt(std::make_exception_ptr(FileError("delivery_doubt"))));
}

} // namespace
} // namespace palvera
