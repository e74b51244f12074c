#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

namespace vesk {

// Calls of functions, put together again from their segments and handed out in order of entry: a
// call waits until all that were entered before it have ended. Names are borrowed; the case of a
// to z makes no difference between them. Each step takes the same time however many calls wait.
class PendingCalls {
public:
    struct Call {
        std::string_view m_Name;
        std::uint64_t m_Start = 0;
        std::uint64_t m_End = 0;
        bool m_Closed = false;
    };

    // While a call of the name is open, this is a re-entry and adds nothing.
    void Enter(std::string_view name, std::uint64_t start);
    // Closes the open call of the name, if there is one.
    void Leave(std::string_view name, std::uint64_t end);

    bool IsEmpty() const { return m_First == m_Calls.size(); }
    // Of calls that wait; the first one was entered first.
    const Call& First() const { return m_Calls[m_First]; }
    void DropFirst();

private:
    static constexpr std::size_t kNone = SIZE_MAX;

    struct FoldedLess {
        bool operator()(std::string_view a, std::string_view b) const;
    };

    std::vector<Call> m_Calls;    // in front of those that wait, some that were dropped
    std::size_t m_First = 0;      // that waits
    std::size_t m_Forgotten = 0;  // calls that were once in front of all these
    // Number of the open call, counted from the first call ever, or kNone.
    std::map<std::string_view, std::size_t, FoldedLess> m_Open;
};

}  // namespace vesk
