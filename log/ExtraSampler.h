#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "log/HeaderInfo.h"

class McuJobList;

namespace vesk {

// A stretch of bytes in a record.
struct ByteRange {
    std::size_t m_Offset = 0;
    std::size_t m_Size = 0;
};

// Turns the extra data that stand in the records into samples. A sample lasts from one record to
// the next, carries the values of the record that opens it, and is charged to the job that ran.
class ExtraSampler {
public:
    // extra: where the extra data lie in a record. previousBytes: how much of a record the first
    // sample may ask for. Without a list samples are only counted; a headerless log's values are
    // 32-bit words as they stand. The list is borrowed.
    ExtraSampler(McuJobList* list, int values, std::array<ByteRange, 2> extra, bool isHeaderless,
                 std::size_t previousBytes);

    // A record before time has begun to move: it opens the first sample, with its first `bytes`
    // extra bytes.
    void StartAt(const std::uint8_t* record, std::size_t bytes);

    // The sample that this record ends, and the opening of the next.
    void Sample(const std::uint8_t* record, std::uint64_t now, const std::string& jobName);

    // The same for a log whose records carry nothing that a sample needs.
    void SkipTo(std::uint64_t now) { m_Time = now; }

    // The last sample of a log, which no record ends; also stored when there are no values.
    void Finish(std::uint64_t endTime, const std::string& jobName);

    std::uint64_t Samples() const { return m_Samples; }

private:
    void Keep(const std::uint8_t* record);
    void Store(const std::uint8_t* current, std::uint64_t now, const std::string& jobName);

    McuJobList* m_List;
    int m_Values;
    std::array<ByteRange, 2> m_Extra;
    bool m_IsHeaderless;
    std::vector<std::uint8_t> m_Previous;  // extra data of the record that opened the sample
    std::vector<int> m_Words;              // the previous values, headerless
    std::uint64_t m_Time = 0;              // at which the sample was opened
    std::uint64_t m_Samples = 0;
};

}  // namespace vesk
