// SPDX-License-Identifier: GPL-3.0-or-later
#include "LayerRules.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string Licence = "// SPDX-License-Identifier: GPL-3.0-or-later";

std::string Joined(const Findings& findings) {
    std::string text;
    for (const std::string& finding : findings) text += finding + "\n";
    return text;
}

const std::vector<SourceFile>& ProjectSources() {
    static const std::vector<SourceFile> files = ReadTree(QUINCE_SOURCE_DIR, {".h", ".cpp"});
    return files;
}

const std::vector<SourceFile>& ProjectLists() {
    static const std::vector<SourceFile> files = ReadTree(QUINCE_SOURCE_DIR, {"CMakeLists.txt", ".cmake"});
    return files;
}

SourceFile Header(const std::string& path) {
    return {path, {Licence, "#pragma once"}};
}

SourceFile Including(const std::string& path, const std::string& include) {
    return {path, {Licence, "#include " + include}};
}

}  // namespace

// ---- the project itself ----

TEST(Project, SourcesAreFound) {
    EXPECT_GT(ProjectSources().size(), 20u);
    EXPECT_GT(ProjectLists().size(), 10u);
}

TEST(Project, NoFileIncludesUpwardOrSideways) {
    EXPECT_EQ(Joined(CheckLayers(ProjectSources())), "");
}

TEST(Project, LibrariesCoreAndLogicSeeNoWidget) {
    EXPECT_EQ(Joined(CheckWidgetFree(ProjectSources())), "");
}

TEST(Project, HeaderNamesAreUnique) {
    EXPECT_EQ(Joined(CheckUniqueHeaders(ProjectSources())), "");
}

TEST(Project, EverySourceIsInSomeList) {
    EXPECT_EQ(Joined(CheckListed(ProjectSources(), ProjectLists())), "");
}

TEST(Project, EverySourceAndListNamesItsLicence) {
    EXPECT_EQ(Joined(CheckLicence(ProjectSources())), "");
    EXPECT_EQ(Joined(CheckLicence(ProjectLists())), "");
}

TEST(Project, EveryHeaderHasPragmaOnce) {
    EXPECT_EQ(Joined(CheckPragmaOnce(ProjectSources())), "");
}

TEST(Project, NoSourceIsTooLong) {
    EXPECT_EQ(Joined(CheckLength(ProjectSources())), "");
}

// ---- the rules, on made-up trees ----

TEST(LayerRule, NamesFileLineIncludeAndTheWayOut) {
    const Findings findings =
        CheckLayers({Header("canvas/CBaseWnd.h"), Including("tools/geometry/CCutLogic.cpp", "\"CBaseWnd.h\"")});
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(
        findings[0],
        "tools/geometry/CCutLogic.cpp:2 includes canvas/CBaseWnd.h\n"
        "  a logic object may use canvas/logic, core, platform and libs; hand the view size in as a number instead");
}

TEST(LayerRule, DownwardIsAllowed) {
    EXPECT_THAT(
        CheckLayers(
            {Header("libs/base/Bitmap.h"), Header("core/History/Step.h"), Header("canvas/CBaseWnd.h"),
             Header("platform/IniFile.h"), Including("app/MainFrame.cpp", "\"CBaseWnd.h\""),
             Including("canvas/CBaseWnd.cpp", "\"Step.h\""), Including("core/History/Ring.cpp", "\"IniFile.h\""),
             Including("platform/skin/Window.cpp", "\"IniFile.h\""), Including("libs/pcfile/Png.cpp", "\"Bitmap.h\"")}),
        IsEmpty());
}

TEST(LayerRule, LogicObjectsShareOneFolderOfTheCanvas) {
    EXPECT_THAT(CheckLayers({Header("canvas/logic/PictureView.h"), Header("core/History/Step.h"),
                             Including("tools/geometry/crop/CCutLogic.cpp", "\"PictureView.h\""),
                             Including("canvas/CBaseWnd.cpp", "\"PictureView.h\""),
                             Including("canvas/logic/SnapshotLogic.cpp", "\"Step.h\"")}),
                IsEmpty());
    EXPECT_EQ(CheckWidgetFree({Including("canvas/logic/PictureView.h", "<QtWidgets/QWidget>")}).size(), 1u);
}

TEST(LayerRule, SameTargetIsAllowedAcrossItsFolders) {
    EXPECT_THAT(CheckLayers({Header("core/Params/Basic.h"), Including("core/History/Ring.cpp", "\"Basic.h\""),
                             Header("tools/adjust/CAdjustLogic.h"),
                             Including("tools/adjust/CAdjustWnd.cpp", "\"CAdjustLogic.h\"")}),
                IsEmpty());
}

TEST(LayerRule, UpwardFromEveryLayerIsFound) {
    const std::vector<std::string> order{"app",           "save",         "tools/adjust", "canvas",
                                         "platform/skin", "canvas/logic", "telemetry",    "core",
                                         "platform",      "libs/pcfile",  "libs/base"};
    for (std::size_t lower = 1; lower < order.size(); ++lower) {
        for (std::size_t upper = 0; upper < lower; ++upper) {
            const std::vector<SourceFile> tree{Header(order[upper] + "/Above.h"),
                                               Including(order[lower] + "/Below.cpp", "\"Above.h\"")};
            EXPECT_EQ(CheckLayers(tree).size(), 1u) << order[lower] << " must not see " << order[upper];
        }
    }
}

TEST(LayerRule, NeighboursDoNotSeeEachOther) {
    EXPECT_EQ(CheckLayers(
                  {Header("tools/geometry/crop/CropWnd.h"), Including("tools/adjust/CAdjustWnd.cpp", "\"CropWnd.h\"")})
                  .size(),
              1u);
    EXPECT_EQ(CheckLayers({Header("libs/pcdsp/PC_Dsp.h"), Including("libs/pcfile/Png.cpp", "\"PC_Dsp.h\"")}).size(),
              1u);
}

TEST(LayerRule, EveryToolIsATargetOfItsOwnAlsoInAFolderOfTools) {
    const auto findings = [](const std::string& header, const std::string& source) {
        return CheckLayers({Header(header), Including(source, '"' + header.substr(header.rfind('/') + 1) + '"')})
            .size();
    };
    EXPECT_EQ(findings("tools/geometry/crop/CropRatio.h", "tools/geometry/resize/CSizeWnd.cpp"), 1u);
    EXPECT_EQ(findings("tools/geometry/crop/CropRatio.h", "tools/geometry/crop/CCutWnd.cpp"), 0u);
    EXPECT_EQ(findings("beauty/teeth/CYaChiMBLogic.h", "beauty/lips/CChunCaiLogic.cpp"), 1u);
    EXPECT_EQ(findings("beauty/BrushLogic/MaskBrush.h", "beauty/lips/CChunCaiLogic.cpp"), 0u);
    EXPECT_EQ(findings("beauty/lips/CChunCaiLogic.h", "beauty/BrushLogic/MaskBrush.cpp"), 1u);
    EXPECT_EQ(findings("effects/CEffectLogic.h", "tools/adjust/CAdjustWnd.cpp"), 1u);
}

TEST(LayerRule, AngleBracketsHideNothing) {
    EXPECT_EQ(CheckLayers({Header("app/MainFrame.h"), Including("core/History/Ring.cpp", "<MainFrame.h>")}).size(), 1u);
}

TEST(LayerRule, ForeignHeadersAreNobodysBusiness) {
    EXPECT_THAT(
        CheckLayers({Header("app/MainFrame.h"), Including("libs/base/A.cpp", "<vector>"),
                     Including("libs/base/B.cpp", "\"SimpleIni.h\""), Including("core/C.cpp", "<sys/MainFrame.h>")}),
        IsEmpty());
}

TEST(LayerRule, PathsInIncludesAreFound) {
    EXPECT_THAT(
        CheckLayers({Header("libs/base/Bitmap.h"), Including("canvas/A.cpp", "\"../libs/base/Bitmap.h\"")}),
        ElementsAre(HasSubstr("canvas/A.cpp:2 includes ../libs/base/Bitmap.h\n  headers are included by bare name")));
}

TEST(LayerRule, TheProgramNeverIncludesItsTests) {
    const std::vector<SourceFile> tree{Header("tests/harness/TestHome.h"), Including("app/Main.cpp", "\"TestHome.h\""),
                                       Including("tests/app/MainTest.cpp", "\"TestHome.h\"")};
    EXPECT_THAT(CheckLayers(tree), ElementsAre(HasSubstr("app/Main.cpp:2 includes tests/harness/TestHome.h")));
}

TEST(WidgetRule, FindsWidgetsBelowTheWindows) {
    for (const char* folder : {"libs/pcdsp", "libs/base", "platform", "core/History", "telemetry"})
        EXPECT_EQ(CheckWidgetFree({Including(std::string(folder) + "/A.cpp", "<QtWidgets/QWidget>")}).size(), 1u)
            << folder;
    EXPECT_THAT(
        CheckWidgetFree({Including("platform/skin/A.cpp", "<QtWidgets/QWidget>"),
                         Including("core/B.cpp", "<QtCore/QString>"), Including("core/C.cpp", "<QtGui/QImage>")}),
        IsEmpty());
}

TEST(WidgetRule, FindsWidgetsInLogicObjects) {
    EXPECT_THAT(CheckWidgetFree({Including("tools/adjust/CAdjustLogic.h", "<QtWidgets/QSlider>"),
                                 Including("tools/adjust/CAdjustWnd.h", "<QtWidgets/QSlider>")}),
                ElementsAre(HasSubstr("tools/adjust/CAdjustLogic.h:2 includes QtWidgets/QSlider\n  a logic object")));
}

TEST(WidgetRule, AsksForTheModuleWhereTheBareNameDoesNotTell) {
    EXPECT_THAT(CheckWidgetFree({Including("core/A.cpp", "<QWidget>")}), ElementsAre(HasSubstr("name the Qt module")));
}

TEST(ListRule, FindsTheSourceThatNobodyBuilds) {
    const std::vector<SourceFile> lists{
        {"core/CMakeLists.txt", {"quince_library(x SOURCES History/A.cpp", "  B.h) # C.h"}},
        {"cmake/Quince.cmake", {"${PROJECT_SOURCE_DIR}/cmake/P.h"}}};
    EXPECT_THAT(CheckListed({Header("core/History/A.cpp"), Header("core/B.h"), Header("cmake/P.h")}, lists), IsEmpty());
    EXPECT_THAT(CheckListed({Header("core/C.h"), Header("core/A.cpp")}, lists),
                ElementsAre(HasSubstr("core/C.h is named by no"), HasSubstr("core/A.cpp is named by no")));
}

TEST(LicenceRule, WantsItFirstAndExactly) {
    EXPECT_THAT(CheckLicence({Header("a.h"), {"CMakeLists.txt", {"# SPDX-License-Identifier: GPL-3.0-or-later"}}}),
                IsEmpty());
    EXPECT_EQ(CheckLicence({{"a.h", {}}, {"b.h", {"#pragma once", Licence}}, {"c.h", {Licence + " "}}}).size(), 3u);
}

TEST(HeaderRule, WantsPragmaOnceAndOneOwnerPerName) {
    EXPECT_THAT(CheckPragmaOnce({Header("a.h"), {"b.cpp", {Licence}}}), IsEmpty());
    EXPECT_EQ(CheckPragmaOnce({{"a.h", {Licence}}}).size(), 1u);
    EXPECT_THAT(CheckUniqueHeaders({Header("app/A.h"), Header("core/B.h"), Header("tests/a/A.h")}), IsEmpty());
    EXPECT_THAT(CheckUniqueHeaders({Header("app/A.h"), Header("core/A.h")}),
                ElementsAre(HasSubstr("app/A.h, core/A.h")));
}

TEST(LengthRule, StopsAtSixHundredLines) {
    EXPECT_THAT(CheckLength({{"a.cpp", std::vector<std::string>(600)}}), IsEmpty());
    EXPECT_EQ(CheckLength({{"a.cpp", std::vector<std::string>(601)}}).size(), 1u);
}
