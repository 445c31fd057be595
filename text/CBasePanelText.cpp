// SPDX-License-Identifier: GPL-3.0-or-later
#include "CBasePanelText.h"

#include <algorithm>
#include <QtCore/QScopedValueRollback>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollBar>

#include "CColorButton.h"
#include "CColorWnd.h"
#include "CFontCombo.h"
#include "CNumberEdit.h"
#include "CSliderCtrl.h"
#include "CWordEdit.h"
#include "CWordWnd.h"
#include "Language.h"

namespace {

constexpr int LargestSize = 1000, SizeForNone = 10;
// The list of sizes opens with the selected one in view.
constexpr int SizeRow = 25, FarthestScroll = 300;

}  // namespace

const std::array<CBasePanelText::Option, 5> CBasePanelText::Options{
    {{"BtnCuTi", &WordStyle::bold, &CWordWnd::SetBold},
     {"BtnXieTi", &WordStyle::italic, &CWordWnd::SetItalic},
     {"BtnXiaHuaXian", &WordStyle::underline, &CWordWnd::SetUnderline},
     {"BtnYinYing", &WordStyle::shadow, &CWordWnd::SetShadow},
     {"BtnShuPai", &WordStyle::vertical, &CWordWnd::SetVertical}}};

CBasePanelText::CBasePanelText(ToolHost& host, QWidget* parent) : CToolPanel(host, parent) {
    Create(QLatin1String(TextTool.skin));
}

QWidget* CBasePanelText::CreateControl(const QString& className, QWidget* parent, const QString&) {
    if (className == QLatin1String("CWordEdit")) return new CWordEdit(parent);
    if (className == QLatin1String("CColorButton")) return new CColorButton(parent);
    if (className == QLatin1String("CFontCombo")) return new CFontCombo(parent);
    return nullptr;
}

CWordWnd* CBasePanelText::Wnd() const {
    return CanvasOf<CWordWnd>();
}

void CBasePanelText::FindControls() {
    m_text = Find<CWordEdit>(QStringLiteral("EditWenZi"));
    m_add = Find<QAbstractButton>(QStringLiteral("BtnAddWenZi"));
    m_color = Find<CColorButton>(QStringLiteral("BtnColor"));
    m_sizes = Find<QComboBox>(QStringLiteral("ComboZiHao"));
    m_size = Find<CNumberEdit>(QStringLiteral("EditZiHao"));
    m_fonts = Find<CFontCombo>(QStringLiteral("ComboZiTi"));
    m_alpha = Find<CSliderCtrl>(QStringLiteral("SlideTouMingDu"));
    m_alphaText = Find<QLabel>(QStringLiteral("TouMingDuVal"));
    m_prompt = LanguageText(QStringLiteral("ids_edt_inputtext"));
    if (m_sizes) {
        m_sizes->view()->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        m_sizes->view()->installEventFilter(this);
    }
}

// ---- messages

void CBasePanelText::OnFrameMessage(const FrameMessage& message) {
    if (std::holds_alternative<LeavingToolMessage>(message)) {
        Settle();
        if (m_colorWnd) m_colorWnd->Close();
        m_fresh = true;
        return;
    }
    if (std::holds_alternative<ImageLoadedMessage>(message)) return Reset();
    if (const auto* selected = PanelNewsOf<WordSelectedNews>(message)) return ShowStyle(selected->style);
    if (const auto* size = PanelNewsOf<WordSizeNews>(message)) {
        m_style.fontSize = size->fontSize;
        return ShowSize();
    }
    if (PanelNewsOf<WordEditNews>(message)) return WriteInSelected();
    if (std::holds_alternative<RefreshPanelMessage>(message)) Refresh();
}

void CBasePanelText::Refresh() {
    if (!Wnd()) return;
    if (m_fresh) return Reset();
    if (const auto style = Wnd()->SelectedStyle()) ShowStyle(*style);
}

void CBasePanelText::Reset() {
    if (!Wnd()) return;
    m_fresh = false;
    m_edited = false;
    m_empty = false;
    ShowText(m_prompt);
    if (m_add && isVisible()) m_add->setFocus(Qt::OtherFocusReason);
    ShowDefaultSize();
}

// ---- notifications

void CBasePanelText::OnNotify(const Notify& notify) {
    if (notify.type == u"windowinit") {
        FindControls();
        return ShowStyle(m_style);
    }
    // Compare hides the canvas, and the keyboard may then come to the panel: that is no act of the user.
    if (notify.type != u"setfocus" && notify.type != u"killfocus") LeaveCompare();
    // Another window has the keyboard now: it comes back to where it was, and nothing was finished.
    if (notify.type == u"killfocus" && !isActiveWindow()) return;
    if (notify.name == u"EditWenZi") return OnText(notify);
    for (const Option& option : Options)
        if (notify.type == u"click" && notify.name == QLatin1String(option.control)) return OnOption(option);
    if (notify.Is(u"click", u"BtnAddWenZi")) return OnAdd();
    if (notify.Is(u"click", u"BtnColor")) return OnColor();
    if (notify.Is(u"itemselect", u"ComboZiHao")) return OnSizeItem(notify.value);
    if (notify.Is(u"itemselect", u"ComboZiTi")) return OnFont(notify.value);
    if (notify.Is(u"textchanged", u"EditZiHao")) return OnSizeTyped();
    if (notify.Is(u"killfocus", u"EditZiHao")) return Settle();
    if (notify.Is(u"valuechanging", u"SlideTouMingDu")) return OnAlpha(notify.value, false);
    if (notify.Is(u"valuechanged", u"SlideTouMingDu")) return OnAlpha(notify.value, true);
}

void CBasePanelText::OnText(const Notify& notify) {
    if (!m_text) return;
    if (notify.type == u"setfocus") {
        m_empty = m_text->Text() == m_prompt && !m_edited;
        if (m_empty) ShowText({});
    } else if (notify.type == u"killfocus") {
        if (m_text->Text().isEmpty()) ShowText(m_prompt);
        Settle();
    } else if (notify.type == u"enchange" && !m_programmatic) {
        const QString text = m_text->Text();
        if (text.isEmpty()) m_edited = false;
        if (!text.isEmpty() && text != m_prompt) m_edited = true;
        if (CWordWnd* canvas = Wnd()) canvas->SetText(text);
    }
}

void CBasePanelText::OnAdd() {
    m_empty = false;
    const QString text = m_text ? m_text->Text() : QString();
    if (text.isEmpty() || (text == m_prompt && !m_edited)) return;
    CWordWnd* canvas = Wnd();
    if (!canvas) return;
    Settle();
    ShowDefaultSize();
    canvas->AddText(text, m_style);
}

void CBasePanelText::OnOption(const Option& option) {
    const auto* button = Find<QAbstractButton>(QLatin1String(option.control));
    if (!button) return;
    m_style.*option.field = button->isChecked();
    if (CWordWnd* canvas = Wnd()) (canvas->*option.set)(button->isChecked());
    Settle();
}

void CBasePanelText::OnSizeItem(int index) {
    if (!m_sizes) return;
    m_style.fontSize = m_sizes->itemText(index).toInt();
    ShowSize();
    if (CWordWnd* canvas = Wnd()) canvas->SetFontSize(m_style.fontSize);
    Settle();
}

// What takes the place of a number that can't be is selected, so that the next key replaces it.
void CBasePanelText::OnSizeTyped() {
    if (!m_size) return;
    const int typed = m_size->Value();
    if (typed >= 1) m_style.fontSize = std::min(typed, LargestSize);
    if (typed == 0) m_style.fontSize = SizeForNone;
    if (typed == 0 || typed > LargestSize) m_size->ShowValue(m_style.fontSize);
    if (typed == 0) m_size->selectAll();
    if (m_sizes) m_sizes->setCurrentIndex(m_sizes->findText(m_size->text()));
    if (CWordWnd* canvas = Wnd()) canvas->SetFontSize(m_style.fontSize);
}

void CBasePanelText::OnFont(int index) {
    if (!m_fonts || index < 0) return;
    m_style.fontName = m_fonts->itemText(index);
    m_fonts->ShowFamily(m_style.fontName);
    if (CWordWnd* canvas = Wnd()) canvas->SetFontName(m_style.fontName);
    Settle();
}

void CBasePanelText::OnAlpha(int percent, bool settled) {
    m_style.alphaPercent = percent;
    if (m_alphaText) m_alphaText->setText(QString::number(percent) + u'%');
    if (CWordWnd* canvas = Wnd()) canvas->SetAlpha(percent * 0.01);
    if (settled) Settle();
}

// The button's state says whether the palette was open before the click.
void CBasePanelText::OnColor() {
    if (!m_color) return;
    if (!m_color->isChecked()) {
        if (m_colorWnd) m_colorWnd->Close();
        return;
    }
    if (!m_colorWnd) {
        m_colorWnd = new CColorWnd(window(), m_color, [this]() -> QWidget* { return Wnd(); });
        m_colorWnd->SetTaker([this](QRgb color, bool settled) { TakeColor(color, settled); });
    }
    m_colorWnd->Open();
}

void CBasePanelText::TakeColor(QRgb color, bool settled) {
    m_style.colour = color;
    if (m_color) m_color->SetColor(color);
    if (CWordWnd* canvas = Wnd()) canvas->SetColor(color);
    if (settled) Settle();
}

void CBasePanelText::Settle() {
    if (CWordWnd* canvas = Wnd()) canvas->SettleChange();
}

// ---- what is shown

void CBasePanelText::ShowText(const QString& text) {
    if (!m_text) return;
    const QScopedValueRollback guard(m_programmatic, true);
    m_text->ShowText(text);
    m_text->MarkPrompt(text == m_prompt && !m_edited);
}

void CBasePanelText::ShowSize() {
    const QString text = QString::number(m_style.fontSize);
    if (m_size) m_size->ShowValue(m_style.fontSize);
    if (m_sizes) m_sizes->setCurrentIndex(m_sizes->findText(text));
}

void CBasePanelText::ShowDefaultSize() {
    if (CWordWnd* canvas = Wnd()) m_style.fontSize = canvas->GetDefaultFontSize();
    ShowSize();
}

void CBasePanelText::ShowStyle(const WordStyle& style) {
    m_style = style;
    m_edited = !style.text.isEmpty();
    ShowText(style.text.isEmpty() && m_text && !m_text->hasFocus() ? m_prompt : style.text);
    m_empty = false;
    ShowSize();
    if (m_fonts) m_fonts->ShowFamily(style.fontName);
    if (m_color) m_color->SetColor(style.colour);
    for (const Option& option : Options)
        if (auto* button = Find<QAbstractButton>(QLatin1String(option.control)))
            button->setChecked(style.*option.field);
    if (m_alphaText) m_alphaText->setText(QString::number(style.alphaPercent) + u'%');
    if (m_alpha) m_alpha->SetQuietly(style.alphaPercent);
}

void CBasePanelText::WriteInSelected() {
    if (!m_text || !Wnd()) return;
    if (const auto style = Wnd()->SelectedStyle()) ShowStyle(*style);
    m_text->setFocus(Qt::OtherFocusReason);
    m_text->selectAll();
}

bool CBasePanelText::eventFilter(QObject* object, QEvent* event) {
    if (m_sizes && object == m_sizes->view() && event->type() == QEvent::Show)
        m_sizes->view()->verticalScrollBar()->setValue(
            std::min(std::max(0, m_sizes->currentIndex()) * SizeRow, FarthestScroll));
    return CToolPanel::eventFilter(object, event);
}

// Ctrl+Enter in the text adds it, as the button does.
void CBasePanelText::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || event->modifiers() != Qt::ControlModifier) return CToolPanel::keyPressEvent(event);
    LeaveCompare();
    OnAdd();
}
