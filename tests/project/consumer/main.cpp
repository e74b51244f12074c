#include <cstdio>
#include <string>

#include "database/TargetDatabase.h"
#include "log/McuJobList.h"
#ifdef WITH_LOADERS
#include "database/JsonTargetLoader.h"
#endif

// Prints the number of jobs in a log, and how many of them the target's tick interrupt has.
int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const std::string path = argv[1];
    std::string error;
    std::string tickName = "IRQ0x05";

    vesk::TargetDatabase target;
#ifdef WITH_LOADERS
    const std::string description = path.substr(0, path.rfind('.')) + ".target.json";
    if (!vesk::LoadTargetFromJson(description, target, error)) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    tickName = "IRQ_CTIRQ1";
#endif
    vesk::TargetDatabase::Select(&target);

    McuJobList log;
    log.registerDBCallback(vesk::TargetDatabase::LookUpFormat, vesk::TargetDatabase::LookUpEnum);
    if (!log.ReadFile(path, error)) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    std::printf("%d jobs, %d of %s\n", log.GetSize(), log.m_JobNames[tickName], tickName.c_str());
    return 0;
}
