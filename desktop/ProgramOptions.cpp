#include "desktop/ProgramOptions.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace vesk {

namespace {

// Options of the toolkit that have a value as their next argument.
constexpr std::array<std::string_view, 4> kToolkitOptions = {"-platform", "-display", "-geometry",
                                                             "-session"};

bool IsToolkitOption(std::string_view argument) {
    if (argument.starts_with("--")) argument.remove_prefix(1);
    return std::find(kToolkitOptions.begin(), kToolkitOptions.end(), argument) !=
           kToolkitOptions.end();
}

// Arguments from left to right.
class ArgumentReader {
public:
    ArgumentReader(int count, const char* const* arguments, ProgramOptions& options,
                   std::string& error)
        : m_Count(count), m_Arguments(arguments), m_Options(options), m_Error(error) {}

    bool ReadAll() {
        while (++m_At < m_Count)
            if (!Read(m_Arguments[m_At])) return false;
        return true;
    }

private:
    bool Read(const std::string& argument) {
        if (m_OnlyFiles || argument.empty() || argument[0] != '-') return TakeLog(argument);
        if (argument == "--") return m_OnlyFiles = true;
        if (argument == "-h" || argument == "--help") return m_Options.m_Help = true;
        if (argument == "--version") return m_Options.m_Version = true;
        if (argument == "--whole") return m_Options.m_Whole = true;
        if (argument.starts_with("--target=")) return TakeTarget(argument.substr(9));
        if (argument != "--target" && !IsToolkitOption(argument))
            return Refuse("unknown option: " + argument);
        if (++m_At >= m_Count) return Refuse(argument + " needs a value");
        return argument != "--target" || TakeTarget(m_Arguments[m_At]);
    }

    bool TakeLog(const std::string& path) {
        if (path.empty()) return Refuse("the name of the log is empty");
        if (!m_Options.m_Log.empty()) return Refuse("one log at a time: " + path);
        m_Options.m_Log = path;
        return true;
    }

    bool TakeTarget(const std::string& path) {
        if (path.empty()) return Refuse("--target needs a value");
        m_Options.m_Target = path;
        return true;
    }

    bool Refuse(const std::string& text) {
        m_Error = text;
        return false;
    }

    int m_Count;
    const char* const* m_Arguments;
    ProgramOptions& m_Options;
    std::string& m_Error;
    int m_At = 0;
    bool m_OnlyFiles = false;
};

}  // namespace

const char* const kProgramHelp =
    "Usage: veskview [OPTIONS] [LOG]\n"
    "Shows the execution log of a modem's microcontroller.\n"
    "\n"
    "  --target FILE  target description (JSON) or the target's ELF load; without it the one\n"
    "                 that was chosen for the log before, or NAME.target.json beside NAME.bin\n"
    "  --whole        read the whole log without asking for the part\n"
    "  -h, --help     this text\n"
    "  --version      the program's version\n";

bool ParseProgramOptions(int count, const char* const* arguments, ProgramOptions& options,
                         std::string& error) {
    return ArgumentReader(count, arguments, options, error).ReadAll();
}

}  // namespace vesk
