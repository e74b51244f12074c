#include "platform/Text.h"

#include <cstdarg>
#include <cstdio>

#include "platform/CString.h"

namespace {

std::string FormatList(const char* format, va_list arguments) {
    va_list copy;
    va_copy(copy, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    if (length <= 0) return {};
    std::string text(static_cast<std::size_t>(length), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

}  // namespace

std::string vesk::FormatText(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::string text = FormatList(format, arguments);
    va_end(arguments);
    return text;
}

std::string vesk::GroupedNumber(std::uint64_t number) {
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > 3;) text.insert(at -= 3, 1, ',');
    return text;
}

void CString::Format(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    m_Text = FormatList(format, arguments);
    va_end(arguments);
}
