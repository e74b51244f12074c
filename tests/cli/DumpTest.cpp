#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/cli/SmallLog.h"
#include "tests/cli/VeskFolder.h"

namespace {

using nlohmann::json;

json Dump(const VeskFolder& folder, const std::string& arguments, int code) {
    const ProgramRun run = folder.Vesk("dump " + arguments);
    EXPECT_EQ(run.code, code) << run.err;
    return json::parse(run.out);
}

TEST(Dump, HoldsAllThatAReadYields) {
    VeskFolder folder;
    folder.WriteLog("small", SmallLog());
    json expected = json::parse(R"json({
        "ok": true, "error": "",
        "jobs": [["MAIN", 1, 51, 7, 100, 0], ["IRQ0x03", 51, 64, 7, 150, 0],
                 ["MAIN", 64, 5104, 7, 163, 0], ["IDLE", 5104, 5161, 8, 203, 0],
                 ["a\u00e9\"\n", 5161, 5261, 8, 260, 0]],
        "custom": [["fun", 11, 71, 7, 110, 7]],
        "customCS": {"fun": [["fun", 11, 71, 0, 0, 5]]},
        "sourceMarks": [["m,k", 81, 81, 7, 180, 0]],
        "hw": {"dma": [["dma", 91, 96, 7, 190, 0]]},
        "pdi": [],
        "jobNames": {"IDLE": 1, "IRQ0x03": 1, "MAIN": 2, "a\u00e9\"\n": 1},
        "customNames": {"fun": 60}, "sourceMarkNames": {"m,k": 1},
        "idleTotal": 57, "endTime": 5261, "isTQCNT": true, "isKaldo": false,
        "taskOverhead": 0, "functionOverhead": 0})json");
    json& extra = expected["extra"];
    extra = {{"num", 2}, {"names", {"EMI", "EMI"}}, {"min", {5, 50}}, {"max", {6, 4000000000}}};
    extra["records"] = {{1, {5, 50}, "MAIN"}, {11, {5, 50}, "MAIN"}};
    extra["records"].push_back({51, {6, 4000000000}, "IRQ0x03"});
    for (const int time : {64, 71, 81, 91, 96})
        extra["records"].push_back({time, {6, 4000000000}, "MAIN"});
    extra["records"].push_back({5104, {6, 4000000000}, "IDLE"});
    extra["records"].push_back({5161, {6, 4000000000}, "a\u00E9\"\n"});
    EXPECT_EQ(Dump(folder, "small.bin", 0), expected);
}

TEST(Dump, KeepsFrameNumbersAndOverheadsSigned) {
    VeskFolder folder;
    folder.WriteLog("signed", LogBuilder()
                                  .WithHeader(1)
                                  .Extra(vesk::HeaderItem::TaskOverhead(0xFE))
                                  .Frame(-1)
                                  .Task("MAIN", 100));
    const json dump = Dump(folder, "signed.bin", 0);
    EXPECT_EQ(dump["taskOverhead"], -2);
    EXPECT_EQ(dump["jobs"][0], json({"MAIN", 1, 101, -1, 100, 0}));
}

TEST(Dump, IsWrittenForALogThatIsRefused) {
    VeskFolder folder;
    folder.Write("short.bin", "VESK");
    folder.Write("old.bin", "EMI_CONFIG");
    const struct {
        const char* arguments;
        const char* error;
    } cases[] = {
        {"missing.bin", "Could not open the file"},
        {"short.bin", ""},
        {"old.bin", "Please use Trawler V3.0933.01 for this bin file with special format."},
        {"short.bin --target short.bin", "cannot use the target description"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.arguments);
        const json dump = Dump(folder, c.arguments, 3);
        EXPECT_EQ(dump["ok"], false);
        EXPECT_EQ(dump["error"].get<std::string>().substr(0, std::strlen(c.error)), c.error);
        EXPECT_TRUE(dump["jobs"].empty());
    }
}

TEST(Dump, OfAPartialReadHoldsWhatCameBeforeTheError) {
    VeskFolder folder;
    folder.WriteLog("broken", LogBuilder()
                                  .Packets()
                                  .Uscnt(0x8000000, 1000000, 1000000)
                                  .Task("MAIN", 100)
                                  .Task("IDLE", 150)
                                  .Packet(0x77, 0, "junk"));
    const json dump = Dump(folder, "broken.bin", 4);
    EXPECT_EQ(dump["ok"], false);
    EXPECT_NE(dump["error"], "");
    EXPECT_EQ(dump["jobNames"], json({{"MAIN", 1}, {"IDLE", 1}}));
    EXPECT_EQ(folder.Vesk("jobs broken.bin").code, 4);
    EXPECT_EQ(folder.Vesk("info broken.bin").code, 4);
}

TEST(Info, IsADocumentOnRequest) {
    VeskFolder folder;
    folder.WriteLog("small", SmallLog());
    const ProgramRun run = folder.Vesk("info small.bin --format json");
    const json info = json::parse(run.out);
    EXPECT_EQ(info["form"], "header");
    EXPECT_EQ(info["rangeBegin"], 72);
    EXPECT_EQ(info["records"], 10);
    EXPECT_EQ(info["extraValues"], json({{"EMI", 5, 6}, {"EMI", 50, 4000000000}}));
    EXPECT_EQ(
        info["jobNames"],
        json({{"MAIN", 2, 5090}, {"a\u00E9\"\n", 1, 100}, {"IDLE", 1, 57}, {"IRQ0x03", 1, 13}}));
    EXPECT_EQ(info["functionNames"], json::array({{"fun", 1, 60}}));
    EXPECT_EQ(info["markNames"], json({{"m,k", 1}}));
}

}  // namespace
