#include "log/TimeText.h"

#include <charconv>
#include <cmath>

namespace vesk {

namespace {

// Whole parts of 13 QBit are whole microseconds; only the rest needs a division, so that no step
// leaves 64 bits.
struct Microseconds {
    explicit Microseconds(std::uint64_t qbits)
        : m_Whole(qbits / 13 * 12), m_Thirteenths(qbits % 13 * 12) {}

    std::uint64_t m_Whole;
    std::uint64_t m_Thirteenths;
};

std::optional<std::uint64_t> ParseQbits(std::string_view digits) {
    std::uint64_t qbits = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, qbits);
    if (error != std::errc() || stop != end) return {};
    return qbits;
}

}  // namespace

std::string MillisecondsText(std::uint64_t qbits) {
    const Microseconds time(qbits);
    const std::uint64_t us = time.m_Whole + (time.m_Thirteenths + 6) / 13;
    const std::string fraction = std::to_string(1000 + us % 1000);
    return std::to_string(us / 1000) + '.' + fraction.substr(1);
}

std::string MicrosecondsText(std::uint64_t qbits) {
    const Microseconds time(qbits);
    const std::uint64_t tenths = (time.m_Thirteenths * 10 + 6) / 13;
    return std::to_string(time.m_Whole + tenths / 10) + '.' + std::to_string(tenths % 10);
}

std::optional<std::uint64_t> ParseTime(std::string_view text) {
    const std::size_t unitAt = text.find_first_not_of("0123456789.");
    if (unitAt == std::string_view::npos) return ParseQbits(text);
    const std::string_view unit = text.substr(unitAt);
    const double us = unit == "us" ? 1 : unit == "ms" ? 1e3 : unit == "s" ? 1e6 : 0;
    double number = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + unitAt, number);
    if (us == 0 || error != std::errc() || stop != text.data() + unitAt) return {};
    const double qbits = std::round(number * us * 13 / 12);
    if (qbits >= 18446744073709551616.0) return {};
    return static_cast<std::uint64_t>(qbits);
}

}  // namespace vesk
