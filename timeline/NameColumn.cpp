#include "timeline/NameColumn.h"

#include <algorithm>
#include <cstring>

#include "log/HashSeed.h"

namespace vesk {

namespace {

std::uint64_t Load(const char* text, std::size_t length) {
    std::uint64_t word = 0;
    std::memcpy(&word, text, length);
    return word;
}

// First and last bytes of a text. Fixed lengths, because copying a varying number is slow.
void LoadEnds(std::string_view text, std::uint64_t& head, std::uint64_t& tail) {
    const std::size_t length = text.size();
    if (length >= 8) {
        head = Load(text.data(), 8);
        tail = Load(text.data() + length - 8, 8);
    } else if (length >= 4) {
        head = Load(text.data(), 4);
        tail = Load(text.data() + length - 4, 4);
    } else {
        head = length > 0 ? Load(text.data(), length) : 0;
        tail = 0;
    }
}

}  // namespace

void NameColumn::Reserve(std::size_t records) {
    if (m_Planes.empty()) m_Planes.emplace_back();
    m_Planes[0].reserve(records);
}

void NameColumn::Add(std::string_view name) {
    const int number = NumberOf(name);
    for (std::size_t i = 0; i < m_Planes.size(); ++i)
        m_Planes[i].push_back(static_cast<std::uint8_t>(number >> 8 * i));
    ++m_Count;
}

int NameColumn::NumberOf(std::string_view name) {
    static const std::uint64_t multiplier = HashMultiplier();
    std::uint64_t head = 0;
    std::uint64_t tail = 0;
    LoadEnds(name, head, tail);
    Recent& recent = m_Recent[((head ^ tail * 3) * multiplier) >> 54];
    const bool isKnown =
        recent.m_Length == name.size() && recent.m_Head == head && recent.m_Tail == tail &&
        recent.m_Name >= 0 &&
        (name.size() <= 16 || m_Texts[static_cast<std::size_t>(recent.m_Name)] == name);
    if (!isKnown) recent = {head, tail, name.size(), Intern(name)};
    return recent.m_Name;
}

int NameColumn::Intern(std::string_view name) {
    const auto [entry, isNew] = m_Numbers.try_emplace(std::string(name), Names());
    if (isNew) m_Texts.emplace_back(name);
    while (m_Planes.empty() || (entry->second >> 8 * m_Planes.size()) > 0)
        m_Planes.emplace_back(m_Count, std::uint8_t{0});
    return entry->second;
}

int NameColumn::Find(const std::string& name) const {
    const auto found = m_Numbers.find(name);
    return found == m_Numbers.end() ? -1 : found->second;
}

// Many names make sets large; their blocks grow with them, so that all sets together stay small.
void NameColumn::Finish() {
    m_Words = (m_Texts.size() + 63) / 64 + (m_Texts.empty() ? 1 : 0);
    m_Block = 64 * m_Words;
    std::size_t below = (m_Count + m_Block - 1) / m_Block;
    m_Levels.assign(1, std::vector<std::uint64_t>(below * m_Words));
    for (std::size_t i = 0; i < below; ++i)
        CollectRecords(i * m_Block, std::min(m_Count, (i + 1) * m_Block),
                       &m_Levels[0][i * m_Words]);
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
    return {static_cast<int>(m_Count), static_cast<int>(m_Block), static_cast<int>(kFanOut),
            static_cast<int>(m_Levels.size())};
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
