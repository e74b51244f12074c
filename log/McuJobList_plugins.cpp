#include <filesystem>

#include "log/HostValues.h"
#include "log/McuJobList.h"
#include "platform/DynamicLibrary.h"
#include "platform/Text.h"
#include "platform/UserInterface.h"

namespace {

// The name comes from the file: it must not lead out of the folder of the plug-ins.
bool IsPlainFileName(const std::string& name) {
    if (name.empty() || name.find("..") != std::string::npos || name == ".") return false;
    for (const char c : name)
        if (c == '/' || c == '\\' || c == ':' || static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            return false;
    return true;
}

template <class Function>
bool Find(void* module, const char* name, Function& function) {
    function = reinterpret_cast<Function>(vesk::FindSymbol(module, name));
    return function != nullptr;
}

void Release(ExtraParsingInfo& info) {
    vesk::FreeDynamicLibrary(info.m_Module);
    info.m_Module = nullptr;
    info.m_InitConfig = nullptr;
    info.m_GetInfoNum = nullptr;
    info.m_ParsingInfo = nullptr;
    info.m_ParsingInfoKaldo = nullptr;
    info.m_ParsingHeaderKaldo = nullptr;
}

bool Refuse(ExtraParsingInfo& info, const char* text) {
    AfxMessageBox(text);
    Release(info);
    return false;
}

}  // namespace

CString McuJobList::GetParsingDllPath(const CString& baseName) const {
    const std::string program = vesk::ExecutablePath();
    const std::size_t slash = program.find_last_of('/');
    if (slash == std::string::npos) return {};
    return program.substr(0, slash + 1) + "External/" + baseName.Str() +
           vesk::kDynamicLibrarySuffix;
}

int McuJobList::FileExist(const CString& path) const {
    std::error_code error;
    return std::filesystem::is_regular_file(path.Str(), error) ? 1 : 0;
}

bool McuJobList::InitParsingDllFunc(ExtraParsingInfo& info, const CString& baseName) {
    const CString path = GetParsingDllPath(baseName);
    if (path.IsEmpty()) return Refuse(info, "Failed to get the path of DLL.");
    if (!IsPlainFileName(baseName.Str()) || !FileExist(path)) {
        if (vesk::CurrentHostValues().m_FeatureLevel != 0)
            AfxMessageBox(
                vesk::FormatText("DLL doesn't exist. (%s)", baseName.Str().c_str()).c_str());
        return false;
    }
    info.m_Module = vesk::LoadDynamicLibrary(path.Str());
    if (!info.m_Module) return Refuse(info, "Failed to load DLL.");
    if (!Find(info.m_Module, "Init_Config", info.m_InitConfig) ||
        !Find(info.m_Module, "Get_InfoNum", info.m_GetInfoNum))
        return Refuse(info, "Failed to init DLL functions.");
    if (m_IsKaldo) {
        if (!Find(info.m_Module, "Parsing_Info_KALDO", info.m_ParsingInfoKaldo) ||
            !Find(info.m_Module, "Parsing_Header_KALDO", info.m_ParsingHeaderKaldo))
            return Refuse(info,
                          "Failed to init DLL functions (Parsing_Info_KALDO, "
                          "Parsing_Header_KALDO).");
    } else if (!Find(info.m_Module, "Parsing_Info", info.m_ParsingInfo)) {
        return Refuse(info, "Failed to init DLL functions (Parsing_Info).");
    }
    return true;
}

void McuJobList::ReleasePlugins() {
    for (ExtraParsingInfo& info : m_ParsingInfos) Release(info);
    m_ParsingInfos.clear();
}
