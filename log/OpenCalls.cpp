#include "log/OpenCalls.h"

#include "log/JobSearch.h"

namespace vesk {

namespace {

// The name of the stored job that a time lies in; null for a gap between jobs. A time at a job's
// start counts to the job before, except for the first.
const JobName* JobAt(std::uint64_t time, const std::vector<McuJob>& jobs, const JobNames& names) {
    int index = 0;
    FindBefore(jobs, [](const McuJob& job) { return job.m_StartTime; }, time,
               jobs.back().m_EndTime, index);
    const McuJob& job = jobs[static_cast<std::size_t>(index)];
    return time >= job.m_StartTime && time < job.m_EndTime ? names.Find(job.m_Name) : nullptr;
}

}  // namespace

// A call that the last stored job reaches belongs to a stored job for good: later jobs start
// behind it.
void OpenCalls::Settle(const std::vector<McuJob>& jobs, const JobNames& names) {
    if (jobs.empty() || m_Recent.empty()) return;
    const McuJob& last = jobs.back();
    auto settled = m_Recent.begin();
    while (settled != m_Recent.end() &&
           (*settled < last.m_EndTime || *settled <= last.m_StartTime)) {
        m_Settled[JobAt(*settled, jobs, names)].push_back(*settled);
        ++settled;
    }
    m_Recent.erase(m_Recent.begin(), settled);
}

bool OpenCalls::Take(const std::vector<McuJob>& jobs, const JobNames& names,
                     const JobName* running, std::uint64_t& start) {
    Settle(jobs, names);
    std::vector<std::uint64_t>* calls = &m_Recent;
    if (m_Recent.empty()) {
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
