#pragma once

#include <array>
#include <cstdint>

#include "host/VESK_DLL_Shared_Data_T.h"

namespace vesk {

// Where the shared state keeps a kind's frame and its template.
struct FrameMembers {
    CMcuChildFrame* VESK_DLL_Shared_Data_T::*m_Frame;
    CMultiDocTemplate* VESK_DLL_Shared_Data_T::*m_Template;
};

// What belongs to one kind of child frame.
struct FrameKind {
    std::int32_t m_ViewKind;   // CMcuChildFrame::m_ViewKind
    std::int32_t m_WindowKey;  // in a WindowMap
    FrameMembers m_Members;
    const char* m_Name;  // in messages
};

constexpr std::int32_t kTimelineKind = 0;

// All kinds, the timeline first.
constexpr std::array<FrameKind, 8> kFrameKinds = {{
    {kTimelineKind,
     9,
     {&VESK_DLL_Shared_Data_T::m_pMcuFrame, &VESK_DLL_Shared_Data_T::m_pMcuTemplate},
     ""},
    {1,
     10,
     {&VESK_DLL_Shared_Data_T::m_pTableFrame, &VESK_DLL_Shared_Data_T::m_pTableTemplate},
     "McuTable"},
    {2,
     11,
     {&VESK_DLL_Shared_Data_T::m_pUsageFrame, &VESK_DLL_Shared_Data_T::m_pUsageTemplate},
     "McuUsage"},
    {3,
     12,
     {&VESK_DLL_Shared_Data_T::m_pAreaFrame, &VESK_DLL_Shared_Data_T::m_pAreaTemplate},
     "McuArea"},
    {4, 14, {&VESK_DLL_Shared_Data_T::m_pBMFrame, &VESK_DLL_Shared_Data_T::m_pBMTemplate}, "McuBM"},
    {5,
     15,
     {&VESK_DLL_Shared_Data_T::m_pBMTaskFrame, &VESK_DLL_Shared_Data_T::m_pBMTaskTemplate},
     "McuBMTask"},
    {6,
     16,
     {&VESK_DLL_Shared_Data_T::m_pIPCFrame, &VESK_DLL_Shared_Data_T::m_pIPCTemplate},
     "McuIPC"},
    {9,
     13,
     {&VESK_DLL_Shared_Data_T::m_pTSTFrame, &VESK_DLL_Shared_Data_T::m_pTSTTemplate},
     "McuTSTModelingStatistics"},
}};

// Members that no kind uses; they are cleared, freed and looked at with the others.
constexpr std::array<FrameMembers, 2> kSpareMembers = {{
    {&VESK_DLL_Shared_Data_T::m_pSpareFrame1, &VESK_DLL_Shared_Data_T::m_pSpareTemplate1},
    {&VESK_DLL_Shared_Data_T::m_pSpareFrame2, &VESK_DLL_Shared_Data_T::m_pSpareTemplate2},
}};

// The kind of that number; a number without a kind counts as the timeline.
const FrameKind& FrameKindOf(std::int32_t viewKind);

// Null if no kind has that window key.
const FrameKind* FindFrameKindByKey(std::int32_t windowKey);

}  // namespace vesk
