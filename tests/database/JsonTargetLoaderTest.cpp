#include "database/JsonTargetLoader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/database/DescribeTarget.h"

namespace vesk {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

std::string Capability(const std::string& tenthByte) {
    return std::string(20, '0') + tenthByte + std::string(58, '0');
}

// A database with an entry that a description must leave alone or replace.
TargetDatabase KnownTarget() {
    TargetDatabase database;
    database.m_Capability.m_Bytes[13] = 1;
    database.m_Formats["Node"] = {8, {{"id", 0, 4}}};
    return database;
}

TEST(JsonTarget, ReadsEveryForm) {
    const struct {
        const char* what;
        const char* text;
        const char* target;
    } cases[] = {
        {"nothing", "{}", "Node 8: id@0+4\n"},
        {"fields in order", R"({"structures": {"B": {"size": 6, "fields": [
            {"name": "z", "offset": 0, "size": 4}, {"size": 2, "offset": 4, "name": "a"}]}}})",
         "B 6: z@0+4 a@4+2\nNode 8: id@0+4\n"},
        {"an entry of the same name", R"({"structures": {"Node": {"size": 0, "fields": []}}})",
         "Node 0:\n"},
        {"the largest size", R"({"structures": {"Node": {"size": 2147483647, "fields": []}}})",
         "Node 2147483647:\n"},
        {"enumerators in order", R"({"enums": {"E": [["B", 2], ["A", 1], ["B", 3]]}})",
         "Node 8: id@0+4\nE width 4: B=2 A=1 B=3\n"},
        {"an enumeration with a width", R"({"enums": {"E": {"width": 1, "values": [["A", 1]]}}})",
         "Node 8: id@0+4\nE width 1: A=1\n"},
        {"values of 32 bits, signed and unsigned",
         R"({"enums": {"E": [["L", -2147483648], ["H", 2147483647], ["U", 4294967295]]}})",
         "Node 8: id@0+4\nE width 4: L=-2147483648 H=2147483647 U=-1\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        TargetDatabase database = KnownTarget();
        std::string error;
        EXPECT_TRUE(ParseTargetJson(c.text, database, error)) << error;
        EXPECT_EQ(DescribeTarget(database), c.target);
        EXPECT_TRUE(database.m_Capability.CanStartLogging()) << "it was not given";
    }
}

TEST(JsonTarget, TakesCapabilityBytesInEitherCase) {
    for (const char* byte : {"0a", "0A"}) {
        TargetDatabase database = KnownTarget();
        std::string error;
        EXPECT_TRUE(
            ParseTargetJson(R"({"capability": ")" + Capability(byte) + "\"}", database, error));
        EXPECT_EQ(database.m_Capability.m_Bytes[10], 10);
        EXPECT_FALSE(database.m_Capability.CanStartLogging());
    }
}

TEST(JsonTarget, NamesThePlaceOfAMistake) {
    const std::string bad = Capability("0g");
    const std::string field = R"({"structures": {"S": {"size": 4, "fields": [)";
    const struct {
        const char* what;
        std::string text;
        const char* error;
    } cases[] = {
        {"no text", "", "parse error"},
        {"cut off", R"({"enums": {"E": [["A")", "parse error at line 1"},
        {"no UTF-8", "{\"\xFF\": 1}", "parse error"},
        {"no object", "[]", "description: expected an object"},
        {"a misspelt key", R"({"enum": {}})", "description: unknown key \"enum\""},
        {"a key twice", R"({"enums": {"E": [], "E": []}})", "the key \"E\" stands twice"},
        {"deep nesting", std::string(100000, '['), "nested too deeply"},
        {"deep objects", R"({"enums": {"E": {"a":{"a":{"a":{"a":{"a":{"a":{"a":1}}}}}}}}})",
         "nested too deeply"},
        {"capability: a number", R"({"capability": 1})",
         "capability: expected a text of 80 hexadecimal digits"},
        {"capability: too short", R"({"capability": "01"})", "expected a text of 80"},
        {"capability: no digit", R"({"capability": ")" + bad + "\"}",
         "capability: expected hexadecimal digits only"},
        {"structures: a list", R"({"structures": []})", "structures: expected an object"},
        {"structure: a number", R"({"structures": {"S": 1}})", "structures.S: expected an object"},
        {"structure: no size", R"({"structures": {"S": {"fields": []}}})",
         "structures.S: the key \"size\" is missing"},
        {"structure: no fields", R"({"structures": {"S": {"size": 4}}})",
         "structures.S: the key \"fields\" is missing"},
        {"structure: fields no list", R"({"structures": {"S": {"size": 4, "fields": {}}}})",
         "structures.S.fields: expected an array"},
        {"size below 0", R"({"structures": {"S": {"size": -1, "fields": []}}})",
         "structures.S.size: expected a whole number from 0 to 2147483647"},
        {"size of 32 bits", R"({"structures": {"S": {"size": 2147483648, "fields": []}}})",
         "structures.S.size: expected a whole number"},
        {"field: no object", field + "7]}}}", "structures.S.fields[0]: expected an object"},
        {"field: no name", field + R"({"offset": 0, "size": 1}]}}})", "\"name\" is missing"},
        {"field: name a number", field + R"({"name": 1, "offset": 0, "size": 1}]}}})",
         "structures.S.fields[0].name: expected a text"},
        {"field: empty name", field + R"({"name": "", "offset": 0, "size": 1}]}}})",
         "structures.S.fields[0].name: expected a name"},
        {"field: no offset", field + R"({"name": "a", "size": 1}]}}})", "\"offset\" is missing"},
        {"field: a fraction", field + R"({"name": "a", "offset": 0.5, "size": 1}]}}})",
         "structures.S.fields[0].offset: expected a whole number"},
        {"field: size as text", field + R"({"name": "a", "offset": 0, "size": "1"}]}}})",
         "structures.S.fields[0].size: expected a whole number"},
        {"enumeration: a number", R"({"enums": {"E": 1}})", "enums.E: expected an object"},
        {"enumeration: a bad width", R"({"enums": {"E": {"width": 3, "values": []}}})",
         "enums.E.width: expected 1, 2 or 4"},
        {"enumeration: no values", R"({"enums": {"E": {"width": 1}}})", "\"values\" is missing"},
        {"enumerator: no pair", R"({"enums": {"E": [["A", 1], ["B"]]}})",
         "enums.E[1]: expected a pair"},
        {"enumerator: swapped", R"({"enums": {"E": [[1, "A"]]}})",
         "enums.E[0][1]: expected a whole"},
        {"enumerator: name a list", R"({"enums": {"E": [[[], 1]]}})",
         "enums.E[0][0]: expected a text"},
        {"value above 32 bits", R"({"enums": {"E": [["A", 4294967296]]}})",
         "enums.E[0][1]: expected a whole number from -2147483648 to 4294967295"},
        {"value below 32 bits", R"({"enums": {"E": [["A", -2147483649]]}})", "enums.E[0][1]"},
        {"value of 64 bits", R"({"enums": {"E": [["A", 18446744073709551615]]}})", "enums.E[0][1]"},
        {"value of more bits", R"({"enums": {"E": [["A", 99999999999999999999]]}})",
         "enums.E[0][1]"},
        {"a name with a control character", "{\"enums\": {\"\\u001b[2J\": 1}}",
         "enums.\\u001b[2J: expected an object"},
        {"a good part before the mistake", R"({"structures": {"Node": {"size": 1, "fields": []}},
            "enums": 1})",
         "enums: expected an object"},
        {"too large", std::string((std::size_t{16} << 20) + 1, ' '), "above 16 MiB"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        TargetDatabase database = KnownTarget();
        std::string error;
        EXPECT_FALSE(ParseTargetJson(c.text, database, error));
        EXPECT_THAT(error, HasSubstr(c.error));
        EXPECT_EQ(DescribeTarget(database), DescribeTarget(KnownTarget()));
    }
}

TEST(JsonTarget, LoadsAFileAndNamesOneItCannotRead) {
    const std::string path = testing::TempDir() + "JsonTarget.target.json";
    std::ofstream(path) << R"({"enums": {"E": [["A", 1]]}})";
    TargetDatabase database;
    std::string error;
    EXPECT_TRUE(LoadTargetFromJson(path, database, error)) << error;
    EXPECT_EQ(DescribeTarget(database), "E width 4: A=1\n");
    EXPECT_TRUE(error.empty());
    std::filesystem::remove(path);
    for (const std::string& bad : {path, testing::TempDir()}) {
        EXPECT_FALSE(LoadTargetFromJson(bad, database, error));
        EXPECT_THAT(error, StartsWith(bad + ": "));
    }
}

TEST(JsonTarget, TheExampleOfTheManualIsComplete) {
    std::ifstream file(VESK_DOCS "/target-description.md");
    const std::string page{std::istreambuf_iterator<char>(file), {}};
    const std::string opening = "```json\n";
    const std::size_t start = page.find(opening) + opening.size();
    TargetDatabase database;
    std::string error;
    EXPECT_TRUE(
        ParseTargetJson(page.substr(start, page.find("```", start) - start), database, error))
        << error;
    EXPECT_TRUE(database.m_Capability.LogsMicroseconds());
    ASSERT_NE(database.FindFormat("SA_LoggingNode_T"), nullptr);
    EXPECT_EQ(database.FindFormat("SA_LoggingNode_T")->GetField("frameNo")->Offset, 12);
    EXPECT_EQ(database.m_Enums.size(), 2u);
}

}  // namespace
}  // namespace vesk
