#pragma once

#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "database/DataFormat.h"
#include "database/EnumContent.h"
#include "log/ExtraInfoRecord.h"
#include "log/ExtraParsingInfo.h"
#include "log/HeaderInfo.h"
#include "log/McuJob.h"
#include "log/PDIInfo.h"
#include "log/RangeChooser.h"
#include "log/ReadReport.h"
#include "platform/CString.h"

namespace vesk {
class DecodingPass;
class ExtraSampler;
struct DecoderSetup;
struct LogCensus;
}  // namespace vesk

// Everything that a log yields, and the reader that fills it. The base class is the job vector:
// all task and interrupt jobs in ascending start time. All times are QBit since the start of the
// log. Containers own their elements and do not change after a read, the visibility flags and the
// memory of the dialogs apart.
//
// Reading operations return true for a complete list. On false, text that explains it has been
// appended to the caller's error text, or none where the user gave the read up; Report() tells
// how far it got. True can come with a warning in the error text.
class McuJobList : public std::vector<McuJob> {
public:
    using FormatLookup = DataFormat* (*)(const std::string&);
    using EnumLookup = EnumContent* (*)(const std::string&);

    McuJobList() = default;
    McuJobList(const McuJobList&) = default;
    McuJobList& operator=(const McuJobList&) = default;
    virtual ~McuJobList() = default;

    // Both lookups into the target's database. Without either: false, and nothing changes.
    bool registerDBCallback(FormatLookup, EnumLookup);

    // --- Reading -------------------------------------------------------------------------------

    // Reads a log of any form from a file.
    bool ReadFile(std::string path, std::string& error);

    // Takes the header from one file and the records, from byte 0 on, from another.
    bool ReadFileWithAnotherHeader(const std::string& headerPath, const std::string& rawPath,
                                   std::string& error);

    // Stream behind identifier and version; closed in every case.
    bool ReadFileWithHeader(const std::string& path, std::FILE*, std::int32_t version,
                            std::string& error);

    // Parses the header into info and the extra-value tables. True: the stream stands behind the
    // init block. False: it is closed, and so are all plug-ins.
    bool ReadHeader(std::FILE*, HeaderInfo& info, std::int32_t version, std::string& error);
    bool ParsingHeaderFail(std::FILE*, std::string& error);

    // Fixes the byte range of a read, by way of the range chooser. A WHCP length above 512 moves
    // the frame origin back over the records before that length.
    bool GetSplitFileInfo(const std::string& path, std::FILE*, HeaderInfo& info,
                          std::int64_t& start, std::int64_t& end, std::int64_t whcpLength,
                          std::string& error);

    // Decodes records from where the stream stands; a record that begins exactly at end is still
    // read. Closes the stream in every case.
    bool ReadRawData(std::FILE*, HeaderInfo& info, std::int64_t end, std::string& error);

    // Names of interrupts by number, 0 to 127, and the name of the tick interrupt, which stays as
    // it was if its number has no name.
    void GetIRQName(std::map<int, std::string>& names, std::string& tickName);
    void GetTaskName(std::map<int, std::string>& names);

    // Always true: the reader has no version gate but that of ReadFile.
    bool GetVersion(int, int) const { return true; }

    // Who chooses the range of a read, and who follows it; borrowed, null for none. Both outlive
    // Clear.
    void SetRangeChooser(vesk::RangeChooser* chooser) { m_RangeChooser = chooser; }
    void SetProgress(vesk::ReadProgress progress) { m_Progress = std::move(progress); }

    const vesk::ReadReport& Report() const { return m_Report; }

    // --- Plug-ins ------------------------------------------------------------------------------

    CString GetParsingDllPath(const CString& baseName) const;
    bool InitParsingDllFunc(ExtraParsingInfo& info, const CString& baseName);
    int FileExist(const CString& path) const;

    // --- Prefix of a packet log ----------------------------------------------------------------

    static constexpr int GetKaldoPrefixHeaderSize() { return 1036; }
    // Writes the empty prefix: identifier, version 3 and 1024 zero bytes. Null does nothing.
    void WriteKaldoPrefixHeader(std::FILE*) const;

    // --- Looking things up ---------------------------------------------------------------------

    int GetSize() const { return static_cast<int>(size()); }

    // Copies the job at index; false, and no copy, if there is none.
    bool GetJob(std::int32_t index, McuJob& job) const;

    // Index of the last element that starts strictly before time, or 0 if even the first one does
    // not. False if there are no elements, or if time is past the last start and not below the
    // list's end time.
    bool Search(std::uint64_t time, int& index) const;
    bool SearchOtherJob(std::uint64_t time, int& index, const std::vector<McuJob>* jobs) const;
    bool SearchExtraInfo(std::uint64_t time, int& index) const;

    // Position in m_PDIInfos of the loss at a job index, or -1.
    int GetPDIInfoIndex(std::int32_t jobIndex) const;

    // Execution time per name within [start, end]. Leaves out idle time, and deducts the task
    // overhead, as the statistics settings below say.
    void DurationTotal(std::map<std::string, std::uint64_t>& totals, std::uint64_t start,
                       std::uint64_t end) const;

    // The pieces of one job name within [start, end], as records under a function's name by their
    // start time. The first piece has flag 1; the last gains flag 4 if last is set.
    void DurationTotalCustomJobCS(std::map<std::uint64_t, McuJob>& pieces, std::string jobName,
                                  std::string functionName, std::uint64_t start, std::uint64_t end,
                                  bool last) const;

    // --- Filling -------------------------------------------------------------------------------

    // Empties everything but the callbacks, the memory of the split dialog, the range chooser and
    // the progress callback.
    void Clear();

    void Insert(const McuJob& job);
    void Insert(std::string name, std::uint64_t start, std::uint64_t end);
    void InsertHWJob(const McuJob& job);
    void InsertCustomJob(const McuJob& job, std::uint64_t time);
    void InsertTmpCustomJobCS(const McuJob& job);
    void InsertCustomJobCS(const McuJob& job);
    void InsertSourceMark(const McuJob& job);

    // Stores the sample of the interval [lastTime, time) from the previous record's extra data,
    // interpreted by m_ParsingInfos. current is null for the last sample of a log.
    void InsertExtraInfo(char* previous, char* current, std::uint64_t time, std::uint64_t lastTime,
                         std::string& name);
    void InsertExtraInfo(std::vector<int>& values, std::uint64_t time, std::string& name);

    // --- Members -------------------------------------------------------------------------------

    CString m_FileName;
    std::uint64_t m_BeginTime = 0;
    std::uint64_t m_EndTime = 0;                         // of the job inserted last
    std::uint64_t m_IdleTotal = 0;                       // total length of the jobs named "IDLE"
    std::map<std::string, int> m_JobNames;               // number of jobs
    std::map<std::string, std::uint64_t> m_CustomNames;  // total duration per function
    std::vector<McuJob> m_CustomJobs;                    // segments, in order of creation
    std::map<std::string, std::vector<McuJob>> m_CustomJobsCS;     // calls, by start time
    std::map<std::string, std::vector<McuJob>> m_TmpCustomJobsCS;  // open calls of a read
    std::vector<bool> m_CustomShown;  // one per entry of m_CustomNames, in map order
    std::vector<McuJob> m_SourceMarks;
    std::map<std::string, int> m_SourceMarkNames;         // number of marks
    std::vector<bool> m_SourceMarkShown;                  // one per entry of m_SourceMarkNames
    std::map<std::string, std::vector<McuJob>> m_HWJobs;  // events in order of their ends
    std::int32_t m_ExtraInfoNum = 0;                      // extra values per record
    std::vector<int> m_ExtraMax;                          // per value; bits of an unsigned value
    std::vector<int> m_ExtraMin;
    std::vector<CString> m_ExtraNames;
    std::vector<ExtraParsingInfo> m_ParsingInfos;  // empty again after a read
    std::vector<ExtraInfoRecord> m_ExtraInfos;     // samples in ascending time

    // Memory of the statistics dialogs. Marker members hold the selected entry, -1 for none.
    std::uint64_t m_StatStart = 0, m_StatEnd = 0;
    std::int32_t m_StatIncludeIdle = 1;
    std::int32_t m_StatMode = 0;
    std::int32_t m_StatContextSwitch = 0;
    std::int32_t m_StatDenominator = 0;
    std::int32_t m_StatDeductOverhead = 0;
    std::int32_t m_TaskOverhead = 0;  // QBit; also filled by the header
    std::int32_t m_FunctionOverhead = 0;

    std::uint64_t m_UsageSample = 0, m_UsageStart = 0, m_UsageEnd = 0;
    std::int32_t m_UsageStartMarker = -1, m_UsageEndMarker = -1;
    std::int32_t m_UsageType = 0;
    std::vector<std::string> m_UsageTasks;
    std::int32_t m_UsageDuration = 5000;
    std::int32_t m_UsageUnit = 2;

    std::uint64_t m_AreaSample = 0, m_AreaStart = 0, m_AreaEnd = 0;
    std::int32_t m_AreaStartMarker = -1, m_AreaEndMarker = -1;
    std::int32_t m_AreaType = 0;
    std::vector<std::string> m_AreaTasks;
    std::int32_t m_AreaDuration = 5000;
    std::int32_t m_AreaUnit = 2;
    std::int32_t m_AreaInfoIndex = -1;

    std::uint64_t m_TstSample = 0, m_TstStart = 0, m_TstEnd = 0;
    std::int32_t m_TstStartMarker = -1, m_TstEndMarker = -1;
    std::int32_t m_TstModes = 4;
    std::vector<std::string> m_TstModules;
    std::int32_t m_TstDuration = 5000;
    std::int32_t m_TstUnit = 2;

    std::uint64_t m_BmStart = 0, m_BmEnd = 0;
    std::int32_t m_BmStartMarker = -1, m_BmEndMarker = -1;
    std::int32_t m_BmSelect = 0;
    std::vector<CString> m_BmInfos;

    std::uint64_t m_BmTaskStart = 0, m_BmTaskEnd = 0;
    std::int32_t m_BmTaskStartMarker = -1, m_BmTaskEndMarker = -1;
    std::int32_t m_BmTaskSelect = 0;
    std::vector<CString> m_BmTaskInfos;
    std::int32_t m_BmTaskMode = 0;
    std::int32_t m_BmTaskContextSwitch = 0;

    bool m_IsKaldo = false;           // records travelled in packets
    std::vector<PDIInfo> m_PDIInfos;  // losses, ascending job index
    FormatLookup m_GetDataFormat = nullptr;
    EnumLookup m_GetEnumContent = nullptr;
    bool m_DBReady = false;
    bool m_IsTQCNT = true;           // counts are TQCNT, in QBit; false: USCNT
    CString m_SplitUnit;             // last "Unit size (KB)" of the split dialog
    std::int32_t m_SplitChoice = 0;  // last choice of its radio pair

private:
    bool ReadHeaderless(const std::string& path, std::FILE*, std::string& error);
    bool Decode(std::FILE*, const vesk::DecoderSetup& setup, std::int64_t end, std::string& error);
    void StoreRecords(vesk::DecodingPass&, const vesk::DecoderSetup& setup,
                      const vesk::LogCensus& census, std::int64_t total, std::string& error);
    bool Cancel();
    void TrimAll();
    friend class vesk::ExtraSampler;
    void StoreSample(const std::uint8_t* previous, const std::uint8_t* current, std::uint64_t time,
                     std::uint64_t lastTime, const std::string& name);
    void StoreSample(const std::vector<int>& values, std::uint64_t time, const std::string& name);
    void ReleasePlugins();
    void WidenExtraRange(const std::vector<int>& values);

    vesk::RangeChooser* m_RangeChooser = nullptr;
    vesk::ReadProgress m_Progress;
    vesk::ReadReport m_Report;
};
