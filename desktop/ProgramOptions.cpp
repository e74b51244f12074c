#include "desktop/ProgramOptions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include "desktop/ViewPicture.h"

namespace vesk {

namespace {

constexpr int kLeastSize = 200, kGreatestSize = 16384;
constexpr double kLeastScale = 0.5, kGreatestScale = 8.0;

// Options of the toolkit that have a value as their next argument.
constexpr std::array<std::string_view, 4> kToolkitOptions = {"-platform", "-display", "-geometry",
                                                             "-session"};

bool IsToolkitOption(std::string_view argument) {
    if (argument.starts_with("--")) argument.remove_prefix(1);
    return std::find(kToolkitOptions.begin(), kToolkitOptions.end(), argument) !=
           kToolkitOptions.end();
}

// The whole text as a number of that kind.
template <class Number>
bool ToNumber(std::string_view text, Number& number) {
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && last == end;
}

// Two numbers with a sign between them.
template <class Number>
bool ToPair(std::string_view text, char sign, Number& first, Number& second) {
    const std::size_t at = text.find(sign);
    return at != std::string_view::npos && ToNumber(text.substr(0, at), first) &&
           ToNumber(text.substr(at + 1), second);
}

bool TakePicture(ProgramOptions& options, const std::string& value) {
    options.m_Render.m_Path = value;
    return IsPictureName(value);
}

bool TakeTarget(ProgramOptions& options, const std::string& value) {
    options.m_Target = value;
    return !value.empty();
}

bool TakeSize(ProgramOptions& options, const std::string& value) {
    CSize& size = options.m_Render.m_Size;
    return ToPair(value, 'x', size.cx, size.cy) && std::min(size.cx, size.cy) >= kLeastSize &&
           std::max(size.cx, size.cy) <= kGreatestSize;
}

bool TakeScale(ProgramOptions& options, const std::string& value) {
    double& scale = options.m_Render.m_Scale;
    return ToNumber(value, scale) && scale >= kLeastScale && scale <= kGreatestScale;
}

bool TakeOutlook(ProgramOptions& options, const std::string& value) {
    options.m_Render.m_Outlook = value == "pure" ? OUTLOOK_PURE : OUTLOOK_RELATIVE;
    return value == "pure" || value == "relative";
}

bool TakeUnit(ProgramOptions& options, const std::string& value) {
    constexpr std::array<std::string_view, 3> kUnits = {"qbit", "time", "count"};
    constexpr TIMEUNITTYPE kTypes[] = {TIMEUNIT_CLOCK, TIMEUNIT_TIME, TIMEUNIT_COUNT};
    const auto found = std::find(kUnits.begin(), kUnits.end(), value);
    if (found == kUnits.end()) return false;
    options.m_Render.m_Unit = kTypes[found - kUnits.begin()];
    return true;
}

bool TakeRange(ProgramOptions& options, const std::string& value) {
    std::uint64_t from = 0, to = 0;
    if (!ToPair(value, ':', from, to) || from >= to) return false;
    options.m_Render.m_Range.emplace(from, to);
    return true;
}

struct ValueOption {
    std::string_view m_Name;
    bool (*m_Take)(ProgramOptions&, const std::string& value);
    const char* m_Needs;  // what a value has to be
    bool m_IsRender;
};

constexpr ValueOption kValueOptions[] = {
    {"--target", TakeTarget, "a value", false},
    {"--render", TakePicture, "a name that ends in .png, .svg or .pdf", false},
    {"--size", TakeSize, "WIDTHxHEIGHT, each from 200 to 16384", true},
    {"--outlook", TakeOutlook, "\"pure\" or \"relative\"", true},
    {"--unit", TakeUnit, "\"qbit\", \"time\" or \"count\"", true},
    {"--range", TakeRange, "FROM:TO in QBit", true},
    {"--scale", TakeScale, "a number from 0.5 to 8", true},
};

// Arguments from left to right.
class ArgumentReader {
public:
    ArgumentReader(int count, const char* const* arguments, ProgramOptions& options,
                   std::string& error)
        : m_Count(count), m_Arguments(arguments), m_Options(options), m_Error(error) {}

    bool ReadAll() {
        while (++m_At < m_Count)
            if (!Read(m_Arguments[m_At])) return false;
        if (m_Options.m_Help || m_Options.m_Version) return true;
        const bool renders = !m_Options.m_Render.m_Path.empty();
        if (renders && m_Options.m_Log.empty()) return Refuse("--render needs a log");
        return renders || m_RenderOption.empty() || Refuse(m_RenderOption + " goes with --render");
    }

private:
    bool Read(const std::string& argument) {
        if (m_OnlyFiles || argument.empty() || argument[0] != '-') return TakeLog(argument);
        if (argument == "--") return m_OnlyFiles = true;
        if (argument == "-h" || argument == "--help") return m_Options.m_Help = true;
        if (argument == "--version") return m_Options.m_Version = true;
        if (argument == "--whole") return m_Options.m_Whole = true;
        if (argument == "--force") {
            m_RenderOption = argument;
            return m_Options.m_Render.m_Force = true;
        }
        return ReadValueOption(argument);
    }

    bool ReadValueOption(const std::string& argument) {
        const std::size_t sign = argument.find('=');
        const std::string name = argument.substr(0, sign);
        const auto option =
            std::find_if(std::begin(kValueOptions), std::end(kValueOptions),
                         [&](const ValueOption& known) { return known.m_Name == name; });
        const bool isKnown = option != std::end(kValueOptions);
        if (!isKnown && !IsToolkitOption(argument)) return Refuse("unknown option: " + argument);
        const bool isNext = !isKnown || sign == std::string::npos;
        if (isNext && ++m_At >= m_Count) return Refuse(argument + " needs a value");
        if (!isKnown) return true;
        if (option->m_IsRender) m_RenderOption = name;
        const std::string value = isNext ? m_Arguments[m_At] : argument.substr(sign + 1);
        return option->m_Take(m_Options, value) || Refuse(name + " needs " + option->m_Needs);
    }

    bool TakeLog(const std::string& path) {
        if (path.empty()) return Refuse("the name of the log is empty");
        if (!m_Options.m_Log.empty()) return Refuse("one log at a time: " + path);
        m_Options.m_Log = path;
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
    std::string m_RenderOption;  // one that says how a picture is to be
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
    "  --version      the program's version\n"
    "\n"
    "Without a display, a picture of the log's timeline:\n"
    "\n"
    "  --render OUT   write the picture to OUT (.png, .svg or .pdf), and end\n"
    "  --size WxH     its size in pixels, 1280x720\n"
    "  --scale S      pixels of a .png per pixel of the timeline, 1\n"
    "  --outlook X    \"pure\": all jobs on one strip, or \"relative\": a lane for each name\n"
    "  --unit X       what the time axis shows: \"qbit\", \"time\", or \"count\" of the target's "
    "clock\n"
    "  --range A:B    the span shown, in QBit; without it the whole log\n"
    "  --force        replace OUT if it is there\n"
    "\n"
    "Exit status: 0, 1 if the log or the picture failed, 2 for arguments that mean nothing.\n";

bool ParseProgramOptions(int count, const char* const* arguments, ProgramOptions& options,
                         std::string& error) {
    return ArgumentReader(count, arguments, options, error).ReadAll();
}

}  // namespace vesk
