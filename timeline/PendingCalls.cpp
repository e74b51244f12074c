#include "timeline/PendingCalls.h"

#include "platform/TextOrder.h"

namespace vesk {

bool PendingCalls::FoldedLess::operator()(std::string_view a, std::string_view b) const {
    return CompareFolded(a, b) < 0;
}

void PendingCalls::Enter(std::string_view name, std::uint64_t start) {
    std::size_t& open = m_Open.try_emplace(name, kNone).first->second;
    if (open != kNone) return;
    open = m_Forgotten + m_Calls.size();
    m_Calls.push_back({name, start});
}

void PendingCalls::Leave(std::string_view name, std::uint64_t end) {
    const auto open = m_Open.find(name);
    if (open == m_Open.end() || open->second == kNone) return;
    Call& call = m_Calls[open->second - m_Forgotten];
    call.m_End = end;
    call.m_Closed = true;
    open->second = kNone;
}

// Dropped calls stay until they are the greater part, so that a drop costs the same on average.
void PendingCalls::DropFirst() {
    ++m_First;
    if (m_First <= m_Calls.size() / 2) return;
    m_Calls.erase(m_Calls.begin(), m_Calls.begin() + static_cast<std::ptrdiff_t>(m_First));
    m_Forgotten += m_First;
    m_First = 0;
}

}  // namespace vesk
