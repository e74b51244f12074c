#pragma once

#include <cstdint>
#include <vector>

#include "log/McuJob.h"
#include "platform/MemoryAhead.h"

class McuJobList;

namespace vesk {

// A call of any function.
struct TimedCall {
    std::uint64_t m_Start;
    std::uint64_t m_End;       // the effective one
    std::uint32_t m_Function;  // in map order, times 2, plus 1 if an exit closed the call
    std::int32_t m_Index;      // among the function's calls
    std::int32_t m_Job;        // in which it begins, kNoJob for none

    static constexpr std::int32_t kNoJob = -1;
    int Function() const { return static_cast<int>(m_Function >> 1); }
    bool IsClosed() const { return (m_Function & 1) != 0; }
};

// The calls of all functions in order of their starts, which of them are open at any time, and
// which functions have one in any stretch. 33 bytes a call, and some more for long ones.
class CallOrder {
public:
    // Jobs are looked at as if they ascended in start.
    explicit CallOrder(const McuJobList&);

    // False, and no call is held, if those of a function do not ascend in start.
    bool IsAscending() const { return m_IsAscending; }
    bool IsEmpty() const { return m_Calls.empty(); }
    // The calls that start before `end` and end behind `begin`, by start, but for those without a
    // length. Gives the place of the first call that starts at or after `end`.
    std::size_t FindOpen(std::uint64_t begin, std::uint64_t end,
                         std::vector<const TimedCall*>& open);

    // Asks for the memory that FindOpen reads for a time, ahead of its use.
    void AskFor(std::uint64_t time);

    // Words that a set of functions takes, one bit per function.
    std::size_t Words() const { return m_Words; }
    // Adds the functions of the calls at places [first, last) to a set.
    void Collect(std::size_t first, std::size_t last, std::uint64_t* set) const;

private:
    // Which calls were open when the first call of a stretch began.
    struct Stretch {
        std::uint64_t m_Start;
        std::uint32_t m_Call;
        std::uint32_t m_Open;  // where they begin in m_Open
    };
    // What has been taken of a function's calls.
    struct Lane {
        const std::vector<McuJob>* m_Calls;
        std::size_t m_Next;
    };

    void Build(std::vector<Lane>);
    bool Take(Lane&, std::uint32_t function, std::uint64_t until);
    void SortFrom(std::size_t first);
    bool Distribute(std::size_t first, std::uint64_t lowest, std::uint64_t highest);
    void FindJobs(std::size_t first);
    void NoteOpen();
    void NoteFunctions();
    void CollectCalls(std::size_t first, std::size_t last, std::uint64_t* set) const;

    // A place among the stretches that moves on in even steps, as a view is looked at from left to
    // right.
    struct Walk {
        int m_At = 0;  // stretches that begin no later than the time asked for last
        int m_Pace = 0;
    };
    std::size_t StretchesUpTo(std::uint64_t time, Walk&) const;
    void AskForStretches(int near) const;

    const McuJobList& m_List;
    bool m_IsAscending = true;
    std::vector<TimedCall> m_Calls;
    std::size_t m_Words = 1;
    std::size_t m_Block = 1;            // calls of a set
    std::vector<std::uint64_t> m_Sets;  // of the blocks that are full
    std::vector<Stretch> m_Stretches;
    std::vector<std::uint32_t> m_Open;  // places of calls, stretch by stretch
    Walk m_Found;
    Walk m_Asked;
    MemoryAhead m_Memory;
    std::vector<TimedCall> m_Sorting;     // while building
    std::vector<std::uint32_t> m_Counts;  // the same
};

}  // namespace vesk
