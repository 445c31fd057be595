// SPDX-License-Identifier: GPL-3.0-or-later
#include "IniFile.h"

// Texts go in and out as UTF-8, so the parser needs no converter of its own, and its templates are made here rather
// than taken from a library that was built with one.
#define SI_NO_CONVERSION
#define SI_IMPLEMENTATION
#include <SimpleIni.h>
#include <sys/stat.h>

#include <functional>
#include <memory>
#include <mutex>
#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QStringDecoder>
#include <QtCore/QStringEncoder>
#include <QtCore/QStringList>
#include <string>
#include <tuple>

#include "AppPaths.h"
#include "WholeFile.h"

namespace {

// Far above any file of settings or texts; more is not one.
constexpr qint64 MaxFileSize = qint64{4} << 20;

struct Encoding {
    QStringConverter::Encoding encoding;
    bool mark;
};

Encoding EncodingOf(const QByteArray& bytes) {
    if (bytes.isEmpty() || bytes.startsWith("\xFF\xFE")) return {QStringConverter::Utf16LE, true};
    if (bytes.startsWith("\xFE\xFF")) return {QStringConverter::Utf16BE, true};
    return {QStringConverter::Utf8, bytes.startsWith("\xEF\xBB\xBF")};
}

QString Decode(const QByteArray& bytes) {
    QStringDecoder decode(EncodingOf(bytes).encoding);
    return decode(bytes);
}

QByteArray Encode(const QString& text, const Encoding& encoding) {
    QStringEncoder encode(encoding.encoding,
                          encoding.mark ? QStringConverter::Flag::WriteBom : QStringConverter::Flag::Default);
    return encode(text);
}

bool IsEntry(const QString& line) {
    qsizetype start = 0;
    while (start < line.size() && (line.at(start) == u' ' || line.at(start) == u'\t')) ++start;
    if (start == line.size() || line.at(start) == u';' || line.at(start) == u'#') return true;
    if (line.at(start) == u'[') return line.indexOf(u']', start) >= 0;
    return line.indexOf(u'=', start) > start;
}

// The lines with "\n" between them. One that is neither section, value nor comment becomes a comment: the parser would
// lose it, and a section without its bracket would change the lines behind it.
QString Cleaned(QString text) {
    // The parser ends at a zero, and a mark inside is no blank to it.
    text.remove(QChar(u'\0')).remove(QChar(u'\uFEFF'));
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    QStringList lines = text.split(u'\n');
    for (QString& line : lines)
        if (!IsEntry(line)) line.prepend(QStringLiteral("; "));
    return lines.join(u'\n');
}

class IniText {
  public:
    explicit IniText(const QByteArray& bytes) {
        m_ini.SetUnicode(true);
        // With several values of one name the first one counts.
        m_ini.SetMultiKey(true);
        m_ini.SetSpaces(false);
        const QByteArray utf8 = Cleaned(Decode(bytes)).toUtf8();
        m_valid = m_ini.LoadData(utf8.constData(), static_cast<std::size_t>(utf8.size())) >= 0;
    }

    // Null text when missing.
    QString Value(const QString& section, const QString& key) const {
        const char* value = m_ini.GetValue(section.toUtf8().constData(), key.toUtf8().constData());
        return value ? QString::fromUtf8(value) : QString();
    }

    // The file's text with one value changed.
    QString With(const QString& section, const QString& key, const QString& value) {
        m_ini.SetValue(section.toUtf8().constData(), key.toUtf8().constData(), value.toUtf8().constData(), nullptr,
                       true);
        return Saved();
    }
    // The same without the key.
    QString Without(const QString& section, const QString& key) {
        m_ini.Delete(section.toUtf8().constData(), key.toUtf8().constData());
        return Saved();
    }

    bool Valid() const { return m_valid; }

  private:
    QString Saved() const {
        std::string text;
        if (m_ini.Save(text) < 0) return {};
        return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))
            .replace(QStringLiteral("\n"), QStringLiteral("\r\n"));
    }

    CSimpleIniA m_ini;
    bool m_valid = false;
};

// A pair of quotes around a value is not part of it.
QString WithoutQuotes(const QString& value) {
    const bool quoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == u'"' || value.front() == u'\'');
    return quoted ? value.mid(1, value.size() - 2) : value;
}

QString Lookup(const IniText* ini, const QString& section, const QString& key, const QString& defaultValue) {
    const QString value = ini ? ini->Value(section, key) : QString();
    return (value.isNull() ? defaultValue : WithoutQuotes(value)).left(ProfileBufferLength - 1);
}

// What tells one state of a file from the next. Writes replace the file, so that its inode changes too.
using Stamp = std::tuple<dev_t, ino_t, off_t, time_t, long>;

bool StampOf(const QString& path, Stamp& stamp) {
    struct stat present = {};
    if (::stat(QFile::encodeName(path).constData(), &present) != 0) return false;
    stamp = {present.st_dev, present.st_ino, present.st_size, present.st_mtim.tv_sec, present.st_mtim.tv_nsec};
    return true;
}

bool ReadBytes(const QString& path, QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    bytes = file.read(MaxFileSize + 1);
    return file.error() == QFileDevice::NoError && bytes.size() <= MaxFileSize;
}

// Parsed files by path, since a window asks for a hundred texts in a row.
class IniCache {
  public:
    std::shared_ptr<const IniText> Get(const QString& path) {
        Stamp stamp;
        if (!StampOf(path, stamp)) return nullptr;
        const std::lock_guard<std::mutex> guard(m_lock);
        Entry& entry = m_entries[path];
        if (!entry.ini || entry.stamp != stamp) {
            QByteArray bytes;
            if (!ReadBytes(path, bytes)) return nullptr;
            entry = {stamp, std::make_shared<const IniText>(bytes)};
        }
        return entry.ini;
    }

  private:
    struct Entry {
        Stamp stamp;
        std::shared_ptr<const IniText> ini;
    };
    std::mutex m_lock;
    QHash<QString, Entry> m_entries;
};

IniCache& Cache() {
    static IniCache cache;
    return cache;
}

// Changes a file as `change` says; one writer at a time in this process, so that two changes keep both.
bool Rewrite(const QString& iniPath, const std::function<QByteArray(const QByteArray&)>& change) {
    static std::mutex lock;
    const std::lock_guard<std::mutex> guard(lock);
    const QString path = NativePath(iniPath);
    QByteArray bytes;
    if (!ReadBytes(path, bytes) && QFile::exists(path)) return false;
    const QByteArray written = change(bytes);
    if (written.isEmpty()) return false;
    // Most settings are written again as they are; that need not wait for the disk.
    if (written == bytes) return true;
    WholeFile file(QFile::encodeName(path).toStdString());
    return file.Open() && file.Write(written.constData(), static_cast<std::size_t>(written.size())) && file.Commit();
}

int LeadingNumber(const QString& text) {
    const QString digits = text.trimmed();
    const bool negative = digits.startsWith(u'-');
    quint32 value = 0;
    for (qsizetype i = negative || digits.startsWith(u'+') ? 1 : 0; i < digits.size(); ++i) {
        const char16_t c = digits.at(i).unicode();
        if (c < u'0' || c > u'9') break;
        value = value * 10 + (c - u'0');
    }
    return static_cast<int>(negative ? 0 - value : value);
}

}  // namespace

QString GetProfileString(const QString& section, const QString& key, const QString& defaultValue,
                         const QString& iniPath) {
    return Lookup(Cache().Get(NativePath(iniPath)).get(), section, key, defaultValue);
}

int GetProfileInt(const QString& section, const QString& key, int defaultValue, const QString& iniPath) {
    const std::shared_ptr<const IniText> ini = Cache().Get(NativePath(iniPath));
    const QString value = ini ? ini->Value(section, key) : QString();
    return value.isNull() ? defaultValue : LeadingNumber(value);
}

bool WriteProfileString(const QString& section, const QString& key, const QString& value, const QString& iniPath) {
    return Rewrite(iniPath, [&](const QByteArray& bytes) { return ProfileBytesWith(bytes, section, key, value); });
}

bool DeleteProfileKey(const QString& section, const QString& key, const QString& iniPath) {
    if (GetProfileString(section, key, QString(), iniPath).isNull()) return true;
    return Rewrite(iniPath, [&](const QByteArray& bytes) {
        IniText ini(bytes);
        const QString text = ini.Valid() ? ini.Without(section, key) : QString();
        return text.isEmpty() ? QByteArray() : Encode(text, EncodingOf(bytes));
    });
}

QString ProfileStringFromBytes(const QByteArray& bytes, const QString& section, const QString& key,
                               const QString& defaultValue) {
    const IniText ini(bytes);
    return Lookup(&ini, section, key, defaultValue);
}

QByteArray ProfileBytesWith(const QByteArray& bytes, const QString& section, const QString& key, const QString& value) {
    IniText ini(bytes);
    QString line = value;
    for (QChar& c : line)
        if (c == u'\r' || c == u'\n' || c == u'\0') c = u' ';
    const QString text = ini.Valid() ? ini.With(section, key, line) : QString();
    return text.isEmpty() || text.size() * 2 > MaxFileSize ? QByteArray() : Encode(text, EncodingOf(bytes));
}
