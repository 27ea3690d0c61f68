#pragma once

#include "files/FileDescriptor.h"

#include <QString>

namespace palvera {

/// The copy of the program that runs, where it is one that an installer looks after:
///
///     ROOT/builds/57/{bin,lib,...}   each build whole, never changed
///     ROOT/current -> builds/57      what an update switches
///     ROOT/bin/palvera               the launcher
class ProgramCopy {
public:
    /// By the folder of the running program, links resolved. Any other copy, such as one in /usr or in a build folder,
    /// has no root.
    explicit ProgramCopy(const QString& programFolder);

    /// Empty for a copy that nobody looks after.
    const QString& root() const { return m_root; }
    /// The number of the build that runs; 0 without a root.
    long long build() const { return m_build; }
    /// The version of the build of that number, or the number itself where nobody knows.
    QString versionOf(const QString& build) const;
    /// What to start for the build that is current by then: the program's own path would lead to this build for ever.
    /// Without a root, nothing.
    QString launcher() const;
    /// Whether the copy belongs to the system rather than to this user.
    bool isOfSystem() const;
    /// Keeps the installer from removing this build, as long as this lives.
    void hold();

private:
    QString m_folder; // of the build
    QString m_root;
    long long m_build = 0;
    FileDescriptor m_held;
};

} // namespace palvera
