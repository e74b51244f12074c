// Files that are cut, damaged or lie about sizes: each read ends, soon and in little memory, with
// a complete list or with a text.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "database/JsonTargetLoader.h"
#include "tests/log/LogBytes.h"
#include "tests/support/LogBuilder.h"
#include "tests/support/TemporaryFile.h"

namespace vesk {
namespace {

#if defined(__SANITIZE_ADDRESS__)  // whose own memory would count
constexpr long kMostGrowthKiB = LONG_MAX;
#else
constexpr long kMostGrowthKiB = 64 * 1024;
#endif

const char* const kSamples[] = {"esp32_ticks", "pacman_packets", "wget_headerless"};

// A real log, its target in place.
class Sample {
public:
    explicit Sample(const std::string& name) {
        const std::string base = std::string(VESK_SAMPLES_DIR) + "/" + name;
        std::ifstream stream(base + ".bin", std::ios::binary);
        m_Bytes.assign(std::istreambuf_iterator<char>(stream), {});
        std::string error;
        EXPECT_TRUE(LoadTargetFromJson(base + ".target.json", m_Target, error)) << error;
        TargetDatabase::Select(&m_Target);
        CurrentHostValues().m_Capability = m_Target.m_Capability;
    }
    ~Sample() {
        TargetDatabase::Select(nullptr);
        CurrentHostValues() = HostValues{};
    }
    Sample(const Sample&) = delete;
    Sample& operator=(const Sample&) = delete;

    std::string m_Bytes;

private:
    TargetDatabase m_Target;
};

void ExpectAscending(const McuJobList& list) {
    for (std::size_t i = 1; i < list.size(); ++i)
        ASSERT_LE(list[i - 1].m_StartTime, list[i].m_StartTime);
    for (const ExtraInfoRecord& sample : list.m_ExtraInfos)
        ASSERT_EQ(sample.m_Values.size(), static_cast<std::size_t>(list.m_ExtraInfoNum));
}

// Reads a file; its list is complete, or a text says what is wrong. Fewer than 8 bytes are refused
// without one.
void ExpectAnOutcome(McuJobList& list, const std::string& path, std::size_t size) {
    std::string error;
    if (!list.ReadFile(path, error))
        EXPECT_NE(error.empty(), size >= 8);
    else
        EXPECT_TRUE(error.empty() || error == "Get some unmatched init data!") << error;
    EXPECT_TRUE(list.m_ParsingInfos.empty());
    ExpectAscending(list);
}

class Hostile : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        ASSERT_TRUE(
            m_List.registerDBCallback(TargetDatabase::LookUpFormat, TargetDatabase::LookUpEnum));
    }

    Sample m_Sample{GetParam()};
    McuJobList m_List;
};

TEST_P(Hostile, EveryPrefixHasAnOutcome) {
    const TemporaryFile file(m_Sample.m_Bytes);
    std::vector<std::size_t> lengths;
    for (std::size_t length = 0; length < m_Sample.m_Bytes.size();
         length += length < 2000 ? 1 : 997)
        lengths.push_back(length);
    std::size_t jobs = SIZE_MAX;
    for (auto length = lengths.rbegin(); length != lengths.rend(); ++length) {
        SCOPED_TRACE(*length);
        std::filesystem::resize_file(file.Path(), *length);
        ExpectAnOutcome(m_List, file.Path(), *length);
        ASSERT_LE(m_List.size(), jobs);  // a shorter log has no more of them
        jobs = m_List.size();
        if (HasFailure()) break;
    }
    EXPECT_EQ(jobs, 0u);
}

TEST_P(Hostile, EveryChangeOfAFirstByteHasAnOutcome) {
    constexpr std::size_t kRecordsBegin = 1036, kSomeRecords = 4096;
    std::string bytes = m_Sample.m_Bytes.substr(0, kRecordsBegin + kSomeRecords);
    const TemporaryFile file(bytes);
    std::fstream stream(file.Path(), std::ios::binary | std::ios::in | std::ios::out);
    const auto put = [&](std::size_t at, char value) {
        stream.seekp(static_cast<std::streamoff>(at));
        stream.put(value).flush();
    };
    for (std::size_t at = 0; at < 256; ++at) {
        const char was = bytes[at];
        for (const int value : {was ^ 0xFF, was + 1, 0, 0x7F}) {
            SCOPED_TRACE(testing::Message() << "byte " << at << " becomes " << (value & 0xFF));
            put(at, static_cast<char>(value));
            ExpectAnOutcome(m_List, file.Path(), bytes.size());
        }
        put(at, was);
        if (HasFailure()) break;
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, Hostile, testing::ValuesIn(kSamples),
                         [](const auto& sample) { return std::string(sample.param); });

struct Cost {
    bool m_Exited = false;
    double m_Seconds = 0;  // of the processor
    long m_Growth = 0;     // of memory in KiB
};

long PeakKiB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

// What it costs a process of its own to do something. It is stopped after 20 seconds.
template <class Action>
Cost CostOf(Action action) {
    int growthOf[2];
    if (pipe(growthOf) != 0) return {};
    const pid_t child = fork();
    if (child == 0) {
        alarm(20);
        const long before = PeakKiB();
        action();
        const long growth = PeakKiB() - before;
        const bool told = write(growthOf[1], &growth, sizeof growth) == sizeof growth;
        _exit(told && !testing::Test::HasFailure() ? 0 : 1);
    }
    close(growthOf[1]);
    Cost cost;
    int status = 0;
    rusage usage{};
    if (read(growthOf[0], &cost.m_Growth, sizeof cost.m_Growth) != sizeof cost.m_Growth)
        cost.m_Growth = -1;
    close(growthOf[0]);
    wait4(child, &status, 0, &usage);
    cost.m_Exited = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    for (const timeval& time : {usage.ru_utime, usage.ru_stime})
        cost.m_Seconds +=
            static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    return cost;
}

std::string Filled(std::string bytes, std::size_t size = 1024) {
    bytes.resize(std::max(bytes.size(), size), 'T');
    return bytes;
}

std::string Repeated(const std::string& item, std::size_t times) {
    std::string items;
    for (std::size_t i = 0; i < times; ++i) items += item;
    return items;
}

std::string KaldoLog(std::uint32_t jobSize, const std::string& moreItems, std::string records) {
    const std::string fields = Item(0x10000003, 4) + Item(0x1000000D, 4);
    std::string bytes =
        RawHeader{"VESKBINV" + Words({3}), 0x10000000, jobSize, fields + moreItems}.Bytes();
    bytes.resize(1036);
    return bytes + records;
}

TEST(HostileFile, ClaimsOfAbsurdSizesCostNothing) {
    const std::string three = "VESKBINV" + Words({3});
    const std::string largest = Item(0x103, 1 << 20);
    const std::string packet("\xC8\0?", 3);
    const struct {
        const char* what;
        std::string bytes;
    } cases[] = {
        {"an item of 4 GiB", Filled(RawHeader{.m_Items = Item(0x103, ~0U)}.Bytes())},
        {"an unknown item of 4 GiB", Filled(RawHeader{.m_Items = Item(0x777, ~0U)}.Bytes())},
        {"an item of 1 MiB", Filled(RawHeader{.m_Items = largest}.Bytes())},
        {"many of them", Filled(RawHeader{.m_Items = Repeated(largest, 50)}.Bytes())},
        {"two of them in a plug-in's name",
         Filled(RawHeader{.m_Items = Repeated(Item(0x10006, 1 << 20, "NOSUCH"), 2)}.Bytes())},
        {"a job size of 4 GiB", Filled(RawHeader{three, 1, ~0U}.Bytes(), 2060)},
        {"a job size of 0", Filled(RawHeader{three, 1, 0}.Bytes(), 2060)},
        {"a job size that wraps", Filled(RawHeader{three, 1, ~0U, Item(0x103, 4)}.Bytes(), 2060)},
        {"packets of 4 GiB", KaldoLog(~0U, "", packet + Words({~0U - 1}))},
        {"packets of 2 GiB in a record of 2 GiB",
         KaldoLog(1U << 31, "", packet + Words({1U << 31}))},
        {"values throughout a record of 1 MiB",
         KaldoLog(8 + (1 << 20), largest, packet + Words({8 + (1 << 20)}))},
        {"init data of 4 GiB", Filled(RawHeader{.m_Init = Words({0x103, ~0U})}.Bytes())},
        {"an init block of 4 GiB", Filled(RawHeader{.m_InitBytes = ~0U}.Bytes())},
        {"empty init data without an end",
         RawHeader{.m_Init = Repeated(Init(0x103, ""), 100), .m_InitBytes = ~0U}.Bytes()},
        {"4 GiB of items", Filled(RawHeader{.m_ItemBytes = 0xFFFFFFF0}.Bytes())},
        {"a frame origin far back",
         Filled(RawHeader{"VESKBIN2", 0x101, 8, "", "", Words({~0U, ~0U})}.Bytes() + "WHCP" +
                Words({~0U, 0x7FFFFFFF}))},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        TargetDatabase target = LogBuilder().Uscnt(1000, 1, 1).WithoutFrameNo().Database();
        const Cost cost = CostOf([&] {
            const ReadResult read = Read(c.bytes, target, {});
            EXPECT_NE(read.ok, !read.error.empty());
            UnitLister lister(1);
            Read(c.bytes, target, {}, [&](McuJobList& jobs) { jobs.SetRangeChooser(&lister); });
            EXPECT_LT(lister.m_Units.size(), c.bytes.size());
        });
        EXPECT_TRUE(cost.m_Exited);
        EXPECT_LT(cost.m_Seconds, 2.0);
        EXPECT_LT(cost.m_Growth, kMostGrowthKiB);
    }
}

// Task records whose ids are chosen against a hash table with the usual multiplier: the products
// count up from 0, so all ids would share one slot.
LogBuilder IdsThatShareASlot() {
    constexpr std::uint32_t kInverse = 0x0E8B2F51;
    static_assert(kInverse * 0x9E3779B1 == 1);
    LogBuilder log;
    for (std::uint32_t i = 0; i < 80000; ++i)
        if ((i * kInverse & 0xFF) < 0x80) log.Id(i * kInverse, i % 5000);
    return log;
}

// Each is a short file that asks for work out of proportion to its size.
TEST(HostileFile, ManySmallThingsStayInProportion) {
    LogBuilder open, unmatched, names;
    const LogBuilder sharing = IdsThatShareASlot();
    for (std::uint32_t i = 0; i < 40000; ++i) {
        open.Enter("f", i % 2);
        unmatched.Task(i % 2 ? "A" : "B", i).Enter("f", i).Leave("f", i);
        names.Id(i * 2654435761U, i);
    }
    for (std::uint32_t i = 0; i < 40000; ++i) open.Leave(i % 2 ? "f" : "g", i % 2);
    LogBuilder losses = LogBuilder().Packets();
    for (std::uint32_t i = 0; i < 40000; ++i)
        losses.Enter({static_cast<char>(i % 200 + 1), static_cast<char>(i / 200 + 1)}, i).Loss(1);
    for (std::uint32_t i = 0; i < 40000; ++i) losses.Loss(1).Task("A", 40000 + i);
    const struct {
        const char* what;
        const LogBuilder& log;
    } cases[] = {{"calls that nest", open},
                 {"calls in passing", unmatched},
                 {"losses among many functions", losses},
                 {"ids", names},
                 {"ids made to share a slot", sharing}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const std::string bytes = c.log.Bytes();
        const Cost cost = CostOf([&] {
            const ReadResult read = Read(bytes, c.log.Database(), c.log.Host());
            EXPECT_TRUE(read.ok) << read.error;
        });
        EXPECT_TRUE(cost.m_Exited);
        EXPECT_LT(cost.m_Seconds, 2.0);
        EXPECT_LT(cost.m_Growth, kMostGrowthKiB);
    }
}

}  // namespace
}  // namespace vesk
