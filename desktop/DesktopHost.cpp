#include "desktop/DesktopHost.h"

#include <utility>

#include "database/TargetFile.h"
#include "desktop/LogInput.h"
#include "host/CMcuChildFrame.h"
#include "host/LibraryEntry.h"
#include "host/VESKUIDoc.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"
#include "log/SplitDialogChooser.h"
#include "platform/CMDIFrameWnd.h"
#include "platform/CMultiDocTemplate.h"
#include "resources/VeskResources.h"
#include "timeline/CMcuView.h"

namespace vesk {

namespace {

constexpr unsigned kResourceId = 128;  // menu and accelerators of the library's frames
constexpr int kTimelineWindowKey = 9;

CMultiDocTemplate* TimelineTemplate() {
    CMultiDocTemplate*& made = vesk_dll_shared_data.m_pMcuTemplate;
    if (!made)
        made = new CMultiDocTemplate(
            vesk_dll_shared_data.m_ResID, RuntimeClass<VESKUIDoc>("VESKUIDoc"),
            RuntimeClass<CMcuChildFrame>("CMcuChildFrame"), RuntimeClass<CMcuView>("CMcuView"));
    return made;
}

// An unpacked file has a path that says nothing to the user.
class NamedSplitChooser : public SplitDialogChooser {
public:
    explicit NamedSplitChooser(const std::string& name) : m_Name(name) {}
    RangeChoice Choose(const RangeRequest& asked) override {
        return SplitDialogChooser::Choose({m_Name, asked.m_Stream, asked.m_Info, asked.m_SizeKB,
                                           asked.m_FileStart, asked.m_FileEnd, asked.m_UnitText,
                                           asked.m_SplitMode, asked.m_WHCPLength});
    }

private:
    const std::string& m_Name;
};

bool IsPlaced(int windowKey) {
    const VESK_DLL_Shared_Data_T& shared = vesk_dll_shared_data;
    const auto tab = static_cast<std::size_t>(shared.m_CurTab);
    return tab < shared.m_WindowMaps.size() &&
           shared.m_WindowMaps[tab].m_Windows.contains(windowKey);
}

std::filesystem::file_time_type TimeOf(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::last_write_time(path, ignored);
}

}  // namespace

DesktopHost::DesktopHost() : m_Database(std::make_unique<TargetDatabase>()) {
    AttachLibrary(VeskResources());
    HandOver();
    vesk_dll_shared_data.setResID(kResourceId);
    SetTabs({});
    vesk_dll_shared_data.SetCurTab(0);
    vesk_dll_shared_data.registerVESKSyncSwitch(nullptr);
}

DesktopHost::~DesktopHost() {
    CloseFrames();
    vesk_dll_shared_data.free_joblist();
    vesk_dll_shared_data.freeUsedDocTemplate();
    vesk_dll_shared_data.ZeroOutFrmValue();
    TargetDatabase::Select(nullptr);
    DetachLibrary();
}

bool DesktopHost::LoadTarget(const std::string& path, std::string& error) {
    auto database = std::make_unique<TargetDatabase>();
    if (!LoadTargetFile(path, *database, error)) return false;
    m_Database = std::move(database);
    m_TargetPath = path;
    m_TargetTime = TimeOf(path);
    HandOver();
    return true;
}

void DesktopHost::DropTarget() {
    m_Database = std::make_unique<TargetDatabase>();
    m_TargetPath.clear();
    HandOver();
}

bool DesktopHost::HasLoaded(const std::string& path) const {
    return path == m_TargetPath && TimeOf(path) == m_TargetTime;
}

// A list that was just put in place knows no callbacks; the reader needs them and the capability.
void DesktopHost::HandOver() {
    TargetDatabase::Select(m_Database.get());
    vesk_dll_shared_data.registerDBCallback(TargetDatabase::LookUpFormat,
                                            TargetDatabase::LookUpEnum);
    vesk_dll_shared_data.GetTargetCapability(&m_Database->m_Capability);
}

// Placements are kept only if there is a tab to keep them in.
void DesktopHost::SetTabs(const std::vector<WindowMap>& tabs) {
    std::vector<WindowMap> maps = tabs;
    if (maps.empty()) maps.push_back({{}, "Default"});
    vesk_dll_shared_data.SetAdvWindowMap(maps);
}

const std::vector<WindowMap>& DesktopHost::Tabs() {
    vesk_dll_shared_data.UpdateWindowMap();
    return vesk_dll_shared_data.m_WindowMaps;
}

bool DesktopHost::Read(const LogInput& input, PartToRead part, ReadProgress progress,
                       std::string& text) {
    CloseFrames();
    RenewList();
    McuJobList& list = *vesk_dll_shared_data.m_pJobList;
    NamedSplitChooser chooser(input.Named().m_Log);
    list.SetRangeChooser(part == PartToRead::kAsk ? &chooser : nullptr);
    list.SetProgress(std::move(progress));
    const LogFiles files = input.Readable();
    const bool complete = files.m_Header.empty()
                              ? list.ReadFile(files.m_Log, text)
                              : list.ReadFileWithAnotherHeader(files.m_Header, files.m_Log, text);
    list.SetProgress({});
    list.SetRangeChooser(nullptr);
    list.m_FileName = WithoutPackingSuffix(input.Named().m_Log);
    input.NameFiles(text);
    return complete;
}

// The split dialog's memory is the user's and outlives the list.
void DesktopHost::RenewList() {
    const CString unit = vesk_dll_shared_data.m_pJobList->m_SplitUnit;
    const std::int32_t choice = vesk_dll_shared_data.m_pJobList->m_SplitChoice;
    vesk_dll_shared_data.free_joblist();
    HandOver();
    vesk_dll_shared_data.m_pJobList->m_SplitUnit = unit;
    vesk_dll_shared_data.m_pJobList->m_SplitChoice = choice;
}

const McuJobList& DesktopHost::List() const {
    return *vesk_dll_shared_data.m_pJobList;
}

bool DesktopHost::ShowTimeline(const CString& title) {
    if (!AfxGetMainWnd() || !TimelineTemplate()->OpenNewDocument()) return false;
    auto* const frame = dynamic_cast<CMcuChildFrame*>(AfxGetMainWnd()->MDIGetActive());
    if (!frame) return false;
    vesk_dll_shared_data.m_pMcuFrame = frame;
    frame->SetWindowText(title);
    // A log that was never placed gets all the room there is.
    if (!IsPlaced(kTimelineWindowKey)) frame->ShowWindow(SW_SHOWMAXIMIZED);
    vesk_dll_shared_data.SetWindowPlacement(kTimelineWindowKey, frame);
    return true;
}

CMcuView* DesktopHost::Timeline() const {
    const CMcuChildFrame* const frame = vesk_dll_shared_data.m_pMcuFrame;
    return frame ? dynamic_cast<CMcuView*>(frame->GetActiveView()) : nullptr;
}

void DesktopHost::CloseFrames() {
    CMDIFrameWnd* const main = AfxGetMainWnd();
    while (main && main->MDIGetActive()) main->MDIGetActive()->OnClose();
}

}  // namespace vesk
