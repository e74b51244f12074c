#include "cli/InputFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

#include "cli/ExitCode.h"
#include "cli/Interrupt.h"
#include "cli/PackedSource.h"

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

[[noreturn]] void CannotWriteTemporaryFile() {
    throw Stop(ExitCode::kCannotWrite,
               std::string("cannot write a temporary file: ") + std::strerror(errno));
}

void WriteAll(int descriptor, const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t written = write(descriptor, bytes, size);
        if (written < 0 && errno != EINTR) CannotWriteTemporaryFile();
        if (written < 0) continue;
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
}

}  // namespace

InputFile::~InputFile() {
    if (m_Descriptor >= 0) close(m_Descriptor);
}

bool InputFile::Prepare(const std::string& path, std::int64_t maxBytes, const Progress& progress,
                        std::string& error) {
    m_ReadablePath = path;
    const bool namedPacked = WithoutPackingSuffix(path) != path;
    if (path != "-" && !IsPipe(path) && !(namedPacked && IsFile(path))) return true;
    PackedSource source(path);
    MakeTemporaryFile();
    if (!source.Open() || !CopyFrom(source, maxBytes, progress))
        error = "cannot read " + InputName(path) + ": " + source.m_Error;
    else if (namedPacked && m_Size > 0 && !source.IsPacked())
        error = InputName(path) + " is not packed the way its name says";
    StopIfInterrupted();
    return error.empty();
}

bool InputFile::CopyFrom(PackedSource& source, std::int64_t maxBytes, const Progress& progress) {
    std::vector<char> block(std::size_t{1} << 18);
    std::ptrdiff_t size = 0;
    while ((size = source.Read(block.data(), block.size())) > 0) {
        StopIfInterrupted();
        m_Size += size;
        if (m_Size > maxBytes) {
            source.m_Error = "more than " + std::to_string(maxBytes >> 20) +
                             " MB come out; --unpack-limit raises that";
            return false;
        }
        WriteAll(m_Descriptor, block.data(), static_cast<std::size_t>(size));
        progress(m_Size);
    }
    return size == 0;
}

void InputFile::MakeTemporaryFile() {
    std::error_code ignored;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(ignored);
    std::string name = folder / "vesk.XXXXXX";
    m_Descriptor = mkostemp(name.data(), O_CLOEXEC);
    if (m_Descriptor < 0) CannotWriteTemporaryFile();
    unlink(name.c_str());
    m_ReadablePath = "/proc/self/fd/" + std::to_string(m_Descriptor);
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
