// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The caption's three sections.
enum Section { SectionBasic = 1, SectionEffects = 2, SectionBeauty = 3 };

// What is said of a tool in one place; its logic, canvas and panel and the frame take it from here.
struct ToolFacts {
    int number;
    Section section;
    // The button of the section's panel behind which the tool lies, and the one among the tools behind that; empty
    // where there is no choice.
    const char* tab;
    const char* button;
    // The layout in the left column that its panel goes into, and the panel's skin.
    const char* page;
    const char* skin;
    // Key of its steps' name in the history.
    const char* stepName;
    // Click code counted when the tool is left with a changed picture; empty for none.
    const char* leaveClick;
};
