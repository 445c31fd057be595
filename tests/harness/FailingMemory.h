// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Memory that runs out on purpose. A program that links this file counts its large blocks, those of the block allocator
// and those of `new`, and can have one of them fail.
namespace FailingMemory {

// From here on the n-th large block fails, counted from 1, and only that one; 0 for none.
void FailNth(int n);
// Large blocks asked for since.
int Asked();
// The block that was to fail was asked for.
bool HasFailed();

}  // namespace FailingMemory
