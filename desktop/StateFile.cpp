#include "desktop/StateFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "desktop/StateJson.h"
#include "desktop/UserState.h"

namespace vesk {

namespace {

constexpr qint64 kMostBytes = 4 << 20;  // far more than the viewer writes

}  // namespace

QString StateFile::DefaultPath() {
    const QString given = qEnvironmentVariable("XDG_STATE_HOME");
    const QString folder = QDir::isAbsolutePath(given) ? given : QDir::homePath() + "/.local/state";
    return folder + "/vesk/veskview.json";
}

QString StateFile::Load(UserState& state) {
    QFile file(m_Path);
    if (!file.exists()) return {};
    const QString note = "The viewer's memory was not taken over: " + m_Path;
    // Only a plain file ends for certain.
    m_IsForeign = !QFileInfo(m_Path).isFile() || file.size() > kMostBytes;
    if (m_IsForeign || !file.open(QIODevice::ReadOnly)) return note + " cannot be read";
    m_IsForeign = !StateFromJson(file.read(kMostBytes), state);
    return m_IsForeign ? note + " is something else" : QString();
}

QString StateFile::Save(const UserState& state) {
    QDir().mkpath(QFileInfo(m_Path).path());
    if (m_IsForeign) {
        QFile::remove(m_Path + ".old");
        QFile::rename(m_Path, m_Path + ".old");
        m_IsForeign = false;
    }
    QSaveFile file(m_Path);
    const QByteArray text = StateToJson(state);
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit();
    return written ? QString() : m_Path + ": " + file.errorString();
}

}  // namespace vesk
