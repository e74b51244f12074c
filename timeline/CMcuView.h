#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/ReloadableView.h"
#include "log/McuJob.h"
#include "platform/CScrollBar.h"
#include "platform/CToolTipCtrl.h"
#include "platform/CView.h"
#include "timeline/CMcuFindDlg.h"
#include "timeline/CMcuGotoDlg.h"
#include "timeline/ScrollMapping.h"
#include "timeline/TimeScale.h"
#include "timeline/TimelineTypes.h"
#include "timeline/ViewHistory.h"

class McuJobList;

namespace vesk {
class JobStripIndex;
class TimelineIndex;
}  // namespace vesk

// The timeline: shows one span of the log of the shared job list on a canvas of fixed margins.
// Times are QBit, geometry is in client pixels. Without a job list it shows an empty log.
class CMcuView : public CView, public vesk::ReloadableView {
public:
    CMcuView();
    ~CMcuView() override;

    const vesk::MessageMap* GetMessageMap() const override;

    // The shared list, or an empty one.
    static const McuJobList& Jobs();

    // --- Life ----------------------------------------------------------------------------------

    int OnCreate() override;
    // Takes the log that the job list holds now: the view goes to its begin, without markers.
    void Init();
    void InitCanvas();  // the geometry, from the client rectangle
    void Reload();      // Init, and the whole client area is painted anew
    void ReloadLog() override { Reload(); }

    // --- Lanes ---------------------------------------------------------------------------------

    void InitRelativeList();
    // Names of interrupts by number, tasks, functions and marks in string order.
    void GetJobNameList(std::list<std::string>& irqs, std::list<std::string>& tasks,
                        std::list<std::string>& functions, std::list<std::string>& marks) const;
    // Moves the names, the last one first, behind those of m_RelativeList.
    void InsertRelativeList(std::list<std::string>& names);

    // --- Visible span --------------------------------------------------------------------------

    void Cal_VisibleIndex();
    void SetHScrollRange();
    void SetVScrollRange();
    void Cal_HScrollPos();   // keeps the time offset within the log; the thumb follows it
    void Cal_VScrollPos();   // the same for the lane offset
    void Cal_HTimeOffset();  // the time offset follows the thumb
    void Cal_VTimeOffset();
    void InvalidateView();  // all but the scroll bars
    void Zoom();            // m_ZoomRatio around the cursor, or the middle of the view
    void SetOutlook(OUTLOOKTYPE);
    void SetTimeunit(TIMEUNITTYPE);

    vesk::TimeScale Scale() const { return {m_TimeOffset, m_PixelsPerQbit, m_CanvasLeft}; }
    // Both edges count.
    bool IsInView(std::uint64_t time) const {
        return time >= m_TimeOffset && time - m_TimeOffset <= m_VisibleQbits;
    }
    int CanvasRight() const { return m_CanvasLeft + m_CanvasWidth; }

    // --- Input ---------------------------------------------------------------------------------

    void OnSize(unsigned type, int cx, int cy) override;
    void OnHScroll(unsigned code, unsigned pos, CScrollBar*) override;
    void OnVScroll(unsigned code, unsigned pos, CScrollBar*) override;
    void OnContextMenu(CWnd*, CPoint screen) override;
    void OnInitMenuPopup(CMenu*, unsigned index, bool system) override;
    bool OnEraseBkgnd(CDC*) override { return true; }
    void OnMouseWheel(unsigned flags, int delta, CPoint) override;
    void OnMButtonDown(unsigned flags, CPoint) override;
    void OnMButtonUp(unsigned flags, CPoint) override;
    void OnLButtonDown(unsigned flags, CPoint) override;
    void OnLButtonUp(unsigned flags, CPoint) override;
    void OnMouseMove(unsigned flags, CPoint) override;
    void OnKeyDown(unsigned key, unsigned repeat, unsigned modifiers) override;
    vesk::PointerShape PointerAt(CPoint) const override;

    // --- Ways through the log beside the commands ------------------------------------------------

    // A key that the view takes itself, with the MK_... it goes with among those that matter for
    // it, and what it does.
    struct OwnKey {
        unsigned m_Key, m_Modifiers, m_Matters;
        void (*m_Do)(CMcuView&);
        const char* m_Does;
    };
    static std::span<const OwnKey> OwnKeys();

    // These keep the view within the log and the zoom ratio within the limits of the zoom
    // commands; positive numbers go to later times and upper lanes.
    //
    // Multiplies the zoom ratio; the time under x stays there, as far as the limits let it.
    void ZoomAt(int x, double factor, vesk::SpanChange = vesk::SpanChange::kWheelZoom);
    void ScrollTime(int pixels, vesk::SpanChange = vesk::SpanChange::kWheel);
    void ScrollLanes(int lanes);
    // Moves what is shown along with a pointer that has gone so many pixels right and down.
    void PanBy(int dx, int dy);
    // All of the log, at a zoom ratio that may lie below the limits.
    void ShowWholeLog();
    // Through the spans shown before.
    void Back();
    void Forward();
    const vesk::ViewHistory& History() const { return m_History; }

    // --- Commands and their appearance ---------------------------------------------------------

    void OnEditZoomIn();
    void OnUpdateEditZoomIn(CCmdUI*);
    void OnEditZoomOut();
    void OnUpdateEditZoomOut(CCmdUI*);
    void OnMcuOutlookPure();
    void OnUpdateMcuOutlookPure(CCmdUI*);
    void OnMcuOutlookRelative();
    void OnUpdateMcuOutlookRelative(CCmdUI*);
    void OnMcuOutlookContextSwitch();
    void OnUpdateMcuOutlookContextSwitch(CCmdUI*);
    void OnMcuTimeunitClock();
    void OnUpdateMcuTimeunitClock(CCmdUI*);
    void OnMcuTimeunitTime();
    void OnUpdateMcuTimeunitTime(CCmdUI*);
    void OnMcuTimeunitCount();
    void OnUpdateMcuTimeunitCount(CCmdUI*);
    void OnMcuBasetimeUp();
    void OnUpdateMcuBasetimeUp(CCmdUI*);
    void OnMcuBasetimeDown();
    void OnUpdateMcuBasetimeDown(CCmdUI*);
    void OnMcuDisableFrame();
    void OnUpdateMcuDisableFrame(CCmdUI*);
    void OnMcuDisableDottedLine();
    void OnUpdateMcuDisableDottedLine(CCmdUI*);
    void OnMcuDisableCustomLogging();
    void OnUpdateMcuDisableCustomLogging(CCmdUI*);

    // --- Pointing ------------------------------------------------------------------------------

    // What lies under a client point, in a band of the pure outlook that is h high and ends at y0,
    // on a canvas that begins at left: the first of the visible records, and only on a hit. Cost
    // does not grow with the number of records, but for the length of a text.
    bool HitTest(CPoint, int h, int left, int y0, McuJob& hit, int& index);
    bool HitTest_CustomJob(CPoint, int h, int left, int y0, McuJob& hit, std::uint64_t& end);
    // The text of all calls there, with room for so many lines; empty and 0 without any.
    bool HitTest_CustomJobCS(CPoint, int h, int left, int y0, CString& text, int& lines);
    bool HitTest_SourceMark(CPoint, int h, int left, int y0, McuJob& hit);

    // Makes the tip once; false if it cannot be made, and then there are no tips.
    bool InitToolTip();
    // Each opens the tip of what lies under the point, or leaves things as they are.
    void DisplayToolTip(CPoint, int h, int left, int y0);
    void DisplayCustomJobToolTip(CPoint, int h, int left, int y0);
    void DisplaySourceMarkToolTip(CPoint, int h, int left, int y0);
    void DisplayToolTip(CPoint, CString& text);  // opens or moves it, with a finished text
    void HideToolTip();

    // --- Going, finding and markers ------------------------------------------------------------

    // Places the cursor at a time, limited to the log. The view moves only if that is out of sight,
    // and then has the cursor in its middle.
    void GoTo(std::uint64_t time);
    // The job where the frame number is reached, walking from the first visible job; else the last
    // one below it.
    void GoTo_FrameNo(std::int32_t frame);
    // The next record of a name behind the cursor, or with up before it; on from the other end of
    // the log if there is none. An empty name stands for every name. Case counts for
    // GoTo_FunctionCS only. Without a find nothing moves, and the status line says so.
    void GoTo_Task(CString name, bool up);
    void GoTo_Function(CString name, bool up);
    void GoTo_FunctionCS(CString name, bool up);
    void GoTo_SourceMark(CString name, bool up);

    void OnEditGoto();
    void OnEditFind();
    void OnVkFind();
    void OnVkFindUp();
    void OnEditSetMarker();
    void OnUpdateEditSetMarker(CCmdUI*);
    // Shows what lies between two markers, or an end of the log, on the whole canvas.
    void OnEditExpand();
    // Asks for the two; false if the user gave it up.
    bool OnEditExpandOpenDialog(std::uint64_t& start, std::uint64_t& end);

    // --- Filter --------------------------------------------------------------------------------

    // Lets the user choose the lanes, curves and colours; the lanes begin at the bottom again.
    void OnMcuFilter();

    // --- Exports -------------------------------------------------------------------------------

    // Each asks for the file. The whole log goes out, whatever the view shows.
    void OnViewSavetext();                // jobs and calls of functions
    void OnViewSavetext_ExtraInfo();      // samples of the extra values
    void OnViewSavetext_CustomLogging();  // calls with their context switches
    // The markers of the document; reading a file replaces them. Trouble shows in the status line
    // alone.
    void OnMcuExportMarker();
    void OnMcuImportMarker();

    // --- Painting ------------------------------------------------------------------------------

    void OnDraw(CDC*) override;
    // Each of these leaves pen, brush and text colour as it found them.
    void DrawJobList(CDC*, int height, int left, int y);  // the strip of all jobs
    void DrawJobList(CDC*, int left, int bottom);         // all lanes
    void DrawJob(CDC*, std::string name, int left, int y);
    void DrawHWJob(CDC*, std::string name, int left, int y, int first, int last);
    void DrawSourceMark(CDC*, std::string name, int left, int y);
    void DrawSourceMarkList(CDC*, int left, int y);
    void DrawExtraInfo(CDC*, int height, int left, int y);
    void DrawCustomJobList(CDC*, int height, int left, int y);
    void DrawCustomJobListCS(CDC*, int height, int left, int y);
    void DrawCustomJob(CDC*, std::string name, int left, int y);
    void DrawCustomJobCS(CDC*, std::string name, int left, int y, int first, int last);
    void DrawFrameNo(CDC*, int left);
    void DrawCurTime(CDC*, int height, int left, int bottom);
    void DrawYAxis(CDC*, int height, int left, int bottom);
    void DrawXAxis_Clock(CDC*, int width, int left, int bottom);
    void DrawXAxis_Count(CDC*, int width, int left, int bottom);
    void DrawXAxis_Time(CDC*, int width, int left, int bottom);
    void DrawIdleRatio(CDC*, int x, int y);

    // --- Members -------------------------------------------------------------------------------

    CScrollBar m_VScrollBar;
    CScrollBar m_HScrollBar;
    std::int32_t m_HScrollPos = 0;
    std::int32_t m_VScrollPos = 0;
    std::int32_t m_HScrollMax = 0;  // greatest position that can be reached
    std::int32_t m_VScrollMax = 0;
    std::int32_t m_HScrollMin = 0;  // low 32 bits of the log's begin
    std::int32_t m_VScrollMin = 0;
    std::int32_t m_IdleRatio = 0;  // percent of the log
    std::int32_t m_CanvasWidth = 0;
    std::int32_t m_CanvasHeight = 0;
    std::uint64_t m_VisibleQbits = 0;  // that the canvas width shows
    float m_ZoomRatio = 1.0f;
    float m_BaseScale = 2.0f;        // pixels per QBit at zoom 1
    float m_PixelsPerQbit = 2.0f;    // m_BaseScale times m_ZoomRatio
    std::uint64_t m_TimeOffset = 0;  // time at the canvas's left edge
    std::int32_t m_LaneOffset = 0;   // lanes scrolled away at the bottom
    std::int32_t m_CanvasLeft = 80;
    std::int32_t m_CanvasBottom = 100;
    std::int32_t m_JobFirst = 0, m_JobLast = 0;  // what is visible; the last ones exclusive
    std::int32_t m_CustomFirst = 0, m_CustomLast = 0;
    std::int32_t m_MarkFirst = 0, m_MarkLast = 0;
    std::int32_t m_ExtraFirst = 0, m_ExtraLast = 0;
    std::vector<std::int32_t> m_HWFirst, m_HWLast;              // in the order of m_HWJobs
    std::vector<std::int32_t> m_CustomCSFirst, m_CustomCSLast;  // of m_CustomJobsCS
    std::int32_t m_ClockBase = 1;                               // divisor of the QBit labels
    std::int32_t m_TimeBase = 1;                                // factor of the time labels
    std::uint64_t m_CursorTime = 100;
    bool m_DragCursor = false;
    bool m_DragMarker = false;
    std::int32_t m_DragMarkerIndex = -1;  // marker that is dragged or selected
    bool m_DragRange = false;
    std::int32_t* m_DragRangeX = nullptr;  // the range handle that is dragged
    std::int32_t m_RangeX1 = 0;
    std::int32_t m_RangeX2 = 0;
    TOOLINFO m_ToolInfo;
    McuJob m_ToolTipJob;    // what the tip stands for, unless that is calls
    CString m_ToolTipText;  // of the last tip of calls
    std::int32_t m_ToolTipShown = 0;
    std::unique_ptr<CToolTipCtrl> m_ToolTip;
    std::vector<std::string> m_RelativeList;  // lanes of tasks and interrupts, from the bottom up
    std::vector<bool> m_ExtraShown;           // per extra value
    std::vector<std::uint32_t> m_ExtraCursorValue;  // at m_CursorTime
    OUTLOOKTYPE m_Outlook = OUTLOOK_PURE;
    TIMEUNITTYPE m_TimeUnit = TIMEUNIT_COUNT;
    bool m_ShowFrameNo = false;
    bool m_ShowDottedLine = false;
    bool m_ShowCustomLogging = true;
    bool m_ContextSwitch = true;
    std::int32_t m_DurationFrom = -1;  // markers chosen last; -1: begin or end of the log
    std::int32_t m_DurationTo = -1;
    CString m_FindText;
    std::int32_t m_FindKind = 0;
    CMcuFindDlg m_FindDlg;  // never shown: what was accepted last
    CMcuGotoDlg m_GotoDlg;

    // Derived from the log on first use, dropped by Init.
    vesk::TimelineIndex& Index();

private:
    // Where a middle drag began, and what was shown there.
    struct PanStart {
        CPoint m_Point;
        std::uint64_t m_TimeOffset;
        std::int32_t m_LaneOffset;
    };

    // Visible records of a container, and what is known of their order.
    struct Stretch;
    Stretch StretchOf(const std::vector<McuJob>&, int first, int last);
    int BarAt(const Stretch&, int left, int x) const;
    using CallVisitor = std::function<bool(const McuJob&, std::uint64_t end)>;
    void VisitCallsAt(int left, int x, const CallVisitor&);
    bool HasCallAt(CPoint, int h, int left, int y0);
    void PlaceToolTip(CPoint, const CString& text, int lines);
    void ShowToolTip(CPoint, CPoint anchor, const CString& text);  // the anchor on the screen
    void OpenToolTips(CPoint);
    bool IsToolTipFor(CPoint);

    std::int32_t MarkerAt(CPoint) const;  // whose label it is, -1 for none
    std::int32_t CMcuView::*HandleAt(int x) const;
    std::uint64_t DragTime(int x) const;  // within the view and the log
    void DragHandle(int x);
    void DragLine(std::uint64_t time);
    void ShowRange() const;
    void Pan(unsigned flags, CPoint);

    vesk::ScrollMapping TimeMapping() const;
    void PlaceBars(int cx, int cy);
    void ShowLowestLanes();
    vesk::ShownSpan Shown() const { return {m_TimeOffset, m_ZoomRatio}; }
    void Show(const vesk::ShownSpan&);
    void MoveTime(double qbits, vesk::SpanChange);
    void StepTime(double tenthsOfView, vesk::SpanChange);
    void StepZoom(double factor);
    void Toggle(bool& setting);
    void Find(const CString& name, std::int32_t kind, bool up);
    void GoToNext(const vesk::JobStripIndex&, const CString& name, bool up, bool wrapsToStart);
    void GoToNextCall(const std::string& function, bool up);
    void GoToNextCallOfAny(bool up);
    void GoToFind(std::uint64_t time, bool up, bool isWrapped);
    void RemoveSelectedMarker();
    void GoToMarker(bool up);
    void Note(const vesk::ShownSpan& before, vesk::SpanChange how) {
        m_History.Note(before, Shown(), how);
    }

    std::unique_ptr<vesk::TimelineIndex> m_Index;
    vesk::ViewHistory m_History;
    std::optional<PanStart> m_Pan;
    int m_WheelRest = 0;  // of a step, as a wheel turns in small parts
};
