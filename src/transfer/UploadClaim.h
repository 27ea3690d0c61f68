#pragma once

#include "async/Clock.h"
#include "files/LockFile.h"
#include "transfer/ResumeRules.h"

#include <functional>

namespace palvera {

class JournalStore;

/// One run's hold on its upload, against every other run in this process or another. Gone with this object.
class UploadClaim {
public:
    /// Of the upload whose journal has the key `key`. Throws FileError where no lock can be made. `journals` and
    /// `clock` outlive it.
    UploadClaim(const JournalStore& journals, Clock& clock, QString key, UploadSubject subject);

    /// Waits as long as another run sends the same file to the same place, which `onRemark` is told. False when that
    /// run has delivered it; then nothing is held. Throws CannotSend while one sends another file, and FileError where
    /// the file system knows no locks.
    Task<bool> take(std::function<void(const QString&)> onRemark);
    /// Tells whoever waits that the file is delivered. Before the journal goes.
    void noteDone() const;

private:
    const JournalStore& m_journals;
    Clock& m_clock;
    const QString m_key;
    const UploadSubject m_subject;
    std::optional<LockFile> m_lock;
};

} // namespace palvera
