#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "cli/OutputFile.h"
#include "cli/TableWriter.h"
#include "database/TargetCapability.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace vesk {

struct FrameRange {
    std::int64_t m_First = 0;
    std::int64_t m_Last = 0;
};

// What is read, and how. Each group of options offers itself to a command; a value that means
// nothing ends the parsing with a text.
struct InputOptions {
    void OfferTo(CLI::App&);
    CLI::Option* OfferUnitTo(CLI::App&);
    void OfferRangeTo(CLI::App&);

    std::string m_Log;
    std::string m_Header;  // empty: the log has its own, or none
    std::string m_Target;  // empty: the one beside the log
    std::string m_Elf;
    std::optional<TargetCapability> m_Capability;  // in place of the target's
    int m_FeatureLevel = 4;
    std::int64_t m_UnpackLimitMB = 8192;
    bool m_Quiet = false;

    int m_UnitKB = 0;
    std::optional<std::int64_t> m_Pick;
    std::optional<FrameRange> m_PickFrames;
};

struct OutputOptions {
    void OfferTo(CLI::App&);

    Overwrite WhatToDoWithFiles() const { return m_Force ? Overwrite::kAllow : Overwrite::kRefuse; }

    std::string m_Path = "-";
    bool m_Force = false;
};

struct FilterOptions {
    void OfferTo(CLI::App&);
    void OfferTimesTo(CLI::App&);  // without names

    std::uint64_t m_From = 0;  // QBit
    std::uint64_t m_To = std::numeric_limits<std::uint64_t>::max();
    std::vector<std::string> m_Names;  // patterns as bytes of a log; none: every name
};

// A name to find, as bytes of a log: one of the three is given.
struct FindOptions {
    void OfferTo(CLI::App&);

    std::optional<std::string> m_Task;
    std::optional<std::string> m_Function;
    std::optional<std::string> m_Label;
    bool m_IsRegex = false;
};

struct Options {
    std::string m_File;  // of commands that read no log
    InputOptions m_Input;
    OutputOptions m_Output;
    FilterOptions m_Filter;
    FindOptions m_Find;
    TableFormat m_Format = TableFormat::kText;
};

std::optional<TableFormat> TableFormatByName(const std::string&);

// --format with all formats of a table, or with text and json alone.
void OfferTableFormats(CLI::App&, TableFormat& format);
void OfferDocumentFormats(CLI::App&, TableFormat& format);

}  // namespace vesk
