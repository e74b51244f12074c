#include "platform/CDocument.h"

#include <algorithm>

#include "platform/CView.h"

CDocument::~CDocument() {
    for (CView* view : m_Views) view->m_Document = nullptr;
}

void CDocument::AddView(CView* view) {
    if (view->m_Document == this) return;
    if (view->m_Document) view->m_Document->RemoveView(view);
    view->m_Document = this;
    m_Views.push_back(view);
}

void CDocument::RemoveView(CView* view) {
    const auto found = std::find(m_Views.begin(), m_Views.end(), view);
    if (found == m_Views.end()) return;
    m_Views.erase(found);
    view->m_Document = nullptr;
    if (m_Views.empty() && m_AutoDelete) delete this;
}
