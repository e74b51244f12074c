#include "host/IrqName.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace vesk {

namespace {

constexpr std::string_view kPrefix = "IRQ";

char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace

bool IsIrqName(const std::string& name) {
    if (name.size() <= kPrefix.size()) return false;
    for (std::size_t i = 0; i < kPrefix.size(); ++i)
        if (Upper(name[i]) != kPrefix[i]) return false;
    return true;
}

std::optional<int> IrqNumber(const std::string& name) {
    if (!IsIrqName(name)) return {};
    const char* const digits = name.c_str() + kPrefix.size();
    char* end = nullptr;
    const unsigned long long number = std::strtoull(digits, &end, 16);
    if (end == digits) return {};
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(number));
}

}  // namespace vesk
