// The whole program in a test: its own folders, scripted messages, and an end that is only noted.
#pragma once

#include "base/DocumentState.h"
#include "settings/STD1.h"
#include "settings/UserGuideMod.h"
#include "shell/WEditor.h"
#include "support/ScriptedMessages.h"
#include "support/TempFolder.h"

#include <QTest>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>

namespace quoril::test {

class EditorFixture : public ::testing::Test {
  protected:
    EditorFixture() {
        std::filesystem::create_directory(App());
        std::filesystem::create_directory(Temp());
        std::filesystem::create_directory(Music());
        AppPath = App();
        IniPut("General", "ShowNewUserGuide", "0");
    }
    ~EditorFixture() override { Editor.reset(); }

    [[nodiscard]] std::string App() const { return (Folder / "app"); }
    [[nodiscard]] std::string Temp() const { return (Folder / "temp"); }
    [[nodiscard]] std::string Music() const { return (Folder / "music"); }

    /// A file of 16 bits at 11025 Hz with rising samples; those of a second channel rise faster.
    std::string WriteWav(const std::string& Name, std::uint32_t Frames = 1000,
                         std::uint32_t Channels = 1) const {
        const std::string Path = Music() + "/" + Name;
        std::ofstream Out(Path, std::ios::binary);
        const auto Number = [&Out](std::uint32_t Value, int Bytes) {
            for (; Bytes > 0; --Bytes, Value >>= 8U)
                Out.put(static_cast<char>(Value & 0xFFU));
        };
        Out << "RIFF";
        Number(Frames * 2 * Channels + 36, 4);
        Out << "WAVEfmt ";
        Number(16, 4);
        Number(1, 2);
        Number(Channels, 2);
        Number(11025, 4);
        Number(22050 * Channels, 4);
        Number(2 * Channels, 2);
        Number(16, 2);
        Out << "data";
        Number(Frames * 2 * Channels, 4);
        for (std::uint32_t Frame = 0; Frame < Frames; ++Frame)
            for (std::uint32_t Channel = 1; Channel <= Channels; ++Channel)
                Number(Frame * (1 + 12 * (Channel - 1)), 2);
        return Path;
    }

    /// The program before its entry sequence; messages go to `Messages`.
    void Make(const std::string& CommandLine = {}) {
        WEditorSurroundings Around;
        Around.InstalledPath = [this] { return App(); };
        Around.SystemTempPath = [this] { return Temp(); };
        Around.CommandLine = CommandLine;
        Around.CurrentFolder = Music();
        Around.ExitProcess = [this](int Code) { Exit = Code; };
        Editor = std::make_unique<WEditorClass>(std::move(Around));
        Messages = std::make_unique<ScriptedMessages>();
    }
    void Start(const std::string& CommandLine = {}) {
        Make(CommandLine);
        Editor->Enter();
        ASSERT_NE(Editor->MainWindowFrm(), nullptr);
    }
    [[nodiscard]] WaveEditor_Frm& Window() const { return *Editor->MainWindowFrm(); }
    [[nodiscard]] std::string Title() const { return Window().windowTitle().toStdString(); }
    void Menu(const char* Name) const { Window().Entry(Name)->trigger(); }

    TempFolder Folder;
    std::unique_ptr<WEditorClass> Editor;
    std::unique_ptr<ScriptedMessages> Messages;
    std::optional<int> Exit;
};

} // namespace quoril::test
