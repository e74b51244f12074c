#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "platform/CWnd.h"
#include "platform/Resources.h"

class CDataExchange;

// A dialog made from a template. Members that are bound to controls by DDX_Control are the
// controls themselves, and keep their state when it is over; all others are made for it, and are
// gone afterwards. It can be run again, and begins anew then.
class CDialog : public CWnd {
public:
    explicit CDialog(unsigned templateId, CWnd* parent = nullptr);
    ~CDialog() override;

    // Makes the controls, runs OnInitDialog, and lets the user answer; IDOK, IDCANCEL or what
    // EndDialog was given. -1 if there is no such template.
    int DoModal();
    void EndDialog(int result);

    CWnd* GetDlgItem(int id) const;  // null if the dialog has no such control, or does not run

    // Exchanges values between controls and members by DoDataExchange: into the members if save.
    // False: a value was refused, and the user has been told. Controls send no notifications.
    bool UpdateData(bool save = true);

    // --- For whoever shows the dialog ----------------------------------------------------------

    struct Control {
        const vesk::ControlTemplate* m_Template;
        CWnd* m_Window;
    };
    const std::vector<Control>& Controls() const { return m_Controls; }
    bool HasEnded() const { return m_Ended; }
    // The dialog is over without an answer: the user closed it, or nobody can give one.
    void Close() { OnCancel(); }
    // Return presses the default button, or that of IDOK; Escape closes. False for other keys.
    bool OnKey(unsigned key);
    CWnd* Owner() const { return m_Owner; }

    // A control's notification, sent by the control. Quiet while the dialog is being made, and
    // when it has ended.
    void OnNotify(int id, int code) override;

    // True: the focus goes to the first control that takes it.
    virtual bool OnInitDialog();
    virtual void OnOK();      // takes the values of the controls and ends with IDOK
    virtual void OnCancel();  // ends with IDCANCEL

    // By the message map; the buttons IDOK and IDCANCEL that stand not there run OnOK and OnCancel.
    bool OnCmdMsg(unsigned id, int code, CCmdUI*) override;

protected:
    // Calls the DDX_... and DDV_... functions for all controls and members.
    virtual void DoDataExchange(CDataExchange*) {}

private:
    friend void DDX_Control(CDataExchange*, int, CWnd&);
    void MakeControls(const vesk::DialogTemplate&);
    CWnd& WindowFor(const vesk::ControlTemplate&);
    void ReleaseControls();
    void FocusFirst();
    void PressDefault();

    unsigned m_TemplateId;
    CWnd* m_Owner;
    std::vector<Control> m_Controls;
    std::vector<std::unique_ptr<CWnd>> m_Owned;
    std::vector<std::pair<int, CWnd*>> m_Bound;  // members that wait for their controls
    bool m_Quiet = true;
    bool m_Ended = false;
    int m_Result = 0;
};
