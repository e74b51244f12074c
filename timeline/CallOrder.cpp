#include "timeline/CallOrder.h"

#include <algorithm>
#include <bit>

#include "log/McuJobList.h"
#include "log/Reserve.h"
#include "platform/Prefetch.h"
#include "timeline/NearSearch.h"
#include "timeline/RecordOrder.h"

namespace vesk {

namespace {

constexpr std::size_t kAtOnce = 8192;   // calls that are sorted together, within a near cache
constexpr std::uint32_t kCrowd = 32;    // calls that are near enough for sorting one by one
constexpr std::size_t kBlock = 32;      // calls for each word of a set
constexpr std::size_t kMostlyOpen = 4;  // calls
constexpr std::size_t kStretch = 16;    // calls, at least
constexpr int kFar = 4;                 // times asked for, ahead of the one at hand

bool StartsBefore(const TimedCall& a, const TimedCall& b) {
    return a.m_Start < b.m_Start;
}

}  // namespace

CallOrder::CallOrder(const McuJobList& list) : m_List(list) {
    std::vector<Lane> lanes;
    std::size_t count = 0;
    for (const auto& [name, calls] : list.m_CustomJobsCS) {
        lanes.push_back({&calls, 0});
        count += calls.size();
    }
    m_Words = std::max<std::size_t>(1, (lanes.size() + 63) / 64);
    m_Block = kBlock * m_Words;
    m_Memory = Reserve(m_Calls, count);
    if (count > 0) Build(std::move(lanes));
    m_Sorting = {};
    m_Counts = {};
    if (!m_IsAscending) m_Calls.clear();
}

// Spans of equal length are taken one after the other from every function, and sorted.
void CallOrder::Build(std::vector<Lane> lanes) {
    std::uint64_t begin = UINT64_MAX;
    std::uint64_t end = 0;
    std::uint64_t count = 0;
    for (const Lane& lane : lanes) {
        if (lane.m_Calls->empty()) continue;
        begin = std::min(begin, lane.m_Calls->front().m_StartTime);
        end = std::max(end, lane.m_Calls->back().m_StartTime);
        count += lane.m_Calls->size();
    }
    if (begin > end) {
        m_IsAscending = false;
        return;
    }
    const std::uint64_t span = (end - begin) / (count / kAtOnce + 1) + 1;
    for (std::uint64_t until = begin; m_IsAscending;) {
        until = until < end && end - until > span ? until + span : end;
        const std::size_t first = m_Calls.size();
        for (std::size_t k = 0; k < lanes.size(); ++k)
            if (!Take(lanes[k], static_cast<std::uint32_t>(k), until)) return;
        SortFrom(first);
        FindJobs(first);
        NoteOpen();
        NoteFunctions();
        if (until == end) break;
    }
    for (const Lane& lane : lanes)
        if (lane.m_Next < lane.m_Calls->size()) m_IsAscending = false;
}

bool CallOrder::Take(Lane& lane, std::uint32_t function, std::uint64_t until) {
    const std::vector<McuJob>& calls = *lane.m_Calls;
    std::uint64_t last = lane.m_Next > 0 ? calls[lane.m_Next - 1].m_StartTime : 0;
    for (; lane.m_Next < calls.size(); ++lane.m_Next) {
        const McuJob& call = calls[lane.m_Next];
        if (call.m_StartTime > until) break;
        if (call.m_StartTime < last) return m_IsAscending = false;
        last = call.m_StartTime;
        const auto index = static_cast<std::int32_t>(lane.m_Next);
        const std::uint64_t end = EffectiveEnd(calls, index, m_List.m_EndTime);
        ProvideFor(m_Calls, m_Memory, 1);
        const std::uint32_t isClosed = (call.m_Flags & kClosedLastCall) != 0 ? 1 : 0;
        m_Calls.push_back({last, end, function << 1 | isClosed, index, TimedCall::kNoJob});
    }
    return true;
}

// Calls of equal start stay in order.
void CallOrder::SortFrom(std::size_t first) {
    if (m_Calls.size() - first < 2) return;
    const auto begin = m_Calls.begin() + static_cast<std::ptrdiff_t>(first);
    const auto [lowest, highest] = std::minmax_element(begin, m_Calls.end(), StartsBefore);
    if (!Distribute(first, lowest->m_Start, highest->m_Start)) {
        std::stable_sort(begin, m_Calls.end(), StartsBefore);
        return;
    }
    for (auto at = begin + 1; at != m_Calls.end(); ++at) {
        const TimedCall call = *at;
        auto to = at;
        for (; to != begin && StartsBefore(call, *(to - 1)); --to) *to = *(to - 1);
        *to = call;
    }
}

// Brings the calls near to their places. False, and nothing happens, if too many lie together.
bool CallOrder::Distribute(std::size_t first, std::uint64_t lowest, std::uint64_t highest) {
    const std::size_t count = m_Calls.size() - first;
    const int excess = std::bit_width(highest - lowest) - std::bit_width(count);
    const int shift = std::max(excess, 0);
    const auto place = [&](const TimedCall& call) {
        return static_cast<std::size_t>((call.m_Start - lowest) >> shift);
    };
    m_Counts.assign(((highest - lowest) >> shift) + 2, 0);
    for (std::size_t i = first; i < m_Calls.size(); ++i) ++m_Counts[place(m_Calls[i]) + 1];
    if (*std::max_element(m_Counts.begin(), m_Counts.end()) > kCrowd) return false;
    for (std::size_t i = 1; i < m_Counts.size(); ++i) m_Counts[i] += m_Counts[i - 1];
    m_Sorting.resize(std::max(m_Sorting.size(), count));
    for (std::size_t i = first; i < m_Calls.size(); ++i)
        m_Sorting[m_Counts[place(m_Calls[i])]++] = m_Calls[i];
    std::copy_n(m_Sorting.begin(), count, m_Calls.begin() + static_cast<std::ptrdiff_t>(first));
    return true;
}

// They come in order, and so do their jobs.
void CallOrder::FindJobs(std::size_t first) {
    if (m_List.empty()) return;
    int job = 0;
    if (first > 0) job = std::max(m_Calls[first - 1].m_Job, 0);
    for (std::size_t i = first; i < m_Calls.size(); ++i) {
        TimedCall& call = m_Calls[i];
        job = LastBefore(m_List, call.m_Start, job);
        const McuJob& at = m_List[static_cast<std::size_t>(job)];
        if (call.m_Start >= at.m_StartTime && call.m_Start < at.m_EndTime) call.m_Job = job;
    }
}

// Begins stretches in the calls that have come. Where many calls are open stretches are as long,
// so that all notes together are not more than the calls.
void CallOrder::NoteOpen() {
    for (;;) {
        std::size_t first = 0;
        std::size_t openFirst = 0;
        if (!m_Stretches.empty()) {
            first = m_Stretches.back().m_Call;
            openFirst = m_Stretches.back().m_Open;
        }
        const std::size_t openLast = m_Open.size();
        const std::size_t next = first + std::max(kStretch, openLast - openFirst);
        if (next >= m_Calls.size()) return;
        const std::uint64_t start = m_Calls[next].m_Start;
        for (std::size_t i = openFirst; i < openLast; ++i) {
            const std::uint32_t at = m_Open[i];
            if (m_Calls[at].m_End > start) m_Open.push_back(at);
        }
        for (std::size_t i = first; i < next; ++i)
            if (m_Calls[i].m_End > start) m_Open.push_back(static_cast<std::uint32_t>(i));
        m_Stretches.push_back(
            {start, static_cast<std::uint32_t>(next), static_cast<std::uint32_t>(openLast)});
    }
}

// Many functions make sets large; their blocks grow with them.
void CallOrder::NoteFunctions() {
    for (std::size_t block = m_Sets.size() / m_Words; (block + 1) * m_Block <= m_Calls.size();
         ++block) {
        m_Sets.resize(m_Sets.size() + m_Words);
        CollectCalls(block * m_Block, (block + 1) * m_Block, &m_Sets[block * m_Words]);
    }
}

void CallOrder::CollectCalls(std::size_t first, std::size_t last, std::uint64_t* set) const {
    for (std::size_t i = first; i < last; ++i) {
        const auto function = static_cast<std::size_t>(m_Calls[i].Function());
        set[function / 64] |= std::uint64_t{1} << function % 64;
    }
}

void CallOrder::Collect(std::size_t first, std::size_t last, std::uint64_t* set) const {
    const std::size_t firstBlock = (first + m_Block - 1) / m_Block;
    const std::size_t lastBlock = last / m_Block;
    if (firstBlock >= lastBlock) return CollectCalls(first, last, set);
    CollectCalls(first, firstBlock * m_Block, set);
    for (std::size_t i = firstBlock * m_Words; i < lastBlock * m_Words; ++i)
        set[i % m_Words] |= m_Sets[i];
    CollectCalls(lastBlock * m_Block, last, set);
}

std::size_t CallOrder::StretchesUpTo(std::uint64_t time, Walk& walk) const {
    const auto count = static_cast<int>(m_Stretches.size());
    const int at = FindNear({0, count, walk.m_At + walk.m_Pace}, [&](int i) {
        return m_Stretches[static_cast<std::size_t>(i)].m_Start <= time;
    });
    walk = {at, at - walk.m_At};
    return static_cast<std::size_t>(at);
}

// Those about a place that is only guessed.
void CallOrder::AskForStretches(int near) const {
    constexpr int kGuess = 2;
    if (near < kGuess || near + kGuess >= static_cast<int>(m_Stretches.size())) return;
    Prefetch(&m_Stretches[static_cast<std::size_t>(near - kGuess)]);
    Prefetch(&m_Stretches[static_cast<std::size_t>(near + kGuess)]);
}

void CallOrder::AskFor(std::uint64_t time) {
    const std::size_t stretches = StretchesUpTo(time, m_Asked);
    AskForStretches(m_Asked.m_At + kFar * m_Asked.m_Pace);
    const std::size_t first = stretches > 0 ? m_Stretches[stretches - 1].m_Call : 0;
    const std::size_t last = std::min(first + kStretch, m_Calls.size());
    for (std::size_t i = first - std::min(first, kStretch / 2); i < last; i += 2)
        Prefetch(&m_Calls[i]);
    if (stretches == 0) return;
    const std::size_t open = m_Stretches[stretches - 1].m_Open;
    for (std::size_t i = open; i < std::min(open + kMostlyOpen, m_Open.size()); ++i)
        Prefetch(&m_Calls[m_Open[i]]);
}

std::size_t CallOrder::FindOpen(std::uint64_t begin, std::uint64_t end,
                                std::vector<const TimedCall*>& open) {
    open.clear();
    const std::size_t next = StretchesUpTo(begin, m_Found);
    std::size_t call = 0;
    if (next > 0) {
        const Stretch& stretch = m_Stretches[next - 1];
        call = stretch.m_Call;
        const std::size_t last =
            next == m_Stretches.size() ? m_Open.size() : m_Stretches[next].m_Open;
        for (std::size_t i = stretch.m_Open; i < last; ++i) {
            const TimedCall& candidate = m_Calls[m_Open[i]];
            if (candidate.m_End > begin) open.push_back(&candidate);
        }
    }
    for (; call < m_Calls.size() && m_Calls[call].m_Start < end; ++call)
        if (m_Calls[call].m_End > std::max(begin, m_Calls[call].m_Start))
            open.push_back(&m_Calls[call]);
    return call;
}

}  // namespace vesk
