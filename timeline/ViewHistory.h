#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>

namespace vesk {

// What a view shows of a log: where it begins, and how large.
struct ShownSpan {
    std::uint64_t m_TimeOffset = 0;
    float m_ZoomRatio = 1.0f;
    friend bool operator==(const ShownSpan&, const ShownSpan&) = default;
};

// What changed the span. Jumps count one by one; movements of one kind that follow each other
// count as one.
enum class SpanChange : std::uint8_t { kJump, kScrollBar, kWheel, kWheelZoom, kDrag, kPanKeys };

// The spans that a view showed before, to walk back through and forth again.
class ViewHistory {
public:
    static constexpr std::size_t kCapacity = 100;

    // The view went from one span to another. Equal ones are no change.
    void Note(const ShownSpan& before, const ShownSpan& after, SpanChange);
    // The movement under way has ended: the next one counts by itself.
    void EndMovement() { m_Last.reset(); }

    // The span to show instead of the current one; nothing if there is none on that side.
    std::optional<ShownSpan> Back(const ShownSpan& current);
    std::optional<ShownSpan> Forward(const ShownSpan& current);
    bool CanGoBack() const { return !m_Back.empty(); }
    bool CanGoForward() const { return !m_Forward.empty(); }

    void Clear();

private:
    using Spans = std::deque<ShownSpan>;
    std::optional<ShownSpan> Walk(Spans& from, Spans& to, const ShownSpan& current);

    Spans m_Back;  // the nearest one last, on both sides
    Spans m_Forward;
    std::optional<SpanChange> m_Last;
};

}  // namespace vesk
