// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectCatalogue.h"

#include <gtest/gtest.h>

#include <array>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtGui/QImage>
#include <set>

#include "AppPaths.h"
#include "CEffect.h"
#include "Language.h"
#include "TestHome.h"
#include "TestPictures.h"

namespace {

struct Expected {
    const char* key;
    std::uint32_t colour;
    const char* thumbnail;
    int (*function)(unsigned char*, int, int, void*, CObjProgress*, int, int);
};

// What the program promises of each effect, by index.
const std::array<Expected, 50> Promised{{
    {"ids_K1", 0xFF398CEA, "film\\1.png", &CEffect::Effect_VSCO_K1},
    {"ids_jiaopian", 0xFF3BA2F1, "film\\2.png", &CEffect::Effect_JiaoPianQuince},
    {"ids_G2", 0xFF2AABF5, "film\\3.png", &CEffect::Effect_VSCO_G2},
    {"ids_C1", 0xFF2AC3F5, "film\\4.png", &CEffect::Effect_VSCO_C1},
    {"ids_A3", 0xFF4BB0D1, "film\\5.png", &CEffect::Effect_VSCO_A3},
    {"ids_qingliang", 0xFF2797BB, "film\\6.png", &CEffect::Effect_QingLiang},
    {"ids_A2", 0xFF107A9C, "film\\7.png", &CEffect::Effect_VSCO_A2},
    {"ids_M5", 0xFF096396, "film\\8.png", &CEffect::Effect_VSCO_M5},
    {"ids_H2", 0xFFF46B78, "pola\\1.png", &CEffect::Effect_VSCO_H2},
    {"ids_P7", 0xFFF35063, "pola\\2.png", &CEffect::Effect_VSCO_P7},
    {"ids_P1", 0xFFFF3968, "pola\\3.png", &CEffect::Effect_VSCO_P1},
    {"ids_P5", 0xFFD52557, "pola\\4.png", &CEffect::Effect_VSCO_P5},
    {"ids_P6", 0xFFE62E4C, "pola\\5.png", &CEffect::Effect_VSCO_P6},
    {"ids_P9", 0xFFE6678B, "pola\\6.png", &CEffect::Effect_VSCO_P9},
    {"ids_P4", 0xFFEB4CA6, "pola\\7.png", &CEffect::Effect_VSCO_P4},
    {"ids_liunian", 0xFFC57EEA, "lomo\\1.png", &CEffect::Effect_LiuNian},
    {"ids_yunduan", 0xFF9E5DE0, "lomo\\2.png", &CEffect::Effect_YunDuan},
    {"ids_Lomo", 0xFF8669D9, "lomo\\3.png", &CEffect::Effect_JingdianLomoQuince},
    {"ids_youge", 0xFF8342CC, "lomo\\4.png", &CEffect::Effect_YouGe},
    {"ids_earlybird", 0xFF4116CE, "lomo\\5.png", &CEffect::Effect_EarlyBird},
    {"ids_fenhongjiaren", 0xFF6919C3, "lomo\\6.png", &CEffect::Effect_FenHongJiaRenQuince},
    {"ids_hudson", 0xFF8C01B4, "lomo\\7.png", &CEffect::Effect_Hudson},
    {"ids_yizhou", 0xFF5D267C, "lomo\\8.png", &CEffect::Effect_YiZhouQuince},
    {"ids_fugu", 0xFFF4C56B, "vintage\\1.png", &CEffect::Effect_FuGuQuince},
    {"ids_gutongse", 0xFFE9A94E, "vintage\\2.png", &CEffect::Effect_GuTongSe},
    {"ids_P2", 0xFFEB8F35, "vintage\\3.png", &CEffect::Effect_VSCO_P2},
    {"ids_1970", 0xFFEB9C35, "vintage\\4.png", &CEffect::Effect_VSCO_1970},
    {"ids_S4", 0xFFFFBA00, "vintage\\5.png", &CEffect::Effect_VSCO_S4},
    {"ids_SE2", 0xFFFFCF27, "vintage\\6.png", &CEffect::Effect_VSCO_SE2},
    {"ids_getefeng", 0xFFE0B300, "vintage\\7.png", &CEffect::Effect_GeTeFengQuince},
    {"ids_T2", 0xFFA8A1A9, "fade\\1.png", &CEffect::Effect_VSCO_T2},
    {"ids_M4", 0xFFB6ABB0, "fade\\2.png", &CEffect::Effect_VSCO_M4},
    {"ids_T1", 0xFFCCC1C3, "fade\\3.png", &CEffect::Effect_VSCO_T1},
    {"ids_SE1", 0xFFCCC0B9, "fade\\4.png", &CEffect::Effect_VSCO_SE1},
    {"ids_T3", 0xFFBEC3B8, "fade\\5.png", &CEffect::Effect_VSCO_T3},
    {"ids_H5", 0xFFB8C3C3, "fade\\6.png", &CEffect::Effect_VSCO_H5},
    {"ids_heibai", 0xFF383838, "bw\\1.png", &CEffect::Effect_HeiBai},
    {"ids_X6", 0xFF514343, "bw\\2.png", &CEffect::Effect_VSCO_X6},
    {"ids_Sliver", 0xFF464E45, "bw\\3.png", &CEffect::Effect_Silver},
    {"ids_B4", 0xFF444853, "bw\\4.png", &CEffect::Effect_VSCO_B4},
    {"ids_X3", 0xFF6C6C6C, "bw\\5.png", &CEffect::Effect_VSCO_X3},
    {"ids_B2", 0xFF1F1818, "bw\\6.png", &CEffect::Effect_VSCO_B2},
    {"ids_X4", 0xFF535450, "bw\\7.png", &CEffect::Effect_VSCO_X4},
    {"ids_Leak1", 0xFFFA9F4B, "leaker\\1.png", &CEffect::Effect_LEAK_1},
    {"ids_Leak6", 0xFFFA684B, "leaker\\2.png", &CEffect::Effect_LEAK_6},
    {"ids_Leak7", 0xFFE04A2D, "leaker\\3.png", &CEffect::Effect_LEAK_7},
    {"ids_Leak9", 0xFFCF5349, "leaker\\4.png", &CEffect::Effect_LEAK_9},
    {"ids_Leak15", 0xFFE46F2F, "leaker\\5.png", &CEffect::Effect_LEAK_15},
    {"ids_light-leak-2", 0xFFCD4634, "leaker\\6.png", &CEffect::Effect_LEAK_LIGHT_LEAK},
    {"ids_LL17", 0xFFDB2300, "leaker\\7.png", &CEffect::Effect_LEAK_LIGHT_LEAK_17},
}};

class Catalogue : public testing::Test {
  protected:
    Catalogue() { SetLanguage(QStringLiteral("1033")); }
    ~Catalogue() override {
        QDir(Folder()).removeRecursively();
        ReadUserLooks();
    }
    static QString Folder() { return TestHome::Path() + QStringLiteral("/Looks"); }
    static void WriteLook(const QString& name, const QByteArray& text) {
        QDir().mkpath(Folder());
        QFile file(Folder() + u'/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    // The smallest table: two points a side, which turns every colour into its opposite.
    static QByteArray Negative(const char* title) {
        QByteArray cube = QByteArray("TITLE \"") + title + "\"\nLUT_3D_SIZE 2\n";
        for (int i = 0; i < 8; ++i)
            cube += QByteArray::number(1 - (i & 1)) + ' ' + QByteArray::number(1 - (i >> 1 & 1)) + ' ' +
                    QByteArray::number(1 - (i >> 2)) + '\n';
        return cube;
    }
};

TEST_F(Catalogue, HasTheFiftyEffectsInTheirOrder) {
    for (int i = 0; i < EffectCount; ++i) {
        const Expected& promised = Promised[static_cast<std::size_t>(i)];
        const CEffectInfo info = GetEffectInfo(i);
        EXPECT_EQ(info.Name, LanguageText(QLatin1String(promised.key))) << i;
        EXPECT_FALSE(info.Name.isEmpty()) << i;
        EXPECT_EQ(info.Alpha, 100) << i;
        EXPECT_EQ(info.Colour, promised.colour) << i;
        EXPECT_EQ(info.Thumbnail, QLatin1String(promised.thumbnail)) << i;
        EXPECT_EQ(GetEffectName(i), info.Name);
        EXPECT_EQ(GetEffectThumbnail(i), info.Thumbnail);
        EXPECT_EQ(GetEffectAlpha(i), info.Alpha);
    }
}

TEST_F(Catalogue, RunsTheFunctionOfEachEffect) {
    const Bitmap picture = TestPictures::Face(48, 36);
    std::wstring folder = EffectResourceDir();
    for (int i = 0; i < EffectCount; ++i) {
        Bitmap byIndex = picture, byFunction = picture;
        EXPECT_TRUE(RunEffect(byIndex, i, folder)) << i;
        EXPECT_NE(Promised[static_cast<std::size_t>(i)].function(byFunction.MutablePixels(), 48, 36, folder.data(),
                                                                 nullptr, 0, 100),
                  0);
        EXPECT_TRUE(byIndex == byFunction) << i;
        EXPECT_FALSE(byIndex == picture) << i;
    }
}

TEST_F(Catalogue, IndexMinusOneIsTheOriginalAndReachesNoFunction) {
    const CEffectInfo info = GetEffectInfo(-1);
    EXPECT_EQ(info.Name, QStringLiteral("原图"));
    EXPECT_EQ(info.Alpha, 100);
    EXPECT_EQ(info.Colour, 0u);
    EXPECT_TRUE(info.Thumbnail.isEmpty());
    const Bitmap picture = TestPictures::Face(20, 20);
    Bitmap same = picture;
    EXPECT_FALSE(HasEffect(-1));
    EXPECT_FALSE(RunEffect(same, -1, EffectResourceDir()));
    EXPECT_TRUE(same.SharesPixelsWith(picture)) << "not even touched";
    EXPECT_EQ(CategoryOfEffect(-1), 0);
}

TEST_F(Catalogue, AnIndexOutOfRangeLeavesTheRecordEmpty) {
    for (const int index : {-2, -9, 50, 1000}) {
        EXPECT_EQ(GetEffectInfo(index), CEffectInfo{}) << index;
        EXPECT_EQ(GetEffectAlpha(index), 0) << index;
        Bitmap picture = TestPictures::Face(20, 20);
        EXPECT_FALSE(RunEffect(picture, index, EffectResourceDir())) << index;
    }
    Bitmap none;
    EXPECT_FALSE(RunEffect(none, 0, EffectResourceDir()));
}

TEST_F(Catalogue, CategoriesHoldTheirIndexes) {
    const auto range = [](int first, int last) {
        std::vector<int> indexes;
        for (int i = first; i <= last; ++i) indexes.push_back(i);
        return indexes;
    };
    EXPECT_EQ(EffectsOfCategory(1), range(0, 7));
    EXPECT_EQ(EffectsOfCategory(2), range(8, 14));
    EXPECT_EQ(EffectsOfCategory(3), range(23, 29)) << "the order of the categories is not that of the indexes";
    EXPECT_EQ(EffectsOfCategory(4), range(15, 22));
    EXPECT_EQ(EffectsOfCategory(5), range(30, 35));
    EXPECT_EQ(EffectsOfCategory(6), range(36, 42));
    EXPECT_EQ(EffectsOfCategory(7), range(43, 49));
    for (const int none : {-1, 0, 8, 9}) EXPECT_TRUE(EffectsOfCategory(none).empty()) << none;
    for (int category = 1; category <= CategoryCount; ++category)
        for (const int index : EffectsOfCategory(category)) EXPECT_EQ(CategoryOfEffect(index), category);
}

TEST_F(Catalogue, CategoriesHaveTheirControlsCoversAndCodes) {
    const struct {
        const char* stem;
        int cover;
        const char* code;
    } promised[] = {{"Film", 0, "8880301"},   {"Pola", 8, "8880302"},  {"Vintage", 23, "8880303"},
                    {"Lomo", 17, "8880304"},  {"Fade", 30, "8880305"}, {"BW", 39, "8880306"},
                    {"Leaker", 43, "8880307"}};
    for (int i = 0; i < CategoryCount; ++i) {
        const EffectCategory* category = FindCategory(i + 1);
        ASSERT_NE(category, nullptr);
        const QString stem = QLatin1String(promised[i].stem);
        EXPECT_EQ(category->Button(), QStringLiteral("Btn") + stem);
        EXPECT_EQ(category->List(), QStringLiteral("ListView") + stem);
        EXPECT_EQ(category->ListClass(), QStringLiteral("EffectListView") + stem);
        EXPECT_EQ(category->CoverFile(), stem + QStringLiteral(".jpg"));
        EXPECT_EQ(category->coverIndex, promised[i].cover);
        EXPECT_STREQ(category->clickCode, promised[i].code);
        EXPECT_EQ(CategoryOfEffect(category->coverIndex), i + 1);
    }
    EXPECT_EQ(FindCategory(0), nullptr);
    EXPECT_EQ(FindCategory(9), nullptr);
}

TEST_F(Catalogue, EveryEffectHasItsOverlayInTwoSizes) {
    for (int i = 0; i < EffectCount; ++i) {
        const QString path = ResourcePath(QStringLiteral("I18N/Images/EffectBk/") + GetEffectThumbnail(i));
        EXPECT_EQ(QImage(path).size(), QSize(70, 96)) << path.toStdString();
        QString fine = path;
        EXPECT_EQ(QImage(fine.replace(QStringLiteral(".png"), QStringLiteral("@2x.png"))).size(), QSize(140, 192));
    }
}

TEST_F(Catalogue, TheUsersLooksFollowTheFifty) {
    EXPECT_EQ(UserLookCount(), 0);
    WriteLook(QStringLiteral("b.cube"), Negative("Second"));
    WriteLook(QStringLiteral("a.cube"), Negative("First"));
    WriteLook(QStringLiteral("c.cube"), "LUT_3D_SIZE 2\n0 0 0\n");
    WriteLook(QStringLiteral("readme.txt"), "no look");
    ReadUserLooks();
    ASSERT_EQ(UserLookCount(), 2) << "the damaged one is left out";
    EXPECT_EQ(EffectsOfCategory(UserCategory), (std::vector<int>{50, 51}));
    EXPECT_EQ(GetEffectName(50), QStringLiteral("First"));
    EXPECT_EQ(GetEffectName(51), QStringLiteral("Second"));
    EXPECT_EQ(GetEffectAlpha(50), 100);
    EXPECT_EQ(CategoryOfEffect(51), UserCategory);
    EXPECT_FALSE(HasEffect(52));
    QFile log(TestHome::Path() + QStringLiteral("/dbg.log"));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_TRUE(log.readAll().contains("c.cube"));
}

TEST_F(Catalogue, AUsersLookRunsLikeAnEffect) {
    WriteLook(QStringLiteral("a.cube"), Negative("Negative"));
    ReadUserLooks();
    const Bitmap picture = TestPictures::Face(40, 30);
    Bitmap negative = picture;
    ASSERT_TRUE(RunEffect(negative, 50, EffectResourceDir()));
    for (std::size_t i = 0; i < picture.ByteCount(); ++i)
        ASSERT_NEAR(negative.Pixels()[i], i % 4 == 3 ? 255 : 255 - picture.Pixels()[i], 1) << i;
}

TEST_F(Catalogue, NamesDifferInEachLanguage) {
    for (const char* language : {"1033", "2052"}) {
        SetLanguage(QLatin1String(language));
        std::set<QString> names;
        for (int i = 0; i < EffectCount; ++i) names.insert(GetEffectName(i));
        EXPECT_EQ(names.size(), std::size_t(EffectCount)) << language;
    }
}

}  // namespace
