#pragma once

#include <string>
#include <vector>

#include "tests/support/Dice.h"
#include "tests/support/RandomRecords.h"

namespace vesk {

// The header of a random log, and the layout that it announces.
class RandomHeader {
public:
    // wrap: of the database's clock. A packet log has version 1 at most by chance.
    RandomHeader(Dice& dice, int version, std::uint32_t wrap);

    // From the sizes up to the end of the init block, behind identifier and version.
    std::string Make();

    const RecordLayout& Layout() const { return m_Layout; }
    std::string Form() const;

private:
    struct Item {
        std::uint32_t type;
        std::uint32_t size;
        std::string value;
    };

    void ChooseItems();
    Item RandomItem();
    void PlacePacketFields();
    std::uint32_t FormatWord();
    std::uint32_t JobSize();
    std::string ItemBlock() const;
    std::string InitBlock();
    std::string InitEntry(std::uint32_t tag, std::uint32_t values);

    Dice& m_Dice;
    const int m_Version;
    RecordLayout m_Layout;
    std::vector<Item> m_Items;
    std::uint32_t m_ExtraSize = 0;
};

}  // namespace vesk
