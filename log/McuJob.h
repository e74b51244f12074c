#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

// Bits of McuJob::m_Flags, for records of custom logging only.
constexpr std::uint8_t kBeganAtEntry = 1;    // the segment began at a function entry record
constexpr std::uint8_t kEndedAtExit = 2;     // the segment ended at the exit of that function
constexpr std::uint8_t kClosedLastCall = 4;  // the exit closed the last open activation; on a
                                             // call record: it was closed by its exit record

// One timed record of a log: a task or interrupt that held the processor, a function segment or
// call, a source mark or a hardware event. The container that holds it tells its kind.
// Times are QBit since the start of the log.
class McuJob {
public:
    // What a string holds without memory of its own, in the common implementations.
    static constexpr std::size_t kShortName = 15;

    McuJob() = default;
    McuJob(std::string name, std::uint64_t start, std::uint64_t end)
        : m_Name(std::move(name)), m_StartTime(start), m_EndTime(end) {}
    // Takes a name of at most kShortName characters from a buffer of at least that many. Copying
    // a fixed number and cutting is faster than copying a number that differs from job to job.
    McuJob(const char* padded, std::size_t length, std::uint64_t start, std::uint64_t end)
        : m_Name(padded, kShortName), m_StartTime(start), m_EndTime(end) {
        if (length < kShortName) m_Name.resize(length);
    }
    McuJob(const McuJob&) = default;
    McuJob(McuJob&&) = default;
    McuJob& operator=(const McuJob&) = default;
    McuJob& operator=(McuJob&&) = default;
    virtual ~McuJob() = default;

    // Name, start and end decide; the other fields take no part.
    friend bool operator==(const McuJob& a, const McuJob& b) {
        return a.m_StartTime == b.m_StartTime && a.m_EndTime == b.m_EndTime && a.m_Name == b.m_Name;
    }

    std::string m_Name;
    std::uint64_t m_StartTime = 0;
    std::uint64_t m_EndTime = 0;    // 0 or not above the start: no end was recorded
    std::int32_t m_TimeStamp = 0;   // frame number of the record that started the job
    std::uint32_t m_TimeCount = 0;  // raw counter of that record
    std::uint8_t m_Flags = 0;
};
