#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include "desktop/QtUserInterface.h"
#include "platform/Resources.h"

namespace vesk {

// Has the real user interface in place, and joins tables to the resource chain.
class DesktopTest : public testing::Test {
protected:
    explicit DesktopTest(const ResourceTables& tables = {}) : m_Tables(tables) {
        AfxInitExtensionModule(m_Module, &m_Tables);
        m_Library = std::make_unique<CDynLinkLibrary>(m_Module);
    }

    // Events that wait are dealt with.
    static void Settle() {
        for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
    }

    QtUserInterface m_User;

private:
    ScopedUserInterface m_InPlace{m_User};
    ResourceTables m_Tables;
    AFX_EXTENSION_MODULE m_Module;
    std::unique_ptr<CDynLinkLibrary> m_Library;
};

}  // namespace vesk
