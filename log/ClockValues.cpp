#include "log/ClockValues.h"

#include <cmath>

#include "log/McuJobList.h"

namespace vesk {

namespace {

constexpr const char* kNoValue = "Failed to get wrap or rate value from database.";

bool FindValue(const EnumContent& clock, const char* name, int& value, std::string& error) {
    if (clock.GetValue(name, value)) return true;
    error += kNoValue;
    return false;
}

}  // namespace

EnumContent* FindClockEnum(const McuJobList& list, std::string& error) {
    EnumContent* clock =
        list.m_GetEnumContent ? list.m_GetEnumContent("Trawler_VESK_Clock") : nullptr;
    if (!clock) error += "Failed to get \"Trawler_VESK_Clock\" structure from database.";
    return clock;
}

bool FindClock(const McuJobList& list, std::uint32_t& wrap, float& ratio, std::string& error) {
    const EnumContent* clock = FindClockEnum(list, error);
    if (!clock) return false;
    int counts = 0;
    int originRate = 0;
    int rate = 0;
    if (!FindValue(*clock, "VESK_Clock_Wrap", counts, error) ||
        !FindValue(*clock, "VESK_Clock_Origin_Rate", originRate, error) ||
        !FindValue(*clock, "VESK_Clock_Rate", rate, error))
        return false;
    wrap = static_cast<std::uint32_t>(counts);
    ratio = static_cast<float>(rate) / static_cast<float>(originRate);
    if (std::isfinite(ratio) && ratio > 0.0F) return true;
    error += kNoValue;
    return false;
}

bool FindCountsPerFrame(const McuJobList& list, std::uint32_t& counts, std::string& error) {
    const EnumContent* clock = FindClockEnum(list, error);
    if (!clock) return false;
    int value = 0;
    if (!FindValue(*clock, "VESK_TimeStamp_Ratio", value, error)) return false;
    counts = static_cast<std::uint32_t>(value);
    return true;
}

}  // namespace vesk
