#include "cli/DumpCommand.h"

#include "cli/JsonWriter.h"
#include "cli/LogOpener.h"

namespace vesk {

namespace {

void WriteJob(JsonWriter& json, const McuJob& job) {
    json.NewLine();
    json.BeginArray();
    json.Name(job.m_Name);
    json.Number(job.m_StartTime);
    json.Number(job.m_EndTime);
    json.Number(job.m_TimeStamp);
    json.Number(job.m_TimeCount);
    json.Number(job.m_Flags);
    json.EndArray();
}

void WriteJobs(JsonWriter& json, const std::vector<McuJob>& jobs) {
    json.BeginArray();
    for (const McuJob& job : jobs) WriteJob(json, job);
    json.EndArray();
}

void WriteJobsByName(JsonWriter& json, const std::map<std::string, std::vector<McuJob>>& jobs) {
    json.BeginObject();
    for (const auto& [name, ofName] : jobs) {
        json.NewLine();
        json.Key(name);
        WriteJobs(json, ofName);
    }
    json.EndObject();
}

// Extra values are kept as the bits of unsigned ones.
void WriteValues(JsonWriter& json, const std::vector<int>& values) {
    json.BeginArray();
    for (const int value : values) json.Number(static_cast<std::uint32_t>(value));
    json.EndArray();
}

void WriteSample(JsonWriter& json, const ExtraInfoRecord& sample) {
    json.NewLine();
    json.BeginArray();
    json.Number(sample.m_Time);
    WriteValues(json, sample.m_Values);
    json.Name(sample.m_Name);
    json.EndArray();
}

void WriteExtra(JsonWriter& json, const McuJobList& list) {
    json.BeginObject();
    json.Field("num", list.m_ExtraInfoNum);
    json.Key("names");
    json.BeginArray();
    for (const CString& name : list.m_ExtraNames) json.Name(name.Str());
    json.EndArray();
    json.Key("max");
    WriteValues(json, list.m_ExtraMax);
    json.Key("min");
    WriteValues(json, list.m_ExtraMin);
    json.Key("records");
    json.BeginArray();
    for (const ExtraInfoRecord& sample : list.m_ExtraInfos) WriteSample(json, sample);
    json.EndArray();
    json.EndObject();
}

void WriteLosses(JsonWriter& json, const std::vector<PDIInfo>& losses) {
    json.BeginArray();
    for (const PDIInfo& loss : losses) {
        json.NewLine();
        json.BeginArray();
        json.Name(loss.m_Name);
        json.Number(loss.m_LostSize);
        json.Number(loss.m_JobIndex);
        json.EndArray();
    }
    json.EndArray();
}

template <class Number>
void WriteNumbers(JsonWriter& json, const std::map<std::string, Number>& numbers) {
    json.BeginObject();
    for (const auto& [name, number] : numbers) json.Field(name, number);
    json.EndObject();
}

void WriteContainers(JsonWriter& json, const McuJobList& list) {
    const auto key = [&](const char* name) {
        json.NewLine();
        json.Key(name);
    };
    key("jobs"), WriteJobs(json, list);
    key("custom"), WriteJobs(json, list.m_CustomJobs);
    key("customCS"), WriteJobsByName(json, list.m_CustomJobsCS);
    key("sourceMarks"), WriteJobs(json, list.m_SourceMarks);
    key("hw"), WriteJobsByName(json, list.m_HWJobs);
    key("extra"), WriteExtra(json, list);
    key("pdi"), WriteLosses(json, list.m_PDIInfos);
    key("jobNames"), WriteNumbers(json, list.m_JobNames);
    key("customNames"), WriteNumbers(json, list.m_CustomNames);
    key("sourceMarkNames"), WriteNumbers(json, list.m_SourceMarkNames);
}

void WriteDocument(JsonWriter& json, const LogOpener& log) {
    const McuJobList& list = log.List();
    json.BeginObject();
    json.Field("ok", log.m_Ok);
    json.Field("error", log.m_Error);
    WriteContainers(json, list);
    json.NewLine();
    json.Field("idleTotal", list.m_IdleTotal);
    json.Field("endTime", list.m_EndTime);
    json.Field("isTQCNT", list.m_IsTQCNT);
    json.Field("isKaldo", list.m_IsKaldo);
    json.Field("taskOverhead", list.m_TaskOverhead);
    json.Field("functionOverhead", list.m_FunctionOverhead);
    json.EndObject();
    json.EndDocument();
}

}  // namespace

ExitCode RunDump(const Options& options, Terminal& terminal) {
    OutputFile out(options.m_Output.m_Path, options.m_Output.WhatToDoWithFiles());
    LogOpener log(options.m_Input, terminal);
    const ExitCode code = log.Read();
    log.Explain();
    JsonWriter json(out.Buffer());
    WriteDocument(json, log);
    out.Commit();
    return code;
}

}  // namespace vesk
