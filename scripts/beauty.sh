#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Draws the picture of the eight looks of beauty on the sample portrait.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install.sh
scripts/build.sh release quince_looks_tool
tool=build/release/bin/quince-looks
$tool check
mkdir -p docs/quality
$tool beauty build/release/bin/Images/Example/default.jpg docs/quality/beauty.jpg 320
