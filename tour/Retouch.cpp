// SPDX-License-Identifier: GPL-3.0-or-later
#include "Retouch.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include "CMainFrameWnd.h"
#include "Driver.h"
#include "Stage.h"

namespace {

void Say(const char* what) {
    std::fprintf(stderr, "  %s\n", what);
}

}  // namespace

bool TourRetouch(const QString& picture, const QString& folder) {
    QDir().mkpath(folder);
    const QString saved = folder + QStringLiteral("/retouched.jpg");
    QFile::remove(saved);

    Stage stage(QStringLiteral("1033"));
    Say("opening the picture");
    CMainFrameWnd& frame = stage.Open(picture);
    if (!frame.Mid().HasImage()) return false;

    Say("portrait scene, then brightness, contrast and sharpness by hand");
    Driver::Click(QStringLiteral("BtnPortrait"));
    Driver::WaitFor(QStringLiteral("the scene"), [&] { return !frame.Mid().IsBusy(); });
    Driver::DragSlider(QStringLiteral("Liangdu"), 20);
    Driver::DragSlider(QStringLiteral("Duibidu"), 8);
    Driver::DragSlider(QStringLiteral("Ruidu"), 20);

    Say("holding compare, undo, redo");
    Driver::Press(QStringLiteral("BtnCompare"));
    Driver::Wait(150);
    Driver::Release(QStringLiteral("BtnCompare"));
    Driver::Key(Qt::Key_Z, Qt::ControlModifier);
    Driver::Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    if (!Driver::Shot(&frame).save(folder + QStringLiteral("/window.png"))) return false;

    Say("saving");
    Driver::Modal([] { Driver::Click(QStringLiteral("btnSave")); }, QStringLiteral("EdtPath"),
                  [&] {
                      Driver::Type(QStringLiteral("EdtPath"), folder);
                      Driver::Type(QStringLiteral("EdtName"), QStringLiteral("retouched"));
                      Driver::Click(QStringLiteral("BtnSave"));
                      Driver::WaitFor(QStringLiteral("the saved page"),
                                      [] { return Driver::IsThere(QStringLiteral("BtnSaveOpenPath")); });
                      Driver::Click(QStringLiteral("BtnSaveClose"));
                  });
    return QFile::exists(saved);
}
