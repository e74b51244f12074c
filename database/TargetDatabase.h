#pragma once

#include <map>
#include <string>

#include "database/DataFormat.h"
#include "database/EnumContent.h"
#include "database/TargetCapability.h"

namespace vesk {

// Everything known of one target load: structures and enumerations by name, and what the target
// can do. Filled by a loader, then only read.
class TargetDatabase {
public:
    // Null if there is no entry of that name. Owned by the database.
    DataFormat* FindFormat(const std::string& name);
    EnumContent* FindEnum(const std::string& name);

    // Makes this database the one that the lookup functions below answer from; null for none.
    // Borrowed: it must live until another one is selected.
    static void Select(TargetDatabase*);

    // Lookups in the selected database, in the form that a job list registers as callbacks.
    static DataFormat* LookUpFormat(const std::string& name);
    static EnumContent* LookUpEnum(const std::string& name);

    TargetCapability m_Capability;
    std::map<std::string, DataFormat> m_Formats;
    std::map<std::string, EnumContent> m_Enums;
};

}  // namespace vesk
