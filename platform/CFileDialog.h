#pragma once

#include "platform/CString.h"

class CWnd;

constexpr unsigned OFN_OVERWRITEPROMPT = 0x2;
constexpr unsigned OFN_HIDEREADONLY = 0x4;
constexpr unsigned OFN_PATHMUSTEXIST = 0x800;
constexpr unsigned OFN_FILEMUSTEXIST = 0x1000;

// Asks for a file to open or to save to. Filters are pairs of name and pattern, all ended by "|":
// "Text file (*.txt)|*.txt|All files (*.*)|*.*||".
class CFileDialog {
public:
    explicit CFileDialog(bool open, const char* defaultExtension = nullptr,
                         const char* fileName = nullptr, unsigned flags = OFN_HIDEREADONLY,
                         const char* filter = nullptr, CWnd* parent = nullptr);

    int DoModal();  // IDOK or IDCANCEL
    CString GetPathName() const { return m_Path; }

    // --- For whoever shows the dialog ----------------------------------------------------------

    const bool m_Open;
    const CString m_DefaultExtension;  // without a dot; added to a name to save to without one
    const unsigned m_Flags;
    const CString m_Filter;
    CWnd* const m_Parent;
    CString m_Path;  // before: the name proposed; afterwards: the one chosen
};
