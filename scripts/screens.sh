#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Takes the pictures of docs/screens with the program itself, on the sample picture: both languages, at 1× and 2×.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/.."
scripts/install.sh
scripts/build.sh release quince_tour QUINCE
picture=build/release/bin/Images/Example/default.jpg
for language in 1033 2052; do
    name=$([ "$language" = 1033 ] && echo en || echo zh)
    scripts/with-display.sh build/release/bin/quince_tour screens "$picture" docs/screens "$language" "-$name"
    QT_SCALE_FACTOR=2 scripts/with-display.sh build/release/bin/quince_tour screens "$picture" docs/screens "$language" "-$name@2x"
done
