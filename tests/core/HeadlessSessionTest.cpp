// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "AppPaths.h"
#include "Messages.h"
#include "PC_File.h"
#include "RunTask.h"
#include "ToyTool.h"

using namespace HistorySteps;

namespace {

// A batch program in small: no window anywhere, and the same tasks, tool logic and history as the program with windows.
TEST(HeadlessSession, OpensEditsUndoesLeavesAndSavesThroughTasks) {
    CHistoryManager history(AppPath(QStringLiteral("Temp/UndoTemp")));
    const std::wstring source = AppPath(QStringLiteral("source.bin")).toStdWString();
    const std::wstring target = AppPath(QStringLiteral("target.bin")).toStdWString();
    ASSERT_TRUE(PC_File::ImageSaveTobinary(Colour(500), source));

    std::unique_ptr<ToyTool> tool;
    ASSERT_TRUE(RunTask([&](CObjProgress& sink) {
        EXPECT_FALSE(OnMainThread());
        const Bitmap picture = PC_File::ImageReadFrombinary(source);
        sink.SetValue(50.0f);
        EXPECT_TRUE(history.OpenImage(picture));
        tool = std::make_unique<ToyTool>(history);
    }));
    tool->Slide(20);
    EXPECT_EQ(tool->committer.Commit(), CommitResult::Committed);
    tool->Bake();
    tool->Slide(3);
    EXPECT_TRUE(tool->committer.Undo());
    EXPECT_TRUE(tool->committer.Redo());
    ASSERT_TRUE(RunTask([&](CObjProgress&) { EXPECT_TRUE(tool->Leave()); }));
    ASSERT_TRUE(PC_File::ImageSaveTobinary(history.CurrentBitmap(), target));

    EXPECT_EQ(ColourOf(PC_File::ImageReadFrombinary(target)), 523);
    EXPECT_EQ(ColourOf(history.CloneCurrent()->ReadImage()), 523);
    EXPECT_EQ(ColourOf(PC_File::ImageReadFrombinary(source)), 500);
    history.Reset();
}

}  // namespace
