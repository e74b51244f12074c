#include "desktop/LogInput.h"

namespace vesk {

namespace {

constexpr std::int64_t kMostBytes = std::int64_t{1} << 36;  // that one file may unpack to

void Replace(std::string& text, const std::string& what, const std::string& with) {
    const std::size_t at = what.empty() || what == with ? std::string::npos : text.rfind(what);
    if (at != std::string::npos) text.replace(at, what.size(), with);
}

}  // namespace

bool LogInput::Prepare(const ReadProgress& progress, std::string& text) {
    const auto unpacked = [&](std::int64_t done) { return !progress || progress(done, 0); };
    const auto prepare = [&](InputFile& file, const std::string& path) {
        return file.Prepare(path, kMostBytes, unpacked, text) == InputFile::Outcome::kReady;
    };
    return prepare(m_Log, m_Named.m_Log) && prepare(m_Header, m_Named.m_Header);
}

LogFiles LogInput::Readable() const {
    const auto readable = [](const InputFile& file, const std::string& path) {
        return file.ReadablePath().empty() ? path : file.ReadablePath();
    };
    return {readable(m_Log, m_Named.m_Log), readable(m_Header, m_Named.m_Header)};
}

void LogInput::NameFiles(std::string& text) const {
    const LogFiles readable = Readable();
    Replace(text, readable.m_Header, m_Named.m_Header);
    Replace(text, readable.m_Log, m_Named.m_Log);
}

}  // namespace vesk
