// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

// Settings and texts in INI files, in the manner of profile calls: every call names its file, names ignore case, a
// missing file, section or key gives the default, and no error is reported on reading.
//
// Files are UTF-8 or UTF-16 with byte order mark, or UTF-8 without. A file that a write creates is UTF-16 LE with byte
// order mark; an existing one keeps its encoding and its comments. Any thread; a file that changed on disk is read
// anew.

// A lookup's buffer, its terminator included: longer texts are cut to one less.
constexpr int ProfileBufferLength = 260;

QString GetProfileString(const QString& section, const QString& key, const QString& defaultValue,
                         const QString& iniPath);

// The number that the text begins with: blanks, a sign, digits, taken modulo 2^32; 0 for a text without one.
int GetProfileInt(const QString& section, const QString& key, int defaultValue, const QString& iniPath);

// Writes one value, whole file or nothing. Line breaks in it become blanks, since they would end it. False when the
// file cannot be written, or exists and cannot be read; it is then as it was.
bool WriteProfileString(const QString& section, const QString& key, const QString& value, const QString& iniPath);

// Removes one key; true when it is gone, and also when it never was there.
bool DeleteProfileKey(const QString& section, const QString& key, const QString& iniPath);

// GetProfileString on the bytes of a file.
QString ProfileStringFromBytes(const QByteArray& bytes, const QString& section, const QString& key,
                               const QString& defaultValue);

// The bytes of a file after WriteProfileString; empty for a file that is too large.
QByteArray ProfileBytesWith(const QByteArray& bytes, const QString& section, const QString& key, const QString& value);
