#include "storage/UndoClearMod.h"

#include "base/DocumentState.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <deque>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quoril {
namespace {

using test::ScriptedMessages;
using test::TestSession;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Answers from a script; closed when it is at its end.
struct ScriptedDialog final : UndoClearDialog {
    std::deque<UndoClearAnswer> Answers;
    std::vector<std::vector<std::string>> Shown;
    int Ends = 0;
    ScriptedDialog() { SetUndoClearDialog(this); }
    ~ScriptedDialog() override { SetUndoClearDialog(nullptr); }
    UndoClearAnswer ShowUndoClear(const std::vector<std::string>& Names) override {
        Shown.push_back(Names);
        if (Answers.empty())
            return {};
        const UndoClearAnswer Answer = Answers.front();
        Answers.pop_front();
        return Answer;
    }
    void UndoClearDone() override { ++Ends; }
};

class UndoClear : public ::testing::Test {
  protected:
    UndoClear() {
        BlockCarrBuffClass Sound;
        Sound.ReDimSize(1000);
        Store.SwitchUndoOff = true;
        Store.WavFmtChannel = 2;
        Store.WaveDataInsert(1, 0, &Sound, &Sound, "", true);
        Store.SwitchUndoOff = false;
    }
    void Steps(std::initializer_list<const char*> Names) {
        for (const char* Name : Names)
            Store.WaveDataDelete(1, 0, 10, Name, true);
    }
    /// How many steps can still be undone, found by undoing them.
    int StepsLeft() {
        int Count = 0;
        while (Store.UndoCount() > Store.UndoReleased()) {
            Store.Undo();
            ++Count;
        }
        return Count;
    }

    const TestSession Session;
    ScriptedMessages Messages;
    ScriptedDialog Dialog;
    FileMemoClass Store;
};

TEST_F(UndoClear, WithoutDataSaysSoAndAsksNothing) {
    UndoClearFiles_UserAssisted(Store);
    EXPECT_THAT(Messages.Texts(), ElementsAre("No undo data is left to clear."));
    EXPECT_THAT(Dialog.Shown, IsEmpty());
    EXPECT_EQ(Dialog.Ends, 1);
}

TEST_F(UndoClear, ShowsOneItemForEachStepTheOldestFirst) {
    Steps({"One", "Two"});
    // A step of several records, the last of which is padding: one channel gets longer.
    BlockCarrBuffClass Sound;
    Sound.ReDimSize(50);
    Store.WaveDataInsert(1, 1, &Sound, nullptr, "Three", true);
    UndoClearFiles_UserAssisted(Store);
    EXPECT_THAT(Dialog.Shown, ElementsAre(ElementsAre("One", "Two", "Three")));
    EXPECT_EQ(Dialog.Ends, 1);
    EXPECT_EQ(StepsLeft(), 3);
    EXPECT_THAT(Messages.Requests, IsEmpty());
}

TEST_F(UndoClear, TheFirstOneGoesAndTheQuestionIsRepeated) {
    Steps({"One", "Two", "Three"});
    Dialog.Answers = {{UndoClearFirst, 0}};
    UndoClearFiles_UserAssisted(Store);
    EXPECT_THAT(Dialog.Shown,
                ElementsAre(ElementsAre("One", "Two", "Three"), ElementsAre("Two", "Three")));
    EXPECT_EQ(StepsLeft(), 2);
}

TEST_F(UndoClear, UpToTheSelectedOneTheOlderOnesGoToo) {
    Steps({"One", "Two", "Three", "Four"});
    Dialog.Answers = {{UndoClearUpToSelected, 2}};
    UndoClearFiles_UserAssisted(Store);
    EXPECT_THAT(Dialog.Shown.back(), ElementsAre("Four"));
    EXPECT_EQ(StepsLeft(), 1);
}

TEST_F(UndoClear, AllGoAtOnceAndTheQuestionsEnd) {
    Steps({"One", "Two", "Three"});
    Dialog.Answers = {{UndoClearAll, 0}};
    UndoClearFiles_UserAssisted(Store);
    EXPECT_EQ(Dialog.Shown.size(), 1U);
    EXPECT_EQ(Store.UndoCount(), 0);
    EXPECT_EQ(Dialog.Ends, 1);
    EXPECT_THAT(Messages.Requests, IsEmpty());
}

TEST_F(UndoClear, TheLastOneEndsTheQuestions) {
    Steps({"One"});
    Dialog.Answers = {{UndoClearFirst, 0}};
    UndoClearFiles_UserAssisted(Store);
    EXPECT_EQ(Dialog.Shown.size(), 1U);
    EXPECT_EQ(StepsLeft(), 0);
    EXPECT_THAT(Messages.Requests, IsEmpty());
}

TEST_F(UndoClear, ClosingDropsNothing) {
    Steps({"One", "Two"});
    UndoClearFiles_UserAssisted(Store);
    EXPECT_EQ(StepsLeft(), 2);
}

TEST_F(UndoClear, WithoutAnybodyToAskNothingIsDropped) {
    Steps({"One"});
    SetUndoClearDialog(nullptr);
    UndoClearFiles_UserAssisted(Store);
    EXPECT_EQ(StepsLeft(), 1);
}

} // namespace
} // namespace quoril
