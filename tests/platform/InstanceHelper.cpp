// SPDX-License-Identifier: GPL-3.0-or-later
// One instance of a program, for the tests of SingleInstance: says on its output what became of it.
//     instance_helper MODE MILLISECONDS
// serve: enters and answers others; busy: enters and then never handles an event; late: enters, answers, and has a
// window only after a while; enter: enters and ends.
#include <cstdio>
#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <QtCore/QTimer>

#include "SingleInstance.h"

namespace {

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
    if (mode == "busy") QThread::sleep(120);
    const auto show = [&] {
        instance.Serve(
            [] {
                Say("asked");
                return true;
            },
            [] { Say("to front"); });
    };
    if (mode == "late")
        QTimer::singleShot(1000, &application, show);
    else
        show();
    QTimer::singleShot(120000, &application, &QCoreApplication::quit);
    return QCoreApplication::exec();
}
