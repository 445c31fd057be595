// SPDX-License-Identifier: GPL-3.0-or-later
// Reading and rewriting of INI files: any bytes may be a file. What was written must read back, and writing it again
// must change nothing.
#include <cstdlib>

#include "IniFile.h"

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString section = QStringLiteral("Main");
    const QString key = QStringLiteral("Version");
    const QString value = QString::fromUtf8("1.0 \xE7\x89\x88");
    Require(ProfileStringFromBytes(bytes, section, key, QString()).size() < ProfileBufferLength);
    const QByteArray written = ProfileBytesWith(bytes, section, key, value);
    if (written.isEmpty()) return 0;
    Require(ProfileStringFromBytes(written, section, key, QString()) == value);
    // Odd blank lines, comments and empty section names take some writes to settle.
    QByteArray settled = written;
    for (int i = 0; i < 4; ++i) settled = ProfileBytesWith(settled, section, key, value);
    Require(ProfileBytesWith(settled, section, key, value) == settled);
    // The bytes as a value: they stay in their line.
    const QString text = QString::fromUtf8(bytes);
    const QByteArray forged = ProfileBytesWith(QByteArray(), section, key, text);
    Require(forged.isEmpty() || ProfileStringFromBytes(forged, QStringLiteral("Other"), key, section) == section);
    return 0;
}
