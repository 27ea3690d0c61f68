#pragma once

#include <QByteArray>
#include <QSettings>
#include <QString>

#include <optional>

namespace palvera {

/// The user's small choices, kept between runs under plain keys such as "pv.site". Each change is on its way to the
/// file when the operation returns; whether it got there, `problem` says. Main thread.
class Preferences {
public:
    /// Opens the preferences in the file at `path`, which need not exist. Its folder is for its owner alone. A file
    /// that holds none is set aside.
    explicit Preferences(const QString& path);

    /// Nothing when the key is absent or holds something else than one text.
    std::optional<QString> string(const QString& key) const;
    void setString(const QString& key, const QString& value);
    /// Nothing when the key is absent or holds something else than bytes.
    std::optional<QByteArray> bytes(const QString& key) const;
    void setBytes(const QString& key, const QByteArray& value);
    void remove(const QString& key);
    /// Takes up what other programs have stored since.
    void reread() { m_settings.sync(); }
    /// Where the file is that held no preferences, for the user; empty when it did, or there was none.
    QString setAside() const { return m_setAside; }
    /// Why the latest change will be gone at the next start, for the user; empty when it will not.
    QString problem() const { return m_problem; }

private:
    void keep();

    const QString m_setAside;
    QSettings m_settings;
    QString m_problem;
};

} // namespace palvera
