#pragma once

#include <cstdint>
#include <cstdio>
#include <vector>

#include "log/HeaderInfo.h"
#include "log/RangeChooser.h"
#include "log/SplitInterval.h"
#include "platform/CButton.h"
#include "platform/CDialog.h"
#include "platform/CEdit.h"
#include "platform/CListBox.h"

// Asks which part of a log is read: the whole file, or one of the units that it cuts the file into.
// The result stands in m_OutStart and m_OutEnd, and in the header's first frame number and count;
// without OK it is the whole file. Path, stream and header are borrowed; the stream is left
// anywhere.
class CMcuSplitFileDlg : public CDialog {
public:
    // The units listed at most. Nobody picks from more, and 10 GB in units of 1 KB would be ten
    // million lines.
    static constexpr std::size_t kMostUnits = 1'000'000;

    // Takes unit size and choice of the last time from the request.
    CMcuSplitFileDlg(const vesk::RangeRequest&, HeaderInfo&, CWnd* parent = nullptr);

    bool OnInitDialog() override;
    void OnOK() override;
    void OnButtonSplit();  // cuts the file into units and lists them
    void OnRadioWholeFile();
    void OnRadioUnit();
    const vesk::MessageMap* GetMessageMap() const override;

    CButton m_WholeFileButton;
    CEdit m_UnitEdit;
    CButton m_SplitButton;
    CListBox m_IntervalList;
    CString m_UnitText;            // unit size in KB, as the user typed it
    std::int32_t m_SplitMode = 0;  // 0 the whole file, 1 a unit
    CString m_FileName;
    std::int32_t m_SizeKB;                // of the whole range, rounded up
    std::int64_t m_FileStart, m_FileEnd;  // the whole range, file positions
    std::int64_t m_WHCPLength;            // as the log's tag says, 0 without one
    std::int64_t m_OutStart, m_OutEnd;    // the range to be read
    HeaderInfo* m_Info;                   // gets the chosen unit's first frame number and count
    std::FILE* m_Stream;
    std::vector<SplitInterval> m_Intervals;  // one per line of the list

protected:
    void DoDataExchange(CDataExchange*) override;

private:
    void EnableSplitting(bool enable);
    void ClearUnits();
    void List(const std::vector<vesk::OfferedUnit>& units);
};
