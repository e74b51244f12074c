#include "database/TargetFile.h"

#include <gtest/gtest.h>

namespace vesk {
namespace {

TEST(TargetFile, IsTakenForWhatItBeginsAs) {
    const struct {
        const char* m_Path;
        bool m_Loads;
    } cases[] = {
        {VESK_HOST_OBJECT, true},
        {VESK_SAMPLES "/esp32_ticks.target.json", true},
        {VESK_SAMPLES "/esp32_ticks.bin", false},
        {VESK_SAMPLES "/none.json", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_Path);
        TargetDatabase database;
        std::string error;
        EXPECT_EQ(LoadTargetFile(c.m_Path, database, error), c.m_Loads) << error;
        EXPECT_EQ(error.empty(), c.m_Loads);
        EXPECT_EQ(database.m_Formats.empty() && database.m_Enums.empty(), !c.m_Loads);
    }
}

TEST(TargetFile, OfALogStandsBesideIt) {
    EXPECT_EQ(TargetFileBeside("logs/a.b.bin"), "logs/a.b.target.json");
    EXPECT_EQ(TargetFileBeside("/logs.d/plain"), "/logs.d/plain.target.json");
}

}  // namespace
}  // namespace vesk
