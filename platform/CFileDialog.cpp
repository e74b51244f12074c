#include "platform/CFileDialog.h"

#include <filesystem>

#include "platform/UserInterface.h"

CFileDialog::CFileDialog(bool open, const char* defaultExtension, const char* fileName,
                         unsigned flags, const char* filter, CWnd* parent)
    : m_Open(open),
      m_DefaultExtension(defaultExtension),
      m_Flags(flags),
      m_Filter(filter),
      m_Parent(parent),
      m_Path(fileName) {}

int CFileDialog::DoModal() {
    const int result = vesk::CurrentUserInterface().RunFileDialog(*this);
    if (result != IDOK || m_Open || m_DefaultExtension.IsEmpty()) return result;
    if (!std::filesystem::path(m_Path.Str()).has_extension()) m_Path += "." + m_DefaultExtension;
    return result;
}
