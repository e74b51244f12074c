#include "timeline/FilterFile.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

#include "log/LittleEndian.h"
#include "log/StreamFile.h"
#include "platform/AtomicFile.h"
#include "platform/Text.h"

namespace vesk {

namespace {

constexpr std::string_view kIdentifier = "VESKFilter";
constexpr std::int32_t kVersion = 1;
constexpr std::size_t kRecordSize = 12;
constexpr std::size_t kRecordsAtOnce = 1024;

std::int32_t SignedAt(const char* bytes) {
    return static_cast<std::int32_t>(Word32At(bytes));
}

// 0 where the file has ended; that it has is noted.
std::int32_t ReadNumber(std::FILE* stream, bool& cutOff) {
    std::uint32_t number = 0;
    if (ReadWord32(stream, number)) return static_cast<std::int32_t>(number);
    cutOff = true;
    return 0;
}

// A count may claim anything: memory grows with what comes out of the file.
std::vector<FilterRecord> ReadSection(std::FILE* stream, bool& cutOff) {
    std::vector<FilterRecord> records;
    auto left = static_cast<std::size_t>(std::max(ReadNumber(stream, cutOff), 0));
    std::array<char, kRecordSize * kRecordsAtOnce> block;
    while (left > 0) {
        const std::size_t wanted = std::min(left, kRecordsAtOnce);
        const std::size_t got = std::fread(block.data(), kRecordSize, wanted, stream);
        for (std::size_t i = 0; i < got; ++i) {
            const char* const at = block.data() + i * kRecordSize;
            records.push_back({SignedAt(at), SignedAt(at + 4), Word32At(at + 8)});
        }
        if (got < wanted) {
            cutOff = true;
            break;
        }
        left -= got;
    }
    return records;
}

void Append(std::string& bytes, std::uint32_t number) {
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift & 0xFF);
}

void Append(std::string& bytes, std::int32_t number) {
    Append(bytes, static_cast<std::uint32_t>(number));
}

}  // namespace

bool FilterFile::Read(const std::string& path, std::string& error) {
    std::error_code ignored;
    const bool isFolder = std::filesystem::is_directory(path, ignored);
    const StreamOwner stream(isFolder ? nullptr : std::fopen(path.c_str(), "rb"));
    if (stream) return Read(stream.get(), error);
    error = "Can't open file.";
    return false;
}

bool FilterFile::Read(std::FILE* stream, std::string& error) {
    std::array<char, kIdentifier.size()> identifier;
    if (!ReadBytes(stream, identifier.data(), identifier.size()) ||
        std::string_view(identifier.data(), identifier.size()) != kIdentifier) {
        error = "Incorrect VESK filter file.";
        return false;
    }
    bool cutOff = false;
    if (ReadNumber(stream, cutOff) > kVersion) {
        error = "Please use the latest Trawler to import this file.";
        return false;
    }
    for (std::vector<FilterRecord>& section : m_Sections) section = ReadSection(stream, cutOff);
    m_CutOff = cutOff;
    return true;
}

std::string FilterFile::Bytes() const {
    std::string bytes(kIdentifier);
    Append(bytes, kVersion);
    for (const std::vector<FilterRecord>& section : m_Sections) {
        Append(bytes, static_cast<std::uint32_t>(section.size()));
        for (const FilterRecord& record : section) {
            Append(bytes, record.m_Key);
            Append(bytes, record.m_Checked);
            Append(bytes, record.m_Color);
        }
    }
    return bytes;
}

bool FilterFile::Write(const std::string& path, std::string& error) const {
    AtomicFile file;
    int failed = file.Open(path);
    if (failed == 0) {
        file.Buffer().Put(Bytes());
        failed = file.Commit();
    }
    if (failed != 0)
        error = FormatText("Can't create file : %s. Error code: %d", path.c_str(), failed);
    return failed == 0;
}

}  // namespace vesk
