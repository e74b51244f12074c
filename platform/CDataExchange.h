#pragma once

#include <cstdint>

#include "platform/CString.h"

class CDialog;
class CWnd;

// One exchange of values between the controls of a dialog and its members.
class CDataExchange {
public:
    enum class Mode : std::uint8_t {
        Bind,  // members that are controls take their place in the dialog
        Load,  // members into controls
        Save,  // controls into members
    };

    CDataExchange(CDialog& dialog, Mode mode) : m_Dialog(dialog), m_Mode(mode) {}

    // Refuses a value while saving: the user is told, the control gets the focus, and the
    // exchange ends at once with UpdateData false.
    [[noreturn]] void Fail(int id, const CString& text);

    CDialog& m_Dialog;
    const Mode m_Mode;
    int m_LastId = -1;  // of the control exchanged last, which range checks are about

private:
    friend class CDialog;
    struct Refusal {};  // ends the exchange, within UpdateData
};

// The member stands for the control of that id from now on. Its class has to fit the template:
// DoModal throws std::logic_error otherwise, as all exchange functions do for an id without a
// control of their kind.
void DDX_Control(CDataExchange*, int id, CWnd& member);

// Text of an edit or static. Numbers that do not parse refuse the exchange.
void DDX_Text(CDataExchange*, int id, CString& value);
void DDX_Text(CDataExchange*, int id, std::int32_t& value);
void DDX_Text(CDataExchange*, int id, std::uint64_t& value);

// Position of the set radio button in the choice that begins with id; -1 for none.
void DDX_Radio(CDataExchange*, int id, std::int32_t& value);
void DDX_Check(CDataExchange*, int id, std::int32_t& value);

// Index of the chosen entry of a combo box; -1 for none.
void DDX_CBIndex(CDataExchange*, int id, std::int32_t& value);

// Refuses a saved number outside min to max; it stands in the control exchanged last.
void DDV_MinMaxInt(CDataExchange*, std::int32_t value, std::int32_t min, std::int32_t max);
