// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The caption's three sections, and the tool that each begins with.
enum Section { SectionBasic = 1, SectionEffects = 2, SectionBeauty = 3 };

constexpr int SectionTool(int section) {
    switch (section) {
        case SectionBasic:
            return 1;
        case SectionEffects:
            return 7;
        case SectionBeauty:
            return 8;
        default:
            return 0;
    }
}

// The section that a tool lies in.
constexpr int SectionOf(int tool) {
    return tool >= 8 ? SectionBeauty : tool == 7 ? SectionEffects : SectionBasic;
}
