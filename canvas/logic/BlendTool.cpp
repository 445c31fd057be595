// SPDX-License-Identifier: GPL-3.0-or-later
#include "BlendTool.h"

#include <algorithm>
#include <new>
#include <QtCore/QFile>
#include <utility>

#include "CEffect.h"
#include "PictureView.h"

namespace {

// Shares of the progress bar: the look itself, then view and commit.
constexpr int LookEnd = 89;

// Lays `other` over `target` at the weight 0 to 1.
void Mix(Bitmap& target, const Bitmap& other, double weight) {
    // The library takes both as pointers to bytes that it may write; it writes the first only.
    CEffect::Effect_AlphaAdJust(target.MutablePixels(), const_cast<std::uint8_t*>(other.Pixels()), target.Width(),
                                target.Height(), weight);
}

bool SameSize(const Bitmap& a, const Bitmap& b) {
    return a.Width() == b.Width() && a.Height() == b.Height();
}

}  // namespace

BlendTool::BlendTool(QString stepName, const QString& fileName, CHistoryManager& history)
    : m_history(history),
      m_committer(*this, StepStyle::OnePerVisit, history),
      m_stepName(std::move(stepName)),
      m_lookFile(history.m_tempDir + fileName) {}

BlendTool::~BlendTool() {
    QFile::remove(m_lookFile);
}

void BlendTool::Reset() {
    const std::lock_guard lock(m_viewLock);
    m_state = {};
    ForgetLook();
    m_snapshotPath.clear();
    m_committer.BeginVisit();
    const QSize client = m_geometry.Client();
    m_geometry = ViewGeometry();
    m_geometry.SetClient(client);
    m_dragging = false;
}

void BlendTool::SetSource(const Bitmap& picture) {
    if (!picture) return;
    ForgetLook();
    TakePicture(picture, picture, 100);
}

// Everything that a paint reads changes in one go. A picture of another size than the former one's is fitted.
void BlendTool::TakePicture(const Bitmap& source, const Bitmap& effect, int alpha) {
    m_state.SourceBitmap = source;
    m_state.EffectBitmap = effect;
    m_state.ResultBitmap = {};
    m_state.Recorded = false;
    const std::lock_guard lock(m_viewLock);
    m_state.Alpha = alpha;
    const QSize size(effect.Width(), effect.Height());
    if (size != m_geometry.Image()) {
        m_geometry.SetImage(size);
        m_geometry.Fit();
    }
    DrawView(ViewQuality::Settled);
    Blend();
}

bool BlendTool::TakeViewState() {
    const Bitmap picture = m_history.CurrentBitmap();
    const CViewState* left = m_history.ViewState();
    if (!picture || !left) return false;
    m_state.SourceBitmap = picture;
    m_state.EffectBitmap = picture;
    {
        const std::lock_guard lock(m_viewLock);
        m_geometry.SetImage({picture.Width(), picture.Height()});
        m_geometry.Restore(left->zoom, {left->x, left->y});
        if (IsViewOf(*left, m_geometry)) {
            m_state.ViewSourceBitmap = left->bitmap;
            m_state.ViewEffectBitmap = left->bitmap;
            m_state.ViewOpaque = left->bitmap.IsOpaque();
            m_viewQuality = ViewQuality::Settled;
            return true;
        }
    }
    RebuildView(ViewQuality::Settled);
    return true;
}

bool BlendTool::RunLook(CObjProgress* progress) {
    if (!HasPicture()) return false;
    const BlendState before = m_state;
    const ViewGeometry geometry = Geometry();
    bool done = false;
    try {
        done = RunLookOnSource(progress);
    } catch (const std::bad_alloc&) {
        // A look that does not fit into memory has failed like any other.
    }
    if (!done) {
        Restore(before, geometry);
        return false;
    }
    m_committer.Commit();
    if (progress) progress->SetValue(100.0f);
    return true;
}

bool BlendTool::RunLookOnSource(CObjProgress* progress) {
    const ProgressSpan span{progress, 0, LookEnd};
    Bitmap effect = m_state.SourceBitmap;
    if (!ComputeLook(effect, span) || !span.CanContinue()) return false;
    m_fileLook.clear();
    TakePicture(m_state.SourceBitmap, effect, 100);
    return true;
}

void BlendTool::Restore(const BlendState& state, const ViewGeometry& geometry) {
    const std::lock_guard lock(m_viewLock);
    m_state = state;
    m_geometry = geometry;
}

void BlendTool::SetAlpha(int percent) {
    const int alpha = std::clamp(percent, 0, 100);
    if (!m_state.ViewEffectBitmap || !HasLook() || alpha == m_state.Alpha) return;
    {
        const std::lock_guard lock(m_viewLock);
        m_state.Alpha = alpha;
        m_state.Recorded = false;
    }
    RunBlendPreview();
}

void BlendTool::RunBlendPreview() {
    const std::lock_guard lock(m_viewLock);
    Blend();
}

// The lock is held. From the source's side, while the full pass goes from the effect's side: both give
// source * (1 - a) + effect * a, and each starts from the bitmap that it has to copy anyway.
void BlendTool::Blend() {
    const Bitmap& source = m_state.ViewSourceBitmap;
    Bitmap& blend = m_state.ViewBlendBitmap;
    if (m_state.Alpha == 100 || !source || !m_state.ViewEffectBitmap) {
        blend = {};
        return;
    }
    if (!SameSize(blend, source) || blend.SharesPixelsWith(source))
        blend = source;
    else
        std::copy_n(source.Pixels(), source.ByteCount(), blend.MutablePixels());
    Mix(blend, m_state.ViewEffectBitmap, m_state.Alpha * 0.01);
}

Bitmap BlendTool::RenderResult() {
    if (m_state.Alpha == 100 || !m_state.EffectBitmap) return m_state.EffectBitmap;
    if (!m_state.ResultBitmap || m_state.ResultAlpha != m_state.Alpha) {
        m_state.ResultBitmap = m_state.EffectBitmap;
        m_state.ResultAlpha = m_state.Alpha;
        Mix(m_state.ResultBitmap, m_state.SourceBitmap, 1.0 - m_state.Alpha * 0.01);
    }
    return m_state.ResultBitmap;
}
