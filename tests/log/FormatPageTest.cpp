#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "database/TargetDatabase.h"
#include "log/HostValues.h"
#include "log/McuJobList.h"
#include "platform/Text.h"

namespace vesk {
namespace {

// The block of docs/log-format.md between "```kind" and "```".
std::string BlockOfThePage(const std::string& kind) {
    std::ifstream stream(VESK_DOCS_DIR "/log-format.md");
    std::ostringstream page;
    page << stream.rdbuf();
    const std::string text = page.str();
    const std::string fence = "```" + kind + "\n";
    const std::size_t begin = text.find(fence);
    if (begin == std::string::npos) return "";
    const std::size_t from = begin + fence.size();
    return text.substr(from, text.find("```", from) - from);
}

// The pairs of hexadecimal digits at the start of each line; what follows them is prose.
std::string BytesOf(const std::string& hexLines) {
    std::string bytes;
    std::istringstream lines(hexLines);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string word;
        while (words >> word && word.size() == 2 && std::isxdigit(word[0]) &&
               std::isxdigit(word[1]))
            bytes += static_cast<char>(std::stoi(word, nullptr, 16));
    }
    return bytes;
}

void AppendSpans(const char* kind, const std::vector<McuJob>& jobs, std::string& text) {
    for (const McuJob& job : jobs) {
        text += FormatText("%s %s from %llu to %llu\n", kind, job.m_Name.c_str(),
                           static_cast<unsigned long long>(job.m_StartTime),
                           static_cast<unsigned long long>(job.m_EndTime));
    }
}

std::string Described(const McuJobList& list) {
    std::string text;
    for (const McuJob& job : list) {
        AppendSpans("job", {job}, text);
        text.pop_back();
        text += FormatText(", frame %d, count %u\n", job.m_TimeStamp, job.m_TimeCount);
    }
    for (const auto& [name, calls] : list.m_CustomJobsCS) AppendSpans("call", calls, text);
    AppendSpans("segment", list.m_CustomJobs, text);
    for (const McuJob& mark : list.m_SourceMarks) {
        text += "mark " + mark.m_Name + " at " + std::to_string(mark.m_StartTime) + "\n";
    }
    for (const ExtraInfoRecord& sample : list.m_ExtraInfos) {
        text += "sample " + list.m_ExtraNames.at(0).Str() + " " +
                std::to_string(sample.m_Values.at(0)) + " from " + std::to_string(sample.m_Time) +
                ", " + sample.m_Name + "\n";
    }
    return text;
}

TEST(FormatPage, TheWorkedExampleReadsAsThePagePromises) {
    const std::string path = testing::TempDir() + "vesk_format_page.bin";
    std::ofstream(path, std::ios::binary) << BytesOf(BlockOfThePage("hex"));
    TargetDatabase nothingKnown;
    TargetDatabase::Select(&nothingKnown);
    CurrentHostValues() = HostValues{};

    McuJobList list;
    list.registerDBCallback(TargetDatabase::LookUpFormat, TargetDatabase::LookUpEnum);
    std::string error;
    EXPECT_TRUE(list.ReadFile(path, error)) << error;
    TargetDatabase::Select(nullptr);
    std::filesystem::remove(path);

    EXPECT_EQ(error, "");
    EXPECT_EQ(list.Report().m_Version, 1);
    EXPECT_EQ(Described(list), BlockOfThePage("text"));
}

}  // namespace
}  // namespace vesk
