#include "timeline/TipText.h"

#include <charconv>
#include <concepts>
#include <limits>
#include <string_view>

#include "log/ExtraInfoRecord.h"
#include "log/McuJob.h"
#include "log/PDIInfo.h"

namespace vesk {

namespace {

constexpr const char* kLost = "%Lost";

// Times are written as signed numbers, so a span that ends before it starts is negative.
std::int64_t Signed(std::uint64_t value) {
    return static_cast<std::int64_t>(value);
}

void AppendPart(std::string& text, std::string_view part) {
    text += part;
}
void AppendPart(std::string& text, std::integral auto number) {
    char digits[std::numeric_limits<decltype(number)>::digits10 + 2];
    text.append(digits, std::to_chars(std::begin(digits), std::end(digits), number).ptr);
}

// Thousands of calls can lie under one pixel, so their text is put together without a format.
template <class... Parts>
void Append(std::string& text, const Parts&... parts) {
    (AppendPart(text, parts), ...);
}

void AppendCount(std::string& text, const McuJob& job, bool isTqcnt) {
    Append(text, isTqcnt ? "TQCNT = " : "USCNT = ", job.m_TimeCount);
}

}  // namespace

std::string JobTipText(const McuJob& job, bool isTqcnt, const PDIInfo* loss,
                       const ExtraInfoRecord* sample) {
    std::string text;
    Append(text, "Job  = ", job.m_Name, "\r\nStart = ", Signed(job.m_StartTime),
           " QBits\r\nEnd  = ", Signed(job.m_EndTime),
           " QBits\r\nDur  = ", Signed(job.m_EndTime - job.m_StartTime),
           " QBits\r\nTimeStamp = ", job.m_TimeStamp, "\r\n");
    AppendCount(text, job, isTqcnt);
    if (loss && job.m_Name == kLost)
        Append(text, "\r\nLast job   = ", loss->m_Name.empty() ? "N/A" : loss->m_Name);
    if (!sample) return text;
    int position = 0;
    for (const int value : sample->m_Values)
        Append(text, "\r\nInfo[", position++, "] = ", static_cast<unsigned>(value));
    return text;
}

void AppendCustomTip(std::string& text, const McuJob& job, std::uint64_t end, bool isTqcnt) {
    const bool isOpen = job.m_EndTime == 0;
    Append(text, "Func  = ", job.m_Name, "\r\nStart = ", Signed(job.m_StartTime),
           " QBits\r\nEnd  = ", Signed(job.m_EndTime));
    if (isOpen) Append(text, "(", Signed(end), ")");
    Append(text, " QBits\r\nDur  = ", Signed((isOpen ? end : job.m_EndTime) - job.m_StartTime),
           " QBits\r\nTimeStamp = ", job.m_TimeStamp, "\r\n");
    AppendCount(text, job, isTqcnt);
}

std::string SourceMarkTipText(const McuJob& mark, bool isTqcnt) {
    std::string text;
    Append(text, "Mark  = ", mark.m_Name, "\r\nTime = ", Signed(mark.m_StartTime),
           " QBits\r\nTimeStamp = ", mark.m_TimeStamp, "\r\n");
    AppendCount(text, mark, isTqcnt);
    return text;
}

}  // namespace vesk
