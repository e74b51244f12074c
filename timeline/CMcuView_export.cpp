#include <cstring>

#include "host/VESKUIDoc.h"
#include "log/McuJobList.h"
#include "platform/AtomicFile.h"
#include "platform/CFileDialog.h"
#include "platform/UserInterface.h"
#include "timeline/CMcuView.h"
#include "timeline/MarkerFile.h"
#include "timeline/TextExport.h"

namespace {

constexpr unsigned kFlags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST;
constexpr const char* kTextFilter = "Text file (*.txt)|*.txt|All files (*.*)|*.*||";
constexpr const char* kMarkerFilter = "Slam file (*.slam)|*.slam|";

void Tell(const std::string& text) {
    if (!text.empty()) vesk::CurrentUserInterface().ShowStatus(text);
}

// Whether all was written; if not, no file is left.
bool Write(vesk::TextExport& write, vesk::AtomicFile& file, int& error) {
    const auto display = vesk::CurrentUserInterface().BeginProgress("Writing the text");
    vesk::ProgressCallback progress;
    if (display)
        progress = [&](std::int64_t done, std::int64_t total) {
            return display->Advance(done, total);
        };
    const bool complete = write(CMcuView::Jobs(), file.Buffer(), progress);
    error = complete ? file.Commit() : file.Buffer().Error();
    return complete && error == 0;
}

void SaveText(vesk::TextExport& write, CWnd& view) {
    CFileDialog dialog(false, "txt", nullptr, kFlags, kTextFilter, &view);
    if (dialog.DoModal() != IDOK) return;
    const CString path = dialog.GetPathName();
    vesk::AtomicFile file;
    int error = file.Open(path.Str());
    if (error != 0) {
        CString text;
        text.Format("Can't create file : %s. Error code: %d", path.Str().c_str(), error);
        AfxMessageBox(text);
    } else if (Write(write, file, error)) {
        Tell("Saved " + path.Str());
    } else if (error != 0) {
        Tell("Cannot write " + path.Str() + ": " + std::strerror(error));
    } else {
        Tell("Cancelled: " + path.Str() + " was not written.");
    }
}

// Beside the log, under its name.
std::string MarkerFileName() {
    const std::string& log = CMcuView::Jobs().m_FileName.Str();
    return log.substr(0, log.rfind('.')) + ".slam";
}

}  // namespace

void CMcuView::OnViewSavetext() {
    SaveText(vesk::WriteJobText, *this);
}

void CMcuView::OnViewSavetext_ExtraInfo() {
    SaveText(vesk::WriteExtraInfoText, *this);
}

void CMcuView::OnViewSavetext_CustomLogging() {
    SaveText(vesk::WriteCallText, *this);
}

void CMcuView::OnMcuExportMarker() {
    CFileDialog dialog(false, "slam", MarkerFileName().c_str(), kFlags, kMarkerFilter, this);
    if (!global_vesk_doc_ptr || dialog.DoModal() != IDOK) return;
    std::string error;
    vesk::WriteMarkerFile(dialog.GetPathName().Str(), global_vesk_doc_ptr->m_Markers, error);
    Tell(error);
}

void CMcuView::OnMcuImportMarker() {
    CFileDialog dialog(true, "slam", nullptr, kFlags, kMarkerFilter, this);
    if (global_vesk_doc_ptr && dialog.DoModal() == IDOK) {
        std::string error;
        vesk::ReadMarkerFile(dialog.GetPathName().Str(), global_vesk_doc_ptr->m_Markers, error);
        Tell(error);
    }
    InvalidateView();
}
