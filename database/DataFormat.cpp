#include "database/DataFormat.h"

const DataField* DataFormat::GetField(const std::string& name) const {
    for (const DataField& field : m_Fields)
        if (field.m_Name == name) return &field;
    return nullptr;
}

const DataField* DataFormat::GetFieldAt(int index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= m_Fields.size()) return nullptr;
    return &m_Fields[static_cast<std::size_t>(index)];
}
