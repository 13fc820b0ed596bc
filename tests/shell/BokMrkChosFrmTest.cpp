#include "shell/BokMrkChosFrm.h"

#include "bookmarks/BookmarkRec.h"
#include "shell/EditorFixture.h"
#include "shell/WithDialog.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace quoril::test {
namespace {

TEST(BokMrkChosFrmTest, GivesTheChosenOptionAndNothingWhenItIsCancelled) {
    BokMrkChosAsker Asker;
    const auto Ask = [&](const char* Option, const char* Button) {
        const WithDialog Act([=](QWidget* Window) {
            EXPECT_EQ(Window->objectName(), "BokMrkChosFrm");
            EXPECT_EQ(Window->windowTitle(), " Adding New Bookmarks:");
            EXPECT_EQ(Part<QLabel>(Window, "CountLbl")->text(), "first line\nsecond line");
            EXPECT_TRUE(Part<QRadioButton>(Window, "AddOpn_1")->isChecked());
            EXPECT_EQ(Part<QRadioButton>(Window, "AddOpn_1")->text(),
                      "Add new ones with the current list");
            EXPECT_EQ(Part<QRadioButton>(Window, "AddOpn_2")->text(),
                      "Delete the current list and add only the new ones");
            Part<QRadioButton>(Window, Option)->click();
            QTest::mouseClick(Part<QPushButton>(Window, Button), Qt::LeftButton);
        });
        return Asker.ShowBokMrkChos("first line\nsecond line\n");
    };
    EXPECT_EQ(Ask("AddOpn_1", "OkBtn"), BokMrkAppend);
    EXPECT_EQ(Ask("AddOpn_2", "OkBtn"), BokMrkReplace);
    EXPECT_EQ(Ask("AddOpn_2", "CancelBtn"), BokMrkNothing);
}

class BookmarksBesideFileTest : public EditorFixture {
  protected:
    void Open(const std::string& Wav) {
        std::string CommandLine = "\"";
        CommandLine.append(Wav).append("\"");
        Start(CommandLine);
    }
};

TEST_F(BookmarksBesideFileTest, SavingWritesThemAndOpeningReadsThem) {
    const std::string Wav = WriteWav("song.wav");
    Open(Wav);
    Bookmarks.push_back({"Verse", "", BokRange, 10, 20, false});
    Menu("Save_Mnu_0");
    EXPECT_TRUE(std::filesystem::exists(Music() + "/song.bok"));
    Menu("New_Mnu");
    EXPECT_EQ(BookmarkNos(), 0);
    Editor.reset();
    Messages.reset();
    Open(Wav);
    ASSERT_EQ(BookmarkNos(), 1);
    EXPECT_EQ(Bookmarks[1].Name, "Verse");
    Bookmarks.resize(1);
    Menu("Save_Mnu_0");
    EXPECT_FALSE(std::filesystem::exists(Music() + "/song.bok"));
}

} // namespace
} // namespace quoril::test
