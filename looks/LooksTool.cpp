// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstdio>
#include <QtCore/QStringList>
#include <QtGui/QGuiApplication>
#include <QtGui/QImageWriter>

#include "BeautyShelf.h"
#include "ContactSheet.h"
#include "CubeFile.h"
#include "FrameCatalogue.h"
#include "LookShelf.h"
#include "PC_Dsp.h"
#include "PC_File.h"
#include "WholeFile.h"

namespace {

const char Usage[] =
    "quince-looks check                          reads every look and names what is wrong\n"
    "quince-looks cube INDEX OUT.cube            writes the colour part of a look as a table of 33 points a side\n"
    "quince-looks sheet PICTURE OUT [FIRST LAST [TILE]]\n"
    "                                            draws the looks (all, or from FIRST to LAST) on a picture, tiles\n"
    "                                            TILE pixels wide; OUT ends in .jpg or .png\n"
    "quince-looks beauty PICTURE OUT [TILE]      draws the eight looks of beauty\n"
    "quince-looks frames PICTURE OUT KIND [TILE] draws the frames of a kind, 1 simple or 2 ornate\n"
    "quince-looks frame FILE KIND PICTURE OUT    puts one frame on a picture at full size\n";

constexpr int CubeSize = 33;

std::filesystem::path Program() {
    return QCoreApplication::applicationDirPath().toStdWString();
}

int Fail(const QString& what) {
    std::fprintf(stderr, "quince-looks: %s\n", qUtf8Printable(what));
    return 1;
}

int Check() {
    int wrong = 0;
    for (int index = 0; index < LookShelf::Count; ++index) {
        std::string error;
        if (LookShelf::Take(Program(), index, &error)) continue;
        std::fprintf(stderr, "%s\n", error.c_str());
        ++wrong;
    }
    std::printf("%d looks, %d with errors\n", LookShelf::Count, wrong);
    int beauties = 0;
    for (int type = 1; type <= BeautyShelf::Count; ++type) {
        std::string error;
        if (BeautyShelf::Take(Program(), type, &error)) continue;
        std::fprintf(stderr, "%s\n", error.c_str());
        ++beauties;
    }
    std::printf("%d looks of beauty, %d with errors\n", BeautyShelf::Count, beauties);
    return wrong + beauties == 0 ? 0 : 1;
}

int WriteCube(int index, const QString& path) {
    std::string error;
    const auto look = LookShelf::Take(Program(), index, &error);
    if (!look) return Fail(QString::fromStdString(error));
    CubeTable table;
    table.title = look->GetRecipe().title;
    table.size = CubeSize;
    const double top = CubeSize - 1;
    for (int b = 0; b < CubeSize; ++b)
        for (int g = 0; g < CubeSize; ++g)
            for (int r = 0; r < CubeSize; ++r) {
                const Triple c = look->Colours().At({r / top, g / top, b / top});
                std::array<float, 3> point;
                for (int i = 0; i < 3; ++i) point[i] = static_cast<float>(std::clamp(c[i], 0.0, 1.0));
                table.points.push_back(point);
            }
    const std::string text = CubeText(table);
    WholeFile file(path.toStdWString());
    return file.Open() && file.Write(text.data(), text.size()) && file.Commit()
               ? 0
               : Fail(path + QStringLiteral(" can't be written"));
}

enum class Original { First, LeftOut };

// The first tile is the picture as it is, unless it is left out.
int WriteSheet(const QString& picturePath, const QString& path, const std::vector<ContactSheet::Tile>& tiles,
               int columns, int tileWidth, Original original = Original::First) {
    PC_File reader;
    const Bitmap picture = reader.OnLoadImage(picturePath.toStdWString().c_str(), nullptr, 0, 100, nullptr);
    if (!picture) return Fail(picturePath + QStringLiteral(" can't be read"));
    ContactSheet sheet;
    sheet.tileWidth = tileWidth;
    sheet.withOriginal = original == Original::First;
    sheet.columns = columns;
    QString error;
    const QImage image = sheet.Draw(picture, tiles, error);
    if (image.isNull()) return Fail(error);
    QImageWriter writer(path);
    writer.setQuality(86);
    return writer.write(image) ? 0 : Fail(path + QStringLiteral(" can't be written"));
}

int WriteEffects(const QString& picture, const QString& path, int first, int last, int tileWidth) {
    std::vector<ContactSheet::Tile> tiles;
    for (int index = first; index <= last; ++index)
        tiles.push_back({[index](Bitmap& tile, std::string& why) {
            const auto look = LookShelf::Take(Program(), index, &why);
            if (!look || !look->Apply(tile.MutablePixels(), tile.Width(), tile.Height(), {})) return QString();
            return QStringLiteral("%1  %2").arg(index).arg(QString::fromStdString(look->GetRecipe().title));
        }});
    // Two rows for a category, a wide sheet for all.
    return WriteSheet(picture, path, tiles, std::min(9, (last - first + 3) / 2), tileWidth);
}

int WriteBeauties(const QString& picture, const QString& path, int tileWidth) {
    std::vector<ContactSheet::Tile> tiles;
    // In the order of the program's list.
    for (const int type : {6, 1, 4, 2, 3, 5, 7, 8})
        tiles.push_back({[type](Bitmap& tile, std::string& why) {
            const auto look = BeautyShelf::Take(Program(), type, &why);
            std::wstring folder = Program().wstring();
            if (!look ||
                !PC_Dsp::AutoBeauty(type, tile.MutablePixels(), tile.Width(), tile.Height(), 0, 0, 0, 0, folder.data()))
                return QString();
            return QString::fromStdString(look->GetRecipe().title);
        }});
    return WriteSheet(picture, path, tiles, 3, tileWidth);
}

// A picture with a frame, in the sheet's tile.
QString DrawFramed(const Bitmap& picture, const FrameEntry& frame, Bitmap& tile, std::string& why) {
    FrameParams params;
    params.FramePath = frame.path;
    params.FrameType = frame.kind;
    const Bitmap framed = params.Apply(picture, 1.0f);
    if (!framed) {
        why = frame.path.toStdString() + " can't be used";
        return {};
    }
    const double scale = std::min(double(tile.Width()) / framed.Width(), double(tile.Height()) / framed.Height());
    tile = PC_Dsp::Resample(framed, std::max(1, static_cast<int>(framed.Width() * scale)),
                            std::max(1, static_cast<int>(framed.Height() * scale)));
    return frame.Name();
}

int WriteFrames(const QString& picturePath, const QString& path, int kind, int tileWidth) {
    PC_File reader;
    const Bitmap picture = reader.OnLoadImage(picturePath.toStdWString().c_str(), nullptr, 0, 100, nullptr);
    if (!picture) return Fail(picturePath + QStringLiteral(" can't be read"));
    ReadFrames();
    std::vector<ContactSheet::Tile> tiles;
    for (const int number : FramesOfKind(kind))
        tiles.push_back({[&picture, number](Bitmap& tile, std::string& why) {
            FrameEntry frame;
            FindFrame(number, frame);
            return DrawFramed(picture, frame, tile, why);
        }});
    if (tiles.empty()) return Fail(QStringLiteral("there are no frames beside the program"));
    return WriteSheet(picturePath, path, tiles, 4, tileWidth, Original::LeftOut);
}

int WriteFramed(const QString& file, int kind, const QString& picturePath, const QString& path) {
    PC_File pictures;
    const Bitmap picture = pictures.OnLoadImage(picturePath.toStdWString().c_str(), nullptr, 0, 100, nullptr);
    FrameParams params;
    params.FramePath = file;
    params.FrameType = kind;
    const Bitmap framed = params.Apply(picture, 1.0f);
    if (!framed) return Fail(file + QStringLiteral(" can't be used on ") + picturePath);
    QImageWriter writer(path);
    writer.setQuality(95);
    return writer.write(QImage(framed.Pixels(), framed.Width(), framed.Height(), QImage::Format_ARGB32))
               ? 0
               : Fail(path + QStringLiteral(" can't be written"));
}

// The whole number that an argument is, the given one where there is none, and one that nothing takes for other text.
int NumberAt(const QStringList& arguments, int at, int otherwise) {
    if (arguments.size() <= at) return otherwise;
    bool whole = false;
    const int number = arguments[at].toInt(&whole);
    return whole ? number : -1;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString command = arguments.value(1);
    const auto known = [](int index) { return index >= 0 && index < LookShelf::Count; };
    if (command == u"check" && arguments.size() == 2) return Check();
    if (command == u"cube" && arguments.size() == 4 && known(NumberAt(arguments, 2, -1)))
        return WriteCube(NumberAt(arguments, 2, -1), arguments[3]);
    if (command == u"sheet" && arguments.size() >= 4) {
        const int first = NumberAt(arguments, 4, 0), last = NumberAt(arguments, 5, LookShelf::Count - 1);
        const int tile = NumberAt(arguments, 6, 240);
        if (known(first) && known(last) && first <= last && tile >= 16 && tile <= 2000)
            return WriteEffects(arguments[2], arguments[3], first, last, tile);
    }
    if (command == u"beauty" && (arguments.size() == 4 || arguments.size() == 5)) {
        const int tile = NumberAt(arguments, 4, 360);
        if (tile >= 16 && tile <= 2000) return WriteBeauties(arguments[2], arguments[3], tile);
    }
    const int kind = NumberAt(arguments, command == u"frame" ? 3 : 4, -1);
    const bool kindKnown = kind == FrameSimple || kind == FrameOrnate;
    if (command == u"frames" && kindKnown && (arguments.size() == 5 || arguments.size() == 6)) {
        const int tile = NumberAt(arguments, 5, 240);
        if (tile >= 16 && tile <= 2000) return WriteFrames(arguments[2], arguments[3], kind, tile);
    }
    if (command == u"frame" && kindKnown && arguments.size() == 6)
        return WriteFramed(arguments[2], kind, arguments[4], arguments[5]);
    std::fputs(Usage, stderr);
    return 2;
}
