#include "database/TargetDatabase.h"

#include <gtest/gtest.h>

namespace vesk {
namespace {

EnumContent SomeCodes(int width) {
    EnumContent content;
    content.m_Width = width;
    content.Add("Low", 0x34);
    content.Add("Middle", 0x1234);
    content.Add("High", 0x51234);
    content.Add("Again", 0x34);
    content.Add("Minus", -1);
    return content;
}

TEST(EnumContent, LooksValuesUpWholeAndCutToItsWidth) {
    const struct {
        const char* what;
        int width;
        int value;
        const char* name;  // empty: none
    } cases[] = {
        {"the first of two with one value", 4, 0x34, "Low"},
        {"a whole value", 4, 0x51234, "High"},
        {"a value below 0", 4, -1, "Minus"},
        {"4 bytes cut nothing", 4, 0x99934, ""},
        {"1 byte", 1, 0x99934, "Low"},
        {"1 byte: what was declared first wins over the whole value", 1, 0x1234, "Low"},
        {"2 bytes", 2, 0x91234, "Middle"},
        {"2 bytes: what was declared first wins over the whole value", 2, 0x51234, "Middle"},
        {"2 bytes are not 1", 2, 0x99934, ""},
        {"the cut value has no sign", 1, 0xFF, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        std::string name = "untouched";
        const bool found = SomeCodes(c.width).GetName(c.value, name);
        EXPECT_EQ(found, *c.name != '\0');
        EXPECT_EQ(name, found ? c.name : "untouched");
    }
}

TEST(EnumContent, LooksNamesUp) {
    EnumContent content = SomeCodes(4);
    content.Add("Low", 99);
    int value = 7;
    EXPECT_FALSE(content.GetValue("low", value));
    EXPECT_EQ(value, 7);
    EXPECT_TRUE(content.GetValue("Low", value));
    EXPECT_EQ(value, 0x34) << "the first of two with one name";
}

TEST(DataFormat, FindsFieldsByNameAndIndex) {
    DataFormat format;
    format.m_Fields = {{"id", 0, 4}, {"count", 4, 2}, {"count", 6, 2}};
    ASSERT_NE(format.GetField("count"), nullptr);
    EXPECT_EQ(format.GetField("count")->Offset, 4) << "the first of two with one name";
    EXPECT_EQ(format.GetField("frameNo"), nullptr);
    EXPECT_EQ(format.GetFieldAt(2), &format.m_Fields[2]);
    EXPECT_EQ(format.GetFieldAt(3), nullptr);
    EXPECT_EQ(format.GetFieldAt(-1), nullptr);
}

TEST(TargetDatabase, AnswersLookupsFromTheSelectedOne) {
    TargetDatabase database;
    database.m_Formats["Node"].Size = 12;
    database.m_Enums["Codes"].Add("One", 1);
    EXPECT_EQ(TargetDatabase::LookUpFormat("Node"), nullptr) << "none is selected";
    EXPECT_EQ(TargetDatabase::LookUpEnum("Codes"), nullptr);
    TargetDatabase::Select(&database);
    EXPECT_EQ(TargetDatabase::LookUpFormat("Node"), &database.m_Formats["Node"]);
    EXPECT_EQ(TargetDatabase::LookUpEnum("Codes"), &database.m_Enums["Codes"]);
    EXPECT_EQ(TargetDatabase::LookUpFormat("Codes"), nullptr);
    TargetDatabase::Select(nullptr);
    EXPECT_EQ(TargetDatabase::LookUpEnum("Codes"), nullptr);
}

}  // namespace
}  // namespace vesk
