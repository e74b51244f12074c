#include "cli/TableWriter.h"

#include <algorithm>

#include "cli/TextEncoding.h"
#include "log/TimeText.h"

namespace vesk {

namespace {

bool IsAlphanumeric(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

bool IsPlain(char c) {
    return c >= ' ' && c <= '~';
}

void PutName(OutputBuffer& out, std::string_view name) {
    if (std::all_of(name.begin(), name.end(), IsPlain)) return out.Put(name);
    out.Put(PrintableText(Latin1ToUtf8(name)));
}

}  // namespace

TableWriter::TableWriter(OutputBuffer& out, TableFormat format, std::vector<Column> columns)
    : m_Out(out), m_Json(out), m_Format(format), m_Columns(std::move(columns)) {
    if (m_Format == TableFormat::kJson)
        m_Json.BeginArray();
    else if (m_Format != TableFormat::kJsonLines)
        PutHeading();
}

void TableWriter::PutHeading() {
    for (const Column& column : m_Columns)
        Cell(column.m_Name, &column == &m_Columns.back() ? Kind::kName : Kind::kNumber);
    EndRow();
    m_Rows = 0;
}

TableWriter& TableWriter::Milliseconds(std::uint64_t qbits) {
    return m_Format == TableFormat::kText ? Cell(MillisecondsText(qbits), Kind::kNumber)
                                          : Cell({}, Kind::kNumber);
}

TableWriter& TableWriter::Microseconds(std::uint64_t qbits) {
    return m_Format == TableFormat::kText ? Cell(MicrosecondsText(qbits), Kind::kNumber)
                                          : Cell({}, Kind::kNumber);
}

TableWriter& TableWriter::Cell(std::string_view value, Kind kind) {
    const Column& column = m_Columns[m_Column++];
    if (column.m_Audience == Column::Audience::kPeople && m_Format != TableFormat::kText)
        return *this;
    if (m_Format == TableFormat::kText) {
        PutText(value, kind, column.m_Width);
    } else if (m_Format == TableFormat::kCsv) {
        if (m_InRow) m_Out.Put(',');
        kind == Kind::kNumber ? m_Out.Put(value) : PutCsv(value);
    } else {
        if (!m_InRow && m_Format == TableFormat::kJson) m_Json.NewLine();
        if (!m_InRow) m_Json.BeginObject();
        m_Json.Key(column.m_Name);
        kind == Kind::kNumber ? m_Json.Raw(value) : m_Json.Name(value);
    }
    m_InRow = true;
    return *this;
}

void TableWriter::PutText(std::string_view value, Kind kind, int width) {
    if (m_InRow) m_Out.Put("  ");
    if (kind == Kind::kName) return PutName(m_Out, value);
    for (int i = static_cast<int>(value.size()); i < width; ++i) m_Out.Put(' ');
    m_Out.Put(value);
}

void TableWriter::PutCsv(std::string_view value) {
    if (std::all_of(value.begin(), value.end(), IsAlphanumeric)) return m_Out.Put(value);
    const bool quoted = value.find_first_of(",\"\r\n") != std::string_view::npos;
    if (quoted) m_Out.Put('"');
    for (const char c : value) {
        if (c == '"') m_Out.Put('"');
        m_Out.PutLatin1(c);
    }
    if (quoted) m_Out.Put('"');
}

void TableWriter::EndRow() {
    if (m_Format == TableFormat::kJson || m_Format == TableFormat::kJsonLines) m_Json.EndObject();
    if (m_Format == TableFormat::kJsonLines) m_Json.EndDocument();
    if (m_Format == TableFormat::kText || m_Format == TableFormat::kCsv) m_Out.Put('\n');
    m_Column = 0;
    m_InRow = false;
    ++m_Rows;
}

void TableWriter::Finish() {
    if (m_Format != TableFormat::kJson) return;
    m_Json.NewLine();
    m_Json.EndArray();
    m_Json.EndDocument();
}

}  // namespace vesk
