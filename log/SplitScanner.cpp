#include "log/SplitScanner.h"

#include <algorithm>
#include <limits>
#include <new>

#include "log/LittleEndian.h"
#include "log/PacketFramer.h"
#include "log/PlainFramer.h"
#include "log/StreamFile.h"

namespace vesk {

namespace {

std::uint32_t FrameBits(std::int32_t frame) {
    return static_cast<std::uint32_t>(frame);
}

// The units of one scan, as many as are wanted.
class UnitList {
public:
    UnitList(std::size_t most, std::string& error) : m_Most(most), m_Error(error) {}

    // False: there are enough, and the scan ends with a text.
    bool Add(const OfferedUnit& unit) {
        if (m_Units.size() < m_Most) {
            m_Units.push_back(unit);
            return true;
        }
        m_Error = "The file has more than " + std::to_string(m_Most) +
                  " units of this size. The first ones are listed.";
        return false;
    }
    void Fail(const std::string& error) { m_Error = error; }
    std::vector<OfferedUnit> Take() { return std::move(m_Units); }

private:
    std::size_t m_Most;
    std::string& m_Error;
    std::vector<OfferedUnit> m_Units;
};

OfferedUnit MakeUnit(std::int64_t start, std::int64_t end, std::int32_t first, std::int32_t last,
                     std::uint32_t baseCount) {
    return {{start, end, FrameBits(first), baseCount}, first, last};
}

// The wanted size in whole records: a unit of fewer than two has no span.
std::int64_t RecordsPerUnit(const RangeRequest& request, std::int64_t unitKB) {
    return std::max<std::int64_t>(2, unitKB * 1024 / request.m_Info.m_JobSize);
}

void WalkPackets(const RangeRequest& request, std::int64_t unitBytes, UnitList& units) {
    SeekTo(request.m_Stream, request.m_FileStart);
    ByteSource source(request.m_Stream, request.m_FileStart);
    PacketFramer framer(request.m_Info, std::numeric_limits<std::int64_t>::max());
    std::int64_t unitStart = request.m_FileStart;
    std::int32_t first = -1;
    std::int32_t last = 0;
    auto event = framer.Next(source);
    for (; event == PacketFramer::Event::kRecord || event == PacketFramer::Event::kLoss;
         event = framer.Next(source)) {
        if (event == PacketFramer::Event::kLoss) continue;
        if (request.m_Info.m_HasKaldoFrameNo) last = framer.Record().m_Frame;
        if (first == -1) first = last;
        if (source.Position() <= unitStart + unitBytes) continue;
        if (!units.Add(MakeUnit(unitStart, source.Position(), first, last, 0))) return;
        first = -1;
        unitStart = source.Position();
    }
    if (event == PacketFramer::Event::kError)
        units.Fail(framer.Error());
    else if (first != -1)
        units.Add(MakeUnit(unitStart, request.m_FileEnd, first, last, 0));
}

// The size of a record comes from the file, and the file may really hold one of that size.
void ScanPackets(const RangeRequest& request, std::int64_t unitBytes, UnitList& units) {
    try {
        WalkPackets(request, unitBytes, units);
    } catch (const std::bad_alloc&) {
        units.Fail("Failed to allocate Kaldo job size");
    }
}

bool ReadFrameAt(const RangeRequest& request, std::int64_t record, std::int32_t& frame) {
    std::uint32_t word = 0;
    if (!SeekTo(request.m_Stream, record + request.m_Info.m_FrameNoOffset) ||
        !ReadWord32(request.m_Stream, word))
        return false;
    frame = static_cast<std::int32_t>(word);
    return true;
}

// Only the first and last record of each unit are read. Labels come from whole records; the last
// unit runs to the end of the file all the same.
void ScanFrameNumbers(const RangeRequest& request, std::int64_t perUnit, UnitList& units) {
    const std::int64_t size = request.m_Info.m_JobSize;
    std::int64_t left = (request.m_FileEnd - request.m_FileStart) / size;
    std::int64_t start = request.m_FileStart;
    while (left > 0) {
        const std::int64_t records = std::min(left, perUnit);
        std::int32_t first = 0;
        std::int32_t last = 0;
        if (!ReadFrameAt(request, start, first) ||
            !ReadFrameAt(request, start + (records - 1) * size, last))
            return;
        const std::int64_t end = records == perUnit ? start + records * size : request.m_FileEnd;
        if (!units.Add(MakeUnit(start, end, first, last, 0))) return;
        start = end;
        left -= records;
    }
}

// Where frame numbers are computed every record counts. A headerless log without frame numbers
// has nothing to compute from: its labels count records.
class FrameCounter {
public:
    explicit FrameCounter(const HeaderInfo& info)
        : m_Info(info), m_Frame(info.m_FirstFrameNo), m_Base(info.m_FrameBaseCount) {}

    void Add(const std::uint8_t* record) {
        const std::uint32_t word = Word32At(record + 4);
        const std::uint32_t count = m_Info.m_IsTQCNT ? word & 0xFFFF : word;
        const std::uint32_t wrap = m_Info.m_IsTQCNT ? word >> 16 : m_Info.m_Wrap;
        const std::uint32_t ratio = m_Info.m_TimeStampRatio;
        if (ratio == 0) {
            if (count >= m_Base) ++m_Frame;
            return;
        }
        const std::uint32_t counts = count - m_Base + (count >= m_Base ? 0 : wrap);
        m_Frame += counts / ratio;
        m_Base += counts / ratio * ratio;
        if (wrap != 0) m_Base %= wrap;
    }

    std::int32_t Frame() const { return static_cast<std::int32_t>(m_Frame); }
    std::uint32_t Base() const { return m_Base; }

private:
    const HeaderInfo& m_Info;
    std::uint32_t m_Frame;
    std::uint32_t m_Base;
};

void ScanAllRecords(const RangeRequest& request, std::int64_t perUnit, UnitList& units) {
    SeekTo(request.m_Stream, request.m_FileStart);
    ByteSource source(request.m_Stream, request.m_FileStart);
    FrameCounter counter(request.m_Info);
    OfferedUnit open;
    std::int64_t inUnit = 0;
    for (;;) {
        const std::int64_t position = source.Position();
        const std::uint8_t* record = source.Take(request.m_Info.m_JobSize);
        if (!record) break;
        counter.Add(record);
        if (inUnit == 0) open = MakeUnit(position, 0, counter.Frame(), 0, counter.Base());
        open.m_LastFrame = counter.Frame();
        if (++inUnit < perUnit) continue;
        open.m_Interval.m_EndPos = source.Position();
        if (!units.Add(open)) return;
        inUnit = 0;
    }
    if (inUnit == 0) return;
    open.m_Interval.m_EndPos = request.m_FileEnd;
    units.Add(open);
}

std::uint32_t RecordBytes(const HeaderInfo& info) {
    return 8 + (info.m_HasFrameNo ? 4 : 0) + info.m_ExtraSize;
}

}  // namespace

std::vector<OfferedUnit> ScanUnits(const RangeRequest& request, std::int64_t unitKB,
                                   std::string& error, std::size_t mostUnits) {
    const HeaderInfo& info = request.m_Info;
    if (unitKB <= 0 || info.m_JobSize == 0) return {};
    UnitList units(mostUnits, error);
    if (info.m_IsKaldo) {
        ScanPackets(request, unitKB * 1024, units);
    } else if (info.m_JobSize == RecordBytes(info)) {
        // A job size that does not fit the records' fields tells nothing about where they lie.
        const std::int64_t perUnit = RecordsPerUnit(request, unitKB);
        if (info.m_HasFrameNo)
            ScanFrameNumbers(request, perUnit, units);
        else
            ScanAllRecords(request, perUnit, units);
    }
    return units.Take();
}

void CarryBackFrameOrigin(std::FILE* stream, HeaderInfo& info, std::int64_t whcpLength) {
    constexpr std::int64_t kPrefixBytes = 512;
    constexpr std::int64_t kChunkBytes = 52428800;
    const std::int64_t size = info.m_JobSize;
    const std::int64_t ratio = info.m_TimeStampRatio;
    if (size < 8 || ratio == 0) return;
    std::int64_t position = TellPosition(stream);
    const std::int64_t fileEnd = EndPosition(stream);
    SeekTo(stream, position);

    std::int64_t base = info.m_FrameBaseCount;
    std::uint32_t previous = info.m_FrameBaseCount;
    std::vector<std::uint8_t> bytes;
    for (std::int64_t rest = whcpLength; rest - kPrefixBytes > 0;) {
        const std::int64_t chunk = std::min(rest - kPrefixBytes, kChunkBytes) / size * size;
        if (chunk == 0 || chunk > fileEnd - position) break;
        bytes.resize(static_cast<std::size_t>(chunk));
        if (!ReadBytes(stream, bytes.data(), bytes.size())) break;
        for (std::int64_t at = chunk - size; at >= 0; at -= size) {
            const std::uint32_t word = Word32At(&bytes[static_cast<std::size_t>(at) + 4]);
            const std::uint32_t count = info.m_IsTQCNT ? word & 0xFFFF : word;
            const std::int64_t wrap = info.m_IsTQCNT ? word >> 16 : info.m_Wrap;
            const std::int64_t seen = std::int64_t{count} - (count > previous ? wrap : 0);
            if (base > seen) {
                const std::int64_t frames = (base - seen + ratio - 1) / ratio;
                info.m_FirstFrameNo -= static_cast<std::uint32_t>(frames);
                base -= frames * ratio;
            }
            if (base < 0 && wrap > 0) base += (-base + wrap - 1) / wrap * wrap;
            previous = count;
        }
        rest -= chunk;
        position += chunk;
    }
    info.m_FrameBaseCount = static_cast<std::uint32_t>(base);
}

}  // namespace vesk
