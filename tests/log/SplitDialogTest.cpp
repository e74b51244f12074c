// The choice of a part of the file, as a person makes it inside the read.

#include <sys/resource.h>
#include <unistd.h>

#include "log/CMcuSplitFileDlg.h"
#include "log/SplitDialogChooser.h"
#include "log/SplitScanner.h"
#include "platform/Keys.h"
#include "tests/log/DialogTest.h"
#include "tests/log/LogBytes.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;
using Lines = std::vector<std::string>;

constexpr int kSplit = 1418;
constexpr int kPath = 1820;
constexpr int kUnitSize = 1821;
constexpr int kFileSize = 1822;
constexpr int kWholeFile = 1823;
constexpr int kUnit = 1824;
constexpr int kIntervals = 1825;

// Task records, one per frame from 0 on, with counts 10 apart from 60 on.
LogBuilder WithRecords(LogBuilder log, int records) {
    for (int i = 0; i < records; ++i)
        log.Frame(i).Task(i % 2 ? "A" : "B", static_cast<std::uint32_t>(60 + 10 * i));
    return log;
}

// 1 KB is 85 records of 12 bytes, 128 of 8, 44 packets of 23 and one more.
LogBuilder WithFrames() {
    return WithRecords(LogBuilder(), 200);
}
LogBuilder ComputedFrames() {
    return WithRecords(LogBuilder().WithHeader(3).ComputedFrames(100, 50, 10), 200);
}
LogBuilder InPackets() {
    return WithRecords(LogBuilder().Packets().Uscnt(1U << 30, 1000, 1000), 100);
}

class SplitDialog : public DialogTest {
protected:
    bool Read(const LogBuilder& log, HeadlessUserInterface::DialogScript script) {
        Connect(log);
        return ReadBytes(log.Bytes(), std::move(script));
    }

    bool ReadBytes(const std::string& bytes, HeadlessUserInterface::DialogScript script) {
        const TemporaryFile file(bytes);
        m_Path = file.Path();
        m_User.OnDialog(std::move(script));
        m_List.SetRangeChooser(&m_Chooser);
        m_Error.clear();
        return m_List.ReadFile(m_Path, m_Error);
    }

    // The list of a read without a choice.
    static Lines WholeOf(const LogBuilder& log) { return Stamps(::Read(log).jobs); }

    static void SplitInto(DialogUser& user, const char* unitKB) {
        user.Press(kUnit);
        user.Type(kUnitSize, unitKB);
        user.Press(kSplit);
    }

    // Unit size, button and list are enabled together.
    static bool CanSplit(const DialogUser& user) {
        const bool can = user.IsEnabled(kUnitSize);
        EXPECT_EQ(user.IsEnabled(kSplit), can);
        EXPECT_EQ(user.IsEnabled(kIntervals), can);
        return can;
    }

    std::string m_Path;
    std::string m_Error;

private:
    SplitDialogChooser m_Chooser;
};

TEST_F(SplitDialog, ShowsPathAndSizeInStartedKilobytes) {
    const struct {
        std::size_t bytes;
        const char* size;
    } cases[] = {{8, "1"}, {1024, "1"}, {1025, "2"}, {4096, "4"}};
    for (const auto& c : cases) {
        const auto look = [&](DialogUser& user) {
            EXPECT_EQ(user.Text(kPath).Str(), m_Path);
            EXPECT_EQ(user.Text(kFileSize).Str(), c.size);
            user.Press("OK");
        };
        EXPECT_TRUE(ReadBytes(std::string(c.bytes, 'x'), look)) << m_Error;
        EXPECT_EQ(m_User.m_DialogTitles.back(), "Split  Vesk File");
    }
}

TEST_F(SplitDialog, TakesTheWholeFileAtFirst) {
    const auto accept = [](DialogUser& user) {
        EXPECT_TRUE(user.IsChecked(kWholeFile));
        EXPECT_FALSE(CanSplit(user));
        user.Press(IDOK);
    };
    EXPECT_TRUE(Read(WithFrames(), accept)) << m_Error;
    EXPECT_EQ(Stamps(m_List), WholeOf(WithFrames()));
    EXPECT_EQ(m_List.m_SplitChoice, 0);
}

TEST_F(SplitDialog, OffersSplittingToUnitsOnly) {
    const auto goBackAndForth = [](DialogUser& user) {
        SplitInto(user, "1");
        EXPECT_TRUE(CanSplit(user));
        EXPECT_THAT(user.Lines(kIntervals), SizeIs(3));
        user.Press(kWholeFile);
        EXPECT_FALSE(CanSplit(user));
        EXPECT_THAT(user.Lines(kIntervals), IsEmpty());
        user.Press(kUnit);
        EXPECT_TRUE(CanSplit(user));
        EXPECT_THAT(user.Lines(kIntervals), IsEmpty());
        EXPECT_EQ(user.Selected(kIntervals), -1);
        user.Press(IDOK);
    };
    EXPECT_TRUE(Read(WithFrames(), goBackAndForth)) << m_Error;
    EXPECT_EQ(Stamps(m_List), WholeOf(WithFrames())) << "no line is the whole file";
    EXPECT_EQ(m_List.m_SplitUnit, "1");
    EXPECT_EQ(m_List.m_SplitChoice, 1);
}

TEST_F(SplitDialog, ReadsTheWholeFileIfUnitsWereListedBefore) {
    const auto changeMind = [](DialogUser& user) {
        SplitInto(user, "1");
        user.Press(kWholeFile);
        user.Press(IDOK);
    };
    EXPECT_TRUE(Read(WithFrames(), changeMind)) << m_Error;
    EXPECT_EQ(Stamps(m_List), WholeOf(WithFrames()));
}

TEST_F(SplitDialog, RefusesASizeThatIsNone) {
    for (const char* size : {"", "0", "-1", "KB", "0x10", "-99999999999999999999"}) {
        SCOPED_TRACE(size);
        m_User.m_Messages.clear();
        const auto type = [&](DialogUser& user) {
            SplitInto(user, "1");
            user.Type(kUnitSize, size);
            user.Press(kSplit);
            EXPECT_THAT(user.Lines(kIntervals), IsEmpty());
            user.Press(IDOK);
        };
        EXPECT_TRUE(Read(WithFrames(), type)) << m_Error;
        EXPECT_THAT(m_User.m_Messages, ElementsAre("Invalid unit size"));
        EXPECT_THAT(m_List, SizeIs(200));
    }
}

TEST_F(SplitDialog, ListsTheUnitsOfASizeAndSelectsTheFirst) {
    const Lines ofOne = {"0 ~ 84", "85 ~ 169", "170 ~ 199"};
    const struct {
        const char* size;
        Lines lines;
    } cases[] = {
        {"1", ofOne},
        {" 1 KB", ofOne},
        {"2", {"0 ~ 169", "170 ~ 199"}},
        {"2147483648", {"0 ~ 199"}},
        {"99999999999999999999", {"0 ~ 199"}},
    };
    const auto tryAll = [&](DialogUser& user) {
        for (const auto& c : cases) {
            SCOPED_TRACE(c.size);
            SplitInto(user, c.size);
            EXPECT_EQ(user.Lines(kIntervals), c.lines);
            EXPECT_EQ(user.Selected(kIntervals), 0);
        }
        user.Press(IDOK);
    };
    EXPECT_TRUE(Read(WithFrames(), tryAll)) << m_Error;
    EXPECT_THAT(m_User.m_Messages, IsEmpty());
}

// A range includes a record that begins at its end, so each unit but the last brings the first
// record of the next.
TEST_F(SplitDialog, ReadsTheChosenUnitAsItIsInTheWholeLog) {
    const struct {
        const char* what;
        LogBuilder log;
        int line;
        const char* text;
        std::size_t first, end;  // jobs of the whole log
    } cases[] = {
        {"frame numbers", WithFrames(), 0, "0 ~ 84", 0, 86},
        {"frame numbers, within", WithFrames(), 1, "85 ~ 169", 85, 171},
        {"frame numbers, last", WithFrames(), 2, "170 ~ 199", 170, 200},
        {"computed, first", ComputedFrames(), 0, "101 ~ 228", 0, 129},
        {"computed, last", ComputedFrames(), 1, "229 ~ 300", 128, 200},
        {"packets", InPackets(), 0, "0 ~ 44", 0, 46},
        {"packets, last", InPackets(), 2, "90 ~ 99", 90, 100},
        {"cut in a record", WithFrames().CutLastBytes(5), 2, "170 ~ 198", 170, 199},
        {"packets, cut", InPackets().CutLastBytes(5), 2, "90 ~ 98", 90, 99},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const auto choose = [&](DialogUser& user) {
            SplitInto(user, "1");
            user.Select(kIntervals, c.line);
            EXPECT_EQ(user.Lines(kIntervals).at(static_cast<std::size_t>(c.line)), c.text);
            user.Press(IDOK);
        };
        EXPECT_TRUE(Read(c.log, choose)) << m_Error;
        const Lines whole = WholeOf(c.log);
        ASSERT_GE(whole.size(), c.end);
        EXPECT_THAT(Stamps(m_List), ElementsAreArray(whole.begin() + static_cast<int>(c.first),
                                                     whole.begin() + static_cast<int>(c.end)));
    }
}

TEST_F(SplitDialog, TellsOfADamagedPacketAndOffersTheUnitsBefore) {
    const struct {
        LogBuilder log;
        const char* text;
    } cases[] = {
        {InPackets().Packet(1, 0, ""), "Incorrect Kaldo VESK file. Incorrect packet id."},
        {InPackets().Packet(0xC8, 0, std::string(99, 'x')),
         "Incorrect Kaldo VESK file. Incorrect packet length."},
        {InPackets().Packet(0xC8, 0, "short"),
         "Incorrect VESK data. Header job size: 16, record size: 5"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        m_User.m_Messages.clear();
        const auto choose = [&](DialogUser& user) {
            SplitInto(user, "1");
            EXPECT_THAT(user.Lines(kIntervals), ElementsAre("0 ~ 44", "45 ~ 89"));
            EXPECT_EQ(user.Selected(kIntervals), 0);
            user.Press(IDOK);
        };
        EXPECT_TRUE(Read(c.log, choose)) << m_Error;
        EXPECT_THAT(m_User.m_Messages, ElementsAre(c.text));
        EXPECT_THAT(m_List, SizeIs(46));
    }
}

TEST_F(SplitDialog, RemembersTheChoiceButNotTheUnits) {
    const auto choose = [](DialogUser& user) {
        SplitInto(user, "1");
        user.Select(kIntervals, 2);
        user.Press(IDOK);
    };
    ASSERT_TRUE(Read(WithFrames(), choose)) << m_Error;
    ASSERT_THAT(m_List, SizeIs(30));
    m_List.Clear();
    const auto lookAgain = [](DialogUser& user) {
        EXPECT_EQ(user.Text(kUnitSize), "1");
        EXPECT_TRUE(user.IsChecked(kUnit));
        EXPECT_TRUE(CanSplit(user));
        EXPECT_THAT(user.Lines(kIntervals), IsEmpty());
        user.Press(IDOK);
    };
    EXPECT_TRUE(Read(WithFrames(), lookAgain)) << m_Error;
    EXPECT_THAT(m_List, SizeIs(200));
}

TEST_F(SplitDialog, GivesTheReadUpSilentlyWhenCancelled) {
    ASSERT_TRUE(Read(WithFrames(), [](DialogUser& user) {
        SplitInto(user, "2");
        user.Press(IDOK);
    })) << m_Error;
    const auto cancel = [](DialogUser& user) {
        SplitInto(user, "1");
        user.Select(kIntervals, 1);
        user.Press(kWholeFile);
        user.Press("Cancel");
    };
    EXPECT_FALSE(Read(WithFrames(), cancel));
    EXPECT_EQ(m_Error, "");
    EXPECT_THAT(m_List, IsEmpty());
    EXPECT_EQ(m_List.Report().m_Outcome, ReadOutcome::kCancelled);
    EXPECT_FALSE(Read(WithFrames(), [](DialogUser& user) {
        EXPECT_EQ(user.Text(kUnitSize), "2");
        EXPECT_TRUE(user.IsChecked(kUnit));
        user.Key(VK_ESCAPE);
    }));
}

TEST_F(SplitDialog, LeavesTheStreamWhereTheRangeBegins) {
    HeaderInfo info;
    info.m_JobSize = 12;
    for (const bool hasFrames : {true, false}) {
        info.m_HasFrameNo = hasFrames;
        info.m_ExtraSize = hasFrames ? 0 : 4;
        std::string bytes = WithFrames().Bytes();
        const StreamOwner stream = StreamOver(bytes);
        CMcuSplitFileDlg dialog({"log.bin", stream.get(), info, 3, 120, 2400, "", 0}, info);
        m_User.OnDialog([](DialogUser& user) {
            SplitInto(user, "1");
            user.Press(IDCANCEL);
        });
        EXPECT_EQ(dialog.DoModal(), IDCANCEL);
        EXPECT_THAT(dialog.m_Intervals, SizeIs(3));
        EXPECT_EQ(TellPosition(stream.get()), 120);
    }
}

TEST_F(SplitDialog, GivesTheReadUpWithoutItsTemplate) {
    m_Tables.reset();
    Connect(WithFrames());
    const TemporaryFile file(WithFrames().Bytes());
    SplitDialogChooser chooser;
    m_List.SetRangeChooser(&chooser);
    EXPECT_FALSE(m_List.ReadFile(file.Path(), m_Error));
    EXPECT_EQ(m_Error, "");
}

TEST(MostUnits, EndTheCuttingWithAText) {
    class Counting : public RangeChooser {
    public:
        RangeChoice Choose(const RangeRequest& request) override {
            for (const std::size_t most : {m_There - 1, m_There, m_There + 1}) {
                std::string error;
                const std::size_t listed = ScanUnits(request, 1, error, most).size();
                EXPECT_EQ(listed, std::min(most, m_There));
                EXPECT_EQ(error, most < m_There
                                     ? "The file has more than " + std::to_string(most) +
                                           " units of this size. The first ones are listed."
                                     : "");
            }
            return {};
        }
        std::size_t m_There = 0;
    } counting;
    const struct {
        LogBuilder log;
        std::size_t units;
    } cases[] = {{WithFrames(), 3}, {ComputedFrames(), 2}, {InPackets(), 3}};
    for (const auto& c : cases) {
        counting.m_There = c.units;
        EXPECT_TRUE(::Read(c.log, [&](McuJobList& jobs) { jobs.SetRangeChooser(&counting); }).ok);
    }
}

#if !defined(__SANITIZE_ADDRESS__)  // which needs all addresses for itself

std::string ScanWithLittleMemory(const std::string& path, std::int64_t bytes) {
    constexpr rlim_t kRoom = rlim_t{128} << 20;
    const rlimit limit{kRoom, RLIM_INFINITY};
    setrlimit(RLIMIT_AS, &limit);
    HeaderInfo info;
    info.m_IsKaldo = true;
    info.m_JobSize = static_cast<std::uint32_t>(bytes);
    const StreamOwner stream(std::fopen(path.c_str(), "rb"));
    std::string error;
    ScanUnits({path, stream.get(), info, 0, 0, bytes, "", 1}, 1, error);
    return error;
}

TEST(PacketsTooLargeForTheMemory, EndTheCuttingWithAText) {
    constexpr std::uint32_t kBytes = 1U << 29;
    const TemporaryFile file("\xC8" + std::string(2, '\0') + Words({kBytes}));
    ASSERT_EQ(truncate(file.Path().c_str(), kBytes + 7), 0);
    EXPECT_EXIT(
        _exit(ScanWithLittleMemory(file.Path(), kBytes) == "Failed to allocate Kaldo job size" ? 0
                                                                                               : 1),
        testing::ExitedWithCode(0), "");
}

#endif

}  // namespace
}  // namespace vesk
