// What the commands on files have around them in tests: dialogs, window, bookmarks.
#pragma once

#include "audiofile/FileCommands.h"
#include "audiofile/WavMaker.h"
#include "base/BusyPointer.h"
#include "base/DocumentState.h"
#include "base/Failure.h"
#include "bookmarks/BookmarkFileMod.h"
#include "settings/UserGuideMod.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <deque>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quoril::test {

/// Everything around the commands: what they do is noted in order, what they ask is scripted.
struct Surroundings final : FileDialogs, FileCommandsView {
    std::vector<std::string> Calls;
    std::vector<FileDialogRequest> Requests;
    std::deque<std::optional<std::string>> Choices;
    std::vector<std::string> Captions;
    std::optional<std::pair<std::int32_t, std::int32_t>> Selection;
    std::int32_t Channel = 0;
    bool ProgramStarts = true;

    std::optional<std::string> Choose(const FileDialogRequest& Request) {
        Requests.push_back(Request);
        if (Choices.empty())
            return std::nullopt;
        const auto Choice = Choices.front();
        Choices.pop_front();
        return Choice;
    }
    std::optional<std::string> OpenFile(const FileDialogRequest& Request) override {
        Calls.push_back("open dialog");
        return Choose(Request);
    }
    std::optional<std::string> SaveFile(const FileDialogRequest& Request) override {
        Calls.push_back("save dialog");
        return Choose(Request);
    }
    bool ConfirmSelection(std::int32_t& FromPos, std::int32_t& ToPos, std::int32_t& WorkChn,
                          std::int32_t Need, const std::string& Operation) override {
        Calls.push_back("confirm " + std::to_string(Need) + " " + Operation);
        WorkChn = Channel;
        if (!Selection)
            return false;
        FromPos = Selection->first;
        ToPos = Selection->second;
        return true;
    }
    void DocumentReplaced(std::int32_t Total, bool IsNew) override {
        Calls.push_back((IsNew ? "new document " : "document ") + std::to_string(Total));
    }
    void SetDocumentTitle(const std::string& FileName) override {
        Calls.push_back("title " + FileName);
    }
    void SetMenu_To_DefaultFormat() override {
        Calls.push_back("format " + std::to_string(CurrentFormat.Channel) + " " +
                        std::to_string(CurrentFormat.Freq) + " " +
                        std::to_string(CurrentFormat.Bits));
    }
    void Refresh_Wave_View() override { Calls.push_back("refresh"); }
    void ShowRecentFiles(const std::vector<std::string>& What) override {
        Calls.push_back("recent");
        Captions = What;
    }
    void StartProgram(const std::vector<std::string>& Arguments) override {
        Calls.push_back("start" + (Arguments.empty() ? std::string() : " " + Arguments.front()));
        if (!ProgramStarts)
            throw Failure("No such program");
    }
    void ReleasePlayingFiles(bool OnlyOriginal) override {
        Calls.push_back(OnlyOriginal ? "release original" : "release");
    }
    void EmptyBookmarks() override { Calls.push_back("empty bookmarks"); }
    bool BookmarksLieInFiles = false;
    void LoadBookmarks(const std::string& FileName) override {
        if (BookmarksLieInFiles) {
            quoril::LoadBookmarks(FileName);
            return;
        }
        Calls.push_back("load " + std::filesystem::path(FileName).filename().string());
    }
    bool BookmarksFail = false;
    bool SaveBookmarks(const std::string& FileName) override {
        if (BookmarksLieInFiles)
            return quoril::SaveBookmarks(FileName);
        if (BookmarksFail)
            throw Failure("No space left\n" + FileName);
        Calls.push_back("bookmarks [" + std::filesystem::path(FileName).filename().string() + "]");
        return true;
    }

    std::vector<std::string> TakeCalls() { return std::exchange(Calls, {}); }
};

/// The commands in a session of their own, with the folder "music".
class FileCommandsFixture : public ::testing::Test {
  protected:
    FileCommandsFixture() {
        GuideChanceFix(0.9);
        SetBusyPointerRoutine([this](bool Busy) { BusyDepth += Busy ? 1 : -1; });
        WaveStore = std::make_unique<FileMemoClass>();
        WaveDir = Session.Path("music");
        std::filesystem::create_directory(WaveDir);
    }
    ~FileCommandsFixture() override {
        EXPECT_EQ(BusyDepth, 0) << "the busy pointer was left on";
        SetBusyPointerRoutine({});
        WaveStore.reset();
    }

    std::string WriteWav(const std::string& Name, std::int32_t Frames = 1000,
                         std::int32_t Rate = 44100, std::int32_t Channels = 1) const {
        WavFile File;
        File.Rate = Rate;
        File.Channels = Channels;
        File.Data = AudioBytes(Noise(Frames * Channels, 16, 7), 16);
        return Session.WriteFile("music/" + Name, File.Whole());
    }
    void OpenByDialog(const std::string& Path) {
        Around.Choices.push_back(Path);
        Commands.Open(false);
    }

    const TestSession Session;
    ScriptedMessages Messages;
    int BusyDepth = 0;
    Surroundings Around;
    FileCommandsClass Commands{Around, Around};
};

} // namespace quoril::test
