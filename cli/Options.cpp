#include "cli/Options.h"

#include <charconv>

#include "cli/OptionParsing.h"
#include "cli/TextEncoding.h"
#include "log/TimeText.h"

namespace vesk {

namespace {

template <class Integer>
bool ParseInteger(std::string_view text, Integer& number, int base = 10) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, base);
    return error == std::errc() && stop == end;
}

std::optional<FrameRange> ParseFrames(const std::string& text) {
    const std::size_t colon = text.find(':');
    FrameRange range;
    if (colon == std::string::npos) return {};
    const std::string_view first(text.data(), colon);
    if (!ParseInteger(first, range.m_First)) return {};
    if (!ParseInteger(std::string_view(text).substr(colon + 1), range.m_Last)) return {};
    if (range.m_Last < range.m_First) return {};
    return range;
}

std::optional<TargetCapability> ParseCapability(const std::string& text) {
    TargetCapability capability;
    if (text.size() != 2 * TargetCapability::kSize) return {};
    for (std::size_t i = 0; i < TargetCapability::kSize; ++i)
        if (!ParseInteger(std::string_view(text).substr(2 * i, 2), capability.m_Bytes[i], 16))
            return {};
    return capability;
}

std::optional<TableFormat> DocumentFormatByName(const std::string& name) {
    if (name != "text" && name != "json") return {};
    return TableFormatByName(name);
}

}  // namespace

void InputOptions::OfferTo(CLI::App& app) {
    app.add_option("LOG", m_Log, "the log; - is standard input")->required()->type_name("FILE");
    app.add_option("--header", m_Header, "take the header from this file, the records from LOG")
        ->type_name("FILE");
    CLI::Option* const target =
        app.add_option("--target", m_Target,
                       "target description (default: NAME.target.json beside the log)")
            ->type_name("FILE");
    app.add_option("--elf", m_Elf, "take structures and enumerations from the target's ELF file")
        ->excludes(target)
        ->type_name("FILE");
    OfferParsed(app, "--capability", m_Capability, ParseCapability,
                "what the target can do: 40 bytes as 80 hexadecimal digits")
        ->type_name("HEX");
    app.add_option("--feature-level", m_FeatureLevel, "what the reader may rely on (default 4)")
        ->type_name("N");
    app.add_option("--unpack-limit", m_UnpackLimitMB,
                   "most MB that a packed log may unpack to (default 8192)")
        ->check(CLI::Range(std::int64_t{1}, std::int64_t{1} << 40))
        ->type_name("MB");
    app.add_flag("-q,--quiet", m_Quiet, "no progress bar");
}

CLI::Option* InputOptions::OfferUnitTo(CLI::App& app) {
    return app.add_option("--unit", m_UnitKB, "size of a unit of the log in KB")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()))
        ->type_name("KB");
}

void InputOptions::OfferRangeTo(CLI::App& app) {
    CLI::Option* const unit = OfferUnitTo(app);
    CLI::Option* const pick = app.add_option("--pick", m_Pick, "read this unit only, from 0")
                                  ->needs(unit)
                                  ->check(CLI::NonNegativeNumber)
                                  ->type_name("N");
    OfferParsed(app, "--pick-frames", m_PickFrames, ParseFrames,
                "A:B, read the units with the frame numbers from A to B")
        ->needs(unit)
        ->excludes(pick)
        ->type_name("FRAMES");
}

void OutputOptions::OfferTo(CLI::App& app) {
    app.add_option("-o,--output", m_Path, "write to this file (default -: standard output)")
        ->type_name("FILE");
    app.add_flag("--force", m_Force, "replace the output file if it exists");
}

void FilterOptions::OfferTimesTo(CLI::App& app) {
    OfferParsed(app, "--from", m_From, ParseTime,
                "leave out what ends before; QBit, or with us, ms or s")
        ->type_name("TIME");
    OfferParsed(app, "--to", m_To, ParseTime, "leave out what starts at this time or later")
        ->type_name("TIME");
}

void FilterOptions::OfferTo(CLI::App& app) {
    OfferTimesTo(app);
    app.add_option_function<std::vector<std::string>>(
           "--name",
           [this](const std::vector<std::string>& names) {
               for (const std::string& name : names) m_Names.push_back(Utf8ToLatin1(name));
           },
           "only this name, * and ? stand for any text and character; may be given again")
        ->allow_extra_args(false)
        ->type_name("PATTERN");
}

void FindOptions::OfferTo(CLI::App& app) {
    CLI::Option_group* const what = app.add_option_group("what is found");
    const auto offer = [&](const char* option, std::optional<std::string>& name, const char* help) {
        what->add_option_function<std::string>(
                option, [&name](const std::string& text) { name = Utf8ToLatin1(text); }, help)
            ->type_name("NAME");
    };
    offer("--task", m_Task, "tasks and interrupts of this name");
    offer("--function", m_Function, "calls of the function of this name");
    offer("--label", m_Label, "source marks of this name");
    what->require_option(1);
    app.add_flag("--regex", m_IsRegex, "the name is a regular expression, for any part of a name");
}

std::optional<TableFormat> TableFormatByName(const std::string& name) {
    if (name == "text") return TableFormat::kText;
    if (name == "csv") return TableFormat::kCsv;
    if (name == "json") return TableFormat::kJson;
    if (name == "jsonl") return TableFormat::kJsonLines;
    return {};
}

void OfferTableFormats(CLI::App& app, TableFormat& format) {
    OfferParsed(app, "--format", format, TableFormatByName, "text (default), csv, json or jsonl")
        ->type_name("text|csv|json|jsonl");
}

void OfferDocumentFormats(CLI::App& app, TableFormat& format) {
    OfferParsed(app, "--format", format, DocumentFormatByName, "text (default) or json")
        ->type_name("text|json");
}

}  // namespace vesk
