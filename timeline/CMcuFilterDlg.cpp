#include "timeline/CMcuFilterDlg.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"
#include "platform/CDC.h"
#include "platform/CDataExchange.h"
#include "platform/CFileDialog.h"
#include "platform/UserInterface.h"

namespace {

using vesk::FilterFile;
using vesk::FilterRecord;

constexpr unsigned kTemplate = 202;
constexpr int kFirstList = 1026;  // the others follow, in the order of the file's sections
constexpr int kHardwareList = 1030;
constexpr int kImport = 1977;
constexpr int kExport = 1978;
constexpr COLORREF kNoColor = 0xFFFFFF;
constexpr int kLeastHeight = 16;
constexpr const char* kFileKinds = "Text file (*.txt)|*.txt|All files (*.*)|*.*||";

bool IsSet(const std::vector<bool>& flags, std::size_t at) {
    return at < flags.size() && flags[at];
}

COLORREF ColorOf(const McuColorMap* map, std::int32_t key) {
    return map ? map->Lookup(key) : kNoColor;
}

int EntryHeight() {
    return std::max(CDC().GetTextExtent("Xg").cy + 4, kLeastHeight);
}

}  // namespace

CMcuFilterDlg::CMcuFilterDlg(std::list<std::string> tasks, std::list<std::string> functions,
                             std::list<std::string> labels, std::list<std::string> hardware,
                             std::vector<std::string> relativeList, std::vector<bool> extraShown,
                             std::vector<bool> customShown, std::vector<bool> sourceMarkShown,
                             McuColorMap* jobColor, McuColorMap* customColor,
                             McuColorMap* extraColor, VESKUIDoc* document, CWnd* parent)
    : CDialog(kTemplate, parent),
      m_RelativeList(std::move(relativeList)),
      m_ExtraShown(std::move(extraShown)),
      m_CustomShown(std::move(customShown)),
      m_SourceMarkShown(std::move(sourceMarkShown)),
      m_Tasks(std::move(tasks)),
      m_Functions(std::move(functions)),
      m_Labels(std::move(labels)),
      m_Hardware(std::move(hardware)),
      m_JobColor(jobColor),
      m_CustomColor(customColor),
      m_ExtraColor(extraColor),
      m_Document(document) {}

const vesk::MessageMap* CMcuFilterDlg::GetMessageMap() const {
    using vesk::Notification;
    using D = CMcuFilterDlg;
    static const vesk::MessageEntry entries[] = {
        Notification<&D::OnAllOn<FilterFile::kTasks>>(3, BN_CLICKED),
        Notification<&D::OnAllOff<FilterFile::kTasks>>(4, BN_CLICKED),
        Notification<&D::OnAllOn<FilterFile::kFunctions>>(5, BN_CLICKED),
        Notification<&D::OnAllOff<FilterFile::kFunctions>>(6, BN_CLICKED),
        Notification<&D::OnAllOn<FilterFile::kExtraValues>>(7, BN_CLICKED),
        Notification<&D::OnAllOff<FilterFile::kExtraValues>>(8, BN_CLICKED),
        Notification<&D::OnAllOn<FilterFile::kLabels>>(9, BN_CLICKED),
        Notification<&D::OnAllOff<FilterFile::kLabels>>(10, BN_CLICKED),
        Notification<&D::OnButtonExport>(kExport, BN_CLICKED),
        Notification<&D::OnButtonImport>(kImport, BN_CLICKED),
    };
    static const vesk::MessageMap map{CDialog::GetMessageMap(), entries};
    return &map;
}

void CMcuFilterDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    for (std::size_t i = 0; i < m_Lists.size(); ++i)
        DDX_Control(exchange, kFirstList + static_cast<int>(i), m_Lists[i]);
    DDX_Control(exchange, kHardwareList, m_HardwareList);
}

// --- The lists -----------------------------------------------------------------------------------

bool CMcuFilterDlg::OnInitDialog() {
    const bool focus = CDialog::OnInitDialog();
    for (CChkListBox& list : m_Lists) {
        list.Clear();
        list.m_ShowColor = &list != &List(FilterFile::kLabels);
        list.SetItemHeight(EntryHeight());
    }
    FillLists();
    return focus && m_Document != nullptr;
}

void CMcuFilterDlg::FillLists() {
    const std::unordered_set<std::string> shown(m_RelativeList.begin(), m_RelativeList.end());
    for (const std::string& name : m_Tasks)
        AddByName(FilterFile::kTasks, name, shown.contains(name), m_JobColor);
    std::size_t position = 0;
    for (const std::string& name : m_Functions)
        AddByName(FilterFile::kFunctions, name, IsSet(m_CustomShown, position++), m_CustomColor);
    if (const McuJobList* const jobs = vesk_dll_shared_data.m_pJobList)
        for (const CString& name : jobs->m_ExtraNames)
            AddByPosition(FilterFile::kExtraValues, name.Str(), m_ExtraShown, m_ExtraColor);
    for (const std::string& name : m_Labels)
        AddByPosition(FilterFile::kLabels, name, m_SourceMarkShown, nullptr);
    for (const std::string& name : m_Hardware) m_HardwareList.AddString(name);
}

void CMcuFilterDlg::AddByName(Section section, const std::string& name, bool checked,
                              const McuColorMap* colors) {
    const std::int32_t key = vesk::ColorKey(name);
    List(section).AddEntry(name, {key, checked, ColorOf(colors, key)});
}

void CMcuFilterDlg::AddByPosition(Section section, const std::string& name,
                                  const std::vector<bool>& shown, const McuColorMap* colors) {
    const std::int32_t key = List(section).GetCount();
    const bool checked = IsSet(shown, static_cast<std::size_t>(key));
    List(section).AddEntry(name, {key, checked, ColorOf(colors, key)});
}

void CMcuFilterDlg::SetAll(Section section, std::int32_t checked) {
    CChkListBox& list = List(section);
    for (int i = 0; i < list.GetCount(); ++i) list.RecordAt(i)->m_Checked = checked;
    list.Invalidate();
}

// --- OK ------------------------------------------------------------------------------------------

// From the last entry to the first: lanes keep their order, and of entries that share a colour the
// first one decides.
void CMcuFilterDlg::OnOK() {
    TakeTasks();
    TakeFlags(FilterFile::kFunctions, m_CustomShown, m_CustomColor);
    TakeFlags(FilterFile::kLabels, m_SourceMarkShown, nullptr);
    TakeFlags(FilterFile::kExtraValues, m_ExtraShown, m_ExtraColor);
    CDialog::OnOK();
}

void CMcuFilterDlg::TakeTasks() {
    CChkListBox& list = List(FilterFile::kTasks);
    m_RelativeList.clear();
    for (int i = list.GetCount() - 1; i >= 0; --i) {
        const FilterRecord& record = *list.RecordAt(i);
        CString name;
        list.GetText(i, name);
        if (record.m_Checked != 0) m_RelativeList.push_back(name.Str());
        if (m_JobColor) m_JobColor->Update(record.m_Key, record.m_Color);
    }
}

void CMcuFilterDlg::TakeFlags(Section section, std::vector<bool>& shown, McuColorMap* colors) {
    CChkListBox& list = List(section);
    for (int i = list.GetCount() - 1; i >= 0; --i) {
        const FilterRecord& record = *list.RecordAt(i);
        const auto at = static_cast<std::size_t>(i);
        if (at < shown.size()) shown[at] = record.m_Checked == 1;
        if (colors) colors->Update(record.m_Key, record.m_Color);
    }
}

// --- The filter file -----------------------------------------------------------------------------

void CMcuFilterDlg::OnButtonExport() {
    CFileDialog dialog(false, "txt", nullptr,
                       OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST, kFileKinds,
                       this);
    if (dialog.DoModal() != IDOK) return;
    FilterFile file;
    for (std::size_t section = 0; section < m_Lists.size(); ++section) {
        CChkListBox& list = m_Lists[section];
        for (int i = list.GetCount() - 1; i >= 0; --i)
            file.m_Sections[section].push_back(*list.RecordAt(i));
    }
    std::string error;
    if (!file.Write(dialog.GetPathName().Str(), error)) AfxMessageBox(error.c_str());
}

void CMcuFilterDlg::OnButtonImport() {
    CFileDialog dialog(true, "txt", nullptr, OFN_HIDEREADONLY | OFN_FILEMUSTEXIST, kFileKinds,
                       this);
    if (dialog.DoModal() != IDOK) return;
    FilterFile file;
    std::string error;
    if (!file.Read(dialog.GetPathName().Str(), error)) {
        AfxMessageBox(error.c_str());
        return;
    }
    for (std::size_t section = 0; section < m_Lists.size(); ++section) {
        std::unordered_map<std::int32_t, FilterRecord> byKey;
        for (const FilterRecord& record : file.m_Sections[section]) byKey[record.m_Key] = record;
        CChkListBox& list = m_Lists[section];
        for (int i = 0; i < list.GetCount(); ++i) {
            const auto found = byKey.find(list.RecordAt(i)->m_Key);
            if (found != byKey.end()) *list.RecordAt(i) = found->second;
        }
        list.Invalidate();
    }
}
