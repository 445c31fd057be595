// SPDX-License-Identifier: GPL-3.0-or-later
#include "SavePlan.h"

#include <algorithm>
#include <QtCore/QFileInfo>

#include "AppPaths.h"
#include "Truncate.h"

namespace {

constexpr int SuffixLength = 4;
constexpr double BytesToKilobytes = 0.0009765625;

QString g_lastSaveFolder;

bool IsForbidden(QChar c) {
    return QStringLiteral("\\/:*?\"<>|").contains(c) || c.category() == QChar::Other_Control;
}

bool CanBeWritten(const QString& suffix) {
    return suffix == QLatin1String(".jpg") || suffix == QLatin1String(".bmp") || suffix == QLatin1String(".png");
}

}  // namespace

SaveType SaveTypeAt(int comboIndex) {
    const bool known = comboIndex >= 0 && comboIndex < static_cast<int>(SaveTypes.size());
    return SaveTypes[known ? comboIndex : 0];
}

QString LastSaveFolder() {
    return g_lastSaveFolder;
}

void SetLastSaveFolder(const QString& folder) {
    g_lastSaveFolder = folder;
}

bool IsValidSaveName(const QString& name) {
    if (name.isEmpty() || name == QLatin1String(".") || name == QLatin1String("..")) return false;
    return std::none_of(name.begin(), name.end(), IsForbidden);
}

QString SaveSizeText(quint32 bytes) {
    return QString::asprintf("%.1lfKB", bytes * BytesToKilobytes);
}

QString SaveFolderFromText(const QString& text) {
    return QFileInfo::exists(text) ? text : NativePath(text);
}

QString SaveFilePath(const QString& folder, const QString& name, const QString& suffix) {
    const QString separator = folder.endsWith(QLatin1Char('/')) ? QString() : QStringLiteral("/");
    return folder + separator + name + suffix;
}

SaveThumbnail SaveThumbnail::For(QSize picture) {
    const double w = std::max(1, picture.width()), h = std::max(1, picture.height());
    const double sx = Width / w, sy = Height / h;
    const double scale = sx > sy ? sy : sx;
    const int left = sx > sy ? Truncate((Width - w * scale) * 0.5) : 0;
    const int top = sx > sy ? 0 : Truncate((Height - h * scale) * 0.5);
    return {QRect(left, top, TruncateSide(w * scale), TruncateSide(h * scale))};
}

QString SaveThumbnail::Attributes(const QString& file) const {
    return QStringLiteral("file='%1' dest='%2,%3,%4,%5' ")
        .arg(file)
        .arg(place.left())
        .arg(place.top())
        .arg(place.left() + place.width())
        .arg(place.top() + place.height());
}

void SavePlan::SetSource(const QString& path, const QString& defaultFolder) {
    m_sourcePath = QFileInfo::exists(path) ? path : NativePath(path);
    const auto slash = m_sourcePath.lastIndexOf(QLatin1Char('/'));
    const QString file = m_sourcePath.mid(slash + 1);
    const auto dot = file.lastIndexOf(QLatin1Char('.'));
    m_source.folder = slash == 0 ? QStringLiteral("/") : m_sourcePath.left(std::max<qsizetype>(slash, 0));
    m_source.name = file.left(std::max<qsizetype>(dot, 0));
    m_sourceSuffix = m_sourcePath.right(SuffixLength).toLower();
    m_current = {g_lastSaveFolder.isEmpty() ? defaultFolder : g_lastSaveFolder,
                 m_source.name + QStringLiteral("_copy")};
    m_beforeCover = m_current;
    m_cover = Cover::Off;
    m_canCover = CanBeWritten(m_sourceSuffix) && !IsInTemp(m_sourcePath);
}

void SavePlan::ToggleCover(const QString& folder, const QString& name) {
    if (m_cover == Cover::Off) {
        m_beforeCover = {folder, name};
        m_cover = Cover::On;
    } else {
        m_current = m_beforeCover;
        m_cover = Cover::Off;
    }
}

QString SavePlan::ShownFolder() const {
    return m_cover == Cover::On ? m_source.folder : m_current.folder;
}

QString SavePlan::ShownName() const {
    return m_cover == Cover::On ? m_source.name : m_current.name;
}

QString SavePlan::FullPath(const QString& suffix) const {
    if (m_cover == Cover::On && suffix == m_sourceSuffix) return m_sourcePath;
    return SaveFilePath(SaveFolderFromText(m_current.folder), m_current.name, suffix);
}
