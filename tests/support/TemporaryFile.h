#pragma once

#include <string>

// A file in the folder for temporary files, removed with the object.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& content);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& Path() const { return m_Path; }

private:
    std::string m_Path;
};
