// SPDX-License-Identifier: GPL-3.0-or-later
#include <fcntl.h>
#include <unistd.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include "AppPaths.h"
#include "Bench.h"
#include "CHistoryManager.h"
#include "ImageParams.h"

namespace {

const char* const PlainWrite = "write() of the same bytes";

std::unique_ptr<CHistoryStep> Snapshot(const Bitmap& picture) {
    auto image = std::make_unique<ImageParams>();
    image->image = picture;
    image->save = true;
    auto step = std::make_unique<CHistoryStep>();
    step->AddParams(std::move(image));
    return step;
}

void WritePlain(const QByteArray& path, const Bitmap& picture) {
    const int file = ::open(path.constData(), O_WRONLY | O_CREAT, 0600);
    const std::uint8_t* bytes = picture.Pixels();
    for (std::size_t left = picture.ByteCount(); left > 0;) {
        const ssize_t written = ::write(file, bytes, left);
        if (written <= 0) break;
        bytes += written;
        left -= static_cast<std::size_t>(written);
    }
    ::close(file);
}

}  // namespace

double NewFileMs(const BenchSize& size) {
    const QString folder = AppPath(QStringLiteral("Temp/BenchHistory"));
    MakeDirs(folder);
    const QByteArray path = QFile::encodeName(folder + QStringLiteral("/new.bin"));
    const double ms = MedianMs(
        9, [&] { WritePlain(path, BenchPicture(size)); }, [&] { ::unlink(path.constData()); });
    ::unlink(path.constData());
    return ms;
}

namespace {

// A push into a file that is not there yet, as the first 32 of a session are, and one over a file that is, as all later
// ones are; each against the same kind of write.
void Measure(BenchReport& report, const BenchSize& size) {
    const QString folder = AppPath(QStringLiteral("Temp/BenchHistory"));
    CHistoryManager history(folder);
    const Bitmap picture = BenchPicture(size);
    const Bitmap opened(1, 1);
    const QByteArray plain = QFile::encodeName(folder + QStringLiteral("/plain.bin"));
    std::unique_ptr<CHistoryStep> step;
    const auto push = [&] { history.PushStep(step); };
    const auto write = [&] { WritePlain(plain, picture); };

    history.OpenImage(opened);
    const double newWriteMs = NewFileMs(size);
    const double newPushMs = MedianMs(9, push, [&] {
        history.OpenImage(opened);
        step = Snapshot(picture);
    });
    report.Add("history.push", size.Megapixels(), newPushMs, PlainWrite, newWriteMs);

    const double overWriteMs = MedianMs(9, write);
    const double overPushMs = MedianMs(9, push, [&] {
        // The number of the file that is there comes round again: the history starts anew, its file does not.
        QFile::rename(folder + QStringLiteral("/undoredo0.bin"), folder + QStringLiteral("/kept.bin"));
        history.OpenImage(opened);
        QFile::rename(folder + QStringLiteral("/kept.bin"), folder + QStringLiteral("/undoredo0.bin"));
        step = Snapshot(picture);
    });
    report.Add("history.push.again", size.Megapixels(), overPushMs, PlainWrite, overWriteMs);
    history.Reset();
    QDir(folder).removeRecursively();
}

const BenchCase historyPush("history.push", [](BenchReport& report) {
    for (const BenchSize& size : BenchSizes) Measure(report, size);
});

}  // namespace
