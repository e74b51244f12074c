#include "cli/OutputFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "cli/ExitCode.h"
#include "cli/Interrupt.h"

namespace vesk {

namespace {

void StopOn(int error, const std::string& name) {
    if (error == EPIPE) throw Stop(ExitCode::kCannotWrite, "");
    if (error != 0)
        throw Stop(ExitCode::kCannotWrite, "cannot write " + name + ": " + std::strerror(error));
}

OutputBuffer::Watcher StopOnErrors(const std::string& name) {
    return [name](int error) {
        StopOn(error, name);
        StopIfInterrupted();
    };
}

}  // namespace

OutputFile::OutputFile(std::string path, Overwrite overwrite) : m_Path(std::move(path)) {
    if (m_Path == "-") {
        m_StandardOutput.emplace(STDOUT_FILENO, StopOnErrors("standard output"));
        return;
    }
    std::error_code ignored;
    if (overwrite == Overwrite::kRefuse && std::filesystem::is_regular_file(m_Path, ignored))
        throw Stop(ExitCode::kCannotWrite, m_Path + " exists; --force replaces it");
    StopOn(m_File.Open(m_Path, StopOnErrors(m_Path)), m_Path);
}

void OutputFile::Commit() {
    if (m_StandardOutput)
        m_StandardOutput->Flush();
    else
        StopOn(m_File.Commit(), m_Path);
}

}  // namespace vesk
