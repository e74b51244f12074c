#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "log/McuJob.h"

namespace vesk {

// A name that goes into many records. Copying it is the costliest part of storing a record, so a
// short text is copied in one piece of fixed length, without a call, and then cut.
class SharedName {
public:
    explicit SharedName(std::string text);

    const std::string& Text() const { return m_Text; }
    bool IsEmpty() const { return m_Text.empty(); }

    // Appends a record of this name, with no other field set.
    McuJob& AppendTo(std::vector<McuJob>& jobs, std::uint64_t start, std::uint64_t end) const {
        if (m_Length > McuJob::kShortName) [[unlikely]]
            return AppendLong(jobs, start, end);
        return AppendShort(jobs, start, end);
    }

private:
    // Flattened: the string's own constructor is otherwise a call, which would double the cost.
    [[gnu::flatten]] McuJob& AppendShort(std::vector<McuJob>& jobs, std::uint64_t start,
                                         std::uint64_t end) const {
        return jobs.emplace_back(m_Padded.data(), m_Length, start, end);
    }
    McuJob& AppendLong(std::vector<McuJob>& jobs, std::uint64_t start, std::uint64_t end) const;

    std::string m_Text;
    std::size_t m_Length;
    std::array<char, McuJob::kShortName + 1> m_Padded{};
};

}  // namespace vesk
