#include "platform/DialogUser.h"

#include "platform/CButton.h"
#include "platform/CComboBox.h"
#include "platform/CEdit.h"
#include "platform/CListBox.h"
#include "platform/CListCtrl.h"
#include "platform/Text.h"

namespace vesk {
namespace {

// A text as it is read on the screen: "&" marks the key to press, "&&" stands for "&".
std::string Readable(const std::string& text) {
    std::string readable;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&' && ++i == text.size()) break;
        readable += text[i];
    }
    return readable;
}

// Why a person cannot use a control, or nothing.
const char* Obstacle(const CWnd* window) {
    if (!window) return "is missing";
    if (!window->IsWindowVisible()) return "is hidden";
    return window->IsWindowEnabled() ? nullptr : "is disabled";
}

std::string RowText(const CListCtrl& list, int row) {
    std::string text = list.GetItemText(row, 0).Str();
    for (int column = 1; column < static_cast<int>(list.Columns().size()); ++column)
        text += "\t" + list.GetItemText(row, column).Str();
    return text;
}

}  // namespace

bool DialogUser::Fail(const std::string& what) {
    m_Faults.push_back(m_Dialog.GetWindowText().Str() + ": " + what);
    return false;
}

// The control that an action needs, or null and a fault.
template <class T>
T* DialogUser::Reach(const char* action, int id) {
    CWnd* const window = Control(id);
    T* const control = dynamic_cast<T*>(window);
    const char* problem = m_Dialog.HasEnded() ? "stands in a dialog that has ended" : nullptr;
    if (!problem) problem = Obstacle(window);
    if (!problem && !control) problem = "is of another kind";
    if (!problem) return control;
    Fail(FormatText("%s: control %d %s", action, id, problem));
    return nullptr;
}

bool DialogUser::Press(int id) {
    auto* const button = Reach<CButton>("press", id);
    if (button) button->Click();
    return button;
}

bool DialogUser::Press(const std::string& text) {
    if (m_Dialog.HasEnded()) return Fail("press \"" + text + "\": the dialog has ended");
    const char* problem = "is missing";
    for (const CDialog::Control& control : m_Dialog.Controls()) {
        auto* const button = dynamic_cast<CButton*>(control.m_Window);
        if (!button || Readable(button->GetWindowText().Str()) != Readable(text)) continue;
        problem = Obstacle(button);
        if (problem) continue;
        button->Click();
        return true;
    }
    return Fail("press \"" + text + "\": it " + problem);
}

bool DialogUser::Type(int id, const CString& text) {
    auto* const edit = Reach<CEdit>("type", id);
    if (!edit) return false;
    if (edit->m_ReadOnly) return Fail(FormatText("type: control %d is read-only", id));
    edit->Type(text);
    return true;
}

bool DialogUser::Choose(int id, int index) {
    auto* const combo = Reach<CComboBox>("choose", id);
    if (!combo) return false;
    if (index < 0 || index >= combo->GetCount())
        return Fail(FormatText("choose: control %d has no entry %d", id, index));
    combo->Choose(index);
    return true;
}

bool DialogUser::Choose(int id, const CString& text) {
    auto* const combo = Reach<CComboBox>("choose", id);
    if (!combo) return false;
    for (int i = 0; i < combo->GetCount(); ++i) {
        CString entry;
        combo->GetLBText(i, entry);
        if (entry == text) return Choose(id, i);
    }
    return Fail(FormatText("choose: control %d has no entry \"", id) + text.Str() + "\"");
}

bool DialogUser::Select(int id, int index) {
    CWnd* const window = Reach<CWnd>("select", id);
    if (!window) return false;
    auto* const list = dynamic_cast<CListBox*>(window);
    auto* const rows = dynamic_cast<CListCtrl*>(window);
    if (!list && !rows) return Fail(FormatText("select: control %d is of another kind", id));
    const int count = list ? list->GetCount() : rows->GetItemCount();
    if (index < 0 || index >= count)
        return Fail(FormatText("select: control %d has no line %d", id, index));
    if (list) list->Select(index);
    if (rows) rows->Select({index});
    return true;
}

bool DialogUser::PressAt(int id, CPoint point) {
    CWnd* const window = Reach<CWnd>("press", id);
    if (window) window->OnLButtonDown(MK_LBUTTON, point);
    return window;
}

bool DialogUser::Key(unsigned key) {
    if (m_Dialog.HasEnded()) return Fail(FormatText("key %u: the dialog has ended", key));
    if (m_Dialog.OnKey(key)) return true;
    CWnd* const focus = CWnd::GetFocus();
    if (!focus || focus->GetParent() != &m_Dialog)
        return Fail(FormatText("key %u: no control has the focus", key));
    focus->OnKeyDown(key, 1, 0);
    return true;
}

CString DialogUser::Text(int id) const {
    return Control(id) ? Control(id)->GetWindowText() : CString();
}

bool DialogUser::IsEnabled(int id) const {
    return Control(id) && Control(id)->IsWindowEnabled();
}

bool DialogUser::IsVisible(int id) const {
    return Control(id) && Control(id)->IsWindowVisible();
}

bool DialogUser::IsChecked(int id) const {
    const auto* button = dynamic_cast<const CButton*>(Control(id));
    return button && button->GetCheck() != 0;
}

int DialogUser::Selected(int id) const {
    if (const auto* combo = dynamic_cast<const CComboBox*>(Control(id))) return combo->GetCurSel();
    if (const auto* list = dynamic_cast<const CListBox*>(Control(id))) return list->GetCurSel();
    const auto* rows = dynamic_cast<const CListCtrl*>(Control(id));
    for (int i = 0; rows && i < rows->GetItemCount(); ++i) {
        if (rows->IsSelected(i)) return i;
    }
    return -1;
}

std::vector<std::string> DialogUser::Lines(int id) const {
    std::vector<std::string> lines;
    CString text;
    const auto* combo = dynamic_cast<const CComboBox*>(Control(id));
    for (int i = 0; combo && i < combo->GetCount(); ++i) {
        combo->GetLBText(i, text);
        lines.push_back(text.Str());
    }
    const auto* list = dynamic_cast<const CListBox*>(Control(id));
    for (int i = 0; list && i < list->GetCount(); ++i) {
        list->GetText(i, text);
        lines.push_back(text.Str());
    }
    const auto* rows = dynamic_cast<const CListCtrl*>(Control(id));
    for (int i = 0; rows && i < rows->GetItemCount(); ++i) lines.push_back(RowText(*rows, i));
    return lines;
}

}  // namespace vesk
