#include "database/ElfTargetLoader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/database/DescribeTarget.h"

// All files are made from tests/data/target_load.c: by the host's compiler in several forms, and
// beforehand by one for a big-endian processor with 32-bit pointers.

namespace vesk {
namespace {

using testing::StartsWith;

const std::string kForeign = VESK_TEST_DATA "/target_load_armeb.o";

// What the source says; pointers and enumerations have the widths of the processor.
std::string ExpectedTarget(int pointer, int smallEnum) {
    const std::string p = std::to_string(pointer);
    const std::string packed = std::to_string(8 + pointer) +
                               ": head@0+2 low@2+1 middle@2+2 high@3+1 word@4+4 left@4+2 "
                               "right@6+2 next@8+" +
                               p + " tail@" + std::to_string(8 + pointer) + "+0\n";
    const std::string width = " width " + std::to_string(smallEnum) + ": ";
    return "Alias_T " + packed + "Packed " + packed + "Packed_T " + packed +
           "SA_LoggingNode_T 24: contextID@0+4 USCNT@4+4 frameNo@8+4 counters@12+12\n"
           "Code" +
           width +
           "Code_First=3 Code_Alias=3 Code_Last=200\n"
           "Level" +
           width +
           "Level_Below=-1 Level_Low=1 Level_High=100\n"
           "Trawler_VESK_Clock width 4: VESK_Clock_Wrap=134217728 VESK_Clock_Origin_Rate=1083333 "
           "VESK_Clock_Rate=1000000\n";
}

std::string ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Loads a file of given bytes into a database that knows one structure already.
class ElfTarget : public testing::Test {
protected:
    bool LoadBytes(const std::string& bytes) {
        std::ofstream(m_Path, std::ios::binary | std::ios::trunc) << bytes;
        m_Database = {};
        m_Database.m_Formats["Known"].Size = 1;
        m_Error.clear();
        return LoadTargetFromElf(m_Path, m_Database, m_Error);
    }

    void ExpectRefused() {
        EXPECT_THAT(m_Error, StartsWith(m_Path + ": "));
        EXPECT_EQ(DescribeTarget(m_Database), "Known 1:\n");
    }

    void TearDown() override { std::filesystem::remove(m_Path); }

    const std::string m_Path =
        testing::TempDir() + testing::UnitTest::GetInstance()->current_test_info()->name() + ".o";
    TargetDatabase m_Database;
    std::string m_Error;
};

TEST_F(ElfTarget, ReadsEveryFormAlike) {
    const int pointer = sizeof(void*);
    const struct {
        const char* what;
        std::string path;
        std::string target;
    } cases[] = {
        {"object file with relocations", VESK_HOST_OBJECT, ExpectedTarget(pointer, 4)},
        {"linked file", VESK_HOST_LINKED, ExpectedTarget(pointer, 4)},
        {"old debug format", VESK_HOST_DWARF2, ExpectedTarget(pointer, 4)},
        {"other processor, big-endian", kForeign, ExpectedTarget(4, 1)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        TargetDatabase database;
        std::string error;
        EXPECT_TRUE(LoadTargetFromElf(c.path, database, error)) << error;
        EXPECT_EQ(DescribeTarget(database), c.target);
    }
}

TEST_F(ElfTarget, KeepsWhatIsKnownAndReplacesTheSameName) {
    TargetDatabase database;
    database.m_Formats["Known"].Size = 1;
    database.m_Formats["Packed"].Size = 1;
    database.m_Enums["Code"].Add("Old", 1);
    std::string error;
    EXPECT_TRUE(LoadTargetFromElf(kForeign, database, error)) << error;
    EXPECT_EQ(database.FindFormat("Known")->Size, 1);
    EXPECT_EQ(database.FindFormat("Packed")->Size, 12);
    int value = 0;
    EXPECT_FALSE(database.FindEnum("Code")->GetValue("Old", value));
}

TEST_F(ElfTarget, RefusesWhatIsNoElfFile) {
    for (const char* bytes : {"",
                              "\x7f"
                              "ELF",
                              "{\"enums\": {}} and more text", "!<arch>\n0123456789"}) {
        SCOPED_TRACE(bytes);
        EXPECT_FALSE(LoadBytes(bytes));
        ExpectRefused();
    }
    for (const std::string& path : {std::string("no such file"), testing::TempDir()}) {
        EXPECT_FALSE(LoadTargetFromElf(path, m_Database, m_Error));
        EXPECT_EQ(m_Error, path + ": the file cannot be opened");
    }
}

// The table of sections stands at the end of the file, so a prefix names no debug information.
TEST_F(ElfTarget, RefusesEveryPrefix) {
    const std::string whole = ReadBytes(kForeign);
    ASSERT_GT(whole.size(), 3000u);
    for (std::size_t size = 0; size < whole.size(); size += 11) {
        SCOPED_TRACE(size);
        EXPECT_FALSE(LoadBytes(whole.substr(0, size)));
        ExpectRefused();
    }
}

// Not every changed byte shows: names and sizes may simply be others. But a file is either read or
// refused with a reason.
TEST_F(ElfTarget, ReadsOrRefusesADamagedFile) {
    const std::string whole = ReadBytes(kForeign);
    int refused = 0;
    for (std::size_t i = 0; i < whole.size(); i += 3) {
        SCOPED_TRACE(i);
        std::string damaged = whole;
        damaged[i] = static_cast<char>(~damaged[i]);
        if (LoadBytes(damaged)) {
            EXPECT_EQ(m_Database.m_Formats.count("Known"), 1u);
            continue;
        }
        ++refused;
        ExpectRefused();
    }
    EXPECT_GT(refused, 100);
}

}  // namespace
}  // namespace vesk
