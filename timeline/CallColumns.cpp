#include "timeline/CallColumns.h"

namespace vesk {

namespace {

constexpr int kAhead = 8;  // columns

}  // namespace

void CallColumns::Show(CallOrder& order, const TimeScale& scale, int right) {
    if (m_Order == &order && m_Scale == scale && m_Right == right + 1) return;
    m_Order = &order;
    m_Scale = scale;
    m_Right = order.IsAscending() && right >= scale.m_Left ? right + 1 : INT32_MIN;
    m_Words = order.Words();
    m_Starts.clear();
    m_Present.clear();
    m_Reaching.clear();
    if (m_Right == INT32_MIN) return;
    const std::size_t count = static_cast<std::size_t>(m_Right - scale.m_Left);
    m_Starts.reserve(count);
    m_Present.resize(count * m_Words);
    m_Reaching.resize(count * m_Words);
    std::uint64_t start = scale.m_Offset;
    std::size_t first = order.FindOpen(start, start, m_Open);
    for (std::size_t i = 0; i < count; ++i) {
        m_Starts.push_back(start);
        order.AskFor(scale.TimeAt(scale.m_Left + static_cast<int>(i) + kAhead));
        const std::uint64_t next =
            scale.FirstTimeAt(scale.m_Left + static_cast<std::int64_t>(i) + 1);
        if (next == start) continue;
        const std::size_t last = order.FindOpen(next - 1, next, m_Open);
        order.Collect(first, last, &m_Present[i * m_Words]);
        for (const TimedCall* call : m_Open) {
            if (call->m_Start < start) continue;
            const auto bit = static_cast<std::size_t>(call->Function());
            m_Reaching[i * m_Words + bit / 64] |= std::uint64_t{1} << bit % 64;
        }
        // Rounding may give a pixel to what lies within one.
        if (scale.Length(next - 1 - start) > 0) AddToReaching(i);
        start = next;
        first = last;
    }
}

void CallColumns::AddToReaching(std::size_t column) {
    for (std::size_t i = column * m_Words; i < (column + 1) * m_Words; ++i)
        m_Reaching[i] |= m_Present[i];
}

}  // namespace vesk
