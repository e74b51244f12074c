#include "cli/Completion.h"

namespace vesk {

namespace {

// --- bash ----------------------------------------------------------------------------------------

// What can stand in a shell's line: the commands, each with the words that lead to it.
template <class Visit>
void ForEach(const CommandShape& command, const std::string& path, const Visit& visit) {
    visit(command, path);
    for (const CommandShape& sub : command.m_Commands)
        ForEach(sub, path.empty() ? sub.m_Name : path + ' ' + sub.m_Name, visit);
}

std::string Joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

std::string BashCommands(const CommandShape& program) {
    std::string patterns;
    ForEach(program, "", [&](const CommandShape& command, const std::string& path) {
        for (const CommandShape& sub : command.m_Commands)
            patterns += (patterns.empty() ? "" : " | ") + ('"' + path + ' ' + sub.m_Name + '"');
    });
    return "            " + patterns + ") command+=\"${command:+ }${COMP_WORDS[i]}\" ;;\n";
}

// Files are completed by the shell itself, where nothing is offered.
std::string BashValues(const CommandShape& program) {
    std::string text;
    ForEach(program, "", [&](const CommandShape& command, const std::string& path) {
        for (const OptionShape& option : command.m_Options) {
            if (option.m_Value.empty()) continue;
            std::string patterns;
            for (const std::string& name : option.m_Names)
                patterns += (patterns.empty() ? "" : " | ") + ('"' + path + ' ' + name + '"');
            text += "        " + patterns + ") ";
            if (!option.m_IsFile) text += "_vesk_offer \"" + Joined(option.m_Choices) + "\"; ";
            text += "return ;;\n";
        }
    });
    return text;
}

std::string BashWords(const CommandShape& program) {
    std::string text;
    ForEach(program, "", [&](const CommandShape& command, const std::string& path) {
        std::vector<std::string> options, words;
        for (const OptionShape& option : command.m_Options)
            options.insert(options.end(), option.m_Names.begin(), option.m_Names.end());
        for (const CommandShape& sub : command.m_Commands) words.push_back(sub.m_Name);
        for (const OptionShape& argument : command.m_Arguments)
            words.insert(words.end(), argument.m_Choices.begin(), argument.m_Choices.end());
        text += "        \"" + path + "\") options=\"" + Joined(options) + "\" words=\"" +
                Joined(words) + "\" ;;\n";
    });
    return text;
}

constexpr const char* kBashHead = R"(# bash completion for vesk
_vesk_offer() {
    compopt +o default +o bashdefault 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$cur")
}
_vesk() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]} command="" i
    local options="" words=""
    COMPREPLY=()
    if [[ $cur == "=" ]]; then
        cur=""
    elif [[ $prev == "=" ]]; then
        prev=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case "$command ${COMP_WORDS[i]}" in
)";
constexpr const char* kBashValues = R"(        esac
    done
    case "$command $prev" in
)";
constexpr const char* kBashWords = R"(    esac
    case "$command" in
)";
constexpr const char* kBashTail = R"(    esac
    for ((i = 1; i < COMP_CWORD; ++i)); do
        [[ " $words " != *" ${COMP_WORDS[i]} "* ]] || words=""
    done
    if [[ $cur == -* ]]; then
        _vesk_offer "$options"
    elif [[ -n $words ]]; then
        _vesk_offer "$words"
    fi
}
complete -o bashdefault -o default -F _vesk vesk
)";

// --- zsh -----------------------------------------------------------------------------------------

// Within single quotes, with the signs escaped that part a description.
std::string Quoted(const std::string& text) {
    std::string quoted;
    for (const char c : text) {
        if (c == '[' || c == ']' || c == ':' || c == '\\') quoted += '\\';
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted;
}

std::string ZshValue(const OptionShape& option) {
    const std::string value = Quoted(option.m_Value.empty() ? option.m_Names[0] : option.m_Value);
    if (!option.m_Choices.empty()) return ":value:(" + Joined(option.m_Choices) + ')';
    return ':' + value + ':' + (option.m_IsFile ? "_files" : "");
}

std::string ZshArguments(const CommandShape& command) {
    std::string text;
    const auto line = [&](const std::string& spec) { text += " \\\n        '" + spec + '\''; };
    for (const OptionShape& option : command.m_Options) {
        const bool takes = !option.m_Value.empty();
        for (const std::string& name : option.m_Names) {
            const bool isLong = name.starts_with("--");
            line("*" + name + (takes && isLong ? "=" : "") + '[' + Quoted(option.m_Help) + ']' +
                 (takes ? ZshValue(option) : ""));
        }
    }
    for (const OptionShape& argument : command.m_Arguments) line(ZshValue(argument));
    return text;
}

// A function for each command; one with commands of its own hands over to theirs.
std::string ZshFunctions(const CommandShape& command, const std::string& name) {
    std::string text;
    for (const CommandShape& sub : command.m_Commands)
        text += ZshFunctions(sub, name + '_' + sub.m_Name);
    text += name + "() {\n";
    if (command.m_Commands.empty())
        return text + "    _arguments" + ZshArguments(command) + "\n}\n";
    text += "    local -a commands=(\n";
    for (const CommandShape& sub : command.m_Commands)
        text += "        '" + Quoted(sub.m_Name) + ':' + Quoted(sub.m_Help) + "'\n";
    text +=
        "    )\n    local context state state_descr line\n    typeset -A opt_args\n"
        "    _arguments -C" +
        ZshArguments(command) +
        " \\\n        '1: :->command' '*:: :->argument'\n"
        "    case $state in\n"
        "        command) _describe command commands ;;\n"
        "        argument) (( $+functions[" +
        name + "_${line[1]}] )) && " + name + "_${line[1]} ;;\n    esac\n}\n";
    return text;
}

}  // namespace

std::string BashCompletion(const CommandShape& program) {
    return kBashHead + BashCommands(program) + kBashValues + BashValues(program) + kBashWords +
           BashWords(program) + kBashTail;
}

std::string ZshCompletion(const CommandShape& program) {
    return "#compdef vesk\n" + ZshFunctions(program, "_vesk") +
           "if [[ $funcstack[1] == _vesk ]]; then\n    _vesk \"$@\"\nelse\n"
           "    compdef _vesk vesk\nfi\n";
}

}  // namespace vesk
