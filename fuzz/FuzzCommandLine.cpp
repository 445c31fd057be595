// SPDX-License-Identifier: GPL-3.0-or-later
// The command line: arguments apart by zeros, the first byte says which paths exist. The answer is the whole text, one
// of the arguments or the path of a URL among them, and what exists comes back absolute.
#include <cstdlib>
#include <QtCore/QUrl>

#include "CommandLine.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    if (size == 0) return 0;
    const auto chosen = static_cast<qsizetype>(data[0]);
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data) + 1, static_cast<qsizetype>(size) - 1);
    const QStringList arguments = text.split(QChar(u'\0'));
    const auto exists = [&](const QString& path) { return chosen != 0 && path.size() % chosen == 1; };
    const QString picture = PictureFromCommandLine(arguments, exists);
    bool known = picture == arguments.join(u' ');
    for (const QString& argument : arguments)
        known = known || picture == argument || picture == QUrl(argument).toLocalFile();
    if (!known && !picture.startsWith(u'/')) std::abort();
    return 0;
}
