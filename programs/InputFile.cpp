#include "programs/InputFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

#include "programs/PackedSource.h"

namespace vesk {

namespace {

bool IsPipe(const std::string& path) {
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    return std::filesystem::is_fifo(status) || std::filesystem::is_character_file(status);
}

bool IsFile(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

bool WriteAll(int descriptor, const char* bytes, std::size_t size, std::string& why) {
    while (size > 0) {
        const ssize_t written = write(descriptor, bytes, size);
        if (written < 0 && errno != EINTR) {
            why = std::strerror(errno);
            return false;
        }
        if (written < 0) continue;
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

}  // namespace

InputFile::~InputFile() {
    if (m_Descriptor >= 0) close(m_Descriptor);
}

InputFile::Outcome InputFile::Prepare(const std::string& path, std::int64_t maxBytes,
                                      const Progress& progress, std::string& error) {
    m_ReadablePath = path;
    const bool namedPacked = WithoutPackingSuffix(path) != path;
    if (path != "-" && !IsPipe(path) && !(namedPacked && IsFile(path))) return Outcome::kReady;
    PackedSource source(path, [&] { return progress(m_Size); });
    std::string why;
    const Outcome outcome = Unpack(source, maxBytes, progress, why);
    if (outcome == Outcome::kGivenUp || !progress(m_Size)) return Outcome::kGivenUp;
    if (outcome == Outcome::kCannotWrite) {
        error = "cannot write a temporary file: " + why;
    } else if (outcome != Outcome::kReady) {
        error = "cannot read " + InputName(path) + ": " + why;
    } else if (namedPacked && m_Size > 0 && !source.IsPacked()) {
        error = InputName(path) + " is not packed the way its name says";
        return Outcome::kRefused;
    }
    return outcome;
}

InputFile::Outcome InputFile::Unpack(PackedSource& source, std::int64_t maxBytes,
                                     const Progress& progress, std::string& why) {
    if (!MakeTemporaryFile(why)) return Outcome::kCannotWrite;
    std::vector<char> block(std::size_t{1} << 18);
    std::ptrdiff_t size = source.Open() ? 0 : -1;
    while (size >= 0 && (size = source.Read(block.data(), block.size())) > 0) {
        m_Size += size;
        if (m_Size > maxBytes) {
            why = "more than " + std::to_string(maxBytes >> 20) + " MB come out";
            return Outcome::kTooLarge;
        }
        if (!WriteAll(m_Descriptor, block.data(), static_cast<std::size_t>(size), why))
            return Outcome::kCannotWrite;
        if (!progress(m_Size)) return Outcome::kGivenUp;
    }
    why = source.m_Error;
    return size < 0 ? Outcome::kRefused : Outcome::kReady;
}

bool InputFile::MakeTemporaryFile(std::string& why) {
    std::error_code ignored;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(ignored);
    std::string name = folder / "vesk.XXXXXX";
    m_Descriptor = mkostemp(name.data(), O_CLOEXEC);
    why = std::strerror(errno);
    if (m_Descriptor < 0) return false;
    unlink(name.c_str());
    m_ReadablePath = "/proc/self/fd/" + std::to_string(m_Descriptor);
    return true;
}

std::string WithoutPackingSuffix(const std::string& path) {
    for (const char* const suffix : {".gz", ".zst", ".xz"})
        if (path.ends_with(suffix)) return path.substr(0, path.size() - std::strlen(suffix));
    return path;
}

std::string InputName(const std::string& path) {
    return path == "-" ? "standard input" : path;
}

}  // namespace vesk
