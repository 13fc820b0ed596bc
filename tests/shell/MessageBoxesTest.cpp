#include "shell/MessageBoxes.h"

#include "base/ModalWindow.h"
#include "shell/ProgressFrm.h"
#include "shell/WithDialog.h"

#include <QGuiApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace quoril {
namespace {

using test::Press;
using test::WithDialog;

QMessageBox* AsBox(QWidget* Window) {
    return qobject_cast<QMessageBox*>(Window);
}

TEST(MessageBoxes, ShowTheTextAsItIsUnderTheProgramsTitle) {
    MessageBoxesClass Boxes;
    const WithDialog Act([](QWidget* Window) {
        QMessageBox* Box = AsBox(Window);
        ASSERT_NE(Box, nullptr);
        EXPECT_EQ(Box->text(), QStringLiteral("<b>1 < 2 & 3</b>\ngr\u00FCn.wav"));
        EXPECT_EQ(Box->textFormat(), Qt::PlainText);
        EXPECT_EQ(Box->windowTitle(), QStringLiteral("Quoril Wave Editor"));
        EXPECT_EQ(Box->buttons().size(), 1);
        Press(Window, "OkBtn");
    });
    EXPECT_EQ(MsgBox("<b>1 < 2 & 3</b>\ngr\xFCn.wav"), MsgBoxAnswer::Ok);
}

TEST(MessageBoxes, ShowTheTitleThatTheyAreGiven) {
    MessageBoxesClass Boxes;
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Window->windowTitle(), QStringLiteral("Save Error"));
        Press(Window, "OkBtn");
    });
    MsgBox("Text", "Save Error");
}

TEST(MessageBoxes, AreAsWideAsTheirTitle) {
    MessageBoxesClass Boxes;
    for (const char* Title : {"Adjust Volume Failed", "Could not make what was asked for, again"}) {
        const WithDialog Act([Title](QWidget* Window) {
            EXPECT_GT(Window->width(), Window->fontMetrics().horizontalAdvance(Title) + 60)
                << Title;
            Press(Window, "OkBtn");
        });
        MsgBox("No", Title);
    }
}

TEST(MessageBoxes, HaveButtonsLikeThoseOfTheOtherWindows) {
    MessageBoxesClass Boxes;
    const auto ExpectPlain = [](QWidget* Window, int Count) {
        const QList<QPushButton*> Buttons = Window->findChildren<QPushButton*>();
        EXPECT_EQ(Buttons.size(), Count);
        for (const QPushButton* Button : Buttons)
            EXPECT_TRUE(Button->icon().isNull()) << Button->text().toStdString();
        QTest::keyClick(Window, Qt::Key_Escape);
    };
    {
        const WithDialog Act([&](QWidget* Window) { ExpectPlain(Window, 3); });
        MsgBox("Question", {}, MsgBoxButtons::YesNoCancel);
    }
    const WithDialog Act([&](QWidget* Window) { ExpectPlain(Window, 2); });
    (void)InputBox("New rate:", "Rate", "22050");
}

struct ButtonCase {
    MsgBoxButtons Buttons;
    const char* Button;
    MsgBoxAnswer Answer;
};

void PrintTo(const ButtonCase& Case, std::ostream* Out) {
    *Out << Case.Button << " of " << static_cast<int>(Case.Buttons);
}

class MessageBoxButton : public ::testing::TestWithParam<ButtonCase> {};

TEST_P(MessageBoxButton, GivesItsAnswer) {
    MessageBoxesClass Boxes;
    const WithDialog Act([](QWidget* Window) { Press(Window, GetParam().Button); });
    EXPECT_EQ(MsgBox("Question", {}, GetParam().Buttons, MsgBoxAnswer::No), GetParam().Answer);
}

INSTANTIATE_TEST_SUITE_P(
    All, MessageBoxButton,
    ::testing::Values(ButtonCase{MsgBoxButtons::OkOnly, "OkBtn", MsgBoxAnswer::Ok},
                      ButtonCase{MsgBoxButtons::OkCancel, "OkBtn", MsgBoxAnswer::Ok},
                      ButtonCase{MsgBoxButtons::OkCancel, "CancelBtn", MsgBoxAnswer::Cancel},
                      ButtonCase{MsgBoxButtons::YesNo, "YesBtn", MsgBoxAnswer::Yes},
                      ButtonCase{MsgBoxButtons::YesNo, "NoBtn", MsgBoxAnswer::No},
                      ButtonCase{MsgBoxButtons::YesNoCancel, "YesBtn", MsgBoxAnswer::Yes},
                      ButtonCase{MsgBoxButtons::YesNoCancel, "NoBtn", MsgBoxAnswer::No},
                      ButtonCase{MsgBoxButtons::YesNoCancel, "CancelBtn", MsgBoxAnswer::Cancel}));

struct KeyCase {
    MsgBoxButtons Buttons;
    MsgBoxAnswer Default;
    Qt::Key Key;
    MsgBoxAnswer Answer;
};

void PrintTo(const KeyCase& Case, std::ostream* Out) {
    *Out << (Case.Key == Qt::Key_Escape ? "Esc" : "Enter") << " on "
         << static_cast<int>(Case.Buttons) << " with " << static_cast<int>(Case.Default);
}

class MessageBoxKey : public ::testing::TestWithParam<KeyCase> {};

TEST_P(MessageBoxKey, PressesTheButtonThatItStandsFor) {
    MessageBoxesClass Boxes;
    const WithDialog Act([](QWidget* Window) {
        QTest::keyClick(QApplication::focusWidget() != nullptr ? QApplication::focusWidget()
                                                               : Window,
                        GetParam().Key);
    });
    EXPECT_EQ(MsgBox("Question", {}, GetParam().Buttons, GetParam().Default), GetParam().Answer);
}

using enum MsgBoxAnswer;
INSTANTIATE_TEST_SUITE_P(
    All, MessageBoxKey,
    ::testing::Values(KeyCase{MsgBoxButtons::OkOnly, Ok, Qt::Key_Escape, Ok},
                      KeyCase{MsgBoxButtons::OkOnly, Ok, Qt::Key_Return, Ok},
                      KeyCase{MsgBoxButtons::OkCancel, Ok, Qt::Key_Escape, Cancel},
                      KeyCase{MsgBoxButtons::OkCancel, Cancel, Qt::Key_Return, Cancel},
                      KeyCase{MsgBoxButtons::YesNo, Yes, Qt::Key_Escape, No},
                      KeyCase{MsgBoxButtons::YesNo, Yes, Qt::Key_Return, Yes},
                      KeyCase{MsgBoxButtons::YesNo, No, Qt::Key_Return, No},
                      KeyCase{MsgBoxButtons::YesNoCancel, Yes, Qt::Key_Escape, Cancel},
                      KeyCase{MsgBoxButtons::YesNoCancel, No, Qt::Key_Return, No}));

TEST(MessageBoxes, AskForALineAndGiveItBack) {
    MessageBoxesClass Boxes;
    const WithDialog Act([](QWidget* Window) {
        auto* Box = qobject_cast<QInputDialog*>(Window);
        ASSERT_NE(Box, nullptr);
        EXPECT_EQ(Box->labelText(), QStringLiteral("New rate:"));
        EXPECT_EQ(Box->windowTitle(), QStringLiteral("Rate"));
        EXPECT_EQ(Box->textValue(), QStringLiteral("22050"));
        auto* Field = Box->findChild<QLineEdit*>();
        Field->selectAll();
        QTest::keyClicks(Field, QStringLiteral("8000"));
        QTest::keyClick(Field, Qt::Key_Return);
    });
    const InputBoxAnswer Answer = InputBox("New rate:", "Rate", "22050");
    EXPECT_TRUE(Answer.Accepted);
    EXPECT_EQ(Answer.Text, "8000");
}

TEST(MessageBoxes, ACancelledLineIsNotAccepted) {
    MessageBoxesClass Boxes;
    const WithDialog Act([](QWidget* Window) { QTest::keyClick(Window, Qt::Key_Escape); });
    const InputBoxAnswer Answer = InputBox("New rate:", "", "22050");
    EXPECT_FALSE(Answer.Accepted);
    EXPECT_EQ(Answer.Text, "");
}

TEST(MessageBoxes, TakeTheWaitCursorAwayWhileTheyAreOpen) {
    MessageBoxesClass Boxes;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor);
        Press(Window, "OkBtn");
    });
    MsgBox("Text");
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QGuiApplication::restoreOverrideCursor();
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(MessageBoxes, CanBeAnsweredInTheMidstOfALongCommand) {
    MessageBoxesClass Boxes;
    ProgressFrmClass Progress;
    Progress.SetVisible(true);
    QElapsedTimer Limit;
    Limit.start();
    while (!Progress.isVisible() && Limit.elapsed() < 10000)
        Progress.SetCurrentProgress(0.5F);
    ASSERT_TRUE(Progress.isVisible());
    const WithDialog Act([&Progress](QWidget* Window) {
        EXPECT_FALSE(Progress.isVisible());
        Press(Window, "YesBtn");
    });
    EXPECT_EQ(MsgBox("Go on?", {}, MsgBoxButtons::YesNo, MsgBoxAnswer::No), MsgBoxAnswer::Yes);
    EXPECT_TRUE(Progress.IsOn());
}

TEST(MessageBoxes, StandOverTheMainWindowOrTheDialogInUse) {
    MessageBoxesClass Boxes;
    QWidget Main;
    Main.show();
    SetMainWindow(&Main);
    {
        const WithDialog Act([&Main](QWidget* Window) {
            EXPECT_EQ(Window->parentWidget(), &Main);
            Press(Window, "OkBtn");
        });
        MsgBox("Text");
    }
    QDialog Dialog(&Main);
    Dialog.open();
    bool Asked = false;
    QTimer Watch;
    QObject::connect(&Watch, &QTimer::timeout, &Watch, [&] {
        QWidget* Top = QApplication::activeModalWidget();
        if (AsBox(Top) == nullptr || Asked)
            return;
        Asked = true;
        EXPECT_EQ(Top->parentWidget(), &Dialog);
        Press(Top, "OkBtn");
    });
    Watch.start(1);
    MsgBox("Text");
    EXPECT_TRUE(Asked);
}

} // namespace
} // namespace quoril
