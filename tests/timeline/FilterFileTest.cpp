#include "timeline/FilterFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/Dice.h"
#include "tests/support/TemporaryFile.h"

namespace vesk {
namespace {

using testing::SizeIs;

std::string Word(std::uint32_t number) {
    std::string bytes;
    for (; bytes.size() < 4; number >>= 8) bytes += static_cast<char>(number & 0xFF);
    return bytes;
}
std::string Words(std::initializer_list<std::uint32_t> numbers) {
    std::string bytes;
    for (const std::uint32_t number : numbers) bytes += Word(number);
    return bytes;
}
std::string Head(std::uint32_t version = 1) {
    return "VESKFilter" + Word(version);
}

struct Outcome {
    bool ok;
    std::string error;
    FilterFile file;
};
Outcome ReadBytesOf(const std::string& bytes) {
    const TemporaryFile on(bytes);
    Outcome outcome{};
    outcome.ok = outcome.file.Read(on.Path(), outcome.error);
    return outcome;
}

FilterFile RandomFile(Dice& dice) {
    FilterFile file;
    for (auto& section : file.m_Sections)
        for (std::uint32_t n = dice.Below(dice.OnceIn(10) ? 3000 : 5); n > 0; --n)
            section.push_back({static_cast<std::int32_t>(dice.Next()),
                               static_cast<std::int32_t>(dice.Chance(80) ? 1 : dice.Next()),
                               static_cast<COLORREF>(dice.Next())});
    return file;
}

TEST(FilterFile, IsTheHeadAndFourSectionsOfLittleEndianRecords) {
    FilterFile file;
    EXPECT_EQ(file.Bytes(), Head() + Words({0, 0, 0, 0}));
    file.m_Sections[FilterFile::kTasks] = {{-2, 1, 0x241CED}, {0x4D41494E, 0, 0}};
    file.m_Sections[FilterFile::kLabels] = {{0, 1, 0xFFFFFF}};
    EXPECT_EQ(file.Bytes(), Head() + Words({2, 0xFFFFFFFE, 1, 0x241CED, 0x4D41494E, 0, 0}) +
                                Words({0, 0, 1, 0, 1, 0xFFFFFF}));
}

TEST(FilterFile, ComesBackAsItWasWritten) {
    Dice dice(7);
    for (int i = 0; i < 50; ++i) {
        const FilterFile file = RandomFile(dice);
        const TemporaryFile on("something else");
        std::string error;
        ASSERT_TRUE(file.Write(on.Path(), error)) << error;
        FilterFile again;
        ASSERT_TRUE(again.Read(on.Path(), error)) << error;
        EXPECT_EQ(again.m_Sections, file.m_Sections);
        EXPECT_FALSE(again.m_CutOff);
    }
}

// Records that are whole count, wherever the end comes.
TEST(FilterFile, IsTakenAsFarAsItGoes) {
    Dice dice(3);
    FilterFile file;
    for (auto& section : file.m_Sections) section.assign(3, {dice.Between(0, 9), 1, 5});
    const std::string bytes = file.Bytes();
    constexpr std::size_t kHead = 14, kCount = 4, kRecord = 12;
    for (std::size_t size = 10; size <= bytes.size(); ++size) {
        const Outcome outcome = ReadBytesOf(bytes.substr(0, size));
        ASSERT_TRUE(outcome.ok) << size;
        EXPECT_EQ(outcome.file.m_CutOff, size < bytes.size());
        std::size_t begin = kHead + kCount;
        for (std::size_t i = 0; i < FilterFile::kSections; ++i) {
            const std::size_t there = size < begin ? 0 : (size - begin) / kRecord;
            EXPECT_THAT(outcome.file.m_Sections[i], SizeIs(std::min<std::size_t>(there, 3)));
            begin += kCount + 3 * kRecord;
        }
    }
}

TEST(FilterFile, TakesNoCountForGranted) {
    const std::string record = Words({7, 1, 0});
    const struct {
        const char* what;
        std::string bytes;
        std::size_t tasks, functions;
        bool cutOff;
    } cases[] = {
        {"more than there are", Head() + Word(0x7FFFFFFF) + record + record, 2, 0, true},
        {"a negative one is 0", Head() + Word(0x80000000) + Word(1) + record + Words({0, 0}), 0, 1,
         false},
        {"bytes behind the sections", Head() + Words({0, 0, 0, 0}) + record, 0, 0, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Outcome outcome = ReadBytesOf(c.bytes);
        EXPECT_TRUE(outcome.ok) << outcome.error;
        EXPECT_THAT(outcome.file.m_Sections[FilterFile::kTasks], SizeIs(c.tasks));
        EXPECT_THAT(outcome.file.m_Sections[FilterFile::kFunctions], SizeIs(c.functions));
        EXPECT_EQ(outcome.file.m_CutOff, c.cutOff);
    }
}

TEST(FilterFile, IsRefusedWithATextAndNothingTaken) {
    constexpr const char* kIncorrect = "Incorrect VESK filter file.";
    constexpr const char* kTooNew = "Please use the latest Trawler to import this file.";
    const std::string sections = Words({1, 7, 1, 0, 0, 0, 0});
    const struct {
        std::string bytes;
        const char* error;
    } cases[] = {
        {"", kIncorrect},
        {"VESKFilte", kIncorrect},
        {"VESKfilter" + Word(1) + sections, kIncorrect},
        {Head(2) + sections, kTooNew},
        {Head(0x7FFFFFFF) + sections, kTooNew},
        {Head(1) + sections, ""},
        {Head(0) + sections, ""},
        {Head(0xFFFFFFFF) + sections, ""},
    };
    for (const auto& c : cases) {
        const Outcome outcome = ReadBytesOf(c.bytes);
        EXPECT_EQ(outcome.error, c.error);
        EXPECT_EQ(outcome.ok, outcome.error.empty());
        EXPECT_THAT(outcome.file.m_Sections[0], SizeIs(outcome.ok ? 1 : 0));
    }
    std::string error;
    for (const std::string& path : {std::string("no/such/file"), std::string("/")}) {
        EXPECT_FALSE(FilterFile().Read(path, error));
        EXPECT_EQ(error, "Can't open file.");
    }
}

TEST(FilterFile, ThatCannotBeWrittenLeavesNothingBehind) {
    const TemporaryFile place("");
    const std::filesystem::path folder = place.Path() + ".folder";
    std::filesystem::create_directories(folder / "taken");
    const struct {
        std::filesystem::path path;
        int code;
    } cases[] = {{folder / "missing" / "a.txt", ENOENT}, {folder / "taken", EISDIR}};
    for (const auto& c : cases) {
        std::string error;
        EXPECT_FALSE(FilterFile().Write(c.path.string(), error));
        EXPECT_EQ(error, "Can't create file : " + c.path.string() +
                             ". Error code: " + std::to_string(c.code));
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
    std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace vesk
