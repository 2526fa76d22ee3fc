#include "addin/pages/frame/PageEnvironment.h"
#include "addin/pages/menu/MenuCommandDlg.h"
#include "tests/support/InstalledPlatform.h"
#include "tests/support/pages/Person.h"

#include <fstream>
#include <gmock/gmock.h>
#include <QCheckBox>
#include <QLabel>

namespace zn {
namespace {

class FrameTest : public ::testing::Test {
protected:
    void writeStrings(const std::string& content)
    {
        std::filesystem::create_directories(platform.folder / "texts/DE");
        std::ofstream(platform.folder / "texts/DE/ZNTaskAddIn.lan") << content;
        platform.write(u"LanFileDir", platform.path("texts"));
    }

    test::InstalledPlatform platform{u"DE"};
    Platform ports = platform.ports();
    PageEnvironment environment{ports};
};

TEST_F(FrameTest, TellsOfABrokenStringFileOnceAndShowsTheRest)
{
    writeStrings("LanFile 1\n[MenuCommandDlg]\n301 = &Zeigen\nbroken\n302 = &Befehl:\n");
    test::Answers box({QMessageBox::Ok});
    for (int opening = 0; opening < 2; ++opening) {
        CMenuCommandDlg page(environment, nullptr, TaskKind::Conversion);
        page.show();
        QApplication::processEvents();
        EXPECT_EQ(page.findChild<QCheckBox*>("showCommand")->text(), "&Zeigen");
        EXPECT_EQ(page.findChild<QLabel*>("menuTitleLabel")->text(), "&Menu command:");
    }
    ASSERT_EQ(box.shown().size(), 1);
    EXPECT_TRUE(box.shown()[0].contains("ZNTaskAddIn.lan\" cannot be read from line 4 on: an entry is written as"))
        << box.shown()[0].toStdString();
}

TEST_F(FrameTest, SaysAFailureWithoutASentenceByItsCode)
{
    test::Answers box({QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Ok});
    MessageBoxes& messages = environment.messages();
    const auto fail = [&](Status status, const char* sentence) {
        messages.inSlot(nullptr, [&] { throw StatusError(status, sentence); });
    };
    fail(statusCode(0x80040304), "");
    fail(statusCode(0x80040304), "The file \"a.par\" is checked out by Ann.");
    messages.inSlot(nullptr, [] { throw std::bad_alloc(); });
    EXPECT_EQ(box.shown(),
        QStringList({"The file is checked out already.", "The file \"a.par\" is checked out by Ann.",
            "There is not enough memory for this operation."}));
}

} // namespace
} // namespace zn
