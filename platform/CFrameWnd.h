#pragma once

#include <memory>

#include "platform/CWnd.h"

class CDocument;
class CView;

// A window around a view.
class CFrameWnd : public CWnd {
public:
    CFrameWnd();
    ~CFrameWnd() override;

    CView* GetActiveView() const { return m_View.get(); }
    CDocument* GetActiveDocument() const;

    // Brings the frame's title up to date with the document's, if told to add it.
    virtual void OnUpdateFrameTitle(bool addToTitle);

    // The view fills the client area.
    void OnSize(unsigned type, int cx, int cy) override;
    // The view gets the focus.
    void OnSetFocus(CWnd* previous) override;
    // Commands go to the active view first.
    bool OnCmdMsg(unsigned id, int code, CCmdUI*) override;

    // Puts the view into the frame, which owns it from here on.
    void SetView(std::unique_ptr<CView>);

private:
    std::unique_ptr<CView> m_View;
};
