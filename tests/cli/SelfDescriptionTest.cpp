// What the program tells shells and manuals about itself.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "tests/cli/VeskFolder.h"

namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

class SelfDescription : public testing::Test {
protected:
    SelfDescription() {
        m_Folder.Shell("$vesk completion bash -o bash && $vesk completion zsh -o zsh");
    }

    // What bash offers for the last word of a line.
    std::vector<std::string> Completed(const std::string& words) const {
        m_Folder.Write("ask",
                       "source ./bash\nCOMP_WORDS=(" + words +
                           ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_vesk\n"
                           "((${#COMPREPLY[@]} == 0)) || printf '%s\\n' \"${COMPREPLY[@]}\"");
        const ProgramRun run = m_Folder.Shell("bash --norc ask");
        EXPECT_EQ(run.err, "");
        return LinesOf(run.out);
    }
    // The names that a help text lists in its last section.
    std::vector<std::string> Commands(const std::string& words) const {
        std::vector<std::string> names;
        const std::string help = m_Folder.Vesk(words + " --help").out;
        const std::size_t at = help.find("Subcommands:\n");
        if (at == std::string::npos) return names;
        for (const std::string& line : LinesOf(help.substr(at + 13)))
            if (!line.empty()) names.push_back(line.substr(2, line.find(' ', 2) - 2));
        return names;
    }

    VeskFolder m_Folder;
};

TEST_F(SelfDescription, BashCompletesCommandsOptionsAndValues) {
    const struct {
        const char* m_Words;
        std::vector<std::string> m_Offered;
    } cases[] = {
        {"vesk ca", {"calls"}},
        {"vesk xyz", {}},
        {"vesk --vers", {"--version"}},
        {"vesk jobs --fr", {"--from"}},
        {"vesk jobs --format j", {"json", "jsonl"}},
        {"vesk jobs --format = c", {"csv"}},
        {"vesk jobs --format =", {"text", "csv", "json", "jsonl"}},
        {"vesk info --format j", {"json"}},
        {"vesk export ''", {"text", "extra", "calls"}},
        {"vesk export --force te", {"text"}},
        {"vesk export text ''", {}},  // now the log
        {"vesk find --fu", {"--function"}},
        {"vesk markers --format s", {"slam"}},
        {"vesk simulate --form v", {"v1", "v2", "v3"}},
        {"vesk dump --name", {}},                    // not one of its options
        {"vesk jobs jobs.bin calls --name ''", {}},  // a value that nobody knows
    };
    for (const auto& c : cases) EXPECT_EQ(Completed(c.m_Words), c.m_Offered) << c.m_Words;
}

TEST_F(SelfDescription, BashOffersEveryCommandOfTheHelpAndNoHiddenOne) {
    EXPECT_EQ(Completed("vesk ''"), Commands(""));
    EXPECT_THAT(Commands(""), AllOf(Contains("jobs"), Not(Contains("man"))));
}

TEST_F(SelfDescription, BashLeavesFilesToItself) {
    for (const char* const words : {"vesk jobs ''", "vesk jobs --target ''", "vesk jobs -o a"})
        EXPECT_THAT(Completed(words), IsEmpty()) << words;
    EXPECT_NE(m_Folder.Content("bash").find("complete -o bashdefault -o default -F _vesk vesk\n"),
              std::string::npos);
}

// Options and commands that the script knows, and, where there is a zsh, whether it can read it.
TEST_F(SelfDescription, ZshKnowsTheSameOptions) {
    const std::string script = m_Folder.Content("zsh");
    for (const std::string& command : Commands(""))
        EXPECT_THAT(script, HasSubstr("\n_vesk_" + command + "() {\n"));
    EXPECT_THAT(script, HasSubstr("'*--format=[text (default), csv, json or jsonl]:value:"
                                  "(text csv json jsonl)'"));
    EXPECT_THAT(script, HasSubstr(":FILE:_files'"));
    const ProgramRun run = m_Folder.Shell("! command -v zsh >/dev/null || zsh -n zsh");
    EXPECT_EQ(run.code, 0) << run.err;
}

TEST_F(SelfDescription, TheManualTellsEveryCommandAndOption) {
    m_Folder.Shell("$vesk man -o vesk.1");
    const std::string page = m_Folder.Content("vesk.1");
    for (const std::string& command : Commands(""))
        EXPECT_THAT(page, HasSubstr("\\fBvesk " + command + "\\fR"));
    for (std::string option : Completed("vesk jobs -")) {
        for (std::size_t at = 0; (at = option.find('-', at)) != std::string::npos; at += 2)
            option.insert(at, 1, '\\');
        EXPECT_THAT(page, HasSubstr(option)) << option;
    }
}

TEST_F(SelfDescription, TheManualIsWellFormed) {
    m_Folder.Shell("$vesk man -o vesk.1");
    for (const std::string& line : LinesOf(m_Folder.Content("vesk.1"))) {
        EXPECT_NE(line, "");  // a blank line has a request
        if (line[0] != '.') continue;
        EXPECT_THAT((std::vector<std::string>{".TH", ".SH", ".PP", ".TP", ".nf", ".fi"}),
                    Contains(line.substr(0, 3)));
    }
    const ProgramRun run =
        m_Folder.Shell("! command -v groff >/dev/null || groff -man -ww -Tascii vesk.1");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
}

TEST_F(SelfDescription, ReplacesNothingUnasked) {
    m_Folder.Write("mine", "mine");
    EXPECT_EQ(m_Folder.Vesk("man -o mine").code, 5);
    EXPECT_EQ(m_Folder.Content("mine"), "mine");
    EXPECT_EQ(m_Folder.Vesk("completion fish").code, 2);
}

}  // namespace
