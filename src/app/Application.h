#pragma once

#include "app/EndNotice.h"
#include "app/PanelPlace.h"
#include "app/RootView.h"
#include "app/WindowPlace.h"
#include "async/TaskScope.h"
#include "desktop/Arrival.h"
#include "desktop/DesktopAppearance.h"
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
        Updater::Environment updates;
        Notices& notices;
        TransfersView::Files files;
        QString startRemark = {}; ///< see RootView
    };

    explicit Application(Environment environment);
    /// Ends what is under way first, for which it turns the event loop.
    ~Application();

    /// Loads and shows the main window. False when it could not be loaded, which is a fault of the installation.
    bool show();
    /// Brings the main window to the front and uses what came along, where it is waited for.
    void arrive(const Arrival& arrival);
    void setAppearance(const Appearance& appearance);

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

    const Environment m_environment;
    TaskScope m_limits;
    Session m_session;
    Transfers m_transfers;
    Updater m_updater;
    EndNotice m_endNotice;
    RootView m_root;
    QQmlApplicationEngine m_engine;
    Appearance m_appearance;
    QQuickWindow* m_window = nullptr; // the engine's
    QQuickWindow* m_panel = nullptr;  // the engine's
    std::unique_ptr<WindowPlace> m_place;
    std::unique_ptr<WindowPlace> m_panelSize;
    std::unique_ptr<PanelPlace> m_panelPlace;
};

} // namespace palvera
