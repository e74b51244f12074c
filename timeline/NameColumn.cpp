#include "timeline/NameColumn.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>

#include "log/HashSeed.h"

namespace vesk {

namespace {

constexpr std::size_t kBatch = 64;

std::uint64_t Load4(const char* text) {
    std::uint32_t word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

}  // namespace

NameColumn::NameColumn()
    : m_Slots(kFirstSlots), m_Multiplier(HashMultiplier()), m_Shift(64 - 8), m_Planes(1) {}

void NameColumn::Reserve(std::size_t records) {
    m_Planes[0].reserve(records);
}

void NameColumn::Add(std::span<const McuJob> records) {
    std::array<std::uint32_t, kBatch> numbers;
    for (std::size_t i = 0; i < records.size(); i += kBatch) {
        const std::size_t count = std::min(kBatch, records.size() - i);
        for (std::size_t j = 0; j < count; ++j)
            numbers[j] = static_cast<std::uint32_t>(NumberOf(records[i + j].m_Name));
        Store({numbers.data(), count});
    }
}

void NameColumn::Store(std::span<const std::uint32_t> numbers) {
    const std::size_t stored = m_Planes[0].size();
    while (m_Texts.size() > std::size_t{1} << 8 * m_Planes.size())
        m_Planes.emplace_back(stored, std::uint8_t{0});
    std::array<std::uint8_t, kBatch> bytes;
    for (std::size_t plane = 0; plane < m_Planes.size(); ++plane) {
        for (std::size_t i = 0; i < numbers.size(); ++i)
            bytes[i] = static_cast<std::uint8_t>(numbers[i] >> 8 * plane);
        m_Planes[plane].insert(m_Planes[plane].end(), bytes.begin(),
                               bytes.begin() + static_cast<std::ptrdiff_t>(numbers.size()));
    }
}

// --- Numbers of names ----------------------------------------------------------------------------

// Four words cover any text of 4 to 16 characters, whatever its length: a branch on a length that
// differs from record to record costs more than all of this.
inline NameColumn::Key NameColumn::KeyOf(std::string_view name) {
    const std::size_t length = name.size();
    const char* const text = name.data();
    if (length < 4) {
        std::uint64_t head = 0;
        for (const char c : name) head = head << 8 | static_cast<std::uint8_t>(c);
        return {head, 0, length};
    }
    if (length > kKeyLength) return {Load4(text), std::hash<std::string_view>()(name), length};
    const std::size_t second = std::min<std::size_t>(length - 4, 4);
    return {Load4(text) | Load4(text + second) << 32,
            Load4(text + length - 4) | Load4(text + length - 4 - second) << 32, length};
}

// The slot that holds the name, or the free one where it belongs.
inline std::size_t NameColumn::SlotOf(const Key& key, std::string_view name) const {
    const std::size_t mask = m_Slots.size() - 1;
    std::size_t at = ((key.m_Head ^ key.m_Tail * 3) + key.m_Length) * m_Multiplier >> m_Shift;
    while (true) {
        const Slot& slot = m_Slots[at];
        if (slot.m_Name < 0) return at;
        if (slot.m_Key == key && (key.m_Length <= kKeyLength || Text(slot.m_Name) == name))
            return at;
        at = (at + 1) & mask;
    }
}

inline int NameColumn::NumberOf(std::string_view name) {
    const Key key = KeyOf(name);
    const std::size_t slot = SlotOf(key, name);
    const int number = m_Slots[slot].m_Name;
    return number >= 0 ? number : Intern(slot, key, name);
}

int NameColumn::Intern(std::size_t slot, const Key& key, std::string_view name) {
    const int number = Names();
    m_Texts.emplace_back(name);
    m_Slots[slot] = {key, number};
    if (m_Texts.size() * 4 > m_Slots.size()) GrowSlots();
    return number;
}

void NameColumn::GrowSlots() {
    std::vector<Slot> old(m_Slots.size() * 2);
    old.swap(m_Slots);
    --m_Shift;
    for (const Slot& slot : old)
        if (slot.m_Name >= 0) m_Slots[SlotOf(slot.m_Key, Text(slot.m_Name))] = slot;
}

int NameColumn::Find(std::string_view name) const {
    return m_Slots[SlotOf(KeyOf(name), name)].m_Name;
}

// --- Sets of names -------------------------------------------------------------------------------

// Many names make sets large; their blocks grow with them, so that all sets together stay small.
void NameColumn::Finish() {
    m_Words = (m_Texts.size() + 63) / 64 + (m_Texts.empty() ? 1 : 0);
    m_Block = 64 * m_Words;
    const std::size_t count = m_Planes[0].size();
    std::size_t below = (count + m_Block - 1) / m_Block;
    m_Levels.assign(1, std::vector<std::uint64_t>(below * m_Words));
    for (std::size_t i = 0; i < below; ++i)
        CollectRecords(i * m_Block, std::min(count, (i + 1) * m_Block), &m_Levels[0][i * m_Words]);
    while (below > kFanOut) {
        const std::size_t sets = (below + kFanOut - 1) / kFanOut;
        m_Levels.emplace_back(sets * m_Words);
        std::vector<std::uint64_t>& level = m_Levels.back();
        const std::vector<std::uint64_t>& lower = m_Levels[m_Levels.size() - 2];
        for (std::size_t i = 0; i < below * m_Words; ++i)
            level[i / m_Words / kFanOut * m_Words + i % m_Words] |= lower[i];
        below = sets;
    }
}

void NameColumn::Collect(int first, int last, std::uint64_t* set) const {
    if (first >= last) return;
    const auto from = static_cast<std::size_t>(first);
    const auto to = static_cast<std::size_t>(last);
    const std::size_t firstBlock = (from + m_Block - 1) / m_Block;
    const std::size_t lastBlock = to / m_Block;
    if (firstBlock >= lastBlock) {
        CollectRecords(from, to, set);
        return;
    }
    CollectRecords(from, firstBlock * m_Block, set);
    CollectBlocks(0, firstBlock, lastBlock, set);
    CollectRecords(lastBlock * m_Block, to, set);
}

void NameColumn::Prefetch(int first, int last) const {
    if (first >= last) return;
    const auto from = static_cast<std::size_t>(first);
    const auto to = static_cast<std::size_t>(last) - 1;
    for (const std::vector<std::uint8_t>& plane : m_Planes) {
        vesk::Prefetch(&plane[from]);
        vesk::Prefetch(&plane[to]);
    }
    vesk::Prefetch(&m_Levels[0][from / m_Block * m_Words]);
    vesk::Prefetch(&m_Levels[0][to / m_Block * m_Words]);
}

void NameColumn::CollectRecords(std::size_t first, std::size_t last, std::uint64_t* set) const {
    if (m_Planes.size() == 1 && m_Words == 1) {
        std::uint64_t word = 0;
        for (std::size_t i = first; i < last; ++i) word |= std::uint64_t{1} << m_Planes[0][i];
        *set |= word;
        return;
    }
    for (std::size_t i = first; i < last; ++i) {
        const int name = At(static_cast<int>(i));
        set[name / 64] |= std::uint64_t{1} << name % 64;
    }
}

// Sets [first, last) of a level; whole groups are taken from the level above.
void NameColumn::CollectBlocks(std::size_t level, std::size_t first, std::size_t last,
                               std::uint64_t* set) const {
    const auto add = [&](std::size_t from, std::size_t to) {
        for (std::size_t i = from * m_Words; i < to * m_Words; ++i)
            set[i % m_Words] |= m_Levels[level][i];
    };
    const std::size_t firstGroup = (first + kFanOut - 1) / kFanOut;
    const std::size_t lastGroup = last / kFanOut;
    if (level + 1 >= m_Levels.size() || firstGroup >= lastGroup) {
        add(first, last);
        return;
    }
    add(first, firstGroup * kFanOut);
    CollectBlocks(level + 1, firstGroup, lastGroup, set);
    add(lastGroup * kFanOut, last);
}

// --- Searching -----------------------------------------------------------------------------------

std::vector<std::uint64_t> NameColumn::SetOf(
    const std::function<bool(const std::string&)>& fits) const {
    std::vector<std::uint64_t> set(m_Words);
    for (std::size_t name = 0; name < m_Texts.size(); ++name)
        if (fits(m_Texts[name])) set[name / 64] |= std::uint64_t{1} << name % 64;
    return set;
}

Pyramid NameColumn::Shape() const {
    return {static_cast<int>(m_Planes[0].size()), static_cast<int>(m_Block),
            static_cast<int>(kFanOut), static_cast<int>(m_Levels.size()), true};
}

int NameColumn::FirstOf(const std::uint64_t* set, int first, int last) const {
    return FirstHit(
        Shape(), first, last, [&](int level, int group) { return Meets(set, level, group); },
        [&](int record) { return Has(set, record); });
}

int NameColumn::LastOf(const std::uint64_t* set, int first, int last) const {
    return LastHit(
        Shape(), first, last, [&](int level, int group) { return Meets(set, level, group); },
        [&](int record) { return Has(set, record); });
}

bool NameColumn::Has(const std::uint64_t* set, int record) const {
    const int name = At(record);
    return (set[name / 64] >> name % 64 & 1) != 0;
}

bool NameColumn::Meets(const std::uint64_t* set, int level, int group) const {
    const auto& sets = m_Levels[static_cast<std::size_t>(level)];
    const std::uint64_t* const names = &sets[static_cast<std::size_t>(group) * m_Words];
    for (std::size_t i = 0; i < m_Words; ++i)
        if ((names[i] & set[i]) != 0) return true;
    return false;
}

}  // namespace vesk
