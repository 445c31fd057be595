// SPDX-License-Identifier: GPL-3.0-or-later
// Overlays: any bytes may be one. One that is accepted can be laid over a picture, whose size stays.
#include "CXuanCaiFrame.h"
#include "FrameFuzz.h"

namespace {

FrameFuzz::Bytes TrueFile() {
    FrameFuzz::Bytes file = FrameFuzz::Header(174, 12, "XCBK1");
    for (const std::size_t digit : {138, 139, 140}) file[digit] = '0';
    FrameFuzz::PutInt(file, 166, sizeof FrameFuzz::Png);
    file.insert(file.end(), std::begin(FrameFuzz::Png), std::end(FrameFuzz::Png));
    return file;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const FrameFuzz::Bytes file = FrameFuzz::FileOf(data, size, TrueFile());
    CXuanCaiFrame frame;
    if (!frame.Load(file.data(), file.size())) return 0;
    Bitmap picture = FrameFuzz::Picture();
    FrameFuzz::Require(frame.Compose(picture));
    FrameFuzz::Require(picture.Width() == 9 && picture.Height() == 7);
    FrameFuzz::Read(picture);
    return 0;
}
