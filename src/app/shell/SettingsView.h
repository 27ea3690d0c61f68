#pragma once

#include "async/TaskScope.h"
#include "transfers/LineLimits.h"
#include "transfers/Transfers.h"

#include <QObject>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace palvera {

class Session;

/// What the user has chosen for the program. Each choice holds at once and is kept.
///
/// Lives on the main thread.
class SettingsView : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(SettingsModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(QString downloadsFolder READ downloadsFolder NOTIFY folderChanged)
    Q_PROPERTY(QUrl proposedFolder READ proposedFolder NOTIFY folderChanged)
    Q_PROPERTY(int uploadsAtOnce READ uploadsAtOnce WRITE setUploadsAtOnce NOTIFY changed)
    Q_PROPERTY(int downloadsAtOnce READ downloadsAtOnce WRITE setDownloadsAtOnce NOTIFY changed)
    Q_PROPERTY(QString uploadLimit READ uploadLimit NOTIFY changed)
    Q_PROPERTY(QString downloadLimit READ downloadLimit NOTIFY changed)
    Q_PROPERTY(bool limitedByHours READ isLimitedByHours WRITE setLimitedByHours NOTIFY changed)
    Q_PROPERTY(QString limitFrom READ limitFrom NOTIFY changed)
    Q_PROPERTY(QString limitTo READ limitTo NOTIFY changed)
    Q_PROPERTY(bool notifies READ notifies WRITE setNotifies NOTIFY changed)
    Q_PROPERTY(bool keepsAwake READ keepsAwake WRITE setKeepsAwake NOTIFY changed)
    Q_PROPERTY(bool background READ isInBackground WRITE setInBackground NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY changed)

public:
    static constexpr int mostAtOnce = 16;

    /// What it works with. Everything referred to outlives it.
    struct Environment {
        Executor main;
        Clock& clock;
        Preferences& preferences;
        Session& session;
        Transfers& transfers;
        LineShares shares;
        std::function<void(bool starts)> setAutostart = {}; ///< with the desktop's session
    };

    explicit SettingsView(Environment environment, QObject* parent = nullptr);

    /// What a model of transfers begins with.
    static Transfers::Settings transfersIn(const Preferences& preferences);

    /// Looks again at what may have changed elsewhere.
    void refresh();

    /// Empty while none is chosen, or it is gone.
    QString downloadsFolder() const { return m_folder; }
    /// Where a choice of another one begins.
    QUrl proposedFolder() const;
    Q_INVOKABLE void chooseDownloadsFolder(const QUrl& folder);

    int uploadsAtOnce() const { return m_atOnce.uploads; }
    void setUploadsAtOnce(int count);
    int downloadsAtOnce() const { return m_atOnce.downloads; }
    void setDownloadsAtOnce(int count);

    /// In MB/s, as the user writes numbers; empty for no limit.
    QString uploadLimit() const;
    QString downloadLimit() const;
    /// False, and nothing changes, where that is no rate of at least 0.1.
    Q_INVOKABLE bool limitUploads(const QString& rate);
    Q_INVOKABLE bool limitDownloads(const QString& rate);
    bool isLimitedByHours() const { return m_limits.hours.has_value(); }
    void setLimitedByHours(bool limited);
    /// "08:00"
    QString limitFrom() const { return timeText(hours().from); }
    QString limitTo() const { return timeText(hours().to); }
    /// False, and nothing changes, where these are no times of the day, or the same.
    Q_INVOKABLE bool limitHours(const QString& from, const QString& to);

    bool notifies() const { return m_notifies; }
    void setNotifies(bool notifies);
    bool keepsAwake() const { return m_atOnce.keepsAwake; }
    void setKeepsAwake(bool keeps);

    /// Whether the program stays when its window is closed, and starts with the session.
    bool isInBackground() const { return m_isInBackground; }
    void setInBackground(bool stays);

    /// Why the latest choice will be gone at the next start; empty when it will not.
    QString problem() const;
    /// Cuts off what is under way; see TaskScope.
    Task<void> close() { return m_tasks.close(); }

Q_SIGNALS:
    void changed();
    void folderChanged();

private:
    static QString timeText(QTime time);
    LineLimits::Hours hours() const;
    bool limit(qint64& rate, const QString& text);
    void keepLimits();
    void keep(const QString& key, bool value);
    Task<void> findFolder();
    Task<void> keepFolder(QString path);

    const Environment m_environment;
    TaskScope m_tasks;
    QString m_folder;
    Transfers::Settings m_atOnce;
    LineLimits m_limits;
    std::optional<LineLimits::Hours> m_lastHours; // chosen, while they do not count
    bool m_notifies = true;
    bool m_isInBackground = false;
};

} // namespace palvera
