// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Forbids this process, its threads and the programs that it starts to open a socket of the internet families, by a
// filter in the system's kernel: whoever tries ends with this exit code and a line on the error output. Local sockets,
// which the screen needs, stay allowed. It needs no privileges and costs nothing.
namespace NetworkGuard {

constexpr int ExitCode = 99;

// For the rest of the process's life. Ends the process when the system refuses, since a proof that is not made must not
// look like one.
void Install();

}  // namespace NetworkGuard
