// SPDX-License-Identifier: GPL-3.0-or-later
#include "X11Windows.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <QtCore/QList>
#include <vector>

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <class T>
using Reply = std::unique_ptr<T, Free>;

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

// Longer than any title that is looked for, in units of four bytes.
constexpr std::uint32_t MostUnits = 256;
// Window managers put a frame or two around a window.
constexpr int Depth = 3;

class Screen {
  public:
    Screen() : m_connection(xcb_connect(nullptr, nullptr)) {
        if (xcb_connection_has_error(m_connection.get())) return;
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data->root;
    }

    xcb_window_t Root() const { return m_root; }

    std::vector<xcb_window_t> Children(xcb_window_t window) const {
        const Reply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(m_connection.get(), xcb_query_tree(m_connection.get(), window), nullptr));
        if (!tree) return {};
        const xcb_window_t* first = xcb_query_tree_children(tree.get());
        return {first, first + xcb_query_tree_children_length(tree.get())};
    }

    QByteArray Property(xcb_window_t window, xcb_atom_t name) const {
        const Reply<xcb_get_property_reply_t> property(xcb_get_property_reply(
            m_connection.get(),
            xcb_get_property(m_connection.get(), 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, MostUnits), nullptr));
        if (!property) return {};
        return {static_cast<const char*>(xcb_get_property_value(property.get())),
                xcb_get_property_value_length(property.get())};
    }

    xcb_atom_t Atom(const QByteArray& name) const {
        const Reply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
            m_connection.get(),
            xcb_intern_atom(m_connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.constData()),
            nullptr));
        return atom ? atom->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    bool IsMapped(xcb_window_t window) const {
        const Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            m_connection.get(), xcb_get_window_attributes(m_connection.get(), window), nullptr));
        return attributes && attributes->map_state != XCB_MAP_STATE_UNMAPPED;
    }

    // Restores, by mapping, raises, and asks the window manager for the rest.
    void BringUp(xcb_window_t window) const {
        const std::uint32_t above[] = {XCB_STACK_MODE_ABOVE};
        xcb_map_window(m_connection.get(), window);
        xcb_configure_window(m_connection.get(), window, XCB_CONFIG_WINDOW_STACK_MODE, above);
        xcb_client_message_event_t event = {};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = Atom("_NET_ACTIVE_WINDOW");
        event.data.data32[0] = 2;  // asked for by the user
        xcb_send_event(m_connection.get(), 0, m_root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&event));
        const Reply<xcb_get_input_focus_reply_t> done(
            xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    }

  private:
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
};

bool Matches(const Screen& screen, xcb_window_t window, const QByteArray& first, const QByteArray& second) {
    // Instance and class, each with a zero behind it.
    const QList<QByteArray> classes = screen.Property(window, XCB_ATOM_WM_CLASS).split('\0');
    if (classes.size() < 2) return false;
    QByteArray title = screen.Property(window, screen.Atom("_NET_WM_NAME"));
    if (title.isEmpty()) title = screen.Property(window, XCB_ATOM_WM_NAME);
    return (classes[1] == first && title == second) || (classes[1] == second && title == first);
}

// A window that a person can see, or has minimised: the window manager leaves its state on those it knows.
bool IsUp(const Screen& screen, xcb_window_t window) {
    return screen.IsMapped(window) || !screen.Property(window, screen.Atom("WM_STATE")).isEmpty();
}

xcb_window_t FindWindow(const Screen& screen, xcb_window_t parent, const QByteArray& first, const QByteArray& second,
                        int depth) {
    for (const xcb_window_t window : screen.Children(parent)) {
        if (Matches(screen, window, first, second) && IsUp(screen, window)) return window;
        const xcb_window_t inside =
            depth > 1 ? FindWindow(screen, window, first, second, depth - 1) : xcb_window_t{XCB_WINDOW_NONE};
        if (inside != XCB_WINDOW_NONE) return inside;
    }
    return XCB_WINDOW_NONE;
}

}  // namespace

bool RaiseX11Window(const QByteArray& first, const QByteArray& second) {
    if (qEnvironmentVariableIsEmpty("DISPLAY")) return false;
    const Screen screen;
    if (screen.Root() == XCB_WINDOW_NONE) return false;
    const xcb_window_t window = FindWindow(screen, screen.Root(), first, second, Depth);
    if (window == XCB_WINDOW_NONE) return false;
    screen.BringUp(window);
    return true;
}
