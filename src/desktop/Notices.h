#pragma once

#include <QString>

namespace palvera {

/// Tells the user something while they look elsewhere. Main thread.
class Notices {
public:
    virtual ~Notices() = default;

    /// Both are plain text. Returns at once; nobody learns whether it was seen.
    virtual void show(const QString& title, const QString& text) = 0;
};

/// The desktop's own notifications, over the session bus. Where there is no bus or nobody who shows them, nothing is
/// shown.
class DesktopNotices final : public Notices {
public:
    /// `program` is the name of its desktop file; `busAddress` is the session bus unless given.
    explicit DesktopNotices(QString program, QString busAddress = {})
        : m_program(std::move(program)), m_busAddress(std::move(busAddress))
    {}
    ~DesktopNotices() override;

    void show(const QString& title, const QString& text) override;

private:
    const QString m_program;
    const QString m_busAddress;
    QString m_connection; // once there is one
};

} // namespace palvera
