#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "log/ByteSource.h"
#include "log/PlainFramer.h"
#include "log/ReadReport.h"
#include "log/RecordDecoder.h"

namespace vesk {

// One pass over the records of a range: bytes to records to a decoder. A read makes two, the
// first of which only counts.
class DecodingPass {
public:
    // The stream stands at start. Everything is borrowed. progress counts on from doneBefore.
    DecodingPass(std::FILE* stream, std::int64_t start, std::int64_t end,
                 const DecoderSetup& setup);

    enum class Result { kEnded, kError, kCancelled };

    // Feeds the decoder to the end of the range or stream. On kError, Error() is the text.
    Result Run(RecordDecoder&, const ReadProgress&, std::int64_t doneBefore, std::int64_t total);

    const std::string& Error() const { return m_Error; }
    const PlainFramer& Framer() const { return m_Framer; }

    // Adds what the pass met to a report.
    void Report(ReadReport&) const;

private:
    Result RunPlain(RecordDecoder&);
    Result RunPackets(RecordDecoder&);
    Result OutOfOrder(const RecordDecoder&, const RawRecord&, std::int64_t position);
    bool GoesOn();

    const DecoderSetup& m_Setup;
    std::int64_t m_Start;
    std::int64_t m_End;
    ByteSource m_Source;
    PlainFramer m_Framer;
    std::string m_Error;

    const ReadProgress* m_Progress = nullptr;
    std::int64_t m_DoneBefore = 0;
    std::int64_t m_Total = 0;
    std::int64_t m_NextProgress = 0;

    std::uint64_t m_Records = 0;
    std::uint64_t m_LossPackets = 0;
    std::uint64_t m_DroppedPackets = 0;
    std::uint64_t m_CutOffBytes = 0;
};

}  // namespace vesk
