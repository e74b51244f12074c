#pragma once

#include <string>
#include <vector>

#include "tests/support/LogBuilder.h"

// What a run of the program left.
struct ProgramRun {
    int code = -1;  // exit code, or 128 and the signal that ended it
    std::string out;
    std::string err;
};

// A folder of its own in which the program runs; removed with the object.
class VeskFolder {
public:
    VeskFolder();
    ~VeskFolder();
    VeskFolder(const VeskFolder&) = delete;
    VeskFolder& operator=(const VeskFolder&) = delete;

    void Write(const std::string& name, const std::string& content) const;
    std::string Content(const std::string& name) const;
    bool Has(const std::string& name) const;
    std::vector<std::string> Names() const;  // of all files, sorted

    // NAME.bin and NAME.target.json.
    void WriteLog(const std::string& name, const LogBuilder& log) const;

    // Packs a file by a filter of the archive library: "gzip", "zstd" or "xz".
    void Pack(const std::string& from, const std::string& to, const std::string& filter) const;

    // Runs a shell line, in which $vesk is the program.
    ProgramRun Shell(const std::string& line) const;

    // Runs the program with arguments as they stand in a shell line.
    ProgramRun Vesk(const std::string& arguments) const { return Shell("exec $vesk " + arguments); }

private:
    std::string PathOf(const std::string& name) const { return m_Path + '/' + name; }

    std::string m_Path;
};
