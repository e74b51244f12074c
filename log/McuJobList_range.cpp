#include "log/McuJobList.h"
#include "log/SplitScanner.h"
#include "log/StreamFile.h"

bool McuJobList::GetSplitFileInfo(const std::string& path, std::FILE* stream, HeaderInfo& info,
                                  std::int64_t& start, std::int64_t& end, std::int64_t whcpLength,
                                  std::string& error) {
    constexpr std::int64_t kPrefixBytes = 512;
    start = vesk::TellPosition(stream);
    end = vesk::EndPosition(stream);
    vesk::SeekTo(stream, start);
    const std::int64_t bytes = end - start;
    const auto sizeKB = static_cast<std::int32_t>(bytes / 1024 + (bytes % 1024 > 0 ? 1 : 0));
    if (whcpLength > kPrefixBytes) vesk::CarryBackFrameOrigin(stream, info, whcpLength);
    if (m_RangeChooser) {
        const vesk::RangeChoice choice = m_RangeChooser->Choose(
            {path, stream, info, sizeKB, start, end, m_SplitUnit.Str(), m_SplitChoice, whcpLength});
        if (!choice.m_Accepted) {
            m_Report.m_Outcome = vesk::ReadOutcome::kCancelled;
            return false;
        }
        m_SplitUnit = choice.m_UnitText;
        m_SplitChoice = choice.m_SplitMode;
        if (choice.m_HasInterval) {
            start = choice.m_Interval.m_StartPos;
            end = choice.m_Interval.m_EndPos;
            info.m_FirstFrameNo = choice.m_Interval.m_FirstFrameNo;
            info.m_FrameBaseCount = choice.m_Interval.m_BaseCount;
        }
    }
    if (end >= start) return true;
    error += "Failed to find correct range of parsing unit";
    return false;
}

void McuJobList::WriteKaldoPrefixHeader(std::FILE* stream) const {
    if (!stream) return;
    constexpr std::size_t kEmptyBytes = 1024;
    const std::uint8_t version[4] = {3, 0, 0, 0};
    const std::uint8_t empty[kEmptyBytes] = {};
    std::fwrite("VESKBINV", 1, 8, stream);
    std::fwrite(version, 1, sizeof version, stream);
    std::fwrite(empty, 1, sizeof empty, stream);
}
