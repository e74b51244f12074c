#include "log/CensusTaker.h"

#include <algorithm>
#include <new>

#include "log/StreamFile.h"
#include "platform/UserInterface.h"

namespace vesk {

namespace {

constexpr std::uint64_t kSampleRecords = 1 << 15;

}  // namespace

bool CensusTaker::Take(const ReadProgress& progress, std::int64_t total, LogCensus& census) {
    try {
        RecordDecoder counter(m_Setup, nullptr, nullptr);
        if (Foresee(counter, census)) return true;
        SeekTo(m_Stream, m_Start);
        DecodingPass pass(m_Stream, m_Start, m_End, m_Setup);
        if (pass.Run(counter, progress, 0, total) == Result::kCancelled) return false;
        counter.Finish();
        census = counter.Census();
    } catch (const std::bad_alloc&) {
        OutputDebugStringA("out of memory");
    }
    return true;
}

// The first records settle how the log begins: a job that starts at time 0, interrupts that
// return to nobody. If each of those behind them ends a job, so will all others.
bool CensusTaker::Foresee(RecordDecoder& counter, LogCensus& census) {
    const PlainFramer framer(m_Setup.m_Info, m_Setup.m_ExtraBefore, false, m_Start, m_End);
    const auto size = static_cast<std::int64_t>(framer.RecordBytes());
    const std::int64_t whole = (EndPosition(m_Stream) - m_Start) / size;
    const std::int64_t inRange = (m_End - m_Start) / size + 1;
    const auto records =
        static_cast<std::uint64_t>(std::max<std::int64_t>(0, std::min(whole, inRange)));
    if (m_Setup.m_Form == LogForm::kPackets || m_Setup.ComputesFrames() ||
        records < 4 * kSampleRecords || CountRecords(counter, kSampleRecords) != Result::kEnded)
        return false;
    const LogCensus before = counter.Census();
    if (CountRecords(counter, kSampleRecords) != Result::kEnded) return false;
    const LogCensus after = counter.Census();
    if (after.m_Jobs - before.m_Jobs != kSampleRecords) return false;
    // One more of each is stored at the end of the log.
    const std::uint64_t rest = records - 2 * kSampleRecords;
    census.m_Jobs = after.m_Jobs + rest + 1;
    census.m_Samples = after.m_Samples == before.m_Samples ? 1 : after.m_Samples + rest + 1;
    return true;
}

CensusTaker::Result CensusTaker::CountRecords(RecordDecoder& counter, std::uint64_t records) {
    const PlainFramer framer(m_Setup.m_Info, m_Setup.m_ExtraBefore, false, m_Start, m_End);
    const auto bytes = static_cast<std::int64_t>(records * framer.RecordBytes());
    SeekTo(m_Stream, m_Start);
    // A range includes the record that begins at its end.
    DecodingPass pass(m_Stream, m_Start,
                      m_Start + bytes - static_cast<std::int64_t>(framer.RecordBytes()), m_Setup);
    const Result result = pass.Run(counter, {}, 0, 0);
    m_Start += bytes;
    return result;
}

}  // namespace vesk
