// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "WordStyle.h"

// What the canvas of the text tool tells its panel.

// A text was selected: the panel takes its style over.
struct WordSelectedNews {
    WordStyle style;
};
// A turn gave the selected text another size.
struct WordSizeNews {
    int fontSize = 0;
};
// A text was added.
struct WordAddedNews {};
// The user wants to write in the selected text.
struct WordEditNews {};
