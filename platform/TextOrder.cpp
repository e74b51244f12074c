#include "platform/TextOrder.h"

#include <algorithm>
#include <compare>

namespace {

unsigned char Fold(char c) {
    return static_cast<unsigned char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
}

}  // namespace

int vesk::CompareFolded(const CString& a, const CString& b) {
    const auto order = std::lexicographical_compare_three_way(
        a.Str().begin(), a.Str().end(), b.Str().begin(), b.Str().end(),
        [](char x, char y) { return Fold(x) <=> Fold(y); });
    return order < 0 ? -1 : order > 0;
}
