#include "platform/CMultiDocTemplate.h"

#include <memory>

#include "platform/CDocument.h"
#include "platform/CMDIChildWnd.h"
#include "platform/CMDIFrameWnd.h"
#include "platform/CView.h"
#include "platform/UserInterface.h"

namespace {

// An object of a run-time class, or null if the class makes none of the kind asked for.
template <class T>
std::unique_ptr<T> Make(const CRuntimeClass* runtimeClass) {
    std::unique_ptr<CObject> object(runtimeClass ? runtimeClass->CreateObject() : nullptr);
    T* const made = dynamic_cast<T*>(object.get());
    if (made) object.release();
    return std::unique_ptr<T>(made);
}

// Keeps a document while a view of it is being made: should that fail, the document is still its
// caller's.
class DocumentGuard {
public:
    explicit DocumentGuard(CDocument* document)
        : m_Document(document), m_AutoDelete(document && document->m_AutoDelete) {
        if (m_Document) m_Document->m_AutoDelete = false;
    }
    ~DocumentGuard() {
        if (m_Document) m_Document->m_AutoDelete = m_AutoDelete;
    }
    DocumentGuard(const DocumentGuard&) = delete;
    DocumentGuard& operator=(const DocumentGuard&) = delete;

private:
    CDocument* m_Document;
    bool m_AutoDelete;
};

}  // namespace

CMultiDocTemplate::CMultiDocTemplate(unsigned resourceId, const CRuntimeClass* document,
                                     const CRuntimeClass* frame, const CRuntimeClass* view)
    : m_ResourceId(resourceId), m_DocumentClass(document), m_FrameClass(frame), m_ViewClass(view) {}

CDocument* CMultiDocTemplate::CreateNewDocument() {
    std::unique_ptr<CDocument> document = Make<CDocument>(m_DocumentClass);
    if (document) document->m_AutoDelete = true;
    return document.release();
}

CFrameWnd* CMultiDocTemplate::CreateNewFrame(CDocument* document, CFrameWnd* /*other*/) {
    CMDIFrameWnd* const mainFrame = AfxGetMainWnd();
    if (!mainFrame) return nullptr;
    const DocumentGuard guard(document);
    std::unique_ptr<CMDIChildWnd> made = Make<CMDIChildWnd>(m_FrameClass);
    std::unique_ptr<CView> view = Make<CView>(m_ViewClass);
    if (!made || !view) return nullptr;

    CMDIChildWnd* const frame = made.get();
    frame->m_ResourceId = m_ResourceId;
    if (document) document->AddView(view.get());
    frame->SetView(std::move(view));
    mainFrame->Add(std::move(made));
    if (frame->OnCreate() == -1 || frame->GetActiveView()->OnCreate() == -1) {
        mainFrame->Release(*frame);
        return nullptr;
    }
    const CRect place = mainFrame->NextChildRect();
    frame->MoveWindow(place.left, place.top, place.Width(), place.Height());
    frame->SetPeer(vesk::CurrentUserInterface().MakePeer(*frame));
    return frame;
}

void CMultiDocTemplate::InitialUpdateFrame(CFrameWnd* frame, CDocument*, bool visible) {
    if (!frame) return;
    if (CView* view = frame->GetActiveView()) view->OnInitialUpdate();
    frame->OnUpdateFrameTitle(true);
    if (!visible) return;
    frame->ShowWindow(SW_SHOW);
    frame->BringWindowToTop();
}

CDocument* CMultiDocTemplate::OpenNewDocument() {
    std::unique_ptr<CDocument> made(CreateNewDocument());
    CFrameWnd* const frame = made ? CreateNewFrame(made.get(), nullptr) : nullptr;
    if (!frame) return nullptr;
    CDocument* const document = made.release();  // its view keeps it from here on
    InitialUpdateFrame(frame, document);
    return document;
}
