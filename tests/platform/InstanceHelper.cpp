// SPDX-License-Identifier: GPL-3.0-or-later
// One instance of a program, for the tests of SingleInstance: says on its output what became of it.
//     instance_helper MODE MILLISECONDS
// serve: enters and has a window; busy: the same, but handles no event for a while; late: has a window only after a
// while; ending: has had a window and takes a while to end; enter: enters and ends.
#include <cstdio>
#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <QtCore/QTimer>

#include "SingleInstance.h"

namespace {

constexpr int WhileMilliseconds = 4000, LateMilliseconds = 1000;

void Say(const char* text) {
    std::printf("%s\n", text);
    std::fflush(stdout);
}

const char* NameOf(InstanceEntry entry) {
    switch (entry) {
        case InstanceEntry::First:
            return "first";
        case InstanceEntry::Replaced:
            return "replaced";
        case InstanceEntry::Raised:
            return "raised";
        case InstanceEntry::Unreachable:
            return "unreachable";
        case InstanceEntry::Failed:
            return "failed";
    }
    return "";
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    if (argc != 3) return 2;
    const QByteArray mode = argv[1];
    SingleInstance instance(std::chrono::milliseconds(std::atoi(argv[2])));
    const InstanceEntry entry = instance.Enter();
    Say(NameOf(entry));
    if (mode == "enter" || (entry != InstanceEntry::First && entry != InstanceEntry::Replaced)) return 0;
    const auto show = [&] { instance.Serve([] { Say("to front"); }); };
    if (mode == "busy" || mode == "ending") {
        show();
        if (mode == "ending") instance.Retire();
        Say(mode.constData());
        QThread::msleep(WhileMilliseconds);
        Say("free");
        if (mode == "ending") return 0;
    } else if (mode == "late")
        QTimer::singleShot(LateMilliseconds, &application, show);
    else
        show();
    QTimer::singleShot(120000, &application, &QCoreApplication::quit);
    return QCoreApplication::exec();
}
