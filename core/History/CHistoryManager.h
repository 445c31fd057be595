// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <QtCore/QString>
#include <vector>

#include "Bitmap.h"
#include "CHistoryStep.h"
#include "CViewState.h"

// What went wrong in the history, for the window layer to put into words.
enum class HistoryFailure {
    None,
    // A snapshot could not be written: the disk is full or the folder refuses it.
    Save,
    // A snapshot could not be read back; the move onto it was taken back.
    Read,
};

// The undo store: a ring of 31 steps whose pixels lie in files, the picture that one tool hands to the next, and the
// view that goes with it.
//
// Snapshot files are undoredo0.bin to undoredo31.bin, one more than the ring has slots, so that there always is a
// number that no slot names: a file that a step names is never written again while the step lives, whatever the
// sequence.
//
// No lock: used by the main thread, and by a task's worker while the main thread stands in the modal progress loop.
// The fields are for reading; tools move through StepCommitter.
class CHistoryManager {
  public:
    static constexpr int RingSize = 31;
    static constexpr int FileCount = 32;

    // The session's history, under AppDir. Built on first use.
    static CHistoryManager& Instance();

    // A history with its files in `folder`, which is made when a file is to be written; below AppDir/Temp it is the
    // user's alone.
    explicit CHistoryManager(const QString& folder);
    CHistoryManager(const CHistoryManager&) = delete;
    CHistoryManager& operator=(const CHistoryManager&) = delete;

    // Empties ring, current bitmap and view state, and deletes the snapshot files.
    void Reset();
    // Starts the history of a new picture. False for a null bitmap (and then nothing happens) and when origin.bin could
    // not be written: the session goes on, but there is no way back to the first step.
    bool OpenImage(const Bitmap& picture);

    // The three ways to store a step. A step whose pixel record holds a bitmap gets a file of its own when it asks for
    // it by `save`, else the path of the step it stands on: for a push and for PushOverCurrent the step at m_current,
    // for PushOverHead the step at m_head. After a failed write the next step that holds a bitmap gets its own file
    // whether it asks or not, since the tool's base is then in no file.
    //
    // True and `step` taken (null) on success; false, and the step stays with the caller, for a null step and when the
    // file can't be written. A failed push leaves m_count and m_currentNo raised until the next call that pushes or
    // moves.

    // Adds a step after the current one; the steps beyond it are no longer reachable. A full ring drops its oldest
    // step.
    bool PushStep(std::unique_ptr<CHistoryStep>& step);
    // Replaces the step at m_current; false on an empty ring.
    bool PushOverCurrent(std::unique_ptr<CHistoryStep>& step);
    // Replaces the step at m_head; false on an empty ring.
    bool PushOverHead(std::unique_ptr<CHistoryStep>& step);

    // A tool was left and its last step, which holds its picture in memory, could not be written: the step is owed. The
    // picture then counts as changed, and every commit and move first pays, which is to store the step where it
    // belongs. A step that was to follow the current one gives way to the next that is owed, since no tool stands on
    // it.
    enum class Place { AfterCurrent, OverCurrent };
    void Owe(std::unique_ptr<CHistoryStep> step, Place place);
    bool Owes() const { return !m_owed.empty(); }
    // True when nothing is owed any more.
    bool PayOwed();

    // One step back or forward; false when there is none, and nothing moves.
    bool Undo();
    bool Redo();
    // Moves to the step of that number, 1 for the oldest, and gives a clone of it; null, and nothing moves, outside
    // 1..m_count and for the step that is current.
    std::unique_ptr<CHistoryStep> JumpTo(int stepNo);

    bool AtOldest() const { return m_current == -1 || m_current == m_tail; }
    bool AtNewest() const { return m_current == -1 || m_current == m_head; }
    // Clones of the step shown and of the newest; null on an empty ring.
    std::unique_ptr<CHistoryStep> CloneCurrent() const;
    std::unique_ptr<CHistoryStep> CloneHead() const;

    // What puts the history back to this moment, for an act that fails half way. The act may have written one snapshot
    // at most, since the file of a step that was dropped is free for the next but one. Valid as long as the history.
    std::function<void()> Remember();

    // Where the history stands, to go back to when a move turns out to lead nowhere. Valid until the next push.
    struct Mark {
        int current;
        int currentNo;
    };
    Mark Position() const { return {m_current, m_currentNo}; }
    void ReturnTo(const Mark& mark);

    // True when the picture of the current step is the opened one: nothing done, or a step that only names origin.bin;
    // and no step is owed.
    bool IsOriginal() const;
    // A step on origin.bin, named by ids_originalimage; null on an empty ring.
    std::unique_ptr<CHistoryStep> MakeRevertStep() const;
    // The opened picture; null on an empty ring and when its file can't be read.
    Bitmap ReadOrigin() const;

    // Names of the reachable steps from the oldest; row + 1 is the number for JumpTo.
    const std::vector<QString>& GetStepNames();

    // A number that no other step of the session has, owed ones included: the same number means the same state of the
    // history. 0 when empty.
    std::uint64_t CurrentStamp() const;

    // The last committed picture, from which the next tool starts; null before the first.
    Bitmap CurrentBitmap() const { return m_pCurrentBitmap; }
    void SetCurrentBitmap(const Bitmap& picture) { m_pCurrentBitmap = picture; }
    // What the last tool left; null when there is nothing to take up. Owned by the manager.
    CViewState* ViewState() const { return m_pViewState.get(); }
    void SetViewState(std::unique_ptr<CViewState> state) { m_pViewState = std::move(state); }

    // The failure that the user has not been told yet, and forgets it. A row of failures of one kind is told once: the
    // next of that kind is told only after a success in between.
    HistoryFailure TakeFailureNotice();
    // Told by whoever moves: the snapshot moved onto could or could not be read.
    void NoteRead(bool succeeded);

    std::array<std::unique_ptr<CHistoryStep>, RingSize> m_ring;
    Bitmap m_pCurrentBitmap;
    int m_head = 0;
    int m_tail = 0;
    // -1 while the ring is empty.
    int m_current = -1;
    // Number of the newest snapshot file.
    int m_fileCounter = -1;
    // Steps that the user can reach, and the 1-based number of the current one among them.
    int m_count = 0;
    int m_currentNo = 0;
    // With a slash at the end.
    QString m_tempDir;
    QString m_originPath;
    // Of a snapshot's path: %1 the folder, %2 the number.
    QString m_fileFormat;
    std::vector<QString> m_stepNames;
    std::unique_ptr<CViewState> m_pViewState;

  private:
    void RecountFromRing();
    QString FilePath(int number) const;
    QString NextFilePath();
    bool IsNamed(const QString& path) const;
    bool SettlePixels(CHistoryStep& step, int standsOn);
    bool SaveSnapshot(CHistoryStep& step);
    void Store(int slot, std::unique_ptr<CHistoryStep>& step);
    bool PushOver(std::unique_ptr<CHistoryStep>& step, int slot);
    std::unique_ptr<CHistoryStep> CloneAt(int slot) const;

    // One kind of failure: a row of them is told once.
    struct Notice {
        bool failing = false;
        bool due = false;
        void Note(bool succeeded);
        bool Take();
    };

    std::array<std::uint64_t, RingSize> m_stamps{};
    struct Owed {
        std::unique_ptr<CHistoryStep> step;
        Place place;
        std::uint64_t stamp;
    };

    std::uint64_t m_lastStamp = 0;
    bool m_ownFileNext = false;
    std::vector<Owed> m_owed;
    Notice m_saveNotice;
    Notice m_readNotice;
};
