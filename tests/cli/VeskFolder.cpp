#include "tests/cli/VeskFolder.h"

#include <archive.h>
#include <archive_entry.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "simulator/TargetDescription.h"

namespace fs = std::filesystem;

VeskFolder::VeskFolder() {
    m_Path = fs::temp_directory_path() / "vesk-test.XXXXXX";
    if (!mkdtemp(m_Path.data())) throw std::runtime_error("cannot make " + m_Path);
    // A name without blanks, whatever the folder of the build is called.
    fs::create_symlink(VESK_PROGRAM, m_Path + ".vesk");
}

VeskFolder::~VeskFolder() {
    std::error_code ignored;
    fs::remove_all(m_Path, ignored);
    fs::remove(m_Path + ".vesk", ignored);
}

void VeskFolder::Write(const std::string& name, const std::string& content) const {
    std::ofstream file(PathOf(name), std::ios::binary);
    if (!file.write(content.data(), static_cast<std::streamsize>(content.size())).flush())
        throw std::runtime_error("cannot write " + name);
}

std::string VeskFolder::Content(const std::string& name) const {
    std::ostringstream content;
    content << std::ifstream(PathOf(name), std::ios::binary).rdbuf();
    return content.str();
}

bool VeskFolder::Has(const std::string& name) const {
    return fs::exists(PathOf(name));
}

std::vector<std::string> VeskFolder::Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(m_Path))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

void VeskFolder::WriteLog(const std::string& name, const LogBuilder& log) const {
    Write(name + ".bin", log.Bytes());
    std::ostringstream target;
    vesk::WriteTargetDescription(log.Database(), target);
    Write(name + ".target.json", target.str());
}

void VeskFolder::Pack(const std::string& from, const std::string& to,
                      const std::string& filter) const {
    const std::string content = Content(from);
    archive* const writer = archive_write_new();
    archive_write_add_filter_by_name(writer, filter.c_str());
    archive_write_set_format_raw(writer);
    archive_entry* const entry = archive_entry_new();
    archive_entry_set_filetype(entry, AE_IFREG);
    archive_write_open_filename(writer, PathOf(to).c_str());
    archive_write_header(writer, entry);
    archive_write_data(writer, content.data(), content.size());
    archive_entry_free(entry);
    const bool closed = archive_write_close(writer) == ARCHIVE_OK;
    archive_write_free(writer);
    if (!closed) throw std::runtime_error("cannot pack " + to);
}

ProgramRun VeskFolder::Shell(const std::string& line) const {
    // What the run says lies beside the folder, so that it does not show up in it.
    const std::string out = m_Path + ".out", err = m_Path + ".err";
    const std::string command = "cd '" + m_Path + "' && vesk='" + m_Path +
                                ".vesk' && export vesk && { " + line + "; } > '" + out + "' 2> '" +
                                err + "'";
    const int status = std::system(command.c_str());
    ProgramRun run;
    run.code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    run.out = Content("../" + fs::path(out).filename().string());
    run.err = Content("../" + fs::path(err).filename().string());
    fs::remove(out);
    fs::remove(err);
    return run;
}
