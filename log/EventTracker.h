#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "log/JobNames.h"
#include "log/LogCensus.h"
#include "log/RawRecord.h"

class McuJobList;

namespace vesk {

struct MarkName {
    explicit MarkName(const std::string& text) : m_Name(text) {}

    SharedName m_Name;
    int* m_Count = nullptr;  // in m_SourceMarkNames, once a mark was stored
};

struct HardwareName {
    explicit HardwareName(const std::string& text) : m_Name(text) {}

    SharedName m_Name;
    std::optional<McuJob> m_Open;             // the event in progress
    std::uint64_t m_Starts = 0;               // each start gives one event in the end
    std::vector<McuJob>* m_Events = nullptr;  // in m_HWJobs, once an event was stored
};

// Source marks, and hardware events from their starts and ends.
class EventTracker {
public:
    // Without a list everything is only counted. All borrowed.
    EventTracker(McuJobList* list, const LogCensus* census) : m_List(list), m_Census(census) {}

    MarkName* InternMark(const std::string& text);
    HardwareName* InternHardware(const std::string& text);

    void Mark(MarkName&, const RawRecord&, std::uint64_t now);

    // A start while the event is in progress ends it just before and begins it anew.
    void Start(HardwareName&, const RawRecord&, std::uint64_t now);
    // The end of an event that never started has no effect.
    void End(HardwareName&, std::uint64_t now);

    // The end of the log: events in progress are stored without an end.
    void Finish();

    void Count(LogCensus&) const;

private:
    void Store(HardwareName&);

    McuJobList* m_List;
    const LogCensus* m_Census;
    std::map<std::string, std::unique_ptr<MarkName>> m_MarkNames;
    std::map<std::string, std::unique_ptr<HardwareName>> m_HardwareNames;
    std::uint64_t m_Marks = 0;
};

}  // namespace vesk
