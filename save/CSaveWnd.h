// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtCore/QString>

#include "Bitmap.h"
#include "CXMLWnd.h"
#include "SavePlan.h"
#include "Shell.h"

class CSliderCtrl;
class PC_File;
enum class Companion;
struct tag_ImageInfo;
class QAbstractButton;
class QComboBox;
class QLabel;
class QLineEdit;
class QStackedWidget;

// What a successful save leads to.
enum class AfterSave { CloseWindow = 0, ShowPage = 1 };

// What the save window is given. The file object is not owned and outlives the window; its last load is the picture's
// own, so that its metadata goes out again.
struct SaveRequest {
    QString sourcePath;  // of the picture that the session holds
    Bitmap picture;
    PC_File* file = nullptr;
    const tag_ImageInfo* info = nullptr;  // of the opened picture; null when nothing is known
    AfterSave afterSave = AfterSave::ShowPage;
    // The file of the opened picture holds a larger one than `picture` was made of, so overwriting it loses detail.
    bool sourceIsLarger = false;
    // Called after each written file, before the window goes on; may be empty.
    std::function<void(const QString& path)> saved;
    // Starts a companion; what becomes of it is not asked.
    std::function<bool(const QString& path, const QStringList& arguments)> startProgram = StartProgram;
    // Runs the main window's open command with `owner` as the owner of its dialogs; true when a picture was opened.
    std::function<bool(QWidget* owner)> openAnother;
};

struct SaveOutcome {
    int result = ResultClose;  // ResultYes when the window closed by itself after its work
    bool written = false;      // a file was written, whatever way the window was closed
    QString path;              // the last one
};

// The save window: folder, name, type and quality of the file, and the page after it is written. Main thread only;
// writing is synchronous.
class CSaveWnd : public CXMLWnd {
    Q_OBJECT

  public:
    // `outcome` is filled while the window lives and outlives it. The window gets its parent from ShowModal: one that
    // is given earlier would lose the keyboard focus when it changes.
    CSaveWnd(SaveRequest request, SaveOutcome& outcome);

    // False when the skin lacks a control that the window cannot do without.
    bool IsComplete() const { return m_complete; }

  protected:
    QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override;
    void OnNotify(const Notify& notify) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    // Sees every press of the program while the window lives: one outside the quality panel closes it.
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    bool FindControls();
    void ShowFields();
    void ShowThumbnail();

    void OnClick(const QString& name);
    void ToggleQualityPanel();
    void ToggleCover();
    void FollowType();
    void ChooseFolder();
    void Estimate();
    void Save();
    bool MayReplace(const QString& path);
    void Refuse(const QString& key, QLineEdit* field);
    bool Write(const QString& path);
    void FinishSave(const QString& path);
    void ShowSavedPage(const QString& path);
    void OpenAnother();
    void OpenSavedFolder();
    void ShowInfo();
    void Share(Companion tested, Companion started);

    SaveRequest m_request;
    SaveOutcome& m_outcome;
    SavePlan m_plan;
    int m_quality = DefaultSaveQuality;
    bool m_complete = false;

    QLineEdit* m_path = nullptr;
    QLineEdit* m_name = nullptr;
    QComboBox* m_type = nullptr;
    QAbstractButton* m_modify = nullptr;
    QAbstractButton* m_qualityButton = nullptr;
    QAbstractButton* m_cover = nullptr;
    QAbstractButton* m_save = nullptr;
    QAbstractButton* m_close = nullptr;
    QWidget* m_qualityPanel = nullptr;
    CSliderCtrl* m_slider = nullptr;
    QLabel* m_qualityText = nullptr;
    QLabel* m_sizeText = nullptr;
    QWidget* m_preview = nullptr;
    QStackedWidget* m_pages = nullptr;
};

// Shows the save window over `owner` and returns when it is closed. Without a picture, a file object or a usable skin
// nothing is shown.
SaveOutcome RunSaveWindow(QWidget* owner, SaveRequest request);
