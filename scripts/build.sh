#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# build.sh PRESET [TARGET...]: configures and builds.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=$1
shift
targets=()
[ $# -eq 0 ] || targets=(--target "$@")
cmake --preset "$preset"
cmake --build --preset "$preset" "${targets[@]}"
