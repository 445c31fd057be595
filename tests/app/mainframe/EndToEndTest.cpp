// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program as a person uses it: real windows, mouse and keyboard events only.
#include <QtCore/QFile>
#include <QtWidgets/QLabel>

#include "AdjustChain.h"
#include "CHistoryManager.h"
#include "FrameFixture.h"
#include "PC_File.h"
#include "TestPictures.h"

namespace {

class EndToEnd : public FrameTest {
  protected:
    static Bitmap OnShow(CMidWnd& mid) { return mid.Canvas()->GetShowBitmap(); }

    // What a JPEG of that quality holds of a picture.
    Bitmap AsJpeg(const Bitmap& picture, int quality) {
        const QString path = m_folder + QStringLiteral("/expected.jpg");
        EXPECT_NE(PC_File().OnSaveQuick(path.toStdWString().c_str(), picture, VN_IMAGE_FORMAT_JPEG, quality), 0);
        return Load(path);
    }

    static Bitmap WithBasic(Bitmap picture, int brightness, int contrast, int saturation, int sharpness) {
        BasicAdjustParams basic;
        basic.Brightness = brightness;
        basic.Contrast = contrast;
        basic.Saturation = saturation;
        basic.Sharpness = sharpness;
        EXPECT_TRUE(RunAdjustChain(picture, AdjustChain(basic, {}, 1.0)));
        return picture;
    }

    static Bitmap WithExposure(Bitmap picture, int exposure) {
        AdvanceAdjustParams advance;
        advance.Exposure = exposure;
        EXPECT_TRUE(RunAdjustChain(picture, AdjustChain({}, advance, 1.0)));
        return picture;
    }

    void OpenByDialog(const QString& path) {
        Driver::Modal([] { Driver::Click(QStringLiteral("btnOpen")); }, QStringLiteral("fileNameEdit"),
                      [&] { Driver::ChooseFile(path); });
        Driver::WaitFor(QStringLiteral("the picture"), [&] { return Mid().HeldPath() == path && !Mid().IsBusy(); });
    }

    void DragFiveSliders() {
        Driver::DragSlider(QStringLiteral("Liangdu"), 24);
        Driver::DragSlider(QStringLiteral("Duibidu"), 10);
        Driver::DragSlider(QStringLiteral("Baohedu"), 12);
        Driver::DragSlider(QStringLiteral("Ruidu"), 15);
        Driver::DragSlider(QStringLiteral("Baoguang"), 8);
    }

    void JumpToRow(int row) {
        Driver::Click(QStringLiteral("BtnMenuUndo"));
        Driver::ClickRow(QStringLiteral("ListUndo"), row);
    }
};

}  // namespace

TEST_F(EndToEnd, AnEditingSessionFromOpenToClose) {
    const Bitmap photo = PhotoPixels();
    const QString path = WritePicture(QStringLiteral("session.png"), photo);
    auto& history = CHistoryManager::Instance();
    Show();
    OpenByDialog(path);
    ASSERT_EQ(OnShow(Mid()), photo);

    // Five sliders: the fifth is of the other group, so the four are folded into the picture first.
    DragFiveSliders();
    const Bitmap toned = WithBasic(photo, 24, 10, 12, 15);
    const Bitmap exposed = WithExposure(toned, 8);
    EXPECT_EQ(OnShow(Mid()), exposed);
    EXPECT_EQ(history.m_count, 2) << "one step for all slider moves of a visit";

    // A scene on top.
    Driver::Click(QStringLiteral("BtnPortrait"));
    Driver::WaitFor(QStringLiteral("the scene"), [&] { return !Mid().IsBusy(); });
    Bitmap scene = exposed;
    ASSERT_TRUE(RunAdjustScene(scene, 2));
    EXPECT_EQ(OnShow(Mid()), scene);

    // Hold compare: the canvas shows the original, and the picture again on release.
    Driver::Press(QStringLiteral("BtnCompare"));
    EXPECT_EQ(Mid().CompareMode(), 1);
    EXPECT_FALSE(Mid().Canvas()->isVisible());
    Driver::Release(QStringLiteral("BtnCompare"));
    EXPECT_EQ(Mid().CompareMode(), 0);
    EXPECT_TRUE(Mid().Canvas()->isVisible());

    // Undo, redo, the list, revert and its undo.
    Driver::Click(QStringLiteral("BtnUndo"));
    EXPECT_EQ(OnShow(Mid()), photo);
    Driver::Click(QStringLiteral("BtnRedo"));
    EXPECT_EQ(OnShow(Mid()), scene);
    JumpToRow(0);
    EXPECT_EQ(OnShow(Mid()), photo);
    JumpToRow(history.m_count - 1);
    EXPECT_EQ(OnShow(Mid()), scene);
    Driver::Click(QStringLiteral("BtnOriginal"));
    EXPECT_EQ(OnShow(Mid()), photo);
    Driver::Click(QStringLiteral("BtnUndo"));
    EXPECT_EQ(OnShow(Mid()), scene);

    // Save as JPEG, with quality panel and estimate.
    Driver::Modal([] { Driver::Click(QStringLiteral("btnSave")); }, QStringLiteral("EdtPath"),
                  [&] {
                      Driver::Type(QStringLiteral("EdtPath"), m_folder);
                      Driver::Type(QStringLiteral("EdtName"), QStringLiteral("result"));
                      Driver::Click(QStringLiteral("BtnSaveHuaZhi"));
                      Driver::DragSlider(QStringLiteral("SliderHuaZhi"), 80);
                      const auto* size = qobject_cast<QLabel*>(Driver::Find(QStringLiteral("TextSaveSizeVal")));
                      EXPECT_TRUE(size->text().endsWith(QStringLiteral("KB"))) << size->text().toStdString();
                      Driver::Click(QStringLiteral("BtnSave"));
                      Driver::Click(QStringLiteral("BtnSaveClose"));
                  });
    EXPECT_EQ(Load(m_folder + QStringLiteral("/result.jpg")), AsJpeg(scene, 80));

    // Save over the opened file by the cover toggle: a PNG stays a PNG and holds the exact pixels.
    Driver::Modal([] { Driver::Click(QStringLiteral("btnSave")); }, QStringLiteral("EdtPath"),
                  [&] {
                      Driver::Click(QStringLiteral("BtnCover"));
                      Driver::Click(QStringLiteral("BtnSave"));
                      Driver::Click(QStringLiteral("BtnSaveClose"));
                  });
    QFile covered(path);
    ASSERT_TRUE(covered.open(QIODevice::ReadOnly));
    EXPECT_TRUE(covered.read(4).endsWith("PNG"));
    EXPECT_EQ(Load(path), scene);

    // More work; the save question three ways.
    Driver::DragSlider(QStringLiteral("Liangdu"), -20);
    Driver::Modal([&] { Frame().close(); }, QStringLiteral("BtnCancel"), [] { Driver::Key(Qt::Key_Escape); });
    ASSERT_TRUE(Frame().isVisible()) << "Esc stays";
    Driver::Modal(
        [&] {
            Driver::Modal([&] { Driver::Click(QStringLiteral("btnOpen")); }, QStringLiteral("EdtPath"),
                          [&] {
                              Driver::Type(QStringLiteral("EdtPath"), m_folder);
                              Driver::Type(QStringLiteral("EdtName"), QStringLiteral("second"));
                              Driver::ChooseItem(QStringLiteral("ComboFileType"), 2);
                              Driver::Click(QStringLiteral("BtnSave"));
                              Driver::Click(QStringLiteral("BtnSaveClose"));
                          });
        },
        QStringLiteral("BtnCancel"), [] { Driver::Click(QStringLiteral("BtnSave")); });
    EXPECT_EQ(Load(m_folder + QStringLiteral("/second.bmp")), WithBasic(scene, -20, 0, 0, 0));
    Driver::DragSlider(QStringLiteral("Liangdu"), 10);
    Driver::Modal([&] { Frame().close(); }, QStringLiteral("BtnCancel"),
                  [] { Driver::Click(QStringLiteral("BtnCancel")); });
    EXPECT_FALSE(Frame().isVisible()) << "no throws the work away and closes";
}
