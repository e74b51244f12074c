#pragma once

#include <string>

#include "tests/support/LogBuilder.h"

// A folder of its own for a test's files; removed with the object.
class DeskFolder {
public:
    DeskFolder();
    ~DeskFolder();
    DeskFolder(const DeskFolder&) = delete;
    DeskFolder& operator=(const DeskFolder&) = delete;

    std::string operator/(const std::string& name) const { return m_Path + '/' + name; }

    // Each gives the path back.
    std::string Write(const std::string& name, const std::string& content) const;
    std::string WriteTarget(const std::string& name, const vesk::TargetDatabase&) const;
    std::string CopySample(const std::string& name, const std::string& as) const;

private:
    std::string m_Path;
};

// Path of one of the bundled logs or target descriptions.
std::string Sample(const std::string& name);

// What a shell line printed, standard error included, and its exit status.
struct ShellRun {
    int m_Status = -1;
    std::string m_Text;
};
ShellRun Shell(const std::string& line);
