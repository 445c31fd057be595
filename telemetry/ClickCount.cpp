// SPDX-License-Identifier: GPL-3.0-or-later
#include "ClickCount.h"

#include <algorithm>
#include <limits>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStringDecoder>
#include <QtCore/QStringEncoder>
#include <utility>

#include "AppPaths.h"
#include "WholeFile.h"

namespace {

constexpr qsizetype LineLength = 260;
// Some hundred codes exist; a file beyond this was not written by this program.
constexpr qint64 MaxFileSize = qint64{4} << 20;

// The integer that a text begins with, as a count is read: blanks, a sign, digits; 0 without any.
int LeadingInt(const QString& text) {
    const QString digits = text.trimmed();
    const bool negative = digits.startsWith(u'-');
    qint64 value = 0;
    for (qsizetype i = negative || digits.startsWith(u'+') ? 1 : 0; i < digits.size(); ++i) {
        const char16_t c = digits.at(i).unicode();
        if (c < u'0' || c > u'9') break;
        value = std::min<qint64>(value * 10 + (c - u'0'), std::numeric_limits<int>::max());
    }
    return static_cast<int>(negative ? -value : value);
}

int Sum(int a, int b) {
    const qint64 sum = qint64{a} + b;
    return static_cast<int>(std::clamp<qint64>(sum, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

}  // namespace

CClickCount::~CClickCount() = default;

void CClickCount::Add(const QString& code, int amount) {
    const std::lock_guard<std::mutex> guard(m_lock);
    int& count = m_counts[code];
    count = Sum(count, amount);
}

QString CClickCount::FilePath() {
    // The doubled slash is part of the name as the file has always been called; NativePath takes it out.
    return NativePath(GetAppDir() + QStringLiteral("\\") + QStringLiteral("\\Resources\\Action.dat"));
}

void CClickCount::Load() {
    QFile file(FilePath());
    if (file.open(QIODevice::ReadOnly)) LoadBytes(file.read(MaxFileSize));
}

bool CClickCount::Save() const {
    const QString path = FilePath();
    const QByteArray bytes = SaveBytes();
    if (!MakeDirs(QFileInfo(path).path())) return false;
    WholeFile file(QFile::encodeName(path).toStdString());
    return file.Open() && file.Write(bytes.constData(), static_cast<std::size_t>(bytes.size())) && file.Commit();
}

std::map<QString, int> CClickCount::Counts() const {
    const std::lock_guard<std::mutex> guard(m_lock);
    return m_counts;
}

void CClickCount::Clear() {
    const std::lock_guard<std::mutex> guard(m_lock);
    m_counts.clear();
}

std::map<QString, int> CClickCount::Take() {
    const std::lock_guard<std::mutex> guard(m_lock);
    return std::exchange(m_counts, {});
}

void CClickCount::LoadBytes(const QByteArray& bytes) {
    QStringDecoder decode(QStringConverter::Utf16LE);
    const QString text = decode(bytes);
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype feed = text.indexOf(u'\n', start);
        const qsizetype end = feed < 0 ? text.size() : feed + 1;
        const qsizetype length = std::min(end - start, LineLength);
        LoadLine(text.mid(start, length));
        start += length;
    }
}

void CClickCount::LoadLine(const QString& line) {
    const qsizetype separator = line.indexOf(u'#');
    if (separator < 0 || !line.contains(u'|')) return;
    Add(line.left(separator), LeadingInt(line.mid(separator + 1)));
}

QByteArray CClickCount::SaveBytes() const {
    QString text;
    for (const auto& [code, count] : Counts()) text += code + u'#' + QString::number(count) + QStringLiteral("|\n");
    QStringEncoder encode(QStringConverter::Utf16LE);
    return encode(text);
}

CClickCount& ClickCounts() {
    static CClickCount counts;
    return counts;
}

void CountClick(const QString& code) {
    ClickCounts().Add(code);
}
