#pragma once

#include <string>
#include <utility>

// Text of the user interface: bytes, 8 bits a character, no encoding of its own.
// Converts from and to zero-terminated text as the platform's own class does; a text taken
// from a std::string keeps all its bytes.
class CString {
public:
    CString() = default;
    CString(const char* text) : m_Text(text ? text : "") {}
    CString(std::string text) : m_Text(std::move(text)) {}

    operator const char*() const { return m_Text.c_str(); }
    const std::string& Str() const { return m_Text; }

    int GetLength() const { return static_cast<int>(m_Text.size()); }
    bool IsEmpty() const { return m_Text.empty(); }
    void Empty() { m_Text.clear(); }

    // Replaces the text by printf-style formatted text of any length.
    void Format(const char* format, ...) __attribute__((format(printf, 2, 3)));

    CString& operator+=(const CString& other) {
        m_Text += other.m_Text;
        return *this;
    }
    friend CString operator+(CString left, const CString& right) { return left += right; }
    friend bool operator==(const CString& a, const CString& b) { return a.m_Text == b.m_Text; }
    friend bool operator==(const CString& a, const char* b) { return a.m_Text == b; }
    friend bool operator<(const CString& a, const CString& b) { return a.m_Text < b.m_Text; }

private:
    std::string m_Text;
};
