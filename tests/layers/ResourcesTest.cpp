// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResourceRules.h"
#include "SourceTree.h"
#include "XmlScan.h"

namespace fs = std::filesystem;

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const fs::path Resources = fs::path(QUINCE_SOURCE_DIR) / "resources";
const fs::path English = Resources / "I18N" / "1033";
const fs::path Chinese = Resources / "I18N" / "2052";

std::string Joined(const std::vector<std::string>& findings) {
    std::string text;
    for (const std::string& finding : findings) text += finding + "\n";
    return text;
}

std::vector<fs::path> FilesEnding(const fs::path& root, const std::string& extension) {
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::recursive_directory_iterator it(root, error), end; it != end; it.increment(error))
        if (it->is_regular_file() && it->path().extension() == extension) files.push_back(it->path());
    return files;
}

}  // namespace

// ---- the project's resources ----

TEST(Resources, BothLanguagesHaveTheSameFiles) {
    EXPECT_FALSE(FilesEnding(English, ".xml").empty());
    EXPECT_EQ(Joined(CompareFiles(English, Chinese)), "");
}

TEST(Resources, BothLanguagesHaveTheSameControls) {
    for (const fs::path& skin : FilesEnding(English, ".xml")) {
        const fs::path name = skin.lexically_relative(English);
        EXPECT_EQ(Joined(CompareSkins(name.string(), ReadText(skin), ReadText(Chinese / name))), "");
    }
}

TEST(Resources, EveryControlSaysWhatItDoes) {
    for (const fs::path& folder : {English, Chinese})
        for (const fs::path& skin : FilesEnding(folder, ".xml"))
            EXPECT_EQ(Joined(CheckControlHelp(skin.lexically_relative(Resources).string(), ReadText(skin))), "");
}

TEST(Resources, BothLanguagesHaveTheSameKeys) {
    for (const fs::path& ini : FilesEnding(English, ".ini")) {
        const fs::path name = ini.lexically_relative(English);
        EXPECT_EQ(Joined(CompareInis(name.string(), ReadText(ini), ReadText(Chinese / name))), "");
    }
}

TEST(Resources, IconsAreWellFormed) {
    for (const fs::path& icon : FilesEnding(Resources, ".svg")) {
        const XmlDocument document = ScanXml(ReadText(icon));
        EXPECT_EQ(document.error, "") << icon;
        EXPECT_EQ(document.root.tag, "svg") << icon;
    }
}

// ---- the rules ----

TEST(XmlScan, ReadsElementsAttributesAndText) {
    const XmlDocument d = ScanXml("<?xml version='1.0'?><!-- <x> --><a n=\"1 > 0\"><b/>text<c m='2'>in</c></a>\n");
    EXPECT_EQ(d.error, "");
    EXPECT_EQ(d.root.tag, "a");
    EXPECT_EQ(d.root.Attribute("n"), "1 > 0");
    EXPECT_EQ(d.root.text, "text");
    ASSERT_EQ(d.root.children.size(), 2u);
    EXPECT_EQ(d.root.children[1].text, "in");
}

TEST(XmlScan, RefusesWhatIsNotWellFormed) {
    for (const char* text : {"", "<a>", "<a></b>", "</a>", "<a b></a>", "<a b=c/>", "<a b='1' b='2'/>", "<a/><b/>",
                             "<a", "<!-- <a/>", "< a/>", "<a b='1/>"})
        EXPECT_NE(ScanXml(text).error, "") << text;
    EXPECT_EQ(ScanXml("<a>\n<b>\n</a>").error, "line 3: </a> closes nothing");
}

TEST(SkinRule, FindsAControlThatOneLanguageLacks) {
    const std::string first = "<ui><widget class='QWidget' name='A'><widget class='QLabel' name='B'/></widget></ui>";
    const std::string second = "<ui><widget class='QWidget' name='A'/></ui>";
    EXPECT_THAT(CompareSkins("X.xml", first, first), IsEmpty());
    EXPECT_THAT(CompareSkins("X.xml", first, second), ElementsAre("X.xml (second language) lacks QLabel B"));
    EXPECT_THAT(CompareSkins("X.xml", first, "<ui>"), ElementsAre(HasSubstr("X.xml (second language) line 1")));
}

TEST(SkinRule, FindsAControlWithoutHelp) {
    const std::string bare = "<ui><widget class='QPushButton' name='B'/><widget class='QLabel' name='L'/></ui>";
    EXPECT_THAT(CheckControlHelp("X.xml", bare), ElementsAre("X.xml: B has no toolTip"));
    const std::string helped =
        "<ui><widget class='QPushButton' name='B'><property name='toolTip'><string>t</string></property></widget></ui>";
    EXPECT_THAT(CheckControlHelp("X.xml", helped), IsEmpty());
}

TEST(IniRule, FindsMissingEmptyAndDoubledKeys) {
    const std::string first = "\xEF\xBB\xBF[Language]\r\nids_a=A\r\nids_b = B ; c\r\n[Title]\nids_a=T\n";
    EXPECT_EQ(ReadIni(first).at("Language/ids_b"), "B ; c");
    EXPECT_THAT(CompareInis("L.ini", first, first), IsEmpty());
    EXPECT_THAT(CompareInis("L.ini", first, "[Language]\nids_a=A\nids_a=B\nids_b=\n[Title]\nids_a=T\n"),
                ElementsAre("L.ini (second language) has Language/ids_a twice",
                            "L.ini (second language) has no text for Language/ids_b"));
    EXPECT_THAT(CompareInis("L.ini", first, "[Language]\nids_a=A\nids_b=B\n"),
                ElementsAre("L.ini (second language) lacks Title/ids_a"));
}

TEST(IniRule, ReadsUtf16) {
    std::string bytes = "\xFF\xFE";
    for (const char c : std::string("[A]\nk=v\n")) bytes += {c, '\0'};
    EXPECT_EQ(ReadIni(bytes).at("A/k"), "v");
}
