#pragma once

#include "files/FileDescriptor.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace palvera::installer {

/// What lies under the root of a copy that the installer looks after:
///
///     builds/57/…           whole builds, never changed once they are there
///     current -> builds/57  what is started; changes by one rename
///     .work/lock            held by whoever works here
///     .work/…               what is half done
///
/// The build that waits to be installed has no record of its own: it is the newest, and newer than the current one.
/// Holds the lock as long as it lives; one thread. Every operation throws Refused.
class BuildsFolder {
public:
    /// Takes the lock and removes what an interrupted job has left. Refuses a root, or a folder in it, that somebody
    /// else may write to: whatever is proven about a build holds only while nobody else can change it.
    explicit BuildsFolder(const QString& root);
    /// Removes what is half done, as far as that can be done.
    ~BuildsFolder();
    BuildsFolder(const BuildsFolder&) = delete;
    BuildsFolder& operator=(const BuildsFolder&) = delete;

    /// 0 when there is none yet. Refuses a `current` that is not ours.
    qint64 current() const;
    /// The highest number among the builds; 0 when there is none.
    qint64 newest() const;
    /// The text of the manifest of `build`; empty when there is none.
    QByteArray manifestOf(qint64 build) const;
    void requireRoom(qint64 bytes) const;

    /// An empty file without a name.
    FileDescriptor makeFile() const;
    /// An empty folder, for the build that `adopt` then puts in its place.
    FileDescriptor makeBuild() const;
    /// Puts the build that was made among the others, in the place of one of that number that waits to be installed.
    void adopt(qint64 build);

    /// Makes `build`, which is there, the current one: the one before or this one, whatever happens.
    void switchTo(qint64 build);
    /// Removes the builds that are older than the current one, save the one that was current before it, to which one
    /// can go back, and those that are running. What cannot be removed stays for the next time.
    void sweep();

private:
    QList<qint64> builds() const;
    bool empty() const;
    /// Takes a build out of the others' sight before it is removed, so that none is ever half there.
    bool setAside(qint64 build) const;
    bool isRunning(qint64 build) const;

    QString m_path;
    FileDescriptor m_root;
    FileDescriptor m_work;
    FileDescriptor m_builds;
    FileDescriptor m_lock;
    qint64 m_predecessor = 0;
};

} // namespace palvera::installer
