#pragma once

#include <array>
#include <list>
#include <string>
#include <vector>

#include "host/VESKUIDoc.h"
#include "platform/CDialog.h"
#include "platform/CListBox.h"
#include "timeline/CChkListBox.h"

// Chooses what the timeline shows, and in which colours. It works on copies: what is chosen stands
// in its members after OK, and colours go to the maps then. Maps and document are borrowed and may
// be null; entries without a map have no colour. Lists and maps have to belong to the shared job
// list.
class CMcuFilterDlg : public CDialog {
public:
    // The first list holds the names of tasks and interrupts, in the order of the list box.
    CMcuFilterDlg(std::list<std::string> tasks, std::list<std::string> functions,
                  std::list<std::string> labels, std::list<std::string> hardware,
                  std::vector<std::string> relativeList, std::vector<bool> extraShown,
                  std::vector<bool> customShown, std::vector<bool> sourceMarkShown,
                  McuColorMap* jobColor, McuColorMap* customColor, McuColorMap* extraColor,
                  VESKUIDoc* document, CWnd* parent = nullptr);

    bool OnInitDialog() override;  // false without a document
    void OnOK() override;
    void OnButtonExport();
    void OnButtonImport();
    const vesk::MessageMap* GetMessageMap() const override;

    std::vector<std::string>
        m_RelativeList;  // tasks and interrupts with a lane, the last one first
    std::vector<bool> m_ExtraShown;
    std::vector<bool> m_CustomShown;
    std::vector<bool> m_SourceMarkShown;

protected:
    void DoDataExchange(CDataExchange*) override;

private:
    using Section = vesk::FilterFile::Section;

    template <Section section>
    void OnAllOn() {
        SetAll(section, 1);
    }
    template <Section section>
    void OnAllOff() {
        SetAll(section, 0);
    }
    void SetAll(Section, std::int32_t checked);
    CChkListBox& List(Section section) { return m_Lists[section]; }
    void AddByName(Section, const std::string& name, bool checked, const McuColorMap*);
    void AddByPosition(Section, const std::string& name, const std::vector<bool>& shown,
                       const McuColorMap*);
    void FillLists();
    void TakeTasks();
    void TakeFlags(Section, std::vector<bool>& shown, McuColorMap*);

    std::array<CChkListBox, vesk::FilterFile::kSections> m_Lists;
    CListBox m_HardwareList;
    std::list<std::string> m_Tasks;
    std::list<std::string> m_Functions;
    std::list<std::string> m_Labels;
    std::list<std::string> m_Hardware;
    McuColorMap* m_JobColor;
    McuColorMap* m_CustomColor;
    McuColorMap* m_ExtraColor;
    VESKUIDoc* m_Document;
};
