#include "desktop/SearchDock.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <algorithm>
#include <chrono>

#include "desktop/DesktopHost.h"
#include "desktop/QtText.h"
#include "desktop/RowList.h"
#include "log/McuJobList.h"
#include "platform/Text.h"
#include "timeline/CMcuView.h"

namespace vesk {

namespace {

enum Column { kName, kStart, kEnd, kFrame, kDuration };

constexpr const char* kTitle = "Search results";
constexpr const char* kNothingOpen = "No log is open.";
constexpr const char* kWorking = "Searching ...";
constexpr const char* kNothingFound = "Nothing was found.";

const char* NameOf(SearchTarget target) {
    switch (target) {
        case SearchTarget::kJobs:
            return "tasks";
        case SearchTarget::kSegments:
            return "function segments";
        case SearchTarget::kCalls:
            return "function calls";
        case SearchTarget::kMarks:
            return "labels";
    }
    return "";
}

char Capital(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool EqualButForCase(const std::string& a, const std::string& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return Capital(x) == Capital(y); });
}

// As the search itself takes names: calls by their exact one.
bool Fits(const std::string& name, const std::string& text, SearchTarget target) {
    if (text.empty()) return true;
    return target == SearchTarget::kCalls ? name == text : EqualButForCase(name, text);
}

QString Grouped(std::uint64_t number) {
    return ToQt(GroupedNumber(number));
}

std::uint64_t Distance(std::uint64_t a, std::uint64_t b) {
    return a > b ? a - b : b - a;
}

}  // namespace

SearchDock::SearchDock(const DesktopHost& host, QWidget* parent)
    : QDockWidget(kTitle, parent), m_Host(host) {
    setObjectName("searchResults");
    const QString widest = "0,000,000,000";
    m_Rows = new RowList({{"Name", "", false},
                          {"Start (QBit)", widest},
                          {"End (QBit)", widest},
                          {"Frame", "0000000"},
                          {"Duration (QBit)", widest}},
                         this);
    setWidget(m_Rows);
    m_Rows->m_OnChosen = [this](int row) {
        CMcuView* const view = m_Host.Timeline();
        if (view && m_Results) view->GoTo(m_Results->At(row).m_StartTime);
    };
    m_Rows->SetNote(kNothingOpen);
}

SearchDock::~SearchDock() {
    Forget();
}

void SearchDock::Forget() {
    if (m_Coming.valid()) m_Coming.get();
    m_Rows->SetRows(0, {});
    m_Rows->SetNote(kNothingOpen);
    Tell({});
    m_Results.reset();
    m_IsKnown = false;
}

void SearchDock::Follow() {
    const CMcuView* const view = m_Host.Timeline();
    if (!view && m_IsKnown) Forget();
    if (!view || !isVisible()) return;
    if (m_Coming.valid()) {
        if (m_Coming.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return;
        Take(m_Coming.get());
    }
    const Search search = SearchOf(*view);
    if (!m_IsKnown || search != m_Search) Begin(search);
    if (m_Results && view->m_CursorTime != m_Cursor) ShowNearest(view->m_CursorTime);
}

SearchDock::Search SearchDock::SearchOf(const CMcuView& view) {
    const std::string& text = view.m_FindText.Str();
    if (view.m_FindKind == 2) return {SearchTarget::kMarks, text};
    if (view.m_FindKind != 1) return {SearchTarget::kJobs, text};
    return {view.m_ContextSwitch ? SearchTarget::kCalls : SearchTarget::kSegments, text};
}

// Through millions of records a search takes longer than a window may stand still.
void SearchDock::Begin(const Search& search) {
    m_Search = search;
    m_IsKnown = true;
    m_Results.reset();
    m_Rows->SetRows(0, {});
    m_Rows->SetNote(kWorking);
    m_Coming = std::async(std::launch::async, [search, &list = m_Host.List()] {
        Results results = std::make_unique<const SearchResults>(
            list, search.m_Target, [&search](const std::string& name) {
                return Fits(name, search.m_Text, search.m_Target);
            });
        // Else the window would notice with its next event only.
        if (QAbstractEventDispatcher* const loop = QCoreApplication::eventDispatcher())
            loop->wakeUp();
        return results;
    });
}

void SearchDock::Take(Results results) {
    m_Results = std::move(results);
    m_Rows->SetNote(kNothingFound);
    m_Rows->SetRows(m_Results->Count(),
                    [this](int row, int column) { return TextOf(row, column); });
    const std::string what = m_Search.m_Text.empty() ? "any name" : m_Search.m_Text;
    Tell(": " + Grouped(static_cast<std::uint64_t>(m_Results->Count())) + ' ' +
         NameOf(m_Search.m_Target) + " (" + ToQt(what) + ')');
    ShowNearest(m_Host.Timeline()->m_CursorTime);
}

// In the title, which the menu's entry would follow.
void SearchDock::Tell(const QString& what) {
    setWindowTitle(kTitle + what);
    toggleViewAction()->setText(kTitle);
}

// Of several rows at the same distance the current one stays.
void SearchDock::ShowNearest(std::uint64_t time) {
    m_Cursor = time;
    const auto distance = [&](int row) { return Distance(m_Results->At(row).m_StartTime, time); };
    int nearest = m_Results->FirstFrom(time);
    if (nearest == m_Results->Count() || (nearest > 0 && distance(nearest - 1) < distance(nearest)))
        --nearest;
    const int current = m_Rows->Current();
    if (current >= 0 && nearest >= 0 && distance(current) == distance(nearest)) nearest = current;
    m_Rows->SetCurrent(nearest);
}

QString SearchDock::TextOf(int row, int column) const {
    const McuJob& hit = m_Results->At(row);
    const bool hasEnd = hit.m_EndTime > hit.m_StartTime;
    switch (column) {
        case kName:
            return ToQt(hit.m_Name);
        case kStart:
            return Grouped(hit.m_StartTime);
        case kEnd:
            return hasEnd ? Grouped(hit.m_EndTime) : QString();
        case kFrame:
            return QString::number(hit.m_TimeStamp);
        case kDuration:
            return hasEnd ? Grouped(hit.m_EndTime - hit.m_StartTime) : QString();
        default:
            return {};
    }
}

}  // namespace vesk
