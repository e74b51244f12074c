// What is installed beside the program, as a desktop finds it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QMimeDatabase>
#include <QXmlStreamReader>

#include "tests/desktop/DeskFolder.h"

namespace vesk {
namespace {

class PackagingTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        s_Install = Shell("'" CMAKE_PROGRAM "' --install '" VESK_BUILD_DIR
                          "' --component viewer --prefix " +
                          Path("."));
        qputenv("XDG_DATA_HOME", Path("share").c_str());
    }

    void SetUp() override { ASSERT_EQ(s_Install.m_Status, 0) << s_Install.m_Text; }

    // Stays until the program ends: the toolkit knows the types from there.
    static std::string Path(const std::string& name) {
        static const DeskFolder prefix;
        return prefix / name;
    }
    static void ExpectAccepted(const std::string& command) {
        const ShellRun run = Shell(command);
        EXPECT_EQ(run.m_Status, 0) << command << '\n' << run.m_Text;
    }

    static inline ShellRun s_Install;
};

TEST_F(PackagingTest, TheProgramIsInstalledAndRuns) {
    EXPECT_EQ(Shell(Path("bin/veskview") + " --version").m_Text, "veskview " VESK_VERSION "\n");
}

TEST_F(PackagingTest, TheDesktopEntryIsValid) {
    ExpectAccepted("desktop-file-validate " + Path("share/applications/veskview.desktop"));
}

TEST_F(PackagingTest, TheMetadataIsValid) {
    ExpectAccepted("appstreamcli validate --no-net " +
                   Path("share/metainfo/app.vesk.veskview.metainfo.xml"));
}

TEST_F(PackagingTest, TheIconIsASquarePicture) {
    QFile file(QString::fromStdString(Path("share/icons/hicolor/scalable/apps/veskview.svg")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    ASSERT_TRUE(xml.readNextStartElement());
    EXPECT_EQ(xml.name(), u"svg");
    EXPECT_EQ(xml.attributes().value("width"), xml.attributes().value("height"));
    while (!xml.atEnd()) xml.readNext();
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
}

TEST_F(PackagingTest, ALogIsKnownByHowItBegins) {
    ExpectAccepted("update-mime-database " + Path("share/mime"));
    const DeskFolder folder;
    const struct {
        const char* m_What;
        std::string m_Path;
        bool m_IsLog;
    } cases[] = {
        {"with header, any name", folder.CopySample("esp32_ticks.bin", "a.dat"), true},
        {"packets", Sample("pacman_packets.bin"), true},
        {"version 2", folder.Write("b", LogBuilder().WithHeader(2).Task("A", 1).Bytes()), true},
        {"no identifier", Sample("wget_headerless.bin"), false},
        {"something else called .bin", folder.Write("c.bin", "VESK, but not a log"), false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_What);
        const QMimeType type = QMimeDatabase().mimeTypeForFile(QString::fromStdString(c.m_Path));
        EXPECT_EQ(type.name() == "application/x-vesk-log", c.m_IsLog) << type.name().toStdString();
    }
}

}  // namespace
}  // namespace vesk
