#pragma once

#include <string>

namespace vesk {

// The files that a log is read from; paths as bytes.
struct LogFiles {
    std::string m_Log;
    std::string m_Header;  // empty: the log has its own, or none
    friend bool operator==(const LogFiles&, const LogFiles&) = default;
};

enum class PartToRead { kAsk, kWhole };

}  // namespace vesk
