#include "host/VESK_DLL_Shared_Data_T.h"

#include <new>
#include <utility>

#include "host/CMcuChildFrame.h"
#include "host/FrameKinds.h"
#include "log/HostValues.h"
#include "log/McuJobList.h"
#include "platform/CMultiDocTemplate.h"

VESK_DLL_Shared_Data_T vesk_dll_shared_data;

namespace {

template <class Use>
void ForEachMembers(Use use) {
    for (const vesk::FrameKind& kind : vesk::kFrameKinds) use(kind.m_Members);
    for (const vesk::FrameMembers& members : vesk::kSpareMembers) use(members);
}

const bool kReaderUsesSharedData = [] {
    vesk::KeepHostValuesIn(vesk_dll_shared_data.m_TickIRQ, vesk_dll_shared_data.m_FeatureLevel);
    return true;
}();

}  // namespace

VESK_DLL_Shared_Data_T::VESK_DLL_Shared_Data_T() {
    free_joblist();
}

bool VESK_DLL_Shared_Data_T::registerDBCallback(DataFormat* (*formats)(const std::string&),
                                                EnumContent* (*enums)(const std::string&)) {
    m_DBRegistered = m_pJobList && m_pJobList->registerDBCallback(formats, enums);
    return m_DBRegistered;
}

bool VESK_DLL_Shared_Data_T::GetTargetCapability(const TargetCapability* capability) {
    if (capability) vesk::CurrentHostValues().m_Capability = *capability;
    return true;
}

int VESK_DLL_Shared_Data_T::registerVESKSyncSwitch(CSyncSwitch* syncSwitch) {
    m_pSyncSwitch = syncSwitch;
    return 1;
}

// The old list goes first: there may not be memory for both.
void VESK_DLL_Shared_Data_T::free_joblist() {
    m_JobListOwner.reset();
    try {
        m_JobListOwner = std::make_shared<McuJobList>();
    } catch (const std::bad_alloc&) {
    }
    m_pJobList = m_JobListOwner.get();
}

void VESK_DLL_Shared_Data_T::freeUsedDocTemplate() {
    ForEachMembers([this](const vesk::FrameMembers& members) {
        delete std::exchange(this->*members.m_Template, nullptr);
    });
}

void VESK_DLL_Shared_Data_T::ZeroOutFrmValue() {
    ForEachMembers([this](const vesk::FrameMembers& members) { this->*members.m_Frame = nullptr; });
    m_pSyncSwitch = nullptr;
}

bool VESK_DLL_Shared_Data_T::CheckVisibleView() const {
    bool any = false;
    ForEachMembers(
        [&](const vesk::FrameMembers& members) { any |= this->*members.m_Frame != nullptr; });
    return any;
}

WindowMap* VESK_DLL_Shared_Data_T::CurrentTab() {
    const auto tab = static_cast<std::size_t>(m_CurTab);
    return m_CurTab >= 0 && tab < m_WindowMaps.size() ? &m_WindowMaps[tab] : nullptr;
}

void VESK_DLL_Shared_Data_T::SetWindowPlacement(std::int32_t key, CFrameWnd* frame) {
    WindowMap* const tab = CurrentTab();
    if (!tab || !frame) return;
    const auto [entry, isNew] = tab->m_Windows.try_emplace(key);
    WindowInfo& window = entry->second;
    if (isNew) {
        frame->GetWindowPlacement(&window.m_Placement);
        return;
    }
    window.m_ShowCmd = SW_SHOW;
    frame->SetWindowPlacement(&window.m_Placement);
}

void VESK_DLL_Shared_Data_T::SaveWindowPlacement(std::int32_t key, CFrameWnd* frame) {
    WindowMap* const tab = CurrentTab();
    if (!tab || !frame) return;
    const auto entry = tab->m_Windows.find(key);
    if (entry == tab->m_Windows.end()) return;
    entry->second.m_ShowCmd = SW_HIDE;
    frame->GetWindowPlacement(&entry->second.m_Placement);
}

void VESK_DLL_Shared_Data_T::UpdateWindowMap() {
    WindowMap* const tab = CurrentTab();
    if (!tab) return;
    for (auto& [key, window] : tab->m_Windows) {
        const vesk::FrameKind* const kind = vesk::FindFrameKindByKey(key);
        const CMcuChildFrame* const frame = kind ? this->*kind->m_Members.m_Frame : nullptr;
        if (frame) frame->GetWindowPlacement(&window.m_Placement);
    }
}
