// SPDX-License-Identifier: GPL-3.0-or-later
// The program as a whole: start, opening, undo, memory.
#include <cstdio>
#include <memory>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

#include "Bench.h"
#include "BenchJpeg.h"
#include "BenchWindows.h"
#include "CHistoryManager.h"
#include "CMainFrameWnd.h"
#include "Driver.h"
#include "PC_File.h"
#include "Stage.h"

namespace {

// A folder for the run's files, with the picture of the measurements as a JPEG.
class Folder {
  public:
    Folder() {
        const std::wstring path = Jpeg().toStdWString();
        PC_File().OnSaveQuick(path.c_str(), BenchPicture(Size24), VN_IMAGE_FORMAT_JPEG, 90);
    }
    QString Jpeg() const { return m_folder.filePath(QStringLiteral("picture.jpg")); }
    QString Home() const {
        const QString home = m_folder.filePath(QStringLiteral("home"));
        QDir().mkpath(home);
        QFile config(home + QStringLiteral("/Config.ini"));
        if (config.open(QIODevice::WriteOnly)) config.write("[Tip]\nDlgOpenImageLessen=2\n");
        return home;
    }

  private:
    QTemporaryDir m_folder;
};

QString Beside(const char* program) {
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + QLatin1String(program);
}

// Milliseconds from starting a program to its line `mark` on standard error; it is ended then.
double StartMs(const QString& program, const QStringList& arguments, const QByteArray& mark, const QString& home) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QUINCE_HOME"), home);
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("quince.start.debug=true"));
    process.setProcessEnvironment(environment);
    process.setReadChannel(QProcess::StandardError);
    QElapsedTimer timer;
    timer.start();
    process.start(program, arguments);
    QByteArray said;
    while (!said.contains(mark) && process.waitForReadyRead(20000)) said += process.readAllStandardError();
    const double ms = double(timer.nsecsElapsed()) / 1e6;
    if (!said.contains(mark)) qFatal("%s did not say %s", qPrintable(program), mark.constData());
    process.kill();
    process.waitForFinished();
    return ms;
}

double MedianStartMs(const QString& program, const QStringList& arguments, const QByteArray& mark,
                     const QString& home) {
    std::vector<double> times;
    for (int i = 0; i < 8; ++i) {
        const double ms = StartMs(program, arguments, mark, home);
        if (i > 0) times.push_back(ms);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

// Milliseconds of plainly reading a file into a buffer that is there already.
double PlainReadMs(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) return 0;
    QByteArray buffer(file.size(), 0);
    return MedianMs(
        7, [&] { file.read(buffer.data(), buffer.size()); }, [&] { file.seek(0); });
}

}  // namespace

static const BenchCase openJpeg("open.jpeg", [](BenchReport& report) {
    NeedWindows();
    const Folder folder;
    Stage stage(QStringLiteral("1033"));
    CMainFrameWnd& frame = stage.Open(folder.Jpeg());
    QFile file(folder.Jpeg());
    if (!file.open(QIODevice::ReadOnly)) return;
    const QByteArray content = file.readAll();
    const std::vector<unsigned char> bytes(content.begin(), content.end());
    Bitmap decoded = Bitmap::Uninitialised(Size24.width, Size24.height);
    const double decode = MedianMs(7, [&] { DecodeByLibrary(bytes, decoded); });
    const double open = MedianMs(7, [&] { frame.OpenFile(folder.Jpeg()); });
    report.Add("open.jpeg", Size24.Megapixels(), open, "libjpeg-turbo decode", decode);
});

static const BenchCase historyUndo("history.undo", [](BenchReport& report) {
    NeedWindows();
    const Folder folder;
    Stage stage(QStringLiteral("1033"));
    CMainFrameWnd& frame = stage.Open(folder.Jpeg());
    // Undo goes to the opened picture, whose file is read; redo comes back for the next round.
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    Driver::DragSlider(QStringLiteral("Baoguang"), 10);
    const double undo = MedianMs(
        7, [&] { Driver::Click(QStringLiteral("BtnUndo")); },
        [&] {
            if (CHistoryManager::Instance().m_currentNo == 1) Driver::Click(QStringLiteral("BtnRedo"));
        });
    static_cast<void>(frame);
    report.Add("history.undo", Size24.Megapixels(), undo, "read",
               PlainReadMs(CHistoryManager::Instance().m_originPath));
});

static const BenchCase startWindow("start.window", [](BenchReport& report) {
    NeedWindows();
    const Folder folder;
    const double bare = MedianStartMs(Beside("quince_bare_window"), {}, "painted", folder.Home());
    const double ms = MedianStartMs(Beside("QUINCE"), {}, "window painted", folder.Home());
    report.Add("start.window", 0, ms, "empty Qt window", bare);
});

static const BenchCase startPicture("start.picture", [](BenchReport& report) {
    NeedWindows();
    const Folder folder;
    const double bare = MedianStartMs(Beside("quince_bare_window"), {folder.Jpeg()}, "painted", folder.Home());
    const double ms = MedianStartMs(Beside("QUINCE"), {folder.Jpeg()}, "picture painted", folder.Home());
    report.Add("start.picture", Size24.Megapixels(), ms, "bare Qt window with the file", bare);
});

// The most memory that a tour took, in MB; in a process of its own, since a peak never goes down.
static double PeakOfTour(const QStringList& arguments) {
    QProcess process;
    process.start(Beside("quince_tour"), QStringList(QStringLiteral("memory")) + arguments);
    process.waitForFinished(60000);
    const double megabytes = process.readAllStandardOutput().trimmed().toDouble();
    if (process.exitCode() != 0 || megabytes <= 0) qFatal("the memory tour failed");
    return megabytes;
}

static const BenchCase memoryPeak("memory.peak", [](BenchReport& report) {
    NeedWindows();
    const Folder folder;
    constexpr double Allowed = 5 * 96.0 + 120;
    report.Add("memory.peak", Size24.Megapixels(), PeakOfTour({folder.Jpeg()}), "5 bitmaps of 96 MB + 120 MB", Allowed);
});

static const BenchCase memoryBrush("memory.brush", [](BenchReport& report) {
    NeedWindows();
    const Folder folder;
    constexpr double Allowed = 6 * 96.0 + 120;
    report.Add("memory.brush", Size24.Megapixels(), PeakOfTour({folder.Jpeg(), QStringLiteral("brush")}),
               "6 bitmaps of 96 MB + 120 MB", Allowed);
});

static const BenchCase memoryWarp("memory.warp", [](BenchReport& report) {
    NeedWindows();
    const Folder folder;
    constexpr double Allowed = 4 * 96.0 + 120;
    report.Add("memory.warp", Size24.Megapixels(), PeakOfTour({folder.Jpeg(), QStringLiteral("warp")}),
               "4 bitmaps of 96 MB + 120 MB", Allowed);
});

static const BenchCase memoryResize("memory.resize", [](BenchReport& report) {
    NeedWindows();
    const Folder folder;
    const double megabytes = PeakOfTour({folder.Jpeg(), QStringLiteral("10000"), QStringLiteral("10000")});
    constexpr double Allowed = 400.0 + 3 * 96.0 + 120;
    report.Add("memory.resize", 100.0, megabytes, "the result of 400 MB + 3 bitmaps of 96 MB + 120 MB", Allowed);
});
