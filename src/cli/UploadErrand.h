#pragma once

#include "cli/Errand.h"
#include "transfer/JournalStore.h"

namespace palvera::cli {

/// One file to send.
class UploadErrand final : public Errand {
public:
    /// What to send, and how `transfers` begins it.
    struct Upload {
        QString journalKey;
        QString file; ///< whole path
        TransferTarget target;
        bool wasThere = false; ///< an earlier run has met the file
        std::function<Task<std::optional<QUuid>>(Transfers&)> begin;
    };

    /// `journals` outlives it.
    UploadErrand(Upload upload, const JournalStore& journals);

    QString key() const override { return m_upload.journalKey; }
    QString beginning() const override;
    Task<std::optional<QUuid>> begin(Transfers& transfers) override;
    QString doneText(const Item& item, double seconds) const override;
    QJsonObject doneRecord(const Item& item) const override;
    QString confirmingCommand() const override;
    QString howToGoOn(const Item& item) const override;

private:
    const Upload m_upload;
    const JournalStore& m_journals;
};

} // namespace palvera::cli
