#include "fuzz/FuzzTarget.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>

#include "log/HostValues.h"

namespace vesk {

MemoryFile::MemoryFile(const std::uint8_t* bytes, std::size_t size)
    : m_File(memfd_create("log", 0)), m_Path("/proc/self/fd/" + std::to_string(m_File)) {
    if (m_File < 0 || write(m_File, bytes, size) != static_cast<ssize_t>(size)) std::abort();
}

MemoryFile::~MemoryFile() {
    close(m_File);
}

TargetDatabase& TargetFor(std::uint8_t choice) {
    static TargetDatabase database;
    database = {};
    database.m_Capability.m_Bytes[10] = choice & 1;
    database.m_Capability.m_Bytes[17] = choice >> 1 & 1;
    CurrentHostValues().m_TickIRQ = choice >> 2 & 3;

    DataFormat& node = database.m_Formats["SA_LoggingNode_T"];
    const bool extrasBefore = (choice & 0x10) != 0;
    const bool hasFrame = (choice & 0x20) != 0;
    node.m_Fields = {{"contextID", 0, 4}, {(choice & 1) != 0 ? "USCNT" : "TQCNT", 4, 2}};
    if ((choice & 1) == 0) node.m_Fields.push_back({"TQWrap", 6, 2});
    if (extrasBefore) node.m_Fields.push_back({"first", 8, 4});
    if (hasFrame) node.m_Fields.push_back({"frameNo", extrasBefore ? 12 : 8, 4});
    node.m_Fields.push_back({"last", 16, 4});
    node.Size = 20;
    if ((choice & 0x40) != 0) database.m_Formats.clear();

    EnumContent& clock = database.m_Enums["Trawler_VESK_Clock"];
    clock.Add("VESK_Clock_Wrap", 1 << 20);
    clock.Add("VESK_Clock_Origin_Rate", 1083333);
    clock.Add("VESK_Clock_Rate", 1000000);
    clock.Add("VESK_TimeStamp_Ratio", 5000);
    EnumContent& irqs = database.m_Enums["Irq_Code_Def_Enum"];
    irqs.Add("Enum_IRQ_TIMER_CODE", 1);
    irqs.Add("Enum_IRQ_Code_End", 3);
    database.m_Enums["module_type"].Add("MOD_MAIN", 0x41414141);
    return database;
}

void Prepare(McuJobList& list, TargetDatabase& database) {
    TargetDatabase::Select(&database);
    CurrentHostValues().m_Capability = database.m_Capability;
    list.registerDBCallback(TargetDatabase::LookUpFormat, TargetDatabase::LookUpEnum);
}

}  // namespace vesk
