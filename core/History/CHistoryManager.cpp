// SPDX-License-Identifier: GPL-3.0-or-later
#include "CHistoryManager.h"

#include <algorithm>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <utility>

#include "AppPaths.h"
#include "ImageParams.h"
#include "PC_File.h"

namespace {

int After(int slot) {
    return (slot + 1) % CHistoryManager::RingSize;
}

int Before(int slot) {
    return (slot + CHistoryManager::RingSize - 1) % CHistoryManager::RingSize;
}

// Number of `slot` counted round the ring from `tail`, from 1.
int NumberFrom(int tail, int slot) {
    return (slot - tail + CHistoryManager::RingSize) % CHistoryManager::RingSize + 1;
}

std::unique_ptr<CHistoryStep> MakeStepOn(const QString& path, const QString& nameKey) {
    auto image = std::make_unique<ImageParams>();
    image->path = path;
    auto step = std::make_unique<CHistoryStep>();
    step->AddParams(std::move(image));
    step->SetNameFromKey(nameKey);
    return step;
}

}  // namespace

CHistoryManager& CHistoryManager::Instance() {
    static CHistoryManager manager(AppPath(QStringLiteral("Temp/UndoTemp")));
    return manager;
}

CHistoryManager::CHistoryManager(const QString& folder)
    : m_tempDir(QDir::cleanPath(folder) + u'/'),
      m_originPath(m_tempDir + QStringLiteral("origin.bin")),
      m_fileFormat(QStringLiteral("%1undoredo%2.bin")) {}

void CHistoryManager::Reset() {
    for (auto& step : m_ring) step.reset();
    m_stamps.fill(0);
    m_head = 0;
    m_tail = 0;
    m_current = -1;
    m_fileCounter = -1;
    m_count = 0;
    m_currentNo = 0;
    m_stepNames.clear();
    m_pCurrentBitmap = Bitmap();
    m_pViewState.reset();
    m_ownFileNext = false;
    m_owed.clear();
    m_saveNotice = {};
    m_readNotice = {};
    QFile::remove(m_originPath);
    for (int number = 0; number < FileCount; ++number) QFile::remove(FilePath(number));
}

bool CHistoryManager::OpenImage(const Bitmap& picture) {
    if (!picture) return false;
    Reset();
    auto step = MakeStepOn(m_originPath, QStringLiteral("ids_openimage"));
    PushStep(step);
    SetCurrentBitmap(picture);
    const bool saved = MakeDirs(m_tempDir) && PC_File::ImageSaveTobinary(picture, m_originPath.toStdWString());
    m_ownFileNext = !saved;
    return saved;
}

bool CHistoryManager::PushStep(std::unique_ptr<CHistoryStep>& step) {
    if (!step) return false;
    RecountFromRing();
    m_count = m_currentNo = m_currentNo + 1;
    if (!SettlePixels(*step, m_current)) return false;
    const int next = After(m_current);
    m_head = next;
    if (m_current != -1 && next == m_tail) {
        --m_count;
        --m_currentNo;
        m_tail = After(m_tail);
    }
    m_current = next;
    Store(next, step);
    return true;
}

bool CHistoryManager::PushOverCurrent(std::unique_ptr<CHistoryStep>& step) {
    return PushOver(step, m_current);
}

bool CHistoryManager::PushOverHead(std::unique_ptr<CHistoryStep>& step) {
    return PushOver(step, m_head);
}

bool CHistoryManager::PushOver(std::unique_ptr<CHistoryStep>& step, int slot) {
    if (!step) return false;
    RecountFromRing();
    if (m_count < 1 || !SettlePixels(*step, slot)) return false;
    Store(slot, step);
    return true;
}

bool CHistoryManager::Undo() {
    RecountFromRing();
    if (AtOldest()) return false;
    --m_currentNo;
    m_current = Before(m_current);
    return true;
}

bool CHistoryManager::Redo() {
    RecountFromRing();
    if (AtNewest()) return false;
    ++m_currentNo;
    m_current = After(m_current);
    return true;
}

std::unique_ptr<CHistoryStep> CHistoryManager::JumpTo(int stepNo) {
    RecountFromRing();
    if (stepNo < 1 || stepNo > m_count || stepNo == m_currentNo) return nullptr;
    while (m_currentNo != stepNo)
        if (!(stepNo < m_currentNo ? Undo() : Redo())) return nullptr;
    return CloneCurrent();
}

std::unique_ptr<CHistoryStep> CHistoryManager::CloneCurrent() const {
    return CloneAt(m_current);
}

std::unique_ptr<CHistoryStep> CHistoryManager::CloneHead() const {
    return CloneAt(m_current == -1 ? -1 : m_head);
}

std::unique_ptr<CHistoryStep> CHistoryManager::CloneAt(int slot) const {
    return slot == -1 ? nullptr : m_ring[slot]->Clone();
}

void CHistoryManager::Owe(std::unique_ptr<CHistoryStep> step, Place place) {
    if (!m_owed.empty() && m_owed.back().place == Place::AfterCurrent) m_owed.pop_back();
    m_owed.push_back({std::move(step), place, ++m_lastStamp});
}

bool CHistoryManager::PayOwed() {
    while (!m_owed.empty()) {
        Owed& first = m_owed.front();
        if (!(first.place == Place::OverCurrent ? PushOverCurrent(first.step) : PushStep(first.step))) return false;
        m_stamps[m_current] = first.stamp;
        m_owed.erase(m_owed.begin());
    }
    return true;
}

std::function<void()> CHistoryManager::Remember() {
    auto then = std::make_shared<CHistoryManager>(m_tempDir);
    const auto copy = [](CHistoryManager& to, const CHistoryManager& from) {
        for (std::size_t slot = 0; slot < from.m_ring.size(); ++slot)
            to.m_ring[slot] = from.m_ring[slot] ? from.m_ring[slot]->Clone() : nullptr;
        to.m_owed.clear();
        for (const Owed& owed : from.m_owed) {
            to.m_owed.push_back({owed.step->Clone(), owed.place, owed.stamp});
            to.m_owed.back().step->Image()->save = true;
        }
        to.m_pViewState = from.m_pViewState ? std::make_unique<CViewState>(*from.m_pViewState) : nullptr;
        to.m_pCurrentBitmap = from.m_pCurrentBitmap;
        to.m_stamps = from.m_stamps;
        to.m_head = from.m_head;
        to.m_tail = from.m_tail;
        to.m_current = from.m_current;
        to.m_count = from.m_count;
        to.m_currentNo = from.m_currentNo;
        to.m_ownFileNext = from.m_ownFileNext;
    };
    copy(*then, *this);
    return [this, then, copy] { copy(*this, *then); };
}

void CHistoryManager::ReturnTo(const Mark& mark) {
    m_current = mark.current;
    m_currentNo = mark.currentNo;
}

bool CHistoryManager::IsOriginal() const {
    if (Owes()) return false;
    if (m_current == -1 || (m_current == m_head && m_current == m_tail)) return true;
    const CHistoryStep& step = *m_ring[m_current];
    return step.Params().size() == 1 && step.Image() && step.GetImagePath() == m_originPath;
}

std::unique_ptr<CHistoryStep> CHistoryManager::MakeRevertStep() const {
    return m_current == -1 ? nullptr : MakeStepOn(m_originPath, QStringLiteral("ids_originalimage"));
}

Bitmap CHistoryManager::ReadOrigin() const {
    return m_current == -1 ? Bitmap() : PC_File::ImageReadFrombinary(m_originPath.toStdWString());
}

const std::vector<QString>& CHistoryManager::GetStepNames() {
    m_stepNames.clear();
    if (m_current == -1) return m_stepNames;
    for (int slot = m_tail; slot != m_head; slot = After(slot)) m_stepNames.push_back(m_ring[slot]->GetName());
    m_stepNames.push_back(m_ring[m_head]->GetName());
    return m_stepNames;
}

std::uint64_t CHistoryManager::CurrentStamp() const {
    if (Owes()) return m_owed.back().stamp;
    return m_current == -1 ? 0 : m_stamps[m_current];
}

HistoryFailure CHistoryManager::TakeFailureNotice() {
    if (m_saveNotice.Take()) return HistoryFailure::Save;
    return m_readNotice.Take() ? HistoryFailure::Read : HistoryFailure::None;
}

void CHistoryManager::NoteRead(bool succeeded) {
    m_readNotice.Note(succeeded);
}

void CHistoryManager::Notice::Note(bool succeeded) {
    if (!succeeded && !failing) due = true;
    failing = !succeeded;
}

bool CHistoryManager::Notice::Take() {
    return std::exchange(due, false);
}

// A push that failed left the counts raised; the ring itself always tells the truth.
void CHistoryManager::RecountFromRing() {
    m_count = m_current == -1 ? 0 : NumberFrom(m_tail, m_head);
    m_currentNo = m_current == -1 ? 0 : NumberFrom(m_tail, m_current);
}

QString CHistoryManager::FilePath(int number) const {
    return m_fileFormat.arg(m_tempDir, QString::number(number));
}

bool CHistoryManager::IsNamed(const QString& path) const {
    return std::any_of(m_ring.begin(), m_ring.end(),
                       [&](const auto& step) { return step && step->GetImagePath() == path; });
}

// Slots beyond the head count too: they are not reachable, but become so again when the push that left them behind
// fails.
QString CHistoryManager::NextFilePath() {
    QString path;
    do {
        m_fileCounter = (m_fileCounter + 1) % FileCount;
        path = FilePath(m_fileCounter);
    } while (IsNamed(path));
    return path;
}

bool CHistoryManager::SettlePixels(CHistoryStep& step, int standsOn) {
    const ImageParams* image = step.Image();
    if (!image || !image->image) return true;
    const QString shared = standsOn == -1 ? QString() : m_ring[standsOn]->GetImagePath();
    if (image->save || m_ownFileNext || shared.isEmpty()) return SaveSnapshot(step);
    step.SetImagePath(shared);
    return true;
}

bool CHistoryManager::SaveSnapshot(CHistoryStep& step) {
    const QString path = NextFilePath();
    const bool saved = MakeDirs(m_tempDir) && step.SaveImage(path);
    // No step names what a full disk left of the file, and the space is wanted.
    if (!saved) QFile::remove(path);
    m_ownFileNext = !saved;
    m_saveNotice.Note(saved);
    return saved;
}

void CHistoryManager::Store(int slot, std::unique_ptr<CHistoryStep>& step) {
    m_ring[slot] = std::move(step);
    m_stamps[slot] = ++m_lastStamp;
}
