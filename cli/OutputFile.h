#pragma once

#include <memory>
#include <string>

#include "cli/OutputBuffer.h"

namespace vesk {

enum class Overwrite { kRefuse, kAllow };

// Where the payload of a command goes: standard output ("-"), a device or pipe, or a file. A file
// grows beside its target under another name and takes its place on Commit, so that a run that
// fails leaves nothing behind. What goes wrong ends the program by a Stop.
class OutputFile {
public:
    // Makes sure at once that the file can be written.
    OutputFile(std::string path, Overwrite);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    OutputBuffer& Buffer() { return *m_Buffer; }

    // Writes what is left and puts the file in its place.
    void Commit();

private:
    void Open(Overwrite);
    [[noreturn]] void Fail(const char* doing) const;

    std::string m_Path;
    std::string m_TemporaryPath;  // empty: written in place
    int m_Descriptor = -1;
    std::unique_ptr<OutputBuffer> m_Buffer;
};

}  // namespace vesk
