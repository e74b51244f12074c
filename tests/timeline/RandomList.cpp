#include "tests/timeline/RandomList.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "host/VESK_DLL_Shared_Data_T.h"
#include "timeline/CMcuView.h"

namespace vesk {

namespace {

// Makes records one after the other, with the habits of one log.
class ListMaker {
public:
    ListMaker(McuJobList& list, std::uint64_t seed, int jobs)
        : m_List(list), m_Dice(seed), m_Count(jobs) {
        m_Longest = m_Dice.Of({1u, 3u, 20u, 1000u, 100000u});
        m_OddPercent = m_Dice.Chance(60) ? 0 : m_Dice.Of({1, 5, 40});
    }

    void Make() {
        m_List.Clear();
        MakeJobs();
        MakeSegments();
        MakeCalls();
        MakeMarks();
        MakeEvents();
        MakeSamples();
        HideSome(m_List.m_CustomShown);
        HideSome(m_List.m_SourceMarkShown);
    }

private:
    bool Odd() { return m_Dice.Chance(m_OddPercent); }
    std::uint64_t Length() {
        if (m_Dice.Chance(5)) return 0;
        return m_Dice.Below(m_Dice.OnceIn(50) ? 20 * m_Longest : m_Longest) + 1;
    }

    // Between first and last time of all jobs, and a little beyond.
    std::uint64_t SomeTime() {
        const std::uint64_t span = m_List.m_EndTime + m_Longest;
        return span < UINT32_MAX ? m_Dice.Below(static_cast<std::uint32_t>(span) + 1)
                                 : m_Dice.Next() % span;
    }

    std::vector<std::string> Names(const std::string& kind, int most) {
        std::vector<std::string> names;
        const int count = m_Dice.Between(1, most);
        for (int i = 0; i < count; ++i) names.push_back(kind + std::to_string(i));
        if (m_Dice.OnceIn(3)) names.push_back("Long_" + kind + "_name_0");
        if (m_Dice.OnceIn(6)) names.push_back("");
        return names;
    }
    const std::string& OneOf(const std::vector<std::string>& names) {
        return names[m_Dice.Below(static_cast<std::uint32_t>(names.size()))];
    }

    // A record that starts at `time`, and moves it behind itself.
    McuJob Record(const std::string& name, std::uint64_t& time) {
        if (m_Dice.Chance(30)) time += Length();
        const std::uint64_t length = Length();
        McuJob record(name, time, time + length);
        if (m_Dice.Chance(8)) record.m_EndTime = 0;
        if (Odd()) record.m_EndTime = time + 10 * Length();
        if (Odd()) record.m_EndTime = m_Dice.Below(static_cast<std::uint32_t>(time % 1000) + 1);
        if (!m_Dice.Chance(3)) time += length;
        return record;
    }

    void MakeJobs() {
        std::vector<std::string> names = Names("Task", m_Dice.OnceIn(8) ? 300 : 9);
        for (const char* name : {"IDLE", "IRQ3", "IRQ0x1a", "IRQ_X"}) names.push_back(name);
        std::uint64_t time = m_Dice.OnceIn(3) ? 0 : m_Dice.Below(1000);
        int frame = m_Dice.Between(0, 5000);
        const std::uint32_t perFrame = m_Dice.Of({1u, 4u, 30u, 1000u});
        for (int i = 0; i < m_Count; ++i) {
            McuJob job = Record(OneOf(names), time);
            if (m_Dice.OnceIn(perFrame)) frame += m_Dice.OnceIn(10) ? -1 : 1;
            job.m_TimeStamp = frame;
            job.m_TimeCount = static_cast<std::uint32_t>(job.m_StartTime / 3);
            m_List.Insert(job);
        }
        m_List.m_EndTime = time;
        if (m_Dice.OnceIn(8)) m_List.m_EndTime -= m_Dice.Next() % (time + 1);
    }

    void MakeSegments() {
        const std::vector<std::string> names = Names("Function", 6);
        std::uint64_t time = 0;
        for (int i = 0; i < m_Count; ++i) {
            McuJob segment = Record(OneOf(names), time);
            segment.m_Flags = static_cast<std::uint8_t>(m_Dice.Below(8));
            m_List.InsertCustomJob(segment, m_List.m_EndTime);
        }
    }

    // Every function of the segments has its calls, in ascending start.
    void MakeCalls() {
        for (const auto& [name, total] : m_List.m_CustomNames) {
            std::uint64_t time = 0;
            const int count = m_Dice.Between(0, m_Count / 4);
            for (int i = 0; i < count; ++i) {
                McuJob call = Record(name, time);
                call.m_Flags = static_cast<std::uint8_t>(m_Dice.Below(8));
                m_List.InsertCustomJobCS(call);
            }
        }
    }

    void MakeMarks() {
        const std::vector<std::string> names = Names("Mark", 4);
        std::vector<std::uint64_t> times(m_Dice.Below(static_cast<std::uint32_t>(m_Count)));
        for (std::uint64_t& time : times) time = SomeTime();
        std::sort(times.begin(), times.end());
        for (const std::uint64_t time : times) m_List.InsertSourceMark({OneOf(names), time, time});
    }

    // In the order of their ends.
    void MakeEvents() {
        for (const std::string& name : Names("HW", 4)) {
            std::vector<McuJob> events;
            std::uint64_t time = 0;
            const int count = m_Dice.Between(1, m_Count);
            for (int i = 0; i < count; ++i) events.push_back(Record(name, time));
            if (m_Dice.OnceIn(4)) {
                std::stable_sort(events.begin(), events.end(), [](const auto& a, const auto& b) {
                    return a.m_EndTime < b.m_EndTime;
                });
            }
            for (const McuJob& event : events) m_List.InsertHWJob(event);
        }
    }

    void MakeSamples() {
        const int count = m_Dice.Chance(80) ? m_Dice.Between(1, 4) : 0;
        for (int j = 0; j < count; ++j) m_List.m_ExtraNames.push_back("value");
        m_List.m_ExtraInfoNum = count;
        m_List.m_ExtraMax.assign(static_cast<std::size_t>(count), 0);
        m_List.m_ExtraMin.assign(static_cast<std::size_t>(count), -1);
        std::vector<std::uint32_t> spans;
        for (int j = 0; j < count; ++j)
            spans.push_back(m_Dice.Of({1u, 2u, 9u, 5000u, 4000000000u}));
        std::vector<int> values(static_cast<std::size_t>(count));
        std::uint64_t time = m_Dice.Below(m_Longest);
        for (int i = 0; count > 0 && i < m_Count; ++i) {
            for (std::size_t j = 0; j < values.size(); ++j) Step(values[j], spans[j]);
            std::string name = "Task0";
            m_List.InsertExtraInfo(values, time, name);
            time += Length();
        }
    }
    void Step(int& value, std::uint32_t span) {
        if (m_Dice.Chance(40)) value = static_cast<int>(m_Dice.Below(span));
        if (m_Dice.Chance(30)) ++value;
    }

    void HideSome(std::vector<bool>& shown) {
        if (m_Dice.Chance(60)) return;
        for (auto flag : shown) flag = m_Dice.Chance(60);
    }

    McuJobList& m_List;
    Dice m_Dice;
    int m_Count;
    std::uint32_t m_Longest;  // of most records
    int m_OddPercent;         // records that no reader would leave
};

}  // namespace

void FillRandomList(McuJobList& list, std::uint64_t seed, int jobs) {
    ListMaker(list, seed, jobs).Make();
}

void LookSomewhere(CMcuView& view, Dice& dice) {
    const McuJobList& list = *vesk_dll_shared_data.m_pJobList;
    const std::uint64_t end = std::max<std::uint64_t>(list.m_EndTime, 1);
    // From all of the log several times over down to a few QBit.
    const double whole = view.m_CanvasWidth / (static_cast<double>(end) * view.m_BaseScale);
    const double ratio = std::ldexp(dice.Chance(50) ? whole : 1.0, dice.Between(-3, 12));
    view.m_ZoomRatio = static_cast<float>(std::min(ratio, 128.0));
    view.m_PixelsPerQbit = view.m_BaseScale * view.m_ZoomRatio;
    const float visible = static_cast<float>(view.m_CanvasWidth) / view.m_PixelsPerQbit;
    view.m_VisibleQbits = static_cast<std::uint64_t>(std::floor(visible));
    view.m_TimeOffset = dice.OnceIn(4) ? 0 : dice.Next() % end;
    view.m_CursorTime = dice.Next() % (end + 10);
    view.Cal_HScrollPos();
}

}  // namespace vesk
