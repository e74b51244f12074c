#include "cli/UnitsCommand.h"

#include "cli/LogOpener.h"
#include "log/RangeChooser.h"

namespace vesk {

namespace {

void WriteUnits(const std::vector<OfferedUnit>& units, TableWriter& table) {
    for (const OfferedUnit& unit : units) {
        const SplitInterval& interval = unit.m_Interval;
        table.Number(table.Rows()).Number(interval.m_StartPos).Number(interval.m_EndPos);
        table.Number(unit.m_FirstFrame).Number(unit.m_LastFrame).EndRow();
    }
}

// The lister gives every read up, so that the read's own result says nothing.
ExitCode Outcome(const UnitLister& lister) {
    if (!lister.m_Asked) return ExitCode::kRefused;
    if (!lister.m_Error.empty() && !lister.m_Units.empty()) return ExitCode::kPartial;
    return lister.m_Units.empty() ? ExitCode::kNothingMatched : ExitCode::kComplete;
}

}  // namespace

ExitCode RunUnits(const Options& options, Terminal& terminal) {
    OutputFile out(options.m_Output.m_Path, options.m_Output.WhatToDoWithFiles());
    LogOpener log(options.m_Input, terminal);
    UnitLister lister(options.m_Input.m_UnitKB);
    log.Read(&lister);
    const ExitCode code = Outcome(lister);
    if (!lister.m_Error.empty()) terminal.Say(lister.m_Error);
    if (code == ExitCode::kRefused) {
        log.Explain();
        return code;
    }
    TableWriter table(out.Buffer(), options.m_Format,
                      {{"unit", 6}, {"begin"}, {"end"}, {"firstFrame"}, {"lastFrame"}});
    WriteUnits(lister.m_Units, table);
    table.Finish();
    out.Commit();
    return code;
}

}  // namespace vesk
