#pragma once

#include <cstdint>
#include <cstdio>

#include "log/DecodingPass.h"
#include "log/LogCensus.h"
#include "log/ReadReport.h"
#include "log/RecordDecoder.h"

namespace vesk {

// Counts what a range of a log will yield, ahead of the pass that stores it. A log that begins
// with nothing but jobs is taken to go on so, which spares the pass; if it does not, the counts
// are too high and the containers are trimmed in the end.
class CensusTaker {
public:
    // All borrowed. The stream is left anywhere.
    CensusTaker(std::FILE* stream, std::int64_t start, std::int64_t end, const DecoderSetup& setup)
        : m_Stream(stream), m_Start(start), m_End(end), m_Setup(setup) {}

    // False: the read was cancelled. Without the memory to count, the census stays empty.
    bool Take(const ReadProgress&, std::int64_t total, LogCensus& census);

private:
    using Result = DecodingPass::Result;

    bool Foresee(RecordDecoder& counter, LogCensus& census);
    Result CountRecords(RecordDecoder& counter, std::uint64_t records);

    std::FILE* m_Stream;
    std::int64_t m_Start;  // moves on with what was counted
    std::int64_t m_End;
    const DecoderSetup& m_Setup;
};

}  // namespace vesk
