#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "database/TargetDatabase.h"
#include "log/HostValues.h"
#include "log/McuJobList.h"
#include "simulator/LogFormat.h"
#include "simulator/LogWriter.h"

// Writes a small log for a test, record by record:
//
//     Read(LogBuilder().Task("MAIN", 100).Irq(3, 140).Task("IDLE", 150))
//
// Headerless in TQCNT form unless told otherwise; the form may be chosen before or after the
// records. Each record takes its counter; the log's time is 1 at the first record and follows the
// counter from there. Frame number, frame length and extra values hold until they are set anew.
class LogBuilder {
public:
    LogBuilder() = default;

    // --- Form ----------------------------------------------------------------------------------

    // 1 and 2: "VESK_BIN" and "VESKBIN2"; any other: "VESKBINV" with that version.
    LogBuilder& WithHeader(std::int32_t version);
    LogBuilder& WithIdentifier(const std::string& identifier, std::int32_t version);
    LogBuilder& Uscnt(std::uint32_t wrap, std::uint32_t originRate, std::uint32_t rate);
    LogBuilder& Packets();  // behind a header of version 3, unless one is set
    LogBuilder& WithoutFrameNo();
    LogBuilder& ComputedFrames(std::uint32_t first, std::uint32_t baseCount,
                               std::uint32_t countsPerFrame);
    LogBuilder& ReturnsToTask();
    LogBuilder& Whcp(std::int64_t length);       // stands behind the header
    LogBuilder& Extra(const vesk::HeaderItem&);  // one more item of the header
    LogBuilder& Extra(std::uint32_t beforeFrameNo, std::uint32_t behindFrameNo);  // headerless

    // --- Target and host -----------------------------------------------------------------------

    LogBuilder& Capability(std::size_t byte, std::uint8_t value = 1);
    LogBuilder& Enumerator(const std::string& enumeration, const std::string& name,
                           std::int32_t value);
    LogBuilder& TickIrq(std::int32_t code);
    LogBuilder& FeatureLevel(std::int32_t level);

    // --- What the records from here on carry ---------------------------------------------------

    LogBuilder& Frame(std::int32_t number);
    LogBuilder& FrameLength(std::uint16_t counts);
    LogBuilder& Values(std::vector<std::uint32_t> words);

    // --- Records -------------------------------------------------------------------------------

    LogBuilder& Task(const std::string& name, std::uint32_t count);
    LogBuilder& TaskNumber(std::uint32_t number, std::uint32_t count);
    LogBuilder& Irq(std::uint32_t number, std::uint32_t count);
    LogBuilder& Return(std::uint32_t count);
    LogBuilder& Resume(std::uint32_t count);
    LogBuilder& Enter(const std::string& function, std::uint32_t count);
    LogBuilder& Leave(const std::string& function, std::uint32_t count);
    LogBuilder& Mark(const std::string& name, std::uint32_t count);
    LogBuilder& HwOn(const std::string& event, std::uint32_t count);
    LogBuilder& HwOff(const std::string& event, std::uint32_t count);
    LogBuilder& Id(std::uint32_t word, std::uint32_t count);  // a record of any kind
    LogBuilder& Loss(std::uint32_t bytes);
    LogBuilder& Packet(std::uint8_t id, std::int8_t sequence, const std::string& payload);
    LogBuilder& Raw(const std::string& bytes);
    LogBuilder& CutLastBytes(std::size_t number);

    // --- Results -------------------------------------------------------------------------------

    std::string Bytes() const;              // the whole file
    vesk::TargetDatabase Database() const;  // what is needed to read it
    vesk::HostValues Host() const;
    const vesk::LogFormat& Format() const { return m_Format; }

private:
    struct Enumerated {
        std::string m_Enumeration, m_Name;
        std::int32_t m_Value;
    };

    vesk::LogFormat m_Format;
    vesk::HostValues m_Host;
    std::vector<std::pair<std::size_t, std::uint8_t>> m_Capabilities;
    std::vector<Enumerated> m_Enumerators;
    vesk::RecordStamp m_Stamp;
    std::vector<std::uint32_t> m_Values;
    std::vector<std::function<void(vesk::LogWriter&)>> m_Steps;
    std::size_t m_CutOff = 0;
};

struct ReadResult {
    bool ok = false;
    std::string error;
    McuJobList jobs;
    std::vector<std::string> messages;  // that the read showed to the user
};

// Reads a log by McuJobList::ReadFile from a temporary file, with the target's database and host
// values in place for as long as the read takes. `prepare` gets the list before it reads.
ReadResult Read(const LogBuilder&, const std::function<void(McuJobList&)>& prepare = {});

// The same for bytes and a database from elsewhere.
ReadResult Read(const std::string& bytes, vesk::TargetDatabase, vesk::HostValues,
                const std::function<void(McuJobList&)>& prepare = {});
