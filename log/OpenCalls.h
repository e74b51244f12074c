#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "log/JobNames.h"

namespace vesk {

// The calls of one function that have begun and not ended. An exit closes the newest call that
// began in the job in progress, or in an earlier job of the same name. Calls are sorted by the
// job in which they began, each once, so that an exit finds its call without a walk, however many
// calls were left open.
class OpenCalls {
public:
    void Begin(std::uint64_t now) { m_Recent.push_back(now); }

    // Takes out the call that an exit closes while `running` holds the processor; false if there
    // is none. jobs are the jobs stored so far.
    bool Take(const std::vector<McuJob>& jobs, const JobNames& names, const JobName* running,
              std::uint64_t& start);

    // Takes out all calls; ascending start times.
    std::vector<std::uint64_t> TakeAll();

private:
    void Settle(const std::vector<McuJob>& jobs, const JobNames& names);

    std::vector<std::uint64_t> m_Recent;  // began in the job in progress, as far as is known
    // By the name of the stored job in which they began; those that began in none are under null
    // and stay open.
    std::unordered_map<const JobName*, std::vector<std::uint64_t>> m_Settled;
};

}  // namespace vesk
