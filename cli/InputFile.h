#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace vesk {

class PackedSource;

// A file as a reader can open it by path: as it lies on the disk, or, for standard input ("-"),
// pipes and names that end in .gz, .zst or .xz, unpacked into an unnamed temporary file that lives
// as long as this object.
class InputFile {
public:
    // Called now and then with the bytes unpacked so far.
    using Progress = std::function<void(std::int64_t done)>;

    InputFile() = default;
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // False, and a text, if the data cannot be unpacked or would take more than maxBytes. A file
    // that is not there is no error yet: whoever opens it will see. A temporary file that cannot
    // be written ends the program by a Stop.
    bool Prepare(const std::string& path, std::int64_t maxBytes, const Progress&,
                 std::string& error);

    const std::string& ReadablePath() const { return m_ReadablePath; }

private:
    void MakeTemporaryFile();
    bool CopyFrom(PackedSource&, std::int64_t maxBytes, const Progress&);

    std::string m_ReadablePath;
    int m_Descriptor = -1;
    std::int64_t m_Size = 0;  // bytes unpacked
};

// Takes .gz, .zst or .xz off a file name.
std::string WithoutPackingSuffix(const std::string& path);

// How messages call an input file.
std::string InputName(const std::string& path);

}  // namespace vesk
