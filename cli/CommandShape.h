#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vesk {

// An option, or an argument that is known by its place, as the parser knows it.
struct OptionShape {
    std::vector<std::string> m_Names;    // "-o", "--output"; of an argument its one name
    std::string m_Value;                 // what stands for its value; empty for a flag
    std::vector<std::string> m_Choices;  // all values there are, if they can be told
    std::string m_Help;
    bool m_IsFile = false;

    friend bool operator==(const OptionShape&, const OptionShape&) = default;
};

// A command with all that can follow it; hidden ones are left out.
struct CommandShape {
    std::string m_Name;
    std::string m_Help;
    std::vector<OptionShape> m_Options;
    std::vector<OptionShape> m_Arguments;
    std::vector<CommandShape> m_Commands;
};

// The shape of a whole program, from what its parser was told. The type of an option says what its
// values are: "FILE" any file, "a|b|c" one of these words.
CommandShape ShapeOf(const CLI::App&);

}  // namespace vesk
