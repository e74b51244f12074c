#pragma once

#include <utility>

namespace vesk {

// Collects ascending pixel columns, and draws those side by side at once: what one draws leaves no
// gap to the next.
template <class DrawAll>
class NeighbourColumns {
public:
    // drawAll(first, last) draws columns first to last, both included. Columns that are not to be
    // joined are drawn one by one.
    NeighbourColumns(bool areJoined, DrawAll drawAll)
        : m_AreJoined(areJoined), m_DrawAll(std::move(drawAll)) {}

    // The column shows when it is flushed, or when the next one does not follow closely.
    void Add(int x) {
        if (m_IsOpen && x == m_Last) return;
        if (m_IsOpen && (!m_AreJoined || x != m_Last + 1)) Flush();
        if (!m_IsOpen) m_First = x;
        m_Last = x;
        m_IsOpen = true;
    }
    void Flush() {
        if (m_IsOpen) m_DrawAll(m_First, m_Last);
        m_IsOpen = false;
    }

private:
    const bool m_AreJoined;
    DrawAll m_DrawAll;
    int m_First = 0;
    int m_Last = 0;
    bool m_IsOpen = false;
};

}  // namespace vesk
