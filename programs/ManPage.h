#pragma once

#include <string>

namespace vesk {

// Puts a manual page together, in the form that man reads. Texts are UTF-8 and stand as they are
// given, whatever they contain.
class ManPage {
public:
    // Of a program, with one line on what it does.
    ManPage(const std::string& program, const std::string& version, const std::string& summary);

    // How the program is called: its name, and what follows.
    void Synopsis(const std::string& program, const std::string& arguments);
    void Section(const std::string& title);
    void Paragraph(const std::string& text);
    // What can be typed: words that stand as they are, then, if there is one, what stands for a
    // value; then what it means.
    void Item(const std::string& words, const std::string& value, const std::string& text);
    // Lines that keep their ends.
    void Lines(const std::string& text);

    const std::string& Text() const { return m_Text; }

private:
    std::string m_Text;
};

}  // namespace vesk
