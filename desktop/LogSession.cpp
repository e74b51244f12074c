#include "desktop/LogSession.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "database/TargetFile.h"
#include "desktop/DesktopHost.h"
#include "desktop/Information.h"
#include "desktop/LogInput.h"
#include "desktop/UserState.h"
#include "log/CMcuNoHeaderDlg.h"
#include "log/McuJobList.h"
#include "platform/CFileDialog.h"
#include "platform/CMDIFrameWnd.h"
#include "platform/UserInterface.h"

namespace vesk {

namespace {

constexpr const char* kLogFilter =
    "Vesk log (*.bin)|*.bin|Packed log (*.bin.gz, *.bin.zst, *.bin.xz)|"
    "*.bin.gz;*.bin.zst;*.bin.xz|All files (*.*)|*.*||";
constexpr const char* kTargetFilter =
    "Target description (*.json)|*.json|Target load (*.elf)|*.elf|All files (*.*)|*.*||";
constexpr const char* kLayoutQuestion =
    "This log has no header of its own. How its records lie is told by the target's structure "
    "\"SA_LoggingNode_T\".\n\nPlease choose the target description or the target's ELF load, or "
    "cancel to read the log without.";

constexpr const char* kNoLayout =
    " has no header of its own. It is read without a target description, as if its records had no "
    "extra values; --target names a description.";

bool Exists(const std::string& path) {
    std::error_code ignored;
    return !path.empty() && std::filesystem::exists(path, ignored);
}

// One name for one file, however the user came to it.
std::string Canonical(const std::string& path) {
    std::error_code error;
    if (path.empty()) return path;
    const std::filesystem::path canonical = std::filesystem::weakly_canonical(path, error);
    return error ? path : canonical.string();
}

std::string FileName(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

// What is wrong with a file where the reader has no text for it.
std::string WhyUnreadable(const std::string& path) {
    std::error_code error;
    if (access(path.c_str(), R_OK) != 0) return ": " + std::string(std::strerror(errno));
    if (std::filesystem::is_directory(path, error)) return " is a folder.";
    constexpr std::uintmax_t kIdentifierSize = 8;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return !error && size < kIdentifierSize ? " is too short for a log." : " could not be read.";
}

// Whether a file holds records from its first byte on: nothing that the reader knows by name.
bool BeginsWithRecords(const std::string& path) {
    char start[8] = {};
    if (!std::ifstream(path, std::ios::binary).read(start, sizeof start)) return false;
    const std::string identifier(start, sizeof start);
    return identifier != "VESK_BIN" && identifier != "VESKBIN2" && identifier != "VESKBINV" &&
           identifier != "EMI_CONF";
}

bool AskForFile(const char* filter, std::string& path) {
    CFileDialog dialog(true, nullptr, nullptr, OFN_HIDEREADONLY | OFN_FILEMUSTEXIST, filter,
                       AfxGetMainWnd());
    if (dialog.DoModal() != IDOK) return false;
    path = dialog.GetPathName().Str();
    return true;
}

void Warn(const std::string& text) {
    AfxMessageBox(text.c_str(), MB_ICONEXCLAMATION);
}

}  // namespace

LogSession::LogSession(DesktopHost& host, UserState& state, Listener listener)
    : m_Host(host), m_State(state), m_Listener(std::move(listener)) {}

void LogSession::AskForLog() {
    LogFiles files;
    if (AskForFile(kLogFilter, files.m_Log)) Open(files);
}

void LogSession::AskForLogWithHeader() {
    CMcuNoHeaderDlg dialog(AfxGetMainWnd());
    if (dialog.DoModal() != IDOK) return;
    Open({dialog.m_RawFile.Str(), dialog.m_HeaderFile.Str()});
}

void LogSession::AskForTarget() {
    std::string path;
    if (!AskForFile(kTargetFilter, path) || !LoadTarget(Canonical(path))) return;
    if (IsOpen()) {
        m_State.m_Targets.Choose(m_Files.m_Log, m_Host.TargetPath());
        Open(LogFiles(m_Files));
    } else {
        m_State.m_Targets.m_Default = m_Host.TargetPath();
        m_Listener.m_Changed();
    }
}

bool LogSession::Open(const LogFiles& files, PartToRead part, const std::string& target) {
    if (LoadTarget(Canonical(target)))
        m_State.m_Targets.Choose(Canonical(files.m_Log), m_Host.TargetPath());
    return Open(files, part);
}

// While a read shows its progress the user's next file has to wait.
bool LogSession::Open(const LogFiles& given, PartToRead part) {
    if (m_IsOpening) return false;
    m_IsOpening = true;
    const bool shown = OpenUnguarded({Canonical(given.m_Log), Canonical(given.m_Header)}, part);
    m_IsOpening = false;
    m_Listener.m_Changed();
    return shown;
}

bool LogSession::OpenUnguarded(const LogFiles& files, PartToRead part) {
    if (!Exists(files.m_Log)) {
        Warn(files.m_Log + WhyUnreadable(files.m_Log));
        return false;
    }
    m_Files = {};
    LogInput input(files);
    if (!Unpack(input)) return false;
    TakeTargetOf(files);
    AskForLayout(input);
    return Read(input, part);
}

bool LogSession::OpenRecent(const LogFiles& files) {
    if (Exists(files.m_Log)) return Open(files);
    m_State.m_Recent.Remove(files);
    m_Listener.m_Changed();
    Warn(files.m_Log + " is no longer there. It was taken off the recent files.");
    return false;
}

void LogSession::Close() {
    m_Host.CloseFrames();
    FrameClosed();
}

void LogSession::FrameClosed() {
    m_Files = {};
    m_Listener.m_Changed();
}

void LogSession::ShowInformation() const {
    const std::string text =
        InformationText(m_Files, m_Host.TargetPath(), IsOpen() ? &m_Host.List() : nullptr);
    AfxGetMainWnd()->MessageBox(text, "Infomation", MB_OK | MB_ICONINFORMATION);
}

// A file that cannot be used changes nothing.
bool LogSession::LoadTarget(const std::string& path) {
    std::string error;
    if (m_Host.LoadTarget(path, error)) return true;
    Warn("The target description cannot be used: " + error);
    return false;
}

// The target of the log that was open before says nothing about this one.
void LogSession::TakeTargetOf(const LogFiles& files) {
    const std::string target = FindTarget(files);
    if (m_Host.HasLoaded(target)) return;
    m_Host.DropTarget();
    if (!target.empty()) LoadTarget(target);
}

// What the user chose, else what lies beside the log or its header, else what was chosen last.
std::string LogSession::FindTarget(const LogFiles& files) const {
    const std::optional<std::string> chosen = m_State.m_Targets.Of(files.m_Log);
    if (chosen && (chosen->empty() || Exists(*chosen))) return *chosen;
    if (chosen) m_Listener.m_Note("The target description " + *chosen + " is no longer there.");
    for (const std::string& path : {files.m_Log, files.m_Header}) {
        const std::string beside = TargetFileBeside(WithoutPackingSuffix(path));
        if (!path.empty() && Exists(beside)) return beside;
    }
    return Exists(m_State.m_Targets.m_Default) ? m_State.m_Targets.m_Default : "";
}

bool LogSession::Unpack(LogInput& input) {
    std::string text;
    const bool ready = input.Prepare(m_Listener.m_BeginRead(), text);
    m_Listener.m_EndRead();
    if (!text.empty()) Warn(text);
    return ready;
}

// Asked once for a log: that there is no description is remembered as well.
void LogSession::AskForLayout(const LogInput& input) {
    const std::string& log = input.Named().m_Log;
    if (!input.Named().m_Header.empty() || !BeginsWithRecords(input.Readable().m_Log)) return;
    if (m_Host.Target().FindFormat("SA_LoggingNode_T")) return;
    if (!m_Listener.m_CanAsk) return Warn(log + kNoLayout);
    if (m_State.m_Targets.Of(log)) return;
    AfxMessageBox(kLayoutQuestion, MB_ICONINFORMATION);
    std::string path;
    if (!AskForFile(kTargetFilter, path) || LoadTarget(Canonical(path)))
        m_State.m_Targets.Choose(log, m_Host.TargetPath());
}

bool LogSession::Read(const LogInput& input, PartToRead part) {
    const LogFiles& files = input.Named();
    std::string text;
    const bool complete = m_Host.Read(input, part, m_Listener.m_BeginRead(), text);
    m_Listener.m_EndRead();
    // What was decoded before an error is worth to be seen.
    const bool usable = complete || m_Host.List().Report().m_Outcome == ReadOutcome::kPartial;
    const bool shown = usable && m_Host.ShowTimeline(FileName(files.m_Log));
    if (shown) {
        m_Files = files;
        m_State.m_Recent.Add(files);
    }
    m_Listener.m_Changed();  // before the box, which the user may leave standing
    Explain(input, complete, text);
    return shown;
}

void LogSession::Explain(const LogInput& input, bool complete, std::string text) const {
    const bool cancelled = m_Host.List().Report().m_Outcome == ReadOutcome::kCancelled;
    if (text.empty() && !complete && !cancelled)
        text = input.Named().m_Log + WhyUnreadable(input.Readable().m_Log);
    if (!text.empty()) Warn(text);
}

}  // namespace vesk
