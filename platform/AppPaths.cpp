// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppPaths.h"

#include <algorithm>
#include <array>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

#include "SharedText.h"

namespace {

SharedText g_currentImagePath;

QString WithoutTrailingSlash(QString path) {
    while (path.size() > 1 && path.endsWith(u'/')) path.chop(1);
    return path;
}

// Asked of the system, since applicationDirPath() wants an application object and tests of headless code have none.
QString ProgramDir() {
    static const QString folder = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalPath();
    return folder;
}

QString DefaultAppDir() {
    const QString program = ProgramDir();
    if (!program.isEmpty() && QFileInfo(program).isWritable()) return program;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return WithoutTrailingSlash(data) + QStringLiteral("/QUINCE");
}

bool Exists(const QString& path) {
    return QFileInfo::exists(path);
}

// Kinds that are recognised by extension; three letters and four. The picture itself is judged by content when opened.
constexpr std::array ThreeLetters = {
    "bmp", "gif", "jpg", "png", "mng", "jng", "tif", "tga", "pcx", "wmf", "emf", "j2k", "jp2", "jbg", "j2c", "jpc",
    "pgx", "pnm", "pgm", "ppm", "ras", "jpe", "jxl", "hif", "dng", "cr2", "cr3", "crw", "nef", "nrw", "arw", "sr2",
    "srf", "orf", "rw2", "raf", "pef", "srw", "rwl", "3fr", "iiq", "kdc", "dcr", "mrw", "erf", "mef", "x3f", "raw"};
constexpr std::array FourLetters = {"jpeg", "tiff", "wbmp", "webp", "heic", "heif", "avif", "jfif"};

template <std::size_t N>
bool Contains(const std::array<const char*, N>& list, const QString& text) {
    return std::any_of(list.begin(), list.end(), [&](const char* entry) { return text == QLatin1String(entry); });
}

// The file dir + base + extension, whatever the case of its extension; empty when there is none.
QString FileWithExtension(const QString& dir, const QString& base, const QString& extension) {
    const QString file = NativePath(dir + base + extension);
    if (Exists(file)) return file;
    for (const QString& name : QDir(dir).entryList(QDir::Files))
        if (name.startsWith(base) && name.mid(base.size()).compare(extension, Qt::CaseInsensitive) == 0)
            return NativePath(dir + name);
    return {};
}

}  // namespace

QString GetAppDir() {
    const QString home = qEnvironmentVariable("QUINCE_HOME");
    if (!home.isEmpty()) return WithoutTrailingSlash(NativePath(QDir(home).absolutePath()));
    static const QString folder = DefaultAppDir();
    return folder;
}

QString AppPath(const QString& name) {
    return name.isEmpty() ? GetAppDir() : NativePath(GetAppDir() + u'/' + name);
}

QString ConfigIni() {
    return AppPath(QStringLiteral("Config.ini"));
}

QString ProgramPath(const QString& name) {
    return NativePath(ProgramDir() + u'/' + name);
}

QString ResourcePath(const QString& name) {
    const QString own = AppPath(name);
    if (Exists(own)) return own;
    const QString installed = ProgramPath(name);
    return Exists(installed) ? installed : own;
}

QStringList ResourceDirs(const QString& name) {
    QStringList folders;
    for (const QString& path : {AppPath(name), NativePath(ProgramDir() + u'/' + name)})
        if (QFileInfo(path).isDir() && !folders.contains(path)) folders << path;
    return folders;
}

QString NativePath(const QString& path) {
    QString native;
    native.reserve(path.size());
    for (const QChar c : path) {
        const QChar mapped = c == u'\\' ? QChar(u'/') : c;
        if (mapped == u'/' && native.endsWith(u'/')) continue;
        native += mapped;
    }
    return native;
}

QString GetDocumentsDir(const QString& name) {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (documents.isEmpty()) return {};
    const QString folder = WithoutTrailingSlash(NativePath(documents + u'/' + name));
    return MakeDirs(folder) ? folder : QString();
}

bool IsSupportedImage(const QString& path) {
    const QString lower = path.toLower();
    return Contains(ThreeLetters, lower.right(3)) || Contains(FourLetters, lower.right(4));
}

QString FrameFileFor(const QString& dir, const QString& base) {
    const QString strip = FileWithExtension(dir, base, QStringLiteral(".nlf"));
    return strip.isEmpty() ? FileWithExtension(dir, base, QStringLiteral(".vnbkwz")) : strip;
}

QString OrnateFrameFileFor(const QString& dir, const QString& base) {
    return FileWithExtension(dir, base, QStringLiteral(".vnbkxc"));
}

QString CurrentImagePath() {
    return g_currentImagePath.Get();
}

void SetCurrentImagePath(const QString& path) {
    g_currentImagePath.Set(path);
}
