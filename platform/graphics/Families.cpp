// SPDX-License-Identifier: GPL-3.0-or-later
#include "Families.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <QtCore/QHash>
#include <QtGui/QFontDatabase>

namespace {

// Families that were drawn to the widths of another one; the aliases of fontconfig's 30-metric-aliases.conf.
struct SameMetrics {
    const char* family;
    std::array<const char*, 4> standIns;
};
constexpr std::array<SameMetrics, 3> Metrics{{
    {"Arial", {"Liberation Sans", "Arimo", "Albany", "Albany AMT"}},
    {"Times New Roman", {"Liberation Serif", "Tinos", "Thorndale", "Thorndale AMT"}},
    {"Courier New", {"Liberation Mono", "Cousine", "Cumberland", "Cumberland AMT"}},
}};

constexpr std::array<const char*, 3> Generic{"serif", "monospace", "sans-serif"};

constexpr std::array<const char*, 5> Emoji{"Noto Color Emoji", "Apple Color Emoji", "Segoe UI Emoji", "Twemoji",
                                           "JoyPixels"};

// Asking for a family costs as much as shaping a line; families do not come and go while the program runs.
bool IsThere(const QString& family) {
    static std::mutex lock;
    static QHash<QString, bool> known;
    const std::lock_guard guard(lock);
    const auto found = known.constFind(family);
    return found != known.constEnd() ? *found : *known.insert(family, QFontDatabase::hasFamily(family));
}

QString StandInFor(const QString& name) {
    for (const SameMetrics& row : Metrics) {
        if (name.compare(QLatin1String(row.family), Qt::CaseInsensitive) != 0) continue;
        for (const char* standIn : row.standIns)
            if (IsThere(QLatin1String(standIn))) return QLatin1String(standIn);
    }
    return {};
}

bool IsGeneric(const QString& family) {
    static const QStringList names{QStringLiteral("serif"), QStringLiteral("sans serif"), QStringLiteral("sans-serif"),
                                   QStringLiteral("sans"), QStringLiteral("monospace")};
    return names.contains(family, Qt::CaseInsensitive);
}

}  // namespace

QString InstalledFamily(const QString& name) {
    if (name.isEmpty()) return {};
    return IsThere(name) ? name : StandInFor(name);
}

QString FamilyFor(const QString& name) {
    if (const QString installed = InstalledFamily(name); !installed.isEmpty()) return installed;
    for (const char* generic : Generic)
        if (IsThere(QLatin1String(generic))) return QLatin1String(generic);
    return QLatin1String(Generic.front());
}

QString EmojiFamily() {
    for (const char* family : Emoji)
        if (IsThere(QLatin1String(family))) return QLatin1String(family);
    return {};
}

QStringList TextFamilies() {
    QStringList families;
    for (const QString& family : QFontDatabase::families())
        if (!QFontDatabase::isPrivateFamily(family) && !IsGeneric(family)) families << family;
    for (const SameMetrics& row : Metrics) {
        const QString name = QLatin1String(row.family);
        if (!families.contains(name) && !StandInFor(name).isEmpty()) families << name;
    }
    std::sort(families.begin(), families.end(),
              [](const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
    return families;
}
