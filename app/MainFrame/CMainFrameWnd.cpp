// SPDX-License-Identifier: GPL-3.0-or-later
#include "CMainFrameWnd.h"

#include <QtCore/QEventLoop>
#include <QtGui/QCloseEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QFileDialog>
#include <utility>

#include "AppPaths.h"
#include "CBaseWnd.h"
#include "CDlgProgressCtrl.h"
#include "CImageInfoWnd.h"
#include "CLeftPanel.h"
#include "ClickCount.h"
#include "CMaskWnd.h"
#include "CMidBottomEditTool.h"
#include "CMidTopEditTool.h"
#include "CSizeAdjustDlg.h"
#include "CTopWnd.h"
#include "CWelcomeWnd.h"
#include "Language.h"
#include "OpenFilter.h"
#include "RunTask.h"
#include "SizeCheck.h"
#include "StartMarks.h"

CMainFrameWnd::CMainFrameWnd(const QString& openFile, ToolTable tools)
    : m_tools(std::move(tools)), m_strOpenFile(openFile) {
    setObjectName(QStringLiteral("QuinceMainWnd"));
    setWindowTitle(AppTitle());
    setWindowIcon(QIcon(ResourcePath(QStringLiteral("Images/Icons/quince.svg"))));
    Create(QStringLiteral("MainFrame.xml"));
    setAcceptDrops(true);
    SetProgressWindowFactory([this] { return std::make_unique<CDlgProgressCtrl>(this); });
    AddShortcuts();
    resize(1024, 730);
    if (const QScreen* shown = screen()) move(shown->availableGeometry().center() - rect().center());
}

CMainFrameWnd::~CMainFrameWnd() {
    SetProgressWindowFactory({});
}

QWidget* CMainFrameWnd::CreateControl(const QString&, QWidget* parent, const QString& name) {
    if (name == u"Caption") return m_pTopWnd = new CTopWnd(*this, parent, m_tools);
    if (name == u"LeftLayout") return m_pLeftPanel = new CLeftPanel(parent, m_tools, MakeMid());
    if (name == u"MidEditTopTool") return m_pTopTool = new CMidTopEditTool(MakeMid(), parent);
    if (name == u"MidEditBottomTool") return MakeBottomBar(parent);
    if (name == u"MidEditWnd") {
        MakeMid().setParent(parent);
        return m_pMidWnd;
    }
    return nullptr;
}

QWidget* CMainFrameWnd::MakeBottomBar(QWidget* parent) {
    m_pBottomTool = new CMidBottomEditTool(MakeMid(), parent);
    connect(m_pBottomTool, &CMidBottomEditTool::InfoAsked, this,
            [this](QAbstractButton* option) { ShowImageInfo(option, m_pMidWnd->ImageInfo(), m_pMidWnd->HeldPath()); });
    return m_pBottomTool;
}

// The bars and panels ask the work area, so it is there before them, whatever the skin's order.
CMidWnd& CMainFrameWnd::MakeMid() {
    if (!m_pMidWnd) {
        CMidWnd::Hooks hooks;
        hooks.frame = [this](const FrameMessage& message) { OnFrameMessage(message); };
        hooks.askReduce = [this] { return AskReduce(); };
        hooks.imageFactsChanged = [this] { ShowImageFacts(); };
        m_pMidWnd = new CMidWnd(this, m_tools, std::move(hooks));
    }
    return *m_pMidWnd;
}

void CMainFrameWnd::ShowModal() {
    QEventLoop loop;
    connect(this, &CMainFrameWnd::Closed, &loop, &QEventLoop::quit);
    show();
    loop.exec();
}

// The picture of the command line is opened once the frame is on the screen, so that there is a window while it loads.
void CMainFrameWnd::paintEvent(QPaintEvent* event) {
    CXMLWnd::paintEvent(event);
    if (std::exchange(m_started, true)) return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            qCDebug(startMarks, "window painted");
            InitWindow();
        },
        Qt::QueuedConnection);
}

void CMainFrameWnd::InitWindow() {
    BeginStatistics();
    if (m_strOpenFile.isEmpty() || !OpenFile(m_strOpenFile)) ShowWelcome();
    LookForUpdates();
}

bool CMainFrameWnd::OpenFile(const QString& path) {
    if (!m_pMidWnd || !m_pMidWnd->OpenImage(path)) return false;
    HideWelcome();
    return true;
}

bool CMainFrameWnd::RunOpenCommand() {
    if (m_pMidWnd->IsBusy()) return false;
    QString path;
    WhileModal([&] {
        path = AskForFile(this);
        return 0;
    });
    return !path.isEmpty() && OpenFile(path);
}

QString CMainFrameWnd::AskForFile(QWidget* owner) {
    return QFileDialog::getOpenFileName(owner, LanguageText(QStringLiteral("ids_msg_openimage")),
                                        FolderToOpenFrom(m_pMidWnd->HeldPath()), OpenFilter(), nullptr,
                                        QFileDialog::HideNameFilterDetails);
}

void CMainFrameWnd::OnOpenButton() {
    if (m_pMidWnd->IsBusy()) return;
    ReplacePicture([this] { return RunOpenCommand(); });
    CountClick(QStringLiteral("8880501"));
}

void CMainFrameWnd::ChooseSection(int section) {
    if (m_pMidWnd->IsBusy()) return;
    const bool elsewhere = m_tools.SectionOf(m_pMidWnd->Tool()) != section;
    m_pLeftPanel->ShowSection(section, elsewhere);
    m_pMidWnd->SwitchTool(elsewhere ? m_tools.FirstOf(section) : m_pMidWnd->Tool());
}

void CMainFrameWnd::ShowWelcome() {
    if (!m_pWelcomeWnd) {
        m_pWelcomeWnd = new CWelcomeWnd(this, m_tools);
        connect(m_pWelcomeWnd, &CWelcomeWnd::Chosen, this,
                [this](int choice) { OnFrameMessage(WelcomeChoiceMessage{choice}); });
        connect(m_pWelcomeWnd, &CWelcomeWnd::Dismissed, this, [this] { HideWelcome(); });
    }
    if (m_pWelcomeWnd->isVisible()) return;
    Mask().ShowMask(true);
    m_pWelcomeWnd->Open();
}

void CMainFrameWnd::HideWelcome() {
    if (!m_pWelcomeWnd || !m_pWelcomeWnd->isVisible()) return;
    m_pWelcomeWnd->hide();
    Mask().ShowMask(false);
}

// Without another picture, whatever the reason, the welcome window stays and its buttons work again.
void CMainFrameWnd::OnWelcomeChoice(int choice) {
    const bool opened =
        ReplacePicture([=, this] { return choice == CWelcomeWnd::Sample ? OpenSample() : RunOpenCommand(); });
    if (!opened) return m_pWelcomeWnd->EnableChoices();
    if (choice == CWelcomeWnd::Sample) return;
    m_pTopWnd->ShowSection(choice);
    ChooseSection(choice);
}

bool CMainFrameWnd::OpenSample() {
    CountClick(QStringLiteral("8880104"));
    const QString copy = AppPath(QStringLiteral("Temp/default.jpg"));
    QFile::remove(copy);
    QFile::copy(ResourcePath(QStringLiteral("Images/Example/default.jpg")), copy);
    return OpenFile(copy);
}

int CMainFrameWnd::AskReduce() {
    return WhileModal(
        [this] { return AskSizeAdjust(this) == SizeAnswer::Reduce ? SizeCheck::Reduce : SizeCheck::Keep; });
}

int CMainFrameWnd::WhileModal(const std::function<int()>& show) {
    m_pMidWnd->SetModal(true);
    Mask().ShowMask(true);
    const int result = show();
    Mask().ShowMask(false);
    m_pMidWnd->SetModal(false);
    return result;
}

void CMainFrameWnd::closeEvent(QCloseEvent* event) {
    if (!MayClose()) return event->ignore();
    OnFrameMessage(LeavingToolMessage{m_pMidWnd->Tool()});
    event->accept();
    emit Closed();
}

void CMainFrameWnd::moveEvent(QMoveEvent* event) {
    CXMLWnd::moveEvent(event);
    if (CBaseWnd* canvas = m_pMidWnd ? m_pMidWnd->Canvas() : nullptr)
        canvas->LayoutChildren(canvas->width(), canvas->height());
}
