#include <gtest/gtest.h>

#include "platform/CCmdTarget.h"
#include "platform/CCmdUI.h"

namespace {

class Base : public CCmdTarget {
public:
    void OnFirst() { m_Ran = "base first"; }
    void OnSecond() { m_Ran = "base second"; }
    void OnUpdateSecond(CCmdUI* ui) {
        ui->Enable(m_Ready);
        ui->SetCheck(m_Ready);
        ui->SetText("Second");
    }
    const vesk::MessageMap* GetMessageMap() const override { return &kMap; }

    std::string m_Ran;
    bool m_Ready = false;

protected:
    static const vesk::MessageMap kMap;
};

constexpr vesk::MessageEntry kBaseEntries[] = {
    vesk::Command<&Base::OnFirst>(1),
    vesk::Command<&Base::OnSecond, &Base::OnUpdateSecond>(2),
};
const vesk::MessageMap Base::kMap{nullptr, kBaseEntries};

class Derived : public Base {
public:
    void OnFirst() { m_Ran = "derived first"; }
    void OnSelected() { m_Ran = "selected"; }
    const vesk::MessageMap* GetMessageMap() const override;
};

constexpr vesk::MessageEntry kDerivedEntries[] = {
    vesk::Command<&Derived::OnFirst>(1),
    vesk::Notification<&Derived::OnSelected>(3, LBN_SELCHANGE),
};
const vesk::MessageMap* Derived::GetMessageMap() const {
    static const vesk::MessageMap map{&kMap, kDerivedEntries};
    return &map;
}

vesk::CommandState StateOf(unsigned id, CCmdTarget& target) {
    vesk::CommandState state;
    CCmdUI(id, state).DoUpdate(target);
    return state;
}

TEST(MessageMap, FindsTheHandlerOfTheNearestClass) {
    const struct {
        const char* what;
        unsigned id;
        int code;
        const char* ran;
    } cases[] = {
        {"the derived class before its base", 1, CN_COMMAND, "derived first"},
        {"what only the base has", 2, CN_COMMAND, "base second"},
        {"a notification by its code", 3, LBN_SELCHANGE, "selected"},
        {"the same control, another code", 3, LBN_DBLCLK, ""},
        {"nobody's command", 4, CN_COMMAND, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Derived target;
        EXPECT_EQ(target.OnCmdMsg(c.id, c.code, nullptr), c.ran != std::string());
        EXPECT_EQ(target.m_Ran, c.ran);
    }
}

TEST(CommandState, ComesFromTheUpdateHandler) {
    Derived target;
    EXPECT_FALSE(StateOf(2, target).m_Enabled);
    EXPECT_FALSE(StateOf(2, target).m_Checked);
    target.m_Ready = true;
    const vesk::CommandState state = StateOf(2, target);
    EXPECT_TRUE(state.m_Enabled);
    EXPECT_TRUE(state.m_Checked);
    EXPECT_EQ(state.m_Text, "Second");
    EXPECT_EQ(target.m_Ran, "") << "an update runs no command";
}

TEST(CommandState, IsEnabledWithOnlyAHandlerAndDisabledWithoutOne) {
    Derived target;
    vesk::CommandState state;
    state.m_Enabled = false;
    CCmdUI(1, state).DoUpdate(target);
    EXPECT_TRUE(state.m_Enabled);
    EXPECT_FALSE(StateOf(4, target).m_Enabled);
}

}  // namespace
