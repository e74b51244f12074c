#include "tests/support/LogBuilder.h"

#include <algorithm>
#include <stdexcept>

#include "platform/HeadlessUserInterface.h"
#include "simulator/RecordIds.h"
#include "simulator/TargetDescription.h"
#include "tests/support/TemporaryFile.h"

namespace record = vesk::record;

LogBuilder& LogBuilder::WithHeader(std::int32_t version) {
    m_Format.SetHeader(version);
    return *this;
}

LogBuilder& LogBuilder::WithIdentifier(const std::string& identifier, std::int32_t version) {
    m_Format.m_Identifier = identifier;
    m_Format.m_Version = version;
    return *this;
}

LogBuilder& LogBuilder::Uscnt(std::uint32_t wrap, std::uint32_t originRate, std::uint32_t rate) {
    m_Format.m_IsTqcnt = false;
    m_Format.m_Wrap = wrap;
    m_Format.m_OriginRate = originRate;
    m_Format.m_Rate = rate;
    return *this;
}

LogBuilder& LogBuilder::Packets() {
    m_Format.m_IsPackets = true;
    m_Format.m_IsTqcnt = false;
    return m_Format.HasHeader() ? *this : WithHeader(3);
}

LogBuilder& LogBuilder::WithoutFrameNo() {
    m_Format.m_HasFrameNo = false;
    return *this;
}

LogBuilder& LogBuilder::ComputedFrames(std::uint32_t first, std::uint32_t baseCount,
                                       std::uint32_t countsPerFrame) {
    m_Format.m_FirstFrameNo = first;
    m_Format.m_FrameBaseCount = baseCount;
    m_Format.m_CountsPerFrame = countsPerFrame;
    return WithoutFrameNo();
}

LogBuilder& LogBuilder::ReturnsToTask() {
    m_Format.m_ReturnMode = vesk::ReturnMode::kLastTask;
    return *this;
}

LogBuilder& LogBuilder::Whcp(std::int64_t length) {
    m_Format.m_WhcpLength = length;
    return *this;
}

LogBuilder& LogBuilder::Extra(const vesk::HeaderItem& item) {
    m_Format.m_Items.push_back(item);
    return *this;
}

LogBuilder& LogBuilder::Extra(std::uint32_t beforeFrameNo, std::uint32_t behindFrameNo) {
    m_Format.m_ValuesBeforeFrameNo = beforeFrameNo;
    m_Format.m_ValuesBehindFrameNo = behindFrameNo;
    return *this;
}

LogBuilder& LogBuilder::Capability(std::size_t byte, std::uint8_t value) {
    m_Capabilities.emplace_back(byte, value);
    return *this;
}

LogBuilder& LogBuilder::Enumerator(const std::string& enumeration, const std::string& name,
                                   std::int32_t value) {
    m_Enumerators.push_back({enumeration, name, value});
    return *this;
}

LogBuilder& LogBuilder::TickIrq(std::int32_t code) {
    m_Host.m_TickIRQ = code;
    return *this;
}

LogBuilder& LogBuilder::FeatureLevel(std::int32_t level) {
    m_Host.m_FeatureLevel = level;
    return *this;
}

LogBuilder& LogBuilder::Frame(std::int32_t number) {
    m_Stamp.m_FrameNo = number;
    return *this;
}

LogBuilder& LogBuilder::FrameLength(std::uint16_t counts) {
    m_Stamp.m_FrameLength = counts;
    return *this;
}

LogBuilder& LogBuilder::Values(std::vector<std::uint32_t> words) {
    m_Values = std::move(words);
    return *this;
}

LogBuilder& LogBuilder::Task(const std::string& name, std::uint32_t count) {
    return Id(record::Task(name), count);
}

LogBuilder& LogBuilder::TaskNumber(std::uint32_t number, std::uint32_t count) {
    return Id(number, count);
}

LogBuilder& LogBuilder::Irq(std::uint32_t number, std::uint32_t count) {
    return Id(record::Irq(number), count);
}

LogBuilder& LogBuilder::Return(std::uint32_t count) {
    return Id(record::kReturn, count);
}

LogBuilder& LogBuilder::Resume(std::uint32_t count) {
    return Id(record::kResume, count);
}

LogBuilder& LogBuilder::Enter(const std::string& function, std::uint32_t count) {
    return Id(record::Enter(function), count);
}

LogBuilder& LogBuilder::Leave(const std::string& function, std::uint32_t count) {
    return Id(record::Leave(function), count);
}

LogBuilder& LogBuilder::Mark(const std::string& name, std::uint32_t count) {
    return Id(record::Mark(name), count);
}

LogBuilder& LogBuilder::HwOn(const std::string& event, std::uint32_t count) {
    return Id(record::HwOn(event), count);
}

LogBuilder& LogBuilder::HwOff(const std::string& event, std::uint32_t count) {
    return Id(record::HwOff(event), count);
}

LogBuilder& LogBuilder::Id(std::uint32_t word, std::uint32_t count) {
    vesk::RecordStamp stamp = m_Stamp;
    stamp.m_Count = count;
    m_Steps.emplace_back([word, stamp, values = m_Values](vesk::LogWriter& writer) {
        writer.Record(word, stamp, values);
    });
    return *this;
}

LogBuilder& LogBuilder::Loss(std::uint32_t bytes) {
    m_Steps.emplace_back([bytes](vesk::LogWriter& writer) { writer.Loss(bytes); });
    return *this;
}

LogBuilder& LogBuilder::Packet(std::uint8_t id, std::int8_t sequence, const std::string& payload) {
    std::string bytes{static_cast<char>(id), static_cast<char>(sequence), '\0'};
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(payload.size() >> shift);
    return Raw(bytes + payload);
}

LogBuilder& LogBuilder::Raw(const std::string& bytes) {
    m_Steps.emplace_back([bytes](vesk::LogWriter& writer) { writer.Raw(bytes); });
    return *this;
}

LogBuilder& LogBuilder::CutLastBytes(std::size_t number) {
    m_CutOff += number;
    return *this;
}

std::string LogBuilder::Bytes() const {
    std::string bytes;
    vesk::LogWriter writer(m_Format, vesk::SinkTo(bytes));
    if (!writer.Header()) throw std::length_error("the header does not fit its room");
    for (const auto& step : m_Steps) step(writer);
    writer.Flush();
    bytes.resize(bytes.size() - std::min(bytes.size(), m_CutOff));
    return bytes;
}

vesk::TargetDatabase LogBuilder::Database() const {
    vesk::TargetDatabase database = vesk::DescribeTarget(m_Format);
    for (const auto& [byte, value] : m_Capabilities) database.m_Capability.m_Bytes.at(byte) = value;
    for (const Enumerated& one : m_Enumerators)
        database.m_Enums[one.m_Enumeration].Add(one.m_Name, one.m_Value);
    return database;
}

vesk::HostValues LogBuilder::Host() const {
    vesk::HostValues host = m_Host;
    host.m_Capability = Database().m_Capability;
    return host;
}

namespace {

// Database and host values of one read, and the former ones again afterwards.
class TargetInPlace {
public:
    TargetInPlace(vesk::TargetDatabase& database, const vesk::HostValues& host)
        : m_Former(vesk::CurrentHostValues()) {
        vesk::TargetDatabase::Select(&database);
        vesk::CurrentHostValues() = host;
    }
    ~TargetInPlace() {
        vesk::TargetDatabase::Select(nullptr);
        vesk::CurrentHostValues() = m_Former;
    }
    TargetInPlace(const TargetInPlace&) = delete;
    TargetInPlace& operator=(const TargetInPlace&) = delete;

private:
    vesk::HostValues m_Former;
};

}  // namespace

ReadResult Read(const LogBuilder& log, const std::function<void(McuJobList&)>& prepare) {
    return Read(log.Bytes(), log.Database(), log.Host(), prepare);
}

ReadResult Read(const std::string& bytes, vesk::TargetDatabase database, vesk::HostValues host,
                const std::function<void(McuJobList&)>& prepare) {
    const TemporaryFile file(bytes);
    const TargetInPlace target(database, host);
    vesk::HeadlessUserInterface user;
    const vesk::ScopedUserInterface inPlace(user);
    ReadResult result;
    result.jobs.registerDBCallback(vesk::TargetDatabase::LookUpFormat,
                                   vesk::TargetDatabase::LookUpEnum);
    if (prepare) prepare(result.jobs);
    result.ok = result.jobs.ReadFile(file.Path(), result.error);
    result.messages = user.m_Messages;
    return result;
}
