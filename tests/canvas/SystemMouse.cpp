// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemMouse.h"

#include <QtGui/QGuiApplication>

// Last: its macros are the names of others.
#include <X11/extensions/XTest.h>

namespace {

Display* On(void* display) {
    return static_cast<Display*>(display);
}

}  // namespace

SystemMouse::SystemMouse() : m_display(XOpenDisplay(nullptr)) {
    if (!m_display) qFatal("no X display");
}

SystemMouse::~SystemMouse() {
    XCloseDisplay(On(m_display));
}

void SystemMouse::Move(QPoint to) {
    const double ratio = qApp->devicePixelRatio();
    XTestFakeMotionEvent(On(m_display), -1, qRound(to.x() * ratio), qRound(to.y() * ratio), CurrentTime);
    XFlush(On(m_display));
}

void SystemMouse::Press() {
    XTestFakeButtonEvent(On(m_display), Button1, True, CurrentTime);
    XFlush(On(m_display));
}

void SystemMouse::Release() {
    XTestFakeButtonEvent(On(m_display), Button1, False, CurrentTime);
    XFlush(On(m_display));
}

void SystemMouse::Sync() {
    XSync(On(m_display), False);
}
