// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The soft discs of PC_Dsp's brushes, on checked arguments: a table of 2 * radius rows of as many bytes. The value
// falls from 255 on the four middle pixels to 0 at `radius`; the inner part `full` (0 to 1) of the way stays 255.
void FillSoftDisc(unsigned char** table, int radius, double full);
