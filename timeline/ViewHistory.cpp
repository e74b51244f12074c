#include "timeline/ViewHistory.h"

namespace vesk {

void ViewHistory::Note(const ShownSpan& before, const ShownSpan& after, SpanChange change) {
    if (before == after) return;
    const bool goesOn = change != SpanChange::kJump && m_Last == change;
    m_Last = change;
    m_Forward.clear();
    if (goesOn) return;
    m_Back.push_back(before);
    if (m_Back.size() > kCapacity) m_Back.pop_front();
}

std::optional<ShownSpan> ViewHistory::Back(const ShownSpan& current) {
    return Walk(m_Back, m_Forward, current);
}

std::optional<ShownSpan> ViewHistory::Forward(const ShownSpan& current) {
    return Walk(m_Forward, m_Back, current);
}

std::optional<ShownSpan> ViewHistory::Walk(Spans& from, Spans& to, const ShownSpan& current) {
    EndMovement();
    while (!from.empty() && from.back() == current) from.pop_back();
    if (from.empty()) return std::nullopt;
    to.push_back(current);
    const ShownSpan span = from.back();
    from.pop_back();
    return span;
}

void ViewHistory::Clear() {
    *this = ViewHistory();
}

}  // namespace vesk
