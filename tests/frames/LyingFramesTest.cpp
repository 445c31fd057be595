// SPDX-License-Identifier: GPL-3.0-or-later
// Files that say what is not so. Each is refused for what it is, and nothing large is asked of memory for it.
#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "CNinePartFrame.h"
#include "CStripFrame.h"
#include "CXuanCaiFrame.h"
#include "FailingMemory.h"
#include "FrameBuilder.h"
#include "TestPictures.h"

using FrameBuilder::Bytes;
using FrameBuilder::PutInt;

namespace {

constexpr int Most = std::numeric_limits<int>::max();
constexpr int Least = std::numeric_limits<int>::min();

Bytes TrueStrip() {
    FrameBuilder::Strip file;
    file.strip = TestPictures::Noise(10, 10, 1);
    file.extraWidth = file.extraHeight = 8;
    file.pictureX = file.pictureY = 4;
    file.pieces = {{{4, 4}, {2, 4}, {4, 4}, {4, 2}, {4, 2}, {4, 4}, {2, 4}, {4, 4}}};
    return file.File();
}

Bytes TrueNine() {
    FrameBuilder::NinePart file;
    for (std::size_t i = 0; i < 9; ++i) file.parts[i] = TestPictures::Noise(4, 4, static_cast<std::uint32_t>(i));
    file.extraWidth = file.extraHeight = 8;
    file.pictureX = file.pictureY = 4;
    return file.File();
}

Bytes TrueOverlay() {
    FrameBuilder::Overlay file;
    file.picture = TestPictures::Noise(8, 6, 1, false);
    return file.File();
}

// A PNG's own header says this size.
void ClaimSize(Bytes& bytes, std::size_t png, unsigned width, unsigned height) {
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[png + 16 + i] = static_cast<std::uint8_t>(width >> (24 - 8 * i));
        bytes[png + 20 + i] = static_cast<std::uint8_t>(height >> (24 - 8 * i));
    }
}

struct Lie {
    const char* name;
    std::function<void(Bytes&)> tell;
    // None: the file is loaded, and its composition refused.
    FrameFault fault;
};

std::ostream& operator<<(std::ostream& out, const Lie& lie) {
    return out << lie.name;
}

std::function<void(Bytes&)> Int(std::size_t at, int value) {
    return [=](Bytes& bytes) { PutInt(bytes, at, value); };
}
std::function<void(Bytes&)> Cut(std::size_t size) {
    return [=](Bytes& bytes) { bytes.resize(size); };
}

const Lie StripLies[] = {
    {"pieceWiderThanStrip", Int(53, 11), FrameFault::Damaged},
    {"pieceOfGreatestWidth", Int(61, Most), FrameFault::Damaged},
    {"pieceOfNegativeHeight", Int(57, -1), FrameFault::Damaged},
    {"pieceOfLeastWidth", Int(101, Least), FrameFault::Damaged},
    {"topTileReachesOutOfStrip", Int(61, 7), FrameFault::Damaged},
    {"leftTileReachesOutOfStrip", Int(81, 7), FrameFault::Damaged},
    {"rightTileReachesOutOfStrip", Int(89, 7), FrameFault::Damaged},
    {"bottomTileReachesOutOfStrip", Int(101, 7), FrameFault::Damaged},
    {"stripCutInItsPixels", Cut(170), FrameFault::Damaged},
    {"stripCutInItsHead", Cut(120), FrameFault::Damaged},
    {"stripIsNoPicture", [](Bytes& bytes) { bytes[118] = 'x'; }, FrameFault::Damaged},
    {"stripClaimsHugeSize", [](Bytes& bytes) { ClaimSize(bytes, 117, 20000, 20000); }, FrameFault::Damaged},
    {"frameWiderThanAnyPicture", Int(45, Most), FrameFault::None},
    {"frameHigherThanAnyPicture", Int(49, 1 << 20), FrameFault::None},
    {"frameWithMorePixelsThanAny",
     [](Bytes& bytes) {
         PutInt(bytes, 45, 60000);
         PutInt(bytes, 49, 60000);
     },
     FrameFault::None},
    {"frameOfNoWidth", Int(45, -30), FrameFault::None},
    {"frameOfNegativeHeight", Int(49, Least), FrameFault::None},
};

const Lie NineLies[] = {
    {"partLongerThanFile", Int(96, 100000), FrameFault::Damaged},
    {"partOfGreatestSize", Int(96, Most), FrameFault::Damaged},
    {"partIsNoPicture", [](Bytes& bytes) { bytes[101] = 'x'; }, FrameFault::Damaged},
    {"partSizeInTheMiddleOfAPart", Int(96, 30), FrameFault::Damaged},
    {"partClaimsHugeSize", [](Bytes& bytes) { ClaimSize(bytes, 100, 20000, 20000); }, FrameFault::Damaged},
    {"lastPartsMissing", Cut(400), FrameFault::Damaged},
    {"namesReachBeyondFile",
     [](Bytes& bytes) {
         bytes[64] = 31;
         std::fill(bytes.begin() + 65, bytes.begin() + 96, 255);
     },
     FrameFault::Damaged},
    {"moreNamesThanFile",
     [](Bytes& bytes) {
         bytes.resize(200);
         bytes[64] = 255;
     },
     FrameFault::Damaged},
    {"onlyAHeader", Cut(97), FrameFault::Damaged},
    {"frameWiderThanAnyPicture", Int(48, Most), FrameFault::None},
    {"frameWithMorePixelsThanAny",
     [](Bytes& bytes) {
         PutInt(bytes, 48, 60000);
         PutInt(bytes, 52, 60000);
     },
     FrameFault::None},
    {"frameOfNoWidth", Int(48, -30), FrameFault::None},
    {"frameOfNegativeHeight", Int(52, Least), FrameFault::None},
};

const Lie OverlayLies[] = {
    {"dataLongerThanFile", Int(166, 100000), FrameFault::Damaged},
    {"dataOfGreatestSize", Int(166, Most), FrameFault::Damaged},
    {"dataCut", Int(166, 40), FrameFault::Damaged},
    {"dataIsNoPicture", [](Bytes& bytes) { bytes[175] = 'x'; }, FrameFault::Damaged},
    {"dataClaimsHugeSize", [](Bytes& bytes) { ClaimSize(bytes, 174, 20000, 20000); }, FrameFault::Damaged},
    {"fileCut", Cut(190), FrameFault::Damaged},
    {"blendModeThatIsNone", [](Bytes& bytes) { bytes[141] = 18; }, FrameFault::Damaged},
    {"blendModeOfGreatestNumber", [](Bytes& bytes) { bytes[141] = 255; }, FrameFault::Damaged},
};

class LyingStrip : public testing::TestWithParam<Lie> {};
class LyingNine : public testing::TestWithParam<Lie> {};
class LyingOverlay : public testing::TestWithParam<Lie> {};

template <class Frame>
void ExpectRefused(const Lie& lie, Bytes bytes) {
    Frame frame;
    ASSERT_TRUE(frame.Load(bytes.data(), bytes.size())) << "the file is true before it lies";
    lie.tell(bytes);
    const Bitmap picture = TestPictures::Face(30, 30);
    FailingMemory::FailNth(0);
    frame.Load(bytes.data(), bytes.size());
    EXPECT_EQ(frame.Fault(), lie.fault);
    if constexpr (std::is_same_v<Frame, CXuanCaiFrame>) {
        Bitmap framed = picture;
        EXPECT_FALSE(frame.Compose(framed));
    } else {
        EXPECT_TRUE(frame.Compose(picture, 1.0f).IsNull());
    }
    EXPECT_EQ(FailingMemory::Asked(), 0) << "memory was taken for a lie";
}

std::string NameOf(const testing::TestParamInfo<Lie>& info) {
    return info.param.name;
}

}  // namespace

TEST_P(LyingStrip, IsRefused) {
    ExpectRefused<CStripFrame>(GetParam(), TrueStrip());
}
TEST_P(LyingNine, IsRefused) {
    ExpectRefused<CNinePartFrame>(GetParam(), TrueNine());
}
TEST_P(LyingOverlay, IsRefused) {
    ExpectRefused<CXuanCaiFrame>(GetParam(), TrueOverlay());
}
INSTANTIATE_TEST_SUITE_P(Files, LyingStrip, testing::ValuesIn(StripLies), NameOf);
INSTANTIATE_TEST_SUITE_P(Files, LyingNine, testing::ValuesIn(NineLies), NameOf);
INSTANTIATE_TEST_SUITE_P(Files, LyingOverlay, testing::ValuesIn(OverlayLies), NameOf);

// A tile of one pixel around a picture as wide as a picture may be is no lie, only many tiles.
TEST(ManyTiles, AreBoundedByTheResult) {
    FrameBuilder::Strip file;
    file.strip = TestPictures::Noise(3, 3, 1);
    file.extraWidth = file.extraHeight = 2;
    file.pictureX = file.pictureY = 1;
    file.pieces.fill({1, 1});
    CStripFrame frame;
    const Bytes bytes = file.File();
    ASSERT_TRUE(frame.Load(bytes.data(), bytes.size()));
    const Bitmap result = frame.Compose(TestPictures::Plain(Bitmap::MaxSide - 2, 1, 0xFF123456), 1.0f);
    ASSERT_EQ(result.Width(), Bitmap::MaxSide);
    EXPECT_EQ(TestPictures::PixelAt(result, Bitmap::MaxSide / 2, 1), 0xFF123456);
    EXPECT_EQ(TestPictures::PixelAt(result, Bitmap::MaxSide / 2, 0), TestPictures::PixelAt(file.strip, 1, 0));
}

// Where the picture lies may be any number; it is cut off by the result.
TEST(FarPlaces, LeaveThePictureOutside) {
    for (const int place : {Most, Least, -31, 60}) {
        Bytes bytes = TrueStrip();
        PutInt(bytes, 37, place);
        PutInt(bytes, 41, place);
        CStripFrame strip;
        ASSERT_TRUE(strip.Load(bytes.data(), bytes.size()));
        const Bitmap result = strip.Compose(TestPictures::Plain(30, 30, 0xFFFFFFFF), 1.0f);
        ASSERT_EQ(result.Width(), 38);
        EXPECT_EQ(TestPictures::PixelAt(result, 19, 19), 0u) << place;
        Bytes nine = TrueNine();
        PutInt(nine, 40, place);
        PutInt(nine, 44, place);
        CNinePartFrame frame;
        ASSERT_TRUE(frame.Load(nine.data(), nine.size()));
        EXPECT_FALSE(frame.Compose(TestPictures::Plain(30, 30, 0xFFFFFFFF), 1.0f).IsNull());
    }
}
