#include "desktop/ProgramOptions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <sstream>
#include <string_view>

#include "desktop/ViewPicture.h"
#include "programs/ManPage.h"

namespace vesk {

namespace {

constexpr const char* kNeedsValue = " needs a value";
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

bool TakeWhole(ProgramOptions& options, const std::string&) {
    return options.m_Whole = true;
}

bool TakeForce(ProgramOptions& options, const std::string&) {
    return options.m_Render.m_Force = true;
}

template <ProgramText kText>
bool TakeText(ProgramOptions& options, const std::string&) {
    options.m_Text = kText;
    return true;
}

// An option as it is parsed and as it is told. Those with a value have it behind "=" or as their
// next argument.
struct ProgramOption {
    std::string_view m_Name;
    const char* m_Value;  // what stands for the value; null: it has none
    bool (*m_Take)(ProgramOptions&, const std::string& value);
    const char* m_Needs;  // what a value has to be
    const char* m_Help;
    bool m_IsRender = false;
};

constexpr ProgramOption kOptions[] = {
    {"--target", "FILE", TakeTarget, "a value",
     "target description (JSON) or the target's ELF load; without it the one that was chosen for "
     "the log before, or NAME.target.json beside NAME.bin"},
    {"--whole", nullptr, TakeWhole, "", "read the whole log without asking for the part"},
    {"--keys", nullptr, TakeText<ProgramText::kKeys>, "", "print a sheet of all keys"},
    {"--man", nullptr, TakeText<ProgramText::kManual>, "", "print the manual page"},
    {"--help", nullptr, TakeText<ProgramText::kHelp>, "", "print this text; also -h"},
    {"--version", nullptr, TakeText<ProgramText::kVersion>, "", "print the program's version"},
    {"--render", "OUT", TakePicture, "a name that ends in .png, .svg or .pdf",
     "write the picture to OUT (.png, .svg or .pdf), and end", true},
    {"--size", "WxH", TakeSize, "WIDTHxHEIGHT, each from 200 to 16384",
     "its size in pixels, 1280x720", true},
    {"--scale", "S", TakeScale, "a number from 0.5 to 8",
     "pixels of a .png per pixel of the timeline, 1", true},
    {"--outlook", "X", TakeOutlook, "\"pure\" or \"relative\"",
     "\"pure\": all jobs on one strip, or \"relative\": a lane for each name", true},
    {"--unit", "X", TakeUnit, "\"qbit\", \"time\" or \"count\"",
     "what the time axis shows: \"qbit\", \"time\", or \"count\" of the target's clock", true},
    {"--range", "A:B", TakeRange, "FROM:TO in QBit",
     "the span shown, in QBit; without it the whole log", true},
    {"--force", nullptr, TakeForce, "", "replace OUT if it is there", true},
};

const ProgramOption* FindOption(std::string_view name) {
    const auto found =
        std::find_if(std::begin(kOptions), std::end(kOptions),
                     [&](const ProgramOption& option) { return option.m_Name == name; });
    return found == std::end(kOptions) ? nullptr : found;
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
        if (m_Options.m_Text != ProgramText::kNone) return true;
        const bool renders = !m_Options.m_Render.m_Path.empty();
        if (renders && m_Options.m_Log.empty()) return Refuse("--render needs a log");
        return renders || m_RenderOption.empty() || Refuse(m_RenderOption + " goes with --render");
    }

private:
    bool Read(const std::string& argument) {
        if (m_OnlyFiles || argument.empty() || argument[0] != '-') return TakeLog(argument);
        if (argument == "--") return m_OnlyFiles = true;
        if (argument == "-h") return Read("--help");
        if (IsToolkitOption(argument)) return ++m_At < m_Count || Refuse(argument + kNeedsValue);
        return ReadOption(argument);
    }

    bool ReadOption(const std::string& argument) {
        const std::size_t sign = argument.find('=');
        const ProgramOption* const option = FindOption(std::string_view(argument).substr(0, sign));
        const bool hasSign = sign != std::string::npos;
        if (!option || (hasSign && !option->m_Value)) return Refuse("unknown option: " + argument);
        const std::string name(option->m_Name);
        const bool isNext = option->m_Value && !hasSign;
        if (isNext && ++m_At >= m_Count) return Refuse(argument + kNeedsValue);
        if (option->m_IsRender) m_RenderOption = name;
        std::string value;
        if (isNext) value = m_Arguments[m_At];
        if (hasSign) value = argument.substr(sign + 1);
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

constexpr const char* kSummary = "Shows the execution log of a modem's microcontroller.";
constexpr const char* kRenderTitle = "Without a display, a picture of the log's timeline:";

// A text in lines of at most 80 characters, all but the first moved in.
std::string Wrapped(const std::string& text, std::size_t indent) {
    constexpr std::size_t kWidth = 80;
    std::string wrapped;
    std::size_t column = indent;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const bool fits = column + word.size() < kWidth;
        if (!wrapped.empty()) wrapped += fits ? " " : '\n' + std::string(indent, ' ');
        if (!fits) column = indent;
        wrapped += word;
        column += word.size() + 1;
    }
    return wrapped;
}

std::string OptionsText(bool isRender) {
    constexpr std::size_t kIndent = 17;
    std::string text;
    for (const ProgramOption& option : kOptions) {
        if (option.m_IsRender != isRender) continue;
        std::string line = "  " + std::string(option.m_Name);
        if (option.m_Value) line += std::string(" ") + option.m_Value;
        line.resize(std::max(line.size() + 1, kIndent), ' ');
        text += line + Wrapped(option.m_Help, kIndent) + '\n';
    }
    return text;
}

void AddOptions(ManPage& page, bool isRender) {
    for (const ProgramOption& option : kOptions)
        if (option.m_IsRender == isRender)
            page.Item(std::string(option.m_Name), option.m_Value ? option.m_Value : "",
                      option.m_Help + std::string("."));
}

}  // namespace

bool ParseProgramOptions(int count, const char* const* arguments, ProgramOptions& options,
                         std::string& error) {
    return ArgumentReader(count, arguments, options, error).ReadAll();
}

std::string ProgramHelp() {
    return std::string("Usage: veskview [OPTIONS] [LOG]\n") + kSummary + "\n\n" +
           OptionsText(false) + '\n' + kRenderTitle + "\n\n" + OptionsText(true) +
           "\nExit status: 0, 1 if the log or the picture failed, 2 for arguments that mean "
           "nothing.\n";
}

std::string ProgramManual() {
    ManPage page("veskview", VESK_VERSION, "shows execution logs of a modem's microcontroller");
    page.Synopsis("veskview", "[OPTION]... [LOG]");
    page.Section("DESCRIPTION");
    page.Paragraph(
        "Opens a log, whole or in part, and shows its timeline: which task or interrupt held the "
        "processor and when, the functions within, source marks, hardware events and the curves of "
        "extra values. The log may be packed by gzip, zstd or xz.");
    page.Section("OPTIONS");
    AddOptions(page, false);
    page.Paragraph(kRenderTitle);
    AddOptions(page, true);
    page.Section("EXIT STATUS");
    page.Item("0", "", "all went well");
    page.Item("1", "", "no display can be opened, or the log or the picture failed");
    page.Item("2", "", "the arguments mean nothing");
    page.Section("FILES");
    page.Item(
        "$XDG_STATE_HOME/vesk/veskview.json", "",
        "what the viewer remembers (~/.local/state/vesk/veskview.json without that variable)");
    page.Section("SEE ALSO");
    page.Paragraph("vesk(1)");
    return page.Text();
}

}  // namespace vesk
