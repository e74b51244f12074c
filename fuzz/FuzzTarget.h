#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "database/TargetDatabase.h"
#include "log/McuJobList.h"

namespace vesk {

// A file in memory that has a path, for readers that open one.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* bytes, std::size_t size);
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    const std::string& Path() const { return m_Path; }

private:
    int m_File;
    std::string m_Path;
};

// A target whose capability and headerless record the bits of a byte choose.
TargetDatabase& TargetFor(std::uint8_t choice);

// A list that is ready to read a log of that target.
void Prepare(McuJobList& list, TargetDatabase& database);

}  // namespace vesk
