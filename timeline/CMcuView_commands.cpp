#include "log/McuJobList.h"
#include "platform/CCmdUI.h"
#include "platform/CMenu.h"
#include "timeline/CMcuView.h"

namespace {

constexpr unsigned kMenu = 203;

// The commands stop where the ratio has passed these, so it can come to twice or half of them.
constexpr float kLastRatioToDouble = 100.0f;
constexpr double kLastRatioToHalve = 0.00001;

// Ten times this no longer fits.
constexpr std::int32_t kLeastBaseTooLarge = 214748365;

void Raise(std::int32_t& base) {
    if (base < kLeastBaseTooLarge) base *= 10;
}
void Lower(std::int32_t& base) {
    if (base >= 10) base /= 10;
}

bool CanDouble(float ratio) {
    return ratio <= kLastRatioToDouble;
}
bool CanHalve(float ratio) {
    return ratio >= kLastRatioToHalve;
}

}  // namespace

const vesk::MessageMap* CMcuView::GetMessageMap() const {
    using vesk::Command;
    using V = CMcuView;
    static constexpr vesk::MessageEntry kEntries[] = {
        Command<&V::OnEditZoomIn, &V::OnUpdateEditZoomIn>(2020),
        Command<&V::OnEditZoomOut, &V::OnUpdateEditZoomOut>(32771),
        Command<&V::OnMcuOutlookPure, &V::OnUpdateMcuOutlookPure>(40131),
        Command<&V::OnMcuOutlookRelative, &V::OnUpdateMcuOutlookRelative>(40132),
        Command<&V::OnMcuOutlookContextSwitch, &V::OnUpdateMcuOutlookContextSwitch>(40308),
        Command<&V::OnMcuTimeunitClock, &V::OnUpdateMcuTimeunitClock>(40135),
        Command<&V::OnMcuTimeunitTime, &V::OnUpdateMcuTimeunitTime>(40136),
        Command<&V::OnMcuTimeunitCount, &V::OnUpdateMcuTimeunitCount>(40140),
        Command<&V::OnMcuBasetimeUp, &V::OnUpdateMcuBasetimeUp>(40137),
        Command<&V::OnMcuBasetimeDown, &V::OnUpdateMcuBasetimeDown>(40138),
        Command<&V::OnMcuDisableFrame, &V::OnUpdateMcuDisableFrame>(40186),
        Command<&V::OnMcuDisableDottedLine, &V::OnUpdateMcuDisableDottedLine>(40214),
        Command<&V::OnMcuDisableCustomLogging, &V::OnUpdateMcuDisableCustomLogging>(40196),
        Command<&V::OnEditGoto>(40102),
        Command<&V::OnEditFind>(57636),
        Command<&V::OnVkFind>(40022),
        Command<&V::OnVkFindUp>(40056),
        Command<&V::OnEditSetMarker, &V::OnUpdateEditSetMarker>(40142),
        Command<&V::OnEditExpand>(40143),
        Command<&V::OnViewSavetext>(40020),
        Command<&V::OnViewSavetext_ExtraInfo>(32798),
        Command<&V::OnViewSavetext_CustomLogging>(40307),
        Command<&V::OnMcuExportMarker>(40202),
        Command<&V::OnMcuImportMarker>(40203),
        Command<&V::OnMcuFilter>(40139),
    };
    static const vesk::MessageMap kMap{CView::GetMessageMap(), kEntries};
    return &kMap;
}

void CMcuView::OnContextMenu(CWnd*, CPoint screen) {
    CMenu menu;
    CMenu* const popup = menu.LoadMenu(kMenu) ? menu.GetSubMenu(0) : nullptr;
    if (popup) popup->TrackPopupMenu(TPM_LEFTALIGN, screen.x, screen.y, this);
}

// The menu opens outside of any frame, which would do this.
void CMcuView::OnInitMenuPopup(CMenu* menu, unsigned, bool) {
    if (menu) menu->UpdateItems(*this);
}

// --- Zoom ----------------------------------------------------------------------------------------

// Keys reach the handlers of disabled commands too.
void CMcuView::OnEditZoomIn() {
    if (!CanDouble(m_ZoomRatio)) return;
    const vesk::ShownSpan before = Shown();
    m_ZoomRatio *= 2.0f;
    Zoom();
    Note(before, vesk::SpanChange::kJump);
}
void CMcuView::OnUpdateEditZoomIn(CCmdUI* ui) {
    ui->Enable(CanDouble(m_ZoomRatio));
}

void CMcuView::OnEditZoomOut() {
    if (!CanHalve(m_ZoomRatio)) return;
    const vesk::ShownSpan before = Shown();
    m_ZoomRatio *= 0.5f;
    Zoom();
    Note(before, vesk::SpanChange::kJump);
}
void CMcuView::OnUpdateEditZoomOut(CCmdUI* ui) {
    ui->Enable(CanHalve(m_ZoomRatio));
}

// --- Outlook -------------------------------------------------------------------------------------

void CMcuView::SetOutlook(OUTLOOKTYPE outlook) {
    if (outlook == m_Outlook) return;
    m_Outlook = outlook;
    InvalidateView();
}

void CMcuView::OnMcuOutlookPure() {
    SetOutlook(OUTLOOK_PURE);
}
void CMcuView::OnUpdateMcuOutlookPure(CCmdUI* ui) {
    ui->SetCheck(m_Outlook == OUTLOOK_PURE);
}

void CMcuView::OnMcuOutlookRelative() {
    SetOutlook(OUTLOOK_RELATIVE);
}
void CMcuView::OnUpdateMcuOutlookRelative(CCmdUI* ui) {
    ui->SetCheck(m_Outlook == OUTLOOK_RELATIVE);
}

void CMcuView::OnMcuOutlookContextSwitch() {
    Toggle(m_ContextSwitch);
}
void CMcuView::OnUpdateMcuOutlookContextSwitch(CCmdUI* ui) {
    ui->SetCheck(m_ContextSwitch);
}

// --- Time unit -----------------------------------------------------------------------------------

void CMcuView::SetTimeunit(TIMEUNITTYPE unit) {
    if (unit == m_TimeUnit) return;
    m_TimeUnit = unit;
    InvalidateView();
}

void CMcuView::OnMcuTimeunitClock() {
    SetTimeunit(TIMEUNIT_CLOCK);
}
void CMcuView::OnUpdateMcuTimeunitClock(CCmdUI* ui) {
    ui->SetCheck(m_TimeUnit == TIMEUNIT_CLOCK);
}

void CMcuView::OnMcuTimeunitTime() {
    SetTimeunit(TIMEUNIT_TIME);
}
void CMcuView::OnUpdateMcuTimeunitTime(CCmdUI* ui) {
    ui->SetCheck(m_TimeUnit == TIMEUNIT_TIME);
}

void CMcuView::OnMcuTimeunitCount() {
    SetTimeunit(TIMEUNIT_COUNT);
}
void CMcuView::OnUpdateMcuTimeunitCount(CCmdUI* ui) {
    ui->SetCheck(m_TimeUnit == TIMEUNIT_COUNT);
    ui->SetText(Jobs().m_IsTQCNT ? "TQCNT" : "USCNT");
}

// --- Base time -----------------------------------------------------------------------------------

// The clock's base divides labels, the time's base multiplies them.
void CMcuView::OnMcuBasetimeUp() {
    if (m_TimeUnit == TIMEUNIT_CLOCK) Raise(m_ClockBase);
    if (m_TimeUnit == TIMEUNIT_TIME) Lower(m_TimeBase);
    InvalidateView();
}
void CMcuView::OnUpdateMcuBasetimeUp(CCmdUI* ui) {
    const bool clockCan = m_TimeUnit == TIMEUNIT_CLOCK && m_ClockBase < kLeastBaseTooLarge;
    ui->Enable(clockCan || m_TimeUnit == TIMEUNIT_TIME);
}

void CMcuView::OnMcuBasetimeDown() {
    if (m_TimeUnit == TIMEUNIT_CLOCK) Lower(m_ClockBase);
    if (m_TimeUnit == TIMEUNIT_TIME) Raise(m_TimeBase);
    InvalidateView();
}
void CMcuView::OnUpdateMcuBasetimeDown(CCmdUI* ui) {
    const bool clockCan = m_TimeUnit == TIMEUNIT_CLOCK && m_ClockBase >= 10;
    ui->Enable(clockCan || m_TimeUnit == TIMEUNIT_TIME);
}

// --- Switches ------------------------------------------------------------------------------------

void CMcuView::Toggle(bool& setting) {
    setting = !setting;
    InvalidateView();
}

void CMcuView::OnMcuDisableFrame() {
    Toggle(m_ShowFrameNo);
}
void CMcuView::OnUpdateMcuDisableFrame(CCmdUI* ui) {
    ui->SetCheck(!m_ShowFrameNo);
}

void CMcuView::OnMcuDisableDottedLine() {
    Toggle(m_ShowDottedLine);
}
void CMcuView::OnUpdateMcuDisableDottedLine(CCmdUI* ui) {
    ui->SetCheck(!m_ShowDottedLine);
}

void CMcuView::OnMcuDisableCustomLogging() {
    m_ShowCustomLogging = !m_ShowCustomLogging;
    SetVScrollRange();
    ShowLowestLanes();
    InvalidateView();
}
void CMcuView::OnUpdateMcuDisableCustomLogging(CCmdUI* ui) {
    ui->SetCheck(!m_ShowCustomLogging);
}
