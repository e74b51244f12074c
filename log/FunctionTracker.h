#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "log/JobNames.h"
#include "log/LogCensus.h"
#include "log/OpenCalls.h"
#include "log/RawRecord.h"

class McuJobList;

namespace vesk {

// One instrumented function of a log.
struct FunctionName {
    explicit FunctionName(const std::string& text) : m_Name(text) {}

    SharedName m_Name;
    int m_Open = 0;                          // activations on the function stack
    std::uint64_t m_Epoch = 0;               // of the last entry: losses before it, plus 1
    bool m_WasEntered = false;               // has an entry among the open calls of the list
    std::uint64_t m_Entries = 0;             // function entry records
    std::uint64_t* m_Total = nullptr;        // in m_CustomNames, once a segment was stored
    std::vector<McuJob>* m_Calls = nullptr;  // in m_CustomJobsCS, once a call was stored
    OpenCalls m_OpenCalls;
};

// Follows custom logging. From each entry and exit it makes segments (which function is on top of
// the function stack) and calls (from entry to exit in one task, across context switches).
class FunctionTracker {
public:
    // Without a list, segments and calls are only counted. The census, if any, says how many of
    // each will come. All borrowed.
    FunctionTracker(McuJobList* list, const JobNames& jobNames, const LogCensus* census)
        : m_List(list), m_JobNames(jobNames), m_Census(census) {}

    FunctionName* Intern(const std::string& text);

    void Enter(FunctionName&, const RawRecord&, std::uint64_t now);

    // running is the job in progress. False: the function is not on top of the stack; its call is
    // closed, and the record has no other effect.
    bool Leave(FunctionName&, const RawRecord&, std::uint64_t now, const JobName* running);

    // Data are missing: which functions are open is unknown. Their segment goes on.
    void Lose();

    // Ends every open call, after a loss.
    void EndOpenCalls(std::uint64_t now);

    // The end of the log: what is still open is stored without an end.
    void Finish(std::uint64_t now);

    void StartAt(const RawRecord& record) { m_SegmentFrame = record.m_Frame; }

    // Adds what was met to a census.
    void Count(LogCensus&) const;

private:
    // Entered since the last loss.
    bool IsKnown(const FunctionName& function) const { return function.m_Epoch == m_Epoch; }
    void CloseCall(FunctionName&, std::uint64_t now, const JobName* running);
    void NextSegment(FunctionName* next, std::uint8_t flags, const FunctionName* leaving,
                     const RawRecord&, std::uint64_t now);
    void StoreSegment(std::uint64_t end, std::uint8_t flags, std::uint64_t now);
    void StoreCall(FunctionName&, std::uint64_t start, std::uint64_t end, std::uint8_t flags);
    bool HasSegment() const { return m_Segment && !m_Segment->m_Name.IsEmpty(); }

    McuJobList* m_List;
    const JobNames& m_JobNames;
    const LogCensus* m_Census;
    std::map<std::string, std::unique_ptr<FunctionName>> m_Functions;
    std::vector<FunctionName*> m_Stack;
    std::vector<FunctionName*> m_Entered;  // those with m_WasEntered
    std::uint64_t m_Epoch = 1;             // losses, plus 1

    FunctionName* m_Segment = nullptr;  // function of the segment in progress
    std::uint64_t m_SegmentStart = 0;
    std::int32_t m_SegmentFrame = -1;
    std::uint32_t m_SegmentCount = 0;
    std::uint8_t m_SegmentFlags = 0;
    std::uint64_t m_Segments = 0;  // stored or counted
};

}  // namespace vesk
