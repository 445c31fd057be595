// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <optional>
#include <QtCore/QPointer>
#include <set>
#include <vector>

#include "Bitmap.h"
#include "CToolPanel.h"
#include "LookTable.h"
#include "ThumbnailThread.h"

class CEffectListView;
class CLookWnd;
class CSetAlphaWnd;
class QAbstractButton;
struct ToolFacts;

// Base of the panels of tools that lay one look over the picture: lists of looks, each shown on a piece of the user's
// own picture or by a picture that came with it, in categories behind buttons with covers where there are several, and
// the strength window. A tool adds the table of its looks.
//
// A category is filled when it is first shown after the panel was opened (entering the tool, opening a picture); where
// the thumbnails don't show the picture, once. Covers
// and thumbnails are made on a thread of their own, which works on copies and posts each row as it is ready; the rows
// are made here. Stopping a fill drops the rows that are still under way by their generation. Main thread.
class CLookListPanel : public CToolPanel {
    Q_OBJECT

  public:
    // Logical pixels of a list's thumbnail and of a category's cover.
    static constexpr QSize ThumbnailSize{70, 96};
    static constexpr QSize CoverSize{47, 47};

    ~CLookListPanel() override;

    // What lays a picture of the folder I18N/Images/EffectBk over a thumbnail; for an empty name nothing but the
    // picture is shown.
    static QString OverlayAttributes(const QString& name);

    void OnFrameMessage(const FrameMessage& message) override;

    // The category on show, and whether its list has all its rows.
    int Category() const { return m_category; }
    bool IsLoaded(int category) const { return m_loaded.count(category) > 0; }
    bool IsFilling() const { return m_thread.IsRunning(); }
    // The list of a category; null for a number that no category has.
    CEffectListView* List(int category) const;
    // The strength window; null before it was first needed.
    CSetAlphaWnd* Strength() const;

  protected:
    // `stack` names the skin's stack of lists. The table outlives the panel; the derived class creates the skin.
    CLookListPanel(ToolHost& host, const ToolFacts& tool, const LookTable& looks, QString stack, QWidget* parent);

    QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override;
    // A list of the table's tiles.
    virtual CEffectListView* MakeList(QWidget* parent);
    void OnNotify(const Notify& notify) override;
    // Turning to the page alone changes nothing.
    void Refresh() override {}

  private:
    struct CategoryList {
        CEffectListView* list = nullptr;
        std::vector<int> looks;  // by row
    };

    CLookWnd* Canvas() const;
    const LookCategory* RowOf(int category) const;
    QAbstractButton* Button(const LookCategory& category) const;
    int CategoryOf(int look) const;
    void Open();
    Bitmap MakeThumbnailBase() const;
    void Close();
    void ShowCategory(int category);
    void Fill(int category);
    std::vector<ThumbnailThread::Step> CoverSteps();
    std::vector<ThumbnailThread::Step> RowSteps(int category);
    std::optional<HandOffMessage> MakeRow(const Bitmap& base, int category, int look, std::uint64_t generation) const;
    void WriteCover(const Bitmap& base, int look, const QString& path) const;
    void ShowCover(const LookCategory& category);
    void AddRow(const HandOffMessage& row);
    void Choose(int category, int row);
    // Selects the row of the look in force and shows the strength window; without one neither.
    void ShowLook();
    void ClearSelections();
    void TakeStrength(int percent, bool moving);
    CSetAlphaWnd& NeedStrength();

    const int m_tool;
    const LookTable& m_table;
    const QString m_stack;
    std::map<int, CategoryList> m_lists;
    std::set<int> m_loaded;
    int m_category = 0;
    bool m_isOpen = false;
    bool m_coversDue = false;
    Bitmap m_thumbnailBase;
    std::uint64_t m_generation = 0;
    // A child of the main window, where it floats.
    QPointer<CSetAlphaWnd> m_strength;
    ThumbnailThread m_thread;
};
