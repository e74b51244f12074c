#include <gmock/gmock.h>

#include <QApplication>
#include <QTemporaryDir>

namespace {

// What the offscreen platform says of windows that cannot be raised is of no use here.
void PrintUseful(QtMsgType, const QMessageLogContext&, const QString& text) {
    if (text.startsWith("This plugin does not support")) return;
    fprintf(stderr, "%s\n", qPrintable(text));
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    qInstallMessageHandler(PrintUseful);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir runtime;
    qputenv("XDG_RUNTIME_DIR", runtime.path().toUtf8());
    QApplication application(argc, argv);
    QApplication::setApplicationName("veskview");
    QApplication::setStyle("Fusion");
    return RUN_ALL_TESTS();
}
