// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include "CWordLogic.h"
#include "Language.h"
#include "TestHome.h"
#include "TextDrawing.h"

// A logic object with a picture of 800 x 600 that lies in a client of 1000 x 700 at 100 %, its corner at (100, 50).
class WordTest : public testing::Test {
  protected:
    static constexpr QPoint Offset{100, 50};

    void SetUp() override {
        SetLanguage(QStringLiteral("1033"));
        Open(TestPictures::Face(800, 600));
    }
    void Open(const Bitmap& picture) {
        opened = picture;
        history.OpenImage(picture);
        history.SetCurrentBitmap(picture);
        logic.Reset();
        logic.SetViewSize(1000, 700);
        logic.SetSource(picture);
        logic.SetZoom(1.0);
    }
    static WordStyle Style(const QString& text, int size = 40) {
        WordStyle style;
        style.text = text;
        style.fontSize = size;
        return style;
    }
    const StringParams& Add(const QString& text, QPoint at, int size = 40) {
        EXPECT_TRUE(logic.AddText(Style(text, size)));
        logic.ChangeSelected(
            [&](StringParams& params) { params.SetPosition(static_cast<float>(at.x()), static_cast<float>(at.y())); });
        logic.CommitStep();
        return logic.Text(logic.Selected());
    }
    QPoint Middle(int index) const { return logic.BoxOf(index).Centre(); }
    QPoint RotateAt(int index) const { return logic.ButtonsOf(index).rotateCentre.toPoint(); }
    QPoint DeleteAt(int index) const { return logic.ButtonsOf(index).deleteCentre.toPoint(); }
    void Click(QPoint at) {
        logic.Press(at);
        logic.Release(at);
    }
    QStringList Texts() const {
        QStringList texts;
        for (int i = 0; i < logic.Count(); ++i) texts << logic.Text(i).GetText();
        return texts;
    }

    CHistoryManager history{TestHome::Path() + QStringLiteral("/Temp/UndoTemp/")};
    CWordLogic logic{history};
    Bitmap opened;
};
