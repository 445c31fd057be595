// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtCore/QCoreApplication>
#include <QtCore/QObject>
#include <type_traits>
#include <utility>

// How a worker tells a window something: the call goes to the main thread. Workers touch pixels, numbers and files; a
// widget is touched in a function that is handed to one of these.

// True on the thread of the application object, and where there is none (a program without windows has one thread that
// could own them).
bool OnMainThread();

// Ends a debug build when called on another thread; no effect in other builds.
void AssertMainThread();

namespace MessageQueue {

// Queues `call` for the main thread; dropped when `guard` dies before. Null stands for the application.
void Post(QObject* guard, std::function<void()> call);
// Queues `call` for the main thread and waits until it ran or was dropped.
void Send(std::function<void()> call);

}  // namespace MessageQueue

// Runs `function` on the main thread, waits for it and returns its result; a plain call on the main thread. The main
// thread must be running its event loop, so never while it joins the caller. When the application ends before the call
// was taken, the function does not run and the result is a default-made value.
template <class F>
auto SendToMain(F&& function) {
    using Result = std::invoke_result_t<F&>;
    if (OnMainThread()) return function();
    if constexpr (std::is_void_v<Result>) {
        MessageQueue::Send([&function] { function(); });
    } else {
        Result result{};
        MessageQueue::Send([&function, &result] { result = function(); });
        return result;
    }
}

// Has `function` run later on the main thread, in the order of the calls; dropped when `guard`, an object of the main
// thread, is destroyed before. `guard` must be alive during this call; null stands for the application.
template <class F>
void PostToMain(QObject* guard, F&& function) {
    MessageQueue::Post(guard, std::forward<F>(function));
}
