// SPDX-License-Identifier: GPL-3.0-or-later
#include "SkinIcons.h"

#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtGui/QIconEngine>
#include <QtGui/QPainter>
#include <QtSvg/QSvgRenderer>

#include "AppPaths.h"
#include "Style.h"

namespace {

// The colour that the icon files are drawn in, to be replaced by that of the state.
constexpr char DrawnColor[] = "#2B2F36";

class Engine : public QIconEngine {
  public:
    Engine(QByteArray svg, QColor normal, QColor checked)
        : m_svg(std::move(svg)), m_normal(normal), m_checked(checked) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        QByteArray svg = m_svg;
        svg.replace(DrawnColor, ColorOf(mode, state).name().toLatin1());
        QSvgRenderer(svg).render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new Engine(*this); }

  private:
    QColor ColorOf(QIcon::Mode mode, QIcon::State state) const {
        if (mode == QIcon::Disabled) return Style::Disabled;
        return state == QIcon::On ? m_checked : m_normal;
    }

    QByteArray m_svg;
    QColor m_normal;
    QColor m_checked;
};

// The content of a file, read once: several buttons have the same icon. Empty when there is none.
QByteArray Content(const QString& path) {
    static QHash<QString, QByteArray> known;
    QByteArray& content = known[path];
    if (content.isNull()) {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly)) content = file.readAll();
    }
    return content;
}

QIcon Load(const QString& name, const QColor& normal, const QColor& checked) {
    const QByteArray svg = Content(ResourcePath(QStringLiteral("Images/Icons/") + name + QStringLiteral(".svg")));
    if (svg.isEmpty()) return {};
    return QIcon(new Engine(svg, normal, checked));
}

}  // namespace

QIcon SkinIcon(const QString& name) {
    return Load(name, Style::Icon, Style::AccentDark);
}

QIcon SkinIcon(const QString& name, const QColor& color) {
    return Load(name, color, color);
}
