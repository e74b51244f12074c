#pragma once

#include <optional>
#include <string>

#include "platform/AtomicFile.h"

namespace vesk {

enum class Overwrite { kRefuse, kAllow };

// Where the payload of a command goes: standard output ("-"), a device or pipe, or a file, which
// appears once it is complete. What goes wrong ends the program by a Stop: without a text where
// the reader of a pipe has gone.
class OutputFile {
public:
    // Makes sure at once that the file can be written.
    OutputFile(std::string path, Overwrite overwrite);

    OutputBuffer& Buffer() { return m_StandardOutput ? *m_StandardOutput : m_File.Buffer(); }

    // Writes what is left and puts the file in its place.
    void Commit();

private:
    std::string m_Path;
    AtomicFile m_File;
    std::optional<OutputBuffer> m_StandardOutput;
};

}  // namespace vesk
