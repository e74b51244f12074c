#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "log/HostValues.h"
#include "log/McuJobList.h"
#include "platform/HeadlessUserInterface.h"
#include "resources/VeskResources.h"
#include "tests/support/LogBuilder.h"
#include "tests/support/TemporaryFile.h"

namespace vesk {

// A person before the library's dialogs, and a list that reads logs. Whatever the person was asked
// without a script, or could not do, fails the test.
class DialogTest : public testing::Test {
protected:
    DialogTest() {
        AfxInitExtensionModule(m_Module, &VeskResources());
        m_Tables.emplace(m_Module);
        m_List.registerDBCallback(TargetDatabase::LookUpFormat, TargetDatabase::LookUpEnum);
    }
    ~DialogTest() override {
        EXPECT_THAT(m_User.m_Faults, testing::IsEmpty());
        m_Tables.reset();
        TargetDatabase::Select(nullptr);
        CurrentHostValues() = m_FormerHost;
        AfxTermExtensionModule(m_Module);
    }

    void Connect(const LogBuilder& log) {
        m_Database = log.Database();
        TargetDatabase::Select(&m_Database);
        CurrentHostValues() = log.Host();
    }

    HeadlessUserInterface m_User;
    McuJobList m_List;
    std::optional<CDynLinkLibrary> m_Tables;

private:
    const HostValues m_FormerHost = CurrentHostValues();
    AFX_EXTENSION_MODULE m_Module;
    ScopedUserInterface m_InPlace{m_User};
    TargetDatabase m_Database;
};

// "NAME FRAME COUNT" of each job.
inline std::vector<std::string> Stamps(const std::vector<McuJob>& jobs) {
    std::vector<std::string> lines;
    for (const McuJob& job : jobs)
        lines.push_back(job.m_Name + " " + std::to_string(job.m_TimeStamp) + " " +
                        std::to_string(job.m_TimeCount));
    return lines;
}

}  // namespace vesk
