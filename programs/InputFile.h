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
    enum class Outcome {
        kReady,
        kRefused,      // cannot be read or unpacked
        kTooLarge,     // more than maxBytes would come out
        kCannotWrite,  // the temporary file
        kGivenUp,      // by the progress; there is no text for it
    };

    // Called now and then with the bytes unpacked so far, also while a pipe has nothing to give and
    // a signal comes. False gives up.
    using Progress = std::function<bool(std::int64_t done)>;

    InputFile() = default;
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // A text goes with every outcome that is an error. A file that is not there is none yet:
    // whoever opens it will see.
    Outcome Prepare(const std::string& path, std::int64_t maxBytes, const Progress&,
                    std::string& error);

    const std::string& ReadablePath() const { return m_ReadablePath; }

private:
    bool MakeTemporaryFile(std::string& why);
    Outcome Unpack(PackedSource&, std::int64_t maxBytes, const Progress&, std::string& why);

    std::string m_ReadablePath;
    int m_Descriptor = -1;
    std::int64_t m_Size = 0;  // bytes unpacked
};

// Takes .gz, .zst or .xz off a file name.
std::string WithoutPackingSuffix(const std::string& path);

// How messages call an input file.
std::string InputName(const std::string& path);

}  // namespace vesk
