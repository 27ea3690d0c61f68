#pragma once

#include <QHash>

#include <optional>

namespace palvera {

/// Hashes an absent value unlike any that is there.
template <class T>
std::size_t hashOf(const std::optional<T>& value) noexcept
{
    return value ? qHashMulti(1, *value) : 0;
}

} // namespace palvera
