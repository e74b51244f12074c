#include "platform/Resources.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

constexpr vesk::StringEntry kOldStrings[] = {{1, "old one"}, {2, "old two"}};
constexpr vesk::StringEntry kNewStrings[] = {{1, "new one"}};
constexpr unsigned kCommands[] = {7, 0, 8};
constexpr vesk::ToolBarTemplate kToolBars[] = {{1, 19, 18, kCommands}};
const vesk::ResourceTables kOld{.m_ToolBars = kToolBars, .m_Strings = kOldStrings};
const vesk::ResourceTables kNew{.m_Strings = kNewStrings};

std::string Text(unsigned id) {
    const char* text = vesk::FindString(id);
    return text ? text : "none";
}

class ResourceChain : public testing::Test {
protected:
    ResourceChain() {
        AfxInitExtensionModule(m_Old, &kOld);
        AfxInitExtensionModule(m_New, &kNew);
    }
    AFX_EXTENSION_MODULE m_Old, m_New;
};

TEST_F(ResourceChain, AsksTheModuleThatJoinedLastFirst) {
    const CDynLinkLibrary old(m_Old);
    EXPECT_EQ(Text(1), "old one");
    {
        const CDynLinkLibrary added(m_New);
        EXPECT_EQ(Text(1), "new one");
        EXPECT_EQ(Text(2), "old two") << "what the last one does not have";
        EXPECT_EQ(Text(3), "none");
        ASSERT_TRUE(vesk::FindToolBar(1));
        EXPECT_EQ(vesk::FindToolBar(1)->m_Commands.size(), 3u);
        EXPECT_FALSE(vesk::FindMenu(1)) << "an id counts for its own kind only";
    }
    EXPECT_EQ(Text(1), "old one");
}

TEST_F(ResourceChain, LetsModulesLeaveInAnyOrder) {
    auto first = std::make_unique<CDynLinkLibrary>(m_Old);
    auto between = std::make_unique<CDynLinkLibrary>(m_New);
    auto again = std::make_unique<CDynLinkLibrary>(m_Old);
    EXPECT_EQ(Text(1), "old one");
    first.reset();
    EXPECT_EQ(Text(1), "old one") << "the second joining still stands";
    again.reset();
    EXPECT_EQ(Text(1), "new one");
    EXPECT_EQ(Text(2), "none");
    between.reset();
    EXPECT_EQ(Text(1), "none");
}

TEST_F(ResourceChain, ForgetsAModuleThatEnds) {
    const CDynLinkLibrary library(m_Old);
    AfxTermExtensionModule(m_Old);
    EXPECT_EQ(Text(1), "none");
    EXPECT_FALSE(m_Old.bInitialized);
}

TEST_F(ResourceChain, TakesNoModuleWithoutTables) {
    AFX_EXTENSION_MODULE module;
    EXPECT_FALSE(AfxInitExtensionModule(module, nullptr));
    EXPECT_FALSE(module.bInitialized);
    const CDynLinkLibrary library(module);
    EXPECT_EQ(Text(1), "none");
}

}  // namespace
