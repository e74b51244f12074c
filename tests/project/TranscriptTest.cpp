// The pages show what commands print. Here the commands are run, and what they print is compared.

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace vesk {
namespace {

struct Transcript {
    std::string m_Command;
    std::string m_Output;
};

// The commands behind "$ " in the blocks of a page that begin with "```console".
std::vector<Transcript> TranscriptsOf(std::istream& page) {
    std::vector<Transcript> transcripts;
    bool inside = false;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("```")) {
            inside = line == "```console";
        } else if (inside && line.starts_with("$ ")) {
            transcripts.push_back({line.substr(2), ""});
        } else if (inside && !transcripts.empty()) {
            transcripts.back().m_Output += line + "\n";
        }
    }
    return transcripts;
}

// Runs a command in the root of the tree, with the built vesk first in the path.
std::string OutputOf(const std::string& command) {
    const std::string folder = std::filesystem::path(VESK_PROGRAM).parent_path();
    const std::string line =
        "cd '" VESK_SOURCE_DIR "' && PATH='" + folder + "':\"$PATH\" && { " + command + "; } 2>&1";
    std::string output;
    FILE* pipe = popen(line.c_str(), "r");
    if (!pipe) return "cannot run " + command;
    std::array<char, 4096> block;
    while (const std::size_t size = fread(block.data(), 1, block.size(), pipe)) {
        output.append(block.data(), size);
    }
    pclose(pipe);
    return output;
}

// A line "..." of the expected text stands for any number of lines; what follows it counts from
// the end of the output.
void ExpectOutput(const std::string& output, const std::string& expected) {
    const std::size_t gap = expected.find("...\n");
    if (gap == std::string::npos) {
        EXPECT_EQ(output, expected);
        return;
    }
    const std::string end = expected.substr(gap + 4);
    EXPECT_EQ(output.substr(0, gap), expected.substr(0, gap));
    ASSERT_GE(output.size(), gap + end.size());
    EXPECT_EQ(output.substr(output.size() - end.size()), end);
}

TEST(Transcripts, OfThePagesAreWhatTheProgramPrints) {
    std::size_t commands = 0;
    for (const char* name : {"README.md", "docs/vesk.md"}) {
        SCOPED_TRACE(name);
        std::ifstream page(std::filesystem::path(VESK_SOURCE_DIR) / name);
        const std::vector<Transcript> transcripts = TranscriptsOf(page);
        commands += transcripts.size();
        for (const Transcript& transcript : transcripts) {
            SCOPED_TRACE(transcript.m_Command);
            ExpectOutput(OutputOf(transcript.m_Command), transcript.m_Output);
        }
    }
    EXPECT_GE(commands, 5U);
}

}  // namespace
}  // namespace vesk
