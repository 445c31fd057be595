// SPDX-License-Identifier: GPL-3.0-or-later
// Usage: quince_draw_frames <picture for the thumbnails> <Biankuang folder>
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QStringList>

#include <algorithm>
#include <atomic>
#include <cstdio>

#include "CNinePartFrame.h"
#include "CStripFrame.h"
#include "CXuanCaiFrame.h"
#include "FrameArt.h"
#include "FrameWriter.h"
#include "Parallel.h"
#include "PC_Dsp.h"
#include "PC_File.h"
#include "Softness.h"

namespace {

// A thumbnail is twice as large as its place in the list, for screens of two pixels a point.
constexpr int ThumbnailSide = 140;
// What it is made from: small enough that a frame's border can be seen in it.
constexpr int SampleSide = 1400;
constexpr int ThumbnailQuality = 90;

bool Write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// The upper middle, where the face is, square.
Bitmap SampleOf(const QString& path) {
    const Bitmap picture = PC_File().OnLoadImage(path.toStdWString().c_str(), nullptr, 0, 100, nullptr);
    if (!picture) return {};
    const int side = std::min(picture.Width(), picture.Height());
    return PC_Dsp::Resample(
        PC_Dsp::Clone(picture, (picture.Width() - side) / 2, (picture.Height() - side) / 4, side, side), SampleSide,
        SampleSide);
}

// Evening blue, on which light and shade of an overlay can both be seen at the size of a thumbnail.
Bitmap Evening() {
    const QImage image = Computed(SampleSide, SampleSide, [](int x, int y) {
        const double t = 0.7 * y / SampleSide + 0.3 * x / SampleSide;
        return MixedColour(QColor(92, 116, 128), QColor(36, 47, 62), t).rgb();
    });
    Bitmap bitmap = Bitmap::Uninitialised(SampleSide, SampleSide);
    std::copy_n(image.constBits(), bitmap.ByteCount(), bitmap.MutablePixels());
    return bitmap;
}

Bitmap Framed(const QByteArray& file, const Bitmap& sample) {
    const auto* data = reinterpret_cast<const std::uint8_t*>(file.constData());
    const auto size = static_cast<std::size_t>(file.size());
    CStripFrame strip;
    if (strip.Load(data, size)) return strip.Compose(sample, 1.0f);
    CNinePartFrame nine;
    if (nine.Load(data, size)) return nine.Compose(sample, 1.0f);
    CXuanCaiFrame ornate;
    Bitmap result = sample;
    return ornate.Load(data, size) && ornate.Compose(result) ? result : Bitmap();
}

struct Task {
    const FrameArt* art;
    QString folder;
    Bitmap sample;
    int shown;  // of the framed sample's side, from the upper left; 0 for all of it
};

bool WriteFrame(const Task& task) {
    const FrameArt& art = *task.art;
    const QByteArray file = art.draw();
    const QString stem = task.folder + u'/' + QLatin1String(art.stem);
    Bitmap framed = Framed(file, task.sample);
    if (!framed) return false;
    if (task.shown > 0) framed = PC_Dsp::Clone(framed, 0, 0, task.shown, task.shown);
    const double scale = double(ThumbnailSide) / std::max(framed.Width(), framed.Height());
    const Bitmap small =
        PC_Dsp::Resample(framed, std::max(1, int(framed.Width() * scale)), std::max(1, int(framed.Height() * scale)));
    const QImage image(small.Pixels(), small.Width(), small.Height(), QImage::Format_ARGB32);
    return Write(stem + u'.' + QLatin1String(art.extension), file) &&
           Write(stem + QStringLiteral(".jpg"), JpegOf(image, ThumbnailQuality));
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::fprintf(stderr, "usage: quince_draw_frames <picture> <folder>\n");
        return 2;
    }
    const Bitmap sample = SampleOf(arguments.at(1));
    if (!sample) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(arguments.at(1)));
        return 1;
    }
    std::vector<Task> tasks;
    const auto add = [&](const std::vector<FrameArt>& all, const QString& name, const Bitmap& ground, int shown) {
        const QString folder = arguments.at(2) + u'/' + name;
        QDir().mkpath(folder);
        for (const FrameArt& art : all) tasks.push_back({&art, folder, ground, shown});
    };
    add(SimpleFrameArt(), QStringLiteral("JianDan"), sample, 0);
    add(OrnateFrameArt(), QStringLiteral("XuanCai"), Evening(), SampleSide / 2);
    std::atomic<bool> done{true};
    ForEachBand(static_cast<int>(tasks.size()), 1, [&](int first, int last) {
        for (int i = first; i < last; ++i) {
            const Task& task = tasks[static_cast<std::size_t>(i)];
            if (WriteFrame(task)) continue;
            std::fprintf(stderr, "cannot draw %s\n", task.art->stem);
            done = false;
        }
    });
    return done ? 0 : 1;
}
