#pragma once

#include "transfer/TransferTarget.h"

#include <ostream>

namespace palvera {

/// GoogleTest would show bytes of memory, and ctest would name cases by them.
inline void PrintTo(const TransferTarget& target, std::ostream* out)
{
    *out << (target.asBin() ? "bin" : "deliverable");
}

} // namespace palvera
