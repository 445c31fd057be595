// SPDX-License-Identifier: GPL-3.0-or-later
#include "CXMLWnd.h"

#include <QtCore/QEventLoop>
#include <QtCore/QPointer>
#include <QtGui/QBitmap>
#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QVBoxLayout>

#include "NotifyWiring.h"
#include "SkinLoader.h"
#include "Style.h"

CXMLWnd::CXMLWnd(QWidget* parent) : QWidget(parent) {}

CXMLWnd::~CXMLWnd() {
    EndModal(ResultClose);
}

bool CXMLWnd::Create(const QString& skinName) {
    QWidget* root = LoadSkin(skinName, this, [this](const QString& className, QWidget* parent, const QString& name) {
        return CreateControl(className, parent, name);
    });
    if (!root) return false;
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(root);
    if (root->minimumSize() == root->maximumSize()) setFixedSize(root->minimumSize());
    // A field that goes down with its window loses the keyboard, and must not tell a window that is half gone.
    WireNotifications(this, [this, alive = QPointer<QObject>(&m_alive)](const Notify& notify) {
        if (alive) OnNotify(notify);
    });
    OnNotify({QStringLiteral("windowinit"), {}});
    return true;
}

QWidget* CXMLWnd::CreateControl(const QString&, QWidget*, const QString&) {
    return nullptr;
}

void CXMLWnd::OnNotify(const Notify&) {}

int CXMLWnd::ShowModal(QWidget* owner, const QString& title) {
    QWidget* top = owner ? owner->window() : nullptr;
    setParent(top, Qt::Dialog | Qt::FramelessWindowHint);
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(title);
    adjustSize();
    if (top) move(top->frameGeometry().center() - rect().center());
    m_result = ResultClose;
    QEventLoop loop;
    m_loop = &loop;
    show();
    activateWindow();
    const QPointer<CXMLWnd> self(this);
    loop.exec();
    if (!self) return ResultClose;
    m_loop = nullptr;
    hide();
    return m_result;
}

void CXMLWnd::EndModal(int result) {
    if (!m_loop) return;
    m_result = result;
    m_loop->quit();
}

void CXMLWnd::closeEvent(QCloseEvent* event) {
    if (!m_loop) return QWidget::closeEvent(event);
    if (OnCloseRequest()) EndModal(ResultClose);
    event->ignore();
}

void CXMLWnd::keyPressEvent(QKeyEvent* event) {
    if (m_loop && event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

// Top-level windows without a frame are cut to a round rectangle, one pixel larger than the window as the corner needs.
void CXMLWnd::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (!isWindow() || !(windowFlags() & Qt::FramelessWindowHint)) return;
    QBitmap shape(size());
    shape.fill(Qt::color0);
    QPainter painter(&shape);
    painter.setBrush(Qt::color1);
    painter.setPen(Qt::color1);
    painter.drawRoundedRect(rect(), Style::WindowCorner / 2.0, Style::WindowCorner / 2.0);
    painter.end();
    setMask(shape);
}

void CXMLWnd::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}
