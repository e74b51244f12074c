#include "tests/desktop/DeskFolder.h"

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "simulator/TargetDescription.h"

namespace fs = std::filesystem;

DeskFolder::DeskFolder() {
    m_Path = fs::temp_directory_path() / "veskview-test.XXXXXX";
    if (!mkdtemp(m_Path.data())) throw std::runtime_error("cannot make " + m_Path);
    m_Path = fs::canonical(m_Path);
}

DeskFolder::~DeskFolder() {
    std::error_code ignored;
    fs::remove_all(m_Path, ignored);
}

std::string DeskFolder::Write(const std::string& name, const std::string& content) const {
    const std::string path = *this / name;
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream file(path, std::ios::binary);
    if (!(file << content).flush()) throw std::runtime_error("cannot write " + path);
    return path;
}

std::string DeskFolder::WriteTarget(const std::string& name,
                                    const vesk::TargetDatabase& target) const {
    std::ostringstream text;
    vesk::WriteTargetDescription(target, text);
    return Write(name, text.str());
}

std::string DeskFolder::CopySample(const std::string& name, const std::string& as) const {
    fs::copy_file(Sample(name), *this / as);
    return *this / as;
}

std::string Sample(const std::string& name) {
    return std::string(VESK_SOURCE_DIR) + "/samples/" + name;
}

ShellRun Shell(const std::string& line) {
    ShellRun run;
    std::FILE* const pipe = popen(("{ " + line + "; } 2>&1").c_str(), "r");
    if (!pipe) throw std::runtime_error("cannot run " + line);
    std::array<char, 4096> part;
    while (const std::size_t size = std::fread(part.data(), 1, part.size(), pipe))
        run.m_Text.append(part.data(), size);
    const int status = pclose(pipe);
    run.m_Status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return run;
}
