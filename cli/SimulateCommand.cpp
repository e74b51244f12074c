#include "cli/SimulateCommand.h"

#include <optional>
#include <sstream>

#include "cli/OptionParsing.h"
#include "database/TargetFile.h"
#include "programs/InputFile.h"
#include "simulator/Simulator.h"

namespace vesk {

void OfferSimulatorOptions(CLI::App& app, SimulatorOptions& options) {
    OfferParsed(app, "--form", options.m_Form, FormByName,
                "v1, v2, v3 (default), headerless or packets")
        ->type_name("v1|v2|v3|headerless|packets");
    OfferParsed(app, "--clock", options.m_IsMicroseconds, MicrosecondsByName,
                "tqcnt (default) or uscnt; packets always have uscnt")
        ->type_name("tqcnt|uscnt");
    app.add_flag("--computed-frames", options.m_ComputesFrames,
                 "the records carry no frame number");
    app.add_option("--seed", options.m_Seed, "another seed, another log (default 1)")
        ->type_name("N");
    app.add_option("--records", options.m_Records, "length of the log (default 10000)")
        ->type_name("N");
    app.add_option("--tasks", options.m_Tasks, "number of tasks (default 8)")->type_name("N");
    app.add_option("--extra-values", options.m_ExtraValues, "extra values per record (default 0)")
        ->type_name("N");
    app.add_flag("!--no-functions", options.m_Functions, "no calls of functions");
    app.add_flag("!--no-marks", options.m_Marks, "no source marks");
    app.add_flag("!--no-hardware", options.m_Hardware, "no hardware events");
    app.add_flag("--losses", options.m_Losses, "packets get lost");
}

ExitCode RunSimulate(const SimulatorOptions& options, const OutputOptions& output) {
    if (const std::string problem = options.Problem(); !problem.empty())
        throw Stop(ExitCode::kUsage, problem);
    const Overwrite overwrite = output.WhatToDoWithFiles();
    OutputFile log(output.m_Path, overwrite);
    std::optional<OutputFile> target;
    if (output.m_Path != "-")
        target.emplace(TargetFileBeside(WithoutPackingSuffix(output.m_Path)), overwrite);

    Simulator simulator(options);
    simulator.WriteLog([&](const char* bytes, std::size_t size) {
        log.Buffer().Put(std::string_view(bytes, size));
        return true;
    });
    std::ostringstream description;
    simulator.WriteTargetDescription(description);
    if (target) target->Buffer().Put(description.str());
    if (target) target->Commit();
    log.Commit();
    return ExitCode::kComplete;
}

}  // namespace vesk
