// The commands on a document of a test, with a slot of text for the desktop's clipboard.
#pragma once

#include "base/BusyPointer.h"
#include "base/DocumentState.h"
#include "base/ProgressReport.h"
#include "base/ViewState.h"
#include "edit/CopyPasteCommands.h"
#include "edit/PrivateClipboard.h"
#include "edit/SystemClipboard.h"
#include "settings/STD1.h"
#include "settings/UserGuideMod.h"
#include "storage/StorageChecks.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>

namespace quoril::test {

struct TextSlot final : SystemClipboard {
    [[nodiscard]] std::string Text() const override { return Held; }
    void SetText(const std::string& Text) override { Held = Text; }
    void Clear() override {
        Held.clear();
        ++Cleared;
    }
    std::string Held;
    int Cleared = 0; ///< how often
};

struct CopyPasteWindowsDouble final : FileDialogs, CopyPasteView {
    std::optional<std::string> OpenFile(const FileDialogRequest& Request) override {
        Requests.push_back(Request);
        return Choice;
    }
    std::optional<std::string> SaveFile(const FileDialogRequest&) override { return std::nullopt; }
    void ShowCopied(const CopiedLines& Lines) override { Copied.push_back(Lines); }

    std::optional<std::string> Choice;
    std::vector<FileDialogRequest> Requests;
    std::vector<CopiedLines> Copied;
};

class CopyPasteFixture : public ::testing::Test {
  protected:
    CopyPasteFixture() {
        SetSystemClipboard(&Slot);
        SetBusyPointerRoutine([this](bool Busy) { BusyDepth += Busy ? 1 : -1; });
        UndoOptionON = true;
        WaveStore = std::make_unique<FileMemoClass>();
        WaveStore->WavFmtFreq = 1000;
    }
    ~CopyPasteFixture() override {
        EXPECT_EQ(BusyDepth, 0);
        SetBusyPointerRoutine({});
        ClearClipboard();
        WaveStore.reset();
        SetSystemClipboard(nullptr);
    }

    /// The document: these samples, left and, unless empty, right. No undo record.
    static void Document(const std::vector<std::int16_t>& Left,
                         const std::vector<std::int16_t>& Right = {}, std::int32_t Bits = 16) {
        WaveStore->UndoInfoReset();
        WaveStore->StorageReset();
        WaveStore->WavFmtChannel = Right.empty() ? 1 : 2;
        WaveStore->WavFmtBits = Bits;
        BlockCarrBuffClass L;
        BlockCarrBuffClass R;
        Fill(L, Left);
        Fill(R, Right);
        WaveStore->WaveDataInsert(1, Right.empty() ? 1 : 0, &L, Right.empty() ? nullptr : &R, "",
                                  true);
        WaveStore->UndoInfoReset();
        SelBoth = true;
        Select(0, 0);
    }
    static void Fill(BlockCarrBuffClass& Carrier, const std::vector<std::int16_t>& Values) {
        if (Values.empty())
            return;
        Carrier.ReDimSize(static_cast<std::int32_t>(Values.size()));
        for (std::size_t i = 0; i < Values.size(); ++i)
            Carrier.WaveLR(static_cast<std::int32_t>(i) + 1, Values[i]);
    }
    /// Copies these samples in the document's format and then makes the document another one.
    void Clip(const std::vector<std::int16_t>& Left, const std::vector<std::int16_t>& Right = {},
              std::int32_t Bits = 16) {
        Document(Left, Right, Bits);
        Select(1, static_cast<std::int32_t>(Left.size()));
        if (Left.size() == 1) {
            BlockCarrBuffClass L;
            BlockCarrBuffClass R;
            Fill(L, Left);
            Fill(R, Right);
            ASSERT_TRUE(PutClipboard(Right.empty() ? 1 : 0, Bits, 1000, &L, &R));
            return;
        }
        Commands.Copy();
        ASSERT_NE(ClipPointer, 0);
    }
    static void Select(std::int32_t From, std::int32_t To) {
        SelStart = From;
        SelEnd = To;
    }
    [[nodiscard]] static std::vector<std::int16_t> Left() { return ChannelSamples(*WaveStore, 1); }
    [[nodiscard]] static std::vector<std::int16_t> Right() { return ChannelSamples(*WaveStore, 2); }
    void PasteAt(std::int32_t Mode, std::int32_t Pos) {
        Select(Pos, Pos);
        Commands.Paste(Mode);
    }
    /// The process has forgotten that the clip is its own, as another one would never have known.
    static void BecomeAnotherProcess() {
        ClipPointer = 0;
        ClipCarrL.reset();
        ClipCarrR.reset();
    }

    TestSession Session;
    ScriptedMessages Messages;
    TextSlot Slot;
    int BusyDepth = 0;
    CopyPasteWindowsDouble Windows;
    CopyPasteClass Commands{Windows, Windows};
};

} // namespace quoril::test
