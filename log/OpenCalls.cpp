#include "log/OpenCalls.h"

#include "log/JobSearch.h"

namespace vesk {

namespace {

// The name of the stored job that a time lies in; null for a gap between jobs. A time at a job's
// start counts to the job before, except for the first.
const JobName* JobAt(std::uint64_t time, const std::vector<McuJob>& jobs, const JobNames& names) {
    int index = 0;
    FindBefore(
        jobs, [](const McuJob& job) { return job.m_StartTime; }, time, jobs.back().m_EndTime,
        index);
    const McuJob& job = jobs[static_cast<std::size_t>(index)];
    return time >= job.m_StartTime && time < job.m_EndTime ? names.Find(job.m_Name) : nullptr;
}

// A call that the last stored job reaches belongs to a stored job for good: later jobs start
// behind it. So do all calls that began before such a one.
bool IsSettled(std::uint64_t start, const std::vector<McuJob>& jobs) {
    return !jobs.empty() && (start < jobs.back().m_EndTime || start <= jobs.back().m_StartTime);
}

}  // namespace

void OpenCalls::Settle(const std::vector<McuJob>& jobs, const JobNames& names) {
    for (const std::uint64_t start : m_Recent)
        m_Settled[JobAt(start, jobs, names)].push_back(start);
    m_Recent.clear();
}

bool OpenCalls::Take(const std::vector<McuJob>& jobs, const JobNames& names, const JobName* running,
                     std::uint64_t& start) {
    std::vector<std::uint64_t>* calls = &m_Recent;
    if (m_Recent.empty() || IsSettled(m_Recent.back(), jobs)) {
        Settle(jobs, names);
        const auto found = m_Settled.find(running);
        if (found == m_Settled.end() || found->second.empty()) return false;
        calls = &found->second;
    }
    start = calls->back();
    calls->pop_back();
    return true;
}

std::vector<std::uint64_t> OpenCalls::TakeAll() {
    std::vector<std::uint64_t> all = std::move(m_Recent);
    m_Recent.clear();
    for (auto& [job, starts] : m_Settled) all.insert(all.end(), starts.begin(), starts.end());
    m_Settled.clear();
    std::sort(all.begin(), all.end());
    return all;
}

}  // namespace vesk
