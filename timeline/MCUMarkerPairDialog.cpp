#include "timeline/MCUMarkerPairDialog.h"

#include "host/McuMarkerMap.h"
#include "platform/CDataExchange.h"

namespace {

constexpr unsigned kTemplate = 204;
constexpr int kStart = 1015;
constexpr int kEnd = 1016;
constexpr int kIncludeIdle = 1169;

// An end of the log, then all markers; each entry carries its key.
void Fill(CComboBox& combo, const char* endOfLog, const McuMarkerMap* markers, int chosen) {
    combo.SetItemData(combo.AddString(endOfLog), -1);
    combo.SetCurSel(0);
    if (!markers) return;
    for (const auto& [key, time] : *markers) {
        CString text;
        text.Format("Marker %d", key);
        const int item = combo.AddString(text);
        combo.SetItemData(item, key);
        if (key == chosen) combo.SetCurSel(item);
    }
}

std::int32_t ChosenKey(const CComboBox& combo) {
    return static_cast<std::int32_t>(combo.GetItemData(combo.GetCurSel()));
}

}  // namespace

MCUMarkerPairDialog::MCUMarkerPairDialog(const McuMarkerMap* markers, std::int32_t includeIdle,
                                         std::int32_t startKey, std::int32_t endKey, CWnd* parent)
    : CDialog(kTemplate, parent),
      m_InitStartKey(startKey),
      m_InitEndKey(endKey),
      m_IncludeIdle(includeIdle),
      m_pMarkers(markers) {}

void MCUMarkerPairDialog::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, kEnd, m_EndCombo);
    DDX_Control(exchange, kStart, m_StartCombo);
    DDX_Check(exchange, kIncludeIdle, m_IncludeIdle);
}

bool MCUMarkerPairDialog::OnInitDialog() {
    const bool focus = CDialog::OnInitDialog();
    SetWindowText("Specify Time Range");
    Fill(m_StartCombo, "Start", m_pMarkers, m_InitStartKey);
    Fill(m_EndCombo, "End", m_pMarkers, m_InitEndKey);
    return focus;
}

void MCUMarkerPairDialog::OnOK() {
    if (!UpdateData()) return;
    m_StartKey = ChosenKey(m_StartCombo);
    m_EndKey = ChosenKey(m_EndCombo);
    CDialog::OnOK();
}
