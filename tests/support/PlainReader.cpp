#include "tests/support/PlainReader.h"

#include <algorithm>
#include <cstring>

#include "tests/support/PlainDecoder.h"
#include "tests/support/PlainFile.h"
#include "tests/support/PlainHeader.h"

namespace vesk {

namespace {

constexpr std::int64_t kLargestChunk = 0x3200000;

// One read of one log: the steps that lead to its records.
class PlainReading {
public:
    PlainReading(TargetDatabase& database, const PlainOptions& options)
        : m_Database(database), m_Options(options) {
        m_Log.tickIRQ = options.tickIRQ;
    }

    bool ReadFile(const std::string& path);
    bool ReadFileWithAnotherHeader(const std::string& headerPath, const std::string& rawPath);

    PlainLog m_Log;

private:
    bool Fail(const std::string& text);
    bool ReadVersion(std::int32_t& version);
    bool ReadFileWithHeader(std::int32_t version);
    bool ReadHeaderless();
    bool FixRange(std::int64_t& start, std::int64_t& end, std::int64_t whcpLength);
    void MoveFrameOriginBack(std::int64_t whcpLength);
    void MoveFrameOriginBack(const std::vector<char>& chunk, std::int64_t& base,
                             std::uint32_t& previous);
    bool Decode(std::int64_t whcpLength, bool withHeader);
    void Clear();

    TargetDatabase& m_Database;
    const PlainOptions& m_Options;
    PlainFile m_File;
    PlainHeader m_Header{m_Database, m_Options, m_Log};
    bool m_IsDecoded = false;
};

bool PlainReading::Fail(const std::string& text) {
    m_Log.error += text;
    return false;
}

bool PlainReading::ReadFile(const std::string& path) {
    if (!m_File.Open(path)) return Fail("Could not open the file");
    m_Log.fileName = path;
    char identifier[8];
    if (!m_File.Bytes(identifier, 8)) return false;
    const std::string id(identifier, 8);
    if (id == "VESK_BIN") return ReadFileWithHeader(1);
    if (id == "VESKBIN2") return ReadFileWithHeader(2);
    if (id == "VESKBINV") {
        std::int32_t version = 0;
        return ReadVersion(version) && ReadFileWithHeader(version);
    }
    if (id == "EMI_CONF")
        return Fail("Please use Trawler V3.0933.01 for this bin file with special format.");
    m_File.GoTo(0);
    return ReadHeaderless();
}

bool PlainReading::ReadVersion(std::int32_t& version) {
    m_File.Field(version);
    if (version <= 3) return true;
    return Fail("The VESK version is not supported. Please use the latest Trawler.");
}

bool PlainReading::ReadFileWithHeader(std::int32_t version) {
    if (!m_Header.Read(m_File, version)) return false;
    std::int64_t whcpLength = 0;
    if (version == 2) {
        char tag[4] = {};
        if (m_File.Bytes(tag, 4) && std::memcmp(tag, "WHCP", 4) == 0) m_File.Field(whcpLength);
        m_File.GoTo(512);
    }
    if (version == 3) m_File.GoTo(1036);
    return Decode(whcpLength, true);
}

bool PlainReading::ReadHeaderless() {
    std::string tickName;
    PlainIrqNames(m_Database, m_Options, m_Log, tickName);
    return m_Header.LayOutHeaderless() && Decode(0, false);
}

bool PlainReading::Decode(std::int64_t whcpLength, bool withHeader) {
    std::int64_t start = 0, end = 0;
    if (!FixRange(start, end, whcpLength)) return false;
    m_File.GoTo(start);
    m_IsDecoded = true;
    return PlainDecoder(m_File, m_Header, withHeader, m_Database, m_Options, m_Log).Decode(end);
}

bool PlainReading::FixRange(std::int64_t& start, std::int64_t& end, std::int64_t whcpLength) {
    start = m_File.Position();
    end = m_File.Size();
    if (whcpLength > 512) MoveFrameOriginBack(whcpLength);
    if (m_Options.interval) {
        start = m_Options.interval->m_StartPos;
        end = m_Options.interval->m_EndPos;
        m_Header.m_Info.m_FirstFrameNo = m_Options.interval->m_FirstFrameNo;
        m_Header.m_Info.m_FrameBaseCount = m_Options.interval->m_BaseCount;
    }
    return end >= start || Fail("Failed to find correct range of parsing unit");
}

// The header's frame origin belongs to the first record behind the WHCP part; its own records
// come first, and the origin is carried back over them, last to first.
void PlainReading::MoveFrameOriginBack(std::int64_t whcpLength) {
    HeaderInfo& info = m_Header.m_Info;
    if (info.m_JobSize == 0 || info.m_TimeStampRatio == 0) return;
    std::int64_t rest = whcpLength;
    std::int64_t base = info.m_FrameBaseCount;
    std::uint32_t previous = info.m_FrameBaseCount;
    while (rest - 512 > 0) {
        std::int64_t size = std::min(rest - 512, kLargestChunk);
        size -= size % info.m_JobSize;
        if (size == 0 || size > m_File.Size() - m_File.Position()) break;
        std::vector<char> chunk(static_cast<std::size_t>(size));
        if (!m_File.Bytes(chunk.data(), chunk.size())) break;
        MoveFrameOriginBack(chunk, base, previous);
        rest -= size;
    }
    info.m_FrameBaseCount = static_cast<std::uint32_t>(base);
}

void PlainReading::MoveFrameOriginBack(const std::vector<char>& chunk, std::int64_t& base,
                                       std::uint32_t& previous) {
    HeaderInfo& info = m_Header.m_Info;
    const std::size_t jobSize = info.m_JobSize;
    const std::int64_t ratio = info.m_TimeStampRatio;
    std::int64_t wrap = info.m_Wrap;
    for (std::size_t at = chunk.size(); at >= jobSize; at -= jobSize) {
        const char* record = &chunk[at - jobSize];
        std::uint32_t count = 0;
        if (jobSize < 8) return;
        if (info.m_IsTQCNT) {
            std::uint16_t fields[2];
            std::memcpy(fields, record + 4, 4);
            count = fields[0];
            wrap = fields[1];
        } else {
            std::memcpy(&count, record + 4, 4);
        }
        const std::int64_t x = count > previous ? count - wrap : std::int64_t{count};
        const std::int64_t frames = base > x ? (base - x + ratio - 1) / ratio : 0;
        info.m_FirstFrameNo -= static_cast<std::uint32_t>(frames);
        base -= frames * ratio;
        // As often as it takes to be no longer negative.
        if (base < 0 && wrap > 0) base += (-base + wrap - 1) / wrap * wrap;
        previous = count;
    }
}

bool PlainReading::ReadFileWithAnotherHeader(const std::string& headerPath,
                                             const std::string& rawPath) {
    PlainFile header;
    if (!header.Open(headerPath)) return Fail("Could not open the file: " + headerPath);
    m_File = std::move(header);
    char identifier[8];
    if (!m_File.Bytes(identifier, 8)) return Fail("Failed to read header identifier");
    const std::string id(identifier, 8);
    std::int32_t version = 1;
    if (id == "VESKBINV") {
        version = 0;
        if (!ReadVersion(version)) return false;
    } else if (id != "VESK_BIN") {
        return Fail("Failed to read correct identifier in the header file: " + headerPath);
    }
    if (!m_Header.Read(m_File, version)) return false;
    m_Log.fileName = rawPath;
    if (!m_File.Open(rawPath)) return Fail("Could not open the file: " + rawPath);
    if (Decode(0, true)) return true;
    if (m_IsDecoded) {
        Fail("Failed to parse raw data file:" + rawPath);
        Clear();
    }
    return false;
}

void PlainReading::Clear() {
    PlainLog empty;
    empty.error = m_Log.error;
    empty.messages = m_Log.messages;
    empty.tickIRQ = m_Log.tickIRQ;
    m_Log = empty;
}

}  // namespace

PlainLog ReadPlainly(const std::string& path, TargetDatabase& database,
                     const PlainOptions& options) {
    PlainReading reading(database, options);
    reading.m_Log.ok = reading.ReadFile(path);
    return reading.m_Log;
}

PlainLog ReadPlainlyWithHeader(const std::string& headerPath, const std::string& rawPath,
                               TargetDatabase& database, const PlainOptions& options) {
    PlainReading reading(database, options);
    reading.m_Log.ok = reading.ReadFileWithAnotherHeader(headerPath, rawPath);
    return reading.m_Log;
}

}  // namespace vesk
