#include "cli/CommandShape.h"

#include <CLI/CLI.hpp>

namespace vesk {

namespace {

std::vector<std::string> SplitAt(char sign, const std::string& text) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == sign) {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    return parts;
}

// Behind a colon come the checks of a value.
std::string TypeOf(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    return type.substr(0, type.find(':'));
}

OptionShape ShapeOf(const CLI::Option& option) {
    OptionShape shape;
    for (const std::string& name : option.get_snames()) shape.m_Names.push_back('-' + name);
    for (const std::string& name : option.get_lnames()) shape.m_Names.push_back("--" + name);
    shape.m_Help = option.get_description();
    const std::string type = TypeOf(option);
    if (option.get_items_expected_max() > 0) shape.m_Value = type;
    if (type.find('|') != std::string::npos) shape.m_Choices = SplitAt('|', type);
    shape.m_IsFile = type == "FILE";
    if (shape.m_Names.empty()) shape.m_Names.push_back(option.get_name(true));
    return shape;
}

// A group of options is a command without a name; its options are those of the command around it.
void AddTo(CommandShape& shape, const CLI::App& app) {
    for (const CLI::Option* const option : app.get_options({})) {
        if (option->get_group().empty()) continue;
        (option->get_positional() ? shape.m_Arguments : shape.m_Options)
            .push_back(ShapeOf(*option));
    }
    for (const CLI::App* const command : app.get_subcommands({})) {
        if (command->get_name().empty()) {
            AddTo(shape, *command);
        } else if (!command->get_group().empty()) {
            shape.m_Commands.push_back(
                {command->get_name(), command->get_description(), {}, {}, {}});
            AddTo(shape.m_Commands.back(), *command);
        }
    }
}

}  // namespace

CommandShape ShapeOf(const CLI::App& app) {
    CommandShape shape{app.get_name(), app.get_description(), {}, {}, {}};
    AddTo(shape, app);
    return shape;
}

}  // namespace vesk
