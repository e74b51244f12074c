#include "tests/timeline/PlainFind.h"

#include <strings.h>

namespace plain {

Time Frame(const McuJobList& list, int firstVisible, std::int32_t frame) {
    McuJob job, next;
    if (!list.GetJob(firstVisible, job)) return {};
    if (job.m_TimeStamp >= frame) {
        for (int i = firstVisible - 1; list.GetJob(i, next) && next.m_TimeStamp >= frame; --i)
            job = next;
        return job.m_StartTime;
    }
    for (int i = firstVisible + 1; list.GetJob(i, next) && next.m_TimeStamp <= frame; ++i) {
        job = next;
        if (job.m_TimeStamp == frame) break;
    }
    return job.m_StartTime;
}

Time Name(const McuJobList& list, const std::vector<McuJob>& records, const std::string& name,
          std::uint64_t cursor, bool up, bool wrapsToStart) {
    int start = 0;
    if (!list.SearchOtherJob(cursor, start, &records)) return {};
    const auto fits = [&](int i) {
        return name.empty() ||
               strcasecmp(records[static_cast<std::size_t>(i)].m_Name.c_str(), name.c_str()) == 0;
    };
    const auto at = [&](int i) { return records[static_cast<std::size_t>(i)].m_StartTime; };
    const int count = static_cast<int>(records.size());
    if (up) {
        for (int i = start; i >= 0; --i)
            if (fits(i) && at(i) < cursor) return at(i);
        for (int i = count - 1; i >= (wrapsToStart ? start : start + 1); --i)
            if (fits(i)) return at(i);
    } else {
        for (int i = start; i < count; ++i)
            if (fits(i) && at(i) > cursor) return at(i);
        for (int i = 0; i < start; ++i)
            if (fits(i)) return at(i);
    }
    return {};
}

namespace {

Time NextIn(const std::vector<McuJob>& lane, int start, std::uint64_t cursor, bool up) {
    const int count = static_cast<int>(lane.size());
    for (int i = start; i >= 0 && i < count; i += up ? -1 : 1) {
        const std::uint64_t time = lane[static_cast<std::size_t>(i)].m_StartTime;
        if (up ? time < cursor : time > cursor) return time;
    }
    return {};
}

Time AnyCall(const McuJobList& list, std::uint64_t cursor, bool up) {
    Time best;
    for (const auto& [name, lane] : list.m_CustomJobsCS) {
        int start = 0;
        if (!list.SearchOtherJob(cursor, start, &lane)) return {};
        const Time found = NextIn(lane, start, cursor, up);
        if (found && (!best || (up ? *found > *best : *found < *best))) best = found;
    }
    return best ? best : cursor;
}

}  // namespace

Time Call(const McuJobList& list, const std::string& function, std::uint64_t cursor, bool up) {
    if (function.empty()) return AnyCall(list, cursor, up);
    const auto lane = list.m_CustomJobsCS.find(function);
    int start = 0;
    if (lane == list.m_CustomJobsCS.end()) return {};
    if (!list.SearchOtherJob(cursor, start, &lane->second)) return {};
    if (const Time found = NextIn(lane->second, start, cursor, up)) return found;
    return up ? lane->second.back().m_StartTime : lane->second.front().m_StartTime;
}

}  // namespace plain
