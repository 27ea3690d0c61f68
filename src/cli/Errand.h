#pragma once

#include "cli/ExitCode.h"
#include "transfers/Item.h"

#include <QJsonObject>

namespace palvera {

class Transfers;

namespace cli {

/// One transfer that a command was asked for, and how to speak of it. Main thread.
class Errand {
public:
    virtual ~Errand() = default;

    /// How programs tell it from the command's others.
    virtual QString key() const = 0;
    /// What people read when it has begun.
    virtual QString beginning() const = 0;
    /// Has `transfers` begin it and gives its item's id; nothing when the same is under way already. Throws FileError
    /// when there is nothing to begin with.
    virtual Task<std::optional<QUuid>> begin(Transfers& transfers) = 0;
    /// What people and programs read when it is done, `seconds` after it began.
    virtual QString doneText(const Item& item, double seconds) const = 0;
    virtual QJsonObject doneRecord(const Item& item) const = 0;
    /// The command that answers the platform's question about it; empty when there is none.
    virtual QString confirmingCommand() const { return {}; }
    /// How to go on with what is kept of it, now that it has failed or was interrupted; empty when nothing is kept.
    virtual QString howToGoOn(const Item& item) const = 0;
};

} // namespace cli

} // namespace palvera
