// SPDX-License-Identifier: GPL-3.0-or-later
// Making and wiping of folders. Names are resolved one folder at a time from an open handle, so that a link that
// somebody puts in the way between a check and its use leads nowhere.
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStringList>

#include "AppPaths.h"

namespace {

constexpr int FolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
// Deeper than any folder of the program; each level holds a handle.
constexpr int MaxDepth = 64;

class Handle {
  public:
    explicit Handle(int value) : m_value(value) {}
    ~Handle() {
        if (m_value >= 0) ::close(m_value);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    void Reset(int value) {
        if (m_value >= 0) ::close(m_value);
        m_value = value;
    }
    int Get() const { return m_value; }
    // The handle now belongs to the caller.
    int Release() {
        const int value = m_value;
        m_value = -1;
        return value;
    }

  private:
    int m_value;
};

bool WipeHandle(int folder, int depth);

bool WipeEntry(int folder, const char* name, int depth) {
    struct stat entry = {};
    if (::fstatat(folder, name, &entry, AT_SYMLINK_NOFOLLOW) != 0) return errno == ENOENT;
    if (!S_ISDIR(entry.st_mode)) return ::unlinkat(folder, name, 0) == 0 || errno == ENOENT;
    const int inner = ::openat(folder, name, FolderFlags);
    return inner >= 0 && WipeHandle(inner, depth + 1);
}

// Takes the handle over.
bool WipeHandle(int folder, int depth) {
    DIR* list = depth < MaxDepth ? ::fdopendir(folder) : nullptr;
    if (!list) {
        ::close(folder);
        return false;
    }
    bool wiped = true;
    while (const dirent* entry = ::readdir(list)) {
        const bool self = std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0;
        if (!self && !WipeEntry(::dirfd(list), entry->d_name, depth)) wiped = false;
    }
    ::closedir(list);
    return wiped;
}

// `path` as names below `folder`; empty when it is not strictly below.
QStringList NamesBelow(const QString& folder, const QString& path) {
    const QString clean = QDir::cleanPath(NativePath(path));
    const QString prefix = QDir::cleanPath(folder) + u'/';
    return clean.startsWith(prefix) ? clean.mid(prefix.size()).split(u'/', Qt::SkipEmptyParts) : QStringList();
}

// The path with links resolved as far as it exists.
QString RealPath(const QString& path) {
    const QFileInfo info(path);
    if (info.exists()) return info.canonicalFilePath();
    const QString folder = info.absoluteDir().canonicalPath();
    return folder.isEmpty() ? QDir::cleanPath(info.absoluteFilePath()) : folder + u'/' + info.fileName();
}

bool IsBelow(const QString& path, const QString& folder) {
    return path.startsWith(folder.endsWith(u'/') ? folder : folder + u'/');
}

}  // namespace

bool WipeDir(const QString& path) {
    const QString appDir = GetAppDir();
    const QStringList names = NamesBelow(appDir, path);
    if (names.isEmpty()) return false;
    Handle folder(::open(QFile::encodeName(appDir).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.Get() < 0) return errno == ENOENT;
    for (const QString& name : names) {
        const int next = ::openat(folder.Get(), QFile::encodeName(name).constData(), FolderFlags);
        if (next < 0) return errno == ENOENT;
        folder.Reset(next);
    }
    return WipeHandle(folder.Release(), 0);
}

bool MakeDirs(const QString& path) {
    const QString clean = QDir::cleanPath(QDir(NativePath(path)).absolutePath());
    const QString temp = AppPath(QStringLiteral("Temp"));
    for (qsizetype slash = clean.indexOf(u'/', 1);; slash = clean.indexOf(u'/', slash + 1)) {
        const QString part = slash < 0 ? clean : clean.left(slash);
        const bool isPrivate = part == temp || part.startsWith(temp + u'/');
        const QByteArray name = QFile::encodeName(part);
        // Refused parents, such as a mount point that cannot be written, matter only when the next part fails too.
        if (::mkdir(name.constData(), isPrivate ? 0700 : 0777) != 0 && slash < 0) {
            struct stat present = {};
            return ::stat(name.constData(), &present) == 0 && S_ISDIR(present.st_mode);
        }
        if (slash < 0) return true;
    }
}

bool MakeTempPrivate() {
    const QByteArray name = QFile::encodeName(AppPath(QStringLiteral("Temp")));
    struct stat present = {};
    if (::lstat(name.constData(), &present) == 0 && !S_ISDIR(present.st_mode)) ::unlink(name.constData());
    if (!MakeDirs(AppPath(QStringLiteral("Temp")))) return false;
    const Handle folder(::open(name.constData(), FolderFlags));
    return folder.Get() >= 0 && ::fchmod(folder.Get(), 0700) == 0;
}

bool IsInTemp(const QString& path) {
    const QString temp = AppPath(QStringLiteral("Temp"));
    return IsBelow(RealPath(path), RealPath(temp)) ||
           IsBelow(QDir::cleanPath(QFileInfo(path).absoluteFilePath()), QDir::cleanPath(temp));
}
