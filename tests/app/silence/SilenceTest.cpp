// SPDX-License-Identifier: GPL-3.0-or-later
// The program itself, from its start to its end, without an address: the kernel's filter of this test goes over to it,
// and ends it when it opens an internet socket.
#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include "IniFile.h"

namespace {

constexpr int PatienceMs = 60000;

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

xcb_atom_t Atom(xcb_connection_t* screen, const QByteArray& name) {
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(xcb_intern_atom_reply(
        screen, xcb_intern_atom(screen, 0, static_cast<std::uint16_t>(name.size()), name.constData()), nullptr));
    return reply->atom;
}

QByteArray Title(xcb_connection_t* screen, xcb_window_t window) {
    const std::unique_ptr<xcb_get_property_reply_t, Free> reply(xcb_get_property_reply(
        screen, xcb_get_property(screen, 0, window, Atom(screen, "_NET_WM_NAME"), XCB_GET_PROPERTY_TYPE_ANY, 0, 64),
        nullptr));
    return reply ? QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                              xcb_get_property_value_length(reply.get()))
                 : QByteArray();
}

// What a window manager sends when the close box is pressed.
void CloseWindow(const QByteArray& title) {
    xcb_connection_t* screen = xcb_connect(nullptr, nullptr);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(screen)).data->root;
    const std::unique_ptr<xcb_query_tree_reply_t, Free> tree(
        xcb_query_tree_reply(screen, xcb_query_tree(screen, root), nullptr));
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        const xcb_window_t window = xcb_query_tree_children(tree.get())[i];
        if (Title(screen, window) != title) continue;
        xcb_client_message_event_t event = {};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = Atom(screen, "WM_PROTOCOLS");
        event.data.data32[0] = Atom(screen, "WM_DELETE_WINDOW");
        xcb_send_event(screen, 0, window, 0, reinterpret_cast<const char*>(&event));
    }
    xcb_flush(screen);
    xcb_disconnect(screen);
}

class Silence : public testing::Test {
  protected:
    void SetUp() override {
        // The sample is large; without a stored choice the program would ask.
        ASSERT_TRUE(QDir().mkpath(Home({})));
        ASSERT_TRUE(WriteProfileString(QStringLiteral("Tip"), QStringLiteral("DlgOpenImageLessen"), QStringLiteral("2"),
                                       Home(QStringLiteral("Config.ini"))));
    }
    QString Home(const QString& name) const { return m_folder.filePath(QStringLiteral("quince/") + name); }
    QString Folder() const { return m_folder.path(); }
    void Start(QProcess& program) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QUINCE_HOME"), Home({}));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.filePath(QStringLiteral("config")));
        environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("quince.start.debug=true"));
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(QUINCE_BIN "/QUINCE"), {QStringLiteral(QUINCE_BIN "/Images/Example/default.jpg")});
    }
    static void WaitForThePicture(QProcess& program) {
        QByteArray said;
        ASSERT_TRUE(QTest::qWaitFor(
            [&] {
                said += program.readAllStandardError();
                return said.contains("picture painted") || program.state() == QProcess::NotRunning;
            },
            PatienceMs));
        ASSERT_EQ(program.state(), QProcess::Running) << program.exitCode() << said.toStdString();
    }
    static void Close(QProcess& program) {
        // The frame may still be at what follows the picture.
        for (int i = 0; i < PatienceMs / 200 && program.state() != QProcess::NotRunning; ++i) {
            CloseWindow("QUINCE");
            program.waitForFinished(200);
        }
        ExpectAQuietEnd(program);
    }
    static void ExpectAQuietEnd(const QProcess& program) {
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit) << "signal " << program.exitCode();
        EXPECT_EQ(program.exitCode(), 0);
    }

  private:
    QTemporaryDir m_folder;
};

// Every file below a folder, with what is in it.
std::map<QString, QByteArray> FilesBelow(const QString& folder) {
    std::map<QString, QByteArray> files;
    for (QDirIterator each(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories); each.hasNext();) {
        QFile file(each.next());
        if (file.open(QIODevice::ReadOnly)) files[file.fileName()] = file.readAll();
    }
    return files;
}

void ExpectNoNetworkLibrary(const QProcess& program) {
    QFile maps(QStringLiteral("/proc/%1/maps").arg(program.processId()));
    ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
    const QByteArray libraries = maps.readAll();
    EXPECT_TRUE(libraries.contains("libQt6Widgets"));
    EXPECT_FALSE(libraries.contains("libcurl") || libraries.contains("quince_net"))
        << "the network library is loaded for nothing";
}

}  // namespace

TEST_F(Silence, TwoRunsSendNothingAndKeepNothingForSending) {
    for (int run = 0; run < 2; ++run) {
        QProcess program;
        Start(program);
        WaitForThePicture(program);
        if (HasFailure()) return;
        ExpectNoNetworkLibrary(program);
        Close(program);
        const std::pair<const char*, const char*> keys[] = {{"Main", "count"},
                                                            {"Main", "RunTime"},
                                                            {"Main", "time"},
                                                            {"Main", "Installdate"},
                                                            {"Main", "client"},
                                                            {"RunOnce", "Run"},
                                                            {"RunOnce", "PreCheckActive"}};
        for (const auto& [section, key] : keys)
            EXPECT_EQ(GetProfileString(QLatin1String(section), QLatin1String(key), QStringLiteral("none"),
                                       Home(QStringLiteral("Config.ini"))),
                      u"none")
                << key;
        EXPECT_FALSE(QFile::exists(Home(QStringLiteral("Resources/LastReport.txt"))));
        EXPECT_FALSE(QFile::exists(Folder() + QStringLiteral("/config/Vantu")));
    }
}

// With addresses, the filter ends whichever process uses them.
TEST_F(Silence, ASecondInstanceCountsWritesAndSendsNothing) {
    QProcess first;
    Start(first);
    WaitForThePicture(first);
    if (HasFailure()) return;
    for (const char* key : {"Analytics", "Data"})
        ASSERT_TRUE(WriteProfileString(QStringLiteral("Addresses"), QLatin1String(key),
                                       QStringLiteral("http://127.0.0.1:9"), Home(QStringLiteral("Addresses.ini"))));
    const auto before = FilesBelow(Folder());
    ASSERT_GT(before.size(), 1U);
    QProcess second;
    Start(second);
    ASSERT_TRUE(second.waitForFinished(PatienceMs));
    ExpectAQuietEnd(second);
    EXPECT_EQ(FilesBelow(Folder()), before);
    EXPECT_EQ(first.state(), QProcess::Running);
    Close(first);

    QProcess alone;
    Start(alone);
    ASSERT_TRUE(QTest::qWaitFor([&] { return alone.state() == QProcess::NotRunning; }, PatienceMs));
    EXPECT_EQ(alone.exitStatus(), QProcess::CrashExit) << "the only instance does use its addresses";
}
