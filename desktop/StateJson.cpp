#include "desktop/StateJson.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <optional>

#include "desktop/UserState.h"

namespace vesk {

namespace {

constexpr int kFormat = 1;
constexpr qsizetype kMostTabs = 32;
constexpr qsizetype kMostWindows = 64;
constexpr qsizetype kMostText = 4096;      // of a path or name
constexpr qsizetype kMostGeometry = 4096;  // bytes
constexpr int kFarthest = 30000;           // pixels

// --- Writing -----------------------------------------------------------------------------------

std::optional<QString> PathText(const std::string& path) {
    const QByteArray bytes = QByteArray::fromStdString(path);
    const QString text = QFile::decodeName(bytes);
    if (QFile::encodeName(text) != bytes || text.size() > kMostText) return {};
    return text;
}

QJsonArray RecentToJson(const RecentFiles& recent) {
    QJsonArray array;
    for (const LogFiles& files : recent.All()) {
        const auto log = PathText(files.m_Log);
        const auto header = PathText(files.m_Header);
        if (log && header) array.append(QJsonObject{{"log", *log}, {"header", *header}});
    }
    return array;
}

QJsonArray ChoicesToJson(const TargetChoices& choices) {
    QJsonArray array;
    for (const auto& [path, chosen] : choices.All()) {
        const auto log = PathText(path);
        const auto target = PathText(chosen);
        if (log && target) array.append(QJsonObject{{"log", *log}, {"target", *target}});
    }
    return array;
}

QJsonObject WindowToJson(std::int32_t key, const WindowInfo& info) {
    const WINDOWPLACEMENT& at = info.m_Placement;
    const CRect& rect = at.rcNormalPosition;
    return {{"key", key},
            {"show", static_cast<int>(at.showCmd)},
            {"rect", QJsonArray{rect.left, rect.top, rect.right, rect.bottom}},
            {"type", info.m_Type},
            {"size", info.m_Size}};
}

QJsonArray TabsToJson(const std::vector<WindowMap>& tabs) {
    QJsonArray array;
    for (const WindowMap& tab : tabs) {
        QJsonArray windows;
        for (const auto& [key, info] : tab.m_Windows) windows.append(WindowToJson(key, info));
        array.append(
            QJsonObject{{"name", QString::fromStdString(tab.m_Name.Str())}, {"windows", windows}});
    }
    return array;
}

QString BytesText(const std::string& bytes) {
    return QString::fromLatin1(QByteArray::fromStdString(bytes).toBase64());
}

// --- Reading -----------------------------------------------------------------------------------

std::string PathFromJson(const QJsonValue& value) {
    const QString text = value.toString();
    return text.size() > kMostText ? std::string() : QFile::encodeName(text).toStdString();
}

// The list is written latest first, and fills up from its end.
RecentFiles RecentFromJson(const QJsonArray& array) {
    RecentFiles recent;
    const auto most = static_cast<qsizetype>(RecentFiles::kMost);
    for (qsizetype i = std::min(array.size(), most); i-- > 0;) {
        const QJsonObject entry = array[i].toObject();
        const LogFiles files{PathFromJson(entry["log"]), PathFromJson(entry["header"])};
        if (!files.m_Log.empty()) recent.Add(files);
    }
    return recent;
}

TargetChoices ChoicesFromJson(const QJsonArray& array, const QJsonValue& byDefault) {
    TargetChoices choices;
    const auto most = static_cast<qsizetype>(TargetChoices::kMost);
    for (qsizetype i = 0; i < std::min(array.size(), most); ++i) {
        const QJsonObject entry = array[i].toObject();
        const std::string log = PathFromJson(entry["log"]);
        if (!log.empty() && entry["target"].isString())
            choices.Choose(log, PathFromJson(entry["target"]));
    }
    choices.m_Default = PathFromJson(byDefault);
    return choices;
}

// A rectangle that a window can have; nothing else gets as far as a window.
std::optional<CRect> RectFromJson(const QJsonArray& array) {
    if (array.size() != 4) return {};
    int edges[4];
    for (int i = 0; i < 4; ++i) {
        edges[i] = array[i].toInt(kFarthest + 1);
        if (std::abs(edges[i]) > kFarthest) return {};
    }
    const CRect rect{edges[0], edges[1], edges[2], edges[3]};
    return rect.IsRectEmpty() ? std::nullopt : std::optional(rect);
}

std::optional<WindowInfo> WindowFromJson(const QJsonObject& entry) {
    const std::optional<CRect> rect = RectFromJson(entry["rect"].toArray());
    const int show = entry["show"].toInt(SW_SHOWNORMAL);
    if (!rect || show < SW_SHOWNORMAL || show > SW_SHOWMAXIMIZED) return {};
    WindowInfo info;
    info.m_Placement.rcNormalPosition = *rect;
    info.m_Placement.showCmd = static_cast<unsigned>(show);
    info.m_Type = entry["type"].toInt(info.m_Type);
    info.m_Size = entry["size"].toInt(info.m_Size);
    info.m_ShowCmd = SW_HIDE;
    return info;
}

std::string BytesFromJson(const QJsonValue& value) {
    const QString text = value.toString().left(2 * kMostGeometry);
    return QByteArray::fromBase64(text.toLatin1()).toStdString();
}

WindowMap TabFromJson(const QJsonObject& entry) {
    WindowMap tab;
    tab.m_Name = CString(entry["name"].toString().left(kMostText).toStdString());
    const QJsonArray windows = entry["windows"].toArray();
    for (qsizetype i = 0; i < std::min(windows.size(), kMostWindows); ++i) {
        const QJsonObject window = windows[i].toObject();
        const std::optional<WindowInfo> info = WindowFromJson(window);
        if (info) tab.m_Windows.emplace(window["key"].toInt(), *info);
    }
    return tab;
}

}  // namespace

QByteArray StateToJson(const UserState& state) {
    const QJsonObject root{{"format", kFormat},
                           {"program", "veskview"},
                           {"recent", RecentToJson(state.m_Recent)},
                           {"targets", ChoicesToJson(state.m_Targets)},
                           {"lastTarget", PathText(state.m_Targets.m_Default).value_or(QString())},
                           {"tabs", TabsToJson(state.m_Tabs)},
                           {"mainWindow", BytesText(state.m_MainWindow)},
                           {"layout", BytesText(state.m_Layout)}};
    return QJsonDocument(root).toJson();
}

bool StateFromJson(const QByteArray& text, UserState& state) {
    const QJsonObject root = QJsonDocument::fromJson(text).object();
    if (root["program"].toString() != "veskview" || root["format"].toInt() != kFormat) return false;
    UserState read;
    read.m_Recent = RecentFromJson(root["recent"].toArray());
    read.m_Targets = ChoicesFromJson(root["targets"].toArray(), root["lastTarget"]);
    const QJsonArray tabs = root["tabs"].toArray();
    for (qsizetype i = 0; i < std::min(tabs.size(), kMostTabs); ++i)
        read.m_Tabs.push_back(TabFromJson(tabs[i].toObject()));
    read.m_MainWindow = BytesFromJson(root["mainWindow"]);
    read.m_Layout = BytesFromJson(root["layout"]);
    state = read;
    return true;
}

}  // namespace vesk
