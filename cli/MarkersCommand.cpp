#include "cli/MarkersCommand.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>

#include "cli/OptionParsing.h"
#include "log/TimeText.h"
#include "timeline/MarkerFile.h"

namespace vesk {

namespace {

using Marker = std::pair<std::int32_t, std::uint64_t>;

// A number and a time with the separator between them.
std::optional<Marker> ParseMarker(std::string_view text, char separator) {
    const char* const end = text.data() + text.size();
    Marker marker;
    const auto [stop, error] = std::from_chars(text.data(), end, marker.first);
    if (error != std::errc() || stop == end || *stop != separator) return {};
    const auto time = ParseTime({stop + 1, static_cast<std::size_t>(end - stop - 1)});
    if (!time) return {};
    marker.second = *time;
    return marker;
}

std::optional<MarkerOptions::Format> ParseFormat(const std::string& text) {
    if (text == "slam") return MarkerOptions::Format{true};
    const std::optional<TableFormat> table = TableFormatByName(text);
    if (!table) return {};
    return MarkerOptions::Format{false, *table};
}

std::string ReadablePath(const std::string& path) {
    return path == "-" ? "/dev/stdin" : path;
}

[[noreturn]] void Refuse(const std::string& text) {
    throw Stop(ExitCode::kRefused, text);
}

bool IsHeading(const std::string& line, int number) {
    return number == 1 && line.find_first_of("-0123456789") != 0;
}

void TakeCsv(const std::string& path, McuMarkerMap& markers) {
    std::ifstream file(ReadablePath(path), std::ios::binary);
    file.peek();  // a folder opens, too
    if (!file.is_open() || file.bad()) Refuse("cannot read " + path + ": " + std::strerror(errno));
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.ends_with('\r')) line.pop_back();
        if (IsHeading(line, ++number) || line.empty()) continue;
        const std::optional<Marker> marker = ParseMarker(line, ',');
        if (!marker)
            Refuse(path + ", line " + std::to_string(number) + ": cannot use \"" + line + "\"");
        markers[marker->first] = marker->second;
    }
}

ExitCode TakeAll(const MarkerOptions& options, Terminal& terminal, McuMarkerMap& markers) {
    if (options.m_File.empty() && options.m_Csv.empty() && options.m_Set.empty())
        throw Stop(ExitCode::kUsage, "FILE, --csv or --set is required");
    std::string error;
    if (!options.m_File.empty() && !ReadMarkerFile(ReadablePath(options.m_File), markers, error))
        Refuse(error);
    if (!error.empty()) terminal.Say(error);
    if (!options.m_Csv.empty()) TakeCsv(options.m_Csv, markers);
    for (const auto& [key, time] : options.m_Set) markers[key] = time;
    return error.empty() ? ExitCode::kComplete : ExitCode::kPartial;
}

void WriteTable(const McuMarkerMap& markers, TableFormat format, OutputBuffer& out) {
    TableWriter table(out, format,
                      {{"marker", 6}, {"time"}, {"time/ms", 12, Column::Audience::kPeople}});
    for (const auto& [key, time] : markers)
        table.Number(key).Number(time).Milliseconds(time).EndRow();
    table.Finish();
}

}  // namespace

void MarkerOptions::OfferTo(CLI::App& app) {
    app.add_option("FILE", m_File, "a marker file to begin with; - is standard input")
        ->type_name("FILE");
    app.add_option("--csv", m_Csv, "take markers from lines of marker,time; - is standard input")
        ->type_name("FILE");
    app.add_option_function<std::vector<std::string>>(
           "--set",
           [this](const std::vector<std::string>& texts) {
               for (const std::string& text : texts) {
                   const std::optional<Marker> marker = ParseMarker(text, '=');
                   if (!marker) throw CLI::ValidationError("--set", "cannot use \"" + text + "\"");
                   m_Set.push_back(*marker);
               }
           },
           "N=T, set marker N to a time: QBit, or with us, ms or s; may be given again")
        ->allow_extra_args(false)
        ->type_name("N=T");
    OfferParsed(app, "--format", m_Format, ParseFormat,
                "text, csv, json, jsonl or slam, a marker file (default: slam if the output's name "
                "ends in .slam, else text)")
        ->type_name("text|csv|json|jsonl|slam");
}

ExitCode RunMarkers(const MarkerOptions& options, const OutputOptions& output, Terminal& terminal) {
    McuMarkerMap markers;
    ExitCode code = TakeAll(options, terminal, markers);
    const bool isNamedSo = output.m_Path.ends_with(".slam");
    const auto format = options.m_Format.value_or(MarkerOptions::Format{isNamedSo});
    OutputFile out(output.m_Path, output.WhatToDoWithFiles());
    if (format.m_IsMarkerFile)
        out.Buffer().Put(MarkersToBytes(markers));
    else
        WriteTable(markers, format.m_Table, out.Buffer());
    out.Commit();
    const bool nothing = markers.empty() && !format.m_IsMarkerFile;
    return nothing && code == ExitCode::kComplete ? ExitCode::kNothingMatched : code;
}

}  // namespace vesk
