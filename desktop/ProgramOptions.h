#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "platform/Geometry.h"
#include "timeline/TimelineTypes.h"

namespace vesk {

// What the picture shows that --render writes.
struct RenderOptions {
    std::string m_Path;  // empty: no picture is asked for
    CSize m_Size{1280, 720};
    double m_Scale = 1.0;  // of pictures in pixels
    OUTLOOKTYPE m_Outlook = OUTLOOK_PURE;
    TIMEUNITTYPE m_Unit = TIMEUNIT_COUNT;
    std::optional<std::pair<std::uint64_t, std::uint64_t>> m_Range;  // QBit; none: the whole log
    bool m_Force = false;  // replaces a file that is there
};

// What the program can tell of itself in place of its work.
enum class ProgramText { kNone, kHelp, kVersion, kKeys, kManual };

// What the command line of veskview asks for. Texts are bytes as the shell gave them.
struct ProgramOptions {
    std::string m_Log;     // empty: none
    std::string m_Target;  // empty: the one that the log is known by
    bool m_Whole = false;  // no question about the part to read
    ProgramText m_Text = ProgramText::kNone;
    RenderOptions m_Render;
};

// Options that are the window toolkit's own ("-platform NAME" and the like) are passed over. False:
// error says which argument means nothing.
bool ParseProgramOptions(int count, const char* const* arguments, ProgramOptions& options,
                         std::string& error);

std::string ProgramHelp();
std::string ProgramManual();  // the page for man

}  // namespace vesk
