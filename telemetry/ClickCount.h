// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <mutex>
#include <QtCore/QByteArray>
#include <QtCore/QString>

// Click counter: how often each thing in the program was used, by click code, kept from run to run in
// AppDir/Resources/Action.dat. A click code is "888", two digits for the area and two or four for the item.
//
// The file is UTF-16 little-endian without a byte order mark, a line "code#count|" with a single line feed for each
// code, in ascending order of the codes. Any thread: the map has its own lock, which is never held while a file is
// used.
class CClickCount {
  public:
    CClickCount() = default;
    virtual ~CClickCount();
    CClickCount(const CClickCount&) = delete;
    CClickCount& operator=(const CClickCount&) = delete;

    // Adds to the count of a code; a new code begins with the amount.
    void Add(const QString& code, int amount = 1);

    // Adds what the file holds, if it can be opened. Lines are read at most 260 code units at a time; one without "#"
    // or
    // "|" is ignored.
    void Load();
    // Writes the counts, replacing the file whole; without any count the file is made empty. False when it cannot be
    // written, and then it is as it was.
    bool Save() const;

    // A copy of the counts, and the way to empty them.
    std::map<QString, int> Counts() const;
    void Clear();
    // Both at once, so that no click falls between.
    std::map<QString, int> Take();

    // The same on the bytes of a file.
    void LoadBytes(const QByteArray& bytes);
    QByteArray SaveBytes() const;

    // AppDir/Resources/Action.dat.
    static QString FilePath();

  private:
    void LoadLine(const QString& line);

    mutable std::mutex m_lock;
    std::map<QString, int> m_counts;
};

// The program's own counter: read when the program starts, before any window, and written when it ends.
CClickCount& ClickCounts();

// Counts one click of a code such as "8880501".
void CountClick(const QString& code);
