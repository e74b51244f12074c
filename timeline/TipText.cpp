#include "timeline/TipText.h"

#include "log/ExtraInfoRecord.h"
#include "log/McuJob.h"
#include "log/PDIInfo.h"
#include "platform/Text.h"

namespace vesk {

namespace {

constexpr const char* kLost = "%Lost";

// Times are written as signed numbers, so a span that ends before it starts is negative.
long long Signed(std::uint64_t value) {
    return static_cast<long long>(value);
}

std::string CountText(const McuJob& job, bool isTqcnt) {
    return FormatText(isTqcnt ? "TQCNT = %u" : "USCNT = %u", job.m_TimeCount);
}

}  // namespace

std::string JobTipText(const McuJob& job, bool isTqcnt, const PDIInfo* loss,
                       const ExtraInfoRecord* sample) {
    std::string text = FormatText(
        "Job  = %s\r\nStart = %lld QBits\r\nEnd  = %lld QBits\r\nDur  = %lld QBits\r\n"
        "TimeStamp = %d\r\n",
        job.m_Name.c_str(), Signed(job.m_StartTime), Signed(job.m_EndTime),
        Signed(job.m_EndTime - job.m_StartTime), job.m_TimeStamp);
    text += CountText(job, isTqcnt);
    if (loss && job.m_Name == kLost)
        text += "\r\nLast job   = " + (loss->m_Name.empty() ? "N/A" : loss->m_Name);
    if (!sample) return text;
    int position = 0;
    for (const int value : sample->m_Values)
        text += FormatText("\r\nInfo[%d] = %u", position++, static_cast<unsigned>(value));
    return text;
}

std::string CustomTipText(const McuJob& job, std::uint64_t end, bool isTqcnt) {
    const bool isOpen = job.m_EndTime == 0;
    std::string text =
        FormatText("Func  = %s\r\nStart = %lld QBits\r\nEnd  = %lld", job.m_Name.c_str(),
                   Signed(job.m_StartTime), Signed(job.m_EndTime));
    if (isOpen) text += FormatText("(%lld)", Signed(end));
    const std::uint64_t duration = (isOpen ? end : job.m_EndTime) - job.m_StartTime;
    text += FormatText(" QBits\r\nDur  = %lld QBits\r\nTimeStamp = %d\r\n", Signed(duration),
                       job.m_TimeStamp);
    return text + CountText(job, isTqcnt);
}

std::string SourceMarkTipText(const McuJob& mark, bool isTqcnt) {
    return FormatText("Mark  = %s\r\nTime = %lld QBits\r\nTimeStamp = %d\r\n", mark.m_Name.c_str(),
                      Signed(mark.m_StartTime), mark.m_TimeStamp) +
           CountText(mark, isTqcnt);
}

}  // namespace vesk
