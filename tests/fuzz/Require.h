#pragma once

#include "service/JsonReader.h"

namespace palvera {

/// Ends the program, as a crash does, when a property does not hold. Unlike an assertion it is there in every build.
inline void require(bool holds, const char* property)
{
    if (!holds)
        qFatal("does not hold: %s", property);
}

/// What a program is about; defined by each. `input` is never empty.
void check(const QByteArray& input);

} // namespace palvera

// An input may be refused with a DecodingError; whatever else is thrown ends the program.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    try {
        if (size > 0)
            palvera::check({reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)});
    } catch (const palvera::DecodingError&) { // NOLINT(bugprone-empty-catch)
    }
    return 0;
}
