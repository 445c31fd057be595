// SPDX-License-Identifier: GPL-3.0-or-later
// The lists of packages and the script that installs what is missing of them.
#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Script = QStringLiteral(QUINCE_SCRIPTS "/install.sh");

struct Outcome {
    int exitCode = -1;
    QString output;
};

Outcome RunProgram(const QString& program, const QStringList& arguments, const QProcessEnvironment& environment) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit) return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput())};
}

Outcome RunProgram(const QString& program, const QStringList& arguments) {
    return RunProgram(program, arguments, QProcessEnvironment::systemEnvironment());
}

QStringList NamesIn(const QString& list) {
    QFile file(QStringLiteral(QUINCE_SCRIPTS "/") + list);
    if (!file.open(QIODevice::ReadOnly)) return {};
    QStringList names;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts))
        if (!line.startsWith(u'#')) names << line;
    return names;
}

// A name that only another package provides has no record of its own.
bool IsInstalled(const QString& name) {
    const Outcome query = RunProgram(u"dpkg-query"_s, {u"-W"_s, u"-f"_s, u"${Package}\t${Status}\n"_s, name});
    return query.output.split(u'\n').contains(name + u"\tinstall ok installed"_s);
}

// Whether this machine has fetched the lists of what can be installed.
bool KnowsOffers() {
    return !QDir(u"/var/lib/apt/lists"_s).entryList({u"*_Packages*"_s}, QDir::Files).isEmpty();
}

// A package of that very name can be installed, as far as those lists tell.
bool IsOffered(const QString& name) {
    const Outcome show = RunProgram(u"apt-cache"_s, {u"show"_s, u"--no-all-versions"_s, name});
    return show.output.split(u'\n').contains(u"Package: "_s + name);
}

// The installing script among commands that note how they are called and change nothing.
class Install : public testing::Test {
  protected:
    void SetUp() override {
        if (QStandardPaths::findExecutable(u"dpkg-query"_s).isEmpty()) GTEST_SKIP() << "no Debian packages here";
        ASSERT_TRUE(m_folder.isValid());
        for (const QString& command : {u"apt-get"_s, u"sudo"_s}) {
            const QString path = m_folder.filePath(command);
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write("#!/bin/sh\necho \"" + command.toUtf8() + " $*\" >> \"$CALLS\"\n");
            file.close();
            ASSERT_TRUE(file.setPermissions(file.permissions() | QFile::ExeOwner));
        }
    }
    Outcome Run(const QString& script) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"PATH"_s, m_folder.path() + u':' + environment.value(u"PATH"_s));
        environment.insert(u"CALLS"_s, m_folder.filePath(u"calls"_s));
        return RunProgram(script, {}, environment);
    }
    QString Calls() {
        QFile file(m_folder.filePath(u"calls"_s));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    // The same script beside a list of its own.
    Outcome RunWithList(const QByteArray& list) {
        QFile file(m_folder.filePath(u"packages.txt"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(list);
        file.close();
        const QString script = m_folder.filePath(u"install.sh"_s);
        EXPECT_TRUE(QFile::copy(Script, script));
        return Run(script);
    }

  private:
    QTemporaryDir m_folder;
};

}  // namespace

TEST_F(Install, EveryNameThatBuildingAndRunningNeedsIsAnInstalledPackage) {
    const QStringList names = NamesIn(u"packages.txt"_s);
    ASSERT_GT(names.size(), 30);
    for (const QString& name : names) EXPECT_TRUE(IsInstalled(name)) << qPrintable(name);
}

TEST_F(Install, EveryNameThatTheChecksNeedIsAPackage) {
    const QStringList names = NamesIn(u"packages-checks.txt"_s);
    ASSERT_FALSE(names.isEmpty());
    for (const QString& name : names)
        EXPECT_TRUE(IsInstalled(name) || IsOffered(name) || !KnowsOffers()) << qPrintable(name);
}

TEST_F(Install, NoNameStandsTwice) {
    QStringList names = NamesIn(u"packages.txt"_s) + NamesIn(u"packages-checks.txt"_s);
    EXPECT_EQ(names.removeDuplicates(), 0);
}

TEST_F(Install, ASecondStartInstallsNothingAndAsksNoServer) {
    const Outcome outcome = Run(Script);
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.output, QString()) << "it has nothing to say";
    EXPECT_EQ(Calls(), QString());
}

TEST_F(Install, WhatIsMissingIsInstalledByItsName) {
    const Outcome outcome = RunWithList("# a list\n\nquince-no-such-package\n");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_TRUE(Calls().contains(u"apt-get update"_s)) << qPrintable(Calls());
    EXPECT_TRUE(Calls().contains(u"quince-no-such-package"_s)) << qPrintable(Calls());
}
