// The host's role and the opening of logs, without a display: a scripted person, a main window
// that nobody sees.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "desktop/DesktopHost.h"
#include "desktop/Information.h"
#include "desktop/LogInput.h"
#include "desktop/LogSession.h"
#include "desktop/UserState.h"
#include "host/CMcuChildFrame.h"
#include "host/VESKUIDoc.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/HostValues.h"
#include "log/McuJobList.h"
#include "platform/CMDIFrameWnd.h"
#include "platform/HeadlessUserInterface.h"
#include "tests/desktop/DeskFolder.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

LogBuilder ThreeJobs() {
    return LogBuilder().Task("MAIN", 100).Irq(3, 140).Task("IDLE", 150).Task("MAIN", 190);
}

class SessionTest : public testing::Test {
protected:
    SessionTest() { m_Main.MoveWindow(0, 0, 800, 600); }
    ~SessionTest() override { EXPECT_THAT(m_User.m_Faults, IsEmpty()); }

    bool OpenWhole(const std::string& path) {
        return m_Session.Open({path, {}}, PartToRead::kWhole);
    }
    // Presses OK or Cancel in the split dialog to come.
    void AnswerSplit(int button) {
        m_User.OnDialog([button](DialogUser& dialog) { dialog.Press(button); });
    }
    std::string WriteLog(const std::string& name) const {
        return m_Folder.Write(name, ThreeJobs().WithHeader(3).Bytes());
    }
    // Two descriptions that give interrupt 3 different names.
    std::string WriteNames(const std::string& file, const std::string& name) const {
        return m_Folder.WriteTarget(
            file,
            ThreeJobs().Enumerator("Irq_Code_Def_Enum", "Enum_" + name + "_CODE", 3).Database());
    }

    DeskFolder m_Folder;
    HeadlessUserInterface m_User;
    ScopedUserInterface m_InPlace{m_User};
    CMDIFrameWnd m_Main;
    DesktopHost m_Host;
    UserState m_State;
    std::vector<std::string> m_Notes;
    ReadProgress m_Progress;
    LogSession m_Session{m_Host,
                         m_State,
                         {[this] { return m_Progress; }, [] {}, [] {},
                          [this](const std::string& text) { m_Notes.push_back(text); }}};
};

TEST_F(SessionTest, ALogIsReadAndShownTheWayTheLibraryReliesOn) {
    ASSERT_TRUE(OpenWhole(Sample("pacman_packets.bin")));

    const VESK_DLL_Shared_Data_T& shared = vesk_dll_shared_data;
    EXPECT_TRUE(shared.m_DBRegistered);
    EXPECT_EQ(shared.m_ResID, 128U);
    EXPECT_EQ(shared.m_pJobList->size(), 1158U);
    ASSERT_NE(shared.m_pMcuFrame, nullptr);
    EXPECT_EQ(shared.m_pMcuFrame->GetWindowText(), "pacman_packets.bin");
    EXPECT_EQ(m_Main.MDIGetActive(), shared.m_pMcuFrame);
    // The document came after the read: it has colours for its names.
    ASSERT_NE(global_vesk_doc_ptr, nullptr);
    EXPECT_TRUE(global_vesk_doc_ptr->m_JobColor.m_Colors.contains(ColorKey("pacm")));
    ASSERT_EQ(shared.m_WindowMaps.size(), 1U);
    EXPECT_EQ(shared.m_WindowMaps[0].m_Name, "Default");
    EXPECT_TRUE(shared.m_WindowMaps[0].m_Windows.contains(9));
}

TEST_F(SessionTest, ASecondLogTakesThePlaceOfTheFirst) {
    ASSERT_TRUE(OpenWhole(Sample("pacman_packets.bin")));
    ASSERT_TRUE(OpenWhole(Sample("esp32_ticks.bin")));

    EXPECT_EQ(m_Main.MDIChildren().size(), 1U);
    EXPECT_EQ(m_Main.MDIGetActive()->GetWindowText(), "esp32_ticks.bin");
    EXPECT_EQ(m_Host.List().size(), 622U);
    EXPECT_TRUE(m_Host.List().m_JobNames.contains("IRQ_CTIRQ1"));  // a name of its own target
    EXPECT_EQ(m_Session.Files().m_Log, Sample("esp32_ticks.bin"));
}

TEST_F(SessionTest, TheCapabilityOfTheTargetReachesTheReader) {
    TargetDatabase target = ThreeJobs().Database();
    target.m_Capability.m_Bytes[17] = 1;
    m_Folder.WriteTarget("log.target.json", target);
    ASSERT_TRUE(OpenWhole(WriteLog("log.bin")));
    EXPECT_TRUE(CurrentHostValues().m_Capability.HasTaskNumbers());
    ASSERT_TRUE(OpenWhole(WriteLog("other.bin")));
    EXPECT_FALSE(CurrentHostValues().m_Capability.HasTaskNumbers());
}

TEST_F(SessionTest, WhatTheSplitDialogRemembersOutlivesTheList) {
    const std::string log = WriteLog("log.bin");
    m_User.OnDialog([](DialogUser& dialog) {
        dialog.Press(1824);
        dialog.Type(1821, "7");
        dialog.Press(IDOK);
    });
    ASSERT_TRUE(m_Session.Open({log, {}}));
    m_User.OnDialog([](DialogUser& dialog) {
        EXPECT_TRUE(dialog.IsChecked(1824));
        EXPECT_EQ(dialog.Text(1821), "7");
        dialog.Press(IDCANCEL);
    });
    EXPECT_FALSE(m_Session.Open({log, {}}));
}

TEST_F(SessionTest, ACancelledReadSaysNothingAndLeavesTheProgramUsable) {
    const std::string log = WriteLog("log.bin");
    AnswerSplit(IDCANCEL);
    EXPECT_FALSE(m_Session.Open({log, {}}));
    m_Progress = [](std::int64_t, std::int64_t) { return false; };
    EXPECT_FALSE(OpenWhole(log));
    EXPECT_THAT(m_User.m_Messages, IsEmpty());
    EXPECT_FALSE(m_Session.IsOpen());
    EXPECT_THAT(m_State.m_Recent.All(), IsEmpty());

    m_Progress = {};
    EXPECT_TRUE(OpenWhole(log));
}

TEST_F(SessionTest, AReadThatFailsSaysWhy) {
    const std::string newer = LogBuilder().WithIdentifier("VESKBINV", 4).Task("A", 1).Bytes();
    const struct {
        const char* m_What;
        std::string m_Path;
        std::string m_Text;
    } cases[] = {
        {"no such file", m_Folder / "none.bin", "No such file"},
        {"a folder", m_Folder / ".", "is a folder"},
        {"nothing in it", m_Folder.Write("empty.bin", ""), "too short for a log"},
        {"a version of the future", m_Folder.Write("newer.bin", newer), "not supported"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_What);
        m_User.m_Messages.clear();
        EXPECT_FALSE(OpenWhole(c.m_Path));
        EXPECT_THAT(m_User.m_Messages, ElementsAre(HasSubstr(c.m_Text)));
        EXPECT_EQ(m_Main.MDIGetActive(), nullptr);
    }
}

TEST_F(SessionTest, TheTargetDescriptionIsTheUsersChoiceElseTheOneBesideElseTheLast) {
    const std::string log = WriteLog("log.bin");
    const std::string last = WriteNames("last.json", "LAST");
    const std::string chosen = WriteNames("chosen.json", "CHOSEN");
    const auto openedWith = [&] {
        EXPECT_TRUE(OpenWhole(log));
        return std::filesystem::path(m_Host.TargetPath()).filename().string();
    };
    EXPECT_EQ(openedWith(), "");
    m_State.m_Targets.m_Default = last;
    EXPECT_EQ(openedWith(), "last.json");
    WriteNames("log.target.json", "BESIDE");
    EXPECT_EQ(openedWith(), "log.target.json");
    m_State.m_Targets.Choose(log, chosen);
    EXPECT_EQ(openedWith(), "chosen.json");
    std::filesystem::remove(chosen);
    EXPECT_EQ(openedWith(), "log.target.json");
    EXPECT_THAT(m_Notes, ElementsAre(HasSubstr("chosen.json is no longer there")));
}

TEST_F(SessionTest, AChosenDescriptionIsTakenForTheOpenLogAndRemembered) {
    const std::string log = WriteLog("log.bin");
    const std::string target = WriteNames("names.json", "TIMER");
    ASSERT_TRUE(OpenWhole(log));
    m_User.OnFileDialog(target.c_str());
    AnswerSplit(IDOK);
    m_Session.AskForTarget();
    EXPECT_EQ(m_Host.TargetPath(), target);
    EXPECT_EQ(m_State.m_Targets.Of(log), target);
    EXPECT_TRUE(m_Session.IsOpen());
}

TEST_F(SessionTest, ABadDescriptionIsReportedAndTheOldOneStays) {
    ASSERT_TRUE(OpenWhole(Sample("esp32_ticks.bin")));
    const std::string before = m_Host.TargetPath();
    m_User.OnFileDialog(m_Folder.Write("bad.json", "{\"formats\": 7}").c_str());
    m_Session.AskForTarget();
    EXPECT_THAT(m_User.m_Messages,
                ElementsAre(HasSubstr("The target description cannot be used: ")));
    EXPECT_EQ(m_Host.TargetPath(), before);
    EXPECT_TRUE(m_Session.IsOpen());
}

TEST_F(SessionTest, APackedLogIsOpenedUnderItsOwnName) {
    m_Folder.CopySample("esp32_ticks.target.json", "log.target.json");
    const std::string packed = m_Folder.CopySample("esp32_ticks.bin", "log.bin") + ".gz";
    ASSERT_EQ(Shell("gzip " + (m_Folder / "log.bin")).m_Status, 0);
    m_User.OnDialog([&](DialogUser& dialog) {
        EXPECT_EQ(dialog.Text(1820), packed);
        dialog.Press(IDOK);
    });
    ASSERT_TRUE(m_Session.Open({packed, {}}));
    EXPECT_EQ(m_Host.List().size(), 622U);
    EXPECT_EQ(m_Host.TargetPath(), m_Folder / "log.target.json");
    EXPECT_EQ(m_Main.MDIGetActive()->GetWindowText(), "log.bin.gz");
    EXPECT_EQ(m_Host.List().m_FileName, m_Folder / "log.bin");  // that proposed names come from
    EXPECT_THAT(m_State.m_Recent.All(), ElementsAre(LogFiles{packed, {}}));
}

TEST_F(SessionTest, APackedLogThatIsDamagedIsTold) {
    const std::string log = m_Folder.CopySample("esp32_ticks.bin", "log.bin");
    const std::string cut = m_Folder / "cut.gz";
    ASSERT_EQ(Shell("gzip -c " + log + " | head -c 300 > " + cut).m_Status, 0);
    const std::string plain = m_Folder.Write("plain.xz", ThreeJobs().WithHeader(3).Bytes());
    EXPECT_FALSE(OpenWhole(cut));
    EXPECT_FALSE(OpenWhole(plain));
    EXPECT_THAT(m_User.m_Messages, ElementsAre(HasSubstr("cannot read " + cut),
                                               plain + " is not packed the way its name says"));
}

TEST_F(SessionTest, ALogWithoutAHeaderAsksForItsLayoutOnce) {
    const std::string log = m_Folder.Write("plain.bin", ThreeJobs().Bytes());
    const std::string target = m_Folder.WriteTarget("plain.json", ThreeJobs().Database());
    m_User.OnFileDialog(target.c_str());
    ASSERT_TRUE(OpenWhole(log));
    EXPECT_THAT(m_User.m_Messages, ElementsAre(HasSubstr("\"SA_LoggingNode_T\"")));
    EXPECT_EQ(m_Host.TargetPath(), target);
    EXPECT_TRUE(OpenWhole(log));  // any further question would be a fault

    m_State = {};
    m_Host.DropTarget();
    m_User.OnFileDialog("");
    EXPECT_TRUE(OpenWhole(log));
    EXPECT_EQ(m_State.m_Targets.Of(log), "");  // without one, by the user's choice
    EXPECT_TRUE(OpenWhole(log));
}

TEST_F(SessionTest, AnotherFilesHeaderIsReadAndRememberedWithTheLog) {
    const std::string header = WriteLog("header.bin");
    const std::string raw =
        m_Folder.Write("raw.bin", ThreeJobs().WithHeader(3).Bytes().substr(1036));
    m_User.OnDialog([&](DialogUser& dialog) {
        dialog.Type(1000, raw.c_str());
        dialog.Type(1819, header.c_str());
        dialog.Press(IDOK);
    });
    AnswerSplit(IDOK);
    m_Session.AskForLogWithHeader();
    EXPECT_TRUE(m_Session.IsOpen());
    EXPECT_THAT(m_State.m_Recent.All(), ElementsAre(LogFiles{raw, header}));
}

TEST_F(SessionTest, RecentFilesKeepTheLatestFirstAndDropWhatIsGone) {
    for (int i = 0; i < 12; ++i)
        ASSERT_TRUE(OpenWhole(WriteLog("log" + std::to_string(i) + ".bin")));
    const std::vector<LogFiles>& recent = m_State.m_Recent.All();
    ASSERT_EQ(recent.size(), 10U);
    EXPECT_EQ(recent.front().m_Log, m_Folder / "log11.bin");
    EXPECT_EQ(recent.back().m_Log, m_Folder / "log2.bin");

    std::filesystem::remove(m_Folder / "log5.bin");
    EXPECT_FALSE(m_Session.OpenRecent({m_Folder / "log5.bin", {}}));
    EXPECT_THAT(m_User.m_Messages, ElementsAre(HasSubstr("no longer there")));
    EXPECT_EQ(m_State.m_Recent.All().size(), 9U);
}

TEST_F(SessionTest, TheInformationNamesLogTargetAndDamage) {
    ASSERT_TRUE(OpenWhole(Sample("pacman_packets.bin")));
    m_Session.ShowInformation();
    ASSERT_EQ(m_User.m_MessageBoxes.size(), 1U);
    EXPECT_EQ(m_User.m_MessageBoxes[0].m_Caption, "Infomation");
    for (const char* const part :
         {"pacman_packets.bin\n", "pacman_packets.target.json\n", "483264 QBit (446.090 ms)",
          "24897 records, 1158 jobs", "6 gaps, 92200 bytes lost", "406 records of an unknown kind"})
        EXPECT_THAT(m_User.m_Messages[0], HasSubstr(part));
}

TEST(DesktopHost, LeavesNothingBehindWhenItEnds) {
    HeadlessUserInterface user;
    const ScopedUserInterface inPlace(user);
    const CMDIFrameWnd main;
    {
        DesktopHost host;
        std::string text;
        ASSERT_TRUE(
            host.Read(LogInput({Sample("esp32_ticks.bin"), {}}), PartToRead::kWhole, {}, text));
        ASSERT_TRUE(host.ShowTimeline("log"));
    }
    EXPECT_THAT(main.MDIChildren(), IsEmpty());
    EXPECT_FALSE(vesk_dll_shared_data.CheckVisibleView());
    EXPECT_EQ(vesk_dll_shared_data.m_pMcuTemplate, nullptr);
    EXPECT_EQ(global_vesk_doc_ptr, nullptr);
    EXPECT_TRUE(vesk_dll_shared_data.m_pJobList->empty());
    EXPECT_EQ(FindMenu(128), nullptr);
}

}  // namespace
}  // namespace vesk
