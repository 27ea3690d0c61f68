#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace palvera {

/// Why a transfer that runs does not move.
struct Trouble {
    QString reason;  ///< a sentence, for the user
    int attempt = 0; ///< the one that begins next, from 2, where something failed and is tried again; else 0

    bool operator==(const Trouble&) const = default;
};

/// From its tenth second on, in steps of five.
std::optional<Trouble> troubleOfSilence(std::chrono::nanoseconds silence);

} // namespace palvera
