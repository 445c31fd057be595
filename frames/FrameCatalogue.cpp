// SPDX-License-Identifier: GPL-3.0-or-later
#include "FrameCatalogue.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <mutex>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtGui/QImageReader>
#include <set>

#include "AppPaths.h"
#include "Flatten.h"
#include "Language.h"
#include "PC_Dsp.h"
#include "PC_File.h"
#include "Truncate.h"

namespace {

// What a thumbnail's file may be at most.
constexpr qint64 ThumbnailBytes = 8 << 20;
constexpr int ThumbnailSide = 4096;

struct Catalogue {
    std::mutex lock;
    std::vector<FrameEntry> frames;          // by number
    std::array<std::vector<int>, 2> listed;  // of each kind, from FrameSimple on
};

Catalogue& TheCatalogue() {
    static Catalogue catalogue;
    return catalogue;
}

std::size_t ListOf(int kind) {
    return kind == FrameOrnate ? 1 : 0;
}

QString FolderOf(int kind) {
    return QStringLiteral("Sucai/Biankuang/") +
           (kind == FrameOrnate ? QStringLiteral("XuanCai") : QStringLiteral("JianDan"));
}

bool IsPlainFile(const QFileInfo& file) {
    return file.isFile() && !file.isSymLink();
}

// The catalogue's lock is held.
int NumberOf(Catalogue& catalogue, int kind, const QString& path) {
    auto& frames = catalogue.frames;
    const auto same = [&](const FrameEntry& frame) { return frame.kind == kind && frame.path == path; };
    const auto found = std::find_if(frames.begin(), frames.end(), same);
    if (found != frames.end()) return static_cast<int>(found - frames.begin());
    frames.push_back({kind, path, {}});
    return static_cast<int>(frames.size()) - 1;
}

// The frames of one folder.
std::vector<FrameEntry> FramesIn(const QString& folder, int kind) {
    std::vector<FrameEntry> frames;
    const QDir dir(folder);
    for (const QFileInfo& file : dir.entryInfoList(QDir::Files | QDir::NoSymLinks, QDir::Name | QDir::IgnoreCase)) {
        if (!IsSupportedImage(file.fileName())) continue;
        const QString base = file.completeBaseName();
        const QString slashed = folder + u'/';
        const QString path = kind == FrameOrnate ? OrnateFrameFileFor(slashed, base) : FrameFileFor(slashed, base);
        if (!path.isEmpty() && IsPlainFile(QFileInfo(path))) frames.push_back({kind, path, file.filePath()});
    }
    return frames;
}

QString StemOf(const FrameEntry& frame) {
    return QFileInfo(frame.path).completeBaseName();
}

std::vector<FrameEntry> AllFrames(int kind) {
    std::vector<FrameEntry> all;
    std::set<QString> stems;
    for (const QString& folder : ResourceDirs(FolderOf(kind)))
        for (const FrameEntry& frame : FramesIn(folder, kind))
            if (stems.insert(StemOf(frame).toLower()).second) all.push_back(frame);
    std::sort(all.begin(), all.end(), [](const FrameEntry& a, const FrameEntry& b) {
        const QString first = StemOf(a), second = StemOf(b);
        const int order = first.compare(second, Qt::CaseInsensitive);
        return order != 0 ? order < 0 : first < second;
    });
    return all;
}

// Known before anything is decoded, so that no file can ask for much memory.
bool MayBeThumbnail(const QString& file) {
    if (QFileInfo(file).size() > ThumbnailBytes) return false;
    const QSize size = QImageReader(file).size();
    return size.isValid() && size.width() <= ThumbnailSide && size.height() <= ThumbnailSide;
}

void Insert(const Bitmap& drawn, Bitmap& target) {
    const int left = (target.Width() - drawn.Width()) / 2, top = (target.Height() - drawn.Height()) / 2;
    std::uint8_t* to = target.MutablePixels() + top * target.Stride() + std::ptrdiff_t{4} * left;
    for (int y = 0; y < drawn.Height(); ++y, to += target.Stride())
        std::memcpy(to, drawn.Row(y), static_cast<std::size_t>(drawn.Stride()));
}

}  // namespace

QString FrameEntry::Name() const {
    const QString stem = StemOf(*this);
    const QString known = LanguageText(QStringLiteral("ids_frame_") + stem);
    return known.isEmpty() ? stem : known;
}

void ReadFrames() {
    for (const int kind : {FrameSimple, FrameOrnate}) {
        const std::vector<FrameEntry> found = AllFrames(kind);
        Catalogue& catalogue = TheCatalogue();
        const std::lock_guard guard(catalogue.lock);
        std::vector<int>& listed = catalogue.listed[ListOf(kind)];
        listed.clear();
        for (const FrameEntry& frame : found) {
            const int number = NumberOf(catalogue, kind, frame.path);
            catalogue.frames[static_cast<std::size_t>(number)] = frame;
            listed.push_back(number);
        }
    }
}

std::vector<int> FramesOfKind(int kind) {
    if (kind != FrameSimple && kind != FrameOrnate) return {};
    Catalogue& catalogue = TheCatalogue();
    const std::lock_guard guard(catalogue.lock);
    return catalogue.listed[ListOf(kind)];
}

int FrameNumber(int kind, const QString& path) {
    Catalogue& catalogue = TheCatalogue();
    const std::lock_guard guard(catalogue.lock);
    return NumberOf(catalogue, kind, path);
}

bool FindFrame(int number, FrameEntry& entry) {
    Catalogue& catalogue = TheCatalogue();
    const std::lock_guard guard(catalogue.lock);
    const bool there = number >= 0 && number < static_cast<int>(catalogue.frames.size());
    entry = there ? catalogue.frames[static_cast<std::size_t>(number)] : FrameEntry();
    return there;
}

bool DrawFrameThumbnail(const QString& file, double scale, Bitmap& thumbnail) {
    if (!MayBeThumbnail(file)) return false;
    Bitmap picture = PC_File().OnLoadImage(file.toStdWString().c_str(), nullptr, 0, 100, nullptr);
    if (!picture) return false;
    const double across = thumbnail.Width() / (picture.Width() * scale);
    const double down = thumbnail.Height() / (picture.Height() * scale);
    const double fit = std::min({across, down, 1.0}) * scale;
    Bitmap drawn = Bitmap::Uninitialised(std::min(thumbnail.Width(), TruncateSide(picture.Width() * fit + 1e-6)),
                                         std::min(thumbnail.Height(), TruncateSide(picture.Height() * fit + 1e-6)));
    PC_Dsp::ResampleRect(picture, 0, 0, picture.Width(), picture.Height(), drawn, ResampleQuality::Best);
    FlattenOnWhite(drawn);
    thumbnail.Fill(0xFFFFFFFF);
    Insert(drawn, thumbnail);
    return true;
}
