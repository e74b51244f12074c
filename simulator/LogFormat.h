#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vesk {

// One item of a log's header, with the data that the init block holds for it.
struct HeaderItem {
    std::uint32_t m_Type = 0;
    std::uint32_t m_Size = 0;                 // bytes in a record, as the header says
    std::string m_Value;                      // 8 bytes at most, filled up with zeros
    std::optional<std::string> m_InitData{};  // bytes; none: no entry in the init block

    // Counters of 32 bits with a name each, and a fixed number of counters without names.
    static HeaderItem Counters(const std::vector<std::string>& names);
    static HeaderItem UnnamedCounters(std::uint32_t number);

    // Three words in a record, which yield two percentages of the first.
    static HeaderItem TwoRatios(const std::string& first, const std::string& second);

    static HeaderItem TaskOverhead(std::uint32_t counts);
    static HeaderItem FunctionOverhead(std::uint32_t counts);

    // An item that the plug-in of that base name interprets.
    static HeaderItem Plugin(std::uint32_t type, std::uint32_t size, const std::string& baseName,
                             std::optional<std::string> initData = std::nullopt);
};

// What tells who runs when the last interrupt has returned: the four bits in the header.
enum class ReturnMode : std::uint32_t {
    kNobodyKnown = 0,  // until the next task record
    kLastTask = 2,
};

// How a log is laid out and timed: all that its writer and its target description need.
// Plain data; every combination can be written, those that a reader refuses included.
struct LogFormat {
    std::string m_Identifier;            // 8 bytes that open the file; empty: a headerless log
    std::int32_t m_Version = 1;          // stands in the file for "VESKBINV" only
    bool m_IsPackets = false;            // records travel in packets; needs an identifier
    bool m_IsTqcnt = true;               // 16-bit counts with a frame length; else 32-bit USCNT
    bool m_HasFrameNo = true;            // records carry a frame number; else it is computed
    std::uint32_t m_FirstFrameNo = 0;    // where the frame number is computed: that of the first
    std::uint32_t m_FrameBaseCount = 0;  // record, and the count that belongs to it
    ReturnMode m_ReturnMode = ReturnMode::kNobodyKnown;
    std::vector<HeaderItem> m_Items;           // logs with a header: in file order
    std::optional<std::int64_t> m_WhcpLength;  // a "WHCP" length behind the header

    // Headerless logs: extra values ahead of the frame number and behind it.
    std::uint32_t m_ValuesBeforeFrameNo = 0;
    std::uint32_t m_ValuesBehindFrameNo = 0;

    // The clock as the target's database describes it.
    std::uint32_t m_Wrap = 0x8000000;
    std::uint32_t m_OriginRate = 1083333;
    std::uint32_t m_Rate = 1000000;
    std::uint32_t m_CountsPerFrame = 4615;

    // Sets identifier and version: 1 and 2 as the identifiers "VESK_BIN" and "VESKBIN2", any
    // other as "VESKBINV" with that version.
    void SetHeader(std::int32_t version);

    bool HasHeader() const { return !m_Identifier.empty(); }
    bool WritesVersion() const { return m_Identifier == "VESKBINV"; }
    std::int32_t HeaderVersion() const;

    std::uint32_t ExtraBytes() const;   // of extra data in a record
    std::uint32_t RecordBytes() const;  // a whole record, without packet header
};

}  // namespace vesk
