#include "transfer/UploadClaim.h"

#include "transfer/JournalStore.h"
#include "transfer/UploadFailures.h"
#include "transfer/UploadNote.h"

#include <QFileInfo>
#include <QObject>

namespace palvera {

namespace {

/// Between looks at a lock that another run holds.
constexpr std::chrono::milliseconds lookAgain{500};

} // namespace

UploadClaim::UploadClaim(const JournalStore& journals, Clock& clock, QString key, UploadSubject subject)
    : m_journals(journals),
      m_clock(clock),
      m_key(std::move(key)),
      m_subject(std::move(subject)),
      m_lock(journals.lockOf(m_key))
{}

Task<bool> UploadClaim::take(std::function<void(const QString&)> onRemark)
{
    bool hasWaited = false;
    for (;;) {
        auto outcome = m_lock->tryLock();
        auto other = decodeNote(m_lock->note());
        bool isSame = other && isSameUpload(other->subject, m_subject);
        if (hasWaited && isSame && other->isDone)
            co_return false;
        if (outcome == LockFile::Outcome::taken)
            break;
        if (outcome == LockFile::Outcome::released) {
            m_lock.reset();
            m_lock.emplace(m_journals.lockOf(m_key));
            continue;
        }
        if (other && !isSame)
            throw CannotSend(
                QObject::tr("“%1” is on its way there already.").arg(QFileInfo(other->subject.path).fileName()));
        if (!std::exchange(hasWaited, true))
            onRemark(QObject::tr("This file is being sent already. Waiting for that."));
        co_await m_clock.sleep(lookAgain);
    }
    m_lock->setNote(encodeNote({.subject = m_subject}));
    if (hasWaited)
        onRemark({});
    co_return true;
}

void UploadClaim::noteDone() const
{
    m_lock->setNote(encodeNote({.subject = m_subject, .isDone = true}));
}

} // namespace palvera
