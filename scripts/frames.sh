#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Draws the pictures of docs/frames.md: all frames on the sample portrait.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install.sh
scripts/build.sh release quince_looks_tool
tool=build/release/bin/quince-looks
picture=build/release/bin/Images/Example/default.jpg
mkdir -p docs/frames
$tool frames "$picture" docs/frames/simple.jpg 1 300
$tool frames "$picture" docs/frames/ornate.jpg 2 300
