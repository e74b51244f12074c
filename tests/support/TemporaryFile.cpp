#include "tests/support/TemporaryFile.h"

#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

TemporaryFile::TemporaryFile(const std::string& content)
    : m_Path(std::filesystem::temp_directory_path() / "vesk_test_XXXXXX") {
    const int file = mkstemp(m_Path.data());
    if (file < 0) throw std::runtime_error("no temporary file");
    close(file);
    std::ofstream(m_Path, std::ios::binary) << content;
}

TemporaryFile::~TemporaryFile() {
    std::error_code ignored;
    std::filesystem::remove(m_Path, ignored);
}
