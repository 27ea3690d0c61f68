#pragma once

#include "app/EndNotice.h"
#include "app/PanelPlace.h"
#include "app/RootView.h"
#include "app/WindowPlace.h"
#include "async/TaskScope.h"
#include "desktop/Arrival.h"
#include "desktop/TrayItem.h"
#include "session/Session.h"
#include "transfers/LineLimits.h"
#include "transfers/Transfers.h"
#include "update/Updater.h"

#include <QQmlApplicationEngine>

#include <memory>

namespace palvera {

class Notices;
class Preferences;

/// The desktop application: the long-lived objects and the main window. Main thread, within a QGuiApplication.
class Application {
public:
    /// What it works with. Everything referred to outlives it.
    struct Environment {
        API& api;
        Preferences& preferences;
        Clock& clock;
        Executor main;
        std::function<bool()> isDoorAsked;
        std::function<bool()> isWatched; ///< whether a window of the program is active
        BrowserSignIn& web;
        PasskeySignIn& passkey;
        Transfers::Environment transfers;
        LineShares shares;
        std::function<void(bool starts)> setAutostart = {}; ///< with the desktop's session
        std::function<std::unique_ptr<TrayItem>(TrayItem::Actions)> makeTray = {};
        Updater::Environment updates;
        Notices& notices;
        TransfersView::Files files;
        QString logFile = {};     ///< of the transfers
        QString startRemark = {}; ///< see RootView
    };

    explicit Application(Environment environment);
    /// Ends what is under way first, for which it turns the event loop.
    ~Application();

    /// Loads the main window and shows it, unless the program was started for the background and the desktop has a way
    /// back to it. False when it could not be loaded, which is a fault of the installation.
    bool show(bool inBackground = false);
    /// Brings the main window to the front and uses what came along, where it is waited for.
    void arrive(const Arrival& arrival);
    /// Shows everything dark, or light.
    void setDark(bool dark);

    Session& session() { return m_session; }
    Transfers& transfers() { return m_transfers; }
    Updater& updater() { return m_updater; }
    RootView& root() { return m_root; }
    QQuickWindow* window() const { return m_window; }
    /// That of the transfers, shown or not.
    QQuickWindow* panel() const { return m_panel; }

private:
    Transfers::Environment transfersWithSignIns();
    Task<void> finish();
    void placePanel();
    void followTray();

    const Environment m_environment;
    TaskScope m_limits;
    Session m_session;
    Transfers m_transfers;
    Updater m_updater;
    EndNotice m_endNotice;
    RootView m_root;
    QQmlApplicationEngine m_engine;
    bool m_dark = false;
    QQuickWindow* m_window = nullptr; // the engine's
    QQuickWindow* m_panel = nullptr;  // the engine's
    std::unique_ptr<WindowPlace> m_place;
    std::unique_ptr<WindowPlace> m_panelSize;
    std::unique_ptr<PanelPlace> m_panelPlace;
    std::unique_ptr<TrayItem> m_tray; // while the user wants one
};

} // namespace palvera
