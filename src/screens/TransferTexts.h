#pragma once

#include "transfers/Item.h"

#include <optional>

namespace palvera {

struct InterruptedUpload;

// What is said of one transfer.

/// "1.2 MB of 3.4 GB", or that the size is not known yet.
QString amountText(const Item& item);
/// How long the rest takes, in seconds: at the pace, or at the present speed before that is known. Nothing without a
/// speed or a rest.
std::optional<double> secondsLeft(const Item& item);
/// What went wrong, in words for somebody who knows nothing of networks; empty when nothing did.
QString plainReason(const Item::State& state);
/// What the user should know of it: what went wrong, or what its engine remarks while it goes on; empty when nothing.
QString troubleOf(const Item& item);
/// What it does, in a word: "Uploading", "Downloading", "Waiting" or "Paused".
QString headlineOf(const Item& item);
/// As `troubleOf`, and when it is tried again.
QString troubleWithCountdown(const Item& item, Clock::WallTime now);
/// "Waiting", or what for where that is not for other transfers.
QString waitingText(const Item::Waiting& waiting);
/// What went wrong as precisely as it is known.
QString technicalReason(const Item::State& state);
/// What is asked before a transfer in flight is stopped.
QString stopTitle(const Item& item);
QString stopMessage(const Item& item);
/// "12 of 40 parts done", or that it has not begun.
QString partsDoneText(const InterruptedUpload& upload);
/// "42 sec", "3 min, 5 sec": how long until `until`.
QString countdownText(Clock::WallTime until, Clock::WallTime now);

} // namespace palvera
