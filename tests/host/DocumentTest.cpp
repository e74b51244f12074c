#include "host/VESKUIDoc.h"

#include "host/LibraryEntry.h"
#include "tests/host/HostTest.h"

namespace {

using Document = HostTest;

TEST_F(Document, StandsInTheGlobalPointerForItsLife) {
    EXPECT_FALSE(global_vesk_doc_ptr);
    {
        const VESKUIDoc document;
        EXPECT_EQ(global_vesk_doc_ptr, &document);
    }
    EXPECT_FALSE(global_vesk_doc_ptr);
}

TEST_F(Document, BeginsWithTheSettingsOfANewOne) {
    const VESKUIDoc document;
    EXPECT_EQ(document.m_UsageType, 0);
    EXPECT_EQ(document.m_UsageDuration, 5000);
    EXPECT_EQ(document.m_UsageUnit, 2);
    EXPECT_EQ(document.m_AreaType, 0);
    EXPECT_EQ(document.m_AreaDuration, 5000);
    EXPECT_EQ(document.m_AreaUnit, 2);
    EXPECT_EQ(document.m_TSTModes, 7);
    EXPECT_EQ(document.m_TSTDuration, 5000);
    EXPECT_EQ(document.m_TSTUnit, 2);
    EXPECT_EQ(document.m_OnlySelected, 0);
    EXPECT_TRUE(document.m_Markers.empty());
    EXPECT_TRUE(document.m_UsageTasks.empty() && document.m_AreaTasks.empty() &&
                document.m_TSTInfos.empty());
    EXPECT_EQ(document.m_JobColor.m_Name, "SapColor");
}

// --- Markers -------------------------------------------------------------------------------------

TEST(Markers, TakeTheLowestFreeNumber) {
    McuMarkerMap markers;
    for (std::uint64_t time = 100; time < 104; ++time) EXPECT_TRUE(markers.AddMarker(time));
    EXPECT_TRUE(markers.RemoveMarker(1));
    EXPECT_FALSE(markers.RemoveMarker(1));
    EXPECT_TRUE(markers.AddMarker(50));
    EXPECT_EQ(markers.GetMarkerTime(1), 50U);
    EXPECT_EQ(markers.size(), 4U);
}

TEST(Markers, OfATimeAreNotDoubledByAdding) {
    McuMarkerMap markers;
    EXPECT_TRUE(markers.AddMarker(7));
    EXPECT_TRUE(markers.AddMarker(7));
    EXPECT_EQ(markers.size(), 1U);
    EXPECT_TRUE(markers.AddMarker(8));
    EXPECT_TRUE(markers.SetMarkerTime(1, 7)) << "moved onto another";
    EXPECT_EQ(markers.GetMarkerTime(0), markers.GetMarkerTime(1));
}

TEST(Markers, AreFiftyAtMost) {
    McuMarkerMap markers;
    for (std::uint64_t time = 0; time < 50; ++time) EXPECT_TRUE(markers.AddMarker(time));
    EXPECT_EQ(markers.rbegin()->first, 49);
    EXPECT_FALSE(markers.AddMarker(50));
    EXPECT_TRUE(markers.AddMarker(49)) << "a time that has its marker";
    EXPECT_EQ(markers.size(), 50U);
}

TEST(Markers, ThatAreAbsentHaveNoTimeAndTakeNone) {
    McuMarkerMap markers;
    EXPECT_EQ(markers.GetMarkerTime(3), 0U);
    EXPECT_FALSE(markers.SetMarkerTime(3, 9));
    EXPECT_TRUE(markers.empty());
}

// --- Library entry -------------------------------------------------------------------------------

TEST(LibraryEntry, JoinsItsTablesUntilItIsDetached) {
    static constexpr vesk::StringEntry kStrings[] = {{4711, "a text of the library"}};
    vesk::ResourceTables tables;
    tables.m_Strings = kStrings;
    EXPECT_TRUE(vesk::AttachLibrary(tables));
    EXPECT_TRUE(vesk::AttachLibrary(tables));
    EXPECT_STREQ(vesk::FindString(4711), "a text of the library");
    vesk::DetachLibrary();
    EXPECT_FALSE(vesk::FindString(4711));
    vesk::DetachLibrary();
}

}  // namespace
