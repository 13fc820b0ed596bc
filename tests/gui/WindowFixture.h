// The main window over a document in memory.
#pragma once

#include "base/DocumentState.h"
#include "base/Failure.h"
#include "base/ViewState.h"
#include "bookmarks/BookmarkRec.h"
#include "storage/FileMemoClass.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"
#include "view/ColorSettings.h"
#include "view/PicturePanel.h"
#include "view/WaveEditor_Frm.h"
#include "view/WaveSource.h"

#include <QApplication>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace quoril::test {

/// Samples in two plain arrays, from position 1. Counts what is asked for.
class ArraySource final : public WaveSource {
  public:
    DocumentFacts Document{0, 1000, 1, 16};
    std::vector<std::int16_t> Left;
    std::vector<std::int16_t> Right;
    mutable std::size_t Asked = 0;
    struct Stretch {
        std::int32_t Channel, From, Count;
        friend bool operator==(const Stretch&, const Stretch&) = default;
    };
    mutable std::vector<Stretch> Stretches;
    bool StretchFails = false;

    [[nodiscard]] DocumentFacts Facts() const override { return Document; }
    void WillNeed(const std::vector<std::int32_t>&) const override {}
    void SamplesAt(std::int32_t Channel, const std::vector<std::int32_t>& Positions,
                   std::vector<std::int16_t>& Samples) const override {
        Samples.clear();
        for (const std::int32_t Position : Positions) {
            const auto& From = Channel == 2 ? Right : Left;
            Samples.push_back(From.at(static_cast<std::size_t>(Position - 1)));
        }
        Asked += Positions.size();
    }
    void StretchAt(std::int32_t Channel, std::int32_t From, std::int32_t Count,
                   std::vector<std::int16_t>& Samples) const override {
        if (StretchFails)
            throw Failure("gone");
        Samples.assign(static_cast<std::size_t>(Count) + 1, 0);
        const auto& All = Channel == 2 ? Right : Left;
        for (std::int32_t Index = 1; Index <= Count; ++Index)
            if (const std::int32_t Pos = From + Index - 1; Pos >= 1 && Pos <= Document.Total)
                Samples[static_cast<std::size_t>(Index)] =
                    All.at(static_cast<std::size_t>(Pos - 1));
        Stretches.push_back({Channel, From, Count});
    }
};

inline void ViewStart() {
    SelBoth = true;
    SelSingle = 1;
    SelStart = SelEnd = PlaySelStart = PlaySelEnd = 0;
    MouseMode = ViewMouseMode = 0;
    ShowHhmmss = 0;
    ViewFrom = 1;
    ViewTotal = 0;
    ViewAll = true;
    WaveFormDrawStyle = 3;
    Bookmarks.assign(1, {});
}

/// A stereo document of 1000 samples at 1000 Hz in the real store, and the window, not yet shown.
class WindowTest : public ::testing::Test {
  protected:
    WindowTest() {
        ViewStart();
        WaveStore = std::make_unique<FileMemoClass>();
        CurrentFormat = {2, 1000, 16};
        Document(1000, 2);
        Window = std::make_unique<WaveEditor_Frm>();
    }
    ~WindowTest() override {
        Window.reset();
        WaveStore.reset();
    }

    /// Silence of that length.
    static void Document(std::int32_t Total, std::int32_t Channel, std::int32_t Freq = 1000) {
        WaveStore->StorageReset();
        WaveStore->WavFmtChannel = Channel;
        WaveStore->WavFmtFreq = Freq;
        if (Total < 1)
            return;
        BlockCarrBuffClass Silence;
        Silence.ReDimSize(Total);
        WaveStore->SwitchUndoOff = true;
        WaveStore->WaveDataInsert(1, Channel == 2 ? 0 : 1, &Silence, &Silence, "", false);
        WaveStore->SwitchUndoOff = false;
        WaveChanged = false;
    }
    void Show(int Width = 900, int Height = 600) {
        Window->resize(Width, Height);
        Window->show();
        QApplication::processEvents();
    }
    template <class Kind>
    Kind* Find(const char* Name) const {
        auto* Found = Window->findChild<Kind*>(QLatin1String(Name));
        EXPECT_NE(Found, nullptr) << Name;
        return Found;
    }

    const TestSession Session;
    ScriptedMessages Messages;
    std::unique_ptr<WaveEditor_Frm> Window;
};

} // namespace quoril::test
