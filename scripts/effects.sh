#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Draws the pictures of docs/effects.md: the looks of each category on the sample portrait.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install.sh
scripts/build.sh release quince_looks_tool
tool=build/release/bin/quince-looks
picture=build/release/bin/Images/Example/default.jpg
$tool check
mkdir -p docs/effects
draw() { $tool sheet "$picture" "docs/effects/$1.jpg" "$2" "$3" 240; }
draw film 0 7
draw pola 8 14
draw vintage 23 29
draw lomo 15 22
draw fade 30 35
draw bw 36 42
draw leaker 43 49
