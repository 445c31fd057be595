// SPDX-License-Identifier: GPL-3.0-or-later
// Saving, and the question that guards what would be lost: by the open button, the start page, a drop, a paste, and
// closing.
#include "CBaseWnd.h"
#include "ClickCount.h"
#include "CMainFrameWnd.h"
#include "CMaskWnd.h"
#include "Companions.h"
#include "CSaveMessageBox.h"
#include "CSaveWnd.h"
#include "WithinMemory.h"

CMainFrameWnd::FirstStep CMainFrameWnd::AskBeforeLosing() {
    if (m_pMidWnd->IsSafeToDiscard()) return FirstStep::None;
    const int result = WhileModal([this] { return AskSaveFirst(this); });
    if (result == ResultYes) return FirstStep::Save;
    return result == ResultNo ? FirstStep::None : FirstStep::Stop;
}

// "Save" ends the request: the user sees the save window, and asks again afterwards for what was to be opened.
bool CMainFrameWnd::ReplacePicture(const std::function<bool()>& open) {
    switch (AskBeforeLosing()) {
        case FirstStep::Save:
            RunSaveCommand();
            return false;
        case FirstStep::None:
            return open();
        case FirstStep::Stop:
            break;
    }
    return false;
}

bool CMainFrameWnd::MayClose() {
    if (m_pMidWnd->IsBusy()) return false;
    // A picture that is being shared is not taken away under the sharing window.
    if (RaiseOpenCompanion()) return false;
    switch (AskBeforeLosing()) {
        case FirstStep::Save:
            return SaveShown(AfterSave::CloseWindow);
        case FirstStep::None:
            return true;
        case FirstStep::Stop:
            break;
    }
    return false;
}

bool CMainFrameWnd::RunSaveCommand() {
    return SaveShown(AfterSave::ShowPage);
}

bool CMainFrameWnd::SaveShown(AfterSave after) {
    CountClick(QStringLiteral("8880502"));
    CBaseWnd* canvas = m_pMidWnd->Canvas();
    if (!canvas || m_pMidWnd->IsBusy()) return false;
    m_pMidWnd->SetCompareMode(0);
    // The full pass may take a moment on a large picture, so it runs as a task.
    Bitmap picture;
    WithinMemory(*m_pMidWnd, [&] { m_pMidWnd->RunTask([&](CObjProgress&) { picture = canvas->GetShowBitmap(); }); });
    return picture && ShowSaveWindow(picture, after);
}

bool CMainFrameWnd::ShowSaveWindow(const Bitmap& picture, AfterSave after) {
    SaveRequest request;
    request.sourcePath = m_pMidWnd->HeldPath();
    request.picture = picture;
    request.file = &m_pMidWnd->File();
    request.info = m_pMidWnd->ImageInfo();
    request.afterSave = after;
    request.sourceIsLarger = m_pMidWnd->SourceIsLarger();
    request.saved = [this](const QString& path) {
        m_pMidWnd->NoteSaved();
        if (path == m_pMidWnd->HeldPath()) m_pMidWnd->NoteSourceCovered();
    };
    request.openAnother = [this](QWidget* owner) { return OpenFromSaveWindow(owner); };
    bool written = false;
    WhileModal([&] {
        written = RunSaveWindow(this, request).written;
        return 0;
    });
    return written;
}

// The save window is still up and counts as busy; the picture was just written, so nothing is lost.
bool CMainFrameWnd::OpenFromSaveWindow(QWidget* owner) {
    const QString path = AskForFile(owner);
    if (path.isEmpty()) return false;
    m_pMidWnd->SetModal(false);
    const bool opened = OpenFile(path);
    m_pMidWnd->SetModal(true);
    return opened;
}

CMaskWnd& CMainFrameWnd::Mask() {
    if (!m_pMaskWnd) m_pMaskWnd = new CMaskWnd(this);
    return *m_pMaskWnd;
}
