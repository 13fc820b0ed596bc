// Saving with what can come between: the middle of the writing, other programs, what a file is.
#pragma once

#include "audiofile/FileSurroundings.h"
#include "audiofile/WavMaker.h"
#include "base/DocumentState.h"
#include "base/ProgressReport.h"
#include "storage/WoroFileBlockMod.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace quoril::test {

inline constexpr const char* Unchanged = "The file that was there before is unchanged.";
/// More than two chunks, so that there is a middle.
inline constexpr std::int32_t ManyFrames = 1200000;

/// Does something once when the writing is half done.
class AtHalf final : public ProgressReport {
  public:
    explicit AtHalf(std::function<void()> WhatToDo) : What(std::move(WhatToDo)) {
        SetProgressReport(this);
    }
    ~AtHalf() override {
        SetProgressReport(nullptr);
        EXPECT_TRUE(Done) << "the writing never came to its middle";
    }
    AtHalf(const AtHalf&) = delete;
    AtHalf& operator=(const AtHalf&) = delete;
    void SetVisible(bool) override {}
    void SetBarColor1(std::uint32_t) override {}
    void SetCurrentProgress(float Value) override {
        Current = Value;
        if (Value > 0.4F && !std::exchange(Done, true))
            What();
    }
    [[nodiscard]] float CurrentProgress() const override { return Current; }
    void BlinkLamp() override {}

  private:
    std::function<void()> What;
    bool Done = false;
    float Current = 0;
};

inline struct stat StatusOf(const std::string& Path) {
    struct stat Status {};
    EXPECT_EQ(::stat(Path.c_str(), &Status), 0) << Path;
    return Status;
}

class SaveSafetyTest : public FileCommandsFixture {
  protected:
    [[nodiscard]] std::string Music(const std::string& Name = {}) const {
        return Session.Path("music/" + Name);
    }
    [[nodiscard]] std::vector<std::string> MusicFiles() const {
        std::vector<std::string> Names;
        for (const auto& Entry : std::filesystem::directory_iterator(Music()))
            Names.push_back(Entry.path().filename().string());
        std::sort(Names.begin(), Names.end());
        return Names;
    }
    std::string WriteWav8(const std::string& Name, std::int32_t Frames) const {
        return Session.WriteFile(
            "music/" + Name,
            WavFile{.Bits = 8, .Data = AudioBytes(Noise(Frames, 8, 7), 8)}.Whole());
    }
    /// As a loud clip of 16 bits leaves it in a document of 8 bits.
    static void PutLoudSample(std::int32_t Position) {
        BlockCarrBuffClass Loud;
        Loud.ReDimSize(1);
        Loud.WaveLR(1, 128);
        WaveStore->WaveDataInsert(Position, 1, &Loud, nullptr, "Paste", true);
    }
    /// Opens a file of 16 bits mono and takes `Deleted` samples off its front.
    std::string OpenAndEdit(const std::string& Name, std::int32_t Frames = 1000,
                            std::int32_t Deleted = 10) {
        std::string Path = WriteWav(Name, Frames);
        OpenByDialog(Path);
        WaveStore->WaveDataDelete(1, 1, Deleted, "Delete", true);
        EXPECT_TRUE(WaveChanged);
        return Path;
    }
    /// The lock of a handle that both processes have would be that of the other one.
    static void BeforeFork() { OrgFileClose(OrgFileOpenNo); }
    void SaveAs(const std::string& Path) { Around.Choices.push_back(Path); }

    /// A save that fails with one message which begins so and says that the old file is there.
    void ExpectFails(bool ToNewName, const std::string& Words) {
        const Samples Before = LeftOf(*WaveStore);
        const std::vector<std::string> FilesBefore = MusicFiles();
        WaveChanged = BookmarkChanged = true;
        Around.TakeCalls();
        EXPECT_FALSE(Commands.Save(ToNewName));
        EXPECT_THAT(Messages.TakeTexts(),
                    ::testing::ElementsAre(
                        ::testing::AllOf(::testing::StartsWith("Wave file write error|" + Words),
                                         ::testing::EndsWith(std::string("\n\n") + Unchanged))));
        EXPECT_TRUE(WaveChanged);
        EXPECT_TRUE(BookmarkChanged);
        EXPECT_EQ(MusicFiles(), FilesBefore) << "nothing is left over";
        EXPECT_EQ(LeftOf(*WaveStore), Before);
        EXPECT_TRUE(CountsHold());
    }
};

} // namespace quoril::test
