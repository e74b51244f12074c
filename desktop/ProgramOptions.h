#pragma once

#include <string>

namespace vesk {

// What the command line of veskview asks for. Texts are bytes as the shell gave them.
struct ProgramOptions {
    std::string m_Log;     // empty: none
    std::string m_Target;  // empty: the one that the log is known by
    bool m_Whole = false;  // no question about the part to read
    bool m_Help = false;
    bool m_Version = false;
};

// Options that are the window toolkit's own ("-platform NAME" and the like) are passed over. False:
// error says which argument means nothing.
bool ParseProgramOptions(int count, const char* const* arguments, ProgramOptions& options,
                         std::string& error);

extern const char* const kProgramHelp;

}  // namespace vesk
