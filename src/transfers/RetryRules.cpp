#include "transfers/RetryRules.h"

#include "http/TransportError.h"
#include "service/APIError.h"
#include "transfer/UploadFailures.h"

#include <array>
#include <cassert>

namespace palvera {

std::chrono::seconds retryDelay(int attempt)
{
    static constexpr std::array<int, mostRetries> table{10, 30, 60, 120, 300, 600, 900};
    assert(attempt >= 0 && attempt < mostRetries);
    return std::chrono::seconds(table[std::size_t(attempt)]);
}

bool isRetryable(const std::exception_ptr& failure)
{
    if (failureAs<CannotSend>(failure) || isLasting(failure))
        return false;
    auto error = failureAs<APIError>(failure);
    if (!error)
        return true;
    auto status = error->status();
    return status == 0 || status == 408 || status == 429 || status >= 500;
}

bool isDeliveryDoubt(const std::exception_ptr& failure)
{
    auto error = failureAs<APIError>(failure);
    return error && error->code() == QStringLiteral("delivery_doubt");
}

} // namespace palvera
