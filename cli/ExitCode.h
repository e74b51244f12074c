#pragma once

#include <stdexcept>
#include <string>

namespace vesk {

// What the program tells its caller; docs/vesk.md lists them.
enum class ExitCode {
    kComplete = 0,
    kNothingMatched = 1,
    kUsage = 2,
    kRefused = 3,
    kPartial = 4,
    kCannotWrite = 5,
    kInterrupted = 130,
};

// Thrown to end the program from wherever it is; the text may be empty.
class Stop : public std::runtime_error {
public:
    Stop(ExitCode code, const std::string& text) : std::runtime_error(text), m_Code(code) {}

    ExitCode m_Code;
};

}  // namespace vesk
