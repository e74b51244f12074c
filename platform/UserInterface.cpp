#include "platform/UserInterface.h"

namespace {

// Nobody is there to answer: every question is answered with OK.
class SilentUserInterface : public vesk::UserInterface {
    int ShowMessage(const std::string&, unsigned) override { return IDOK; }
};

SilentUserInterface silent;
vesk::UserInterface* current = &silent;

}  // namespace

int AfxMessageBox(const char* text, unsigned type) {
    return current->ShowMessage(text, type);
}

void OutputDebugStringA(const char* text) {
    current->DebugText(text);
}

vesk::ScopedUserInterface::ScopedUserInterface(UserInterface& other) : m_Previous(current) {
    current = &other;
}

vesk::ScopedUserInterface::~ScopedUserInterface() {
    current = m_Previous;
}
