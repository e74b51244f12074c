#pragma once

#include <string_view>
#include <vector>

#include "host/ReloadableView.h"
#include "host/SummaryContent.h"
#include "host/SummaryLayout.h"
#include "platform/CScrollBar.h"
#include "platform/CView.h"
#include "platform/Color.h"

namespace vesk {

// What is in the shared job list, on one page that scrolls: facts about the log, and all its names
// in the document's colours. A document without colours shows them black.
class SummaryView : public CView, public ReloadableView {
public:
    // Reads the shared job list anew and goes back to the page's top.
    void ReloadLog() override;

    int OnCreate() override;
    void OnInitialUpdate() override { ReloadLog(); }
    void OnSize(unsigned type, int cx, int cy) override;
    void OnDraw(CDC*) override;
    bool OnEraseBkgnd(CDC*) override { return true; }
    void OnVScroll(unsigned code, unsigned position, CScrollBar*) override;
    void OnKeyDown(unsigned key, unsigned repeat, unsigned flags) override;

    const SummaryLayout& Layout() const { return m_Layout; }

    CScrollBar m_ScrollBar;  // in pixels of the page

private:
    void Arrange();
    void PlaceScrollBar(const CRect& client);
    void Scroll(unsigned code);
    void ScrollTo(int position);
    void DrawPage(CDC&, const CRect& clip) const;
    void DrawGroup(CDC&, const CRect& visible, const SummaryGroup&, const SummaryBlock&) const;
    void DrawEntry(CDC&, const SummaryGroup&, const SummaryBlock&, int entry) const;
    COLORREF ColorOf(SummaryColors, const SummaryEntry&) const;

    std::vector<SummaryGroup> m_Groups;
    SummaryLayout m_Layout;
};

}  // namespace vesk
