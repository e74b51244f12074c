#pragma once

#include <optional>

#include "platform/Resources.h"
#include "tests/timeline/ViewTest.h"

// A view whose commands find their dialogs. What a person was asked without a script, or could not
// do, fails the test.
class DialogViewTest : public ViewTest {
protected:
    DialogViewTest() {
        AfxInitExtensionModule(m_Module, &vesk::VeskResources());
        m_Tables.emplace(m_Module);
    }
    ~DialogViewTest() override {
        EXPECT_THAT(m_User.m_Faults, testing::IsEmpty());
        m_Tables.reset();
        AfxTermExtensionModule(m_Module);
    }

private:
    AFX_EXTENSION_MODULE m_Module;
    std::optional<CDynLinkLibrary> m_Tables;
};
