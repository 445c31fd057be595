// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <mutex>
#include <optional>
#include <vector>

#include "CanvasLogic.h"
#include "StringParams.h"
#include "WordGeometry.h"
#include "WordStyle.h"

class QPainter;

inline constexpr ToolFacts TextTool{5,           SectionBasic, "btnTab3", "", "TextLayout", "BasePanelText.xml",
                                    "ids_wenzi", "888020301"};

// The text tool without its window: the picture, the texts over it from the lowest to the topmost, which one is
// selected, what the mouse does to them, and the steps that they make in the history.
//
// The texts are drawn over the view and burnt into the picture only when its result is asked for. All acts of one visit
// to the tool make one step, which holds the picture without the texts and a copy of each; leaving the tool turns it
// into the burnt picture.
//
// Points are whole client pixels. Threads, and what happens without a picture or memory: CanvasLogic; the texts have a
// lock of their own, since a paint draws them while a worker takes a picture up.
class CWordLogic : public CanvasLogic {
  public:
    // Nothing, as an index.
    static constexpr int None = -1;

    explicit CWordLogic(CHistoryManager& history = CHistoryManager::Instance());

    // Physical pixels per logical one, which the sides of buttons and the reach of guides follow.
    void SetScreenScale(double ratio) { m_ratio = ratio; }

    // The size that a new text gets, for the picture's width.
    int DefaultFontSize() const;

    // ---- the texts

    int Count() const { return static_cast<int>(m_state.texts.size()); }
    const StringParams& Text(int index) const { return m_state.texts[static_cast<std::size_t>(index)]; }
    int Selected() const { return m_state.selected; }
    // The style of the selected text; nothing without one.
    std::optional<WordStyle> SelectedStyle() const;

    // Each of these records its step, and is false when nothing came of it.

    // Adds a text in the middle of what is visible and selects it. Not without text or picture.
    bool AddText(const WordStyle& style);
    // A second one of the selected text, beside it and selected.
    bool DoubleSelected();
    bool DeleteSelected();
    // By picture pixels.
    bool MoveSelected(int dx, int dy);
    bool TurnSelected(int degrees);

    // Changes the selected text, to be recorded by CommitStep when the change is settled. False without one.
    bool ChangeSelected(const std::function<void(StringParams&)>& change);

    // Takes the deletions since the last other act back, one at a time, the last first. False when the last act was
    // not one.
    bool RestoreDeleted();
    bool MayRestoreDeleted() const { return !m_state.deleted.empty(); }

    // Selects the lowest text and brings it to the top; `forward` false sends the topmost to the bottom and selects the
    // next. False without texts.
    bool SelectNext(bool forward);
    void Deselect();

    // ---- the mouse

    // Takes hold of the topmost text under the point and brings it to the top; its buttons count only when it was
    // selected before. Beside all texts nothing is selected.
    WordHit Press(QPoint at);
    // What is held goes along; `snap` turns in steps of 15 degrees. False when nothing changed.
    bool MoveTo(QPoint at, bool snap);
    enum class Released { Nothing, Changed, Deleted };
    // Lets go. A press and a release on the delete button delete the text. What changed is recorded.
    Released Release(QPoint at);
    // Lets go with everything as it was at the press.
    void CancelPress();
    WordHit Held() const { return m_drag.hit; }
    // A press at this point would take hold of that.
    WordHit HitAt(QPoint at) const;
    // The topmost text under the mouse while none is selected, None for none. True when it is another one now.
    bool HoverAt(QPoint at);
    int Hovered() const { return m_hover; }

    // The lines through the picture's middle that hold the text that is moved.
    bool AtMiddleX() const { return m_drag.atMiddleX; }
    bool AtMiddleY() const { return m_drag.atMiddleY; }

    // ---- the view

    WordBox BoxOf(int index) const;
    WordButtons ButtonsOf(int index) const;
    // The client pixels that a text's ink may cover.
    QRect InkOnScreen(int index) const;
    // Draws the texts over the view of the picture, as far as they touch `area` of the client. Also while a worker
    // runs.
    void PaintTexts(QPainter& painter, const QRect& area) const;
    // Draws them over a picture of the whole at `scale` pixels per picture pixel, in place.
    void DrawTexts(Bitmap& reduced, double scale) const;

    // The picture without the texts.
    const Bitmap& Picture() const override { return m_state.base; }
    // The texts burnt into the picture; the picture itself without texts. Kept until something changes.
    Bitmap RenderResult() override;

    std::unique_ptr<CHistoryStep> BuildStep(bool finalImage) override;
    bool LoadStep(std::unique_ptr<CHistoryStep> step) override;
    bool HasParameters() const override { return Count() > 0; }
    bool OwnsRecord(int type) const override { return type == StringParams::Type; }
    bool HasWork() const override { return Count() > 0 || (StepOpen() && !m_state.recorded); }
    bool IsRecorded() const override { return m_state.recorded; }
    void OnStepCommitted() override;

  protected:
    void ForgetAll() override;
    void TakeSource(const Bitmap& picture) override;
    std::function<void()> RememberTool() override;
    std::unique_ptr<CViewState> MakeViewState() override;

  private:
    using Texts = std::vector<StringParams>;
    struct Deleted {
        StringParams text;
        std::size_t place;
    };
    // A plain value, and a cheap one, since bitmaps share their pixels and texts their shapes.
    struct State {
        Bitmap base;
        // The burnt picture; null until it is asked for.
        Bitmap composed;
        Texts texts;
        int selected = None;
        // The step that the tool stands on holds exactly this.
        bool recorded = false;
        // The snapshot that the base was read from; empty when that is not known.
        QString basePath;
        std::vector<Deleted> deleted;
    };
    // From press to release.
    struct Drag {
        WordHit hit = WordHit::Nothing;
        QPoint last;
        // Everything as it was at the press.
        State before;
        // The moved text's place as it would be without guides.
        QPointF free;
        // Of a turn: bearing at the press less the angle then, squared distance from the centre, size.
        int angleOffset = 0;
        double distanceSquare = 1;
        int fontSize = 0;
        bool atMiddleX = false;
        bool atMiddleY = false;
    };

    // Changes the texts under their lock, as an act that is to be recorded and after which no deletion is the last.
    void Edit(const std::function<void(Texts&)>& change);
    bool Record();
    void Renumber();
    // Brings it to the top and selects it.
    void Raise(int index);
    StringParams& SelectedText() { return m_state.texts[static_cast<std::size_t>(m_state.selected)]; }
    bool HasSelected() const { return m_state.selected != None; }
    bool IsOnBody(int index, QPoint at) const;
    int BodyAt(QPoint at) const;
    void BeginTurn(QPoint at);
    void TurnTo(QPoint at, bool snap);
    void DragTo(QPoint at);
    void PaintReduced(QPainter& painter, const ViewGeometry& geometry, const QRect& area) const;
    void PaintEnlarged(QPainter& painter, const ViewGeometry& geometry, const QRect& area) const;

    State m_state;
    Drag m_drag;
    int m_hover = None;
    double m_ratio = 1.0;
    mutable std::mutex m_textLock;
};
