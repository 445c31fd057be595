#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs a command on a virtual screen of its own, large enough for every window size that the tests use.
exec xvfb-run -a -s "-screen 0 2200x1600x24" "$@"
