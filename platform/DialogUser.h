#pragma once

#include <string>
#include <vector>

#include "platform/CDialog.h"

namespace vesk {

// Works in a dialog as a person does who sees only its controls: by id, or by the text that
// stands on them. Every action fails (false) on a control that is missing, hidden, disabled or of
// the wrong kind, and on a dialog that has ended; what failed is kept in Faults().
class DialogUser {
public:
    explicit DialogUser(CDialog& dialog) : m_Dialog(dialog) {}

    CDialog& Dialog() const { return m_Dialog; }

    bool Press(int id);                      // button, radio button, check box
    bool Press(const std::string& text);     // the same, by its text without "&"
    bool Type(int id, const CString& text);  // edit
    bool Choose(int id, int index);          // entry of a combo box
    bool Choose(int id, const CString& text);
    bool Select(int id, int index);  // line of a list
    bool PressAt(int id, CPoint);    // left button, on a control that decides by the place
    bool Key(unsigned key);          // Return, Escape: default button, cancel; else to the focus

    CString Text(int id) const;
    bool IsEnabled(int id) const;
    bool IsVisible(int id) const;
    bool IsChecked(int id) const;
    int Selected(int id) const;  // combo box or list; -1 for none
    // Of a combo box, list, or list control, whose columns are parted by tabs.
    std::vector<std::string> Lines(int id) const;

    const std::vector<std::string>& Faults() const { return m_Faults; }

private:
    bool Fail(const std::string& what);
    CWnd* Control(int id) const { return m_Dialog.GetDlgItem(id); }
    template <class T>
    T* Reach(const char* action, int id);

    CDialog& m_Dialog;
    std::vector<std::string> m_Faults;
};

}  // namespace vesk
