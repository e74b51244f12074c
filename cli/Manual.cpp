#include "cli/Manual.h"

#include <utility>

#include "cli/ExitCode.h"
#include "programs/ManPage.h"

namespace vesk {

namespace {

// A command that does something, and the words that call it.
struct Callable {
    std::string m_Words;
    const CommandShape* m_Command;
};

void Collect(const CommandShape& command, const std::string& words, std::vector<Callable>& all) {
    if (command.m_Commands.empty()) all.push_back({words, &command});
    for (const CommandShape& sub : command.m_Commands) Collect(sub, words + ' ' + sub.m_Name, all);
}

// An option that several commands have in common.
struct SharedOption {
    OptionShape m_Option;
    std::vector<std::string> m_Commands;
};

std::vector<SharedOption> OptionsOf(const std::vector<Callable>& all) {
    std::vector<SharedOption> options;
    for (const Callable& callable : all) {
        for (const OptionShape& option : callable.m_Command->m_Options) {
            auto known = options.begin();
            while (known != options.end() && known->m_Option != option) ++known;
            if (known == options.end()) known = options.insert(known, {option, {}});
            known->m_Commands.push_back(callable.m_Words.substr(callable.m_Words.find(' ') + 1));
        }
    }
    return options;
}

std::string Joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
    return text;
}

void AddCommands(ManPage& page, const std::vector<Callable>& all) {
    page.Section("COMMANDS");
    for (const auto& [words, command] : all) {
        std::string arguments;
        for (const OptionShape& argument : command->m_Arguments)
            arguments += (arguments.empty() ? "" : " ") +
                         (argument.m_Choices.empty() ? argument.m_Names[0] : argument.m_Value);
        page.Item(words, arguments, command->m_Help);
    }
}

void AddOptions(ManPage& page, const std::vector<Callable>& all) {
    page.Section("OPTIONS");
    for (const auto& [option, commands] : OptionsOf(all)) {
        const std::string where =
            commands.size() == all.size() ? "" : "\nTaken by: " + Joined(commands) + '.';
        page.Item(Joined(option.m_Names), option.m_Value, option.m_Help + '.' + where);
    }
}

void AddExitStatus(ManPage& page) {
    constexpr std::pair<ExitCode, const char*> kCodes[] = {
        {ExitCode::kComplete, "complete"},
        {ExitCode::kNothingMatched, "the read is complete, but there was nothing to list"},
        {ExitCode::kUsage, "the command line makes no sense"},
        {ExitCode::kRefused,
         "the log, its header, the target description, the chosen unit or another file was "
         "refused"},
        {ExitCode::kPartial, "an error ended the read, and what came before it was written"},
        {ExitCode::kCannotWrite, "the output cannot be written"},
        {ExitCode::kInterrupted, "interrupted"},
    };
    page.Section("EXIT STATUS");
    for (const auto& [code, meaning] : kCodes)
        page.Item(std::to_string(static_cast<int>(code)), "", meaning);
}

}  // namespace

std::string Manual(const CommandShape& program) {
    ManPage page("vesk", VESK_VERSION,
                 "reads and analyses execution logs of a modem's microcontroller");
    std::vector<Callable> all;
    Collect(program, "vesk", all);
    page.Synopsis("vesk", "COMMAND ARGUMENT... [OPTION]...");
    page.Section("DESCRIPTION");
    page.Paragraph(
        "Tells what is in a log, lists and exports it, and writes logs of a simulated target. The "
        "payload goes to standard output or to a file; messages and a progress bar go to standard "
        "error. A log may be packed by gzip, zstd or xz.");
    AddCommands(page, all);
    all.push_back({"vesk", &program});
    AddOptions(page, all);
    AddExitStatus(page);
    page.Section("EXAMPLES");
    page.Lines(
        "vesk info modem.bin\n"
        "vesk jobs modem.bin --from 10ms --to 20ms --name 'IRQ*'\n"
        "vesk jobs modem.bin.zst --format csv -o jobs.csv");
    page.Section("SEE ALSO");
    page.Paragraph("veskview(1)");
    return page.Text();
}

}  // namespace vesk
