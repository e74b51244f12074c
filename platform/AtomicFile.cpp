#include "platform/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace vesk {

namespace {

// The rights that a new file gets by the user's settings.
mode_t DefaultMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

mode_t ModeOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : DefaultMode();
}

}  // namespace

AtomicFile::~AtomicFile() {
    if (m_Descriptor >= 0) close(m_Descriptor);
    if (!m_TemporaryPath.empty()) unlink(m_TemporaryPath.c_str());
}

int AtomicFile::Open(const std::string& path, OutputBuffer::Watcher watcher) {
    m_Path = path;
    struct stat status {};
    const bool exists = stat(m_Path.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) return EISDIR;
    if (exists && access(m_Path.c_str(), W_OK) != 0) return errno;
    int error = 0;
    if (!exists || S_ISREG(status.st_mode))
        error = OpenBeside(exists);
    else if ((m_Descriptor = open(m_Path.c_str(), O_WRONLY | O_CLOEXEC)) < 0)
        error = errno;
    if (error == 0) m_Buffer.emplace(m_Descriptor, std::move(watcher));
    return error;
}

int AtomicFile::OpenBeside(bool exists) {
    // A link stays a link: its target is what gets replaced.
    std::error_code ignored;
    if (exists) m_Path = std::filesystem::canonical(m_Path, ignored).string();
    std::string name = m_Path + ".XXXXXX";
    m_Descriptor = mkostemp(name.data(), O_CLOEXEC);
    if (m_Descriptor < 0) return errno;
    m_TemporaryPath = name;
    fchmod(m_Descriptor, ModeOf(m_Path));
    return 0;
}

int AtomicFile::Commit() {
    if (!m_Buffer->Flush()) return m_Buffer->Error();
    const int descriptor = std::exchange(m_Descriptor, -1);
    if (close(descriptor) != 0) return errno;
    if (m_TemporaryPath.empty()) return 0;
    if (std::rename(m_TemporaryPath.c_str(), m_Path.c_str()) != 0) return errno;
    m_TemporaryPath.clear();
    return 0;
}

}  // namespace vesk
