// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QPointer>

#include "CMidWnd.h"
#include "CXMLWnd.h"
#include "ToolTable.h"

class CLeftPanel;
class CMaskWnd;
class CMidBottomEditTool;
class CMidTopEditTool;
class CTopWnd;
class CWelcomeWnd;
class QAbstractButton;
class QMimeData;
enum class AfterSave;

// The main window: composes the caption, the left column, the two tool bars and the work area, and routes the messages
// between them. Main thread.
class CMainFrameWnd : public CXMLWnd {
    Q_OBJECT

  public:
    // `openFile` is the picture of the command line; it is opened once the window is up, and when it is empty or can't
    // be opened the welcome window shows.
    CMainFrameWnd(const QString& openFile, ToolTable tools);
    ~CMainFrameWnd() override;

    // Shows the frame and runs until it is closed: the program's only main loop.
    void ShowModal();

    // Opens a picture; a success closes the welcome window. False when it failed or was cancelled.
    bool OpenFile(const QString& path);
    // Asks which picture to open, and opens it. False when cancelled or failed.
    bool RunOpenCommand();
    // Saves the picture on show through the save window. True when a file was written.
    bool RunSaveCommand();
    // The caption's open button: the save question first when work would be lost.
    void OnOpenButton();
    // Chooses a section of the caption: its page and its first tool.
    void ChooseSection(int section);
    void ShowWelcome();
    // The settings' drop-down under its button, and the feedback window.
    void ShowSettings(QAbstractButton* option);
    void ShowFeedback();

    CMidWnd& Mid() { return *m_pMidWnd; }
    CLeftPanel& LeftPanel() { return *m_pLeftPanel; }

    // Routes a message from below; main thread.
    void OnFrameMessage(const FrameMessage& message);

  signals:
    // The frame was closed for good.
    void Closed();

  protected:
    QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override;
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

  private:
    // What comes before an act that throws the picture away.
    enum class FirstStep { None, Save, Stop };
    // Asks, unless nothing would be lost.
    FirstStep AskBeforeLosing();
    // Replaces the picture by what `open` opens, after the question: every way to another picture goes through here.
    // True when another one is open.
    bool ReplacePicture(const std::function<bool()>& open);
    bool SaveShown(AfterSave after);
    bool ShowSaveWindow(const Bitmap& picture, AfterSave after);
    bool OpenFromSaveWindow(QWidget* owner);
    QString AskForFile(QWidget* owner);
    bool MayClose();
    CMaskWnd& Mask();

    CMidWnd& MakeMid();
    QWidget* MakeBottomBar(QWidget* parent);
    void InitWindow();
    void BeginStatistics();
    void LookForUpdates();
    void AddShortcuts();
    void OpenPaste();
    void OpenFrom(const QMimeData& mime);
    bool OpenPicture(const Bitmap& picture);
    void ShowImageFacts();
    void UpdateHistoryButtons();
    void HideWelcome();
    void OnWelcomeChoice(int choice);
    bool OpenSample();
    int AskReduce();
    // Shows a modal window over the mask. It counts as busy while it is up, so that shortcuts and drops wait.
    int WhileModal(const std::function<int()>& show);

    void Route(const HandOffMessage& message);
    void Route(const ViewNotifyMessage& message);
    void Route(const ImageLoadedMessage& message);
    void Route(const WelcomeChoiceMessage& message);
    void Route(const OpenSaveMessage& message);
    void Route(const LeavingToolMessage& message);
    void Route(const RefreshPanelMessage& message);
    void Route(const ClearSelectionsMessage& message);

    const ToolTable m_tools;
    // Windows; the skin's tree owns them.
    CLeftPanel* m_pLeftPanel = nullptr;
    CMidWnd* m_pMidWnd = nullptr;
    CTopWnd* m_pTopWnd = nullptr;
    CMidTopEditTool* m_pTopTool = nullptr;
    CMidBottomEditTool* m_pBottomTool = nullptr;
    CMaskWnd* m_pMaskWnd = nullptr;
    CWelcomeWnd* m_pWelcomeWnd = nullptr;
    QString m_strOpenFile;
    bool m_started = false;
};
