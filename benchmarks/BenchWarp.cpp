// SPDX-License-Identifier: GPL-3.0-or-later
// The displacement field on 24 megapixels.
#include "Bench.h"
#include "CWarpField.h"
#include "InstructionSets.h"

namespace {

constexpr int Radius = 300;

// A field that was pushed about before, so that its memory is there as in the middle of a stroke.
void Prepare(CWarpField& field) {
    field.SetImage(&BenchPicture(Size24), nullptr);
    field.SetRadius(Radius);
    field.SetAmount(0.2);
    for (int i = 0; i < 40; ++i) field.Deform(3000 + 10 * i, 2000, 2990 + 10 * i, 2000, CWarpField::Move);
}

double StepMs(int mode) {
    CWarpField field;
    Prepare(field);
    int at = 0;
    return MedianMs(41, [&] {
        const int x = 3000 + at++ % 40 * 10;
        field.Deform(x, 2000, x - 10, 2000, mode);
    });
}

void AddStep(BenchReport& report, const std::string& name, int mode) {
    constexpr int avx2 = 1;
    report.Add(name, Size24.Megapixels(), StepMs(mode), "copy", CopyMs(Size24));
    if (KernelSetCount() <= avx2 + 1) return;
    SelectKernelSet(avx2);
    report.Add(name + ".avx2", Size24.Megapixels(), StepMs(mode), "copy", CopyMs(Size24));
    SelectKernelSet(-1);
}

}  // namespace

static const BenchCase enter("warp.enter", [](BenchReport& report) {
    CWarpField field;
    report.Add("warp.enter", Size24.Megapixels(), MedianMs(9, [&] { field.SetImage(&BenchPicture(Size24), nullptr); }),
               "copy", CopyMs(Size24));
});
static const BenchCase move("warp.step", [](BenchReport& report) {
    AddStep(report, "warp.step.move", CWarpField::Move);
    AddStep(report, "warp.step.grow", CWarpField::Grow);
});
