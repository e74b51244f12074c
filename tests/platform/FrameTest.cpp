#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "platform/CCmdUI.h"
#include "platform/CDC.h"
#include "platform/CDocument.h"
#include "platform/CMDIChildWnd.h"
#include "platform/CMDIFrameWnd.h"
#include "platform/CMultiDocTemplate.h"
#include "platform/CView.h"
#include "platform/HeadlessUserInterface.h"
#include "platform/Keys.h"
#include "platform/RecordingSurface.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vesk::Command;

// What happened, in order, and what is to happen.
struct Journal {
    std::vector<std::string> m_Lines;
    std::map<std::string, int> m_Alive;
    int m_FrameResult = 0;
    int m_ViewResult = 0;
    bool m_Enabled = true;

    std::vector<std::string> Take() { return std::exchange(m_Lines, {}); }
};
Journal* journal = nullptr;

void Note(const std::string& line) {
    journal->m_Lines.push_back(line);
}

struct Life {
    explicit Life(const char* name) : m_Name(name) { ++journal->m_Alive[m_Name]; }
    ~Life() { --journal->m_Alive[m_Name]; }
    std::string m_Name;
};

// Command 1 is handled at every stage of the route, 2 from the document on, 3 from the child
// frame on, 4 and 5 by the main frame alone, 5 only if it is enabled.

class View : public CView {
public:
    void OnRun() { Note("view runs"); }
    int OnCreate() override {
        Note("view created");
        return journal->m_ViewResult;
    }
    void OnInitialUpdate() override {
        CRect client;
        GetClientRect(&client);
        Note(client.IsRectEmpty() ? "view without size" : "view shows its document");
    }
    void OnSize(unsigned, int cx, int cy) override { m_Size = {cx, cy}; }
    bool OnEraseBkgnd(CDC*) override { return m_Erases; }
    void OnDraw(CDC* dc) override {
        dc->GetClipBox(&m_Clip);
        dc->FillSolidRect(1, 1, 5, 5, RGB(1, 2, 3));
    }
    const vesk::MessageMap* GetMessageMap() const override {
        static constexpr vesk::MessageEntry entries[] = {Command<&View::OnRun>(1)};
        static const vesk::MessageMap map{nullptr, entries};
        return &map;
    }
    CSize m_Size;
    CRect m_Clip;
    bool m_Erases = false;
    Life m_Life{"view"};
};

class Document : public CDocument {
public:
    void OnRun() { Note("document runs"); }
    const vesk::MessageMap* GetMessageMap() const override {
        static constexpr vesk::MessageEntry entries[] = {Command<&Document::OnRun>(1),
                                                         Command<&Document::OnRun>(2)};
        static const vesk::MessageMap map{nullptr, entries};
        return &map;
    }
    Life m_Life{"document"};
};

class Child : public CMDIChildWnd {
public:
    void OnRun() { Note("child runs"); }
    int OnCreate() override {
        Note("frame created");
        return journal->m_FrameResult;
    }
    void OnMDIActivate(bool activate, CWnd*, CWnd*) override {
        Note(GetWindowText().Str() + (activate ? " on" : " off"));
    }
    const vesk::MessageMap* GetMessageMap() const override {
        static constexpr vesk::MessageEntry entries[] = {
            Command<&Child::OnRun>(1), Command<&Child::OnRun>(2), Command<&Child::OnRun>(3)};
        static const vesk::MessageMap map{nullptr, entries};
        return &map;
    }
    Life m_Life{"frame"};
};

class MainFrame : public CMDIFrameWnd {
public:
    void OnRun() { Note("main runs"); }
    void OnUpdate(CCmdUI* ui) { ui->Enable(journal->m_Enabled); }
    void OnCloseActive() { MDIGetActive()->OnClose(); }
    const vesk::MessageMap* GetMessageMap() const override {
        static constexpr vesk::MessageEntry entries[] = {
            Command<&MainFrame::OnRun>(1),
            Command<&MainFrame::OnRun>(2),
            Command<&MainFrame::OnRun>(3),
            Command<&MainFrame::OnRun>(4),
            Command<&MainFrame::OnRun, &MainFrame::OnUpdate>(5),
            Command<&MainFrame::OnCloseActive>(6)};
        static const vesk::MessageMap map{nullptr, entries};
        return &map;
    }
};

class Peer : public vesk::WindowPeer {
public:
    explicit Peer(std::vector<vesk::Aspect>& changes) : m_Changes(changes) {}
    void Changed(vesk::Aspect aspect) override { m_Changes.push_back(aspect); }
    Life m_Life{"peer"};

private:
    std::vector<vesk::Aspect>& m_Changes;
};

class Desktop : public vesk::HeadlessUserInterface {
public:
    std::unique_ptr<vesk::WindowPeer> MakePeer(CWnd&) override {
        return std::make_unique<Peer>(m_Changes);
    }
    std::vector<vesk::Aspect> m_Changes;
};

class Frames : public testing::Test {
protected:
    Frames() {
        m_Main->SetWindowText("App");
        m_Main->MoveWindow(0, 0, 800, 600);
    }
    ~Frames() override {
        m_Main.reset();
        journal = nullptr;
    }
    // A shown frame on a document; on one of its own without any.
    Child* Open(const CString& title, CDocument* document = nullptr) {
        if (!document) document = m_Template.CreateNewDocument();
        document->SetTitle(title);
        auto* frame = dynamic_cast<Child*>(m_Template.CreateNewFrame(document, nullptr));
        if (frame) m_Template.InitialUpdateFrame(frame, document);
        return frame;
    }
    std::string Active() const {
        const CMDIChildWnd* frame = m_Main->MDIGetActive();
        return frame ? frame->GetWindowText().Str() : "none";
    }
    bool Run(unsigned command) { return m_Main->OnCommand(command); }

    struct UseJournal {
        explicit UseJournal(Journal& used) { journal = &used; }
    };
    Journal m_Journal;
    UseJournal m_Use{m_Journal};
    Desktop m_Desktop;
    vesk::ScopedUserInterface m_Scope{m_Desktop};
    CMultiDocTemplate m_Template{77, vesk::RuntimeClass<Document>("Document"),
                                 vesk::RuntimeClass<Child>("Child"),
                                 vesk::RuntimeClass<View>("View")};
    std::unique_ptr<MainFrame> m_Main = std::make_unique<MainFrame>();
};

// --- Commands and keys ---------------------------------------------------------------------------

TEST_F(Frames, SendACommandFromTheActiveViewUpToTheMainFrame) {
    Open("A");
    const struct {
        unsigned command;
        const char* handler;
    } cases[] = {{1, "view runs"}, {2, "document runs"}, {3, "child runs"}, {4, "main runs"}};
    for (const auto& c : cases) {
        journal->Take();
        EXPECT_TRUE(Run(c.command)) << c.command;
        EXPECT_THAT(journal->Take(), ElementsAre(c.handler));
    }
    EXPECT_FALSE(Run(99)) << "nobody handles it";
    EXPECT_THAT(journal->Take(), IsEmpty());
}

TEST_F(Frames, LeaveCommandsToTheMainFrameWhenNoneIsOpen) {
    EXPECT_TRUE(Run(1));
    EXPECT_THAT(journal->Take(), ElementsAre("main runs"));
}

TEST_F(Frames, RunNoDisabledCommand) {
    journal->m_Enabled = false;
    EXPECT_FALSE(Run(5));
    EXPECT_THAT(journal->Take(), IsEmpty());
    journal->m_Enabled = true;
    EXPECT_TRUE(Run(5));
    EXPECT_THAT(journal->Take(), ElementsAre("main runs"));
}

TEST_F(Frames, MayBeClosedByACommand) {
    Open("A");
    EXPECT_TRUE(Run(6));
    EXPECT_EQ(Active(), "none");
}

TEST_F(Frames, TakeKeysByTheTableOfTheActiveOneOrElseOfTheMainFrame) {
    constexpr vesk::AcceleratorEntry mainKeys[] = {{vesk::kControl, 'A', 4}};
    constexpr vesk::AcceleratorEntry childKeys[] = {
        {vesk::kControl, 'B', 1}, {vesk::kControl, 'C', 5}, {vesk::kControl, 'D', 99}};
    const vesk::AcceleratorTable keyTables[] = {{76, mainKeys}, {77, childKeys}};
    const vesk::ResourceTables tables{.m_Accelerators = keyTables};
    AFX_EXTENSION_MODULE module{true, &tables};
    const CDynLinkLibrary library(module);
    EXPECT_FALSE(m_Main->PreTranslateKey('A', vesk::kControl)) << "no table yet";
    m_Main->LoadAccelTable(76);
    EXPECT_TRUE(m_Main->PreTranslateKey('A', vesk::kControl));
    EXPECT_THAT(journal->Take(), ElementsAre("main runs"));

    Open("A");
    journal->Take();
    journal->m_Enabled = false;
    const struct {
        const char* what;
        unsigned key, modifiers;
        bool taken;
        std::vector<std::string> ran;
    } cases[] = {
        {"of the active frame", 'B', vesk::kControl, true, {"view runs"}},
        {"without its modifier", 'B', vesk::kNoModifier, false, {}},
        {"of the main frame's table", 'A', vesk::kControl, false, {}},
        {"of a disabled command", 'C', vesk::kControl, true, {}},
        {"of a command that nobody handles", 'D', vesk::kControl, false, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(m_Main->PreTranslateKey(c.key, c.modifiers), c.taken);
        EXPECT_EQ(journal->Take(), c.ran);
    }
}

// --- Making frames -------------------------------------------------------------------------------

TEST_F(Frames, AreMadeWithAViewOfSomeSizeOnTheirDocument) {
    CDocument* document = m_Template.OpenNewDocument();
    ASSERT_TRUE(document);
    EXPECT_THAT(journal->Take(),
                ElementsAre("frame created", "view created", "view shows its document", " on"));
    CMDIChildWnd* frame = m_Main->MDIGetActive();
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->GetActiveDocument(), document);
    EXPECT_THAT(document->Views(), ElementsAre(frame->GetActiveView()));
    EXPECT_EQ(frame->GetMDIFrame(), m_Main.get());
    EXPECT_EQ(frame->m_ResourceId, 77u);
    EXPECT_TRUE(frame->IsWindowVisible());
    EXPECT_TRUE(frame->GetActiveView()->IsWindowVisible());
    EXPECT_EQ(CWnd::GetFocus(), frame->GetActiveView());
}

TEST_F(Frames, LieInsideTheMainFrameAndNotOnEachOther) {
    CRect previous;
    for (int i = 0; i < 20; ++i) {
        CRect rect;
        Open("A")->GetWindowRect(&rect);
        CRect inside;
        inside.IntersectRect(rect, {0, 0, 800, 600});
        EXPECT_EQ(inside, rect);
        EXPECT_NE(rect, previous);
        previous = rect;
    }
}

TEST_F(Frames, LeaveNothingBehindWhenAWindowRefuses) {
    const struct {
        const char* what;
        int frame, view;
    } cases[] = {{"the frame", -1, 0}, {"the view", 0, -1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        journal->m_FrameResult = c.frame;
        journal->m_ViewResult = c.view;
        const std::unique_ptr<CDocument> document(m_Template.CreateNewDocument());
        EXPECT_FALSE(m_Template.CreateNewFrame(document.get(), nullptr));
        EXPECT_EQ(journal->m_Alive["document"], 1) << "it is still its caller's";
        EXPECT_TRUE(document->m_AutoDelete);
        EXPECT_THAT(document->Views(), IsEmpty());
        EXPECT_FALSE(m_Template.OpenNewDocument());
        EXPECT_THAT(journal->m_Alive, testing::Contains(testing::Pair("document", 1)));
        EXPECT_EQ(journal->m_Alive["frame"] + journal->m_Alive["view"], 0);
        EXPECT_THAT(m_Main->MDIChildren(), IsEmpty());
    }
}

TEST_F(Frames, AreNotMadeFromOtherClassesOrWithoutAMainFrame) {
    const auto* document = vesk::RuntimeClass<Document>("Document");
    const auto* frame = vesk::RuntimeClass<Child>("Child");
    const auto* view = vesk::RuntimeClass<View>("View");
    EXPECT_FALSE(CMultiDocTemplate(1, document, view, view).OpenNewDocument());
    EXPECT_FALSE(CMultiDocTemplate(1, document, frame, frame).OpenNewDocument());
    EXPECT_FALSE(CMultiDocTemplate(1, view, frame, view).OpenNewDocument());
    EXPECT_FALSE(CMultiDocTemplate(1, document, nullptr, view).OpenNewDocument());
    m_Main.reset();
    EXPECT_FALSE(AfxGetMainWnd());
    EXPECT_FALSE(m_Template.OpenNewDocument());
    for (const auto& [name, alive] : journal->m_Alive) EXPECT_EQ(alive, 0) << name;
}

TEST_F(Frames, StayHiddenAndInactiveIfToldSo) {
    Open("A");
    CDocument* document = m_Template.CreateNewDocument();
    CFrameWnd* frame = m_Template.CreateNewFrame(document, nullptr);
    m_Template.InitialUpdateFrame(frame, document, false);
    EXPECT_FALSE(frame->IsWindowVisible());
    EXPECT_EQ(Active(), "A");
    m_Main->MDIGetActive()->OnClose();
    EXPECT_EQ(Active(), "none") << "a hidden frame is not activated in another's place";
}

// --- Activation and closing ----------------------------------------------------------------------

TEST_F(Frames, TellTheFormerAndTheNewOneOfAnActivation) {
    Child* a = Open("A");
    Open("B");
    journal->Take();
    CWnd* window = a;
    window->BringWindowToTop();
    EXPECT_THAT(journal->Take(), ElementsAre("B off", "A on"));
    EXPECT_EQ(CWnd::GetFocus(), a->GetActiveView());
    a->MDIActivate();
    EXPECT_THAT(journal->Take(), IsEmpty()) << "active already";
}

TEST_F(Frames, GiveWayToTheOneThatWasActiveBefore) {
    Child* a = Open("A");
    Open("B");
    Child* c = Open("C");
    a->MDIActivate();
    journal->Take();
    a->OnClose();
    EXPECT_THAT(journal->Take(), ElementsAre("A off", "C on"));
    c->OnClose();
    EXPECT_EQ(Active(), "B");
    EXPECT_EQ(m_Main->MDIChildren().size(), 1u);
}

TEST_F(Frames, KeepTheActiveOneWhenAnotherCloses) {
    Child* a = Open("A");
    Open("B");
    journal->Take();
    a->OnClose();
    EXPECT_THAT(journal->Take(), IsEmpty());
    EXPECT_EQ(Active(), "B");
}

TEST_F(Frames, TakeTheirDocumentAlongWithTheLastView) {
    CDocument* document = m_Template.CreateNewDocument();
    Child* first = Open("A", document);
    Child* second = Open("B", document);
    first->OnClose();
    EXPECT_EQ(journal->m_Alive["document"], 1);
    EXPECT_THAT(document->Views(), ElementsAre(second->GetActiveView()));
    second->OnClose();
    for (const auto& [name, alive] : journal->m_Alive) EXPECT_EQ(alive, 0) << name;
}

TEST_F(Frames, LeaveADocumentThatIsKeptByOthers) {
    Document document;
    Open("A", &document)->OnClose();
    EXPECT_EQ(journal->m_Alive["view"], 0);
    EXPECT_THAT(document.Views(), IsEmpty());
}

TEST_F(Frames, OutliveADocumentThatGoesFirst) {
    auto document = std::make_unique<Document>();
    const Child* frame = Open("A", document.get());
    document.reset();
    EXPECT_FALSE(frame->GetActiveDocument());
    EXPECT_FALSE(Run(99)) << "no document to ask";
}

TEST_F(Frames, GoWithTheMainFrame) {
    Open("A");
    Open("B");
    journal->Take();
    m_Main.reset();
    for (const auto& [name, alive] : journal->m_Alive) EXPECT_EQ(alive, 0) << name;
    EXPECT_THAT(journal->Take(), IsEmpty()) << "none is activated on the way";
    EXPECT_FALSE(CWnd::GetFocus());
}

TEST_F(Frames, HaveAPeerThatIsToldAndGoesWithThem) {
    Child* a = Open("A");
    EXPECT_EQ(journal->m_Alive["peer"], 1);
    m_Desktop.m_Changes.clear();
    a->BringWindowToTop();
    EXPECT_THAT(m_Desktop.m_Changes, testing::Contains(vesk::Aspect::Top));
    a->OnClose();
    EXPECT_EQ(journal->m_Alive["peer"], 0);
}

// --- Titles, sizes, painting ---------------------------------------------------------------------

TEST_F(Frames, ShowTheTitleOfTheActiveOneBeforeTheApplications) {
    Child* a = Open("A");
    EXPECT_EQ(m_Main->GetWindowText(), "A - App");
    Open("B");
    EXPECT_EQ(m_Main->GetWindowText(), "B - App");
    m_Main->OnUpdateFrameTitle(false);
    EXPECT_EQ(m_Main->GetWindowText(), "App");
    m_Main->SetWindowText("Other");
    a->MDIActivate();
    EXPECT_EQ(m_Main->GetWindowText(), "A - Other");
    a->OnClose();
    m_Main->MDIGetActive()->OnClose();
    EXPECT_EQ(m_Main->GetWindowText(), "Other");
}

TEST_F(Frames, FillTheirClientAreaWithTheView) {
    Child* a = Open("A");
    const auto* view = dynamic_cast<View*>(a->GetActiveView());
    ASSERT_TRUE(view);
    a->MoveWindow(10, 10, 300, 200);
    EXPECT_EQ(view->m_Size, (CSize{300, 200}));
    a->OnSize(SIZE_MINIMIZED, 0, 0);
    EXPECT_EQ(view->m_Size, (CSize{300, 200})) << "a minimised frame leaves the view as it is";
}

TEST_F(Frames, PaintWhatIsInvalidInTheirViews) {
    auto* view = dynamic_cast<View*>(Open("A")->GetActiveView());
    ASSERT_TRUE(view);
    view->TakeInvalidRect();
    const auto paint = [view] {
        vesk::RecordingSurface surface({100, 100});
        CDC dc(&surface);
        view->Paint(dc);
        return surface.Lines();
    };
    EXPECT_THAT(paint(), IsEmpty()) << "nothing is invalid";
    const CRect part{0, 0, 20, 10};
    view->InvalidateRect(&part);
    const std::vector<std::string> erased = paint();
    ASSERT_EQ(erased.size(), 2u) << "background and contents";
    EXPECT_THAT(erased[0], testing::StartsWith("fill 0,0 20x10"));
    EXPECT_EQ(erased[1], "fill 1,1 5x5 030201");
    EXPECT_EQ(view->m_Clip, part);
    view->m_Erases = true;
    view->InvalidateRect(&part);
    EXPECT_THAT(paint(), ElementsAre("fill 1,1 5x5 030201"));
}

}  // namespace
