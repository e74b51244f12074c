#pragma once

#include <concepts>
#include <string_view>

#include "platform/OutputBuffer.h"

namespace vesk {

// Writes one JSON document piece by piece, without keeping any of it. Commas come by themselves;
// that the brackets match and keys stand in objects only is up to the caller.
class JsonWriter {
public:
    explicit JsonWriter(OutputBuffer& out) : m_Out(out) {}

    void BeginObject() { Open('{'); }
    void EndObject() { Close('}'); }
    void BeginArray() { Open('['); }
    void EndArray() { Close(']'); }

    // Keys and names are bytes of a log: one above 0x7F becomes the character of that number.
    void Key(std::string_view name);
    void Name(std::string_view name);

    // UTF-8; a text that is none counts as bytes of a log.
    void Text(std::string_view text);

    template <std::integral Integer>
    void Number(Integer number) {
        Separate();
        m_Out.PutNumber(number);
    }
    void Number(double number);  // null if it is not finite
    void Bool(bool value);
    void Raw(std::string_view json);

    template <class Value>
    void Field(std::string_view key, const Value& value) {
        Key(key);
        if constexpr (std::same_as<Value, bool>)
            Bool(value);
        else if constexpr (std::is_arithmetic_v<Value>)
            Number(value);
        else
            Text(value);
    }

    // Ends the line; another document may follow.
    void EndDocument();

    // The next item, or the closing bracket, begins on a line of its own.
    void NewLine();

private:
    enum class Encoding { kLatin1, kUtf8 };

    void Open(char bracket);
    void Close(char bracket);
    void Separate();
    void PutString(std::string_view text, Encoding encoding);

    OutputBuffer& m_Out;
    bool m_NeedsComma = false;
    bool m_NeedsNewLine = false;
};

}  // namespace vesk
