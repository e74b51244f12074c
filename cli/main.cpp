#include <fcntl.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <functional>
#include <new>

#include "cli/DumpCommand.h"
#include "cli/ExportCommand.h"
#include "cli/FilterCommand.h"
#include "cli/FindCommand.h"
#include "cli/InfoCommand.h"
#include "cli/Interrupt.h"
#include "cli/ListCommands.h"
#include "cli/MarkersCommand.h"
#include "cli/SelfDescription.h"
#include "cli/SimulateCommand.h"
#include "cli/UnitsCommand.h"

namespace {

using vesk::ExitCode;
using vesk::Options;
using vesk::Terminal;

void OfferRange(CLI::App& app, Options& options) {
    options.m_Input.OfferRangeTo(app);
}

void OfferInfo(CLI::App& app, Options& options) {
    OfferRange(app, options);
    OfferDocumentFormats(app, options.m_Format);
}

void OfferList(CLI::App& app, Options& options) {
    OfferRange(app, options);
    options.m_Filter.OfferTo(app);
    OfferTableFormats(app, options.m_Format);
}

void OfferFind(CLI::App& app, Options& options) {
    OfferRange(app, options);
    options.m_Find.OfferTo(app);
    options.m_Filter.OfferTimesTo(app);
    OfferTableFormats(app, options.m_Format);
}

void OfferUnits(CLI::App& app, Options& options) {
    options.m_Input.OfferUnitTo(app)->required();
    OfferTableFormats(app, options.m_Format);
}

// A command that reads a log.
struct Command {
    const char* m_Name;
    const char* m_Help;
    void (*m_Offer)(CLI::App&, Options&);  // the options that not every command has
    ExitCode (*m_Run)(const Options&, Terminal&);
};

constexpr Command kCommands[] = {
    {"info", "what a log is and what is in it", OfferInfo, vesk::RunInfo},
    {"jobs", "list the tasks and interrupts that ran", OfferList, vesk::RunJobs},
    {"calls", "list function calls, from entry to exit", OfferList, vesk::RunCalls},
    {"segments", "list the uninterrupted pieces of functions", OfferList, vesk::RunSegments},
    {"marks", "list source marks", OfferList, vesk::RunMarks},
    {"hw", "list hardware events", OfferList, vesk::RunHardware},
    {"samples", "list the samples of the extra values", OfferList, vesk::RunSamples},
    {"losses", "list the losses of log data", OfferList, vesk::RunLosses},
    {"find", "find tasks, functions or source marks by name", OfferFind, vesk::RunFind},
    {"units", "list the units in which a log can be read", OfferUnits, vesk::RunUnits},
    {"dump", "write all that a read yields as one JSON document", OfferRange, vesk::RunDump},
};

// With 0, 1 or 2 closed, the next file opened would pass for a standard stream. What stands in
// cannot be used in the stream's direction, so that a write fails as it should.
void OccupyStandardStreams() {
    for (int descriptor = 0; descriptor <= 2; ++descriptor)
        if (fcntl(descriptor, F_GETFD) < 0)
            open("/dev/null", descriptor == 0 ? O_WRONLY : O_RDONLY);
}

using Action = std::function<ExitCode(Terminal&)>;

void OfferReadingCommands(CLI::App& app, Options& options, Action& chosen) {
    for (const Command& command : kCommands) {
        CLI::App* const sub = app.add_subcommand(command.m_Name, command.m_Help);
        options.m_Input.OfferTo(*sub);
        options.m_Output.OfferTo(*sub);
        command.m_Offer(*sub, options);
        sub->callback(
            [&] { chosen = [&](Terminal& terminal) { return command.m_Run(options, terminal); }; });
    }
}

void OfferExport(CLI::App& app, vesk::TextExport*& what, Options& options, Action& chosen) {
    CLI::App* const sub =
        app.add_subcommand("export", "write the log as one of the viewer's texts");
    OfferTextExport(*sub, what);
    options.m_Input.OfferTo(*sub);
    options.m_Output.OfferTo(*sub);
    OfferRange(*sub, options);
    sub->callback([&] {
        chosen = [&](Terminal& terminal) { return vesk::RunExport(*what, options, terminal); };
    });
}

void OfferMarkers(CLI::App& app, vesk::MarkerOptions& markers, Options& options, Action& chosen) {
    CLI::App* const sub = app.add_subcommand("markers", "list the markers of a file, or make one");
    markers.OfferTo(*sub);
    options.m_Output.OfferTo(*sub);
    sub->callback([&] {
        chosen = [&](Terminal& terminal) {
            return vesk::RunMarkers(markers, options.m_Output, terminal);
        };
    });
}

void OfferSimulate(CLI::App& app, vesk::SimulatorOptions& simulator, Options& options,
                   Action& chosen) {
    CLI::App* const sub = app.add_subcommand("simulate", "write the log of a simulated target");
    options.m_Output.OfferTo(*sub);
    sub->get_option("--output")->required();
    OfferSimulatorOptions(*sub, simulator);
    sub->callback([&] {
        chosen = [&](Terminal&) { return vesk::RunSimulate(simulator, options.m_Output); };
    });
}

void OfferFilter(CLI::App& app, Options& options, Action& chosen) {
    CLI::App* const sub =
        app.add_subcommand("filter", "list what a filter file of the viewer holds");
    sub->add_option("FILE", options.m_File, "the filter file; - is standard input")
        ->required()
        ->type_name("FILE");
    options.m_Output.OfferTo(*sub);
    OfferTableFormats(*sub, options.m_Format);
    sub->callback(
        [&] { chosen = [&](Terminal& terminal) { return vesk::RunFilter(options, terminal); }; });
}

ExitCode RunGuarded(const Action& action, bool quiet) {
    Terminal terminal;
    terminal.m_ShowsProgress = !quiet && isatty(STDERR_FILENO);
    const vesk::ScopedUserInterface use(terminal);
    try {
        return action(terminal);
    } catch (const vesk::Stop& stop) {
        terminal.Say(stop.what());
        return stop.m_Code;
    } catch (const std::bad_alloc&) {
        terminal.Say("out of memory");
        return ExitCode::kRefused;
    }
}

ExitCode Run(int count, char** arguments) {
    CLI::App app("Reads and analyses execution logs of a modem's microcontroller.", "vesk");
    app.require_subcommand(1);
    app.failure_message(CLI::FailureMessage::simple);
    app.set_version_flag("--version", std::string(VESK_VERSION));
    Options options;
    vesk::TextExport* what = nullptr;
    vesk::MarkerOptions markers;
    vesk::SimulatorOptions simulator;
    Action chosen;
    OfferReadingCommands(app, options, chosen);
    OfferExport(app, what, options, chosen);
    OfferMarkers(app, markers, options, chosen);
    OfferFilter(app, options, chosen);
    OfferSimulate(app, simulator, options, chosen);
    OfferSelfDescription(app, options.m_Output, chosen);
    try {
        app.parse(count, arguments);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? ExitCode::kComplete : ExitCode::kUsage;
    }
    return RunGuarded(chosen, options.m_Input.m_Quiet);
}

}  // namespace

int main(int count, char** arguments) {
    OccupyStandardStreams();
    std::signal(SIGPIPE, SIG_IGN);
    vesk::WatchForInterrupts();
    return static_cast<int>(Run(count, arguments));
}
