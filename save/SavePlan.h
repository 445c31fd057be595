// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QString>

// What the save window decides without a window: folders, names, suffixes, the thumbnail's place, the size text.

// The file types, in the order of the combo's items.
struct SaveType {
    int format;       // the value that PC_File takes
    bool hasQuality;  // whether the quality says anything for it
};
constexpr std::array<SaveType, 3> SaveTypes{{{1, true}, {2, false}, {3, false}}};

// The type of a combo index; the first for an index outside.
SaveType SaveTypeAt(int comboIndex);

constexpr int DefaultSaveQuality = 90;

// The folder of the last save that ended on the after-save page; empty at start and never stored. Main thread.
QString LastSaveFolder();
void SetLastSaveFolder(const QString& folder);

// A save name without its suffix: not empty, none of \ / : * ? " < > |, no control character, and neither "." nor "..".
bool IsValidSaveName(const QString& name);

// "2311.4KB": one decimal, of a size that is kept in 32 bits.
QString SaveSizeText(quint32 bytes);

// The folder that a typed text means: the text itself when there is such a folder, else with its slashes mapped, so
// that "D:\pictures"-like texts work and a folder whose name holds a backslash does too.
QString SaveFolderFromText(const QString& text);

// folder + "/" + name + suffix. A folder that ends in a slash does not get a second one.
QString SaveFilePath(const QString& folder, const QString& name, const QString& suffix);

// Where the picture lies in the preview, in logical pixels: whole, as large as it fits, centred, truncated, each side
// at least 1. Small pictures are enlarged.
struct SaveThumbnail {
    static constexpr int Width = 180;
    static constexpr int Height = 140;
    QRect place;

    static SaveThumbnail For(QSize picture);
    // The control's background attribute text: "file='...' dest='left,top,right,bottom' ".
    QString Attributes(const QString& file) const;
};

// Where a picture goes by default and where it came from. The texts of the folder and name fields come from here; what
// the user typed goes back in by Read.
class SavePlan {
  public:
    enum class Cover { Off, On };

    // The set-source step. `path`: the opened picture, empty for none. The first proposal is LastSaveFolder, else
    // `defaultFolder`.
    void SetSource(const QString& path, const QString& defaultFolder);

    // Whether the opened file itself may be overwritten: its suffix is one that can be written, and it is nothing of
    // the program's own (the folder Temp).
    bool CanCover() const { return m_canCover; }

    // What the fields held at the last Read, before that the proposal.
    QString CurrentFolder() const { return m_current.folder; }
    QString CurrentName() const { return m_current.name; }
    void Read(const QString& folder, const QString& name) { m_current = {folder, name}; }

    QString SourceFolder() const { return m_source.folder; }
    QString SourceName() const { return m_source.name; }
    // Lower case with its dot; empty without a source.
    QString SourceSuffix() const { return m_sourceSuffix; }

    Cover CoverState() const { return m_cover; }
    // Inverts it. Turning it on remembers the texts that the fields hold, so that turning it off gives them back.
    void ToggleCover(const QString& folder, const QString& name);
    // What the fields show in the present state.
    QString ShownFolder() const;
    QString ShownName() const;

    // The file to write, of the last Read. While covering that is the opened file itself under the very name it has,
    // even when its suffix is written in capitals.
    QString FullPath(const QString& suffix) const;

  private:
    struct Fields {
        QString folder;
        QString name;
    };
    QString m_sourcePath;
    Fields m_source;
    QString m_sourceSuffix;
    Fields m_current;
    Fields m_beforeCover;
    Cover m_cover = Cover::Off;
    bool m_canCover = false;
};
