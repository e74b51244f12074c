#pragma once

#include <string>
#include <vector>

#include "tests/timeline/PaintTest.h"
#include "tests/timeline/PlainCustom.h"
#include "tests/timeline/RandomList.h"

// A view on a log with functions. A lane's base line is at 100: low is 95, high is 85, marks are
// around 90. A strip is 60 high and ends at 200.
class CustomTest : public PaintTest {
protected:
    static constexpr int kLane = 100;
    static constexpr int kStrip = 200;
    static constexpr int kHeight = 60;
    static constexpr COLORREF kColor = 0x804020;

    static void Segment(const char* name, std::uint64_t start, std::uint64_t end, int flags) {
        McuJob segment(name, start, end);
        segment.m_Flags = static_cast<std::uint8_t>(flags);
        Jobs().InsertCustomJob(segment, start);
        Paint(name);
    }
    static void Call(const char* name, std::uint64_t start, std::uint64_t end, int flags = 5) {
        McuJob call(name, start, end);
        call.m_Flags = static_cast<std::uint8_t>(flags);
        Jobs().InsertCustomJobCS(call);
        Paint(name);
    }
    static void Task(const char* name, std::uint64_t start, std::uint64_t end) {
        Jobs().Insert(name, start, end);
    }

    // A random log, with the colours that a document gives it.
    static void Fill(std::uint64_t seed, int jobs) {
        vesk::FillRandomList(Jobs(), seed, jobs);
        global_vesk_doc_ptr->InitVESKColor();
    }

    std::vector<std::string> Lane(const char* name) {
        return Lines([&](CDC* dc) { View().DrawCustomJob(dc, name, 80, kLane); });
    }
    std::vector<std::string> LaneCS(const char* name) {
        return Lines([&](CDC* dc) { DrawCS(dc, name, 0); });
    }
    // By the place of the function's calls among those of all.
    void DrawCS(CDC* dc, const std::string& name, std::size_t place) {
        View().DrawCustomJobCS(dc, name, 80, kLane, View().m_CustomCSFirst[place],
                               View().m_CustomCSLast[place]);
    }
    std::vector<std::string> Strip() {
        return Lines([&](CDC* dc) { View().DrawCustomJobList(dc, kHeight, 80, kStrip); });
    }
    std::vector<std::string> StripCS() {
        return Lines([&](CDC* dc) { View().DrawCustomJobListCS(dc, kHeight, 80, kStrip); });
    }

private:
    static void Paint(const char* name) {
        global_vesk_doc_ptr->m_CustomColor.m_Colors[vesk::ColorKey(name)] = kColor;
    }
};
