// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Makes the application object that windows need, once, with a home folder of the run's own.
void NeedWindows();
// Ends it again, before the objects of static lifetime that widgets use. Nothing without one.
void EndWindows();
