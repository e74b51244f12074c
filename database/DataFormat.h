#pragma once

#include <cstdint>
#include <string>
#include <vector>

// One field of a structure of the target load.
struct DataField {
    std::string m_Name;
    std::int32_t Offset = 0;  // bytes from the structure's start
    std::int32_t Size = 0;    // bytes
};

// One structure of the target load: its size and its fields in order.
class DataFormat {
public:
    // The first field of that name, or null. Owned by the structure.
    const DataField* GetField(const std::string& name) const;

    // The field at an index from 0, or null past the end or below 0.
    const DataField* GetFieldAt(int index) const;

    std::int32_t Size = 0;  // bytes
    std::vector<DataField> m_Fields;
};
