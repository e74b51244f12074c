#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// The words that open the records of a log and say what each record is about. Names are cut to
// what fits: 4 characters for a task, 3 for all else.
namespace vesk::record {

constexpr std::uint32_t kReturn = 0xAAAAAAAA;  // from the innermost interrupt
constexpr std::uint32_t kResume = 0xBBBBBBBB;  // the last task goes on

namespace detail {

// Characters from the lowest byte up, the rest zero.
constexpr std::uint32_t Packed(std::string_view text, std::size_t room) {
    std::uint32_t word = 0;
    for (std::size_t i = 0; i < text.size() && i < room; ++i)
        word |= std::uint32_t{static_cast<std::uint8_t>(text[i])} << (8 * i);
    return word;
}

constexpr std::uint32_t Marked(std::uint32_t mark, std::string_view name) {
    return mark | Packed(name, 3) << 8;
}

}  // namespace detail

// The name's first character must be below 0x80.
constexpr std::uint32_t Task(std::string_view name) {
    return detail::Packed(name, 4);
}

// Below 0x80 in its lowest byte, as interrupts and function records have other marks there.
constexpr std::uint32_t Irq(std::uint32_t number) {
    return 0xAAAA0000 | (number & 0xFFFF);
}

constexpr std::uint32_t Enter(std::string_view function) {
    return detail::Marked(0xE0, function);
}
constexpr std::uint32_t Leave(std::string_view function) {
    return detail::Marked(0xE1, function);
}
constexpr std::uint32_t Mark(std::string_view name) {
    return detail::Marked(0xE2, name);
}
constexpr std::uint32_t HwOn(std::string_view event) {
    return detail::Marked(0xE3, event);
}
constexpr std::uint32_t HwOff(std::string_view event) {
    return detail::Marked(0xE4, event);
}

}  // namespace vesk::record
