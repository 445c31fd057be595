// SPDX-License-Identifier: GPL-3.0-or-later
#include "Screens.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtTest/QTest>

#include "AppPaths.h"
#include "CBaseWnd.h"
#include "CMainFrameWnd.h"
#include "CShareWnd.h"
#include "Driver.h"
#include "IniFile.h"
#include "Language.h"
#include "Stage.h"
#include "Strokes.h"

namespace {

class Album {
  public:
    Album(QString folder, QString suffix) : m_folder(std::move(folder)), m_suffix(std::move(suffix)) {
        QDir().mkpath(m_folder);
    }
    // A picture of the window under a name that says what it shows.
    void Keep(QWidget& frame, const QString& what) const {
        const QString path = QStringLiteral("%1/%2%3.jpg").arg(m_folder, what, m_suffix);
        if (!Driver::Shot(&frame).save(path, nullptr, Quality)) qFatal("can't write %s", qPrintable(path));
    }

  private:
    static constexpr int Quality = 90;

    QString m_folder;
    QString m_suffix;
};

void Retouch() {
    Driver::Click(QStringLiteral("BtnPortrait"));
    Driver::Wait(300);
    Driver::DragSlider(QStringLiteral("Liangdu"), 20);
    Driver::DragSlider(QStringLiteral("Duibidu"), 18);
    Driver::DragSlider(QStringLiteral("Ruidu"), 15);
}

// An effect of the first category in force, and then a look at another category.
void KeepEffects(CMainFrameWnd& frame, const Album& album) {
    Driver::Click(QStringLiteral("btnTexiao"));
    Driver::WaitForRows(QStringLiteral("ListViewFilm"), 8);
    Driver::ClickRow(QStringLiteral("ListViewFilm"), 3);
    Driver::DragSlider(QStringLiteral("SliderSetAlpha"), 80);
    album.Keep(frame, QStringLiteral("effects"));
    Driver::Click(QStringLiteral("BtnLomo"));
    Driver::WaitForRows(QStringLiteral("ListViewLomo"), 8);
    Driver::ClickRow(QStringLiteral("ListViewLomo"), 1);
    album.Keep(frame, QStringLiteral("effects-lomo"));
}

// A frame of each page in force.
void KeepFrames(CMainFrameWnd& frame, const Album& album) {
    Driver::Click(QStringLiteral("btnTab4"));
    Driver::WaitForRows(QStringLiteral("BorderListViewJianDan"), 12);
    Driver::ClickRow(QStringLiteral("BorderListViewJianDan"), 3);
    album.Keep(frame, QStringLiteral("frames"));
    Driver::Click(QStringLiteral("BtnUndo"));
    Driver::Click(QStringLiteral("BtnXuanCai"));
    Driver::WaitForRows(QStringLiteral("BorderListViewXuanCai"), 12);
    Driver::ClickRow(QStringLiteral("BorderListViewXuanCai"), 10);
    Driver::DragSlider(QStringLiteral("SliderSetAlpha"), 80);
    album.Keep(frame, QStringLiteral("frames-ornate"));
}

// A stroke across the middle of the picture at a share of its height.
void PaintAcross(CMainFrameWnd& frame, double height) {
    CBaseWnd* canvas = frame.Mid().Canvas();
    QRectF source;
    QRect place;
    canvas->GetViewRects(&source, &place);
    const QPoint middle(place.center().x(), place.top() + static_cast<int>(place.height() * height));
    Strokes::Draw(*canvas, Strokes::Line(middle - QPoint(28, 0), middle + QPoint(28, 0), 20));
}

// A look of beauty in force, and the two tools that push: a cheek slimmed, an eye enlarged.
void KeepShape(CMainFrameWnd& frame, const Album& album) {
    Driver::WaitForRows(QStringLiteral("ListViewBeauty"), 8);
    Driver::ClickRow(QStringLiteral("ListViewBeauty"), 4);
    Driver::DragSlider(QStringLiteral("SliderSetAlpha"), 85);
    album.Keep(frame, QStringLiteral("beauty-looks"));
    Driver::Click(QStringLiteral("BtnSouShen"));
    CBaseWnd* canvas = frame.Mid().Canvas();
    QRectF source;
    QRect place;
    canvas->GetViewRects(&source, &place);
    const auto at = [&](double x, double y) {
        return place.topLeft() + QPoint(static_cast<int>(place.width() * x), static_cast<int>(place.height() * y));
    };
    Strokes::Draw(*canvas, Strokes::Line(at(0.31, 0.6), at(0.34, 0.59), 12));
    album.Keep(frame, QStringLiteral("beauty-slim"));
    Driver::Click(QStringLiteral("BtnEyes"));
    Driver::Click(QStringLiteral("BtnEyesZoom"));
    canvas = frame.Mid().Canvas();
    Strokes::Draw(*canvas, {at(0.43, 0.40), at(0.43, 0.40)});
    album.Keep(frame, QStringLiteral("beauty-enlarge"));
}

// The beauty tools' panels, each with a stroke of its brush.
void KeepBeauty(CMainFrameWnd& frame, const Album& album) {
    Driver::Click(QStringLiteral("btnMeiRong"));
    KeepShape(frame, album);
    Driver::Click(QStringLiteral("BtnPiFu"));
    Driver::Click(QStringLiteral("BtnFuSe"));
    album.Keep(frame, QStringLiteral("beauty-tone"));
    Driver::Click(QStringLiteral("BtnPiFu3"));
    album.Keep(frame, QStringLiteral("beauty-tone-free"));
    Driver::Click(QStringLiteral("BtnMoPi"));
    PaintAcross(frame, 0.3);
    album.Keep(frame, QStringLiteral("beauty-smooth"));
    Driver::Click(QStringLiteral("BtnQuBan"));
    album.Keep(frame, QStringLiteral("beauty-spots"));
    Driver::Click(QStringLiteral("BtnEyes"));
    Driver::Click(QStringLiteral("BtnEyesHeiYan"));
    album.Keep(frame, QStringLiteral("beauty-circles"));
    Driver::Click(QStringLiteral("BtnEyesHongYan"));
    album.Keep(frame, QStringLiteral("beauty-redeye"));
    Driver::Click(QStringLiteral("BtnEyesBianSe"));
    album.Keep(frame, QStringLiteral("beauty-eyes"));
    Driver::Click(QStringLiteral("BtnMouth"));
    Driver::Click(QStringLiteral("BtnMouthColor"));
    PaintAcross(frame, 0.64);
    album.Keep(frame, QStringLiteral("beauty-lips"));
    Driver::Click(QStringLiteral("BtnMouthBeauty"));
    album.Keep(frame, QStringLiteral("beauty-teeth"));
}

void KeepReview(CMainFrameWnd& frame, const Album& album) {
    Driver::Press(QStringLiteral("BtnCompare"));
    album.Keep(frame, QStringLiteral("compare-hold"));
    Driver::Release(QStringLiteral("BtnCompare"));
    frame.Mid().SetCompareMode(2);
    album.Keep(frame, QStringLiteral("compare-side"));
    frame.Mid().SetCompareMode(0);
    Driver::Click(QStringLiteral("BtnMenuUndo"));
    album.Keep(frame, QStringLiteral("history"));
    Driver::Key(Qt::Key_Escape);
    for (int i = 0; i < 6; ++i) Driver::Click(QStringLiteral("BtnZoomIn"));
    album.Keep(frame, QStringLiteral("navigator"));
    Driver::Key(Qt::Key_0, Qt::ControlModifier);
}

// Rotation, and back to where the tour was.
void KeepRotation(CMainFrameWnd& frame, const Album& album) {
    Driver::Click(QStringLiteral("btnTab2"));
    Driver::Click(QStringLiteral("BtnXuanZhuan"));
    Driver::HoldSlider(QStringLiteral("SlideRenYiXuanZhuan"), -9, [&] { album.Keep(frame, QStringLiteral("rotate")); });
    Driver::Click(QStringLiteral("BtnYouXuanZhuan"));
    Driver::Click(QStringLiteral("BtnZuoYouFanZhuan"));
    album.Keep(frame, QStringLiteral("rotated"));
    Driver::Click(QStringLiteral("BtnChongZhi"));
    Driver::Click(QStringLiteral("btnTab1"));
}

// Crop and resize, and back to where the tour was.
void KeepEditing(CMainFrameWnd& frame, const Album& album) {
    Driver::Click(QStringLiteral("btnTab2"));
    Driver::Click(QStringLiteral("BtnCaiJian"));
    QWidget* canvas = frame.Mid().Canvas();
    const QPoint middle = canvas->rect().center();
    Driver::DragOn(canvas, middle - QPoint(170, 200), middle + QPoint(130, 150));
    album.Keep(frame, QStringLiteral("crop"));
    Driver::ChooseItem(QStringLiteral("ComboZiYouCaiJian"), 1);
    album.Keep(frame, QStringLiteral("crop-ratio"));
    Driver::Click(QStringLiteral("BtnCancel"));
    Driver::Click(QStringLiteral("BtnXiuGaiChiCun"));
    Driver::Type(QStringLiteral("EditKuanDu"), QStringLiteral("480"));
    album.Keep(frame, QStringLiteral("resize"));
    Driver::Click(QStringLiteral("btnTab1"));
}

// Texts in five scripts, the palette, and back to where the tour was.
void KeepTexts(CMainFrameWnd& frame, const Album& album) {
    struct Line {
        const char16_t* text;
        int size;   // picture pixels
        QPoint by;  // logical pixels from the middle
        const char* option;
    };
    const Line lines[] = {{u"Spring light", 260, {-40, -230}, "BtnXieTi"},
                          {u"春光", 380, {190, -130}, "BtnShuPai"},
                          {u"نور الربيع", 220, {-140, 205}, "BtnYinYing"},
                          {u"אור האביב", 200, {130, 215}, "BtnCuTi"},
                          {u"Ånna é ❤️🌸😊", 200, {-20, 262}, "BtnYinYing"}};
    Driver::Click(QStringLiteral("btnTab3"));
    album.Keep(frame, QStringLiteral("text-empty"));
    QWidget* canvas = frame.Mid().Canvas();
    const QPoint middle = canvas->rect().center();
    for (const Line& line : lines) {
        Driver::Type(QStringLiteral("EditWenZi"), QString::fromUtf16(line.text));
        Driver::Click(QLatin1String(line.option));
        Driver::Click(QStringLiteral("BtnAddWenZi"));
        Driver::Type(QStringLiteral("EditZiHao"), QString::number(line.size));
        Driver::DragOn(canvas, middle, middle + line.by);
        QTest::keyClick(canvas, Qt::Key_Escape);
        Driver::Click(QLatin1String(line.option));
    }
    QTest::mouseClick(canvas, Qt::LeftButton, {}, middle + lines[0].by);
    album.Keep(frame, QStringLiteral("text"));
    Driver::Click(QStringLiteral("BtnColor"));
    album.Keep(frame, QStringLiteral("text-colour"));
    Driver::Click(QStringLiteral("BtnQuSe"));
    album.Keep(frame, QStringLiteral("text-pick"));
    Driver::Click(QStringLiteral("BtnQuSe"));
    Driver::Click(QStringLiteral("BtnColor_23"));
    Driver::Key(Qt::Key_Z, Qt::ControlModifier);
    Driver::Click(QStringLiteral("btnTab1"));
}

void KeepSaving(CMainFrameWnd& frame, const Album& album) {
    Driver::Modal([] { Driver::Click(QStringLiteral("btnSave")); }, QStringLiteral("EdtPath"),
                  [&] {
                      album.Keep(frame, QStringLiteral("save"));
                      Driver::Click(QStringLiteral("BtnSaveHuaZhi"));
                      album.Keep(frame, QStringLiteral("save-quality"));
                      Driver::Type(QStringLiteral("EdtPath"), QDir::tempPath());
                      Driver::Click(QStringLiteral("BtnCover"));
                      album.Keep(frame, QStringLiteral("save-cover"));
                      Driver::Click(QStringLiteral("BtnCover"));
                      Driver::Type(QStringLiteral("EdtName"),
                                   QStringLiteral("portrait_%1").arg(QCoreApplication::applicationPid()));
                      Driver::Click(QStringLiteral("BtnSave"));
                      Driver::WaitFor(QStringLiteral("the saved page"),
                                      [] { return Driver::IsThere(QStringLiteral("BtnSaveOpenPath")); });
                      album.Keep(frame, QStringLiteral("saved"));
                      Driver::Click(QStringLiteral("BtnSaveClose"));
                  });
}

// Opens a window by a button, keeps its picture, and closes it.
void KeepDialog(CMainFrameWnd& frame, const Album& album, const char* button, const char* awaited, const char* what) {
    Driver::Modal([=] { Driver::Click(QLatin1String(button)); }, QLatin1String(awaited),
                  [&] {
                      album.Keep(frame, QLatin1String(what));
                      Driver::Key(Qt::Key_Escape);
                  });
}

void KeepSetting(CMainFrameWnd& frame, const Album& album, const char* entry, const char* awaited, const char* what) {
    Driver::Click(QStringLiteral("btnSetting"));
    KeepDialog(frame, album, entry, awaited, what);
}

// Information, settings, feedback and sharing; what needs an address is shown without one and with one.
void KeepAround(CMainFrameWnd& frame, const Album& album, const QString& picture) {
    Driver::Click(QStringLiteral("OptExif"));
    album.Keep(frame, QStringLiteral("information"));
    Driver::Key(Qt::Key_Escape);
    Driver::Click(QStringLiteral("btnSetting"));
    album.Keep(frame, QStringLiteral("settings"));
    Driver::Key(Qt::Key_Escape);
    KeepSetting(frame, album, "ElementSetting", "Opt1", "settings-size");
    KeepSetting(frame, album, "ElementAbout", "BtnWebSite", "about");
    KeepSetting(frame, album, "ElementNetwork", "OptSend", "network-silent");
    KeepDialog(frame, album, "btnAdjust", "EditReason", "feedback-silent");
    for (const char* key : {"Analytics", "Data", "Feedback"})
        WriteProfileString(QStringLiteral("Addresses"), QLatin1String(key), QStringLiteral("quince.example"),
                           AppPath(QStringLiteral("Addresses.ini")));
    KeepSetting(frame, album, "ElementNetwork", "OptSend", "network");
    KeepDialog(frame, album, "btnAdjust", "EditReason", "feedback");
    CShareWnd share(picture, QStringLiteral("QUINCE Twitter"));
    share.move(300, 100);
    share.show();
    album.Keep(share, QStringLiteral("share"));
}

void KeepQuestion(CMainFrameWnd& frame, const Album& album) {
    Driver::DragSlider(QStringLiteral("Baohedu"), 12);
    Driver::Modal([&] { frame.close(); }, QStringLiteral("BtnCancel"),
                  [&] {
                      album.Keep(frame, QStringLiteral("save-question"));
                      Driver::Key(Qt::Key_Escape);
                  });
}

}  // namespace

void TourScreens(const QString& picture, const QString& folder, const QString& suffix) {
    const Album album(folder, suffix);
    Stage stage(LanguageId());
    album.Keep(stage.Open({}), QStringLiteral("welcome"));
    CMainFrameWnd& frame = stage.Open(picture);
    album.Keep(frame, QStringLiteral("main"));
    Retouch();
    album.Keep(frame, QStringLiteral("adjusted"));
    if (frame.devicePixelRatio() > 1) {
        KeepBeauty(frame, album);
        return KeepEffects(stage.Open(picture), album);
    }
    KeepReview(frame, album);
    KeepRotation(frame, album);
    KeepEditing(frame, album);
    KeepTexts(frame, album);
    KeepSaving(frame, album);
    KeepAround(frame, album, picture);
    KeepQuestion(frame, album);
    frame.resize(1920, 1080);
    album.Keep(frame, QStringLiteral("main-1920x1080"));
    KeepEffects(stage.Open(picture), album);
    KeepFrames(stage.Open(picture), album);
    KeepBeauty(stage.Open(picture), album);
    CMainFrameWnd& wide = stage.Open(picture);
    wide.resize(1920, 1080);
    KeepBeauty(wide, Album(folder, QStringLiteral("-1920x1080") + suffix));
}
