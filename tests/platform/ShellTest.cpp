// SPDX-License-Identifier: GPL-3.0-or-later
#include "Shell.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QThread>

#include "FreshHome.h"

using namespace Qt::Literals::StringLiterals;

class Shell : public FreshHome {
  protected:
    static void PutProgram(const QString& name, const QByteArray& script) {
        Put(name, script);
        ASSERT_TRUE(QFile::setPermissions(AppPath(name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
    // What the started program wrote; it runs on its own, so this waits for it.
    static QByteArray Written(const QString& name) {
        QElapsedTimer timer;
        timer.start();
        while (!Get(name).endsWith('\n') && timer.elapsed() < 10000) QThread::msleep(5);
        return Get(name);
    }
};

TEST_F(Shell, CompanionIsTheFileOfTheSameStemBesideTheProgram) {
    const QString folder = QFileInfo(u"/proc/self/exe"_s).canonicalPath();
    EXPECT_EQ(ProgramFileFor(GetAppDir() + u"\\Update.exe"_s), folder + u"/Update"_s);
    EXPECT_EQ(ProgramFileFor(u"C:\\elsewhere\\Twitter.EXE"_s), folder + u"/Twitter"_s);
    EXPECT_EQ(ProgramFileFor(u"/usr/bin/true"_s), u"/usr/bin/true"_s);
}

TEST_F(Shell, StartedProgramGetsItsArguments) {
    PutProgram(u"Update"_s, "#!/bin/sh\nprintf '%s|' \"$@\" > \"${0%/*}/out\"\necho >> \"${0%/*}/out\"\n");
    EXPECT_TRUE(StartProgram(AppPath(u"Update"_s), {u"auto"_s, u"a b"_s}));
    EXPECT_EQ(Written(u"out"_s), "auto|a b|\n");
}

TEST_F(Shell, MissingOrUnrunnableProgramIsNotStarted) {
    EXPECT_FALSE(StartProgram(AppPath(u"Update"_s), {}));
    Put(u"Update"_s, "text");
    EXPECT_FALSE(StartProgram(AppPath(u"Update"_s), {}));
    ASSERT_TRUE(QDir().mkpath(AppPath(u"Twitter"_s)));
    EXPECT_FALSE(StartProgram(AppPath(u"Twitter"_s), {}));
}

TEST_F(Shell, ACompanionInTheDataFolderIsNotTheInstalledOne) {
    PutProgram(u"Update"_s, "#!/bin/sh\necho started > \"${0%/*}/out\"\n");
    EXPECT_FALSE(StartProgram(AppPath(u"Update.exe"_s), {u"hand"_s}));
    EXPECT_FALSE(Has(u"out"_s));
}

TEST_F(Shell, OnlySecurePagesAreOpened) {
    PutProgram(u"bin/xdg-open"_s, "#!/bin/sh\necho \"$1\" > \"${0%/*}/out\"\n");
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", AppPath(u"bin"_s).toUtf8() + ':' + path);
    for (const QString& address : {u"http://example.org/"_s, u"file:///etc/passwd"_s, u"/etc/passwd"_s, QString()})
        EXPECT_FALSE(OpenPage(address)) << address.toStdString();
    EXPECT_TRUE(OpenPage(u"https://example.org/"_s));
    EXPECT_EQ(Written(u"bin/out"_s), "https://example.org/\n");
    qputenv("PATH", path);
}

TEST_F(Shell, FolderIsShownByTheDesktopsOpener) {
    PutProgram(u"bin/xdg-open"_s, "#!/bin/sh\necho \"$1\" > \"${0%/*}/out\"\n");
    ASSERT_TRUE(QDir().mkpath(AppPath(u"shown folder"_s)));
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", AppPath(u"bin"_s).toUtf8() + ':' + path);
    EXPECT_TRUE(OpenFolder(AppPath(u"shown folder"_s)));
    EXPECT_EQ(Written(u"bin/out"_s), AppPath(u"shown folder"_s).toUtf8() + '\n');
    EXPECT_FALSE(OpenFolder(AppPath(u"missing"_s)));
    EXPECT_FALSE(OpenFolder(AppPath(u"bin/xdg-open"_s))) << "a file";
    EXPECT_FALSE(OpenFolder(QString()));
    qputenv("PATH", path);
}
