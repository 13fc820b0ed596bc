#include "shell/CopiedFrm.h"

#include "base/ViewState.h"
#include "shell/CopyPasteWiring.h"
#include "shell/EditorFixture.h"
#include "shell/WithDialog.h"
#include "storage/FileMemoClass.h"

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace quoril::test {
namespace {

constexpr const char* Note =
    "Note: You can paste it anywhere in this wave file or in another instance of Wave Editor. (You "
    "can run multiple Editors windows at the same time, to edit multiple files).";

/// What the window says, line by line.
std::vector<std::string> LinesOf(const QWidget* Window) {
    std::vector<std::string> Lines;
    for (int Index = 0; Index < 3; ++Index) {
        const auto* Label = Window->findChild<QLabel*>(QStringLiteral("CopiedLbl_%1").arg(Index));
        EXPECT_NE(Label, nullptr);
        if (Label != nullptr && Label->isVisible())
            Lines.push_back(Label->text().toStdString());
    }
    return Lines;
}

/// Closes the window and keeps what it said.
class Reads {
  public:
    Reads()
        : Act([this](QWidget* Window) {
              EXPECT_EQ(Window->objectName(), "CopiedFrm");
              Lines = LinesOf(Window);
              QTest::keyClick(Window, Qt::Key_Return);
          }) {}
    std::vector<std::string> Lines;

  private:
    WithDialog Act;
};

// ---- The window

TEST(CopiedFrmTest, HasThreeLinesAndOneButton) {
    CopyPasteWindows Windows;
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Window->windowTitle(), "Wave samples placed in private ClipBoard");
        EXPECT_THAT(LinesOf(Window), ::testing::ElementsAre("First", "Second", Note));
        const auto Buttons = Window->findChildren<QPushButton*>();
        ASSERT_EQ(Buttons.size(), 1);
        EXPECT_EQ(Buttons[0]->objectName(), "OkBtn");
        EXPECT_TRUE(Buttons[0]->isDefault());
        // Every line is whole.
        for (const QLabel* Label : Window->findChildren<QLabel*>()) {
            EXPECT_GE(Label->height(), Label->heightForWidth(Label->width()));
            EXPECT_GE(Label->width(), Label->minimumSizeHint().width());
        }
        QTest::mouseClick(Buttons[0], Qt::LeftButton);
    });
    Windows.ShowCopied({"First", "Second", Note});
}

TEST(CopiedFrmTest, ShowsNoEmptyLine) {
    CopyPasteWindows Windows;
    Reads Window;
    Windows.ShowCopied({"First", "Second", {}});
    EXPECT_THAT(Window.Lines, ::testing::ElementsAre("First", "Second"));
}

TEST(CopiedFrmTest, EnterEscAndTheSystemCloseIt) {
    CopyPasteWindows Windows;
    for (const int Way : {0, 1, 2}) {
        const WithDialog Act([Way](QWidget* Window) {
            if (Way == 2)
                Window->close();
            else
                QTest::keyClick(Window, Way == 0 ? Qt::Key_Return : Qt::Key_Escape);
            EXPECT_FALSE(Window->isVisible()) << Way;
        });
        Windows.ShowCopied({"First", "Second", Note});
    }
}

TEST(CopiedFrmTest, TextThatLooksLikeMarkupIsShownAsItIs) {
    CopyPasteWindows Windows;
    const WithDialog Act([](QWidget* Window) {
        const auto* Label = Window->findChild<QLabel*>(QStringLiteral("CopiedLbl_0"));
        EXPECT_EQ(Label->textFormat(), Qt::PlainText);
        QTest::keyClick(Window, Qt::Key_Escape);
    });
    Windows.ShowCopied({"<b>bold.wav</b> is copied", "Second", Note});
}

// ---- From the menu

class CopiedMenuTest : public EditorFixture {
  protected:
    void Open(std::uint32_t Frames) {
        Start(WriteWav("a.wav", Frames));
        ASSERT_EQ(WaveStore->WavWaveINos, static_cast<std::int32_t>(Frames));
    }
    static void Select(std::int32_t From, std::int32_t To) {
        SelStart = From;
        SelEnd = To;
    }
};

TEST_F(CopiedMenuTest, CopyTellsSamplesAndTime) {
    Open(22050); // 2 seconds
    Select(11026, 22050);
    Reads Window;
    Menu("Edit_Copy_Mnu");
    EXPECT_THAT(Window.Lines, ::testing::ElementsAre("Samples: 11025 (From 11026 to 22050)",
                                                     "Duration: 01 (From 01 to 02)", Note));
    EXPECT_EQ(WaveStore->WavWaveINos, 22050);
}

TEST_F(CopiedMenuTest, CutTellsSamplesAndSeconds) {
    Open(22050);
    Select(11026, 22050);
    Reads Window;
    Menu("Edit_Cut_Mnu");
    EXPECT_THAT(Window.Lines, ::testing::ElementsAre("Samples: 11025 (11026 to 22050)",
                                                     "Duration: 1.000 Seconds", Note));
    EXPECT_EQ(WaveStore->WavWaveINos, 11025);
}

TEST_F(CopiedMenuTest, CopyOfAnotherFileTellsItsNameShortened) {
    const std::string Name = "another file with a name of more than thirty letters.wav";
    const std::string Other = WriteWav(Name, 33075);
    IniPut("Path", "Last Wave Dir", Music());
    Open(1000);
    std::unique_ptr<Reads> Window;
    const WithDialog Choose([&](QWidget* Modal) {
        ASSERT_NE(qobject_cast<QFileDialog*>(Modal), nullptr);
        EXPECT_EQ(Modal->windowTitle(), "Select a Wave file to Copy");
        auto* Edit = Modal->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        Edit->setText(QString::fromStdString(Name));
        QTest::keyClick(Edit, Qt::Key_Return);
        EXPECT_FALSE(Modal->isVisible());
        Window = std::make_unique<Reads>();
    });
    Menu("Edit_CopyF_Mnu");
    ASSERT_NE(Window, nullptr);
    EXPECT_THAT(Window->Lines,
                ::testing::ElementsAre(Other.substr(0, 3) + " .. " +
                                           Other.substr(Other.size() - 30) + " is copied",
                                       "Duration: 03, Samples: 33075", Note));
    EXPECT_EQ(WaveStore->WavWaveINos, 1000);
    EXPECT_THAT(Messages->Texts(), ::testing::IsEmpty());
}

} // namespace
} // namespace quoril::test
