// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <QtCore/QString>

#include "Bitmap.h"

// Why a frame file was refused.
enum class FrameFault {
    None,
    Unreadable,  // missing, no regular file, larger than a frame may be, or not to be read
    TooShort,    // for the header of its kind
    OtherKind,   // of another kind, or none of the program's
    Damaged      // the header says what the file doesn't hold
};

// The bytes of a frame file, with whole numbers as the containers store them: 32 bits, signed, little-endian. They
// belong to somebody else.
struct FrameBytes {
    const std::uint8_t* data = nullptr;
    std::size_t size = 0;

    // `length` bytes from `offset` on lie in the file.
    bool Holds(std::uint64_t offset, std::uint64_t length) const { return offset <= size && length <= size - offset; }
    // Of bytes that are there.
    int Int(std::size_t offset) const;
    // The text at `offset` is `magic`, in capitals or as it stands.
    bool HasMagic(std::size_t offset, const char* magic, Qt::CaseSensitivity sensitivity) const;
    // The picture that these bytes are, whatever its format; null when they are none, or don't lie in the file.
    Bitmap Picture(std::uint64_t offset, std::uint64_t length) const;
};

// Base of the three kinds of frame files, which are told apart by their content alone. What a file says of its sizes
// and places is checked against the file before memory is taken for it.
//
// One object is for one thread at a time. Nothing is thrown but std::bad_alloc.
class CFrameFile {
  public:
    // Nothing that decorates a picture is larger.
    static constexpr std::uint64_t MaxBytes = std::uint64_t{256} << 20;

    virtual ~CFrameFile() = default;

    // Takes the frame of a file, or of bytes in memory, in place of the one before. False when it is refused, and then
    // the object holds no frame. A file of another kind is not read beyond its head.
    bool Load(const QString& path);
    bool Load(const std::uint8_t* data, std::size_t size);
    // Why the last load failed.
    FrameFault Fault() const { return m_fault; }

  protected:
    // What the first bytes of a file of `total` bytes say of its kind.
    virtual FrameFault Sniff(const FrameBytes& head, std::uint64_t total) const = 0;
    // Takes the frame out of a file that Sniff had nothing against.
    virtual FrameFault Parse(const FrameBytes& bytes) = 0;
    // Frees what was taken.
    virtual void Forget() = 0;

  private:
    bool Settle(FrameFault fault);

    FrameFault m_fault = FrameFault::Unreadable;
};
