#include "database/TargetDatabase.h"

namespace vesk {

namespace {

TargetDatabase* selected = nullptr;

template <class Map>
auto* FindIn(Map& map, const std::string& name) {
    const auto found = map.find(name);
    return found == map.end() ? nullptr : &found->second;
}

}  // namespace

DataFormat* TargetDatabase::FindFormat(const std::string& name) {
    return FindIn(m_Formats, name);
}

EnumContent* TargetDatabase::FindEnum(const std::string& name) {
    return FindIn(m_Enums, name);
}

void TargetDatabase::Select(TargetDatabase* database) {
    selected = database;
}

DataFormat* TargetDatabase::LookUpFormat(const std::string& name) {
    return selected ? selected->FindFormat(name) : nullptr;
}

EnumContent* TargetDatabase::LookUpEnum(const std::string& name) {
    return selected ? selected->FindEnum(name) : nullptr;
}

}  // namespace vesk
