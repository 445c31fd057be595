// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The folders that the program expects under its data folder. Main thread, and only by the process that holds the
// instance lock: another one's pictures of the history lie in Temp.

// Makes the folders that are missing and Temp private to the user. Folders of resources that came with the program and
// lie elsewhere are not made a second time. False when one could not be made; the program can run without it.
bool PrepareFolders();

// Deletes every file in Temp: at start what a crash left, at the end what this run left.
bool WipeTemp();
