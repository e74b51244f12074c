#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/project/IncludeRules.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const char kTable[] =
    "| folder | what lives there | may include |\n"
    "|---|---|---|\n"
    "| `ground/` | the lowest | |\n"
    "| `middle/` | more | `ground/` |\n"
    "| `middle/Json*` | one part with a library | `ground/` `middle/` `<json/*>` |\n"
    "| `tests/` | | `*` |\n"
    "\n"
    "Text with `code` in it.\n";

SourceTree Tree(std::vector<IncludeLine> includes) {
    return {{"ground/A.h", "ground/B.h", "middle/M.h", "middle/Json.cpp", "tests/T.cpp"},
            std::move(includes)};
}

TEST(FolderTable, HasTheRowsThatBeginWithAPath) {
    const std::vector<FolderRow> rows = ParseFolderTable(kTable);
    ASSERT_THAT(rows, SizeIs(4));
    EXPECT_EQ(rows[2].m_Files, "middle/Json*");
    EXPECT_THAT(rows[2].m_MayInclude, ElementsAre("ground/*", "middle/*", "<json/*>"));
}

TEST(IncludeRules, NameFileAndLineOfAForbiddenInclude) {
    const struct {
        const char* what;
        IncludeLine include;
        const char* fault;  // null: allowed
    } cases[] = {
        {"a folder below", {"middle/M.h", 3, "\"ground/A.h\""}, nullptr},
        {"the own folder", {"ground/A.h", 3, "\"ground/B.h\""}, nullptr},
        {"a folder above",
         {"ground/A.h", 3, "\"middle/M.h\""},
         "ground/A.h:3: \"middle/M.h\" must not be included by ground/*"},
        {"a part of the folder with rules of its own",
         {"middle/M.h", 1, "\"middle/Json.cpp\""},
         "middle/M.h:1: \"middle/Json.cpp\" must not be included by middle/*"},
        {"not written from the root",
         {"ground/A.h", 7, "\"B.h\""},
         "ground/A.h:7: \"B.h\" is no file, as seen from the root of the tree"},
        {"the standard library", {"ground/A.h", 1, "<vector>"}, nullptr},
        {"a library where it is listed", {"middle/Json.cpp", 1, "<json/json.hpp>"}, nullptr},
        {"a library elsewhere",
         {"middle/M.h", 1, "<json/json.hpp>"},
         "middle/M.h:1: <json/json.hpp> must not be included by middle/*"},
        {"a library in a folder that may use all", {"tests/T.cpp", 1, "<json/json.hpp>"}, nullptr},
    };
    const std::vector<FolderRow> rows = ParseFolderTable(kTable);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const auto faults = FindForbiddenIncludes(rows, Tree({c.include}));
        EXPECT_EQ(faults, c.fault ? std::vector<std::string>{c.fault} : std::vector<std::string>{});
    }
}

TEST(IncludeRules, KnowAFolderThatTheTableForgot) {
    EXPECT_THAT(FindForbiddenIncludes(ParseFolderTable(kTable), SourceTree{{"new/N.h"}, {}}),
                ElementsAre("new/N.h: stands in no row of the folder table"));
}

TEST(IncludeRules, FindATableThatPointsUp) {
    EXPECT_THAT(FindRowsThatPointUp(ParseFolderTable("| `a/` | | `b/` |\n| `b/` | | |\n")),
                ElementsAre("a/* may include b/*, which stands below it"));
}

TEST(IncludeRules, FindACycleOnce) {
    const SourceTree tree = Tree({{"ground/A.h", 1, "\"ground/B.h\""},
                                  {"ground/B.h", 1, "\"ground/A.h\""},
                                  {"middle/M.h", 1, "\"ground/A.h\""}});
    EXPECT_THAT(FindCycles(tree), ElementsAre("ground/A.h -> ground/B.h -> ground/A.h"));
}

class ThisTree : public testing::Test {
protected:
    void SetUp() override {
        std::ifstream stream(m_Root / "ARCHITECTURE.md");
        std::ostringstream page;
        page << stream.rdbuf();
        m_Rows = ParseFolderTable(page.str());
        m_Tree = ReadSourceTree(m_Root);
        ASSERT_THAT(m_Rows, SizeIs(testing::Ge(8U)));
        ASSERT_THAT(m_Tree.m_Includes, SizeIs(testing::Ge(50U)));
    }

    std::filesystem::path m_Root = VESK_SOURCE_DIR;
    std::vector<FolderRow> m_Rows;
    SourceTree m_Tree;
};

TEST_F(ThisTree, HasNoIncludeThatTheFolderTableForbids) {
    EXPECT_THAT(FindForbiddenIncludes(m_Rows, m_Tree), IsEmpty());
}

TEST_F(ThisTree, HasAFolderTableWithArrowsThatPointDown) {
    EXPECT_THAT(FindRowsThatPointUp(m_Rows), IsEmpty());
}

TEST_F(ThisTree, HasNoCycleOfIncludes) {
    EXPECT_THAT(FindCycles(m_Tree), IsEmpty());
}

}  // namespace
}  // namespace vesk
