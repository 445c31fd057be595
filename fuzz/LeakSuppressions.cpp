// SPDX-License-Identifier: GPL-3.0-or-later

// Leaks of libraries below us that damaged files bring out, by the library's name: libheif forgets its record of
// colours (52 bytes) when the file names primaries that it does not know, and libdav1d keeps 40 bytes of some damaged
// AV1 streams.
extern "C" const char* __lsan_default_suppressions();  // NOLINT(bugprone-reserved-identifier): the sanitizer's name

extern "C" const char* __lsan_default_suppressions() {
    return "leak:libheif\nleak:libdav1d\n";
}
