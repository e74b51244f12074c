#include "simulator/LogFormat.h"

namespace vesk {

namespace {

constexpr std::uint32_t kCounters = 0x103;
constexpr std::uint32_t kTwoRatios = 0x104;
constexpr std::uint32_t kTaskOverhead = 0x105;
constexpr std::uint32_t kFunctionOverhead = 0x106;

void AppendName(std::string& data, const std::string& name) {
    data += name.substr(0, 8);
    data.resize((data.size() + 7) / 8 * 8, '\0');
}

std::string LittleEndianText(std::uint32_t value) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift);
    return bytes;
}

// In a plain record, overheads take no room and ratios their three words, whatever size the header
// claims. In packets the sizes say where the fields lie.
std::uint32_t BytesInRecord(const HeaderItem& item, bool isPackets) {
    if (isPackets) return item.m_Size;
    if (item.m_Type == kTaskOverhead || item.m_Type == kFunctionOverhead) return 0;
    return item.m_Type == kTwoRatios ? 12 : item.m_Size;
}

}  // namespace

HeaderItem HeaderItem::Counters(const std::vector<std::string>& names) {
    HeaderItem item = UnnamedCounters(static_cast<std::uint32_t>(names.size()));
    item.m_InitData.emplace();
    for (const std::string& name : names) AppendName(*item.m_InitData, name);
    return item;
}

HeaderItem HeaderItem::UnnamedCounters(std::uint32_t number) {
    return {kCounters, 4 * number, {}};
}

HeaderItem HeaderItem::TwoRatios(const std::string& first, const std::string& second) {
    HeaderItem item{kTwoRatios, 12, {}, std::string()};
    AppendName(*item.m_InitData, first);
    AppendName(*item.m_InitData, second);
    return item;
}

HeaderItem HeaderItem::TaskOverhead(std::uint32_t counts) {
    return {kTaskOverhead, 0, LittleEndianText(counts)};
}

HeaderItem HeaderItem::FunctionOverhead(std::uint32_t counts) {
    return {kFunctionOverhead, 0, LittleEndianText(counts)};
}

HeaderItem HeaderItem::Plugin(std::uint32_t type, std::uint32_t size, const std::string& baseName,
                              std::optional<std::string> initData) {
    return {type, size, baseName, std::move(initData)};
}

void LogFormat::SetHeader(std::int32_t version) {
    m_Identifier = version == 1 ? "VESK_BIN" : version == 2 ? "VESKBIN2" : "VESKBINV";
    m_Version = version;
}

std::int32_t LogFormat::HeaderVersion() const {
    return m_Identifier == "VESKBIN2" ? 2 : WritesVersion() ? m_Version : 1;
}

std::uint32_t LogFormat::ExtraBytes() const {
    if (!HasHeader()) return 4 * (m_ValuesBeforeFrameNo + m_ValuesBehindFrameNo);
    std::uint32_t bytes = 0;
    for (const HeaderItem& item : m_Items) bytes += BytesInRecord(item, m_IsPackets);
    return bytes;
}

std::uint32_t LogFormat::RecordBytes() const {
    const std::uint32_t fields = m_IsPackets ? 12 : 8;
    return fields + (m_HasFrameNo ? 4 : 0) + ExtraBytes();
}

}  // namespace vesk
