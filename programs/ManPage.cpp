#include "programs/ManPage.h"

#include <cctype>

namespace vesk {

namespace {

// A minus would become a hyphen, and a line that begins with a dot or a quote a request.
std::string Escaped(const std::string& text) {
    std::string escaped;
    bool beginsLine = true;
    for (const char c : text) {
        if (beginsLine && (c == '.' || c == '\'')) escaped += "\\&";
        if (c == '\\') {
            escaped += "\\e";
        } else if (c == '-') {
            escaped += "\\-";
        } else {
            escaped += c;
        }
        beginsLine = c == '\n';
    }
    return escaped;
}

std::string Capitals(std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

}  // namespace

ManPage::ManPage(const std::string& program, const std::string& version, const std::string& summary)
    : m_Text(".TH " + Capitals(program) + " 1 \"\" \"vesk " + version + "\" \"User Commands\"\n") {
    Section("NAME");
    m_Text += Escaped(program) + " \\- " + Escaped(summary) + '\n';
}

void ManPage::Synopsis(const std::string& program, const std::string& arguments) {
    Section("SYNOPSIS");
    m_Text += "\\fB" + Escaped(program) + "\\fR \\fI" + Escaped(arguments) + "\\fR\n";
}

void ManPage::Section(const std::string& title) {
    m_Text += ".SH " + title + '\n';
}

void ManPage::Paragraph(const std::string& text) {
    m_Text += ".PP\n" + Escaped(text) + '\n';
}

void ManPage::Item(const std::string& words, const std::string& value, const std::string& text) {
    m_Text += ".TP\n\\fB" + Escaped(words) + "\\fR";
    if (!value.empty()) m_Text += " \\fI" + Escaped(value) + "\\fR";
    m_Text += '\n' + Escaped(text) + '\n';
}

void ManPage::Lines(const std::string& text) {
    m_Text += ".PP\n.nf\n" + Escaped(text) + "\n.fi\n";
}

}  // namespace vesk
