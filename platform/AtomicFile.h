#pragma once

#include <optional>
#include <string>

#include "platform/OutputBuffer.h"

namespace vesk {

// A file that grows beside its target under another name and takes its place on Commit, with the
// target's rights: work that fails or is given up leaves nothing behind. A device or a pipe is
// written in place. Errors are the system's numbers; 0 is none.
class AtomicFile {
public:
    AtomicFile() = default;
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    // To be called once. Makes sure that the file can be written.
    int Open(const std::string& path, OutputBuffer::Watcher watcher = {});

    // Of a file that is open.
    OutputBuffer& Buffer() { return *m_Buffer; }

    // Writes what is left and puts the file in its place. An earlier error of the buffer counts.
    int Commit();

private:
    int OpenBeside(bool exists);

    std::string m_Path;
    std::string m_TemporaryPath;  // empty: written in place
    int m_Descriptor = -1;
    std::optional<OutputBuffer> m_Buffer;
};

}  // namespace vesk
