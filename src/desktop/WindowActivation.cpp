#include "desktop/WindowActivation.h"

#include <QGuiApplication>
#include <QWindow>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <optional>

namespace palvera {

namespace {

template <class T>
using Allocated = std::unique_ptr<T, decltype(&std::free)>;

/// When the user did what the token stands for, in the display's own milliseconds: the Startup Notification Protocol
/// puts it at the end of the identifier.
std::optional<quint32> timeIn(const QByteArray& token)
{
    const QByteArrayView mark = "_TIME";
    const auto at = token.lastIndexOf(mark);
    bool isNumber = false;
    const auto time = at < 0 ? 0 : token.mid(at + mark.size()).toUInt(&isNumber);
    return isNumber ? std::optional(time) : std::nullopt;
}

/// Qt asks with the time of the last event that it saw itself, which is older than the click in the browser: a window
/// manager that guards the keyboard would not let the window come. As EWMH 1.5 has it.
void askWindowManager(xcb_connection_t* display, xcb_window_t window, quint32 time)
{
    const QByteArrayView name = "_NET_ACTIVE_WINDOW";
    const auto asked = xcb_intern_atom(display, false, quint16(name.size()), name.data());
    const Allocated<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(display, asked, nullptr), &std::free);
    if (!atom)
        return;
    constexpr quint32 anApplication = 1;
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom->atom;
    event.data.data32[0] = anApplication;
    event.data.data32[1] = time;
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    xcb_send_event(display, false, root, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
    xcb_flush(display);
}

} // namespace

void bringToFront(QWindow& window, const QByteArray& token)
{
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    const auto time = timeIn(token);
    if (auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>(); x11 && time)
        return askWindowManager(x11->connection(), xcb_window_t(window.winId()), *time);
    if (!token.isEmpty() && QGuiApplication::platformName().startsWith(QStringLiteral("wayland")))
        qputenv("XDG_ACTIVATION_TOKEN", token); // Qt takes it from there, and away
    window.requestActivate();
    window.alert(0); // where the desktop lets nobody take the keyboard, until the user comes
}

} // namespace palvera
