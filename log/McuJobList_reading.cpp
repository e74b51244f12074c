// How a file becomes a list: its kind by the first bytes, the layout of its records from its own
// header or from the target's database, the choice of a range, then two passes over the records:
// one that counts and one that stores.

#include <algorithm>
#include <array>
#include <cstring>
#include <new>

#include "log/CensusTaker.h"
#include "log/DecodingPass.h"
#include "log/HeaderReader.h"
#include "log/HeaderlessLayout.h"
#include "log/HostValues.h"
#include "log/LittleEndian.h"
#include "log/McuJobList.h"
#include "log/Reserve.h"
#include "log/StreamFile.h"
#include "platform/Text.h"
#include "platform/UserInterface.h"

using vesk::StreamOwner;

namespace {

constexpr std::size_t kIdentifierBytes = 8;
constexpr std::int32_t kNewestVersion = 3;
constexpr std::int64_t kVersion2Start = 512;
// More than a header's items can ask for: only a damaged file has such records and is too short
// to hold a single one.
constexpr std::size_t kMostUnseenBytes = std::size_t{4} << 20;
constexpr const char* kTooNew = "The VESK version is not supported. Please use the latest Trawler.";
constexpr const char* kOutOfMemory = "Out of memory. Please split VESK file first.";

bool ReadIdentifier(std::FILE* stream, std::string& identifier) {
    identifier.resize(kIdentifierBytes);
    return vesk::ReadBytes(stream, identifier.data(), kIdentifierBytes);
}

// A version that is cut off counts as 0; the header behind it then fails.
bool ReadVersion(std::FILE* stream, std::int32_t& version, std::string& error) {
    std::uint32_t word = 0;
    vesk::ReadWord32(stream, word);
    version = static_cast<std::int32_t>(word);
    if (version <= kNewestVersion) return true;
    error += kTooNew;
    return false;
}

std::int64_t ReadWHCPLength(std::FILE* stream) {
    char tag[4];
    std::uint8_t length[8];
    if (!vesk::ReadBytes(stream, tag, sizeof tag) || std::memcmp(tag, "WHCP", sizeof tag) != 0 ||
        !vesk::ReadBytes(stream, length, sizeof length))
        return 0;
    return vesk::Signed64At(length);
}

// Bytes of a record that the first sample asks for: plain logs keep the extra data, packet logs
// the whole record, of which the items tell how much is needed.
std::size_t PreviousBytes(const HeaderInfo& info, const std::vector<ExtraParsingInfo>& items) {
    std::size_t bytes = info.m_IsKaldo ? 0 : info.m_ExtraSize;
    for (const ExtraParsingInfo& item : items) {
        if (!item.m_Valid) continue;
        bytes = std::max<std::size_t>(bytes, std::size_t{item.m_Offset} + item.m_Size);
        if (info.m_IsKaldo && item.m_Module) bytes = std::max<std::size_t>(bytes, info.m_JobSize);
    }
    return bytes;
}

vesk::ReadOutcome OutcomeOf(vesk::DecodingPass::Result result) {
    switch (result) {
        case vesk::DecodingPass::Result::kEnded:
            return vesk::ReadOutcome::kComplete;
        case vesk::DecodingPass::Result::kCancelled:
            return vesk::ReadOutcome::kCancelled;
        default:
            return vesk::ReadOutcome::kPartial;
    }
}

bool NeedsRecords(const std::vector<ExtraParsingInfo>& items) {
    return std::any_of(items.begin(), items.end(),
                       [](const ExtraParsingInfo& item) { return item.m_Valid; });
}

}  // namespace

bool McuJobList::ReadFile(std::string path, std::string& error) {
    if (!m_DBReady) return false;
    StreamOwner stream(std::fopen(path.c_str(), "rb"));
    if (!stream) {
        error += "Could not open the file";
        return false;
    }
    Clear();
    m_FileName = path;
    m_Report.m_Outcome = vesk::ReadOutcome::kRefused;
    std::string identifier;
    if (!ReadIdentifier(stream.get(), identifier)) return false;
    if (identifier == "VESK_BIN") return ReadFileWithHeader(path, stream.release(), 1, error);
    if (identifier == "VESKBIN2") return ReadFileWithHeader(path, stream.release(), 2, error);
    if (identifier == "VESKBINV") {
        std::int32_t version = 0;
        if (!ReadVersion(stream.get(), version, error)) return false;
        return ReadFileWithHeader(path, stream.release(), version, error);
    }
    if (identifier == "EMI_CONF") {
        error += "Please use Trawler V3.0933.01 for this bin file with special format.";
        return false;
    }
    vesk::SeekTo(stream.get(), 0);
    return ReadHeaderless(path, stream.release(), error);
}

bool McuJobList::ReadFileWithHeader(const std::string& path, std::FILE* file, std::int32_t version,
                                    std::string& error) {
    HeaderInfo info;
    if (!ReadHeader(file, info, version, error)) return false;
    StreamOwner stream(file);
    std::int64_t whcpLength = 0;
    if (version == 2) {
        whcpLength = ReadWHCPLength(file);
        vesk::SeekTo(file, kVersion2Start);
    } else if (version == 3) {
        vesk::SeekTo(file, GetKaldoPrefixHeaderSize());
    }
    std::int64_t start = 0;
    std::int64_t end = 0;
    if (!GetSplitFileInfo(path, file, info, start, end, whcpLength, error)) {
        ReleasePlugins();
        return false;
    }
    vesk::SeekTo(file, start);
    return ReadRawData(stream.release(), info, end, error);
}

bool McuJobList::ReadFileWithAnotherHeader(const std::string& headerPath,
                                           const std::string& rawPath, std::string& error) {
    Clear();
    m_Report.m_Outcome = vesk::ReadOutcome::kRefused;
    StreamOwner header(std::fopen(headerPath.c_str(), "rb"));
    if (!header) {
        error += "Could not open the file: " + headerPath;
        return false;
    }
    std::string identifier;
    if (!ReadIdentifier(header.get(), identifier)) {
        error += "Failed to read header identifier";
        return false;
    }
    std::int32_t version = 1;
    if (identifier == "VESKBINV") {
        if (!ReadVersion(header.get(), version, error)) return false;
    } else if (identifier != "VESK_BIN") {
        error += "Failed to read correct identifier in the header file: " + headerPath;
        return false;
    }
    HeaderInfo info;
    if (!ReadHeader(header.get(), info, version, error)) {
        static_cast<void>(header.release());  // the refusal has closed it
        return false;
    }
    header.reset();

    m_FileName = rawPath;
    StreamOwner raw(std::fopen(rawPath.c_str(), "rb"));
    if (!raw) {
        error += "Could not open the file: " + rawPath;
        ReleasePlugins();
        return false;
    }
    std::int64_t start = 0;
    std::int64_t end = 0;
    if (!GetSplitFileInfo(rawPath, raw.get(), info, start, end, 0, error)) {
        ReleasePlugins();
        return false;
    }
    vesk::SeekTo(raw.get(), start);
    if (ReadRawData(raw.release(), info, end, error)) return true;
    if (m_Report.m_Outcome == vesk::ReadOutcome::kCancelled) return false;
    error += "Failed to parse raw data file:" + rawPath;
    const vesk::ReadReport report = m_Report;
    Clear();
    m_Report = report;
    m_Report.m_Outcome = vesk::ReadOutcome::kRefused;
    return false;
}

bool McuJobList::ReadHeader(std::FILE* stream, HeaderInfo& info, std::int32_t version,
                            std::string& error) {
    m_Report.m_Version = version;
    try {
        if (vesk::HeaderReader(*this, stream, info, version, error).Read()) {
            m_Report.m_Form = info.m_IsKaldo ? vesk::LogForm::kPackets : vesk::LogForm::kWithHeader;
            return true;
        }
    } catch (const std::bad_alloc&) {
        error += kOutOfMemory;
    }
    return ParsingHeaderFail(stream, error);
}

bool McuJobList::ParsingHeaderFail(std::FILE* stream, std::string& error) {
    error += "Failed to parse VESK header.";
    ReleasePlugins();
    std::fclose(stream);
    return false;
}

bool McuJobList::ReadHeaderless(const std::string& path, std::FILE* file, std::string& error) {
    StreamOwner stream(file);
    vesk::DecoderSetup setup;
    GetIRQName(setup.m_Names.m_Irqs, setup.m_Names.m_TickName);
    if (!vesk::LayOutHeaderless(*this, setup, error)) return false;
    const auto values = static_cast<std::size_t>(setup.m_ExtraValues);
    constexpr int kUnseenMinimum = 99999999;
    m_ExtraInfoNum = setup.m_ExtraValues;
    m_ExtraMax.assign(values, 0);
    m_ExtraMin.assign(values, kUnseenMinimum);
    for (std::size_t i = 0; i < values; ++i)
        m_ExtraNames.emplace_back("ExtraInfo[" + std::to_string(i) + "]");
    std::int64_t start = 0;
    std::int64_t end = 0;
    if (!GetSplitFileInfo(path, file, setup.m_Info, start, end, 0, error)) return false;
    vesk::SeekTo(file, start);
    return Decode(stream.release(), setup, end, error);
}

bool McuJobList::ReadRawData(std::FILE* file, HeaderInfo& info, std::int64_t end,
                             std::string& error) {
    StreamOwner stream(file);
    if (!m_DBReady) {
        ReleasePlugins();
        return false;
    }
    const std::int64_t start = vesk::TellPosition(file);
    m_ExtraInfoNum = static_cast<std::int32_t>(m_ExtraNames.size());
    vesk::DecoderSetup setup;
    setup.m_Info = info;
    setup.m_Form = info.m_IsKaldo ? vesk::LogForm::kPackets : vesk::LogForm::kWithHeader;
    GetIRQName(setup.m_Names.m_Irqs, setup.m_Names.m_TickName);
    GetTaskName(setup.m_Names.m_Tasks);
    setup.m_Names.m_HasTaskNumbers = vesk::CurrentHostValues().m_Capability.HasTaskNumbers();
    setup.m_ExtraValues = m_ExtraInfoNum;
    setup.m_PreviousBytes = PreviousBytes(info, m_ParsingInfos);
    if (NeedsRecords(m_ParsingInfos))
        setup.m_Extra = info.m_IsKaldo
                            ? std::array{vesk::ByteRange{0, info.m_JobSize}, vesk::ByteRange{}}
                            : vesk::PlainFramer::ExtraOf(info, 0);
    if (setup.m_PreviousBytes > kMostUnseenBytes &&
        vesk::EndPosition(file) - start < static_cast<std::int64_t>(setup.m_PreviousBytes)) {
        error += vesk::FormatText("Failed to allocate extrainfo buffer. size: %d",
                                  static_cast<int>(setup.m_PreviousBytes));
        ReleasePlugins();
        return false;
    }
    vesk::SeekTo(file, start);
    return Decode(stream.release(), setup, end, error);
}

bool McuJobList::Decode(std::FILE* file, const vesk::DecoderSetup& setup, std::int64_t end,
                        std::string& error) {
    const StreamOwner stream(file);
    const std::int64_t start = vesk::TellPosition(file);
    m_Report.m_Form = setup.m_Form;
    m_Report.m_Info = setup.m_Info;
    m_Report.m_RangeStart = start;
    m_Report.m_RangeEnd = end;
    const std::int64_t total = 2 * (std::min(vesk::EndPosition(file), end) - start);
    vesk::LogCensus census;
    if (!vesk::CensusTaker(file, start, end, setup).Take(m_Progress, total, census))
        return Cancel();
    vesk::SeekTo(file, start);
    vesk::DecodingPass pass(file, start, end, setup);
    try {
        StoreRecords(pass, setup, census, total, error);
    } catch (const std::bad_alloc&) {
        // Not even the names fit: the jobs stand without them.
        m_Report.m_Outcome = vesk::ReadOutcome::kPartial;
    }
    if (m_Report.m_Outcome == vesk::ReadOutcome::kCancelled) return Cancel();
    ReleasePlugins();
    TrimAll();
    return m_Report.m_Outcome == vesk::ReadOutcome::kComplete;
}

void McuJobList::StoreRecords(vesk::DecodingPass& pass, const vesk::DecoderSetup& setup,
                              const vesk::LogCensus& census, std::int64_t total,
                              std::string& error) {
    vesk::RecordDecoder decoder(setup, this, &census);
    auto result = vesk::DecodingPass::Result::kError;
    try {
        result = pass.Run(decoder, m_Progress, total / 2, total);
        error += pass.Error();
        if (result != vesk::DecodingPass::Result::kCancelled) decoder.Finish();
    } catch (const std::bad_alloc&) {
        result = vesk::DecodingPass::Result::kError;
        error += kOutOfMemory;
    }
    pass.Report(m_Report);
    m_Report.m_IgnoredRecords = decoder.IgnoredRecords();
    m_Report.m_UnmatchedExits = decoder.UnmatchedExits();
    m_Report.m_Outcome = OutcomeOf(result);
    decoder.HandOver();
}

bool McuJobList::Cancel() {
    ReleasePlugins();
    Clear();
    m_Report.m_Outcome = vesk::ReadOutcome::kCancelled;
    return false;
}

void McuJobList::TrimAll() {
    try {
        vesk::Trim<McuJob>(*this);
        vesk::Trim(m_CustomJobs);
        vesk::Trim(m_ExtraInfos);
    } catch (const std::bad_alloc&) {
        OutputDebugStringA("out of memory");
    }
}
