#pragma once

#include "platform/CObject.h"

class CDocument;
class CFrameWnd;
class CMDIChildWnd;

// Makes frames of one kind: document, frame and view classes that belong together, and the id of
// their resources. Borrows the run-time classes.
class CMultiDocTemplate : public CObject {
public:
    CMultiDocTemplate(unsigned resourceId, const CRuntimeClass* document,
                      const CRuntimeClass* frame, const CRuntimeClass* view);

    // A document of the template's class, which goes with its last view. Null if it is none.
    CDocument* CreateNewDocument();

    // A frame with its view on a document, within the main window, which owns it; not yet shown.
    // Null without a main window, or if a window refuses to be made.
    CFrameWnd* CreateNewFrame(CDocument*, CFrameWnd* other);

    // Runs the view's OnInitialUpdate, and shows and activates the frame.
    void InitialUpdateFrame(CFrameWnd*, CDocument*, bool visible = true);

    // A new document in a new frame, shown; null, and nothing left, if either fails.
    CDocument* OpenNewDocument();

private:
    unsigned m_ResourceId;
    const CRuntimeClass* m_DocumentClass;
    const CRuntimeClass* m_FrameClass;
    const CRuntimeClass* m_ViewClass;
};
