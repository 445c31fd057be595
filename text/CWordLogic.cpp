// SPDX-License-Identifier: GPL-3.0-or-later
#include "CWordLogic.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

// How far a second one of a text lies from the first, picture pixels at a font size of 60.
constexpr double DoubleShift = 24.0;

struct SizeRow {
    int below;  // picture width
    int fontSize;
};
constexpr std::array<SizeRow, 5> SizeRows{{{600, 26}, {1000, 40}, {1500, 50}, {2000, 80}, {2500, 100}}};
constexpr int LargestDefault = 120;

}  // namespace

CWordLogic::CWordLogic(CHistoryManager& history) : CanvasLogic(TextTool, StepStyle::OnePerVisit, history) {}

int CWordLogic::DefaultFontSize() const {
    const int width = ImageSize().width();
    for (const SizeRow& row : SizeRows)
        if (width < row.below) return row.fontSize;
    return LargestDefault;
}

std::optional<WordStyle> CWordLogic::SelectedStyle() const {
    if (!HasSelected()) return {};
    const StringParams& text = Text(m_state.selected);
    WordStyle style;
    style.text = text.GetText();
    style.fontName = text.GetFontName();
    style.fontSize = static_cast<int>(text.GetFontSize());
    style.angle = text.GetAngle();
    style.colour = text.GetColor();
    style.bold = text.GetBold() != 0;
    style.italic = text.GetItalic() != 0;
    style.underline = text.GetUnderline() != 0;
    style.shadow = text.GetShadow() != 0;
    style.vertical = text.GetVertical() != 0;
    style.alphaPercent = qRound(text.GetAlpha() * 100);
    return style;
}

// ---- what the base asks

void CWordLogic::ForgetAll() {
    const std::lock_guard lock(m_textLock);
    m_state = {};
    m_drag = {};
    m_hover = None;
}

void CWordLogic::TakeSource(const Bitmap& picture) {
    const std::lock_guard lock(m_textLock);
    m_state = {};
    m_state.base = picture;
    m_drag = {};
    m_hover = None;
}

std::function<void()> CWordLogic::RememberTool() {
    return [this, state = m_state] {
        const std::lock_guard lock(m_textLock);
        m_state = state;
        m_hover = None;
    };
}

// ---- acts

void CWordLogic::Edit(const std::function<void(Texts&)>& change) {
    const std::lock_guard lock(m_textLock);
    change(m_state.texts);
    m_state.composed = {};
    m_state.recorded = false;
    m_state.deleted.clear();
    m_hover = None;
}

bool CWordLogic::Record() {
    CommitStep();
    return true;
}

void CWordLogic::Renumber() {
    for (std::size_t i = 0; i < m_state.texts.size(); ++i) m_state.texts[i].order = static_cast<int>(i) + 1;
}

bool CWordLogic::AddText(const WordStyle& style) {
    if (!HasPicture() || style.text.isEmpty()) return false;
    const ViewGeometry geometry = Geometry();
    StringParams text;
    text.SetCanvasSize(static_cast<float>(ImageSize().width()), static_cast<float>(ImageSize().height()));
    text.SetText(style.text);
    text.SetBold(style.bold);
    text.SetItalic(style.italic);
    text.SetColor(style.colour);
    text.SetShadow(style.shadow);
    text.SetVertical(style.vertical);
    text.SetUnderline(style.underline);
    text.SetFontSize(static_cast<float>(style.fontSize));
    text.SetAlpha(static_cast<float>(style.alphaPercent * 0.01));
    text.SetFontName(style.fontName);
    text.SetAngle(style.angle);
    text.SetOffset(geometry.ViewOffset().x(), geometry.ViewOffset().y());
    double width = 0, height = 0;
    text.GetBoxSize(&width, &height);
    const QRectF visible = geometry.HasPicture() ? geometry.ImageRect() : QRectF(QPointF(0, 0), QSizeF(ImageSize()));
    text.SetPosition(static_cast<float>(visible.x() + (visible.width() - width) * 0.5),
                     static_cast<float>(visible.y() + (visible.height() - height) * 0.5));
    return Whole([&] {
        Edit([&](Texts& texts) {
            texts.push_back(text);
            m_state.selected = Count() - 1;
            Renumber();
        });
        return Record();
    });
}

bool CWordLogic::DoubleSelected() {
    if (!HasSelected()) return false;
    StringParams text = SelectedText();
    const auto shift = static_cast<float>(std::max(1.0, DoubleShift * text.GetFontSize() / 60));
    float x = 0, y = 0;
    text.GetPosition(&x, &y);
    text.SetPosition(x + shift, y + shift);
    return Whole([&] {
        Edit([&](Texts& texts) {
            texts.push_back(text);
            m_state.selected = Count() - 1;
            Renumber();
        });
        return Record();
    });
}

bool CWordLogic::DeleteSelected() {
    if (!HasSelected()) return false;
    return Whole([&] {
        std::vector<Deleted> deleted = m_state.deleted;
        const auto place = static_cast<std::size_t>(m_state.selected);
        deleted.push_back({m_state.texts[place], place});
        Edit([&](Texts& texts) {
            texts.erase(texts.begin() + m_state.selected);
            m_state.selected = None;
            Renumber();
        });
        m_state.deleted = std::move(deleted);
        return Record();
    });
}

bool CWordLogic::RestoreDeleted() {
    if (m_state.deleted.empty()) return false;
    return Whole([&] {
        std::vector<Deleted> deleted = m_state.deleted;
        const Deleted last = deleted.back();
        deleted.pop_back();
        Edit([&](Texts& texts) {
            const std::size_t place = std::min(last.place, texts.size());
            texts.insert(texts.begin() + static_cast<std::ptrdiff_t>(place), last.text);
            m_state.selected = static_cast<int>(place);
            Renumber();
        });
        m_state.deleted = std::move(deleted);
        return Record();
    });
}

bool CWordLogic::ChangeSelected(const std::function<void(StringParams&)>& change) {
    if (!HasSelected()) return false;
    Edit([&](Texts&) { change(SelectedText()); });
    return true;
}

bool CWordLogic::MoveSelected(int dx, int dy) {
    return HasSelected() && Whole([&] {
               ChangeSelected([=](StringParams& text) {
                   float x = 0, y = 0;
                   text.GetPosition(&x, &y);
                   text.SetPosition(x + static_cast<float>(dx), y + static_cast<float>(dy));
               });
               return Record();
           });
}

bool CWordLogic::TurnSelected(int degrees) {
    return HasSelected() && Whole([&] {
               ChangeSelected([=](StringParams& text) { text.SetAngle(text.GetAngle() + degrees); });
               return Record();
           });
}

// The lock is held.
void CWordLogic::Raise(int index) {
    auto& texts = m_state.texts;
    std::rotate(texts.begin() + index, texts.begin() + index + 1, texts.end());
    m_state.selected = Count() - 1;
    Renumber();
}

bool CWordLogic::SelectNext(bool forward) {
    if (Count() == 0) return false;
    return Whole([&] {
        // A single text only gets selected.
        if (Count() == 1) {
            m_state.selected = 0;
            return true;
        }
        Edit([&](Texts& texts) {
            if (!forward && HasSelected()) {
                std::rotate(texts.begin(), texts.end() - 1, texts.end());
                m_state.selected = Count() - 1;
                Renumber();
            } else if (HasSelected()) {
                Raise(0);
            } else {
                m_state.selected = Count() - 1;
            }
        });
        return Record();
    });
}

void CWordLogic::Deselect() {
    m_state.selected = None;
}
