#include "log/RangeChooser.h"

#include "log/SplitScanner.h"

namespace vesk {

namespace {

RangeChoice GiveUp() {
    RangeChoice choice;
    choice.m_Accepted = false;
    return choice;
}

RangeChoice Take(const SplitInterval& interval, std::int32_t unitKB) {
    RangeChoice choice;
    choice.m_HasInterval = true;
    choice.m_Interval = interval;
    choice.m_UnitText = std::to_string(unitKB);
    choice.m_SplitMode = 1;
    return choice;
}

std::vector<OfferedUnit> Scan(const RangeRequest& request, std::int32_t unitKB,
                              std::string& error) {
    if (unitKB <= 0) {
        error = "Invalid unit size";
        return {};
    }
    return ScanUnits(request, unitKB, error);
}

}  // namespace

RangeChoice UnitChooser::Choose(const RangeRequest& request) {
    const std::vector<OfferedUnit> units = Scan(request, m_UnitKB, m_Error);
    if (m_Number >= 0 && m_Number < static_cast<std::int64_t>(units.size()))
        return Take(units[static_cast<std::size_t>(m_Number)].m_Interval, m_UnitKB);
    if (m_Error.empty())
        m_Error = "There is no unit " + std::to_string(m_Number) + ": the log has " +
                  std::to_string(units.size()) + " units of " + std::to_string(m_UnitKB) + " KB";
    return GiveUp();
}

RangeChoice FrameChooser::Choose(const RangeRequest& request) {
    const std::vector<OfferedUnit> units = Scan(request, m_UnitKB, m_Error);
    const OfferedUnit* first = nullptr;
    const OfferedUnit* last = nullptr;
    for (const OfferedUnit& unit : units) {
        if (unit.m_LastFrame < m_First || unit.m_FirstFrame > m_Last) continue;
        if (!first) first = &unit;
        last = &unit;
    }
    if (first) {
        SplitInterval interval = first->m_Interval;
        interval.m_EndPos = last->m_Interval.m_EndPos;
        return Take(interval, m_UnitKB);
    }
    if (m_Error.empty())
        m_Error = "No unit holds a frame from " + std::to_string(m_First) + " to " +
                  std::to_string(m_Last);
    return GiveUp();
}

RangeChoice UnitLister::Choose(const RangeRequest& request) {
    m_Asked = true;
    m_Units = Scan(request, m_UnitKB, m_Error);
    return GiveUp();
}

}  // namespace vesk
