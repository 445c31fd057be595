// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

// A record of a history step: a value object that says what a step shows or how its tool came to it. Records do no
// pixel work. A step owns its records and clones them whenever it leaves the ring.
class CUndoRedoParams {
  public:
    virtual ~CUndoRedoParams() = default;

    // The number of the record's class; each class also has it as its constant `Type`.
    virtual int GetType() const = 0;
    // A record of the same class with the same fields (ImageParams says where it differs).
    virtual std::unique_ptr<CUndoRedoParams> Clone() const = 0;

    // Sort key inside a step; the pixel record has 0, a tool's records count on from 1.
    int order = 0;

    // Of this part only: each record class compares all its fields with its own.
    bool operator==(const CUndoRedoParams&) const = default;

  protected:
    CUndoRedoParams() = default;
    CUndoRedoParams(const CUndoRedoParams&) = default;
    CUndoRedoParams& operator=(const CUndoRedoParams&) = default;
};

// What every record class repeats: its number and its clone.
//     struct FrameParams : ParamsOf<FrameParams, 6> { ... };
template <class Derived, int TypeNumber, class Base = CUndoRedoParams>
class ParamsOf : public Base {
  public:
    static constexpr int Type = TypeNumber;
    int GetType() const override { return Type; }
    std::unique_ptr<CUndoRedoParams> Clone() const override {
        return std::make_unique<Derived>(static_cast<const Derived&>(*this));
    }

    bool operator==(const ParamsOf&) const = default;
};

// `record` as a Record, or null when it is of another class.
template <class Record>
const Record* RecordAs(const CUndoRedoParams& record) {
    return record.GetType() == Record::Type ? static_cast<const Record*>(&record) : nullptr;
}
