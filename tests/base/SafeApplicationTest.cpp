#include "base/SafeApplication.h"

#include "base/Failure.h"
#include "support/ScriptedMessages.h"

#include <QEvent>
#include <QEventLoop>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

/// The toolkit frees nothing when something is thrown through it; that is the price of going on.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libQt6";
}

namespace quoril {
namespace {

using ::testing::ElementsAre;

TEST(SafeApplicationTest, WhatAnEventThrowsIsToldAndTheLoopGoesOn) {
    test::ScriptedMessages Messages;
    QEventLoop Loop;
    QTimer::singleShot(0, [] { throw Failure("a file has gone"); });
    QTimer::singleShot(1, &Loop, &QEventLoop::quit);
    EXPECT_EQ(Loop.exec(), 0);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("a file has gone"));
}

TEST(SafeApplicationTest, AButtonWhoseWorkFailsCanBePressedAgain) {
    test::ScriptedMessages Messages;
    QPushButton Button;
    QObject::connect(&Button, &QPushButton::clicked, [] { throw Failure("no room"); });
    Button.show();
    for (int Times = 0; Times < 2; ++Times)
        QTest::mouseClick(&Button, Qt::LeftButton);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("no room", "no room"));
}

} // namespace
} // namespace quoril
