#include "cli/InfoCommand.h"

#include "cli/InfoDocument.h"
#include "cli/InfoText.h"
#include "cli/LogOpener.h"

namespace vesk {

ExitCode RunInfo(const Options& options, Terminal& terminal) {
    OutputFile out(options.m_Output.m_Path, options.m_Output.WhatToDoWithFiles());
    LogOpener log(options.m_Input, terminal);
    const ExitCode code = log.Read();
    log.Explain();
    if (code == ExitCode::kRefused) return code;
    const LogInfo info{options.m_Input.m_Log, log, terminal.m_Messages};
    if (options.m_Format == TableFormat::kJson)
        WriteInfoDocument(out.Buffer(), info);
    else
        WriteInfoText(out.Buffer(), info);
    out.Commit();
    return code;
}

}  // namespace vesk
