#include "platform/CButton.h"

void CButton::SetCheck(int check) {
    if (check == m_Check) return;
    m_Check = check;
    Notify(vesk::Aspect::Selection);
}

void CButton::Click() {
    if (!IsUsable()) return;
    if (m_Kind == vesk::ButtonKind::Check) SetCheck(m_Check == 0 ? 1 : 0);
    if (m_Kind == vesk::ButtonKind::Radio) {
        for (CButton* button : vesk::ChoiceOf(*this)) button->SetCheck(button == this ? 1 : 0);
    }
    NotifyParent(BN_CLICKED);
}

std::vector<CButton*> vesk::ChoiceOf(CButton& button) {
    if (!button.GetParent()) return {&button};
    std::vector<CButton*> choice;
    bool isOurs = false;
    for (CWnd* window : button.GetParent()->Children()) {
        auto* const radio = dynamic_cast<CButton*>(window);
        if (!radio || radio->m_Kind != ButtonKind::Radio) continue;
        if (radio->m_GroupStart) {
            if (isOurs) break;
            choice.clear();
        }
        choice.push_back(radio);
        isOurs |= radio == &button;
    }
    return choice;
}
