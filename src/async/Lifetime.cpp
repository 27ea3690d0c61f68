#include "async/Lifetime.h"

#include <mutex>
#include <vector>

namespace palvera {

void keepForGood(std::shared_ptr<void> made)
{
    static auto& lock = *new std::mutex;
    static auto& kept = *new std::vector<std::shared_ptr<void>>;
    std::lock_guard guard(lock);
    kept.push_back(std::move(made));
}

} // namespace palvera
