#include "database/TargetFile.h"

#include <filesystem>
#include <fstream>
#include <string_view>

#include "database/ElfTargetLoader.h"
#include "database/JsonTargetLoader.h"

namespace vesk {

namespace {

bool BeginsAsElf(const std::string& path) {
    constexpr std::string_view kMagic =
        "\x7f"
        "ELF";
    char start[kMagic.size()] = {};
    std::ifstream(path, std::ios::binary).read(start, sizeof start);
    return std::string_view(start, sizeof start) == kMagic;
}

}  // namespace

bool LoadTargetFile(const std::string& path, TargetDatabase& database, std::string& error) {
    return BeginsAsElf(path) ? LoadTargetFromElf(path, database, error)
                             : LoadTargetFromJson(path, database, error);
}

std::string TargetFileBeside(const std::string& logPath) {
    std::filesystem::path path(logPath);
    path.replace_extension(".target.json");
    return path.string();
}

}  // namespace vesk
