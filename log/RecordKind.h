#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace vesk {

enum class RecordKind : std::uint8_t {
    kTask,           // a task gets the processor
    kIrq,            // an interrupt is entered
    kReturn,         // return from an interrupt
    kResume,         // the last task goes on
    kFunctionEntry,  // from here on: no change of task or interrupt
    kFunctionExit,
    kSourceMark,
    kHardwareStart,
    kHardwareEnd,
    kIgnored,
};

// The first four bytes of a record, which say its kind and name what was entered.
struct RecordId {
    std::array<std::uint8_t, 4> m_Bytes;

    explicit RecordId(std::uint32_t word);

    // A headerless log has no record that resumes the last task.
    RecordKind Kind(bool isHeaderless) const;

    std::uint32_t IrqNumber() const { return m_Bytes[1] * 256U + m_Bytes[0]; }

    // All four bytes up to the first zero byte: a task's name.
    std::string TaskName() const { return TextFrom(0); }

    // The last three bytes up to the first zero byte: a function's, mark's or event's name.
    std::string ShortName() const { return TextFrom(1); }

private:
    std::string TextFrom(std::size_t first) const;
};

}  // namespace vesk
