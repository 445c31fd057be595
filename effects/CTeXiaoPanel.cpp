// SPDX-License-Identifier: GPL-3.0-or-later
#include "CTeXiaoPanel.h"

#include <algorithm>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QStackedWidget>

#include "AppPaths.h"
#include "CCoverButton.h"
#include "CEffectListView.h"
#include "ClickCount.h"
#include "CSetAlphaWnd.h"
#include "EffectCatalogue.h"
#include "EffectWnd.h"
#include "Messages.h"
#include "PC_File.h"
#include "RunTask.h"
#include "ToolHost.h"

namespace {

constexpr int FirstCategory = 1;
constexpr int CoverQuality = 90;

QString CoverFolder() {
    return AppPath(QStringLiteral("Temp/TeXiao"));
}

QString CoverPath(const EffectCategory& category) {
    return CoverFolder() + u'/' + category.CoverFile();
}

// The same cover for a screen of a scale above 1.
QString FineCoverPath(const EffectCategory& category) {
    return CoverFolder() + u'/' + QLatin1String(category.stem) + QStringLiteral("@2x.jpg");
}

// Without a thumbnail of its own an effect shows nothing but the picture.
QString OverlayAttributes(const QString& thumbnail) {
    if (thumbnail.isEmpty()) return {};
    return QStringLiteral("file='%1' dest='0,0,%2,%3' ")
        .arg(ResourcePath(QStringLiteral("I18N/Images/EffectBk/") + thumbnail))
        .arg(CEffectWnd::ThumbnailSize.width())
        .arg(CEffectWnd::ThumbnailSize.height());
}

void WriteCover(const Bitmap& base, int effect, const QString& path) {
    if (!base) return;
    Bitmap cover = base;
    if (!CEffectLogic::RenderThumbnail(&cover, effect)) cover = base;
    PC_File().OnSaveHDJpeg(path.toStdWString().c_str(), cover, CoverQuality, 0, nullptr, 0, 100);
}

HandOffMessage MakeRow(const Bitmap& base, int category, int effect, std::uint64_t generation) {
    const CEffectInfo info = GetEffectInfo(effect);
    HandOffMessage row;
    row.kind = HandOffMessage::EffectList;
    row.text = info.Name;
    row.value = effect;
    row.colour = info.Colour;
    row.background = OverlayAttributes(info.Thumbnail);
    row.thumbnail = base;
    if (!CEffectLogic::RenderThumbnail(&row.thumbnail, effect)) row.thumbnail = base;
    row.list = category;
    row.generation = generation;
    return row;
}

}  // namespace

CTeXiaoPanel::CTeXiaoPanel(ToolHost& host, QWidget* parent) : CToolPanel(parent), m_host(host) {
    ReadUserLooks();
    Create(QStringLiteral("texiao.xml"));
}

CTeXiaoPanel::~CTeXiaoPanel() {
    m_thread.Stop();
}

QWidget* CTeXiaoPanel::CreateControl(const QString& className, QWidget* parent, const QString&) {
    if (className == u"CCoverButton") return new CCoverButton(parent);
    for (const EffectCategory& category : EffectCategories()) {
        if (className != category.ListClass()) continue;
        auto* list = new CEffectListView(parent);
        connect(list, &CEffectListView::ItemSelect, this, [this, list](int row) {
            OnNotify({QStringLiteral("itemselect"), list->objectName(), list, row});
        });
        m_lists[category.number].list = list;
        return list;
    }
    return nullptr;
}

CEffectListView* CTeXiaoPanel::List(int category) const {
    const auto found = m_lists.find(category);
    return found == m_lists.end() ? nullptr : found->second.list;
}

CEffectWnd* CTeXiaoPanel::Canvas() const {
    return qobject_cast<CEffectWnd*>(m_host.Canvas());
}

void CTeXiaoPanel::OnFrameMessage(const FrameMessage& message) {
    if (const auto* row = std::get_if<HandOffMessage>(&message)) AddRow(*row);
    if (std::holds_alternative<LeavingToolMessage>(message)) Close();
    if (std::holds_alternative<ImageLoadedMessage>(message)) Open();
    if (std::holds_alternative<ClearSelectionsMessage>(message)) ClearSelections();
    if (!std::holds_alternative<RefreshPanelMessage>(message)) return;
    if (!m_isOpen) return Open();
    // What undo and redo come to is worth seeing, in whichever category it is.
    const CEffectWnd* canvas = Canvas();
    const int category = canvas ? CategoryOfEffect(canvas->EffectIndex()) : 0;
    if (category != 0 && category != m_category) ShowCategory(category);
    ShowLook();
}

void CTeXiaoPanel::OnNotify(const Notify& notify) {
    for (const EffectCategory& category : EffectCategories()) {
        if (notify.Is(u"itemselect", category.List())) return Choose(category.number, notify.value);
        if (!notify.Is(u"selectchanged", category.Button()) || category.number == m_category) continue;
        ShowCategory(category.number);
        if (*category.clickCode) CountClick(QLatin1String(category.clickCode));
        return;
    }
}

// The lists begin anew, from the picture as it is now.
void CTeXiaoPanel::Open() {
    m_thread.Stop();
    ++m_generation;
    for (auto& [number, entry] : m_lists) {
        entry.list->Empty();
        entry.effects.clear();
    }
    m_loaded.clear();
    CEffectWnd* canvas = Canvas();
    m_isOpen = canvas != nullptr;
    m_coversDue = canvas && canvas->BuildThumbnailBase();
    if (auto* mine = Find<QAbstractButton>(FindCategory(UserCategory)->Button())) mine->setVisible(UserLookCount() > 0);
    ShowCategory(FirstCategory);
    ShowLook();
}

void CTeXiaoPanel::Close() {
    m_isOpen = false;
    m_thread.Stop();
    ++m_generation;
    if (m_strength) m_strength->hide();
}

void CTeXiaoPanel::ShowCategory(int category) {
    m_category = category;
    if (auto* button = Find<QAbstractButton>(FindCategory(category)->Button())) button->setChecked(true);
    if (auto* stack = Find<QStackedWidget>(QStringLiteral("TabLayoutUI_TeXiao"))) stack->setCurrentIndex(category - 1);
    if (CEffectWnd* canvas = Canvas()) canvas->SelectCategoryList(category);
    Fill(category);
}

// A fill that was stopped left rows behind; they are made again with the others.
void CTeXiaoPanel::Fill(int category) {
    const CEffectWnd* canvas = Canvas();
    if (IsLoaded(category) || !List(category) || !canvas || !canvas->ThumbnailBase()) return;
    m_thread.Stop();
    ++m_generation;
    m_lists[category].list->Empty();
    m_lists[category].effects.clear();
    std::vector<ThumbnailThread::Step> steps = m_coversDue ? CoverSteps() : std::vector<ThumbnailThread::Step>();
    std::vector<ThumbnailThread::Step> rows = RowSteps(category);
    std::move(rows.begin(), rows.end(), std::back_inserter(steps));
    m_thread.Start(std::move(steps));
}

std::vector<ThumbnailThread::Step> CTeXiaoPanel::CoverSteps() {
    MakeDirs(CoverFolder());
    const Bitmap base = Canvas()->BuildCoverBase(1.0);
    const Bitmap fine = devicePixelRatioF() > 1.0 ? Canvas()->BuildCoverBase(2.0) : Bitmap();
    std::vector<ThumbnailThread::Step> steps;
    for (const EffectCategory& category : EffectCategories()) {
        if (!HasEffect(category.coverIndex)) continue;
        steps.push_back([this, base, fine, &category, generation = m_generation] {
            WriteCover(base, category.coverIndex, CoverPath(category));
            WriteCover(fine, category.coverIndex, FineCoverPath(category));
            PostToMain(this, [this, &category, generation] {
                if (generation == m_generation) ShowCover(category);
            });
        });
    }
    steps.push_back([this, generation = m_generation] {
        PostToMain(this, [this, generation] { m_coversDue = m_coversDue && generation != m_generation; });
    });
    return steps;
}

void CTeXiaoPanel::ShowCover(const EffectCategory& category) {
    if (auto* button = Find<CCoverButton>(category.Button()))
        button->SetImage(QStringLiteral("file='%1' dest='12,5,59,52' ").arg(CoverPath(category)));
}

std::vector<ThumbnailThread::Step> CTeXiaoPanel::RowSteps(int category) {
    const Bitmap base = Canvas()->ThumbnailBase().Clone();
    std::vector<ThumbnailThread::Step> steps;
    for (const int effect : EffectsOfCategory(category))
        steps.push_back([this, base, category, effect, generation = m_generation] {
            PostToMain(this, [this, row = MakeRow(base, category, effect, generation)] { m_host.SendFrame(row); });
        });
    return steps;
}

void CTeXiaoPanel::AddRow(const HandOffMessage& row) {
    const auto found = m_lists.find(row.list);
    if (row.generation != m_generation || found == m_lists.end()) return;
    CategoryList& entry = found->second;
    entry.list->AddEffectItem(row.text, row.colour, row.background, row.thumbnail);
    entry.effects.push_back(row.value);
    if (entry.effects.size() == EffectsOfCategory(row.list).size()) m_loaded.insert(row.list);
    // While a task runs the effect is the worker's; the row is then marked when the task is over.
    const CEffectWnd* canvas = IsTaskRunning() ? nullptr : Canvas();
    if (canvas && canvas->EffectIndex() == row.value) entry.list->SelectItem(entry.list->count() - 1);
}

void CTeXiaoPanel::Choose(int category, int row) {
    CEffectWnd* canvas = Canvas();
    const std::vector<int>& effects = m_lists[category].effects;
    if (!canvas || m_host.IsBusy() || row < 0 || row >= static_cast<int>(effects.size())) return;
    ClearSelections();
    List(category)->SelectItem(row);
    canvas->RunEffect(effects[static_cast<std::size_t>(row)]);
    ShowLook();
    m_host.SetCompareMode(0);
}

void CTeXiaoPanel::ShowLook() {
    ClearSelections();
    const CEffectWnd* canvas = Canvas();
    const int index = canvas ? canvas->EffectIndex() : NoEffect;
    if (index == NoEffect) {
        if (m_strength) m_strength->hide();
        return;
    }
    for (auto& [number, entry] : m_lists) {
        const auto row = std::find(entry.effects.begin(), entry.effects.end(), index);
        if (row != entry.effects.end()) entry.list->SelectItem(static_cast<int>(row - entry.effects.begin()));
    }
    NeedStrength().SetValue(canvas->Alpha());
    NeedStrength().Appear();
}

void CTeXiaoPanel::ClearSelections() {
    for (auto& [number, entry] : m_lists) entry.list->ClearSelected();
}

// A value that comes late, when the tool is left or the effect gone, does nothing.
void CTeXiaoPanel::TakeStrength(int percent, bool moving) {
    CEffectWnd* canvas = Canvas();
    if (!canvas || canvas->EffectIndex() == NoEffect) return;
    canvas->SetStrength(percent, moving);
    m_host.SetCompareMode(0);
}

CSetAlphaWnd& CTeXiaoPanel::NeedStrength() {
    if (!m_strength) {
        QWidget* owner = window();
        m_strength = new CSetAlphaWnd(owner, 200, owner->height() - 200);
        m_strength->SetTaker([this](int percent, bool moving) { TakeStrength(percent, moving); });
    }
    return *m_strength;
}
