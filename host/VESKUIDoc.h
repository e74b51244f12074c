#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/McuColorMap.h"
#include "host/McuMarkerMap.h"
#include "platform/CDocument.h"

// What all views of a log share: colours, markers, and part of the dialogs' memory. One exists at
// a time. It never goes to a file.
class VESKUIDoc : public CDocument {
public:
    // Becomes the one document, and colours the names of the log just read.
    VESKUIDoc();
    ~VESKUIDoc() override;

    // Gives every name of the shared job list a colour, and drops names that it does not hold.
    // Colours already chosen stay. Without a list nothing changes.
    void InitVESKColor();

    McuColorMap m_JobColor;  // tasks and interrupts, by vesk::ColorKey of the name
    McuMarkerMap m_Markers;
    McuColorMap m_CustomColor;  // functions, by vesk::ColorKey of the name
    McuColorMap m_ExtraColor;   // extra values, by index

    std::int32_t m_UsageType = 0;
    std::vector<std::string> m_UsageTasks;
    std::int32_t m_UsageDuration = 5000;
    std::int32_t m_UsageUnit = 2;

    std::int32_t m_AreaType = 0;
    std::vector<std::string> m_AreaTasks;
    std::int32_t m_AreaDuration = 5000;
    std::int32_t m_AreaUnit = 2;

    std::int32_t m_TSTModes = 7;
    std::vector<std::string> m_TSTInfos;
    std::int32_t m_TSTDuration = 5000;
    std::int32_t m_TSTUnit = 2;

    std::int32_t m_OnlySelected = 0;
};

// Null while there is no document.
extern VESKUIDoc* global_vesk_doc_ptr;
