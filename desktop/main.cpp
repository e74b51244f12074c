#include <QApplication>
#include <QTimer>
#include <cstdio>

#include "desktop/AppIcon.h"
#include "desktop/DesktopHost.h"
#include "desktop/DisplayGuard.h"
#include "desktop/KeySheet.h"
#include "desktop/MainWindow.h"
#include "desktop/ProgramOptions.h"
#include "desktop/QtUserInterface.h"
#include "desktop/RenderRun.h"
#include "desktop/StateFile.h"
#include "desktop/UserState.h"

namespace {

constexpr int kFailed = 1;
constexpr int kUsage = 2;

std::unique_ptr<QApplication> MakeApplication(int& count, char** arguments) {
    const vesk::DisplayGuard guard;
    QApplication::setStyle("Fusion");  // the same look, light or dark, everywhere
    auto application = std::make_unique<QApplication>(count, arguments);
    QApplication::setApplicationName("veskview");
    QApplication::setApplicationVersion(VESK_VERSION);
    QApplication::setDesktopFileName("veskview");
    QApplication::setWindowIcon(vesk::AppIcon());  // of the frames too
    return application;
}

void OpenFromCommandLine(vesk::LogSession& session, const vesk::ProgramOptions& options) {
    const vesk::LogFiles files{options.m_Log, {}};
    const vesk::PartToRead part =
        options.m_Whole ? vesk::PartToRead::kWhole : vesk::PartToRead::kAsk;
    if (options.m_Target.empty()) {
        session.Open(files, part);
    } else {
        session.Open(files, part, options.m_Target);
    }
}

int RunViewer(const vesk::ProgramOptions& options) {
    vesk::QtUserInterface user;
    const vesk::ScopedUserInterface use(user);
    vesk::DesktopHost host;
    vesk::UserState state;
    vesk::StateFile stateFile(vesk::StateFile::DefaultPath());
    const QString note = stateFile.Load(state);
    vesk::MainWindow window(user, host, state, stateFile);
    window.show();
    window.Note(note);
    if (!options.m_Log.empty())
        QTimer::singleShot(0, &window, [&] { OpenFromCommandLine(window.Session(), options); });
    return QApplication::exec();
}

// What the toolkit misses of a session is not missed by a picture.
void PrintUseful(QtMsgType, const QMessageLogContext&, const QString& text) {
    if (!text.startsWith("QStandardPaths:")) std::fprintf(stderr, "%s\n", qPrintable(text));
}

// Without a display, whatever the surroundings say.
int RunRender(int& count, char** arguments, const vesk::ProgramOptions& options) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(PrintUseful);
    const QGuiApplication application(count, arguments);
    return vesk::RenderPicture(options) ? 0 : kFailed;
}

std::string TextOf(vesk::ProgramText text) {
    switch (text) {
        case vesk::ProgramText::kHelp:
            return vesk::ProgramHelp();
        case vesk::ProgramText::kKeys:
            return vesk::KeySheet();
        case vesk::ProgramText::kManual:
            return vesk::ProgramManual();
        default:
            return "veskview " VESK_VERSION "\n";
    }
}

}  // namespace

int main(int count, char** arguments) {
    vesk::ProgramOptions options;
    std::string error;
    if (!vesk::ParseProgramOptions(count, arguments, options, error)) {
        std::fprintf(stderr, "veskview: %s\n%s", error.c_str(), vesk::ProgramHelp().c_str());
        return kUsage;
    }
    if (options.m_Text != vesk::ProgramText::kNone) {
        std::fputs(TextOf(options.m_Text).c_str(), stdout);
        return 0;
    }
    if (!options.m_Render.m_Path.empty()) return RunRender(count, arguments, options);
    const std::unique_ptr<QApplication> application = MakeApplication(count, arguments);
    return RunViewer(options);
}
