// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <set>
#include <vector>

#include "Bitmap.h"
#include "CToolPanel.h"
#include "ThumbnailThread.h"

class CEffectListView;
class CEffectWnd;
class CSetAlphaWnd;
class ToolHost;
struct EffectCategory;

// The panel of the effect tool: a button with a cover for each category, and behind it the list of the category's
// effects, each shown on a piece of the user's own picture.
//
// A category is filled when it is first chosen after the panel was opened (entering the tool, opening a picture).
// Covers and thumbnails are made on a thread of their own, which works on copies and posts each row as it is ready; the
// rows are made here. Stopping a fill drops the rows that are still under way by their generation. Main thread.
class CTeXiaoPanel : public CToolPanel {
    Q_OBJECT

  public:
    CTeXiaoPanel(ToolHost& host, QWidget* parent);
    ~CTeXiaoPanel() override;

    void OnFrameMessage(const FrameMessage& message) override;

    // The category on show, and whether its list has all its rows.
    int Category() const { return m_category; }
    bool IsLoaded(int category) const { return m_loaded.count(category) > 0; }
    bool IsFilling() const { return m_thread.IsRunning(); }
    // The list of a category; null for a number that no category has.
    CEffectListView* List(int category) const;
    // The strength window; null before it was first needed.
    CSetAlphaWnd* Strength() const { return m_strength; }

  protected:
    QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override;
    void OnNotify(const Notify& notify) override;

  private:
    struct CategoryList {
        CEffectListView* list = nullptr;
        std::vector<int> effects;  // by row
    };

    CEffectWnd* Canvas() const;
    void Open();
    void Close();
    void ShowCategory(int category);
    void Fill(int category);
    std::vector<ThumbnailThread::Step> CoverSteps();
    std::vector<ThumbnailThread::Step> RowSteps(int category);
    void ShowCover(const EffectCategory& category);
    void AddRow(const HandOffMessage& row);
    void Choose(int category, int row);
    // Selects the row of the effect in force and shows the strength window; without one neither.
    void ShowLook();
    void ClearSelections();
    void TakeStrength(int percent, bool moving);
    CSetAlphaWnd& NeedStrength();

    ToolHost& m_host;
    std::map<int, CategoryList> m_lists;
    std::set<int> m_loaded;
    int m_category = 1;
    bool m_isOpen = false;
    bool m_coversDue = false;
    std::uint64_t m_generation = 0;
    CSetAlphaWnd* m_strength = nullptr;  // owned by the main window
    ThumbnailThread m_thread;
};
