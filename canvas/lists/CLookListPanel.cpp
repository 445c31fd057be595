// SPDX-License-Identifier: GPL-3.0-or-later
#include "CLookListPanel.h"

#include <algorithm>
#include <QtCore/QFileInfo>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QStackedWidget>
#include <utility>

#include "AppPaths.h"
#include "CCoverButton.h"
#include "CEffectListView.h"
#include "ClickCount.h"
#include "CLookWnd.h"
#include "CSetAlphaWnd.h"
#include "Messages.h"
#include "PC_File.h"
#include "RunTask.h"
#include "Truncate.h"

namespace {

constexpr int CoverQuality = 90;

QString CoverFolder() {
    return AppPath(QStringLiteral("Temp/TeXiao"));
}

QString CoverPath(const LookCategory& category) {
    return CoverFolder() + u'/' + category.coverFile;
}

// The same cover for a screen of a scale above 1.
QString FineCoverPath(const LookCategory& category) {
    return CoverFolder() + u'/' + QFileInfo(category.coverFile).completeBaseName() + QStringLiteral("@2x.jpg");
}

}  // namespace

CLookListPanel::CLookListPanel(ToolHost& host, const ToolFacts& tool, const LookTable& looks, QString stack,
                               QWidget* parent)
    : CToolPanel(host, parent), m_tool(tool.number), m_table(looks), m_stack(std::move(stack)) {}

CLookListPanel::~CLookListPanel() {
    m_thread.Stop();
    delete m_strength;
}

QString CLookListPanel::OverlayAttributes(const QString& name) {
    if (name.isEmpty()) return {};
    return QStringLiteral("file='%1' dest='0,0,%2,%3' ")
        .arg(ResourcePath(QStringLiteral("I18N/Images/EffectBk/") + name))
        .arg(ThumbnailSize.width())
        .arg(ThumbnailSize.height());
}

CEffectListView* CLookListPanel::MakeList(QWidget* parent) {
    return new CEffectListView(parent, m_table.Tile());
}

QWidget* CLookListPanel::CreateControl(const QString& className, QWidget* parent, const QString& name) {
    if (className == u"CCoverButton") return new CCoverButton(parent);
    for (const LookCategory& category : m_table.Categories()) {
        if (className != category.listClass || name != category.list) continue;
        CEffectListView* list = MakeList(parent);
        connect(list, &CEffectListView::ItemSelect, this, [this, list](int row) {
            OnNotify({QStringLiteral("itemselect"), list->objectName(), list, row});
        });
        m_lists[category.number].list = list;
        return list;
    }
    return nullptr;
}

CEffectListView* CLookListPanel::List(int category) const {
    const auto found = m_lists.find(category);
    return found == m_lists.end() ? nullptr : found->second.list;
}

CSetAlphaWnd* CLookListPanel::Strength() const {
    return m_strength;
}

CLookWnd* CLookListPanel::Canvas() const {
    CLookWnd* canvas = CanvasOf<CLookWnd>();
    return canvas && canvas->Tool() == m_tool ? canvas : nullptr;
}

const LookCategory* CLookListPanel::RowOf(int category) const {
    for (const LookCategory& row : m_table.Categories())
        if (row.number == category) return &row;
    return nullptr;
}

// Null where there is but one category.
QAbstractButton* CLookListPanel::Button(const LookCategory& category) const {
    return category.button.isEmpty() ? nullptr : Find<QAbstractButton>(category.button);
}

// 0 for a look that no category has.
int CLookListPanel::CategoryOf(int look) const {
    for (const LookCategory& row : m_table.Categories()) {
        const std::vector<int> looks = m_table.LooksOf(row.number);
        if (std::find(looks.begin(), looks.end(), look) != looks.end()) return row.number;
    }
    return 0;
}

void CLookListPanel::OnFrameMessage(const FrameMessage& message) {
    if (const auto* row = std::get_if<HandOffMessage>(&message)) AddRow(*row);
    if (std::holds_alternative<LeavingToolMessage>(message)) Close();
    if (std::holds_alternative<ImageLoadedMessage>(message)) Open();
    if (std::holds_alternative<ClearSelectionsMessage>(message)) ClearSelections();
    if (!std::holds_alternative<RefreshPanelMessage>(message)) return;
    if (!m_isOpen) return Open();
    // What undo and redo come to is worth seeing, in whichever category it is.
    const CLookWnd* canvas = Canvas();
    const int category = canvas ? CategoryOf(canvas->Look()) : 0;
    if (category != 0 && category != m_category) ShowCategory(category);
    ShowLook();
}

void CLookListPanel::OnNotify(const Notify& notify) {
    for (const LookCategory& category : m_table.Categories()) {
        if (notify.Is(u"itemselect", category.list)) return Choose(category.number, notify.value);
        if (!notify.Is(u"selectchanged", category.button) || category.number == m_category) continue;
        ShowCategory(category.number);
        if (!category.clickCode.isEmpty()) CountClick(category.clickCode);
        return;
    }
}

// Lists that show the picture begin anew, from the picture as it is now.
void CLookListPanel::Open() {
    m_thread.Stop();
    ++m_generation;
    for (auto& [number, entry] : m_lists) {
        if (!m_table.ShowsPicture()) continue;
        entry.list->Empty();
        entry.looks.clear();
        m_loaded.erase(number);
    }
    m_isOpen = Canvas() != nullptr;
    m_thumbnailBase = MakeThumbnailBase();
    m_coversDue = !m_thumbnailBase.IsNull() && m_table.ShowsPicture();
    for (const LookCategory& category : m_table.Categories()) {
        QAbstractButton* button = Button(category);
        if (button) button->setVisible(category.coverFile.isEmpty() || !m_table.LooksOf(category.number).empty());
    }
    ShowCategory(m_table.Categories().front().number);
    ShowLook();
}

// What the thumbnails are drawn on; null where they show the picture and there is none.
Bitmap CLookListPanel::MakeThumbnailBase() const {
    const QSize size = m_table.Tile().thumbnail;
    const CLookWnd* canvas = Canvas();
    if (m_table.ShowsPicture()) return canvas ? canvas->ThumbnailBase(size, devicePixelRatioF()) : Bitmap();
    return {Truncate(size.width() * devicePixelRatioF()), Truncate(size.height() * devicePixelRatioF())};
}

void CLookListPanel::Close() {
    m_isOpen = false;
    m_thread.Stop();
    ++m_generation;
    if (m_strength) m_strength->hide();
}

void CLookListPanel::ShowCategory(int category) {
    m_category = category;
    const LookCategory* row = RowOf(category);
    if (QAbstractButton* button = Button(*row)) button->setChecked(true);
    if (auto* stack = Find<QStackedWidget>(m_stack))
        stack->setCurrentIndex(static_cast<int>(row - m_table.Categories().data()));
    Fill(category);
}

// A fill that was stopped left rows behind; they are made again with the others.
void CLookListPanel::Fill(int category) {
    if (IsLoaded(category) || !List(category) || !Canvas() || !m_thumbnailBase) return;
    m_thread.Stop();
    ++m_generation;
    m_lists[category].list->Empty();
    m_lists[category].looks.clear();
    std::vector<ThumbnailThread::Step> steps = m_coversDue ? CoverSteps() : std::vector<ThumbnailThread::Step>();
    std::vector<ThumbnailThread::Step> rows = RowSteps(category);
    std::move(rows.begin(), rows.end(), std::back_inserter(steps));
    m_thread.Start(std::move(steps));
}

std::vector<ThumbnailThread::Step> CLookListPanel::CoverSteps() {
    MakeDirs(CoverFolder());
    const Bitmap base = Canvas()->ThumbnailBase(CoverSize, 1.0);
    const Bitmap fine = devicePixelRatioF() > 1.0 ? Canvas()->ThumbnailBase(CoverSize, 2.0) : Bitmap();
    std::vector<ThumbnailThread::Step> steps;
    for (const LookCategory& category : m_table.Categories()) {
        if (category.coverFile.isEmpty() || m_table.LooksOf(category.number).empty()) continue;
        steps.push_back([this, base, fine, &category, generation = m_generation] {
            WriteCover(base, category.coverLook, CoverPath(category));
            WriteCover(fine, category.coverLook, FineCoverPath(category));
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

void CLookListPanel::WriteCover(const Bitmap& base, int look, const QString& path) const {
    if (!base) return;
    Bitmap cover = base;
    if (!m_table.Render(cover, look)) cover = base;
    PC_File().OnSaveHDJpeg(path.toStdWString().c_str(), cover, CoverQuality, 0, nullptr, 0, 100);
}

// Nothing for a look that has nothing to show.
std::optional<HandOffMessage> CLookListPanel::MakeRow(const Bitmap& base, int category, int look,
                                                      std::uint64_t generation) const {
    const LookInfo info = m_table.Info(look);
    HandOffMessage row;
    row.tool = m_tool;
    row.text = info.name;
    row.value = look;
    row.colour = info.colour;
    row.background = info.overlay;
    row.thumbnail = base;
    if (!m_table.Render(row.thumbnail, look)) {
        if (!m_table.ShowsPicture()) return {};
        row.thumbnail = base;
    }
    row.list = category;
    row.generation = generation;
    return row;
}

void CLookListPanel::ShowCover(const LookCategory& category) {
    if (auto* button = qobject_cast<CCoverButton*>(Button(category)))
        button->SetImage(QStringLiteral("file='%1' dest='12,5,59,52' ").arg(CoverPath(category)));
}

std::vector<ThumbnailThread::Step> CLookListPanel::RowSteps(int category) {
    const Bitmap base = m_thumbnailBase.Clone();
    std::vector<ThumbnailThread::Step> steps;
    for (const int look : m_table.LooksOf(category))
        steps.push_back([this, base, category, look, generation = m_generation] {
            if (const auto row = MakeRow(base, category, look, generation))
                PostToMain(this, [this, row = *row] { Host().SendFrame(row); });
        });
    steps.push_back([this, category, generation = m_generation] {
        PostToMain(this, [this, category, generation] {
            if (generation == m_generation) m_loaded.insert(category);
        });
    });
    return steps;
}

void CLookListPanel::AddRow(const HandOffMessage& row) {
    const auto found = m_lists.find(row.list);
    if (row.generation != m_generation || found == m_lists.end()) return;
    CategoryList& entry = found->second;
    entry.list->AddEffectItem(row.text, row.colour, row.background, row.thumbnail);
    entry.looks.push_back(row.value);
    // While a task runs the look is the worker's; the row is then marked when the task is over.
    const CLookWnd* canvas = IsTaskRunning() ? nullptr : Canvas();
    if (canvas && canvas->Look() == row.value) entry.list->SelectItem(entry.list->count() - 1);
}

void CLookListPanel::Choose(int category, int row) {
    CLookWnd* canvas = Canvas();
    const std::vector<int>& looks = m_lists[category].looks;
    if (!canvas || Host().IsBusy() || row < 0 || row >= static_cast<int>(looks.size())) return;
    ClearSelections();
    List(category)->SelectItem(row);
    const QString click = RowOf(category)->lookClick;
    if (canvas->RunLook(looks[static_cast<std::size_t>(row)]) && !click.isEmpty()) CountClick(click);
    ShowLook();
    LeaveCompare();
}

void CLookListPanel::ShowLook() {
    ClearSelections();
    const CLookWnd* canvas = Canvas();
    const int look = canvas ? canvas->Look() : LookLogic::NoLook;
    for (auto& [number, entry] : m_lists) {
        const auto row = std::find(entry.looks.begin(), entry.looks.end(), look);
        if (row != entry.looks.end()) entry.list->SelectItem(static_cast<int>(row - entry.looks.begin()));
    }
    if (!canvas || !canvas->CanFade()) {
        if (m_strength) m_strength->hide();
        return;
    }
    NeedStrength().SetValue(canvas->Alpha());
    NeedStrength().Appear();
}

void CLookListPanel::ClearSelections() {
    for (auto& [number, entry] : m_lists) entry.list->ClearSelected();
}

// A value that comes late, when the tool is left or the look gone, does nothing.
void CLookListPanel::TakeStrength(int percent, bool moving) {
    CLookWnd* canvas = Canvas();
    if (!canvas || !canvas->CanFade()) return;
    canvas->SetStrength(percent, moving);
    LeaveCompare();
}

CSetAlphaWnd& CLookListPanel::NeedStrength() {
    if (!m_strength) {
        QWidget* owner = window();
        m_strength = new CSetAlphaWnd(owner, 200, owner->height() - 200);
        m_strength->SetTaker([this](int percent, bool moving) { TakeStrength(percent, moving); });
    }
    return *m_strength;
}
