#pragma once

#include <cstdint>
#include <functional>

#include "log/HeaderInfo.h"

namespace vesk {

enum class ReadOutcome {
    kNothingRead,  // no read yet, or the list was cleared since
    kRefused,      // the file, its header or the chosen range was refused: no record was decoded
    kCancelled,
    kPartial,  // an error ended the decoding: the list holds all that came before it
    kComplete,
};

enum class LogForm { kHeaderless, kWithHeader, kPackets };

// How a read went, beyond what the list itself shows. Damage is counted by name.
struct ReadReport {
    ReadOutcome m_Outcome = ReadOutcome::kNothingRead;
    LogForm m_Form = LogForm::kHeaderless;
    std::int32_t m_Version = 0;     // of the header; 0 without one
    HeaderInfo m_Info;              // as the decoder used it
    std::int64_t m_RangeStart = 0;  // file positions that were read
    std::int64_t m_RangeEnd = 0;
    std::uint64_t m_Records = 0;         // whole records in the range
    std::uint64_t m_IgnoredRecords = 0;  // of a kind that means nothing
    std::uint64_t m_UnmatchedExits = 0;  // function exits that did not fit the function stack
    std::uint64_t m_LossPackets = 0;
    std::uint64_t m_DroppedPackets = 0;  // data packets dropped for their sequence number
    std::uint64_t m_CutOffBytes = 0;     // of a record that the end of the file cuts
};

// Called every few megabytes of a read with the bytes done and to do; false cancels the read,
// which then returns false without a text and leaves a cleared list.
using ReadProgress = std::function<bool(std::int64_t done, std::int64_t total)>;

}  // namespace vesk
