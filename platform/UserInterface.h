#pragma once

#include <string>
#include <vector>

constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr unsigned MB_OK = 0x00;
constexpr unsigned MB_ICONSTOP = 0x10;

// Shows a text to the user and waits for the answer, by way of the current vesk::UserInterface.
int AfxMessageBox(const char* text, unsigned type = MB_OK);

// Text for a developer who traces the program; the default drops it.
void OutputDebugStringA(const char* text);

namespace vesk {

// What needs a person: one interface, answered by a window, a terminal or a test.
class UserInterface {
public:
    virtual ~UserInterface() = default;
    virtual int ShowMessage(const std::string& text, unsigned type) = 0;
    virtual void DebugText(const std::string&) {}
};

// Answers every message with OK and keeps what it was told.
class HeadlessUserInterface : public UserInterface {
public:
    int ShowMessage(const std::string& text, unsigned) override {
        m_Messages.push_back(text);
        return IDOK;
    }
    void DebugText(const std::string& text) override { m_DebugTexts.push_back(text); }

    std::vector<std::string> m_Messages;
    std::vector<std::string> m_DebugTexts;
};

// Puts another user interface in place until it goes out of scope; borrowed, not owned.
class ScopedUserInterface {
public:
    explicit ScopedUserInterface(UserInterface&);
    ~ScopedUserInterface();
    ScopedUserInterface(const ScopedUserInterface&) = delete;
    ScopedUserInterface& operator=(const ScopedUserInterface&) = delete;

private:
    UserInterface* m_Previous;
};

}  // namespace vesk
