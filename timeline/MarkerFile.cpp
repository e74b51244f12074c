#include "timeline/MarkerFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

#include "log/LittleEndian.h"
#include "platform/AtomicFile.h"

namespace vesk {

namespace {

constexpr std::size_t kCountSize = 4;
constexpr std::size_t kRecordSize = 12;
constexpr std::size_t kMostBytes = kCountSize + kRecordSize * std::size_t{kMostMarkersRead};

void Append(std::string& bytes, std::uint64_t number, int size) {
    for (int i = 0; i < size; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFF);
}

// Reads a little more than what is taken, so that it shows; 0, or the system's error number.
int ReadBytes(const std::string& path, std::string& bytes) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) return EISDIR;
    const auto close = [](std::FILE* file) { std::fclose(file); };
    const std::unique_ptr<std::FILE, decltype(close)> file(std::fopen(path.c_str(), "rb"), close);
    if (!file) return errno;
    char block[4096];
    while (bytes.size() <= kMostBytes) {
        const std::size_t size = std::fread(block, 1, sizeof block, file.get());
        bytes.append(block, size);
        if (size < sizeof block) break;
    }
    return 0;
}

}  // namespace

std::string MarkersToBytes(const McuMarkerMap& markers) {
    std::string bytes;
    Append(bytes, markers.size(), 4);
    for (const auto& [key, time] : markers) {
        Append(bytes, static_cast<std::uint32_t>(key), 4);
        Append(bytes, time, 8);
    }
    return bytes;
}

bool MarkersFromBytes(std::string_view bytes, McuMarkerMap& markers) {
    markers.clear();
    if (bytes.size() < kCountSize) return false;
    const auto count = static_cast<std::int32_t>(Word32At(bytes.data()));
    const std::size_t whole = (bytes.size() - kCountSize) / kRecordSize;
    const auto wanted = static_cast<std::size_t>(std::clamp(count, 0, kMostMarkersRead));
    for (std::size_t i = 0; i < std::min(whole, wanted); ++i) {
        const char* const record = bytes.data() + kCountSize + i * kRecordSize;
        markers.emplace(static_cast<std::int32_t>(Word32At(record)),
                        static_cast<std::uint64_t>(Signed64At(record + 4)));
    }
    return count >= 0 && bytes.size() == kCountSize + static_cast<std::size_t>(count) * kRecordSize;
}

bool ReadMarkerFile(const std::string& path, McuMarkerMap& markers, std::string& error) {
    std::string bytes;
    if (const int failed = ReadBytes(path, bytes)) {
        error = "cannot read " + path + ": " + std::strerror(failed);
        return false;
    }
    if (!MarkersFromBytes(bytes, markers))
        error = path + " is no whole marker file; " + std::to_string(markers.size()) +
                " markers were taken from it";
    return true;
}

bool WriteMarkerFile(const std::string& path, const McuMarkerMap& markers, std::string& error) {
    AtomicFile file;
    int failed = file.Open(path);
    if (failed == 0) {
        file.Buffer().Put(MarkersToBytes(markers));
        failed = file.Commit();
    }
    if (failed != 0) error = "cannot write " + path + ": " + std::strerror(failed);
    return failed == 0;
}

}  // namespace vesk
