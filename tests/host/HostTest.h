#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "database/JsonTargetLoader.h"
#include "database/TargetDatabase.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/HostValues.h"
#include "log/McuJobList.h"

// Runs a test on shared state that stands as it does at load.
class HostTest : public testing::Test {
protected:
    HostTest() { Reset(); }
    ~HostTest() override { Reset(); }

    static McuJobList& Jobs() { return *vesk_dll_shared_data.m_pJobList; }

    // Gives the shared list names as a read would, without records.
    static void Task(const std::string& name) { Jobs().m_JobNames[name] = 1; }
    static void Function(const std::string& name) { Jobs().m_CustomNames[name] = 1; }

    // Reads a sample log into the shared list, in the order that a host keeps.
    void ReadSample(const std::string& name) {
        const std::string path = VESK_SAMPLES_DIR "/" + name;
        std::string error;
        ASSERT_TRUE(vesk::LoadTargetFromJson(path + ".target.json", m_Target, error)) << error;
        vesk::TargetDatabase::Select(&m_Target);
        ASSERT_TRUE(vesk_dll_shared_data.registerDBCallback(vesk::TargetDatabase::LookUpFormat,
                                                            vesk::TargetDatabase::LookUpEnum));
        vesk_dll_shared_data.GetTargetCapability(&m_Target.m_Capability);
        ASSERT_TRUE(Jobs().ReadFile(path + ".bin", error)) << error;
    }

private:
    static void Reset() {
        vesk_dll_shared_data = VESK_DLL_Shared_Data_T();
        vesk::CurrentHostValues() = vesk::HostValues();
        vesk::TargetDatabase::Select(nullptr);
    }

    vesk::TargetDatabase m_Target;
};
