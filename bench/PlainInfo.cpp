// The plain way to read a log, as a program of its own that benchmarks compare with: one call of
// the C library per field, names as strings, a look-up in a map per job.

#include <cstdio>
#include <filesystem>

#include "database/JsonTargetLoader.h"
#include "tests/support/PlainReader.h"

int main(int count, char** arguments) {
    if (count != 2) return 2;
    vesk::TargetDatabase database;
    std::string error;
    const auto description = std::filesystem::path(arguments[1]).replace_extension(".target.json");
    if (!vesk::LoadTargetFromJson(description.string(), database, error)) return 2;
    vesk::PlainOptions options;
    options.capability = database.m_Capability;
    const vesk::PlainLog log = vesk::ReadPlainly(arguments[1], database, options);
    std::printf("%zu jobs, %zu names, ends at %llu\n", log.jobs.size(), log.jobNames.size(),
                static_cast<unsigned long long>(log.endTime));
    return log.ok ? 0 : 3;
}
