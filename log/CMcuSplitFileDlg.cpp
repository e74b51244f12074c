#include "log/CMcuSplitFileDlg.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "log/SplitScanner.h"
#include "log/StreamFile.h"
#include "platform/CDataExchange.h"
#include "platform/UserInterface.h"

namespace {

constexpr unsigned kTemplate = 345;
constexpr int kSplitButton = 1418;
constexpr int kPath = 1820;
constexpr int kUnitSize = 1821;
constexpr int kFileSize = 1822;
constexpr int kWholeFile = 1823;
constexpr int kUnit = 1824;
constexpr int kIntervals = 1825;

// A size as it is typed: the number that the text begins with, 0 without one. One that is too large
// for a file stays too large.
std::int64_t UnitSizeOf(const CString& text) {
    constexpr long long kLargest = std::numeric_limits<std::int32_t>::max();
    return std::min(std::strtoll(text, nullptr, 10), kLargest);
}

}  // namespace

CMcuSplitFileDlg::CMcuSplitFileDlg(const vesk::RangeRequest& request, HeaderInfo& info,
                                   CWnd* parent)
    : CDialog(kTemplate, parent),
      m_UnitText(request.m_UnitText),
      m_SplitMode(request.m_SplitMode),
      m_FileName(request.m_FileName),
      m_SizeKB(request.m_SizeKB),
      m_FileStart(request.m_FileStart),
      m_FileEnd(request.m_FileEnd),
      m_WHCPLength(request.m_WHCPLength),
      m_OutStart(request.m_FileStart),
      m_OutEnd(request.m_FileEnd),
      m_Info(&info),
      m_Stream(request.m_Stream) {}

const vesk::MessageMap* CMcuSplitFileDlg::GetMessageMap() const {
    static const vesk::MessageEntry entries[] = {
        vesk::Notification<&CMcuSplitFileDlg::OnButtonSplit>(kSplitButton, BN_CLICKED),
        vesk::Notification<&CMcuSplitFileDlg::OnRadioWholeFile>(kWholeFile, BN_CLICKED),
        vesk::Notification<&CMcuSplitFileDlg::OnRadioUnit>(kUnit, BN_CLICKED),
    };
    static const vesk::MessageMap map{CDialog::GetMessageMap(), entries};
    return &map;
}

void CMcuSplitFileDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, kWholeFile, m_WholeFileButton);
    DDX_Control(exchange, kUnitSize, m_UnitEdit);
    DDX_Control(exchange, kSplitButton, m_SplitButton);
    DDX_Control(exchange, kIntervals, m_IntervalList);
    DDX_Text(exchange, kUnitSize, m_UnitText);
    DDX_Radio(exchange, kWholeFile, m_SplitMode);
}

bool CMcuSplitFileDlg::OnInitDialog() {
    const bool focus = CDialog::OnInitDialog();
    if (CWnd* path = GetDlgItem(kPath)) path->SetWindowText(m_FileName);
    CString size;
    size.Format("%d", m_SizeKB);
    if (CWnd* label = GetDlgItem(kFileSize)) label->SetWindowText(size);
    EnableSplitting(m_SplitMode != 0);
    return focus;
}

void CMcuSplitFileDlg::OnRadioWholeFile() {
    EnableSplitting(false);
}

void CMcuSplitFileDlg::OnRadioUnit() {
    EnableSplitting(true);
}

void CMcuSplitFileDlg::EnableSplitting(bool enable) {
    m_UnitEdit.EnableWindow(enable);
    m_SplitButton.EnableWindow(enable);
    m_IntervalList.EnableWindow(enable);
    if (!enable) ClearUnits();
}

void CMcuSplitFileDlg::ClearUnits() {
    m_IntervalList.ResetContent();
    m_Intervals.clear();
}

void CMcuSplitFileDlg::OnButtonSplit() {
    if (!UpdateData(true)) return;
    ClearUnits();
    const std::int64_t unitKB = UnitSizeOf(m_UnitText);
    if (unitKB <= 0) {
        AfxMessageBox("Invalid unit size");
        return;
    }
    std::string error;
    List(vesk::ScanUnits({m_FileName.Str(), m_Stream, *m_Info, m_SizeKB, m_FileStart, m_FileEnd,
                          m_UnitText.Str(), m_SplitMode, m_WHCPLength},
                         unitKB, error, kMostUnits));
    vesk::SeekTo(m_Stream, m_FileStart);
    if (!error.empty()) AfxMessageBox(error.c_str());
}

void CMcuSplitFileDlg::List(const std::vector<vesk::OfferedUnit>& units) {
    m_Intervals.reserve(units.size());
    CString line;
    for (const vesk::OfferedUnit& unit : units) {
        line.Format("%d ~ %d", unit.m_FirstFrame, unit.m_LastFrame);
        m_IntervalList.AddString(line);
        m_Intervals.push_back(unit.m_Interval);
    }
    if (!units.empty()) m_IntervalList.SetCurSel(0);
}

void CMcuSplitFileDlg::OnOK() {
    const int line = m_IntervalList.GetCurSel();
    if (m_WholeFileButton.GetCheck() == 0 && line >= 0 &&
        static_cast<std::size_t>(line) < m_Intervals.size()) {
        const SplitInterval& interval = m_Intervals[static_cast<std::size_t>(line)];
        m_OutStart = interval.m_StartPos;
        m_OutEnd = interval.m_EndPos;
        m_Info->m_FirstFrameNo = interval.m_FirstFrameNo;
        m_Info->m_FrameBaseCount = interval.m_BaseCount;
    }
    CDialog::OnOK();
}
