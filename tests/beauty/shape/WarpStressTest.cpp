// SPDX-License-Identifier: GPL-3.0-or-later
// Two thousand strokes with zooms, undos and changes of the tool in between, ended on a worker while this thread
// paints, as the progress window has it.
#include <future>

#include "ShapeVisit.h"
#include "TestHome.h"
#include "TestPictures.h"
#include "WatchfulSink.h"

namespace {

// Ends the stroke on another thread; meanwhile this one reads what a paint reads.
bool EndBesidePaints(WarpLogic& tool, int allowed) {
    auto end = std::async(std::launch::async, [&] {
        WatchfulSink sink(allowed);
        return tool.EndStroke({&sink, 0, 100});
    });
    while (end.wait_for(std::chrono::microseconds(50)) != std::future_status::ready) {
        const CanvasView view = tool.View();
        EXPECT_EQ(view.bitmap.Width(), view.dest.width());
        EXPECT_EQ(tool.Geometry().ScreenRect(), view.dest);
    }
    return end.get();
}

}  // namespace

TEST(ShapeStress, TwoThousandStrokes) {
    const Bitmap picture = TestPictures::Noise(150, 110, 9);
    CHistoryManager history(TestHome::Path() + QStringLiteral("/Temp/StressShape/"));
    history.OpenImage(picture);
    history.SetCurrentBitmap(picture);
    auto slim = std::make_unique<CShouLianSSLogic>(history);
    auto eye = std::make_unique<CYanJingFDLogic>(history);
    for (WarpLogic* tool : {static_cast<WarpLogic*>(slim.get()), static_cast<WarpLogic*>(eye.get())})
        tool->SetViewSize(180, 140);
    slim->SetSource(picture);
    bool onSlim = true;
    ShapeVisit slimTwin(*slim, true);
    slimTwin.Take(picture);
    for (int stroke = 0; stroke < 2000; ++stroke) {
        WarpLogic& tool = onSlim ? static_cast<WarpLogic&>(*slim) : *eye;
        if (stroke % 11 == 3) tool.SetZoom(0.5 + stroke % 7 * 0.4);
        if (stroke % 37 == 0) tool.FitToWindow();
        tool.SetPenSize(6 + stroke % 30);
        tool.SetStrength(20 + stroke % 60);
        const QRect place = tool.Geometry().ScreenRect();
        const QPoint at(place.left() + stroke * 13 % place.width(), place.top() + stroke * 7 % place.height());
        ASSERT_TRUE(tool.BeginStroke(at)) << stroke;
        for (int i = 0; i < 4; ++i) tool.MoveStroke(at + QPoint(3 * i, stroke % 5 - i));
        switch (stroke % 10) {
            case 0:
                tool.DropStroke();
                break;
            case 1:
                EndBesidePaints(tool, 1);  // Esc
                break;
            case 2:
                tool.Undo();  // in the middle of it
                break;
            case 3:
                ASSERT_EQ(tool.RenderResult().Width(), 150);
                tool.EndStroke({});
                break;
            case 4:
                tool.Jump(stroke % (history.m_count + 1));
                break;
            case 5:
                tool.Apply();
                onSlim = !onSlim;
                (onSlim ? static_cast<WarpLogic&>(*slim) : *eye).Reset();
                ASSERT_TRUE((onSlim ? static_cast<WarpLogic&>(*slim) : *eye).TakeViewState());
                break;
            default:
                EndBesidePaints(tool, INT_MAX);
                if (stroke % 3 == 0) tool.Undo();
                if (stroke % 6 == 0) tool.Redo();
        }
        WarpLogic& now = onSlim ? static_cast<WarpLogic&>(*slim) : *eye;
        ASSERT_FALSE(now.HasWaiting()) << stroke;
        ASSERT_EQ(now.ImageSize(), QSize(150, 110)) << stroke;
        ASSERT_LE(history.m_count, 31);
    }
    // The tool still does what it says.
    WarpLogic& last = onSlim ? static_cast<WarpLogic&>(*slim) : *eye;
    const Bitmap result = last.RenderResult();
    slim->Reset();
    slim->SetSource(result);
    slimTwin.Take(result);
    const QPoint middle = slim->Geometry().ScreenRect().center();
    slimTwin.Stroke({middle, middle + QPoint(1, 0), middle + QPoint(9, 4)});
    EXPECT_TRUE(slim->Picture() == slimTwin.Expected());
    // An end while places still wait.
    ASSERT_TRUE(slim->BeginStroke(middle));
    for (int i = 0; i < 30; ++i) slim->MoveStroke(middle + QPoint(i, 0));
    slim.reset();
    eye.reset();
}
