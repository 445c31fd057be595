// SPDX-License-Identifier: GPL-3.0-or-later
// Opening a picture: the part of the work area that replaces the session.
#include <utility>

#include "AppPaths.h"
#include "CBaseWnd.h"
#include "CHistoryManager.h"
#include "CMidWnd.h"
#include "Language.h"
#include "PC_Dsp.h"
#include "ProgressSpan.h"
#include "SizeCheck.h"
#include "StartMarks.h"
#include "WithinMemory.h"

namespace {

// The number of a size text that ends in its unit, in KB.
int KilobytesOf(const std::wstring& sizeText) {
    if (sizeText.size() < 3) return 0;
    const QString text = QString::fromStdWString(sizeText);
    const int number = text.left(text.size() - 2).trimmed().toInt();
    return text.endsWith(QStringLiteral("MB")) ? number * 1024 : number;
}

}  // namespace

bool CMidWnd::OpenImage(const QString& path) {
    if (!m_pWnd || IsBusy()) return false;
    SetCompareMode(0);
    SendFrame(LeavingToolMessage{m_nTool});
    SetCurrentImagePath(path);
    auto file = std::make_unique<PC_File>();
    if (!Decode(path, *file)) {
        // The tool was not left after all: its panel goes on.
        SendFrame(RefreshPanelMessage{m_nTool});
        return false;
    }
    const bool reduced = ReduceIfAsked();
    if (!LoadIntoSession()) {
        m_pLoadedBitmap = {};
        SendFrame(RefreshPanelMessage{m_nTool});
        return false;
    }
    m_file = std::move(file);
    m_imageInfo = m_file->GetImageInfo() ? *m_file->GetImageInfo() : tag_ImageInfo{};
    m_heldPath = path;
    m_sourceIsLarger = reduced;
    m_saved.reset();
    m_pWnd->Redraw(CBaseWnd::Paint::Now);
    qCDebug(startMarks, "picture painted");
    m_hooks.imageFactsChanged();
    SendFrame(ImageLoadedMessage{m_nTool});
    UpdateSizeText();
    ReportOpened(path, reduced);
    m_pLoadedBitmap = {};
    return true;
}

// False when there is no picture: the user cancelled, or was told that the file can't be read.
bool CMidWnd::Decode(const QString& path, PC_File& file) {
    m_pLoadedBitmap = {};
    file.SetExifXml(ResourcePath(LanguageText(QStringLiteral("ids_exifwords"))).toStdWString());
    const std::wstring native = NativePath(path).toStdWString();
    bool finished = false;
    const bool enough = WithinMemory(*this, [&] {
        finished = RunTask(
            [&](CObjProgress& sink) { m_pLoadedBitmap = file.OnLoadImage(native.c_str(), &sink, 0, 100, nullptr); });
    });
    if (!finished) m_pLoadedBitmap = {};
    if (m_pLoadedBitmap) return true;
    if (enough && finished) Tell(QStringLiteral("ids_openerror"));
    return false;
}

// True when the picture was made smaller. A reduction that is cancelled or runs out of memory keeps the size.
bool CMidWnd::ReduceIfAsked() {
    const QSize size(m_pLoadedBitmap.Width(), m_pLoadedBitmap.Height());
    if (!SizeCheck::IsLarge(size)) return false;
    int choice = SizeCheck::StoredChoice();
    if (choice == SizeCheck::Ask) choice = m_hooks.askReduce();
    if (choice != SizeCheck::Reduce) return false;
    const QSize target = SizeCheck::Reduced(size);
    Bitmap reduced;
    WithinMemory(*this, [&] {
        RunTask([&](CObjProgress& sink) {
            reduced = PC_Dsp::Resample(m_pLoadedBitmap, target.width(), target.height(), &sink, 0, 100);
        });
    });
    if (!reduced) return false;
    m_pLoadedBitmap = reduced;
    return true;
}

// The canvas goes first: it may find no memory for the picture, and then the former session goes on. From the history's
// reset on there is no way back, so Esc has no effect in here.
bool CMidWnd::LoadIntoSession() {
    const std::function<void()> putBack = m_pWnd->Remember();
    const bool loaded = WithinMemory(*this, [&] {
        RunTask([&](CObjProgress&) {
            m_pWnd->SetShowBitmap(m_pLoadedBitmap);
            m_pWnd->ZoomFit();
            m_pWnd->OnImageReady();
            CHistoryManager::Instance().OpenImage(m_pLoadedBitmap);
        });
    });
    if (loaded) return true;
    putBack();
    m_pWnd->Redraw(CBaseWnd::Paint::Now);
    return false;
}

void CMidWnd::ReportOpened(const QString& path, bool reduced) {
    OpenedImage opened;
    opened.extension = path.right(3);
    opened.width = m_pLoadedBitmap.Width();
    opened.height = m_pLoadedBitmap.Height();
    opened.sizeKb = KilobytesOf(m_imageInfo->FileSize);
    opened.bucket = reduced ? 1 : SizeCheck::IsLarge({opened.width, opened.height}) ? 2 : 3;
    opened.isDefault = NativePath(path).section(QLatin1Char('/'), -1) == u"default.jpg";
    if (m_imageOpened) m_imageOpened(opened);
}
