// The choice of two files, records and header, and the read of both.

#include "log/CMcuNoHeaderDlg.h"
#include "tests/log/DialogTest.h"
#include "tests/log/LogBytes.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kRawFile = 1000;
constexpr int kChooseRawFile = 1002;
constexpr int kChooseHeaderFile = 1003;
constexpr int kHeaderFile = 1819;

class NoHeaderDialog : public DialogTest {
protected:
    int Run(HeadlessUserInterface::DialogScript script) {
        m_User.OnDialog(std::move(script));
        return m_Dialog.DoModal();
    }

    void Choose(DialogUser& user, int button, const CString& path) {
        m_User.OnFileDialog(path);
        user.Press(button);
    }

    static void ExpectPaths(const DialogUser& user, const std::string& raw,
                            const std::string& header) {
        EXPECT_EQ(user.Text(kRawFile).Str(), raw);
        EXPECT_EQ(user.Text(kHeaderFile).Str(), header);
    }

    CMcuNoHeaderDlg m_Dialog;
    TemporaryFile m_Header{RawHeader{}.Bytes()};
    TemporaryFile m_Records{LogBuilder().Task("A", 100).Task("B", 200).Bytes()};
};

TEST_F(NoHeaderDialog, GivesTheTwoChosenFilesToTheRead) {
    const int result = Run([&](DialogUser& user) {
        ExpectPaths(user, "", "");
        Choose(user, kChooseRawFile, m_Records.Path());
        Choose(user, kChooseHeaderFile, m_Header.Path());
        ExpectPaths(user, m_Records.Path(), m_Header.Path());
        user.Press("&OK");
    });
    ASSERT_EQ(result, IDOK);
    EXPECT_THAT(m_User.m_DialogTitles, ElementsAre("Display Vesk With Another Header File"));
    const char* filter = "Bin file (*.bin)|*.bin|All files (*.*)|*.*||";
    EXPECT_THAT(m_User.m_FileFilters, ElementsAre(filter, filter));

    Connect(LogBuilder().Uscnt(1000, 1, 1));
    std::string error;
    EXPECT_TRUE(m_List.ReadFileWithAnotherHeader(m_Dialog.m_HeaderFile.Str(),
                                                 m_Dialog.m_RawFile.Str(), error))
        << error;
    EXPECT_THAT(Told(m_List), ElementsAre("A 1-101", "B 101-201"));
}

TEST_F(NoHeaderDialog, KeepsWhatIsTypedWhenTheOtherFileIsChosen) {
    const int result = Run([&](DialogUser& user) {
        user.Type(kHeaderFile, m_Header.Path());
        Choose(user, kChooseRawFile, "other.bin");
        ExpectPaths(user, "other.bin", m_Header.Path());
        user.Type(kRawFile, m_Records.Path());
        Choose(user, kChooseHeaderFile, "");  // cancelled
        ExpectPaths(user, m_Records.Path(), m_Header.Path());
        user.Press(IDOK);
    });
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(m_Dialog.m_RawFile.Str(), m_Records.Path());
    EXPECT_EQ(m_Dialog.m_HeaderFile.Str(), m_Header.Path());
}

TEST_F(NoHeaderDialog, StaysUntilBothFilesExist) {
    const struct {
        const char* what;
        std::string raw, header;
    } cases[] = {
        {"nothing entered", "", ""},
        {"no records", "/no/such/file", m_Header.Path()},
        {"no header", m_Records.Path(), "/no/such/file"},
        {"a folder", m_Records.Path(), "/"},
    };
    const int result = Run([&](DialogUser& user) {
        for (const auto& c : cases) {
            SCOPED_TRACE(c.what);
            m_User.m_MessageBoxes.clear();
            user.Type(kRawFile, c.raw);
            user.Type(kHeaderFile, c.header);
            user.Press(IDOK);
            ASSERT_EQ(m_User.m_MessageBoxes.size(), 1u);
            EXPECT_EQ(m_User.m_MessageBoxes[0].m_Text, "File does not exist.");
            EXPECT_EQ(m_User.m_MessageBoxes[0].m_Caption, "Error");
            EXPECT_EQ(m_User.m_MessageBoxes[0].m_Type, MB_ICONSTOP);
            EXPECT_FALSE(user.Dialog().HasEnded());
            ExpectPaths(user, c.raw, c.header);
        }
        user.Type(kHeaderFile, m_Header.Path());
        user.Press(IDOK);
    });
    EXPECT_EQ(result, IDOK);
}

TEST_F(NoHeaderDialog, TakesNothingWhenCancelled) {
    const int result = Run([&](DialogUser& user) {
        user.Type(kRawFile, m_Records.Path());
        user.Type(kHeaderFile, m_Header.Path());
        user.Press("&Cancel");
    });
    EXPECT_EQ(result, IDCANCEL);
    EXPECT_TRUE(m_Dialog.m_RawFile.IsEmpty());
    EXPECT_TRUE(m_Dialog.m_HeaderFile.IsEmpty());
    EXPECT_THAT(m_User.m_MessageBoxes, IsEmpty());
}

}  // namespace
}  // namespace vesk
