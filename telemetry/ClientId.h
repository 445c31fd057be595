// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <string>

// Client identity: a text that stands for one machine, derived anew from the machine at each start: one character from
// 0 to C and 64 hexadecimal digits, from which the machine's own texts cannot be read back. It goes into statistics
// only, and is not derived at all unless an address is set up for them.

// MD5 (RFC 1321) of bytes as 32 hexadecimal digits.
std::string Md5Upper(const std::string& bytes);
std::string Md5Lower(const std::string& bytes);

// The id that three texts of a machine make.
std::string ClientIdFrom(const std::string& network, const std::string& disk, const std::string& processor);

// This machine's id; derived once per process, on the main thread.
QString GetClientId();

// The check value of the install request: MD5 in lower case of both texts in a row, of which the first 258 bytes count.
QString GetClientCheckValue(const QString& partner, const QString& client);
