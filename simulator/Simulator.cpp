#include "simulator/Simulator.h"

#include "simulator/SimulatedTarget.h"
#include "simulator/TargetDescription.h"
#include "simulator/TargetNames.h"

namespace vesk {

namespace {

constexpr std::uint32_t kQbitsPerFrame = 5000;
constexpr std::uint32_t kMicrosecondsPerFrame = 4615;
constexpr std::uint32_t kFirstFrameNo = 1000;
constexpr std::uint32_t kCountsBeforeWrap = 100000;  // so that a short log has a wrap as well

std::vector<std::string> CounterNames(std::uint32_t number) {
    constexpr std::array known{"CYCLES", "INSTR", "CMISS", "STALL", "BUSRD", "BUSWR"};
    std::vector<std::string> names;
    for (std::uint32_t i = 0; i < number; ++i)
        names.push_back(i < known.size() ? known[i] : "CNT" + std::to_string(i));
    return names;
}

bool IsHeaderless(const SimulatorOptions& options) {
    return options.m_Form == SimulatedForm::kHeaderless;
}

std::uint64_t FirstCount(const SimulatorOptions& options, const LogFormat& format) {
    return options.CountsMicroseconds() ? format.m_Wrap - kCountsBeforeWrap : 1234;
}

// One way to tell who runs behind interrupts for each kind of log.
AfterInterrupts AfterInterruptsOf(SimulatedForm form) {
    if (form == SimulatedForm::kVersion1) return AfterInterrupts::kResumeRecord;
    if (form == SimulatedForm::kHeaderless) return AfterInterrupts::kTaskRecord;
    return AfterInterrupts::kTaskIsKnown;
}

void SetExtraValues(LogFormat& format, const SimulatorOptions& options) {
    if (options.m_ExtraValues == 0) return;
    format.m_ValuesBeforeFrameNo = options.m_ExtraValues / 3;
    format.m_ValuesBehindFrameNo = options.m_ExtraValues - format.m_ValuesBeforeFrameNo;
    format.m_Items.push_back(HeaderItem::Counters(CounterNames(options.m_ExtraValues)));
    format.m_Items.push_back(HeaderItem::TwoRatios("CpuBusy", "CpuIrq"));
}

LogFormat FormatOf(const SimulatorOptions& options) {
    LogFormat format;
    if (!IsHeaderless(options)) {
        const bool isOld = options.m_Form == SimulatedForm::kVersion1;
        format.SetHeader(isOld ? 1 : options.m_Form == SimulatedForm::kVersion2 ? 2 : 3);
        format.m_Items = {HeaderItem::TaskOverhead(4), HeaderItem::FunctionOverhead(2)};
    }
    format.m_IsPackets = options.m_Form == SimulatedForm::kPackets;
    format.m_IsTqcnt = !options.CountsMicroseconds();
    format.m_HasFrameNo = !options.m_ComputesFrames;
    format.m_CountsPerFrame = format.m_IsTqcnt ? kQbitsPerFrame : kMicrosecondsPerFrame;
    const std::uint64_t first = FirstCount(options, format);
    format.m_FirstFrameNo = kFirstFrameNo;
    format.m_FrameBaseCount =
        static_cast<std::uint32_t>(first / format.m_CountsPerFrame * format.m_CountsPerFrame);
    if (AfterInterruptsOf(options.m_Form) == AfterInterrupts::kTaskIsKnown)
        format.m_ReturnMode = ReturnMode::kLastTask;
    SetExtraValues(format, options);
    return format;
}

}  // namespace

Simulator::Simulator(const SimulatorOptions& options)
    : m_Options(options), m_Format(FormatOf(options)) {}

bool Simulator::WriteLog(const ByteSink& sink) {
    LogWriter writer(m_Format, sink);
    if (!writer.Header()) return false;
    TargetClock clock{FirstCount(m_Options, m_Format), static_cast<std::int32_t>(kFirstFrameNo)};
    const bool hasRatios = m_Options.m_ExtraValues > 0 && !IsHeaderless(m_Options);
    TargetRecorder recorder(m_Format, writer, clock,
                            {m_Options.m_ExtraValues, hasRatios, m_Options.m_Seed + 1},
                            m_Options.m_Tasks);
    SimulatedTarget target(m_Options, AfterInterruptsOf(m_Options.m_Form),
                           m_Format.m_CountsPerFrame, clock, recorder);
    target.Run();
    m_Truth = recorder.Finish();
    return writer.Flush();
}

TargetDatabase Simulator::Database() const {
    TargetDatabase database = DescribeTarget(m_Format);
    EnumContent& irqs = database.m_Enums["Irq_Code_Def_Enum"];
    for (const SimulatedIrq& irq : kSimulatedIrqs)
        if (irq.m_Enumerator) irqs.Add(irq.m_Enumerator, static_cast<std::int32_t>(irq.m_Code));
    irqs.Add("Enum_IRQ_Code_End", static_cast<std::int32_t>(kSimulatedIrqEnd));
    return database;
}

void Simulator::WriteTargetDescription(std::ostream& out) const {
    vesk::WriteTargetDescription(Database(), out);
}

}  // namespace vesk
