#pragma once

#include <cstdint>

#include "platform/CComboBox.h"
#include "platform/CDialog.h"

class McuMarkerMap;

// Asks for a time range between two markers, or from the begin or to the end of the log. The two
// may stand in any order.
class MCUMarkerPairDialog : public CDialog {
public:
    // The markers are borrowed, null for none. Keys as below; those without a marker preselect
    // begin and end of the log.
    MCUMarkerPairDialog(const McuMarkerMap* markers, std::int32_t includeIdle,
                        std::int32_t startKey, std::int32_t endKey, CWnd* parent = nullptr);

    bool OnInitDialog() override;
    void OnOK() override;

    std::int32_t m_StartKey = -1;  // of the marker chosen; -1: begin of the log
    std::int32_t m_EndKey = -1;    // the same; -1: end of the log
    std::int32_t m_InitStartKey;
    std::int32_t m_InitEndKey;
    CComboBox m_EndCombo;
    CComboBox m_StartCombo;
    std::int32_t m_IncludeIdle;  // whether idle time counts in statistics: 0 or 1
    const McuMarkerMap* m_pMarkers;

protected:
    void DoDataExchange(CDataExchange*) override;
};
