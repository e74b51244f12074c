#include "platform/TextOrder.h"

#include <algorithm>
#include <compare>

namespace {

unsigned char Fold(char c) {
    return static_cast<unsigned char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
}

}  // namespace

int vesk::CompareFolded(std::string_view a, std::string_view b) {
    const auto order = std::lexicographical_compare_three_way(
        a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return Fold(x) <=> Fold(y); });
    return order < 0 ? -1 : order > 0;
}
