#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "log/McuJob.h"
#include "platform/Prefetch.h"
#include "timeline/Pyramid.h"

namespace vesk {

// The names of a sequence of records as small numbers, counted from 0 in order of first use, and
// which of them occur in any stretch of it. One byte a record up to 256 names, and about an
// eighth of one.
class NameColumn {
public:
    NameColumn();
    void Reserve(std::size_t records);
    void Add(std::span<const McuJob>);
    // After the last Add, before Collect.
    void Finish();

    int Names() const { return static_cast<int>(m_Texts.size()); }
    const std::string& Text(int name) const { return m_Texts[static_cast<std::size_t>(name)]; }
    // -1 for a name that does not occur.
    int Find(std::string_view name) const;
    int At(int record) const {
        int name = 0;
        for (std::size_t i = m_Planes.size(); i-- > 0;)
            name = name << 8 | m_Planes[i][static_cast<std::size_t>(record)];
        return name;
    }

    // Words that a set of names takes, one bit per name.
    std::size_t Words() const { return m_Words; }
    // Adds the names of records [first, last) to a set.
    void Collect(int first, int last, std::uint64_t* set) const;
    // Asks for the memory that At is going to read.
    void Prefetch(int record) const {
        for (const std::vector<std::uint8_t>& plane : m_Planes)
            vesk::Prefetch(&plane[static_cast<std::size_t>(record)]);
    }
    // The same for Collect.
    void Prefetch(int first, int last) const;

    // The set of the names that fit.
    std::vector<std::uint64_t> SetOf(const std::function<bool(const std::string&)>& fits) const;
    // The first of records [first, last) whose name is in the set, else last.
    int FirstOf(const std::uint64_t* set, int first, int last) const;
    // The last of them, else first - 1.
    int LastOf(const std::uint64_t* set, int first, int last) const;

private:
    // What tells names apart without a look at their texts: up to 16 characters, these are all of
    // it.
    struct Key {
        std::uint64_t m_Head;
        std::uint64_t m_Tail;
        std::size_t m_Length;
        friend bool operator==(const Key&, const Key&) = default;
    };
    struct Slot {
        Key m_Key{};
        int m_Name = -1;
    };
    static constexpr std::size_t kFanOut = 16;
    static constexpr std::size_t kKeyLength = 16;
    static constexpr std::size_t kFirstSlots = 256;

    static Key KeyOf(std::string_view);
    std::size_t SlotOf(const Key&, std::string_view) const;
    int NumberOf(std::string_view);
    int Intern(std::size_t slot, const Key&, std::string_view);
    void GrowSlots();
    void Store(std::span<const std::uint32_t> numbers);
    Pyramid Shape() const;
    bool Has(const std::uint64_t* set, int record) const;
    bool Meets(const std::uint64_t* set, int level, int group) const;
    void CollectRecords(std::size_t first, std::size_t last, std::uint64_t* set) const;
    void CollectBlocks(std::size_t level, std::size_t first, std::size_t last,
                       std::uint64_t* set) const;

    std::vector<std::string> m_Texts;
    std::vector<Slot> m_Slots;  // a flat table, at most a quarter full
    std::uint64_t m_Multiplier;
    int m_Shift;                                      // from a hash to a slot
    std::vector<std::vector<std::uint8_t>> m_Planes;  // the numbers' bytes, lowest first
    std::size_t m_Words = 1;
    std::size_t m_Block = 64;                          // records of one set at the lowest level
    std::vector<std::vector<std::uint64_t>> m_Levels;  // sets, each level of 16 of the one below
};

}  // namespace vesk
