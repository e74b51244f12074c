#include "host/VESKUIDoc.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"
#include "platform/UserInterface.h"
#include "timeline/CMcuFilterDlg.h"
#include "timeline/CMcuView.h"

void CMcuView::OnMcuFilter() {
    McuJobList* const jobs = vesk_dll_shared_data.m_pJobList;
    if (!jobs) return;
    VESKUIDoc* const document = global_vesk_doc_ptr;
    std::list<std::string> names, tasks, functions, labels, hardware;
    GetJobNameList(names, tasks, functions, labels);
    names.splice(names.end(), tasks);
    for (const auto& [name, events] : jobs->m_HWJobs) hardware.push_back(name);
    CMcuFilterDlg dialog(names, functions, labels, hardware, m_RelativeList, m_ExtraShown,
                         jobs->m_CustomShown, jobs->m_SourceMarkShown,
                         document ? &document->m_JobColor : nullptr,
                         document ? &document->m_CustomColor : nullptr,
                         document ? &document->m_ExtraColor : nullptr, document, this);
    if (dialog.DoModal() != IDOK) return;
    m_RelativeList = dialog.m_RelativeList;
    m_ExtraShown = dialog.m_ExtraShown;
    jobs->m_CustomShown = dialog.m_CustomShown;
    jobs->m_SourceMarkShown = dialog.m_SourceMarkShown;
    SetVScrollRange();
    ShowLowestLanes();
    InvalidateView();
}
