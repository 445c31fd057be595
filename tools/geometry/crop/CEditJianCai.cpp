// SPDX-License-Identifier: GPL-3.0-or-later
#include "CEditJianCai.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QComboBox>

#include "CCutWnd.h"
#include "CropRatio.h"
#include "KeptRatio.h"
#include "Language.h"

namespace {

// The present mode of the main screen.
QSize DesktopSize() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? (QSizeF(screen->size()) * screen->devicePixelRatio()).toSize() : QSize(1, 1);
}

}  // namespace

CEditJianCai::CEditJianCai(ToolHost& host, QWidget* parent) : CSizePanel(host, parent), m_screen(DesktopSize()) {
    Create(QLatin1String(CropTool.skin));
}

void CEditJianCai::FindControls() {
    m_ratios = Find<QComboBox>(QStringLiteral("ComboZiYouCaiJian"));
    m_lock = Find<QAbstractButton>(QStringLiteral("OptSuoDingChiCun"));
    m_swap = Find<QAbstractButton>(QStringLiteral("BtnJiaoHuanKuanGao"));
    if (!m_ratios) return;
    m_ratios->addItem(QStringLiteral("%1:%2(%3)")
                          .arg(m_screen.width())
                          .arg(m_screen.height())
                          .arg(LanguageText(QStringLiteral("ids_desktopscreen"))));
    m_ratios->setMaxVisibleItems(m_ratios->count());
}

QSize CEditJianCai::PictureSize() const {
    int width = 0, height = 0;
    if (CCutWnd* canvas = CanvasOf<CCutWnd>()) canvas->GetImageSize(&width, &height);
    return {width, height};
}

double CEditJianCai::RatioOf(int item) const {
    const auto index = static_cast<std::size_t>(item);
    if (index < CropRatios.size()) return CropRatios[index];
    return static_cast<double>(m_screen.height()) / m_screen.width();
}

void CEditJianCai::OnFrameMessage(const FrameMessage& message) {
    if (std::holds_alternative<ImageLoadedMessage>(message)) {
        RestState();
        ShowSelection();
    }
    if (PanelNewsOf<CropSelectionNews>(message)) ShowSelection();
    if (PanelNewsOf<CropGivenUpNews>(message)) OnCancel();
    if (std::holds_alternative<RefreshPanelMessage>(message)) TakeUpPicture();
}

// After entering the canvas is a new one, which keeps no proportion. After a move in the history the proportion that is
// kept is offered for the picture that came back.
void CEditJianCai::TakeUpPicture() {
    const CCutWnd* canvas = CanvasOf<CCutWnd>();
    if (canvas && m_lockState && canvas->Selection().Ratio() != m_ratioHW) RestState();
    if (canvas && m_lockState && !canvas->SelectionSize().isEmpty())
        FitRatioToImage();
    else
        ShowSelection();
}

void CEditJianCai::OnControl(const Notify& notify) {
    if (notify.type == u"windowinit") {
        FindControls();
        RestState();
    } else if (notify.Is(u"itemselect", u"ComboZiYouCaiJian")) {
        OnItem(notify.value);
    } else if (notify.Is(u"click", u"OptSuoDingChiCun")) {
        OnLock();
    } else if (notify.Is(u"click", u"BtnJiaoHuanKuanGao")) {
        OnSwap();
    }
}

// The size of what would be cut; nothing without a selection.
void CEditJianCai::ShowSelection() {
    const QSize size = CanvasOf<CCutWnd>() ? CanvasOf<CCutWnd>()->SelectionSize() : QSize();
    if (size.isEmpty())
        ClearSize();
    else
        ShowSize(size);
}

void CEditJianCai::ShowState() {
    if (m_lock) {
        m_lock->setChecked(m_lockState);
        m_lock->setEnabled(m_freeMode);
    }
    if (m_swap) m_swap->setEnabled(m_freeMode && !m_lockState);
}

void CEditJianCai::Unlock() {
    m_lockState = false;
    if (CCutWnd* canvas = CanvasOf<CCutWnd>()) canvas->SetRatio(0.0);
}

void CEditJianCai::RestState() {
    m_freeMode = true;
    Unlock();
    if (m_ratios) m_ratios->setCurrentIndex(0);
    ShowState();
    ClearSize();
}

void CEditJianCai::OnSideTyped(Side side) {
    CCutWnd* canvas = CanvasOf<CCutWnd>();
    const QSize picture = PictureSize();
    if (!canvas || picture.isEmpty()) return ClearSize();
    const bool width = side == Side::Width;
    const int value = Correct(side, 1, width ? picture.width() : picture.height());
    if (m_lockState) {
        const QSize size = width ? SizeByWidth(value, m_ratioHW, picture) : SizeByHeight(value, m_ratioHW, picture);
        ShowSizeByTyped(side, size);
        return canvas->SetSelectionSize(size.width(), size.height());
    }
    if (Value(width ? Side::Height : Side::Width) == 0) {
        // Nothing was said of the other side: it stays as it is framed, or whole.
        const QSize framed = canvas->SelectionSize().isEmpty() ? picture : canvas->SelectionSize();
        ShowSide(width ? Side::Height : Side::Width, width ? framed.height() : framed.width());
    }
    canvas->SetSelectionSize(Value(Side::Width), Value(Side::Height));
}

void CEditJianCai::OnItem(int item) {
    CCutWnd* canvas = CanvasOf<CCutWnd>();
    if (!canvas || PictureSize().isEmpty()) return RestState();
    LeaveCompare();
    const double ratio = RatioOf(item);
    m_freeMode = ratio <= 0.0;
    if (m_freeMode) {
        Unlock();
        ShowState();
        return canvas->SetDefaultSelection();
    }
    m_lockState = true;
    m_ratioHW = ratio;
    ShowState();
    FitRatioToImage();
}

void CEditJianCai::FitRatioToImage() {
    CCutWnd* canvas = CanvasOf<CCutWnd>();
    const QSize picture = PictureSize();
    if (!canvas || picture.isEmpty()) return;
    ShowSize(FitRatio(picture, m_ratioHW));
    canvas->SetRatio(m_ratioHW);
    canvas->SetSelectionSize(Value(Side::Width), Value(Side::Height));
}

// There is no proportion to lock before both fields hold a number.
void CEditJianCai::OnLock() {
    LeaveCompare();
    const QSize size = Values();
    if (m_lockState || size.isEmpty()) {
        Unlock();
        return ShowState();
    }
    m_lockState = true;
    m_ratioHW = static_cast<double>(size.height()) / size.width();
    ShowState();
    FitRatioToImage();
}

void CEditJianCai::OnSwap() {
    CCutWnd* canvas = CanvasOf<CCutWnd>();
    const QSize size = Values(), picture = PictureSize();
    if (!canvas || size.isEmpty() || picture.isEmpty()) return;
    LeaveCompare();
    m_ratioHW = static_cast<double>(size.width()) / size.height();
    ShowSize(Swapped(size, picture));
    canvas->SetSelectionSize(Value(Side::Width), Value(Side::Height));
}

void CEditJianCai::OnOk() {
    if (CCutWnd* canvas = CanvasOf<CCutWnd>()) canvas->CropToSelection();
}

// The default is on show, and the next press draws over it.
void CEditJianCai::OnCancel() {
    RestState();
    CCutWnd* canvas = CanvasOf<CCutWnd>();
    if (!canvas) return;
    canvas->StartDrawing();
    canvas->SetDefaultSelection();
    ClearSize();
}
