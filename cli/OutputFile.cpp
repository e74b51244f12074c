#include "cli/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

#include "cli/ExitCode.h"

namespace vesk {

namespace {

// The rights that a new file gets by the user's settings.
mode_t DefaultMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

}  // namespace

OutputFile::OutputFile(std::string path, Overwrite overwrite) : m_Path(std::move(path)) {
    if (m_Path == "-")
        m_Descriptor = STDOUT_FILENO;
    else
        Open(overwrite);
    m_Buffer =
        std::make_unique<OutputBuffer>(m_Descriptor, m_Path == "-" ? "standard output" : m_Path);
}

OutputFile::~OutputFile() {
    if (m_Descriptor > STDERR_FILENO) close(m_Descriptor);
    if (!m_TemporaryPath.empty()) unlink(m_TemporaryPath.c_str());
}

void OutputFile::Open(Overwrite overwrite) {
    struct stat status {};
    const bool exists = stat(m_Path.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) {
        errno = EISDIR;
        Fail("cannot write ");
    }
    if (exists && !S_ISREG(status.st_mode)) {
        m_Descriptor = open(m_Path.c_str(), O_WRONLY | O_CLOEXEC);
        if (m_Descriptor < 0) Fail("cannot write ");
        return;
    }
    if (exists && overwrite == Overwrite::kRefuse)
        throw Stop(ExitCode::kCannotWrite, m_Path + " exists; --force replaces it");
    // A link stays a link: its target is what gets replaced.
    std::error_code ignored;
    if (exists) m_Path = std::filesystem::canonical(m_Path, ignored).string();
    std::string name = m_Path + ".XXXXXX";
    m_Descriptor = mkostemp(name.data(), O_CLOEXEC);
    if (m_Descriptor < 0) Fail("cannot write ");
    m_TemporaryPath = name;
    fchmod(m_Descriptor, exists ? status.st_mode & 07777 : DefaultMode());
}

void OutputFile::Commit() {
    m_Buffer->Flush();
    if (m_Path == "-") return;
    const int descriptor = std::exchange(m_Descriptor, -1);
    if (close(descriptor) != 0) Fail("cannot write ");
    if (m_TemporaryPath.empty()) return;
    if (std::rename(m_TemporaryPath.c_str(), m_Path.c_str()) != 0) Fail("cannot replace ");
    m_TemporaryPath.clear();
}

void OutputFile::Fail(const char* doing) const {
    throw Stop(ExitCode::kCannotWrite, doing + m_Path + ": " + std::strerror(errno));
}

}  // namespace vesk
