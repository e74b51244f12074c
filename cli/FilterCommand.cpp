#include "cli/FilterCommand.h"

#include "host/McuColorMap.h"
#include "platform/Text.h"
#include "programs/InputFile.h"
#include "timeline/FilterFile.h"

namespace vesk {

namespace {

std::string ColorText(COLORREF color) {
    constexpr COLORREF kNoColor = 0xFFFFFF;
    if (color == kNoColor) return "none";
    return FormatText("#%02X%02X%02X", GetRValue(color), GetGValue(color), GetBValue(color));
}

void WriteRecords(const FilterFile& file, TableWriter& table) {
    constexpr const char* kNames[FilterFile::kSections] = {"tasks", "functions", "values",
                                                           "labels"};
    for (std::size_t i = 0; i < FilterFile::kSections; ++i) {
        const bool isName = i == FilterFile::kTasks || i == FilterFile::kFunctions;
        for (const FilterRecord& record : file.m_Sections[i]) {
            table.Word(kNames[i]).Number(record.m_Key).Number(record.m_Checked);
            table.Word(ColorText(record.m_Color));
            table.Name(isName ? NameEnd(record.m_Key) : "").EndRow();
        }
    }
}

}  // namespace

ExitCode RunFilter(const Options& options, Terminal& terminal) {
    OutputFile out(options.m_Output.m_Path, options.m_Output.WhatToDoWithFiles());
    FilterFile file;
    std::string error;
    if (!file.Read(options.m_File == "-" ? "/dev/stdin" : options.m_File, error)) {
        terminal.Say(InputName(options.m_File) + ": " + error);
        return ExitCode::kRefused;
    }
    TableWriter table(out.Buffer(), options.m_Format,
                      {{"section", 9}, {"key"}, {"checked", 7}, {"color", 7}, {"name"}});
    WriteRecords(file, table);
    table.Finish();
    out.Commit();
    if (file.m_CutOff) {
        terminal.Say(InputName(options.m_File) + ": the file ends early");
        return ExitCode::kPartial;
    }
    return table.Rows() == 0 ? ExitCode::kNothingMatched : ExitCode::kComplete;
}

}  // namespace vesk
