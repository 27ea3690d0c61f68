#pragma once

#include "desktop/StartRecord.h"

#include <QByteArrayList>

namespace palvera {

/// What the launcher wants the program to know, and what it wants to know of the program: see StartRecord. Main thread.
class LaunchNote {
public:
    /// Takes it out of the environment, so that no child inherits it.
    static LaunchNote take();

    /// What the program is to open.
    const QByteArrayList& addresses() const { return m_addresses; }
    /// The number of the current build, where that did not start and an older one runs in its place; else empty.
    const QByteArray& fellBackFrom() const { return m_fellBackFrom; }
    /// This start only handed something over to another process, and says nothing of the build.
    void forget() const;
    /// The build `build`, which is the one that runs, has come to work. Does nothing where no start was counted: of a
    /// build that is known to work, or runs in the place of one that failed and would then be tried anew.
    void setWorking(long long build) const;

private:
    QByteArrayList m_addresses;
    QByteArray m_fellBackFrom;
    bool m_isCounted = false;
    std::optional<StartRecord> m_before;
};

} // namespace palvera
