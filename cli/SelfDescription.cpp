#include "cli/SelfDescription.h"

#include <CLI/CLI.hpp>

#include "cli/Completion.h"
#include "cli/Manual.h"

namespace vesk {

namespace {

using Action = std::function<ExitCode(Terminal&)>;
using Describe = std::string (*)(const CommandShape&);

void Offer(CLI::App& parent, const CLI::App& program, const char* name, const char* help,
           Describe describe, OutputOptions& output, Action& chosen) {
    CLI::App* const command = parent.add_subcommand(name, help);
    output.OfferTo(*command);
    command->callback([=, &program, &output, &chosen] {
        chosen = [=, &program, &output](Terminal&) {
            OutputFile out(output.m_Path, output.WhatToDoWithFiles());
            out.Buffer().Put(describe(ShapeOf(program)));
            out.Commit();
            return ExitCode::kComplete;
        };
    });
}

}  // namespace

void OfferSelfDescription(CLI::App& program, OutputOptions& output,
                          std::function<ExitCode(Terminal&)>& chosen) {
    CLI::App* const shells =
        program.add_subcommand("completion", "write a script that completes command lines");
    shells->group("")->require_subcommand(1);
    Offer(*shells, program, "bash", "for bash", BashCompletion, output, chosen);
    Offer(*shells, program, "zsh", "for zsh", ZshCompletion, output, chosen);
    Offer(program, program, "man", "write the manual page", Manual, output, chosen);
    program.get_subcommand("man")->group("");
}

}  // namespace vesk
