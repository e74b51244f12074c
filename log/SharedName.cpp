#include "log/SharedName.h"

#include <algorithm>

namespace vesk {

SharedName::SharedName(std::string text) : m_Text(std::move(text)), m_Length(m_Text.size()) {
    std::copy_n(m_Text.data(), std::min(m_Length, McuJob::kShortName), m_Padded.begin());
}

McuJob& SharedName::AppendLong(std::vector<McuJob>& jobs, std::uint64_t start,
                               std::uint64_t end) const {
    return jobs.emplace_back(m_Text, start, end);
}

}  // namespace vesk
