// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <ostream>
#include <vector>

#include "PC_Dsp.h"

// One operation with its numbers, so that tests can walk them all.
struct Operation {
    const char* name;
    std::function<int(unsigned char* pixels, int width, int height, CObjProgress* sink, int start, int end)> run;
};

inline std::ostream& operator<<(std::ostream& out, const Operation& operation) {
    return out << operation.name;
}

// Operations of one pixel, upwards and downwards.
inline std::vector<Operation> PointOperations() {
    using Pixels = unsigned char*;
    using Sink = CObjProgress*;
    return {
        {"Brighter",
         [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::LightNew(p, w, h, 6, 3, s, a, b); }},
        {"Darker",
         [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::LightNew(p, w, h, -6, 3, s, a, b); }},
        {"MoreContrast",
         [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::Light(p, w, h, 0, 60, s, a, b); }},
        {"LessContrast",
         [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::Light(p, w, h, 0, -60, s, a, b); }},
        {"MoreSaturated",
         [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::Saturateconst(p, w, h, 60, 1, s, a, b); }},
        {"LessSaturated",
         [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::Saturateconst(p, w, h, -60, 1, s, a, b); }},
        {"MoreExposed",
         [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::ExposureFilter(p, w, h, 5.0f, s, a, b); }},
        {"LessExposed",
         [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::ExposureFilter(p, w, h, -2.0f, s, a, b); }},
        {"HueForward",
         [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::SetHue(p, w, h, 40, s, a, b); }},
        {"HueBack", [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::SetHue(p, w, h, -40, s, a, b); }},
        {"ColourBalance",
         [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::SetColor(p, w, h, 50, -20, -40, s, a, b); }},
        {"AllPointOps",
         [](Pixels p, int w, int h, Sink s, int a, int b) {
             const PointOp ops[] = {{PointOp::Kind::LightNew, 2},          {PointOp::Kind::Light, 20},
                                    {PointOp::Kind::Saturateconst, 30, 1}, {PointOp::Kind::ExposureFilter, 2.5f},
                                    {PointOp::Kind::SetHue, 15},           {PointOp::Kind::SetColor, 10, 20, -10}};
             return PC_Dsp::ApplyPointOps(p, w, h, ops, 6, s, a, b);
         }},
    };
}

inline std::vector<Operation> SceneOperations() {
    using Pixels = unsigned char*;
    using Sink = CObjProgress*;
    const auto scene = [](eScenarioType type) {
        return [type](Pixels p, int w, int h, Sink s, int a, int b) {
            return PC_Dsp::ScenarioBeauty(p, w, h, w > 0 && w < 1 << 28 ? 4 * w : 4, type, s, a, b);
        };
    };
    return {{"Scenery", scene(ScenarioScenery)},
            {"Portrait", scene(ScenarioPortrait)},
            {"Objects", scene(ScenarioObjects)},
            {"Food", scene(ScenarioFood)}};
}

inline std::vector<Operation> AllOperations() {
    using Pixels = unsigned char*;
    using Sink = CObjProgress*;
    std::vector<Operation> all = PointOperations();
    all.push_back({"Sharper", [](Pixels p, int w, int h, Sink s, int a, int b) {
                       return PC_Dsp::UsmSharp(p, w, h, 1.1f, 1.5f, s, a, b);
                   }});
    all.push_back({"Softer", [](Pixels p, int w, int h, Sink s, int a, int b) {
                       return PC_Dsp::UsmSharp(p, w, h, 1.1f, -0.6f, s, a, b);
                   }});
    all.push_back({"WideSharper", [](Pixels p, int w, int h, Sink s, int a, int b) {
                       return PC_Dsp::UsmSharp(p, w, h, 4.0f, 0.7f, s, a, b);
                   }});
    all.push_back({"SkinSmooth", [](Pixels p, int w, int h, Sink s, int a, int b) {
                       return PC_Dsp::CannyDericheBlur(p, w, h, 1.0f, 1.0f, nullptr, s, a, b);
                   }});
    all.push_back({"SkinSmoother", [](Pixels p, int w, int h, Sink s, int a, int b) {
                       return PC_Dsp::CannyDericheBlur(p, w, h, 4.0f, 4.0f, nullptr, s, a, b);
                   }});
    all.push_back({"Recolour", [](Pixels p, int w, int h, Sink s, int a, int b) {
                       return PC_Dsp::Color_Channel_Composite(p, w, h, 208, 66, 64, s, a, b);
                   }});
    for (Operation& scene : SceneOperations()) all.push_back(std::move(scene));
    return all;
}

// Every call at the value that means no change.
inline std::vector<Operation> NeutralOperations() {
    using Pixels = unsigned char*;
    using Sink = CObjProgress*;
    return {
        {"LightNew",
         [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::LightNew(p, w, h, 0, 3, s, a, b); }},
        {"Light", [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::Light(p, w, h, 0, 0, s, a, b); }},
        {"Saturateconst",
         [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::Saturateconst(p, w, h, 0, 1, s, a, b); }},
        {"ExposureFilter",
         [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::ExposureFilter(p, w, h, 1.5f, s, a, b); }},
        {"SetHue", [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::SetHue(p, w, h, 0, s, a, b); }},
        {"SetHueFullTurn",
         [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::SetHue(p, w, h, 720, s, a, b); }},
        {"SetColor",
         [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::SetColor(p, w, h, 0, 0, 0, s, a, b); }},
        {"UsmSharp",
         [](Pixels p, int w, int h, Sink s, int a, int b) { return PC_Dsp::UsmSharp(p, w, h, 1.1f, 0, s, a, b); }},
        {"SkinSmooth", [](Pixels p, int w, int h, Sink s, int a,
                          int b) { return PC_Dsp::CannyDericheBlur(p, w, h, 0.0f, 0.0f, nullptr, s, a, b); }},
        {"NoOps", [](Pixels p, int w, int h, Sink s, int a,
                     int b) { return PC_Dsp::ApplyPointOps(p, w, h, nullptr, 0, s, a, b); }},
    };
}
