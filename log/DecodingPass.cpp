#include "log/DecodingPass.h"

#include <algorithm>

#include "log/PacketFramer.h"
#include "platform/Text.h"

namespace vesk {

namespace {

constexpr std::uint64_t kBatch = 1024;  // packet records between two looks at memory and progress
constexpr std::int64_t kProgressBytes = std::int64_t{4} << 20;

}  // namespace

DecodingPass::DecodingPass(std::FILE* stream, std::int64_t start, std::int64_t end,
                           const DecoderSetup& setup)
    : m_Setup(setup),
      m_Start(start),
      m_End(end),
      m_Source(stream, start),
      m_Framer(setup.m_Info, setup.m_ExtraBefore, setup.ComputesFrames(), start, end) {}

DecodingPass::Result DecodingPass::Run(RecordDecoder& decoder, const ReadProgress& progress,
                                       std::int64_t doneBefore, std::int64_t total) {
    if (progress) m_Progress = &progress;
    m_DoneBefore = doneBefore;
    m_Total = total;
    m_NextProgress = m_Start;
    if (!GoesOn()) return Result::kCancelled;
    return m_Setup.m_Form == LogForm::kPackets ? RunPackets(decoder) : RunPlain(decoder);
}

DecodingPass::Result DecodingPass::RunPlain(RecordDecoder& decoder) {
    const std::size_t size = m_Framer.RecordBytes();
    for (auto records = m_Framer.NextRecords(m_Source); !records.empty();
         records = m_Framer.NextRecords(m_Source)) {
        const std::uint8_t* const end = records.data() + records.size();
        decoder.MakeRoomFor(records.size() / size);
        for (const std::uint8_t* bytes = records.data();; bytes += size) {
            bytes = decoder.AcceptSwitches(bytes, end, m_Framer);
            if (bytes == end) break;
            const RawRecord record = m_Framer.Frame(bytes, decoder.IsBeforeTime());
            if (!decoder.Accept(record)) [[unlikely]] {
                m_Records += static_cast<std::uint64_t>(bytes - records.data()) / size;
                return OutOfOrder(decoder, record, m_Source.Position() - (end - bytes));
            }
        }
        m_Records += records.size() / size;
        if (!GoesOn()) return Result::kCancelled;
    }
    if (m_Framer.WantsMore()) m_CutOffBytes = m_Source.Rest();
    return Result::kEnded;
}

DecodingPass::Result DecodingPass::RunPackets(RecordDecoder& decoder) {
    PacketFramer framer(m_Setup.m_Info, m_End);
    Result result = Result::kEnded;
    // A record begins behind the one before it, ahead of any losses.
    std::int64_t position = m_Source.Position();
    PacketFramer::Event event = framer.Next(m_Source);
    for (; event == PacketFramer::Event::kRecord || event == PacketFramer::Event::kLoss;
         event = framer.Next(m_Source)) {
        if (m_Records % kBatch == 0) decoder.MakeRoomFor(kBatch);
        if (event == PacketFramer::Event::kLoss) {
            decoder.Lose(framer.LostSize());
            continue;
        }
        if (!decoder.Accept(framer.Record())) {
            result = OutOfOrder(decoder, framer.Record(), position);
            break;
        }
        ++m_Records;
        position = m_Source.Position();
        if (m_Records % kBatch == 0 && !GoesOn()) {
            result = Result::kCancelled;
            break;
        }
    }
    if (event == PacketFramer::Event::kEnd) m_CutOffBytes = m_Source.Rest();
    if (event == PacketFramer::Event::kError) {
        m_Error = framer.Error();
        result = Result::kError;
    }
    m_LossPackets = framer.LossPackets();
    m_DroppedPackets = framer.DroppedPackets();
    return result;
}

DecodingPass::Result DecodingPass::OutOfOrder(const RecordDecoder& decoder, const RawRecord& record,
                                              std::int64_t position) {
    m_Error = FormatText(
        "Failed to parse the raw data to get correct time information."
        "                               \nCurrrent file position: %lld, job's size: %d, "
        "last_timestamp: 0x%X, timestamp: 0x%X",
        static_cast<long long>(position), static_cast<int>(m_Setup.m_Info.m_JobSize),
        static_cast<unsigned>(decoder.LastFrame()), static_cast<unsigned>(record.m_Frame));
    return Result::kError;
}

bool DecodingPass::GoesOn() {
    const std::int64_t position = m_Source.Position();
    if (!m_Progress || position < m_NextProgress) return true;
    m_NextProgress = position + kProgressBytes;
    // The record that begins at the end of the range still belongs to it.
    return (*m_Progress)(m_DoneBefore + (std::min(position, m_End) - m_Start), m_Total);
}

void DecodingPass::Report(ReadReport& report) const {
    report.m_Records = m_Records;
    report.m_LossPackets = m_LossPackets;
    report.m_DroppedPackets = m_DroppedPackets;
    report.m_CutOffBytes = m_CutOffBytes;
}

}  // namespace vesk
