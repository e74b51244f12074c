#include "cli/TextEncoding.h"

#include <cstdint>

namespace vesk {

namespace {

constexpr std::uint32_t kInvalid = ~std::uint32_t{0};

// Takes one character off the front of the text.
std::uint32_t TakeCharacter(std::string_view& text) {
    const auto first = static_cast<std::uint8_t>(text.front());
    text.remove_prefix(1);
    if (first < 0x80) return first;
    const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    if (first < 0xC2 || first > 0xF4) return kInvalid;
    std::uint32_t character = first & (0x3Fu >> more);
    for (int i = 0; i < more; ++i) {
        if (text.empty() || (text.front() & 0xC0) != 0x80) return kInvalid;
        character = character << 6 | (text.front() & 0x3Fu);
        text.remove_prefix(1);
    }
    constexpr std::uint32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    return character < kSmallest[more] || surrogate || character > 0x10FFFF ? kInvalid : character;
}

bool IsControl(std::uint32_t character) {
    return character < 0x20 || (character >= 0x7F && character <= 0x9F);
}

}  // namespace

std::string Latin1ToUtf8(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<std::uint8_t>(c);
        if (byte >= 0x80) text += static_cast<char>(0xC0 | byte >> 6);
        text += byte >= 0x80 ? static_cast<char>(0x80 | (byte & 0x3F)) : c;
    }
    return text;
}

std::string Utf8ToLatin1(std::string_view text) {
    std::string bytes;
    for (std::string_view rest = text; !rest.empty();) {
        const std::uint32_t character = TakeCharacter(rest);
        if (character > 0xFF) return std::string(text);
        bytes += static_cast<char>(character);
    }
    return bytes;
}

bool IsUtf8(std::string_view text) {
    while (!text.empty())
        if (TakeCharacter(text) == kInvalid) return false;
    return true;
}

std::string PrintableText(std::string_view text) {
    const std::string converted = IsUtf8(text) ? std::string(text) : Latin1ToUtf8(text);
    std::string printable;
    for (std::string_view rest = converted; !rest.empty();) {
        const std::string_view before = rest;
        const std::uint32_t character = TakeCharacter(rest);
        if (IsControl(character)) {
            constexpr char kDigits[] = "0123456789abcdef";
            printable += {'\\', 'x', kDigits[character >> 4], kDigits[character & 15]};
        } else {
            printable += before.substr(0, before.size() - rest.size());
        }
    }
    return printable;
}

}  // namespace vesk
