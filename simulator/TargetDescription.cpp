#include "simulator/TargetDescription.h"

#include <string_view>

namespace vesk {

namespace {

constexpr std::size_t kLogsMicroseconds = 10;  // capability byte

class StructureBuilder {
public:
    void Add(const std::string& name, std::int32_t size) {
        m_Structure.m_Fields.push_back({name, m_Structure.Size, size});
        m_Structure.Size += size;
    }

    void AddValues(std::uint32_t number) {
        for (std::uint32_t i = 0; i < number; ++i) Add("value" + std::to_string(m_Values++), 4);
    }

    DataFormat m_Structure;

private:
    int m_Values = 0;
};

DataFormat LoggingNode(const LogFormat& format) {
    StructureBuilder node;
    node.Add("contextID", 4);
    if (format.m_IsTqcnt) {
        node.Add("TQCNT", 2);
        node.Add("TQWrap", 2);
    } else {
        node.Add("USCNT", 4);
    }
    node.AddValues(format.m_ValuesBeforeFrameNo);
    if (format.m_HasFrameNo) node.Add("frameNo", 4);
    node.AddValues(format.m_ValuesBehindFrameNo);
    return node.m_Structure;
}

EnumContent Clock(const LogFormat& format) {
    EnumContent clock;
    clock.Add("VESK_Clock_Wrap", static_cast<std::int32_t>(format.m_Wrap));
    clock.Add("VESK_Clock_Origin_Rate", static_cast<std::int32_t>(format.m_OriginRate));
    clock.Add("VESK_Clock_Rate", static_cast<std::int32_t>(format.m_Rate));
    clock.Add("VESK_TimeStamp_Ratio", static_cast<std::int32_t>(format.m_CountsPerFrame));
    return clock;
}

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') quoted += '\\';
        quoted += c;
    }
    return quoted + '"';
}

// Writes the entries of a JSON object or array, one per line.
template <class Entries, class Write>
void WriteEach(const Entries& entries, std::ostream& out, const char* indent, Write write) {
    const char* separator = "\n";
    for (const auto& entry : entries) {
        out << separator << indent;
        write(entry);
        separator = ",\n";
    }
}

void WriteCapability(const TargetCapability& capability, std::ostream& out) {
    constexpr std::string_view digits = "0123456789abcdef";
    for (const std::uint8_t byte : capability.m_Bytes)
        out << digits[byte >> 4] << digits[byte & 15];
}

void WriteStructure(const DataFormat& structure, std::ostream& out) {
    out << "{\"size\": " << structure.Size << ", \"fields\": [";
    WriteEach(structure.m_Fields, out, "   ", [&](const DataField& field) {
        out << "{\"name\": " << Quoted(field.m_Name) << ", \"offset\": " << field.Offset
            << ", \"size\": " << field.Size << "}";
    });
    out << "]}";
}

void WriteEnum(const EnumContent& content, std::ostream& out) {
    out << "[";
    WriteEach(content.Entries(), out, "   ", [&](const auto& entry) {
        out << "[" << Quoted(entry.first) << ", " << entry.second << "]";
    });
    out << "]";
}

}  // namespace

TargetDatabase DescribeTarget(const LogFormat& format) {
    TargetDatabase database;
    const bool usesClock = !format.m_IsTqcnt || !format.m_HasFrameNo || format.m_IsPackets;
    database.m_Capability.m_Bytes[kLogsMicroseconds] = !format.m_IsTqcnt || format.m_IsPackets;
    if (!format.HasHeader()) database.m_Formats["SA_LoggingNode_T"] = LoggingNode(format);
    if (usesClock) database.m_Enums["Trawler_VESK_Clock"] = Clock(format);
    return database;
}

void WriteTargetDescription(const TargetDatabase& database, std::ostream& out) {
    out << "{\n \"capability\": \"";
    WriteCapability(database.m_Capability, out);
    out << "\",\n \"structures\": {";
    WriteEach(database.m_Formats, out, "  ", [&](const auto& named) {
        out << Quoted(named.first) << ": ";
        WriteStructure(named.second, out);
    });
    out << "},\n \"enums\": {";
    WriteEach(database.m_Enums, out, "  ", [&](const auto& named) {
        out << Quoted(named.first) << ": ";
        WriteEnum(named.second, out);
    });
    out << "}\n}\n";
}

}  // namespace vesk
