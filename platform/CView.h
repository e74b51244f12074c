#pragma once

#include "platform/CWnd.h"

class CDC;
class CDocument;

// A window that shows a document. Owned by its frame.
class CView : public CWnd {
public:
    ~CView() override;

    CDocument* GetDocument() const { return m_Document; }

    // Runs once, when the view stands in its frame and belongs to its document.
    virtual void OnInitialUpdate() {}
    // Paints the part of the view that lies within the context's clip box.
    virtual void OnDraw(CDC*) = 0;
    // True: the background needs no erasing.
    virtual bool OnEraseBkgnd(CDC*) { return false; }

    // Commands go to the view, then to its document.
    bool OnCmdMsg(unsigned id, int code, CCmdUI*) override;

    // Paints the invalid part of the view into a context, whose window origin is the client area's
    // top left: background, then OnDraw.
    void Paint(CDC&);

private:
    friend class CDocument;
    CDocument* m_Document = nullptr;
};
