#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

// One enumeration of the target load: its enumerators in order.
class EnumContent {
public:
    // Appends an enumerator. The same name or value may come again; the first one answers.
    void Add(const std::string& name, std::int32_t value);

    // Value of an enumerator. False if there is none of that name; value is then untouched.
    bool GetValue(const std::string& name, int& value) const;

    // Name of the first enumerator with that value, or with that value cut to the enumeration's
    // width. False if there is none; name is then untouched.
    bool GetName(int value, std::string& name) const;

    const std::vector<std::pair<std::string, std::int32_t>>& Entries() const { return m_Entries; }

    // Width in bytes of the enumeration in the target's memory. 1 and 2 cut values that are
    // looked up, as the target stored them cut.
    int m_Width = 4;

private:
    std::vector<std::pair<std::string, std::int32_t>> m_Entries;
    std::unordered_map<std::string, std::size_t> m_ByName;    // first entry of a name
    std::unordered_map<std::int32_t, std::size_t> m_ByValue;  // first entry of a value
};
