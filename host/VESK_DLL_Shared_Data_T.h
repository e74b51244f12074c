#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "database/DataFormat.h"
#include "database/EnumContent.h"
#include "database/TargetCapability.h"
#include "host/WindowMap.h"

class CFrameWnd;
class CMcuChildFrame;
class CMultiDocTemplate;
class CSyncSwitch;
class McuJobList;
struct SyncToken_Struct;

// The state through which host and library see each other: one object, vesk_dll_shared_data.
// The order of its public members is a binary interface. It owns the job list; templates belong
// to it until freeUsedDocTemplate, frames belong to the main window.
class VESK_DLL_Shared_Data_T {
public:
    // Stands ready, with an empty job list.
    VESK_DLL_Shared_Data_T();
    // A copy shares the job list of the original. The list lives until the last object that
    // shares it has gone or has got another one.
    VESK_DLL_Shared_Data_T(const VESK_DLL_Shared_Data_T&) = default;
    VESK_DLL_Shared_Data_T& operator=(const VESK_DLL_Shared_Data_T&) = default;
    ~VESK_DLL_Shared_Data_T() = default;

    // --- What the host hands over --------------------------------------------------------------

    bool query_inited() const { return m_Inited; }
    void setResID(std::uint32_t id) { m_ResID = id; }
    void setTrawlerWorkSpaceFileVersion(int version) { m_WorkSpaceFileVersion = version; }

    // Both lookups into the target's database, for the job list as it is now. False if one is
    // missing: the list keeps what it had.
    bool registerDBCallback(DataFormat* (*)(const std::string&),
                            EnumContent* (*)(const std::string&));

    // Takes over what the host's target can do, whatever the name says; the next read goes by it.
    // Always true.
    bool GetTargetCapability(const TargetCapability*);

    // Borrowed until ZeroOutFrmValue. Always 1.
    int registerVESKSyncSwitch(CSyncSwitch*);

    void SetAdvWindowMap(const std::vector<WindowMap>& maps) { m_WindowMaps = maps; }
    void SetCurTab(int tab) { m_CurTab = tab; }

    // --- Ending --------------------------------------------------------------------------------

    // Puts an empty list, without lookups, in the place of the job list; null if there is no
    // memory for it. No view may be open.
    void free_joblist();
    // Deletes the templates. No frame of theirs may be open.
    void freeUsedDocTemplate();
    // Forgets the frames and the sync switch.
    void ZeroOutFrmValue();
    // Whether any frame is open.
    bool CheckVisibleView() const;

    // --- Placements of windows in the current tab ----------------------------------------------

    // Places a new frame as it stood before, or remembers it where it stands.
    void SetWindowPlacement(std::int32_t key, CFrameWnd*);
    // Remembers where a frame stood that closes; only if its key is known.
    void SaveWindowPlacement(std::int32_t key, CFrameWnd*);
    // Remembers where all open frames stand.
    void UpdateWindowMap();

    // --- Members -------------------------------------------------------------------------------

    std::int32_t m_FeatureLevel = 4;  // of what the library understands
    CMultiDocTemplate* m_pMcuTemplate = nullptr;
    CMultiDocTemplate* m_pTableTemplate = nullptr;
    CMultiDocTemplate* m_pUsageTemplate = nullptr;
    CMultiDocTemplate* m_pAreaTemplate = nullptr;
    CMultiDocTemplate* m_pBMTemplate = nullptr;
    CMultiDocTemplate* m_pBMTaskTemplate = nullptr;
    CMultiDocTemplate* m_pIPCTemplate = nullptr;
    CMultiDocTemplate* m_pSpareTemplate1 = nullptr;
    CMultiDocTemplate* m_pSpareTemplate2 = nullptr;
    CMultiDocTemplate* m_pTSTTemplate = nullptr;
    std::uint32_t m_ResID = 0;                // of the library's own templates
    std::int32_t m_WorkSpaceFileVersion = 0;  // the host's
    CMcuChildFrame* m_pMcuFrame = nullptr;    // set by the host
    CMcuChildFrame* m_pTableFrame = nullptr;
    CMcuChildFrame* m_pUsageFrame = nullptr;
    CMcuChildFrame* m_pAreaFrame = nullptr;
    CMcuChildFrame* m_pBMFrame = nullptr;
    CMcuChildFrame* m_pBMTaskFrame = nullptr;
    CMcuChildFrame* m_pIPCFrame = nullptr;
    CMcuChildFrame* m_pSpareFrame1 = nullptr;
    CMcuChildFrame* m_pSpareFrame2 = nullptr;
    CMcuChildFrame* m_pTSTFrame = nullptr;
    CSyncSwitch* m_pSyncSwitch = nullptr;
    std::vector<WindowMap> m_WindowMaps;  // one per tab of the host
    std::int32_t m_CurTab = 0;            // any other index than one of them: no placements
    McuJobList* m_pJobList = nullptr;
    std::int32_t m_TickIRQ = 0;  // IRQ code at which the frame number grows; a read may set it
    std::int32_t m_AutoWrap = 1;
    bool m_Inited = true;
    bool m_DBRegistered = false;
    int (*m_SyncCallback)(SyncToken_Struct*) = nullptr;  // set by the host; its result is ignored

private:
    WindowMap* CurrentTab();

    std::shared_ptr<McuJobList> m_JobListOwner;
};

// The one that counts. The reader takes tick IRQ and feature level from it.
extern VESK_DLL_Shared_Data_T vesk_dll_shared_data;
