#include "cli/LogOpener.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "cli/Interrupt.h"
#include "database/ElfTargetLoader.h"
#include "database/JsonTargetLoader.h"
#include "database/TargetFile.h"
#include "log/HostValues.h"
#include "programs/InputFile.h"

namespace vesk {

namespace {

// Neither is ever destroyed: handing back the memory of millions of jobs takes longer than the
// end of the process, which does it anyway.
McuJobList& TheList() {
    static McuJobList* const list = new McuJobList;
    return *list;
}

TargetDatabase& TheDatabase() {
    static TargetDatabase* const database = new TargetDatabase;
    return *database;
}

bool Exists(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

// The description beside the log, else the one beside the file that its header comes from.
std::string FindTarget(const InputOptions& options) {
    if (!options.m_Target.empty()) return options.m_Target;
    for (const std::string& path : {options.m_Log, options.m_Header}) {
        std::string beside = TargetFileBeside(WithoutPackingSuffix(path));
        if (!path.empty() && path != "-" && Exists(beside)) return beside;
    }
    return {};
}

// What is wrong with a file where the reader has no text, or one that does not say enough.
std::string WhyUnreadable(const std::string& path) {
    std::error_code error;
    if (access(path.c_str(), R_OK) != 0) return std::string(": ") + std::strerror(errno);
    if (std::filesystem::is_directory(path, error)) return " is a directory";
    constexpr std::uintmax_t kIdentifierSize = 8;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return !error && size < kIdentifierSize ? " is too short for a log" : "";
}

// An unpacked file has a path that says nothing to the user.
void NameByOption(std::string& text, const std::string& path, const std::string& option) {
    const std::size_t at = path.empty() ? std::string::npos : text.rfind(path);
    if (at != std::string::npos) text.replace(at, path.size(), option);
}

}  // namespace

LogOpener::LogOpener(const InputOptions& options, Terminal& terminal)
    : m_Options(options), m_Terminal(terminal), m_List(TheList()) {}

ExitCode LogOpener::Read() {
    const auto readWith = [this](auto chooser) {
        const ExitCode code = Read(&chooser);
        if (!chooser.m_Error.empty()) m_Note = chooser.m_Error;
        return code;
    };
    if (m_Options.m_Pick) return readWith(UnitChooser(m_Options.m_UnitKB, *m_Options.m_Pick));
    if (!m_Options.m_PickFrames) return Read(nullptr);
    const FrameRange frames = *m_Options.m_PickFrames;
    return readWith(FrameChooser(m_Options.m_UnitKB, frames.m_First, frames.m_Last));
}

ExitCode LogOpener::Read(RangeChooser* chooser) {
    if (m_Options.m_Log == "-" && m_Options.m_Header == "-")
        throw Stop(ExitCode::kUsage, "standard input cannot be both log and header");
    InputFile log, header;
    m_List.SetRangeChooser(chooser);
    m_List.SetProgress([this](std::int64_t done, std::int64_t total) {
        m_Terminal.ShowProgress("reading", done, total);
        return !Interrupted();
    });
    if (LoadTarget() && Prepare(log, m_Options.m_Log) && Prepare(header, m_Options.m_Header))
        ReadPrepared(log.ReadablePath(), header.ReadablePath());
    m_List.SetRangeChooser(nullptr);
    m_List.SetProgress({});
    m_Terminal.HideProgress();
    if (!m_Ok) StopIfInterrupted();
    return Outcome();
}

bool LogOpener::Prepare(InputFile& file, const std::string& path) {
    const auto progress = [this](std::int64_t done) {
        m_Terminal.ShowProgress("unpacking", done, 0);
        return !Interrupted();
    };
    const std::int64_t limit = m_Options.m_UnpackLimitMB << 20;
    const InputFile::Outcome outcome = file.Prepare(path, limit, progress, m_Error);
    StopIfInterrupted();
    if (outcome == InputFile::Outcome::kCannotWrite) throw Stop(ExitCode::kCannotWrite, m_Error);
    if (outcome == InputFile::Outcome::kTooLarge) m_Error += "; --unpack-limit raises that";
    return outcome == InputFile::Outcome::kReady;
}

void LogOpener::ReadPrepared(const std::string& log, const std::string& header) {
    m_Ok = header.empty() ? m_List.ReadFile(log, m_Error)
                          : m_List.ReadFileWithAnotherHeader(header, log, m_Error);
    NameByOption(m_Error, header, m_Options.m_Header);
    NameByOption(m_Error, log, m_Options.m_Log);
    const std::string why = m_Ok ? "" : WhyUnreadable(log);
    if (!why.empty()) m_Note = InputName(m_Options.m_Log) + why;
}

void LogOpener::Explain() const {
    if (!m_Error.empty()) m_Terminal.Say(m_Error);
    if (m_Ok) return;
    if (!m_Note.empty()) m_Terminal.Say(m_Note);
    if (m_TargetPath.empty() && m_Error.find("database") != std::string::npos)
        m_Terminal.Say("no target description was found; --target or --elf names one");
}

bool LogOpener::LoadTarget() {
    TargetDatabase& database = TheDatabase();
    if (!LoadDatabase(database)) return false;
    if (m_Options.m_Capability) database.m_Capability = *m_Options.m_Capability;
    TargetDatabase::Select(&database);
    m_List.registerDBCallback(TargetDatabase::LookUpFormat, TargetDatabase::LookUpEnum);
    CurrentHostValues().m_Capability = database.m_Capability;
    CurrentHostValues().m_FeatureLevel = m_Options.m_FeatureLevel;
    return true;
}

bool LogOpener::LoadDatabase(TargetDatabase& database) {
    m_TargetPath = m_Options.m_Elf.empty() ? FindTarget(m_Options) : m_Options.m_Elf;
    if (m_TargetPath.empty()) return true;
    std::string error;
    const bool loaded = m_Options.m_Elf.empty() ? LoadTargetFromJson(m_TargetPath, database, error)
                                                : LoadTargetFromElf(m_TargetPath, database, error);
    if (!loaded) m_Error = "cannot use the target description: " + error;
    return loaded;
}

ExitCode LogOpener::Outcome() const {
    if (m_Ok) return ExitCode::kComplete;
    const bool partial = m_List.Report().m_Outcome == ReadOutcome::kPartial;
    return partial ? ExitCode::kPartial : ExitCode::kRefused;
}

}  // namespace vesk
