#pragma once

#include <string>
#include <string_view>

namespace vesk {

// Names in a log are bytes, taken as the first 256 characters of Unicode; everything outside of
// the log (arguments, paths, our texts) is UTF-8.

std::string Latin1ToUtf8(std::string_view bytes);

// Characters above U+00FF cannot be in a log: a text with one of them, or one that is no UTF-8,
// comes back as it is.
std::string Utf8ToLatin1(std::string_view text);

bool IsUtf8(std::string_view text);

// For a terminal: control characters appear as \xNN. A text that is no UTF-8 counts as bytes of a
// log.
std::string PrintableText(std::string_view text);

}  // namespace vesk
