// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "SourceTree.h"

// The checks on sources. Each gives its findings, one text per finding, "file:line what is wrong" and on a second line
// the way out; empty when all is well. They read names and lines only, so that a test can hand in a made-up tree.

using Findings = std::vector<std::string>;

// No file includes a header of its own layer's neighbours or of a layer above, product code includes no test code, and
// project headers are included by their bare name.
Findings CheckLayers(const std::vector<SourceFile>& files);
// Libraries, platform, core, telemetry and every logic object include no widget header.
Findings CheckWidgetFree(const std::vector<SourceFile>& files);
// A header name stands for one file, since an include by bare name says no more.
Findings CheckUniqueHeaders(const std::vector<SourceFile>& files);
// Every source is named by the CMakeLists.txt of its folder or of a folder above, or by a .cmake file.
Findings CheckListed(const std::vector<SourceFile>& files, const std::vector<SourceFile>& lists);
// The licence is the first line.
Findings CheckLicence(const std::vector<SourceFile>& files);
// #pragma once in every header.
Findings CheckPragmaOnce(const std::vector<SourceFile>& files);
// No file is longer than 600 lines.
Findings CheckLength(const std::vector<SourceFile>& files);
