#pragma once

#include <memory>
#include <utility>

namespace palvera {

/// Keeps `made` to the very end of the process, past its static objects. Any thread.
void keepForGood(std::shared_ptr<void> made);

/// Makes a T that is never released: for what must outlive `main`, because operations may still be under way on threads
/// that nobody waits for when the process ends. A program makes each of these once and hands it on.
template <class T, class... Arguments>
T& makeForGood(Arguments&&... arguments)
{
    auto made = std::make_shared<T>(std::forward<Arguments>(arguments)...);
    keepForGood(made);
    return *made;
}

} // namespace palvera
