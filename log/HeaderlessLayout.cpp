#include "log/HeaderlessLayout.h"

#include "log/ClockValues.h"
#include "log/HostValues.h"
#include "log/McuJobList.h"
#include "log/PlainFramer.h"

namespace vesk {

namespace {

constexpr std::int64_t kMostExtraBytes = std::int64_t{2} << 20;

// Extra values on both sides of the frame number.
struct ExtraCounts {
    std::int64_t m_Before = 0;
    std::int64_t m_After = 0;
};

ExtraCounts CountExtras(const DataFormat& format, const DataField& first, const DataField* frame) {
    const std::int64_t size = format.Size;
    if (!frame) return {0, (size - first.Offset) / 4};
    return {(std::int64_t{frame->Offset} - first.Offset) / 4,
            (size - frame->Size - frame->Offset) / 4};
}

bool CheckExtras(const ExtraCounts& counts, std::string& error) {
    if (counts.m_Before < 0 || counts.m_After < 0) {
        error += "\"SA_LoggingNode_T\" gives a negative number of extra values.";
        return false;
    }
    if (4 * (counts.m_Before + counts.m_After) > kMostExtraBytes) {
        error += "\"SA_LoggingNode_T\" gives too many extra values.";
        return false;
    }
    return true;
}

bool UseMicroseconds(McuJobList& list, const DataFormat& format, HeaderInfo& info,
                     std::string& error) {
    if (!format.GetField("USCNT")) {
        error += "Failed to get \"USCNT\" field from database.";
        return false;
    }
    list.m_IsTQCNT = false;
    info.m_IsTQCNT = false;
    info.m_FrameBased = 0;
    return FindClock(list, info.m_Wrap, info.m_Ratio, error);
}

}  // namespace

bool LayOutHeaderless(McuJobList& list, DecoderSetup& setup, std::string& error) {
    HeaderInfo& info = setup.m_Info;
    info.m_FrameBased = 1;
    info.m_IsTQCNT = true;
    info.m_HasFrameNo = false;
    info.m_TimeStampRatio = 0;
    setup.m_Form = LogForm::kHeaderless;

    ExtraCounts counts;
    const DataFormat* format =
        list.m_GetDataFormat ? list.m_GetDataFormat("SA_LoggingNode_T") : nullptr;
    if (!format) {
        info.m_HasFrameNo = true;
    } else {
        const bool inMicroseconds = CurrentHostValues().m_Capability.LogsMicroseconds();
        if (inMicroseconds && !UseMicroseconds(list, *format, info, error)) return false;
        // Id and count come first; in the short form the count is two fields.
        const DataField* first = format->GetFieldAt(inMicroseconds ? 2 : 3);
        const DataField* frame = format->GetField("frameNo");
        if (first) {
            info.m_HasFrameNo = frame != nullptr;
            counts = CountExtras(*format, *first, frame);
        }
    }
    if (!CheckExtras(counts, error)) return false;

    constexpr std::uint32_t kPlainBytes = 12;
    setup.m_ExtraValues = static_cast<int>(counts.m_Before + counts.m_After);
    setup.m_ExtraBefore = static_cast<std::uint32_t>(4 * counts.m_Before);
    info.m_ExtraSize = 4 * static_cast<std::uint32_t>(setup.m_ExtraValues);
    info.m_JobSize = kPlainBytes + info.m_ExtraSize - (info.m_HasFrameNo ? 0 : 4);
    info.m_FrameNoOffset = 8 + setup.m_ExtraBefore;
    setup.m_PreviousBytes = info.m_ExtraSize;
    setup.m_Extra = PlainFramer::ExtraOf(info, setup.m_ExtraBefore);
    return true;
}

}  // namespace vesk
