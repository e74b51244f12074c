#pragma once

#include <string>

#include "database/TargetDatabase.h"

namespace vesk {

// The database in lines: "NAME SIZE: field@offset+size ..." for a structure,
// "NAME width W: enumerator=value ..." for an enumeration.
inline std::string DescribeTarget(const TargetDatabase& database) {
    std::string text;
    for (const auto& [name, format] : database.m_Formats) {
        text += name + " " + std::to_string(format.Size) + ":";
        for (const DataField& field : format.m_Fields)
            text += " " + field.m_Name + "@" + std::to_string(field.Offset) + "+" +
                    std::to_string(field.Size);
        text += "\n";
    }
    for (const auto& [name, content] : database.m_Enums) {
        text += name + " width " + std::to_string(content.m_Width) + ":";
        for (const auto& [enumerator, value] : content.Entries())
            text += " " + enumerator + "=" + std::to_string(value);
        text += "\n";
    }
    return text;
}

}  // namespace vesk
