#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "log/HeaderInfo.h"
#include "log/SplitInterval.h"

namespace vesk {

// A unit of a log as it is offered for choice: the range and the frame numbers that name it.
struct OfferedUnit {
    SplitInterval m_Interval;
    std::int32_t m_FirstFrame = 0;
    std::int32_t m_LastFrame = 0;
};

// What a choice of range is made from. The stream stands anywhere and may be left anywhere.
struct RangeRequest {
    const std::string& m_FileName;
    std::FILE* m_Stream;
    const HeaderInfo& m_Info;
    std::int32_t m_SizeKB;     // of the whole range, rounded up
    std::int64_t m_FileStart;  // the whole range, file positions
    std::int64_t m_FileEnd;
    std::string m_UnitText;         // unit size of the last choice, as the user typed it
    std::int32_t m_SplitMode;       // last choice: 0 the whole file, 1 a unit
    std::int64_t m_WHCPLength = 0;  // as the log's tag says, 0 without one
};

// The answer. A default interval means the whole range.
struct RangeChoice {
    bool m_Accepted = true;      // false: the read is given up, without a text
    bool m_HasInterval = false;  // m_Interval is to be read
    SplitInterval m_Interval;
    std::string m_UnitText;  // what the next request is to remember
    std::int32_t m_SplitMode = 0;
};

// Chooses the part of a file that a read covers. A read asks it once, after the header is known
// and before any record is decoded.
class RangeChooser {
public:
    virtual ~RangeChooser() = default;
    virtual RangeChoice Choose(const RangeRequest&) = 0;
};

// Chooses one unit by its number, from 0, of those that a unit size gives. A number past the last
// unit, or a unit size of 0 or less, gives the read up; m_Error then says why.
class UnitChooser : public RangeChooser {
public:
    UnitChooser(std::int32_t unitKB, std::int64_t number) : m_UnitKB(unitKB), m_Number(number) {}
    RangeChoice Choose(const RangeRequest&) override;

    std::string m_Error;

private:
    std::int32_t m_UnitKB;
    std::int64_t m_Number;
};

// Chooses the run of units that covers the frame numbers from first to last. No unit with such a
// frame gives the read up; m_Error then says so.
class FrameChooser : public RangeChooser {
public:
    FrameChooser(std::int32_t unitKB, std::int64_t first, std::int64_t last)
        : m_UnitKB(unitKB), m_First(first), m_Last(last) {}
    RangeChoice Choose(const RangeRequest&) override;

    std::string m_Error;

private:
    std::int32_t m_UnitKB;
    std::int64_t m_First;
    std::int64_t m_Last;
};

// Notes the units that a unit size gives, then gives the read up. For listing them.
class UnitLister : public RangeChooser {
public:
    explicit UnitLister(std::int32_t unitKB) : m_UnitKB(unitKB) {}
    RangeChoice Choose(const RangeRequest&) override;

    bool m_Asked = false;  // the read got as far as the choice
    std::vector<OfferedUnit> m_Units;
    std::string m_Error;

private:
    std::int32_t m_UnitKB;
};

}  // namespace vesk
