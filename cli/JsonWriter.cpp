#include "cli/JsonWriter.h"

#include <cmath>
#include <cstdint>

#include "cli/TextEncoding.h"

namespace vesk {

void JsonWriter::Open(char bracket) {
    Separate();
    m_Out.Put(bracket);
    m_NeedsComma = false;
}

void JsonWriter::Close(char bracket) {
    if (m_NeedsNewLine) m_Out.Put('\n');
    m_NeedsNewLine = false;
    m_Out.Put(bracket);
    m_NeedsComma = true;
}

void JsonWriter::Separate() {
    if (m_NeedsComma) m_Out.Put(',');
    if (m_NeedsNewLine) m_Out.Put('\n');
    m_NeedsComma = true;
    m_NeedsNewLine = false;
}

void JsonWriter::Raw(std::string_view json) {
    Separate();
    m_Out.Put(json);
}

void JsonWriter::EndDocument() {
    m_Out.Put('\n');
    m_NeedsComma = false;
}

void JsonWriter::NewLine() {
    m_NeedsNewLine = true;
}

void JsonWriter::Key(std::string_view name) {
    Name(name);
    m_Out.Put(':');
    m_NeedsComma = false;
}

void JsonWriter::Name(std::string_view name) {
    Separate();
    PutString(name, Encoding::kLatin1);
}

void JsonWriter::Text(std::string_view text) {
    Separate();
    PutString(text, IsUtf8(text) ? Encoding::kUtf8 : Encoding::kLatin1);
}

void JsonWriter::Number(double number) {
    Separate();
    char digits[32];
    if (!std::isfinite(number)) return m_Out.Put("null");
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    m_Out.Put(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

void JsonWriter::Bool(bool value) {
    Separate();
    m_Out.Put(value ? "true" : "false");
}

void JsonWriter::PutString(std::string_view text, Encoding encoding) {
    m_Out.Put('"');
    for (const char c : text) {
        const auto byte = static_cast<std::uint8_t>(c);
        if (byte >= 0x80 && encoding == Encoding::kLatin1) {
            m_Out.PutLatin1(c);
        } else if (byte < 0x20 || byte == 0x7F) {
            constexpr char kDigits[] = "0123456789abcdef";
            m_Out.Put("\\u00");
            m_Out.Put(kDigits[byte >> 4]);
            m_Out.Put(kDigits[byte & 15]);
        } else {
            if (c == '"' || c == '\\') m_Out.Put('\\');
            m_Out.Put(c);
        }
    }
    m_Out.Put('"');
}

}  // namespace vesk
