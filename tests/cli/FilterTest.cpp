#include <gtest/gtest.h>

#include "host/McuColorMap.h"
#include "tests/cli/VeskFolder.h"
#include "timeline/FilterFile.h"

namespace vesk {
namespace {

class Filter : public testing::Test {
protected:
    Filter() {
        FilterFile file;
        file.m_Sections = {{{{ColorKey("MAIN"), 1, 0x241CED}, {ColorKey("\xE9"), 0, 0}},
                            {{ColorKey("a_long_name"), 2, 0xFFFFFF}},
                            {{0, 1, 0x0000FF}},
                            {{-1, 0, 0xFFFFFF}}}};
        m_Bytes = file.Bytes();
        m_Folder.Write("a.txt", m_Bytes);
    }

    std::string m_Bytes;
    VeskFolder m_Folder;
};

TEST_F(Filter, IsWrittenInEachFormat) {
    const struct {
        const char* arguments;
        const char* out;
    } cases[] = {
        {"filter a.txt",
         "  section           key  checked    color  name\n"
         "    tasks    1296124238        1  #ED1C24  MAIN\n"
         "    tasks           -23        0  #000000  \u00E9\n"
         "functions    1851878757        2     none  name\n"
         "   values             0        1  #FF0000  \n"
         "   labels            -1        0     none  \n"},
        {"filter - --format csv < a.txt",
         "section,key,checked,color,name\n"
         "tasks,1296124238,1,#ED1C24,MAIN\n"
         "tasks,-23,0,#000000,\u00E9\n"
         "functions,1851878757,2,none,name\n"
         "values,0,1,#FF0000,\n"
         "labels,-1,0,none,\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.arguments);
        const ProgramRun run = m_Folder.Vesk(c.arguments);
        EXPECT_EQ(run.out, c.out);
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.code, 0);
    }
    const ProgramRun run = m_Folder.Vesk("filter a.txt --format jsonl -o out");
    EXPECT_EQ(run.code, 0) << run.err;
    const std::string first = R"({"section":"tasks","key":1296124238,"checked":1,)"
                              R"("color":"#ED1C24","name":"MAIN"})";
    EXPECT_EQ(m_Folder.Content("out").substr(0, first.size() + 1), first + "\n");
}

TEST_F(Filter, TellsByItsCodeWhatBecameOfIt) {
    m_Folder.Write("empty.txt", FilterFile().Bytes());
    m_Folder.Write("cut.txt", m_Bytes.substr(0, 40));
    m_Folder.Write("foreign.txt", "VESKFilm and more");
    m_Folder.Write("later.txt", std::string("VESKFilter\2\0\0\0", 14));
    const struct {
        const char* arguments;
        int code;
        const char* err;
        const char* out;
    } cases[] = {
        {"filter empty.txt --format csv", 1, "", "section,key,checked,color,name\n"},
        {"filter cut.txt --format csv", 4, "vesk: cut.txt: the file ends early\n",
         "section,key,checked,color,name\ntasks,1296124238,1,#ED1C24,MAIN\n"},
        {"filter foreign.txt", 3, "vesk: foreign.txt: Incorrect VESK filter file.\n", ""},
        {"filter later.txt", 3,
         "vesk: later.txt: Please use the latest Trawler to import this file.\n", ""},
        {"filter none.txt", 3, "vesk: none.txt: Can't open file.\n", ""},
        {"filter - < foreign.txt", 3, "vesk: standard input: Incorrect VESK filter file.\n", ""},
        {"filter a.txt -o cut.txt", 5, "vesk: cut.txt exists; --force replaces it\n", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.arguments);
        const ProgramRun run = m_Folder.Vesk(c.arguments);
        EXPECT_EQ(run.code, c.code);
        EXPECT_EQ(run.err, c.err);
        EXPECT_EQ(run.out, c.out);
    }
    EXPECT_EQ(m_Folder.Vesk("filter").code, 2);
}

}  // namespace
}  // namespace vesk
