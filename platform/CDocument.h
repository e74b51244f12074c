#pragma once

#include <vector>

#include "platform/CCmdTarget.h"
#include "platform/CString.h"

class CView;

// What views show. A document that was made by a template deletes itself when its last view goes.
class CDocument : public CCmdTarget {
public:
    ~CDocument() override;

    void AddView(CView*);
    void RemoveView(CView*);
    const std::vector<CView*>& Views() const { return m_Views; }

    const CString& GetTitle() const { return m_Title; }
    void SetTitle(const CString& title) { m_Title = title; }

    bool m_AutoDelete = false;

private:
    CString m_Title;
    std::vector<CView*> m_Views;
};
