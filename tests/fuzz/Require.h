#pragma once

#include <cstdio>
#include <cstdlib>

namespace palvera {

/// Ends the program, as a crash does, when a property does not hold. Unlike an assertion it is there in every build.
inline void require(bool holds, const char* property)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", property);
    std::abort();
}

} // namespace palvera
