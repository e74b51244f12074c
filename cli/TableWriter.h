#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cli/JsonWriter.h"
#include "platform/OutputBuffer.h"

namespace vesk {

enum class TableFormat { kText, kCsv, kJson, kJsonLines };

// A column of a table. Names are bytes of a log, as they can come from there.
struct Column {
    enum class Audience { kAll, kPeople };

    std::string m_Name;
    int m_Width = 12;                      // characters in text, where cells stand at the right
    Audience m_Audience = Audience::kAll;  // kPeople: in text only
};

// Writes a table in one of the formats from one description. A row is given cell by cell in the
// order of the columns, the cells for people included, and ended by EndRow; it goes out at once.
class TableWriter {
public:
    TableWriter(OutputBuffer& out, TableFormat format, std::vector<Column> columns);

    template <std::integral Integer>
    TableWriter& Number(Integer number) {
        char digits[24];
        const char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
        return Cell({digits, static_cast<std::size_t>(end - digits)}, Kind::kNumber);
    }

    // Bytes of a log. In text it stands at the left, so that it fits the last column.
    TableWriter& Name(std::string_view name) { return Cell(name, Kind::kName); }

    // Printable ASCII; it stands at the right, and is no number to programs.
    TableWriter& Word(std::string_view word) { return Cell(word, Kind::kWord); }

    // A time in QBit as people read it, for columns of theirs.
    TableWriter& Milliseconds(std::uint64_t qbits);
    TableWriter& Microseconds(std::uint64_t qbits);

    void EndRow();
    void Finish();  // after the last row

    std::uint64_t Rows() const { return m_Rows; }

private:
    enum class Kind { kNumber, kWord, kName };

    TableWriter& Cell(std::string_view value, Kind kind);
    void PutHeading();
    void PutText(std::string_view value, Kind kind, int width);
    void PutCsv(std::string_view value);

    OutputBuffer& m_Out;
    JsonWriter m_Json;
    TableFormat m_Format;
    std::vector<Column> m_Columns;
    std::size_t m_Column = 0;
    bool m_InRow = false;  // a cell of the row is out already
    std::uint64_t m_Rows = 0;
};

}  // namespace vesk
