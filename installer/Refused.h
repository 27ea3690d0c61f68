#pragma once

#include <QString>

namespace palvera::installer {

/// Why an update is not prepared or not installed.
enum class Refusal {
    notSigned,
    damaged,
    incomplete,
    older,
    notAnnounced,
    otherComputer,
    strangeContent,
    doesNotRun,
    noRoom,
    notStored,
    busy,
    tooSlow,
    notUnpacked,
    notAllowed,
    nobodyToAsk,
    foreignCopy,
    notOurs,
    nothingPrepared,
};

/// Thrown where an update is given up. Nothing of it is left behind then, and the current build is what it was.
struct Refused {
    Refusal why;
    /// What the text names: the root for `noRoom`, the system's reason for `notStored`; else empty.
    QString detail = {};
};

/// What the user reads: in English, and the desktop translates what it knows.
QString textOf(const Refused& refused);

/// Refuses for what the last call to the system said.
[[noreturn]] void throwNotStored();

} // namespace palvera::installer
