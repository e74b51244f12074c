#include "cli/InfoDocument.h"

#include "cli/JsonWriter.h"
#include "cli/LogSummary.h"

namespace vesk {

namespace {

void WriteFile(JsonWriter& json, const LogInfo& info) {
    const ReadReport& report = info.m_Log.List().Report();
    json.Field("log", info.m_Path);
    json.Field("target", info.m_Log.m_TargetPath);
    json.Field("complete", info.m_Log.m_Ok);
    json.Field("error", info.m_Log.m_Error);
    json.Key("messages");
    json.BeginArray();
    for (const std::string& message : info.m_Messages) json.Text(message);
    json.EndArray();
    json.NewLine();
    json.Field("form", FormName(report.m_Form));
    json.Field("version", report.m_Version);
    json.Field("rangeBegin", report.m_RangeStart);
    json.Field("rangeEnd", report.m_RangeEnd);
}

void WriteClock(JsonWriter& json, const McuJobList& list) {
    const HeaderInfo& layout = list.Report().m_Info;
    json.NewLine();
    json.Field("clock", ClockName(list));
    json.Field("wrap", layout.m_Wrap);
    json.Field("ratio", static_cast<double>(layout.m_Ratio));
    json.Field("frameNumbers", layout.m_IsKaldo ? layout.m_HasKaldoFrameNo : layout.m_HasFrameNo);
    json.Field("recordBytes", layout.m_JobSize);
    json.Field("taskOverhead", list.m_TaskOverhead);
    json.Field("functionOverhead", list.m_FunctionOverhead);
}

void WriteCounts(JsonWriter& json, const McuJobList& list) {
    const ReadReport& report = list.Report();
    json.NewLine();
    json.Field("records", report.m_Records);
    json.Field("ignoredRecords", report.m_IgnoredRecords);
    json.Field("unmatchedExits", report.m_UnmatchedExits);
    json.Field("lossPackets", report.m_LossPackets);
    json.Field("droppedPackets", report.m_DroppedPackets);
    json.Field("cutOffBytes", report.m_CutOffBytes);
    json.NewLine();
    json.Field("endTime", list.m_EndTime);
    json.Field("idleTotal", list.m_IdleTotal);
    json.Field("jobs", list.size());
    json.Field("segments", list.m_CustomJobs.size());
    json.Field("calls", CountAll(list.m_CustomJobsCS));
    json.Field("marks", list.m_SourceMarks.size());
    json.Field("hardwareEvents", CountAll(list.m_HWJobs));
    json.Field("losses", list.m_PDIInfos.size());
    json.Field("samples", list.m_ExtraInfoNum > 0 ? list.m_ExtraInfos.size() : 0);
    json.Field("memory", MemoryOf(list));
}

void WriteExtraValues(JsonWriter& json, const McuJobList& list) {
    json.NewLine();
    json.Key("extraValues");
    json.BeginArray();
    for (std::size_t i = 0; i < list.m_ExtraNames.size(); ++i) {
        json.BeginArray();
        json.Name(list.m_ExtraNames[i].Str());
        json.Number(static_cast<std::uint32_t>(list.m_ExtraMin[i]));
        json.Number(static_cast<std::uint32_t>(list.m_ExtraMax[i]));
        json.EndArray();
    }
    json.EndArray();
}

void WriteNames(JsonWriter& json, const char* key, const std::vector<NameSummary>& names) {
    json.NewLine();
    json.Key(key);
    json.BeginArray();
    for (const NameSummary& name : names) {
        json.NewLine();
        json.BeginArray();
        json.Name(name.m_Name);
        json.Number(name.m_Count);
        json.Number(name.m_Total);
        json.EndArray();
    }
    json.EndArray();
}

void WriteMarkNames(JsonWriter& json, const McuJobList& list) {
    json.NewLine();
    json.Key("markNames");
    json.BeginObject();
    for (const auto& [name, count] : list.m_SourceMarkNames) json.Field(name, count);
    json.EndObject();
}

}  // namespace

void WriteInfoDocument(OutputBuffer& out, const LogInfo& info) {
    const McuJobList& list = info.m_Log.List();
    JsonWriter json(out);
    json.BeginObject();
    WriteFile(json, info);
    WriteClock(json, list);
    WriteCounts(json, list);
    WriteExtraValues(json, list);
    WriteNames(json, "jobNames", SummarizeJobs(list));
    WriteNames(json, "functionNames", SummarizeFunctions(list));
    WriteMarkNames(json, list);
    json.EndObject();
    json.EndDocument();
}

const char* FormName(LogForm form) {
    constexpr const char* kNames[] = {"headerless", "header", "packets"};
    return kNames[static_cast<int>(form)];
}

const char* ClockName(const McuJobList& list) {
    return list.m_IsTQCNT ? "TQCNT" : "USCNT";
}

}  // namespace vesk
