#pragma once

#include "app/shell/SettingsView.h"

namespace palvera {

/// What the program offers on every screen: its menu, its settings, the keyboard's shortcuts, its log and help.
///
/// Lives on the main thread.
class Shell : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(ShellModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(palvera::SettingsView* settings READ settings CONSTANT)
    Q_PROPERTY(Sheet sheet READ sheet WRITE setSheet NOTIFY sheetChanged)
    Q_PROPERTY(bool menuOpen MEMBER m_isMenuOpen NOTIFY menuOpenChanged)
    Q_PROPERTY(bool hasTray READ hasTray NOTIFY trayChanged)
    Q_PROPERTY(bool stays READ stays NOTIFY trayChanged)
    Q_PROPERTY(bool hasLog READ hasLog NOTIFY menuWanted)

public:
    /// What lies over the screen.
    enum class Sheet { None, Settings, Shortcuts, Help };
    Q_ENUM(Sheet)

    struct Environment {
        SettingsView::Environment settings;
        QString logFile; ///< of the transfers; need not exist
        std::function<void(const QString& path)> open;
    };

    explicit Shell(Environment environment, QObject* parent = nullptr);

    SettingsView* settings() { return &m_settings; }
    Sheet sheet() const { return m_sheet; }
    void setSheet(Sheet sheet);
    bool hasLog() const;
    /// Whether the desktop's tray shows the program.
    bool hasTray() const { return m_hasTray; }
    void setTray(bool shown);
    /// Whether the program goes on when its window is closed: there is a way back.
    bool stays() const { return m_hasTray && m_settings.isInBackground(); }

    /// Has the menu open.
    Q_INVOKABLE void openMenu();
    /// With whatever the desktop shows texts with.
    Q_INVOKABLE void openLog();
    Task<void> close() { return m_settings.close(); }

Q_SIGNALS:
    void sheetChanged();
    void menuOpenChanged();
    void trayChanged();
    void menuWanted();

private:
    const Environment m_environment;
    SettingsView m_settings;
    Sheet m_sheet = Sheet::None;
    bool m_isMenuOpen = false;
    bool m_hasTray = false;
};

} // namespace palvera
