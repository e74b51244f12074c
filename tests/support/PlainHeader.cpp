#include "tests/support/PlainHeader.h"

#include <cmath>

#include "platform/Text.h"

namespace vesk {

namespace {

constexpr std::uint32_t kExtraInfo = 0x103;
constexpr std::uint32_t kTwoRatios = 0x104;
constexpr std::uint32_t kTaskOverhead = 0x105;
constexpr std::uint32_t kFunctionOverhead = 0x106;
constexpr std::uint32_t kLargestItem = 1U << 20;
constexpr std::uint32_t kLargestExtraData = 2U << 20;
constexpr const char* kNoRate = "Failed to get wrap or rate value from database.";

bool IsPlugIn(std::uint32_t type) {
    return type >= 0x10006 && type <= 0x1000F;
}
bool IsPacketField(std::uint32_t type) {
    return type >= 0x10000001 && type <= 0x1000000D;
}

std::string NameFrom(const char* text) {
    return std::string(text, strnlen(text, 8));
}

}  // namespace

bool PlainHeader::Fail(const std::string& text) {
    m_Log.error += text;
    return false;
}

bool PlainHeader::Read(PlainFile& file, std::int32_t version) {
    return Parse(file, version) || Fail("Failed to parse VESK header.");
}

bool PlainHeader::Parse(PlainFile& file, std::int32_t version) {
    m_Info.m_FrameBased = 1;
    std::uint32_t totalSize = 0, fixedSize = 0, itemBytes = 0, initBytes = 0;
    if (!file.Field(totalSize) || !file.Field(fixedSize)) return false;
    if (!file.Field(itemBytes) || !file.Field(initBytes)) return false;
    if (totalSize != 16 + fixedSize + itemBytes + initBytes) return false;
    if (!ReadFormatWord(file)) return false;
    if (!file.Field(m_Info.m_JobSize)) return false;
    if (version == 1 && m_Info.m_JobSize != 12) return false;
    if (!ReadItems(file, itemBytes)) return false;
    if (!m_Info.m_IsKaldo) m_Info.m_JobSize += m_Info.m_ExtraSize;
    if (m_Info.m_IsKaldo && !CheckPacketFields()) return false;
    MarkItemsOutsideTheRecord();
    if (!ReadInitBlock(file, initBytes)) return false;
    NameValues();
    if (!m_Names.empty()) m_Log.error += "Get some unmatched init data!";
    return true;
}

bool PlainHeader::ReadFormatWord(PlainFile& file) {
    std::uint32_t format = 0;
    if (!file.Field(format)) return false;
    m_Log.isKaldo = m_Info.m_IsKaldo = (format >> 28 & 1) == 1;
    const std::uint32_t form = format & 0xF;
    if (!m_Info.m_IsKaldo && form == 1) {
        m_Info.m_IsTQCNT = m_Log.isTQCNT = true;
    } else if (m_Info.m_IsKaldo || form == 2) {
        if (!ReadClock()) return false;
    } else {
        return false;
    }
    const std::uint32_t returnMode = format >> 4 & 0xF;
    if (returnMode > 2) return false;
    m_Info.m_ReturnToTask = returnMode == 2;
    if ((format >> 8 & 0xF) == 1 && !m_Info.m_IsKaldo) return ReadComputedFrames(file);
    return true;
}

EnumContent* PlainHeader::Clock() {
    EnumContent* clock = m_Database.FindEnum("Trawler_VESK_Clock");
    if (!clock) m_Log.error += "Failed to get \"Trawler_VESK_Clock\" structure from database.";
    return clock;
}

// What both forms of a log with microsecond counts do: no frames in time, the clock's values.
bool PlainHeader::ReadClock() {
    m_Info.m_IsTQCNT = m_Log.isTQCNT = false;
    m_Info.m_FrameBased = 0;
    EnumContent* clock = Clock();
    if (!clock) return false;
    int wrap = 0, originRate = 0, rate = 0;
    if (!clock->GetValue("VESK_Clock_Wrap", wrap)) return Fail(kNoRate);
    if (!clock->GetValue("VESK_Clock_Origin_Rate", originRate)) return Fail(kNoRate);
    if (!clock->GetValue("VESK_Clock_Rate", rate)) return Fail(kNoRate);
    m_Info.m_Wrap = static_cast<std::uint32_t>(wrap);
    m_Info.m_Ratio = static_cast<float>(rate) / static_cast<float>(originRate);
    return (std::isfinite(m_Info.m_Ratio) && m_Info.m_Ratio > 0) || Fail(kNoRate);
}

bool PlainHeader::ReadComputedFrames(PlainFile& file) {
    m_Info.m_HasFrameNo = false;
    if (!file.Field(m_Info.m_FirstFrameNo) || !file.Field(m_Info.m_FrameBaseCount)) return false;
    EnumContent* clock = Clock();
    int ratio = 0;
    if (!clock) return false;
    if (!clock->GetValue("VESK_TimeStamp_Ratio", ratio)) return Fail(kNoRate);
    m_Info.m_TimeStampRatio = static_cast<std::uint32_t>(ratio);
    return true;
}

bool PlainHeader::ReadItems(PlainFile& file, std::uint32_t itemBytes) {
    for (; itemBytes != 0; itemBytes -= 16) {
        std::uint32_t type = 0, size = 0;
        char value[8];
        if (!file.Field(type) || !file.Field(size) || !file.Bytes(value, sizeof value))
            return false;
        if (!TakeItem(type, size, value)) return false;
    }
    return true;
}

bool PlainHeader::TakeItem(std::uint32_t type, std::uint32_t size, const char* value) {
    if (size > kLargestItem) return false;
    if (type == kTaskOverhead)
        m_Log.taskOverhead = Overhead(value);
    else if (type == kFunctionOverhead)
        m_Log.functionOverhead = Overhead(value);
    else if (IsPacketField(type))
        TakePacketField(type);
    else
        AddItem(type, size, value);
    m_Offset += size;
    return m_Info.m_ExtraSize <= kLargestExtraData;
}

void PlainHeader::TakePacketField(std::uint32_t type) {
    const auto offset = static_cast<std::uint16_t>(m_Offset);
    if (type == 0x10000001) {
        m_Info.m_KaldoFrameOffset = offset;
        m_Info.m_HasKaldoFrameNo = true;
    } else if (type == 0x10000003) {
        m_Info.m_ContextIdOffset = offset;
        m_HasContextId = true;
    } else if (type == 0x1000000D) {
        m_Info.m_KaldoCountOffset = offset;
        m_HasCount = true;
    }
}

void PlainHeader::AddItem(std::uint32_t type, std::uint32_t size, const char* value) {
    PlainItem item{type, size, 0, m_Offset, true};
    if (type == kExtraInfo) {
        item.infoNum = size / 4;
    } else if (type == kTwoRatios) {
        item.size = 12;
        item.infoNum = 2;
    } else {
        item.valid = false;
    }
    const bool rests = m_Options.featureLevel < 4 && (type == 0x10007 || type == 0x10008);
    if (IsPlugIn(type) && !rests && m_Options.featureLevel != 0)
        m_Log.messages.push_back("DLL doesn't exist. (" + NameFrom(value) + ")");
    m_Info.m_ExtraSize += item.size;
    m_Items.push_back(item);
}

std::int32_t PlainHeader::Overhead(const char* value) const {
    std::uint32_t sum = 0;
    for (int i = 3; i >= 0; --i) {
        const auto c = static_cast<std::int32_t>(static_cast<signed char>(value[i]));
        sum = sum * 256 + static_cast<std::uint32_t>(c);
    }
    const auto overhead = static_cast<std::int32_t>(sum);
    if (m_Info.m_IsTQCNT) return overhead;
    const double quotient = overhead / static_cast<double>(m_Info.m_Ratio);
    return static_cast<std::int32_t>(static_cast<std::int64_t>(quotient));
}

bool PlainHeader::CheckPacketFields() {
    if (!m_HasContextId || !m_HasCount)
        return Fail(
            "Failed to Kaldo information from header. (context id, frame no and time stamp)");
    const std::uint64_t size = m_Info.m_JobSize;
    if (m_Info.m_ContextIdOffset + 4ULL <= size && m_Info.m_KaldoFrameOffset + 4ULL <= size &&
        m_Info.m_KaldoCountOffset + 4ULL <= size)
        return true;
    return Fail(FormatText(
        "Failed to get Kaldo offset info. \ncontext id offset: %d, timestamp offset: %d, micro "
        "second offset: %d, job size: %d.",
        m_Info.m_ContextIdOffset, m_Info.m_KaldoFrameOffset, m_Info.m_KaldoCountOffset,
        static_cast<int>(m_Info.m_JobSize)));
}

void PlainHeader::MarkItemsOutsideTheRecord() {
    const std::uint32_t held = m_Info.m_IsKaldo ? m_Info.m_JobSize : m_Info.m_ExtraSize;
    for (PlainItem& item : m_Items)
        if (std::uint64_t{item.offset} + item.size > held) item.valid = false;
}

bool PlainHeader::ReadInitBlock(PlainFile& file, std::uint32_t initBytes) {
    while (initBytes > 0) {
        std::uint32_t tag = 0, length = 0;
        if (!file.Field(tag) || !file.Field(length)) return false;
        if (length > file.Size() - file.Position()) return false;
        std::vector<char> data(length);
        if (!file.Bytes(data.data(), length)) return false;
        initBytes -= 8 + length;
        if (!TakeInitData(tag, data)) return true;
    }
    return true;
}

// False ends the init block, the rest of it unread.
bool PlainHeader::TakeInitData(std::uint32_t tag, const std::vector<char>& data) {
    const PlainItem* item = nullptr;
    for (const PlainItem& candidate : m_Items)
        if (!item && candidate.type == tag) item = &candidate;
    if (!item || !item->valid) return true;
    if (data.size() % 8 != 0) return false;
    std::vector<std::string> names;
    for (std::size_t i = 0; i < data.size(); i += 8) names.push_back(NameFrom(&data[i]));
    m_Names.emplace(tag, names);
    return true;
}

void PlainHeader::NameValues() {
    int extraCounter = 0, ratioCounter = 0;
    for (const PlainItem& item : m_Items) {
        if (item.valid && item.type == kExtraInfo) NameValues(item, "ExtraInfo", extraCounter);
        if (item.valid && item.type == kTwoRatios) NameValues(item, "TwoRatios", ratioCounter);
    }
}

void PlainHeader::NameValues(const PlainItem& item, const std::string& kind, int& counter) {
    const auto names = m_Names.find(item.type);
    const bool named = names != m_Names.end() && names->second.size() == item.infoNum;
    for (std::uint32_t i = 0; i < item.infoNum; ++i, ++counter) {
        const std::string numbered = kind + "[" + std::to_string(counter) + "]";
        m_Log.extraNames.push_back(named ? names->second[i] : numbered);
        m_Log.extraMax.push_back(item.type == kTwoRatios ? 100 : 0);
        m_Log.extraMin.push_back(item.type == kTwoRatios ? 0 : 99999999);
    }
    if (named) m_Names.erase(names);
}

bool PlainHeader::LayOutHeaderless() {
    m_Info.m_IsTQCNT = true;
    m_Info.m_FrameBased = 1;
    m_Info.m_HasFrameNo = false;
    m_Info.m_TimeStampRatio = 0;
    std::int32_t before = 0, after = 0;
    const DataFormat* format = m_Database.FindFormat("SA_LoggingNode_T");
    if (!format) {
        m_Info.m_HasFrameNo = true;
    } else if (m_Options.capability.LogsMicroseconds()) {
        if (!format->GetField("USCNT")) return Fail("Failed to get \"USCNT\" field from database.");
        if (!ReadClock()) return false;
        if (!LayOutExtraValues(*format, 2, before, after)) return false;
    } else if (!LayOutExtraValues(*format, 3, before, after)) {
        return false;
    }
    m_Log.extraInfoNum = before + after;
    for (std::int32_t i = 0; i < m_Log.extraInfoNum; ++i) {
        m_Log.extraNames.push_back("ExtraInfo[" + std::to_string(i) + "]");
        m_Log.extraMax.push_back(0);
        m_Log.extraMin.push_back(99999999);
    }
    m_Info.m_ExtraSize = 4 * static_cast<std::uint32_t>(before + after);
    m_Info.m_JobSize = 12 + m_Info.m_ExtraSize - (m_Info.m_HasFrameNo ? 0 : 4);
    m_Info.m_FrameNoOffset = 8 + 4 * static_cast<std::uint32_t>(before);
    m_Items = {{kExtraInfo, m_Info.m_ExtraSize, m_Info.m_ExtraSize / 4, 0, true}};
    return true;
}

bool PlainHeader::LayOutExtraValues(const DataFormat& format, int firstExtraIndex,
                                    std::int32_t& before, std::int32_t& after) {
    const DataField* first = format.GetFieldAt(firstExtraIndex);
    const DataField* frameNo = format.GetField("frameNo");
    if (!first) return true;
    if (!frameNo) {
        before = (format.Size - first->Offset) / 4;
    } else {
        before = (frameNo->Offset - first->Offset) / 4;
        after = (format.Size - frameNo->Size - frameNo->Offset) / 4;
        m_Info.m_HasFrameNo = true;
    }
    if (before >= 0 && after >= 0) return true;
    return Fail("\"SA_LoggingNode_T\" gives a negative number of extra values.");
}

}  // namespace vesk
