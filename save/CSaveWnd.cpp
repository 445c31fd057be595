// SPDX-License-Identifier: GPL-3.0-or-later
#include "CSaveWnd.h"

#include <new>
#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStackedWidget>

#include "AppPaths.h"
#include "BusyCursor.h"
#include "CImageInfoWnd.h"
#include "ClickCount.h"
#include "Companions.h"
#include "CSliderCtrl.h"
#include "DialogKeys.h"
#include "Language.h"
#include "Log.h"
#include "MessageBox.h"
#include "PC_File.h"
#include "QualitySlider.h"
#include "SkinIcons.h"
#include "Style.h"

namespace {

enum Page { FormPage = 0, SavedPage = 1 };

constexpr int ThumbnailFormat = 2;
constexpr int ThumbnailQuality = 90;
constexpr int SavedMarkSize = 44;

const QString SectionSaveWnd = QStringLiteral("SaveWnd");
const QString SectionMessageBox = QStringLiteral("MessageBox");

bool Contains(const QWidget* widget, QPoint global) {
    return widget->rect().contains(widget->mapFromGlobal(global));
}

}  // namespace

CSaveWnd::CSaveWnd(SaveRequest request, SaveOutcome& outcome) : m_request(std::move(request)), m_outcome(outcome) {
    setObjectName(QStringLiteral("SaveWnd"));
    if (!Create(QStringLiteral("SaveWnd.xml")) || !FindControls()) return;
    m_complete = true;
    m_plan.SetSource(m_request.sourcePath, GetDocumentsDir(QStringLiteral("QUINCE")));
    m_cover->setEnabled(m_plan.CanCover());
    m_qualityPanel->hide();
    m_pages->setCurrentIndex(FormPage);
    ShowFields();
    FollowType();
    m_name->setFocus();
    m_name->selectAll();
    qApp->installEventFilter(this);
}

bool CSaveWnd::FindControls() {
    m_path = Find<QLineEdit>(QStringLiteral("EdtPath"));
    m_name = Find<QLineEdit>(QStringLiteral("EdtName"));
    m_type = Find<QComboBox>(QStringLiteral("ComboFileType"));
    m_modify = Find<QAbstractButton>(QStringLiteral("BtnSaveModify"));
    m_qualityButton = Find<QAbstractButton>(QStringLiteral("BtnSaveHuaZhi"));
    m_cover = Find<QAbstractButton>(QStringLiteral("BtnCover"));
    m_save = Find<QAbstractButton>(QStringLiteral("BtnSave"));
    m_close = Find<QAbstractButton>(QStringLiteral("BtnSaveClose"));
    m_qualityPanel = Find<QWidget>(QStringLiteral("HorLayHuaZhi"));
    m_slider = Find<CSliderCtrl>(QStringLiteral("SliderHuaZhi"));
    m_qualityText = Find<QLabel>(QStringLiteral("TextSaveHuaZhiVal"));
    m_sizeText = Find<QLabel>(QStringLiteral("TextSaveSizeVal"));
    m_preview = Find<QWidget>(QStringLiteral("ConShowImage"));
    m_pages = Find<QStackedWidget>(QStringLiteral("TabLaySave"));
    return m_path && m_name && m_type && m_modify && m_qualityButton && m_cover && m_save && m_close &&
           m_qualityPanel && m_slider && m_qualityText && m_sizeText && m_preview && m_pages;
}

QWidget* CSaveWnd::CreateControl(const QString&, QWidget* parent, const QString& name) {
    return name == u"SliderHuaZhi" ? new QualitySlider(parent) : nullptr;
}

void CSaveWnd::OnNotify(const Notify& notify) {
    if (!m_complete) return;
    if (notify.type == u"click") return OnClick(notify.name);
    if (notify.Is(u"itemselect", u"ComboFileType")) return FollowType();
    if (notify.name != u"SliderHuaZhi") return;
    m_qualityText->setText(QString::number(notify.value));
    if (notify.type != u"valuechanged") return;
    m_quality = notify.value;
    Estimate();
}

void CSaveWnd::OnClick(const QString& name) {
    if (name == u"BtnSaveClose") close();
    if (name == u"BtnSave") Save();
    if (name == u"BtnSaveModify") ChooseFolder();
    if (name == u"BtnSaveHuaZhi") ToggleQualityPanel();
    if (name == u"BtnCover") ToggleCover();
    if (name == u"BtnSaveExif") ShowInfo();
    // Across, as it has always been: each button looks for the other companion. The companion itself does not run
    // twice.
    if (name == u"BtnFaceBook") Share(Companion::Twitter, Companion::Facebook);
    if (name == u"BtnTwitter") Share(Companion::Facebook, Companion::Twitter);
    if (name == u"BtnSaveOpenFile") OpenAnother();
    if (name == u"BtnSaveOpenPath") OpenSavedFolder();
}

void CSaveWnd::keyPressEvent(QKeyEvent* event) {
    if (!m_complete || !IsEnter(*event)) return CXMLWnd::keyPressEvent(event);
    if (!ClickFocusedButton(*this) && m_pages->currentIndex() == FormPage) m_save->click();
}

// Only now is it known how fine the screen is that the window lies on.
void CSaveWnd::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) ShowThumbnail();
    CXMLWnd::showEvent(event);
}

bool CSaveWnd::eventFilter(QObject* object, QEvent* event) {
    const bool press =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::NonClientAreaMouseButtonPress;
    if (press && m_qualityPanel->isVisible()) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const auto* widget = qobject_cast<QWidget*>(object);
        const QPoint at = mouse->globalPosition().toPoint();
        if (mouse->button() == Qt::LeftButton && widget && widget->window() == this && !Contains(m_qualityPanel, at) &&
            !Contains(m_qualityButton, at))
            m_qualityPanel->hide();
    }
    return CXMLWnd::eventFilter(object, event);
}

void CSaveWnd::ShowFields() {
    m_path->setText(m_plan.ShownFolder());
    m_name->setText(m_plan.ShownName());
}

// The file keeps its name on every save, so the preview is told after it is written anew. On a fine screen it has more
// pixels than its place.
void CSaveWnd::ShowThumbnail() {
    const QSize picture(m_request.picture.Width(), m_request.picture.Height());
    if (auto* size = Find<QLabel>(QStringLiteral("TextSavePictureSize")))
        size->setText(QStringLiteral("%1 x %2").arg(picture.width()).arg(picture.height()));
    const SaveThumbnail thumbnail = SaveThumbnail::For(picture);
    const QSize pixels = thumbnail.place.size() * devicePixelRatioF();
    const QString file = AppPath(QStringLiteral("Temp/SaveTempThumb.jpg"));
    m_request.file->OnSaveQuick(file.toStdWString().c_str(), m_request.picture, pixels.width(), pixels.height(),
                                ThumbnailFormat, ThumbnailQuality);
    m_preview->setProperty("bkimage", thumbnail.Attributes(file));
}

void CSaveWnd::FollowType() {
    const bool hasQuality = SaveTypeAt(m_type->currentIndex()).hasQuality;
    m_qualityButton->setEnabled(hasQuality);
    if (!hasQuality) m_qualityPanel->hide();
}

void CSaveWnd::ToggleQualityPanel() {
    const bool hasQuality = SaveTypeAt(m_type->currentIndex()).hasQuality;
    m_qualityPanel->setVisible(hasQuality && !m_qualityPanel->isVisible());
    Estimate();
    CountClick(QStringLiteral("8880603"));
}

void CSaveWnd::ToggleCover() {
    m_plan.ToggleCover(m_path->text(), m_name->text());
    ShowFields();
    const bool on = m_plan.CoverState() == SavePlan::Cover::On;
    m_cover->setChecked(on);
    for (QWidget* control : {static_cast<QWidget*>(m_path), static_cast<QWidget*>(m_name),
                             static_cast<QWidget*>(m_modify), static_cast<QWidget*>(m_type)})
        control->setEnabled(!on);
    m_type->setCurrentIndex(m_type->findText(m_plan.SourceSuffix()));
    FollowType();
    CountClick(QStringLiteral("8880602"));
}

void CSaveWnd::ChooseFolder() {
    QFileDialog dialog(this, LanguageText(QStringLiteral("ids_savetitle")), SaveFolderFromText(m_path->text()));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
        m_path->setText(dialog.selectedFiles().first());
}

// A picture that finds no memory to be encoded in could not be written, like any other.
bool CSaveWnd::Write(const QString& path) {
    const BusyCursor busy;
    try {
        return m_request.file->OnSaveQuick(path.toStdWString().c_str(), m_request.picture,
                                           SaveTypeAt(m_type->currentIndex()).format, m_quality) != 0;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

// A trial encode. Failure is silent: the text stays as it was.
void CSaveWnd::Estimate() {
    const QString path = AppPath(QStringLiteral("Temp/TempSaveImage")) + m_type->currentText();
    if (!Write(path)) return;
    m_sizeText->setText(SaveSizeText(static_cast<quint32>(QFileInfo(path).size())));
}

void CSaveWnd::Refuse(const QString& key, QLineEdit* field) {
    ShowMessage(this, LanguageText(key, SectionSaveWnd));
    field->setFocus();
    field->selectAll();
}

// The order of the checks is part of what the window promises: folder, name, overwriting.
void CSaveWnd::Save() {
    m_plan.Read(m_path->text(), m_name->text());
    if (!QFileInfo::exists(SaveFolderFromText(m_plan.CurrentFolder())))
        return Refuse(QStringLiteral("ids_msg_pathinvaild"), m_path);
    if (!IsValidSaveName(m_plan.CurrentName())) return Refuse(QStringLiteral("ids_msg_fileinvaild"), m_name);
    const QString path = m_plan.FullPath(m_type->currentText());
    if (!MayReplace(path)) return;
    if (Write(path))
        FinishSave(path);
    else
        ShowMessage(this, LanguageText(QStringLiteral("ids_msg_saveerror"), SectionMessageBox));
    CountClick(QStringLiteral("8880601"));
}

// Whoever chose to overwrite the opened file has said so, but did not say that a larger picture may go.
bool CSaveWnd::MayReplace(const QString& path) {
    const bool announced = m_plan.CoverState() == SavePlan::Cover::On && !m_request.sourceIsLarger;
    return announced || !QFileInfo::exists(path) ||
           AskYesNo(this, LanguageText(QStringLiteral("ids_msg_fileexist"), SectionMessageBox)) == ResultYes;
}

void CSaveWnd::FinishSave(const QString& path) {
    m_outcome.written = true;
    m_outcome.path = path;
    if (m_request.saved) m_request.saved(path);
    if (m_request.afterSave == AfterSave::CloseWindow) return EndModal(ResultYes);
    SetLastSaveFolder(m_plan.CurrentFolder());
    ShowSavedPage(path);
}

void CSaveWnd::ShowSavedPage(const QString& path) {
    if (auto* mark = Find<QLabel>(QStringLiteral("SavedMark")))
        mark->setPixmap(SkinIcon(QStringLiteral("check"), Style::Accent).pixmap(SavedMarkSize, SavedMarkSize));
    if (auto* text = Find<QLabel>(QStringLiteral("TextSavedPath"))) {
        text->setText(text->fontMetrics().elidedText(path, Qt::ElideMiddle, m_pages->width()));
        text->setToolTip(path);
    }
    m_pages->setCurrentIndex(SavedPage);
    // A second Enter of a hasty user closes the window instead of opening something.
    m_close->setFocus();
}

void CSaveWnd::OpenAnother() {
    if (m_request.openAnother && m_request.openAnother(this)) {
        m_outcome.result = ResultYes;
        EndModal(ResultYes);
    }
    CountClick(QStringLiteral("888060601"));
}

// Only a click that opens the window counts.
void CSaveWnd::ShowInfo() {
    auto* option = Find<QAbstractButton>(QStringLiteral("BtnSaveExif"));
    if (option->isChecked() && ShowImageInfo(option, m_request.info, m_request.sourcePath))
        CountClick(QStringLiteral("8880604"));
}

// The file is called PNG, but its format is the chosen one: the companion looks at what it holds. A picture that cannot
// be written goes without a path.
void CSaveWnd::Share(Companion tested, Companion started) {
    if (RaiseCompanion(tested)) return;
    const QString path = AppPath(QStringLiteral("Temp/SendImag.png"));
    const QStringList arguments = Write(path) ? QStringList(path) : QStringList();
    m_request.startProgram(AppPath(QLatin1String(RowOf(started).program)), arguments);
}

void CSaveWnd::OpenSavedFolder() {
    const QString folder = SaveFolderFromText(m_plan.CurrentFolder());
    if (!folder.isEmpty() && QFileInfo::exists(folder)) OpenFolder(folder);
    CountClick(QStringLiteral("888060602"));
}

SaveOutcome RunSaveWindow(QWidget* owner, SaveRequest request) {
    SaveOutcome outcome;
    if (request.picture.IsNull() || !request.file) return outcome;
    const QPointer<CSaveWnd> window = new CSaveWnd(std::move(request), outcome);
    if (window->IsComplete())
        outcome.result = window->ShowModal(owner, QStringLiteral("SaveWnd"));
    else
        Log("[QUINCE]the save window's skin lacks controls");
    delete window;
    return outcome;
}
