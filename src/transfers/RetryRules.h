#pragma once

#include <chrono>
#include <exception>

namespace palvera {

/// How often a failed upload is tried again.
inline constexpr int mostRetries = 7;

/// The wait after the failure of `attempt`, from 0 to mostRetries - 1: from ten seconds to a quarter of an hour.
std::chrono::seconds retryDelay(int attempt);

/// Whether an upload that ended with `failure` may end otherwise when it is tried again: not after an answer that
/// refuses it, nor when the file itself or a setting stands in the way. A cancellation is none of the failures to ask
/// about.
bool isRetryable(const std::exception_ptr& failure);

/// Whether the platform asks to have a delivery confirmed.
bool isDeliveryDoubt(const std::exception_ptr& failure);

} // namespace palvera
