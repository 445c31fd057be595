// SPDX-License-Identifier: GPL-3.0-or-later
// What reaches the main frame from keyboard, clipboard and other programs.
#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QShortcut>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>

#include "AppPaths.h"
#include "BitmapView.h"
#include "CBaseWnd.h"
#include "CMainFrameWnd.h"
#include "CMidTopEditTool.h"
#include "CTopWnd.h"
#include "Language.h"
#include "MessageBox.h"

namespace {

// The first file of a drop or paste; empty without one.
QString FirstFile(const QMimeData& data) {
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) return url.toLocalFile();
    return {};
}

}  // namespace

void CMainFrameWnd::AddShortcuts() {
    const auto add = [this](const QKeySequence& keys, auto act) {
        auto* shortcut = new QShortcut(keys, this);
        connect(shortcut, &QShortcut::activated, this, [this, act] {
            if (!m_pMidWnd->IsBusy()) act();
        });
    };
    const auto withPicture = [this](auto act) {
        return [this, act] {
            if (m_pMidWnd->HasImage()) act();
        };
    };
    add(QKeySequence::Open, [this] { OnOpenButton(); });
    add(QKeySequence::Save, withPicture([this] { RunSaveCommand(); }));
    add(QKeySequence::Paste, [this] { OpenPaste(); });
    add(QKeySequence(Qt::CTRL | Qt::Key_Z), withPicture([this] { m_pTopTool->Press(QStringLiteral("BtnUndo")); }));
    add(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z),
        withPicture([this] { m_pTopTool->Press(QStringLiteral("BtnRedo")); }));
    add(QKeySequence(Qt::CTRL | Qt::Key_Y), withPicture([this] { m_pTopTool->Press(QStringLiteral("BtnRedo")); }));
    add(QKeySequence(Qt::CTRL | Qt::Key_0), withPicture([this] { m_pTopTool->Press(QStringLiteral("BtnMatch")); }));
    add(QKeySequence(Qt::CTRL | Qt::Key_1), withPicture([this] { m_pTopTool->Press(QStringLiteral("BtnMaster")); }));
    for (const QKeySequence& keys :
         {QKeySequence(Qt::Key_Plus), QKeySequence(Qt::Key_Equal), QKeySequence(QKeySequence::ZoomIn)})
        add(keys, withPicture([this] { m_pTopTool->Press(QStringLiteral("BtnZoomIn")); }));
    for (const QKeySequence& keys : {QKeySequence(Qt::Key_Minus), QKeySequence(QKeySequence::ZoomOut)})
        add(keys, withPicture([this] { m_pTopTool->Press(QStringLiteral("BtnZoomOut")); }));
    for (const int section : {SectionBasic, SectionEffects, SectionBeauty})
        add(QKeySequence(Qt::Key_F1 + section), [this, section] {
            if (m_tools.FirstOf(section) == 0) return;
            m_pTopWnd->ShowSection(section);
            ChooseSection(section);
        });
    add(QKeySequence::Quit, [this] { close(); });
}

// The compare key is held, as the compare button is. Esc leaves compare.
void CMainFrameWnd::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Backslash && !event->isAutoRepeat() && !m_pMidWnd->IsBusy())
        return m_pTopTool->HoldCompare(true);
    if (event->key() == Qt::Key_Escape && m_pMidWnd->CompareMode() != 0) return m_pMidWnd->SetCompareMode(0);
    CXMLWnd::keyPressEvent(event);
}

void CMainFrameWnd::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Backslash && !event->isAutoRepeat()) return m_pTopTool->HoldCompare(false);
    CXMLWnd::keyReleaseEvent(event);
}

void CMainFrameWnd::dragEnterEvent(QDragEnterEvent* event) {
    const QMimeData* mime = event->mimeData();
    if (!m_pMidWnd->IsBusy() && (!FirstFile(*mime).isEmpty() || mime->hasImage())) event->acceptProposedAction();
}

void CMainFrameWnd::dropEvent(QDropEvent* event) {
    if (m_pMidWnd->IsBusy()) return;
    event->acceptProposedAction();
    OpenFrom(*event->mimeData());
}

void CMainFrameWnd::OpenPaste() {
    if (const QMimeData* mime = QApplication::clipboard()->mimeData()) OpenFrom(*mime);
}

// A file is opened; a bare picture is first written to the session's own folder, since a session is that of a file.
void CMainFrameWnd::OpenFrom(const QMimeData& mime) {
    const QString file = FirstFile(mime);
    if (!file.isEmpty()) {
        ReplacePicture([&] { return OpenFile(file); });
        return;
    }
    const Bitmap picture = BitmapOf(qvariant_cast<QImage>(mime.imageData()));
    if (picture) ReplacePicture([&] { return OpenPicture(picture); });
}

bool CMainFrameWnd::OpenPicture(const Bitmap& picture) {
    const QString path = AppPath(QStringLiteral("Temp/clipboard.png"));
    if (PC_File().OnSaveQuick(path.toStdWString().c_str(), picture, VN_IMAGE_FORMAT_PNG, 0)) return OpenFile(path);
    WhileModal([this] {
        ShowMessage(this, LanguageText(QStringLiteral("ids_pasteerror")));
        return 0;
    });
    return false;
}
