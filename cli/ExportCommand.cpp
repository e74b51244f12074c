#include "cli/ExportCommand.h"

#include <optional>

#include "cli/Interrupt.h"
#include "cli/LogOpener.h"
#include "cli/OptionParsing.h"

namespace vesk {

namespace {

std::optional<TextExport*> TextExportByName(const std::string& name) {
    if (name == "text") return WriteJobText;
    if (name == "extra") return WriteExtraInfoText;
    if (name == "calls") return WriteCallText;
    return {};
}

}  // namespace

void OfferTextExport(CLI::App& app, TextExport*& what) {
    OfferParsed(app, "WHAT", what, TextExportByName,
                "text (jobs and calls of functions), extra (samples of the extra values) or calls "
                "(calls with their context switches)")
        ->required()
        ->type_name("text|extra|calls");
}

// Standard output may end on the terminal that would show the bar.
ExitCode RunExport(TextExport& what, const Options& options, Terminal& terminal) {
    OutputFile out(options.m_Output.m_Path, options.m_Output.WhatToDoWithFiles());
    LogOpener log(options.m_Input, terminal);
    const ExitCode code = log.Read();
    log.Explain();
    if (code == ExitCode::kRefused) return code;
    const bool showsProgress = options.m_Output.m_Path != "-";
    what(log.List(), out.Buffer(), [&](std::int64_t done, std::int64_t total) {
        StopIfInterrupted();
        if (showsProgress) terminal.ShowProgress("writing", done, total);
        return true;
    });
    out.Commit();
    terminal.HideProgress();
    return code;
}

}  // namespace vesk
