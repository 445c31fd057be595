// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>
#include <QtWidgets/QWidget>

#include "Bitmap.h"
#include "PC_File.h"
#include "ToolHost.h"
#include "ToolTable.h"

class CCompareWnd;

// Facts about a picture that was opened, for the usage statistics.
struct OpenedImage {
    QString extension;  // last three characters of the path
    int width = 0;
    int height = 0;
    int sizeKb = 0;
    int bucket = 3;  // 1 it was reduced, 2 a side is above 2000, 3 neither
    bool isDefault = false;
};

// The work area: owns the one live tool canvas, the compare view over it, and the session (the open picture's file
// object, its path and its information record). Main thread, but for the work that it hands to tasks.
class CMidWnd : public QWidget, public ToolHost {
    Q_OBJECT

  public:
    // Where the work area's messages go and who asks about large pictures; the main frame sets them.
    struct Hooks {
        std::function<void(const FrameMessage&)> frame;
        // Asks whether to reduce; returns SizeCheck::Reduce or anything else to keep.
        std::function<int()> askReduce;
        // The picture's name or sizes changed.
        std::function<void()> imageFactsChanged;
    };

    CMidWnd(QWidget* parent, const ToolTable& tools, Hooks hooks);
    ~CMidWnd() override;

    // Opens a picture, which replaces the session. On failure the user is told and the session stays. False on
    // failure, when the user cancelled, and while busy.
    bool OpenImage(const QString& path);

    // The path of the picture that the session holds (not that of a later failed open); empty before the first.
    const QString& HeldPath() const { return m_heldPath; }
    // The file object of the held picture, which knows its metadata.
    PC_File& File() { return *m_file; }
    bool HasImage() const { return !m_heldPath.isEmpty(); }
    // The file of the held picture holds a larger one: it was reduced when it was opened, and not overwritten since.
    bool SourceIsLarger() const { return m_sourceIsLarger; }
    void NoteSourceCovered() { m_sourceIsLarger = false; }

    // Who hears of each opened picture.
    void SetOpenListener(std::function<void(const OpenedImage&)> listener) { m_imageOpened = std::move(listener); }

    // The picture as it stands needs no question before it is thrown away: it is unchanged, or just what was saved.
    bool IsSafeToDiscard() const;
    // Remembers that the present state was written to a file.
    void NoteSaved();

    // Tells the user, once, of a snapshot that could not be written or read since the last call.
    void TellFailures();

    // A modal window of the program is up, or a stroke is held on the canvas.
    void SetModal(bool modal) { m_modal += modal ? 1 : -1; }

    // ToolHost
    int Tool() const override { return m_nTool; }
    CBaseWnd* Canvas() const override { return m_pWnd; }
    void SwitchTool(int tool) override;
    int CompareMode() const override { return m_nCompareMode; }
    void SetCompareMode(int mode) override;
    bool IsBusy() const override;
    bool RunTask(const std::function<void(CObjProgress&)>& work) override;
    const tag_ImageInfo* ImageInfo() const override { return m_imageInfo ? &*m_imageInfo : nullptr; }
    void UpdateSizeText() override;
    void Tell(const QString& key) override;
    void SendFrame(const FrameMessage& message) override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    bool Decode(const QString& path, PC_File& file);
    bool ReduceIfAsked();
    bool LoadIntoSession();
    void ReportOpened(const QString& path, bool reduced);
    void EnterTool(CBaseWnd* entering, CBaseWnd* leaving);
    bool ChangeCanvas(CBaseWnd* entering);
    void ShowCompare(int mode, const Bitmap& original);
    void ShowOverPicture(const Bitmap& original);

    const ToolTable& m_tools;
    Hooks m_hooks;
    int m_nTool = 0;
    CBaseWnd* m_pWnd = nullptr;
    CCompareWnd* m_pCompareWnd = nullptr;
    Bitmap m_pLoadedBitmap;
    std::optional<tag_ImageInfo> m_imageInfo;
    int m_nCompareMode = 0;
    std::unique_ptr<PC_File> m_file;
    QString m_heldPath;
    bool m_sourceIsLarger = false;
    int m_modal = 0;
    std::function<void(const OpenedImage&)> m_imageOpened;

    struct SavedState {
        quint64 stamp = 0;
        bool pending = false;
        Bitmap picture;
    };
    std::optional<SavedState> m_saved;
};
