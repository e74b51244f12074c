#include "log/HeaderReader.h"

#include <algorithm>
#include <cstring>

#include "log/ClockValues.h"
#include "log/HostValues.h"
#include "log/ItemType.h"
#include "log/LittleEndian.h"
#include "log/LogClock.h"
#include "log/McuJobList.h"
#include "log/StreamFile.h"
#include "platform/Text.h"

namespace vesk {

namespace {

constexpr std::uint32_t kItemBytes = 16;
constexpr std::uint32_t kRatioBytes = 12;
constexpr std::size_t kNameBytes = 8;
constexpr int kUnseenMinimum = 99999999;

// What a record may carry. No target comes near; a file that claims more is damaged, and its
// tables would take far more memory than the file.
constexpr std::uint32_t kMostItemBytes = std::uint32_t{1} << 20;
constexpr std::uint32_t kMostExtraBytes = std::uint32_t{2} << 20;
constexpr std::uint32_t kMostPluginValues = std::uint32_t{1} << 16;
constexpr std::uint32_t kMostItems = std::uint32_t{1} << 16;

std::uint32_t Bits(std::uint32_t word, int first) {
    return word >> first & 0xF;
}

CString TextOf(const void* bytes) {
    const char* text = static_cast<const char*>(bytes);
    return std::string(text, std::find(text, text + kNameBytes, '\0'));
}

}  // namespace

bool HeaderReader::Read() {
    m_Info.m_FrameBased = 1;
    if (!ReadSizes() || !ReadFormatWord() || !ReadFirstFrame() || !ReadJobSize() || !ReadItems())
        return false;
    if (m_Info.m_IsKaldo) {
        if (!CheckKaldoOffsets()) return false;
    } else {
        m_Info.m_JobSize += m_Info.m_ExtraSize;
    }
    RefuseItemsOutside();
    if (!ReadInitBlock()) return false;
    NameValues();
    if (!m_Names.empty()) m_Error += "Get some unmatched init data!";
    return true;
}

bool HeaderReader::ReadSizes() {
    constexpr std::uint32_t kFixed = 16;
    std::uint32_t total = 0;
    std::uint32_t fixed = 0;
    return ReadWord32(m_Stream, total) && ReadWord32(m_Stream, fixed) &&
           ReadWord32(m_Stream, m_ItemBytes) && ReadWord32(m_Stream, m_InitBytes) &&
           total == kFixed + fixed + m_ItemBytes + m_InitBytes && ReadWord32(m_Stream, m_Format);
}

bool HeaderReader::ReadFormatWord() {
    constexpr std::uint32_t kKaldo = 1U << 28;
    m_Info.m_IsKaldo = (m_Format & kKaldo) != 0;
    m_List.m_IsKaldo = m_Info.m_IsKaldo;
    const std::uint32_t counters = Bits(m_Format, 0);
    if (!m_Info.m_IsKaldo && counters == 1) {
        m_Info.m_IsTQCNT = true;
        m_List.m_IsTQCNT = true;
    } else if (m_Info.m_IsKaldo || counters == 2) {
        if (!ReadClock()) return false;
    } else {
        return false;
    }
    const std::uint32_t onReturn = Bits(m_Format, 4);
    if (onReturn == 2) m_Info.m_ReturnToTask = true;
    return onReturn <= 2;
}

bool HeaderReader::ReadClock() {
    m_Info.m_IsTQCNT = false;
    m_Info.m_FrameBased = 0;
    m_List.m_IsTQCNT = false;
    return FindClock(m_List, m_Info.m_Wrap, m_Info.m_Ratio, m_Error);
}

bool HeaderReader::ReadFirstFrame() {
    if (Bits(m_Format, 8) != 1 || m_Info.m_IsKaldo) return true;
    m_Info.m_HasFrameNo = false;
    return ReadWord32(m_Stream, m_Info.m_FirstFrameNo) &&
           ReadWord32(m_Stream, m_Info.m_FrameBaseCount) &&
           FindCountsPerFrame(m_List, m_Info.m_TimeStampRatio, m_Error);
}

bool HeaderReader::ReadJobSize() {
    constexpr std::uint32_t kVersion1JobSize = 12;
    if (!ReadWord32(m_Stream, m_Info.m_JobSize)) return false;
    return m_Version != 1 || m_Info.m_JobSize == kVersion1JobSize;
}

// A size that is no multiple of an item never comes down to 0: the items then run into the end of
// the file, and the header is refused.
bool HeaderReader::ReadItems() {
    std::uint32_t runningOffset = 0;
    for (std::uint32_t items = 0; m_ItemBytes != 0; m_ItemBytes -= kItemBytes)
        if (++items > kMostItems || !ReadItem(runningOffset)) return false;
    return true;
}

bool HeaderReader::ReadItem(std::uint32_t& runningOffset) {
    std::uint8_t bytes[kItemBytes];
    if (!ReadBytes(m_Stream, bytes, sizeof bytes)) return false;
    vesk_header_item item{Word32At(bytes), Word32At(bytes + 4), {}};
    std::copy_n(bytes + 8, sizeof item.value, item.value);
    if (item.size > kMostItemBytes) return false;
    if (m_Info.m_IsKaldo) m_Items.push_back(item);
    switch (item.type) {
        case kTaskOverheadItem:
        case kFunctionOverheadItem:
            ReadOverhead(item);
            break;
        case kFrameNoField:
            m_Info.m_KaldoFrameOffset = static_cast<std::uint16_t>(runningOffset);
            m_Info.m_HasKaldoFrameNo = true;
            break;
        case kContextIdField:
            m_Info.m_ContextIdOffset = static_cast<std::uint16_t>(runningOffset);
            m_HasContextId = true;
            break;
        case kMicrosecondField:
            m_Info.m_KaldoCountOffset = static_cast<std::uint16_t>(runningOffset);
            m_HasMicroseconds = true;
            break;
        default:
            if (!IsKaldoField(item.type)) AddItem(item, runningOffset);
    }
    runningOffset += item.size;
    return runningOffset <= kMostExtraBytes && m_Info.m_ExtraSize <= kMostExtraBytes;
}

void HeaderReader::ReadOverhead(const vesk_header_item& item) {
    std::uint32_t sum = 0;
    for (int i = 3; i >= 0; --i)
        sum = sum * 256 + static_cast<std::uint32_t>(static_cast<std::int8_t>(item.value[i]));
    auto overhead = static_cast<std::int32_t>(sum);
    if (!m_Info.m_IsTQCNT)
        overhead =
            static_cast<std::int32_t>(LowWordOf(overhead / static_cast<double>(m_Info.m_Ratio)));
    (item.type == kTaskOverheadItem ? m_List.m_TaskOverhead : m_List.m_FunctionOverhead) = overhead;
}

void HeaderReader::AddItem(const vesk_header_item& item, std::uint32_t offset) {
    ExtraParsingInfo info;
    info.m_Type = static_cast<std::int32_t>(item.type);
    info.m_Size = item.size;
    info.m_Offset = offset;
    if (item.type == kExtraInfoItem) {
        info.m_InfoNum = item.size / 4;
        info.m_Valid = true;
    } else if (item.type == kTwoRatiosItem) {
        info.m_Size = kRatioBytes;
        info.m_InfoNum = 2;
        info.m_Valid = true;
    } else if (IsPluginItem(item.type)) {
        info.m_Valid = LoadPlugin(info, item);
    }
    m_Info.m_ExtraSize += info.m_Size;
    m_List.m_ParsingInfos.push_back(info);
}

bool HeaderReader::LoadPlugin(ExtraParsingInfo& info, const vesk_header_item& item) {
    constexpr std::int32_t kLevelOfAllPlugins = 4;
    const bool needsLevel = item.type == 0x10007 || item.type == 0x10008;
    if (needsLevel && CurrentHostValues().m_FeatureLevel < kLevelOfAllPlugins) return false;
    return m_List.InitParsingDllFunc(info, TextOf(item.value));
}

bool HeaderReader::CheckKaldoOffsets() {
    if (!m_HasContextId || !m_HasMicroseconds) {
        m_Error += "Failed to Kaldo information from header. (context id, frame no and time stamp)";
        return false;
    }
    for (const std::uint16_t offset :
         {m_Info.m_ContextIdOffset, m_Info.m_KaldoFrameOffset, m_Info.m_KaldoCountOffset}) {
        if (offset + 4U <= m_Info.m_JobSize) continue;
        m_Error += FormatText(
            "Failed to get Kaldo offset info. \ncontext id offset: %d, timestamp offset: %d, "
            "micro second offset: %d, job size: %d.",
            m_Info.m_ContextIdOffset, m_Info.m_KaldoFrameOffset, m_Info.m_KaldoCountOffset,
            static_cast<int>(m_Info.m_JobSize));
        return false;
    }
    return true;
}

void HeaderReader::RefuseItemsOutside() {
    const std::uint32_t room = m_Info.m_IsKaldo ? m_Info.m_JobSize : m_Info.m_ExtraSize;
    for (ExtraParsingInfo& info : m_List.m_ParsingInfos)
        if (std::uint64_t{info.m_Offset} + info.m_Size > room) info.m_Valid = false;
}

// As with the items, entries that overrun the block's size make the count pass zero, and the
// reading goes on until the data end.
bool HeaderReader::ReadInitBlock() {
    const std::int64_t start = TellPosition(m_Stream);
    const std::int64_t fileEnd = EndPosition(m_Stream);
    if (!SeekTo(m_Stream, start)) return false;
    while (m_InitBytes > 0) {
        std::uint32_t tag = 0;
        std::uint32_t length = 0;
        if (!ReadWord32(m_Stream, tag) || !ReadWord32(m_Stream, length)) return false;
        if (fileEnd - TellPosition(m_Stream) < std::int64_t{length}) return false;
        std::vector<std::uint8_t> data(length);
        if (!ReadBytes(m_Stream, data.data(), length)) return false;
        m_InitBytes -= 8 + length;
        if (!UseInitData(tag, data)) break;
    }
    return true;
}

// False: the block makes no sense from here on; the header is good without the rest.
bool HeaderReader::UseInitData(std::uint32_t tag, const std::vector<std::uint8_t>& data) {
    auto& infos = m_List.m_ParsingInfos;
    const auto info = std::find_if(infos.begin(), infos.end(), [&](const ExtraParsingInfo& each) {
        return static_cast<std::uint32_t>(each.m_Type) == tag;
    });
    if (info == infos.end() || !info->m_Valid) return true;
    if (IsPluginItem(tag)) {
        info->m_Valid = info->m_InitConfig(static_cast<std::uint32_t>(data.size()), data.data());
        return true;
    }
    if (data.size() % kNameBytes != 0) return false;
    std::vector<CString> names;
    for (std::size_t i = 0; i < data.size(); i += kNameBytes) names.push_back(TextOf(&data[i]));
    m_Names.emplace(tag, std::move(names));
    return true;
}

void HeaderReader::NameValues() {
    int extraInfos = 0;
    int ratios = 0;
    for (ExtraParsingInfo& info : m_List.m_ParsingInfos) {
        if (!info.m_Valid) continue;
        if (info.m_Type == kExtraInfoItem)
            NameValues(info, "ExtraInfo[%d]", extraInfos, 0, kUnseenMinimum);
        else if (info.m_Type == kTwoRatiosItem)
            NameValues(info, "TwoRatios[%d]", ratios, 100, 0);
        else
            NamePluginValues(info);
    }
}

void HeaderReader::NameValues(const ExtraParsingInfo& info, const char* defaultName, int& counter,
                              int maximum, int minimum) {
    auto& names = m_List.m_ExtraNames;
    const std::size_t count = names.size() + info.m_InfoNum;
    names.reserve(count);
    const auto given = m_Names.find(static_cast<std::uint32_t>(info.m_Type));
    if (given != m_Names.end() && given->second.size() == info.m_InfoNum) {
        names.insert(names.end(), given->second.begin(), given->second.end());
        m_Names.erase(given);
    } else {
        const std::string prefix(defaultName, std::strchr(defaultName, '%'));
        for (std::uint32_t i = 0; i < info.m_InfoNum; ++i)
            names.emplace_back(prefix + std::to_string(counter + static_cast<int>(i)) + "]");
    }
    counter += static_cast<int>(info.m_InfoNum);
    m_List.m_ExtraMax.resize(count, maximum);
    m_List.m_ExtraMin.resize(count, minimum);
}

void HeaderReader::NamePluginValues(ExtraParsingInfo& info) {
    const vesk_value_table* table = info.m_GetInfoNum();
    if (!table || table->count > kMostPluginValues || (table->count > 0 && !table->values)) {
        info.m_Valid = false;
        return;
    }
    info.m_InfoNum = table->count;
    for (std::uint32_t i = 0; i < table->count; ++i) {
        const vesk_value& value = table->values[i];
        m_List.m_ExtraNames.push_back(TextOf(value.name));
        m_List.m_ExtraMin.push_back(value.minimum);
        m_List.m_ExtraMax.push_back(value.maximum);
    }
    if (info.m_ParsingHeaderKaldo)
        info.m_ParsingHeaderKaldo(m_Items.data(), static_cast<std::uint32_t>(m_Items.size()));
}

}  // namespace vesk
