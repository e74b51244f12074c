#include "host/FrameKinds.h"
#include "tests/host/HostFrames.h"

namespace {

using Frames = HostFramesTest;

struct KindCase {
    std::int32_t kind;
    std::int32_t key;
    CMcuChildFrame* VESK_DLL_Shared_Data_T::*member;
    const char* name;
};

const KindCase kKinds[] = {
    {0, 9, &VESK_DLL_Shared_Data_T::m_pMcuFrame, ""},
    {1, 10, &VESK_DLL_Shared_Data_T::m_pTableFrame, "McuTable"},
    {2, 11, &VESK_DLL_Shared_Data_T::m_pUsageFrame, "McuUsage"},
    {3, 12, &VESK_DLL_Shared_Data_T::m_pAreaFrame, "McuArea"},
    {4, 14, &VESK_DLL_Shared_Data_T::m_pBMFrame, "McuBM"},
    {5, 15, &VESK_DLL_Shared_Data_T::m_pBMTaskFrame, "McuBMTask"},
    {6, 16, &VESK_DLL_Shared_Data_T::m_pIPCFrame, "McuIPC"},
    {9, 13, &VESK_DLL_Shared_Data_T::m_pTSTFrame, "McuTSTModelingStatistics"},
    // Numbers without a kind of their own.
    {7, 9, &VESK_DLL_Shared_Data_T::m_pMcuFrame, ""},
    {8, 9, &VESK_DLL_Shared_Data_T::m_pMcuFrame, ""},
    {-1, 9, &VESK_DLL_Shared_Data_T::m_pMcuFrame, ""},
    {10, 9, &VESK_DLL_Shared_Data_T::m_pMcuFrame, ""},
};

void SetAllFrames(CMcuChildFrame* frame) {
    for (const vesk::FrameKind& kind : vesk::kFrameKinds)
        vesk_dll_shared_data.*kind.m_Members.m_Frame = frame;
}

TEST_F(Frames, BeginAsTheTimelines) {
    EXPECT_EQ(CMcuChildFrame().m_ViewKind, 0);
}

TEST_F(Frames, ClosingClearsTheirMemberAndKeepsTheirPlace) {
    for (const KindCase& c : kKinds) {
        SCOPED_TRACE(c.kind);
        WindowMap tab;
        for (int key = 9; key <= 16; ++key) tab.m_Windows[key];
        UseTab(tab);
        CMcuChildFrame* const frame = Open(c.kind);
        frame->MoveWindow(10, 20, 300, 200);
        SetAllFrames(frame);
        frame->OnClose();
        for (const KindCase& other : kKinds)
            EXPECT_EQ(vesk_dll_shared_data.*other.member == nullptr, other.member == c.member);
        for (const auto& [key, window] : Windows()) {
            EXPECT_EQ(window.m_ShowCmd, key == c.key ? 0 : 5) << key;
            EXPECT_EQ(PlaceOf(window), key == c.key ? (CRect{10, 20, 310, 220}) : CRect{}) << key;
        }
        EXPECT_TRUE(m_Main.MDIChildren().empty());
        vesk_dll_shared_data.ZeroOutFrmValue();
    }
}

TEST_F(Frames, AreCalledByTheNameOfTheirKind) {
    for (const KindCase& c : kKinds) EXPECT_STREQ(vesk::FrameKindOf(c.kind).m_Name, c.name);
}

TEST_F(Frames, KeepTheirTitleAndPassTheUpdateToTheMainWindow) {
    CMcuChildFrame* const frame = Open(1);
    frame->SetWindowText("Mcu Table");
    m_Main.m_TitleUpdates.clear();
    frame->OnUpdateFrameTitle(true);
    frame->OnUpdateFrameTitle(false);
    EXPECT_THAT(m_Main.m_TitleUpdates, testing::ElementsAre(true, false));
    EXPECT_EQ(frame->GetWindowText(), "Mcu Table");
    CMcuChildFrame alone;
    alone.OnUpdateFrameTitle(true);
    EXPECT_EQ(m_Main.m_TitleUpdates.size(), 2U);
}

TEST_F(Frames, ReloadTheirViewWhateverItIs) {
    for (const std::int32_t kind : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, -1}) {
        SCOPED_TRACE(kind);
        CMcuChildFrame* const frame = Open(kind);
        CountingView& view = ViewOf(*frame);
        view.TakeInvalidRect();
        frame->Reload();
        EXPECT_EQ(view.m_Reloads, 1);
        const bool ofTheTimeline = kind < 1 || kind > 9;
        CRect client;
        view.GetClientRect(&client);
        EXPECT_FALSE(client.IsRectEmpty());
        EXPECT_EQ(view.TakeInvalidRect(), ofTheTimeline ? client : CRect{});
        frame->OnClose();
    }
    CMcuChildFrame empty;
    empty.Reload();
}

}  // namespace
