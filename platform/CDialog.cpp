#include "platform/CDialog.h"

#include <algorithm>
#include <stdexcept>
#include <type_traits>

#include "platform/CButton.h"
#include "platform/CComboBox.h"
#include "platform/CDataExchange.h"
#include "platform/CEdit.h"
#include "platform/CListBox.h"
#include "platform/CListCtrl.h"
#include "platform/CStatic.h"
#include "platform/Keys.h"
#include "platform/Text.h"
#include "platform/UserInterface.h"

namespace {

using vesk::ControlKind;
using vesk::ControlTemplate;

// Calls visit with the class that stands for a kind of control.
template <class Visit>
auto ForClassOf(ControlKind kind, Visit visit) {
    switch (kind) {
        case ControlKind::Label:
        case ControlKind::Group:
            break;
        case ControlKind::Button:
        case ControlKind::Radio:
        case ControlKind::Check:
            return visit(std::type_identity<CButton>());
        case ControlKind::Edit:
            return visit(std::type_identity<CEdit>());
        case ControlKind::DropList:
            return visit(std::type_identity<CComboBox>());
        case ControlKind::ListBox:
            return visit(std::type_identity<CListBox>());
        case ControlKind::ListControl:
            return visit(std::type_identity<CListCtrl>());
    }
    return visit(std::type_identity<CStatic>());
}

// What a control is like when its dialog begins. It may be left over from an earlier run.
void Reset(CStatic& label, const ControlTemplate& from) {
    label.m_IsGroup = from.m_Kind == ControlKind::Group;
}

void Reset(CButton& button, const ControlTemplate& from) {
    button.m_Kind = from.m_Kind == ControlKind::Radio   ? vesk::ButtonKind::Radio
                    : from.m_Kind == ControlKind::Check ? vesk::ButtonKind::Check
                                                        : vesk::ButtonKind::Push;
    button.m_GroupStart = (from.m_Flags & vesk::kGroupStart) != 0;
    button.SetCheck(0);
}

void Reset(CEdit& edit, const ControlTemplate& from) {
    edit.m_DigitsOnly = (from.m_Flags & vesk::kDigitsOnly) != 0;
    edit.m_ReadOnly = (from.m_Flags & vesk::kReadOnly) != 0;
    edit.SetSel(0, 0);
}

void Reset(CComboBox& combo, const ControlTemplate& from) {
    combo.m_Sorted = (from.m_Flags & vesk::kSorted) != 0;
    combo.ResetContent();
}

void Reset(CListBox& list, const ControlTemplate& from) {
    list.m_MultiSelect = (from.m_Flags & vesk::kMultiSelect) != 0;
    list.m_OwnerDrawn = (from.m_Flags & vesk::kOwnerDrawn) != 0;
    list.m_Sorted = (from.m_Flags & vesk::kSorted) != 0;
    list.ResetContent();
}

void Reset(CListCtrl& list, const ControlTemplate&) {
    list.DeleteAllItems();
    while (list.DeleteColumn(0)) {
    }
}

void Prepare(CWnd& window, const ControlTemplate& from) {
    ForClassOf(from.m_Kind, [&]<class T>(std::type_identity<T>) {
        auto* const control = dynamic_cast<T*>(&window);
        if (!control)
            throw std::logic_error(vesk::FormatText("control %d is of another kind", from.m_Id));
        Reset(*control, from);
    });
    window.SetWindowText(from.m_Text);
    window.EnableWindow((from.m_Flags & vesk::kDisabled) == 0);
    window.ShowWindow((from.m_Flags & vesk::kHidden) == 0 ? SW_SHOW : SW_HIDE);
}

bool TakesFocus(const CDialog::Control& control) {
    const ControlKind kind = control.m_Template->m_Kind;
    return kind != ControlKind::Label && kind != ControlKind::Group &&
           control.m_Window->IsWindowEnabled() && control.m_Window->IsWindowVisible();
}

}  // namespace

CDialog::CDialog(unsigned templateId, CWnd* parent) : m_TemplateId(templateId), m_Owner(parent) {}

CDialog::~CDialog() = default;

int CDialog::DoModal() {
    const vesk::DialogTemplate* from = vesk::FindDialog(m_TemplateId);
    if (!from) return -1;
    // Whatever ends the run, the controls are back in the hands of their owners afterwards.
    const struct Cleanup {
        CDialog& m_Dialog;
        ~Cleanup() { m_Dialog.ReleaseControls(); }
    } cleanup{*this};
    m_Quiet = true;
    m_Ended = false;
    m_Result = IDCANCEL;
    MakeControls(*from);
    SetWindowText(from->m_Title);
    if (OnInitDialog()) FocusFirst();
    m_Quiet = false;
    if (m_Ended) return m_Result;
    ShowWindow(SW_SHOW);
    vesk::CurrentUserInterface().RunDialog(*this);
    return m_Result;
}

void CDialog::MakeControls(const vesk::DialogTemplate& from) {
    m_Bound.clear();
    CDataExchange exchange(*this, CDataExchange::Mode::Bind);
    DoDataExchange(&exchange);
    for (const ControlTemplate& control : from.m_Controls) {
        CWnd& window = WindowFor(control);
        window.Attach(this, control.m_Id);
        m_Controls.push_back({&control, &window});
        Prepare(window, control);
    }
    if (m_Bound.empty()) return;
    throw std::logic_error(vesk::FormatText("the dialog has no control %d", m_Bound.front().first));
}

// The member bound to the control, or a window made for it.
CWnd& CDialog::WindowFor(const ControlTemplate& control) {
    const auto bound = std::find_if(m_Bound.begin(), m_Bound.end(),
                                    [&](const auto& entry) { return entry.first == control.m_Id; });
    if (bound != m_Bound.end()) {
        CWnd& window = *bound->second;
        m_Bound.erase(bound);
        return window;
    }
    m_Owned.push_back(
        ForClassOf(control.m_Kind, []<class T>(std::type_identity<T>) -> std::unique_ptr<CWnd> {
            return std::make_unique<T>();
        }));
    return *m_Owned.back();
}

void CDialog::ReleaseControls() {
    m_Quiet = true;
    ShowWindow(SW_HIDE);
    for (const Control& control : m_Controls) {
        control.m_Window->SetPeer(nullptr);
        control.m_Window->Attach(nullptr, 0);
        control.m_Window->DropFocus();
    }
    SetPeer(nullptr);
    DropFocus();
    m_Controls.clear();
    m_Owned.clear();
}

void CDialog::FocusFirst() {
    const auto first = std::find_if(m_Controls.begin(), m_Controls.end(), TakesFocus);
    if (first != m_Controls.end()) first->m_Window->SetFocus();
}

void CDialog::EndDialog(int result) {
    m_Ended = true;
    m_Result = result;
    ShowWindow(SW_HIDE);
}

CWnd* CDialog::GetDlgItem(int id) const {
    const auto found = std::find_if(m_Controls.begin(), m_Controls.end(),
                                    [&](const Control& c) { return c.m_Template->m_Id == id; });
    return found == m_Controls.end() ? nullptr : found->m_Window;
}

bool CDialog::UpdateData(bool save) {
    const bool wasQuiet = std::exchange(m_Quiet, true);
    bool accepted = true;
    try {
        CDataExchange exchange(*this, save ? CDataExchange::Mode::Save : CDataExchange::Mode::Load);
        DoDataExchange(&exchange);
    } catch (const CDataExchange::Refusal&) {
        accepted = false;
    }
    m_Quiet = wasQuiet;
    return accepted;
}

void CDialog::OnNotify(int id, int code) {
    if (!m_Quiet && !m_Ended) CWnd::OnNotify(id, code);
}

bool CDialog::OnKey(unsigned key) {
    if (m_Ended) return false;
    if (key == VK_ESCAPE) {
        Close();
    } else if (key == VK_RETURN) {
        PressDefault();
    } else {
        return false;
    }
    return true;
}

void CDialog::PressDefault() {
    const auto isDefault = [](const Control& control) {
        return control.m_Template->m_Kind == ControlKind::Button &&
               (control.m_Template->m_Flags & vesk::kDefault) != 0;
    };
    const auto found = std::find_if(m_Controls.begin(), m_Controls.end(), isDefault);
    CWnd* const window = found == m_Controls.end() ? GetDlgItem(IDOK) : found->m_Window;
    if (auto* button = dynamic_cast<CButton*>(window)) {
        button->Click();
    } else {
        OnNotify(IDOK, BN_CLICKED);
    }
}

bool CDialog::OnInitDialog() {
    UpdateData(false);
    return true;
}

void CDialog::OnOK() {
    if (UpdateData(true)) EndDialog(IDOK);
}

void CDialog::OnCancel() {
    EndDialog(IDCANCEL);
}

bool CDialog::OnCmdMsg(unsigned id, int code, CCmdUI* ui) {
    if (CWnd::OnCmdMsg(id, code, ui)) return true;
    if (ui || code != BN_CLICKED || (id != IDOK && id != IDCANCEL)) return false;
    if (id == IDOK) {
        OnOK();
    } else {
        OnCancel();
    }
    return true;
}
