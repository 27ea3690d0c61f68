#pragma once

#include "cli/Errand.h"
#include "transfers/Transfers.h"

namespace palvera::cli {

/// One stored file to bring down.
class DownloadErrand final : public Errand {
public:
    /// `key` is what programs tell it by, `record` where it comes from.
    DownloadErrand(QString key, QJsonObject record, Download download);

    QString key() const override { return m_key; }
    QString beginning() const override;
    Task<std::optional<QUuid>> begin(Transfers& transfers) override;
    QString doneText(const Item& item, double seconds) const override;
    QJsonObject doneRecord(const Item& item) const override;
    QString howToGoOn(const Item& item) const override;

private:
    const QString m_key;
    const QJsonObject m_record;
    const Download m_download;
};

} // namespace palvera::cli
