#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Takes the pictures of docs/quality with the program that measures, on the generated portrait. Run after a build of the
# target quince_quality and again when a retouch or the portrait changes.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
crops=$(mktemp -d)
trap 'rm -rf "$crops"' EXIT
QT_QPA_PLATFORM=offscreen build/release/bin/quince_quality --no-others --crops "$crops" > /dev/null
mkdir -p docs/quality
copy() { cp "$crops/$1.jpg" "docs/quality/$2.jpg"; }
copy 'smooth 1.0-fair' smooth-1-fair
copy 'smooth 3.0-fair' smooth-3-fair
copy 'smooth 3.0-deep' smooth-3-deep
copy 'tint rose-medium' tint-rose-medium
copy 'tint ivory-deep' tint-ivory-deep
copy 'recolour lips 3-fair' lips-fair
copy 'recolour irises 3-brown' irises-brown
copy 'teeth-fair' teeth-fair
copy 'teeth-deep' teeth-deep
copy 'warp slim-fair' warp-slim
copy 'warp slim grid-fair' warp-slim-grid
copy 'warp eyes-fair' warp-eyes
copy 'warp eyes grid-fair' warp-eyes-grid
copy 'spots painted-fair' spots-fair
copy 'dark-circles-fair' dark-circles-fair
copy 'dark-circles-deep' dark-circles-deep
copy 'red eye x1.00-fair' red-eye-fair
