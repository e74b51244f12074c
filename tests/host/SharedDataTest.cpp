#include <type_traits>

#include "tests/host/HostFrames.h"

namespace {

using SharedData = HostTest;
using Placement = HostFramesTest;

DataFormat* NoFormat(const std::string&) {
    return nullptr;
}
EnumContent* NoEnum(const std::string&) {
    return nullptr;
}

TEST_F(SharedData, StandsReadyAtLoad) {
    const VESK_DLL_Shared_Data_T& data = vesk_dll_shared_data;
    EXPECT_EQ(data.m_FeatureLevel, 4);
    EXPECT_EQ(data.m_ResID, 0U);
    EXPECT_EQ(data.m_TickIRQ, 0);
    EXPECT_EQ(data.m_AutoWrap, 1);
    EXPECT_EQ(data.m_CurTab, 0);
    EXPECT_TRUE(data.query_inited());
    EXPECT_FALSE(data.m_DBRegistered);
    EXPECT_FALSE(data.m_SyncCallback);
    EXPECT_FALSE(data.CheckVisibleView());
    EXPECT_TRUE(data.m_WindowMaps.empty());
    ASSERT_TRUE(data.m_pJobList);
    EXPECT_EQ(data.m_pJobList->GetSize(), 0);
}

// The host reads the members by their place.
TEST_F(SharedData, KeepsItsMembersInOrder) {
    static_assert(!std::is_polymorphic_v<VESK_DLL_Shared_Data_T>);
    const VESK_DLL_Shared_Data_T& data = vesk_dll_shared_data;
    const void* const members[] = {&data.m_FeatureLevel,
                                   &data.m_pMcuTemplate,
                                   &data.m_pTableTemplate,
                                   &data.m_pUsageTemplate,
                                   &data.m_pAreaTemplate,
                                   &data.m_pBMTemplate,
                                   &data.m_pBMTaskTemplate,
                                   &data.m_pIPCTemplate,
                                   &data.m_pSpareTemplate1,
                                   &data.m_pSpareTemplate2,
                                   &data.m_pTSTTemplate,
                                   &data.m_ResID,
                                   &data.m_WorkSpaceFileVersion,
                                   &data.m_pMcuFrame,
                                   &data.m_pTableFrame,
                                   &data.m_pUsageFrame,
                                   &data.m_pAreaFrame,
                                   &data.m_pBMFrame,
                                   &data.m_pBMTaskFrame,
                                   &data.m_pIPCFrame,
                                   &data.m_pSpareFrame1,
                                   &data.m_pSpareFrame2,
                                   &data.m_pTSTFrame,
                                   &data.m_pSyncSwitch,
                                   &data.m_WindowMaps,
                                   &data.m_CurTab,
                                   &data.m_pJobList,
                                   &data.m_TickIRQ,
                                   &data.m_AutoWrap,
                                   &data.m_Inited,
                                   &data.m_DBRegistered,
                                   &data.m_SyncCallback};
    EXPECT_EQ(members[0], &data);
    for (std::size_t i = 1; i < std::size(members); ++i)
        EXPECT_LT(members[i - 1], members[i]) << "member " << i;
}

TEST_F(SharedData, TakesBothLookupsOrNone) {
    EXPECT_TRUE(vesk_dll_shared_data.registerDBCallback(NoFormat, NoEnum));
    EXPECT_TRUE(vesk_dll_shared_data.m_DBRegistered);
    EXPECT_TRUE(Jobs().m_DBReady);
    EXPECT_FALSE(vesk_dll_shared_data.registerDBCallback(NoFormat, nullptr));
    EXPECT_FALSE(vesk_dll_shared_data.m_DBRegistered);
    EXPECT_TRUE(Jobs().m_DBReady);
    EXPECT_EQ(Jobs().m_GetEnumContent, &NoEnum);
    EXPECT_FALSE(vesk_dll_shared_data.registerDBCallback(nullptr, NoEnum));
    vesk_dll_shared_data.m_pJobList = nullptr;
    EXPECT_FALSE(vesk_dll_shared_data.registerDBCallback(NoFormat, NoEnum));
}

TEST_F(SharedData, FreedTwiceTheListIsNewAndKnowsNoDatabase) {
    vesk_dll_shared_data.registerDBCallback(NoFormat, NoEnum);
    for (int i = 0; i < 2; ++i) {
        Task("MAIN");
        vesk_dll_shared_data.free_joblist();
        EXPECT_TRUE(Jobs().m_JobNames.empty());
        EXPECT_FALSE(Jobs().m_DBReady);
        EXPECT_FALSE(Jobs().m_GetDataFormat);
    }
}

TEST_F(SharedData, ACopySharesTheListAndKeepsItAlive) {
    Task("MAIN");
    VESK_DLL_Shared_Data_T copy = vesk_dll_shared_data;
    EXPECT_EQ(copy.m_pJobList, vesk_dll_shared_data.m_pJobList);
    {
        VESK_DLL_Shared_Data_T assigned;
        assigned = copy;
        EXPECT_EQ(assigned.m_pJobList, copy.m_pJobList);
    }
    vesk_dll_shared_data.free_joblist();
    EXPECT_NE(copy.m_pJobList, vesk_dll_shared_data.m_pJobList);
    EXPECT_EQ(copy.m_pJobList->m_JobNames.count("MAIN"), 1U);
}

TEST_F(SharedData, HandsTickAndFeatureLevelToTheReader) {
    vesk_dll_shared_data.m_TickIRQ = 0x1A;
    std::map<int, std::string> names;
    std::string tick;
    Jobs().GetIRQName(names, tick);
    EXPECT_EQ(tick, "IRQ0x1a");
    vesk::CurrentHostValues().m_TickIRQ = 9;
    EXPECT_EQ(vesk_dll_shared_data.m_TickIRQ, 9);
    vesk_dll_shared_data.m_FeatureLevel = 3;
    EXPECT_EQ(vesk::CurrentHostValues().m_FeatureLevel, 3);
    VESK_DLL_Shared_Data_T copy = vesk_dll_shared_data;
    copy.m_TickIRQ = 1;
    EXPECT_EQ(vesk::CurrentHostValues().m_TickIRQ, 9);
}

TEST_F(SharedData, TakesTheCapabilityThatWasGivenLast) {
    TargetCapability capability;
    capability.m_Bytes[10] = 1;
    capability.m_Bytes[39] = 7;
    EXPECT_TRUE(vesk_dll_shared_data.GetTargetCapability(&capability));
    EXPECT_EQ(vesk::CurrentHostValues().m_Capability.m_Bytes, capability.m_Bytes);
    const TargetCapability none;
    EXPECT_TRUE(vesk_dll_shared_data.GetTargetCapability(&none));
    EXPECT_FALSE(vesk::CurrentHostValues().m_Capability.LogsMicroseconds());
}

TEST_F(SharedData, AnyOneFrameIsAView) {
    CMcuChildFrame frame;
    CMcuChildFrame* VESK_DLL_Shared_Data_T::*const members[] = {
        &VESK_DLL_Shared_Data_T::m_pMcuFrame,    &VESK_DLL_Shared_Data_T::m_pTableFrame,
        &VESK_DLL_Shared_Data_T::m_pUsageFrame,  &VESK_DLL_Shared_Data_T::m_pAreaFrame,
        &VESK_DLL_Shared_Data_T::m_pBMFrame,     &VESK_DLL_Shared_Data_T::m_pBMTaskFrame,
        &VESK_DLL_Shared_Data_T::m_pIPCFrame,    &VESK_DLL_Shared_Data_T::m_pSpareFrame1,
        &VESK_DLL_Shared_Data_T::m_pSpareFrame2, &VESK_DLL_Shared_Data_T::m_pTSTFrame};
    for (const auto member : members) {
        vesk_dll_shared_data.*member = &frame;
        EXPECT_TRUE(vesk_dll_shared_data.CheckVisibleView());
        vesk_dll_shared_data.ZeroOutFrmValue();
        EXPECT_FALSE(vesk_dll_shared_data.*member);
        EXPECT_FALSE(vesk_dll_shared_data.CheckVisibleView());
    }
}

TEST_F(SharedData, ForgettingTheFramesForgetsTheSyncSwitch) {
    int host = 0;
    auto* const syncSwitch = reinterpret_cast<CSyncSwitch*>(&host);
    EXPECT_EQ(vesk_dll_shared_data.registerVESKSyncSwitch(syncSwitch), 1);
    EXPECT_EQ(vesk_dll_shared_data.m_pSyncSwitch, syncSwitch);
    vesk_dll_shared_data.ZeroOutFrmValue();
    EXPECT_FALSE(vesk_dll_shared_data.m_pSyncSwitch);
}

class CountedTemplate : public CMultiDocTemplate {
public:
    explicit CountedTemplate(int& alive)
        : CMultiDocTemplate(0, nullptr, nullptr, nullptr), m_Alive(alive) {
        ++m_Alive;
    }
    ~CountedTemplate() override { --m_Alive; }

private:
    int& m_Alive;
};

TEST_F(SharedData, FreesEveryTemplateOnce) {
    VESK_DLL_Shared_Data_T& data = vesk_dll_shared_data;
    int alive = 0;
    for (CMultiDocTemplate** member :
         {&data.m_pMcuTemplate, &data.m_pTableTemplate, &data.m_pUsageTemplate,
          &data.m_pAreaTemplate, &data.m_pBMTemplate, &data.m_pBMTaskTemplate, &data.m_pIPCTemplate,
          &data.m_pSpareTemplate1, &data.m_pSpareTemplate2, &data.m_pTSTTemplate})
        *member = new CountedTemplate(alive);
    EXPECT_EQ(alive, 10);
    data.freeUsedDocTemplate();
    EXPECT_EQ(alive, 0);
    EXPECT_FALSE(data.m_pMcuTemplate);
    EXPECT_FALSE(data.m_pSpareTemplate2);
    data.freeUsedDocTemplate();
    EXPECT_EQ(alive, 0);
}

TEST_F(SharedData, KeepsWhatTheHostSets) {
    vesk_dll_shared_data.setResID(203);
    vesk_dll_shared_data.setTrawlerWorkSpaceFileVersion(-7);
    vesk_dll_shared_data.SetCurTab(2);
    std::vector<WindowMap> maps(3);
    maps[1].m_Name = "second";
    vesk_dll_shared_data.SetAdvWindowMap(maps);
    maps[1].m_Name = "changed later";
    EXPECT_EQ(vesk_dll_shared_data.m_ResID, 203U);
    EXPECT_EQ(vesk_dll_shared_data.m_WorkSpaceFileVersion, -7);
    EXPECT_EQ(vesk_dll_shared_data.m_CurTab, 2);
    ASSERT_EQ(vesk_dll_shared_data.m_WindowMaps.size(), 3U);
    EXPECT_EQ(vesk_dll_shared_data.m_WindowMaps[1].m_Name, "second");
    vesk_dll_shared_data.SetAdvWindowMap({});
    EXPECT_TRUE(vesk_dll_shared_data.m_WindowMaps.empty());
}

// --- Placements ----------------------------------------------------------------------------------

TEST_F(Placement, OfANewWindowIsBornFromIt) {
    UseTab({});
    CMcuChildFrame* const frame = Open(2);
    frame->MoveWindow(11, 22, 333, 444);
    vesk_dll_shared_data.SetWindowPlacement(11, frame);
    ASSERT_EQ(Windows().count(11), 1U);
    const WindowInfo& window = Windows()[11];
    EXPECT_EQ(PlaceOf(window), (CRect{11, 22, 344, 466}));
    EXPECT_EQ(window.m_Type, 1);
    EXPECT_EQ(window.m_Size, 200);
    EXPECT_EQ(window.m_ShowCmd, 5);
    EXPECT_EQ(window.m_Reserved1, 0);
    EXPECT_EQ(window.m_Reserved2, 0);
}

TEST_F(Placement, OfAKnownWindowMovesIt) {
    WindowMap tab;
    tab.m_Windows[11].m_Placement.rcNormalPosition = {1, 2, 301, 202};
    tab.m_Windows[11].m_ShowCmd = SW_HIDE;
    tab.m_Windows[11].m_Type = 77;
    UseTab(tab);
    CMcuChildFrame* const frame = Open(2);
    vesk_dll_shared_data.SetWindowPlacement(11, frame);
    CRect place;
    frame->GetWindowRect(&place);
    EXPECT_EQ(place, (CRect{1, 2, 301, 202}));
    EXPECT_EQ(Windows()[11].m_ShowCmd, 5);
    EXPECT_EQ(Windows()[11].m_Type, 77);
}

TEST_F(Placement, OfAClosingWindowIsKeptIfItsKeyIsKnown) {
    UseTab({});
    CMcuChildFrame* const frame = Open(2);
    vesk_dll_shared_data.SaveWindowPlacement(11, frame);
    EXPECT_TRUE(Windows().empty());
    vesk_dll_shared_data.SetWindowPlacement(11, frame);
    frame->MoveWindow(5, 6, 70, 80);
    vesk_dll_shared_data.SaveWindowPlacement(11, frame);
    EXPECT_EQ(PlaceOf(Windows()[11]), (CRect{5, 6, 75, 86}));
    EXPECT_EQ(Windows()[11].m_ShowCmd, 0);
}

TEST_F(Placement, IsBroughtUpToDateForOpenFramesOfTheTab) {
    WindowMap tab;
    for (int key = 8; key <= 17; ++key) tab.m_Windows[key].m_Size = key;
    UseTab(tab);
    vesk_dll_shared_data.m_pMcuFrame = Open(0);
    vesk_dll_shared_data.m_pTSTFrame = Open(9);
    vesk_dll_shared_data.m_pMcuFrame->MoveWindow(1, 1, 50, 50);
    vesk_dll_shared_data.m_pTSTFrame->MoveWindow(2, 2, 60, 60);
    vesk_dll_shared_data.UpdateWindowMap();
    for (const auto& [key, window] : Windows()) {
        SCOPED_TRACE(key);
        const CRect expected = key == 9    ? CRect{1, 1, 51, 51}
                               : key == 13 ? CRect{2, 2, 62, 62}
                                           : CRect{};
        EXPECT_EQ(PlaceOf(window), expected);
        EXPECT_EQ(window.m_Size, key);
        EXPECT_EQ(window.m_ShowCmd, 5);
    }
    EXPECT_EQ(Windows().size(), 10U);
}

TEST_F(Placement, OutsideTheTabsOrWithoutAFrameChangesNothing) {
    WindowMap tab;
    tab.m_Windows[11].m_Placement.rcNormalPosition = {1, 2, 301, 202};
    UseTab(tab);
    CMcuChildFrame* const frame = Open(2);
    vesk_dll_shared_data.m_pUsageFrame = frame;
    CRect before;
    frame->GetWindowRect(&before);
    for (const int index : {-1, 1, 0x7FFFFFFF}) {
        SCOPED_TRACE(index);
        vesk_dll_shared_data.SetCurTab(index);
        vesk_dll_shared_data.SetWindowPlacement(11, frame);
        vesk_dll_shared_data.SetWindowPlacement(12, frame);
        vesk_dll_shared_data.SaveWindowPlacement(11, frame);
        vesk_dll_shared_data.UpdateWindowMap();
    }
    vesk_dll_shared_data.SetCurTab(0);
    vesk_dll_shared_data.SetWindowPlacement(12, nullptr);
    vesk_dll_shared_data.SaveWindowPlacement(11, nullptr);
    CRect after;
    frame->GetWindowRect(&after);
    EXPECT_EQ(after, before);
    EXPECT_EQ(Windows().size(), 1U);
    EXPECT_EQ(PlaceOf(Windows()[11]), (CRect{1, 2, 301, 202}));
    EXPECT_EQ(Windows()[11].m_ShowCmd, 5);
}

}  // namespace
