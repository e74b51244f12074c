#include "log/EventTracker.h"

#include "log/McuJobList.h"
#include "log/Reserve.h"

namespace vesk {

MarkName* EventTracker::InternMark(const std::string& text) {
    auto& name = m_MarkNames[text];
    if (!name) name = std::make_unique<MarkName>(text);
    return name.get();
}

HardwareName* EventTracker::InternHardware(const std::string& text) {
    auto& name = m_HardwareNames[text];
    if (!name) name = std::make_unique<HardwareName>(text);
    return name.get();
}

void EventTracker::Mark(MarkName& name, const RawRecord& record, std::uint64_t now) {
    ++m_Marks;
    if (!m_List) return;
    McuJob& mark = name.m_Name.AppendTo(m_List->m_SourceMarks, now, now);
    mark.m_TimeStamp = record.m_Frame;
    mark.m_TimeCount = record.m_Count;
    if (!name.m_Count) name.m_Count = &m_List->m_SourceMarkNames[name.m_Name.Text()];
    ++*name.m_Count;
}

void EventTracker::Start(HardwareName& name, const RawRecord& record, std::uint64_t now) {
    ++name.m_Starts;
    if (!m_List) return;
    if (name.m_Open) {
        name.m_Open->m_EndTime = now - 1;
        Store(name);
    }
    name.m_Open.emplace(name.m_Name.Text(), now, 0);
    name.m_Open->m_TimeStamp = record.m_Frame;
    name.m_Open->m_TimeCount = record.m_Count;
}

void EventTracker::End(HardwareName& name, std::uint64_t now) {
    if (!name.m_Open) return;
    name.m_Open->m_EndTime = now;
    Store(name);
}

void EventTracker::Finish() {
    if (!m_List) return;
    for (auto& [text, name] : m_HardwareNames)
        if (name->m_Open) Store(*name);
}

void EventTracker::Count(LogCensus& census) const {
    census.m_SourceMarks = m_Marks;
    for (const auto& [text, name] : m_HardwareNames) census.m_HardwareEvents[text] = name->m_Starts;
}

void EventTracker::Store(HardwareName& name) {
    if (!name.m_Events) {
        name.m_Events = &m_List->m_HWJobs[name.m_Name.Text()];
        if (m_Census) Reserve(*name.m_Events, m_Census->m_HardwareEvents, name.m_Name.Text());
    }
    name.m_Events->push_back(std::move(*name.m_Open));
    name.m_Open.reset();
}

}  // namespace vesk
