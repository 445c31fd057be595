// SPDX-License-Identifier: GPL-3.0-or-later
// The command for designers of looks, run as they run it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

#include "CubeFile.h"
#include "LookShelf.h"
#include "PC_Dsp.h"
#include "TestPictures.h"

namespace {

struct Outcome {
    int code = -1;
    QString out, error;
};

Outcome RunTool(const QStringList& arguments, const QString& tool = QStringLiteral(QUINCE_LOOKS_TOOL)) {
    QProcess process;
    process.start(tool, arguments);
    EXPECT_TRUE(process.waitForFinished(120000));
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

class LooksTool : public testing::Test {
  protected:
    QString Path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }
    QString Picture() const {
        QImage picture(120, 80, QImage::Format_RGB32);
        picture.fill(QColor(190, 140, 110));
        picture.save(Path("picture.png"));
        return Path("picture.png");
    }

    const QTemporaryDir m_folder;
};

}  // namespace

TEST_F(LooksTool, FindsTheProgramsOwnLooksRight) {
    const Outcome outcome = RunTool({QStringLiteral("check")});
    EXPECT_EQ(outcome.code, 0) << outcome.error.toStdString();
    EXPECT_TRUE(outcome.out.contains(QStringLiteral("50 looks, 0 with errors")));
    EXPECT_TRUE(outcome.out.contains(QStringLiteral("8 looks of beauty, 0 with errors")));
}

TEST_F(LooksTool, NamesWhatIsWrongWithFileAndLine) {
    namespace fs = std::filesystem;
    const fs::path folder = m_folder.path().toStdString(), tool = folder / "quince-looks";
    fs::copy(QUINCE_LOOKS_TOOL, tool);
    for (const char* looks : {"Effects", "Beauty"}) fs::copy(fs::path(QUINCE_RESOURCES) / looks, folder / looks);
    fs::remove(folder / "Beauty" / "Baixi.look");
    std::ofstream(folder / "Effects" / LookShelf::FileName(6)) << "[look]\ntitle = A2\n[grain]\namount = much\n";
    fs::remove(folder / "Effects" / LookShelf::FileName(9));
    const Outcome outcome = RunTool({QStringLiteral("check")}, QString::fromStdString(tool.string()));
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.out.contains(QStringLiteral("50 looks, 2 with errors"))) << outcome.out.toStdString();
    EXPECT_TRUE(outcome.error.contains(QStringLiteral("A2.look: line 4: \"much\" is not a number")));
    EXPECT_TRUE(outcome.error.contains(QStringLiteral("P7.look: cannot be read")));
    EXPECT_TRUE(outcome.out.contains(QStringLiteral("8 looks of beauty, 1 with errors"))) << outcome.out.toStdString();
    EXPECT_TRUE(outcome.error.contains(QStringLiteral("Baixi.look: cannot be read")));
}

TEST_F(LooksTool, WritesTheColourPartAsATable) {
    const Outcome outcome = RunTool({QStringLiteral("cube"), QStringLiteral("17"), Path("lomo.cube")});
    ASSERT_EQ(outcome.code, 0) << outcome.error.toStdString();
    const CubeResult read = ReadCube(Path("lomo.cube").toStdString());
    ASSERT_EQ(read.error, "");
    const auto look = LookShelf::Take(QUINCE_RESOURCES, 17);
    ASSERT_TRUE(look);
    EXPECT_EQ(read.table.size, 33);
    EXPECT_EQ(read.table.title, look->GetRecipe().title);
    const Triple skin{24 / 32.0, 18 / 32.0, 14 / 32.0};
    const Triple exact = look->Colours().At(skin), table = read.table.At(skin);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(table[i], std::clamp(exact[i], 0.0, 1.0), 1e-5);
}

TEST_F(LooksTool, DrawsASheetOfTheLooksThatAreAskedFor) {
    const Outcome outcome = RunTool({QStringLiteral("sheet"), Picture(), Path("sheet.png"), QStringLiteral("8"),
                                     QStringLiteral("14"), QStringLiteral("60")});
    ASSERT_EQ(outcome.code, 0) << outcome.error.toStdString();
    // The original and seven looks in two rows of four.
    EXPECT_EQ(QImage(Path("sheet.png")).size(), QSize(10 + 4 * 70, 10 + 2 * (40 + 26 + 10)));
}

TEST_F(LooksTool, ShowsThePictureInEachLookBesideTheOriginal) {
    const Bitmap picture = TestPictures::Face(300, 200);
    QImage(picture.Pixels(), 300, 200, QImage::Format_ARGB32).save(Path("face.png"));
    const Outcome outcome = RunTool({QStringLiteral("sheet"), Path("face.png"), Path("sheet.png"), QStringLiteral("39"),
                                     QStringLiteral("40"), QStringLiteral("90")});
    ASSERT_EQ(outcome.code, 0) << outcome.error.toStdString();
    const QImage sheet(Path("sheet.png"));
    const Bitmap small = PC_Dsp::Resample(picture, 90, 60);
    // Two beside each other, the original first.
    for (const auto& [index, corner] : {std::pair{-1, QPoint(10, 10)}, {39, QPoint(110, 10)}, {40, QPoint(10, 106)}}) {
        Bitmap tile = small;
        if (index >= 0) {
            const auto look = LookShelf::Take(QUINCE_RESOURCES, index);
            ASSERT_TRUE(look);
            ASSERT_NE(look->Apply(tile.MutablePixels(), 90, 60, {}), 0);
        }
        for (const QPoint& at : {QPoint(0, 0), QPoint(45, 30), QPoint(89, 59)})
            EXPECT_EQ(sheet.pixel(corner + at), TestPictures::PixelAt(tile, at.x(), at.y())) << index;
    }
}

TEST_F(LooksTool, DrawsTheEightLooksOfBeauty) {
    const Outcome outcome = RunTool({QStringLiteral("beauty"), Picture(), Path("sheet.png"), QStringLiteral("60")});
    ASSERT_EQ(outcome.code, 0) << outcome.error.toStdString();
    // The original and eight looks in three rows of three.
    EXPECT_EQ(QImage(Path("sheet.png")).size(), QSize(10 + 3 * 70, 10 + 3 * (40 + 26 + 10)));
}

TEST_F(LooksTool, SaysWhichFileItCannotReadOrWrite) {
    const Outcome missing = RunTool({QStringLiteral("sheet"), Path("none.png"), Path("sheet.png")});
    EXPECT_EQ(missing.code, 1);
    EXPECT_TRUE(missing.error.contains(QStringLiteral("none.png can't be read")));
    const Outcome nowhere = RunTool({QStringLiteral("cube"), QStringLiteral("0"), Path("no/such/folder.cube")});
    EXPECT_EQ(nowhere.code, 1);
    EXPECT_TRUE(nowhere.error.contains(QStringLiteral("can't be written")));
}

TEST_F(LooksTool, AnswersNonsenseWithItsUsage) {
    const QString picture = Picture(), sheet = Path("sheet.png");
    const QStringList nonsense[] = {
        {},
        {QStringLiteral("chekc")},
        {QStringLiteral("check"), QStringLiteral("more")},
        {QStringLiteral("cube"), QStringLiteral("50"), Path("x.cube")},
        {QStringLiteral("cube"), QStringLiteral("one"), Path("x.cube")},
        {QStringLiteral("sheet"), picture},
        {QStringLiteral("beauty"), picture},
        {QStringLiteral("beauty"), picture, sheet, QStringLiteral("15")},
        {QStringLiteral("sheet"), picture, sheet, QStringLiteral("5"), QStringLiteral("4")},
        {QStringLiteral("sheet"), picture, sheet, QStringLiteral("x"), QStringLiteral("4")},
        {QStringLiteral("sheet"), picture, sheet, QStringLiteral("0"), QStringLiteral("50")},
        {QStringLiteral("sheet"), picture, sheet, QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("15")}};
    for (const QStringList& arguments : nonsense) {
        const Outcome outcome = RunTool(arguments);
        EXPECT_EQ(outcome.code, 2) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(outcome.error.contains(QStringLiteral("quince-looks check")));
    }
    EXPECT_FALSE(QFile::exists(Path("x.cube")));
    EXPECT_FALSE(QFile::exists(sheet));
}
