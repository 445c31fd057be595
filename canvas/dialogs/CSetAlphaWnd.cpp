// SPDX-License-Identifier: GPL-3.0-or-later
#include "CSetAlphaWnd.h"

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>
#include <QtWidgets/QLabel>

#include "CSliderCtrl.h"

namespace {

// How far the shadow reaches beyond the window, and how far it falls, in logical pixels.
constexpr int Reach = 16;
constexpr int Fall = 4;
constexpr double Corner = 5.0;

// Soft shadow of the window, a sibling below it: what lies outside of a child window it cannot paint itself.
class Shadow : public QWidget {
  public:
    explicit Shadow(QWidget* owner) : QWidget(owner) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        resize(CSetAlphaWnd::Width + 2 * Reach, CSetAlphaWnd::Height + 2 * Reach);
        hide();
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        if (m_drawn.devicePixelRatio() != devicePixelRatioF() || m_drawn.isNull()) Draw();
        QPainter(this).drawPixmap(0, 0, m_drawn);
    }

  private:
    void Draw() {
        m_drawn = QPixmap(size() * devicePixelRatioF());
        m_drawn.setDevicePixelRatio(devicePixelRatioF());
        m_drawn.fill(Qt::transparent);
        QPainter painter(&m_drawn);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(20, 30, 45, 4));
        const QRectF window(Reach, Reach + Fall, CSetAlphaWnd::Width, CSetAlphaWnd::Height);
        for (int ring = Reach - Fall; ring > 0; --ring)
            painter.drawRoundedRect(window.adjusted(-ring, -ring, ring, ring), Corner + ring, Corner + ring);
    }

    QPixmap m_drawn;
};

}  // namespace

CSetAlphaWnd::CSetAlphaWnd(QWidget* owner, int x, int y) : CXMLWnd(owner), m_shadow(new Shadow(owner)) {
    setObjectName(QStringLiteral("SetAlphaWnd"));
    Create(QStringLiteral("SetAlphaWnd.xml"));
    m_slider = Find<CSliderCtrl>(QStringLiteral("SliderSetAlpha"));
    m_text = Find<QLabel>(QStringLiteral("TextSetAlpha"));
    setFixedSize(Width, Height);
    move(x, y);
    hide();
    owner->installEventFilter(this);
}

void CSetAlphaWnd::SetValue(int percent) {
    if (m_slider) m_slider->SetQuietly(percent);
    ShowText(percent);
}

int CSetAlphaWnd::Value() const {
    return m_slider ? m_slider->value() : 0;
}

void CSetAlphaWnd::ShowText(int percent) {
    if (m_text) m_text->setText(QString::number(percent) + u'%');
}

void CSetAlphaWnd::Place(const QWidget* owner) {
    move(FromLeft, owner->height() - FromBottom);
}

void CSetAlphaWnd::Appear() {
    Place(parentWidget());
    m_shadow->raise();
    raise();
    show();
}

void CSetAlphaWnd::OnNotify(const Notify& notify) {
    const bool moving = notify.type == u"valuechanging";
    if (notify.name != u"SliderSetAlpha" || !(moving || notify.type == u"valuechanged")) return;
    ShowText(notify.value);
    if (m_taker) m_taker(notify.value, moving);
}

bool CSetAlphaWnd::eventFilter(QObject* object, QEvent* event) {
    if (object == parentWidget() && (event->type() == QEvent::Resize || event->type() == QEvent::Move))
        Place(parentWidget());
    return CXMLWnd::eventFilter(object, event);
}

void CSetAlphaWnd::showEvent(QShowEvent* event) {
    CXMLWnd::showEvent(event);
    m_shadow->show();
}

void CSetAlphaWnd::hideEvent(QHideEvent* event) {
    CXMLWnd::hideEvent(event);
    m_shadow->hide();
}

void CSetAlphaWnd::moveEvent(QMoveEvent* event) {
    CXMLWnd::moveEvent(event);
    m_shadow->move(pos() - QPoint(Reach, Reach));
}
