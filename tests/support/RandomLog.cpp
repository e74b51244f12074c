#include "tests/support/RandomLog.h"

#include <algorithm>

#include "tests/support/Dice.h"
#include "tests/support/RandomHeader.h"
#include "tests/support/RandomRecords.h"

namespace vesk {

namespace {

// Everything about one random log, made part by part.
class RandomLogMaker {
public:
    RandomLogMaker(std::uint64_t seed, int records) : m_Dice(seed), m_Records(records) {}
    RandomLog Make();

private:
    void FillDatabase();
    void FillClock();
    void FillInterrupts();
    void FillTaskNumbers();
    void MakeHeaderless();
    RecordLayout LayOutHeaderless();
    void MakeWithHeader();
    void MakeSplitInTwo(const std::string& header, const std::string& records);
    void PadToRecords(int version, std::uint32_t recordSize);
    void ChooseInterval(const RandomRecords& records, std::size_t recordsAt, std::size_t end);
    void CutOff();
    void MakeStrange();

    Dice m_Dice;
    const int m_Records;
    RandomLog m_Log;
    std::uint32_t m_Wrap = 0;
};

RandomLog RandomLogMaker::Make() {
    FillDatabase();
    if (m_Dice.OnceIn(60))
        MakeStrange();
    else if (m_Dice.Chance(25))
        MakeHeaderless();
    else
        MakeWithHeader();
    if (m_Dice.Chance(20)) CutOff();
    return m_Log;
}

void RandomLogMaker::FillDatabase() {
    if (!m_Dice.OnceIn(60)) FillClock();
    if (m_Dice.Chance(75)) FillInterrupts();
    if (m_Dice.Chance(70)) FillTaskNumbers();
    auto& capability = m_Log.options.capability.m_Bytes;
    capability[10] = static_cast<std::uint8_t>(m_Dice.Of({0, 0, 1, 2}));
    capability[17] = static_cast<std::uint8_t>(m_Dice.Of({0, 0, 1, 255}));
    m_Log.options.tickIRQ = m_Dice.OnceIn(4) ? m_Dice.Of({-1, 126, 300}) : m_Dice.Between(0, 5);
    m_Log.options.featureLevel = m_Dice.OnceIn(4) ? m_Dice.Of({0, 3, 5}) : 4;
}

void RandomLogMaker::FillClock() {
    EnumContent clock;
    m_Wrap = m_Dice.Of({1000U, 65536U, 1U << 20, 1U << 30, 0xFFFFFFFFU});
    const auto [rate, origin] = m_Dice.Of<std::pair<int, int>>({{1000000, 1083333},
                                                                {1000000, 1083333},
                                                                {1, 1},
                                                                {3, 1},
                                                                {1, 3},
                                                                {-2, -7},
                                                                {7, 2000000000}});
    if (!m_Dice.OnceIn(80)) clock.Add("VESK_Clock_Wrap", static_cast<std::int32_t>(m_Wrap));
    if (!m_Dice.OnceIn(80)) clock.Add("VESK_Clock_Origin_Rate", m_Dice.OnceIn(80) ? 0 : origin);
    if (!m_Dice.OnceIn(80)) clock.Add("VESK_Clock_Rate", m_Dice.OnceIn(80) ? -rate : rate);
    if (!m_Dice.OnceIn(80))
        clock.Add("VESK_TimeStamp_Ratio", m_Dice.Of({1, 7, 100, 5000, 5000, 1 << 20}));
    m_Log.database.m_Enums["Trawler_VESK_Clock"] = clock;
}

void RandomLogMaker::FillInterrupts() {
    EnumContent codes;
    for (int code : {0, 2, 3, 5, 100, 127, 128, 200}) {
        std::string name = m_Dice.OnceIn(3) ? "" : "Enum_";
        name += "TIMER" + std::to_string(code);
        if (!m_Dice.OnceIn(3)) name += "_CODE";
        if (m_Dice.Chance(60)) codes.Add(name, code);
    }
    if (m_Dice.Chance(60)) codes.Add("Enum_IRQ_CTIRQ1_CODE", m_Dice.Of({0, 1, 2, 3, 4, 300}));
    if (m_Dice.Chance(90)) codes.Add("Enum_IRQ_Code_End", m_Dice.Of({4, 64, 128, 1000, -1}));
    codes.m_Width = m_Dice.Of({1, 2, 4});
    m_Log.database.m_Enums["Irq_Code_Def_Enum"] = codes;
}

void RandomLogMaker::FillTaskNumbers() {
    EnumContent tasks;
    tasks.Add("IDLE", 5);
    tasks.Add("LATER", 5);
    tasks.Add("MOD_L1", 0x112);
    if (m_Dice.Chance(50)) tasks.Add("NAMED_MAIN", 0x4E49414D);
    m_Log.database.m_Enums["module_type"] = tasks;
}

void RandomLogMaker::MakeHeaderless() {
    m_Log.form = "headerless";
    RandomRecords records(m_Dice, LayOutHeaderless());
    m_Log.bytes = records.Make(m_Records);
    ChooseInterval(records, 0, m_Log.bytes.size());
}

RecordLayout RandomLogMaker::LayOutHeaderless() {
    RecordLayout layout;
    if (m_Dice.OnceIn(10)) return layout;  // no structure: plain records with a frame number
    const bool isMicro = m_Log.options.capability.LogsMicroseconds() != m_Dice.OnceIn(25);
    layout.isMicro = isMicro;
    layout.wrap = m_Wrap;
    DataFormat format;
    format.m_Fields = {{"contextID", 0, 4}};
    if (isMicro)
        format.m_Fields.push_back({m_Dice.OnceIn(60) ? "CNT" : "USCNT", 4, 4});
    else
        format.m_Fields.insert(format.m_Fields.end(), {{"TQCNT", 4, 2}, {"TQWrap", 6, 2}});
    std::int32_t offset = 8;
    const auto addValues = [&](std::uint32_t& bytes) {
        for (std::uint32_t count = m_Dice.Below(4); count > 0; --count, offset += 4, bytes += 4)
            format.m_Fields.push_back({"value" + std::to_string(offset), offset, 4});
    };
    addValues(layout.before);
    layout.hasFrame = m_Dice.Chance(75);
    if (layout.hasFrame) {
        format.m_Fields.push_back({"frameNo", offset, 4});
        offset += 4;
        addValues(layout.after);
    }
    format.Size = offset + (m_Dice.OnceIn(5) ? 2 : 0);
    m_Log.database.m_Formats["SA_LoggingNode_T"] = format;
    return layout;
}

void RandomLogMaker::MakeWithHeader() {
    const int version = m_Dice.Of({1, 2, 3, 3, 0, -5, m_Dice.OnceIn(6) ? 4 : 1});
    const bool hasVersionField = (version != 1 && version != 2) || m_Dice.Chance(50);
    RandomHeader header(m_Dice, version, m_Wrap);
    m_Log.form = header.Form();
    std::string start = hasVersionField ? "VESKBINV" : version == 1 ? "VESK_BIN" : "VESKBIN2";
    if (hasVersionField) PutNumber(start, version);
    start += header.Make();
    RandomRecords records(m_Dice, header.Layout());
    const std::string recordBytes = records.Make(m_Records);
    if (m_Dice.OnceIn(12)) {
        MakeSplitInTwo(start, recordBytes);
        ChooseInterval(records, 0, recordBytes.size());
        return;
    }
    m_Log.bytes = start;
    PadToRecords(version, 12 + header.Layout().after);
    const std::size_t recordsAt = m_Log.bytes.size();
    m_Log.bytes += recordBytes;
    ChooseInterval(records, recordsAt, m_Log.bytes.size());
}

void RandomLogMaker::MakeSplitInTwo(const std::string& header, const std::string& records) {
    m_Log.form += ", header in another file";
    m_Log.headerFile = m_Dice.OnceIn(15) ? "no identifier" : header;
    m_Log.bytes = records;
}

void RandomLogMaker::PadToRecords(int version, std::uint32_t recordSize) {
    if (version != 2 && version != 3) return;
    const std::size_t recordsAt = version == 2 ? 512 : 1036;
    if (version == 2 && m_Dice.Chance(60)) {
        const std::int64_t records = m_Dice.Between(0, m_Records);
        m_Log.bytes += "WHCP";
        PutNumber(m_Log.bytes, m_Dice.OnceIn(4)
                                   ? m_Dice.Of<std::int64_t>({0, 512, 513, -1, 1000000000})
                                   : 512 + records * recordSize);
    }
    while (m_Log.bytes.size() < recordsAt) m_Log.bytes += static_cast<char>(m_Dice.Below(256));
}

void RandomLogMaker::ChooseInterval(const RandomRecords& records, std::size_t recordsAt,
                                    std::size_t end) {
    if (!m_Dice.OnceIn(7)) return;
    const auto position = [&] {
        const auto count = static_cast<std::uint32_t>(records.Starts().size());
        const std::uint32_t index = m_Dice.Below(count + 1);
        return index == count ? static_cast<std::int64_t>(end)
                              : records.Starts()[index] + static_cast<std::int64_t>(recordsAt);
    };
    SplitInterval interval{position(), position(), m_Dice.Below(3000), m_Dice.Below(1000)};
    if (interval.m_EndPos < interval.m_StartPos && !m_Dice.OnceIn(8))
        std::swap(interval.m_StartPos, interval.m_EndPos);
    m_Log.options.interval = interval;
    m_Log.form += ", interval";
}

void RandomLogMaker::CutOff() {
    std::string& file =
        !m_Log.headerFile.empty() && m_Dice.OnceIn(5) ? m_Log.headerFile : m_Log.bytes;
    const auto size = static_cast<std::uint32_t>(file.size());
    const std::uint32_t cut = m_Dice.OnceIn(10) ? m_Dice.Below(size + 1) : 1 + m_Dice.Below(20);
    file.resize(size - std::min(cut, size));
    m_Log.form += ", cut off";
}

void RandomLogMaker::MakeStrange() {
    static const std::string starts[] = {"",         "VESK",     "EMI_CONFIG",
                                         "EMI_CONF", "VESKBINV", "VESKBIN2"};
    m_Log.form = "strange";
    m_Log.bytes = starts[m_Dice.Below(std::size(starts))];
    for (std::uint32_t size = m_Dice.Below(600); size > 0; --size)
        m_Log.bytes += static_cast<char>(m_Dice.Below(256));
}

}  // namespace

RandomLog MakeRandomLog(std::uint64_t seed, int records) {
    return RandomLogMaker(seed, records).Make();
}

}  // namespace vesk
