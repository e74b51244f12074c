#include "host/IrqName.h"
#include "host/Palettes.h"
#include "host/VESKUIDoc.h"
#include "tests/host/HostTest.h"

namespace {

using testing::ElementsAre;
using testing::Pair;

class Colors : public HostTest {
protected:
    // The colour that a new document gives a task or interrupt.
    static COLORREF JobColor(const std::string& name) {
        return VESKUIDoc().m_JobColor.Lookup(vesk::ColorKey(name));
    }
    // A task's name with four characters of its own.
    static std::string Numbered(int number) { return std::to_string(1000 + number); }
};

TEST(ColorKey, IsMadeOfTheLastFourCharacters) {
    const struct {
        const char* name;
        std::int32_t key;
    } cases[] = {
        {"", 0},
        {"A", 0x41},
        {"IDLE", 0x49444C45},
        {"a longer IDLE", 0x49444C45},
        {"\xFF", -1},
        {"A\xFF", 0x40FF},         // 0x4100 - 1
        {"\x80zzz", -0x7F858586},  // a first character above 127 makes the key negative
    };
    for (const auto& c : cases) EXPECT_EQ(vesk::ColorKey(c.name), c.key) << c.name;
}

TEST(NameEnd, IsWhatEveryNameOfAKeyEndsIn) {
    for (const char* name : {"", "A", "IDLE", "\xFF", "A\xFF", "\x80zzz", "z\x80\xFF\x80"})
        EXPECT_EQ(vesk::NameEnd(vesk::ColorKey(name)), name);
    EXPECT_EQ(vesk::NameEnd(vesk::ColorKey("a longer IDLE")), "IDLE");
    for (std::uint32_t key = 1; key != 0; key <<= 1) {
        const auto number = static_cast<std::int32_t>(key * 0x9E3779B1);
        EXPECT_EQ(vesk::ColorKey(vesk::NameEnd(number)), number);
    }
}

TEST(ColorMap, GivesBlackForAMissingKeyAndUpdatesOnlyWhatItHolds) {
    McuColorMap map;
    map.m_Colors[5] = 0x123456;
    EXPECT_EQ(map.Lookup(5), 0x123456U);
    EXPECT_EQ(map.Lookup(6), 0U);
    EXPECT_TRUE(map.Update(5, 0));
    EXPECT_EQ(map.Lookup(5), 0U);
    EXPECT_FALSE(map.Update(6, 0xFFFFFF));
    EXPECT_EQ(map.m_Colors.size(), 1U);
}

TEST(IrqName, IsReadAsFarAsHexadecimalDigitsGo) {
    const struct {
        const char* name;
        bool isIrq;
        std::optional<int> number;
    } cases[] = {
        {"IRQ", false, {}},        {"IR", false, {}},        {"MIRQ1", false, {}},
        {"IRQ5", true, 5},         {"irq5", true, 5},        {"iRq1f", true, 31},
        {"IRQ0x1a", true, 26},     {"IRQ0X1A", true, 26},    {"IRQ20", true, 32},
        {"IRQDMA", true, 13},      {"IRQ_CTIRQ1", true, {}}, {"IRQUEUE", true, {}},
        {"IRQ-1", true, -1},       {"IRQ 7", true, 7},       {"IRQFFFFFFFF", true, -1},
        {"IRQ100000003", true, 3}, {"IRQ0x", true, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(vesk::IsIrqName(c.name), c.isIrq);
        EXPECT_EQ(vesk::IrqNumber(c.name), c.number);
    }
}

TEST_F(Colors, OfAnEmptyLogAreNone) {
    const VESKUIDoc document;
    EXPECT_TRUE(document.m_JobColor.m_Colors.empty());
    EXPECT_TRUE(document.m_CustomColor.m_Colors.empty());
    EXPECT_TRUE(document.m_ExtraColor.m_Colors.empty());
}

TEST_F(Colors, StayWithoutAJobList) {
    Task("MAIN");
    VESKUIDoc document;
    vesk_dll_shared_data.m_pJobList = nullptr;
    document.InitVESKColor();
    EXPECT_THAT(document.m_JobColor.m_Colors, ElementsAre(Pair(vesk::ColorKey("MAIN"), 0x241CEDU)));
}

TEST_F(Colors, OfTasksComeFromThePaletteInTheOrderOfNames) {
    Task("BBBB");
    Task("AAAA");
    Task("IDLE");
    Task("IRQ0x05");
    Task("idle");
    EXPECT_EQ(JobColor("AAAA"), 0x241CEDU);
    EXPECT_EQ(JobColor("BBBB"), 0x2265F2U);
    EXPECT_EQ(JobColor("IDLE"), 0xB4B4B4U);
    EXPECT_EQ(JobColor("idle"), 0x1D94F7U);
}

TEST_F(Colors, OfFunctionsBeginFurtherDownThePalette) {
    Task("AAAA");
    Function("one ");
    Function("two ");
    Function("IRQ1");
    Function("IDLE");
    const VESKUIDoc document;
    const auto color = [&](const char* name) {
        return document.m_CustomColor.Lookup(vesk::ColorKey(name));
    };
    EXPECT_EQ(color("IDLE"), 0x89C6FDU);
    EXPECT_EQ(color("IRQ1"), 0x99F7FFU);
    EXPECT_EQ(color("one "), 0x9BDFC4U);
    EXPECT_EQ(color("two "), 0x76C57CU);
}

TEST_F(Colors, OfInterruptsRunFromBlueToPaleBlue) {
    const struct {
        const char* name;
        COLORREF color;
    } cases[] = {
        {"IRQ0x00", 0xFF0000},    {"IRQ0x01", 0xFF0706}, {"IRQ0x1f", 0xFFF7C1},
        {"IRQ0x20", 0xFF0000},    {"irq1", 0xFF0706},    {"IRQ-1", 0xFFF8F9},
        {"IRQ_CTIRQ1", 0xFF0000},
    };
    for (const auto& c : cases) {
        Jobs().m_JobNames = {{c.name, 1}};
        EXPECT_EQ(JobColor(c.name), c.color) << c.name;
    }
}

TEST_F(Colors, OfTheNameIRQAloneIsATasks) {
    Task("IRQ");
    EXPECT_EQ(JobColor("IRQ"), 0x241CEDU);
}

TEST_F(Colors, OfAnInterruptWithoutANumberAreThoseOfTheOneBefore) {
    Task("IRQ0x01");
    Task("IRQ_DMA");
    Task("IRQ_UART");
    Task("TASK");
    EXPECT_EQ(JobColor("IRQ_DMA"), 0xFF0706U);
    EXPECT_EQ(JobColor("IRQ_UART"), 0xFF0706U);
    EXPECT_EQ(JobColor("TASK"), 0x241CEDU) << "interrupts take nothing from the palette";
}

TEST_F(Colors, RepeatAfter178Tasks) {
    for (int i = 0; i < 179; ++i) Task(Numbered(i));
    EXPECT_EQ(JobColor(Numbered(0)), 0x241CEDU);
    EXPECT_EQ(JobColor(Numbered(177)), 0x9D009DU);
    EXPECT_EQ(JobColor(Numbered(178)), 0x241CEDU);
}

TEST_F(Colors, AreSharedByNamesThatEndAlikeAndStillUseUpAnEntry) {
    Task("1-TAIL");
    Task("2-TAIL");
    Task("3");
    const VESKUIDoc document;
    EXPECT_EQ(document.m_JobColor.m_Colors.size(), 2U);
    EXPECT_EQ(document.m_JobColor.Lookup(vesk::ColorKey("2-TAIL")), 0x241CEDU);
    EXPECT_EQ(document.m_JobColor.Lookup(vesk::ColorKey("3")), 0x1D94F7U);
}

TEST_F(Colors, OfExtraValuesGoByIndex) {
    Jobs().m_ExtraInfoNum = 13;
    const VESKUIDoc document;
    EXPECT_EQ(document.m_ExtraColor.m_Colors.size(), 13U);
    EXPECT_EQ(document.m_ExtraColor.Lookup(0), 0x0000FFU);
    EXPECT_EQ(document.m_ExtraColor.Lookup(11), 0x80FFC0U);
    EXPECT_EQ(document.m_ExtraColor.Lookup(12), 0x0000FFU);
}

TEST_F(Colors, ThatWereChosenStayAndThoseOfGoneNamesGo) {
    Task("AAAA");
    Task("BBBB");
    Function("func");
    Jobs().m_ExtraInfoNum = 2;
    VESKUIDoc document;
    EXPECT_TRUE(document.m_JobColor.Update(vesk::ColorKey("BBBB"), 0x010203));
    EXPECT_TRUE(document.m_CustomColor.Update(vesk::ColorKey("func"), 0x040506));
    EXPECT_TRUE(document.m_ExtraColor.Update(1, 0x070809));
    Jobs().m_JobNames = {{"BBBB", 1}, {"CCCC", 1}};
    document.InitVESKColor();
    EXPECT_THAT(document.m_JobColor.m_Colors, ElementsAre(Pair(vesk::ColorKey("BBBB"), 0x010203U),
                                                          Pair(vesk::ColorKey("CCCC"), 0x241CEDU)));
    EXPECT_EQ(document.m_CustomColor.Lookup(vesk::ColorKey("func")), 0x040506U);
    EXPECT_EQ(document.m_ExtraColor.Lookup(1), 0x070809U);
}

// Entry 48 of the palette is black, which does not count as chosen: the second time, all other
// names have their colours, and this one is the first to take from the palette.
TEST_F(Colors, ThatAreBlackAreChosenAnew) {
    for (int i = 0; i < 50; ++i) Task(Numbered(i));
    VESKUIDoc document;
    const std::int32_t black = vesk::ColorKey(Numbered(48));
    EXPECT_EQ(document.m_JobColor.Lookup(black), 0U);
    document.InitVESKColor();
    EXPECT_EQ(document.m_JobColor.Lookup(black), 0x241CEDU);
    EXPECT_EQ(document.m_JobColor.Lookup(vesk::ColorKey(Numbered(49))), 0x26007AU);
}

// --- The sample logs -----------------------------------------------------------------------------

TEST_F(Colors, OfASampleLog) {
    ReadSample("esp32_ticks");
    const struct {
        const char* name;
        COLORREF color;
    } cases[] = {
        {"IDLE", 0xB4B4B4}, {"IRQ_CTIRQ1", 0xFF0000}, {"IRQ_FROM_CPU0", 0xFF0000},
        {"all0", 0x241CED}, {"all1", 0x2265F2},       {"all2", 0x1D94F7},
        {"main", 0x00F2FF},
    };
    EXPECT_EQ(Jobs().m_JobNames.size(), std::size(cases));
    for (const auto& c : cases) EXPECT_EQ(JobColor(c.name), c.color) << c.name;
    EXPECT_TRUE(VESKUIDoc().m_CustomColor.m_Colors.empty());
    EXPECT_TRUE(VESKUIDoc().m_ExtraColor.m_Colors.empty());
}

// The shade of "IRQ0x" and two digits, in whole numbers: 6.25 is 25/4 and 7.96875 is 255/32.
COLORREF ShadeOf(int number) {
    const int n = number % 32;
    return 0xFF0000U | static_cast<COLORREF>(n * 255 / 32) << 8 | static_cast<COLORREF>(n * 25 / 4);
}

std::string Tail(const std::string& name) {
    return name.size() < 4 ? name : name.substr(name.size() - 4);
}

// By the last four characters of the names. The samples' interrupts are called "IRQ0x" and two
// digits, or "IRQ_" and a word, which takes the shade of the number before it.
std::map<std::string, COLORREF> ExpectedJobColors(const McuJobList& jobs) {
    std::map<std::string, COLORREF> expected;
    std::size_t taken = 0;
    int lastNumber = 0;
    for (const auto& [name, count] : jobs.m_JobNames) {
        if (name.starts_with("IRQ0x")) lastNumber = std::stoi(name.substr(5), nullptr, 16);
        const COLORREF color = name.starts_with("IRQ") ? ShadeOf(lastNumber)
                               : name == "IDLE"        ? 0xB4B4B4
                                                       : vesk::kNamePalette[taken++ % 178];
        expected.emplace(Tail(name), color);
    }
    return expected;
}

TEST_F(Colors, OfTheLogsWithFunctionsAndExtraValues) {
    for (const char* log : {"pacman_packets", "wget_headerless"}) {
        SCOPED_TRACE(log);
        ReadSample(log);
        const VESKUIDoc document;
        const auto expected = ExpectedJobColors(Jobs());
        EXPECT_GT(expected.size(), 10U);
        EXPECT_EQ(document.m_JobColor.m_Colors.size(), expected.size());
        for (const auto& [name, count] : Jobs().m_JobNames)
            EXPECT_EQ(document.m_JobColor.Lookup(vesk::ColorKey(name)), expected.at(Tail(name)))
                << name;

        std::size_t taken = 18;
        EXPECT_GT(Jobs().m_CustomNames.size(), 10U);
        EXPECT_EQ(document.m_CustomColor.m_Colors.size(), Jobs().m_CustomNames.size());
        for (const auto& [name, total] : Jobs().m_CustomNames)
            EXPECT_EQ(document.m_CustomColor.Lookup(vesk::ColorKey(name)),
                      vesk::kNamePalette[taken++ % 178])
                << name;

        const auto extras = static_cast<std::size_t>(Jobs().m_ExtraInfoNum);
        EXPECT_GE(extras, 3U);
        EXPECT_EQ(document.m_ExtraColor.m_Colors.size(), extras);
        for (std::size_t i = 0; i < extras; ++i)
            EXPECT_EQ(document.m_ExtraColor.Lookup(static_cast<int>(i)),
                      vesk::kExtraPalette[i % 12]);
        vesk_dll_shared_data.free_joblist();
    }
}

}  // namespace
