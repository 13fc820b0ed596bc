// A process that finds the clip of another one: a line of text, descriptions, and files.
#pragma once

#include "audiofile/OpenSaveClass.h"
#include "audiofile/WavMaker.h"
#include "edit/ClipDescription.h"
#include "edit/ClipMarker.h"
#include "edit/CopyPasteFixture.h"

#include <cstring>

namespace quoril::test {

class ClipImportFixture : public CopyPasteFixture {
  protected:
    using Words = std::vector<std::int32_t>;

    void Offer(std::int32_t Channels, std::int32_t Length) {
        ClipMarker Marker;
        Marker.Channels = Channels;
        Marker.Length = Length;
        Marker.Freq = 1000;
        Marker.ClipPointer = 4711;
        Marker.Folder = AppPath;
        Slot.Held = ClipMarkerLine(Marker);
    }
    static void Describe(const Words& Longs) {
        ClipDescriptionWrite(ClipDescriptionName(AppPath, 1), Longs);
    }
    /// One block; the name packed as it must be.
    static Words OneBlock(const std::string& Name, std::int32_t Length, std::int32_t Kind,
                          std::int32_t Start, std::int32_t FilePos) {
        Words Longs = {0, 1};
        const auto NameWords = static_cast<std::int32_t>((Name.size() + 3) / 4);
        Longs.push_back(NameWords + 1);
        Longs.push_back(static_cast<std::int32_t>(Name.size()));
        Longs.resize(Longs.size() + static_cast<std::size_t>(NameWords));
        std::memcpy(&Longs[4], Name.data(), Name.size());
        Longs.insert(Longs.end(), {Length, Kind, Start, FilePos, 1, 16});
        Longs[0] = static_cast<std::int32_t>(Longs.size()) - 1;
        return Longs;
    }
    [[nodiscard]] std::string ForeignFile(std::int32_t Count) const {
        Bytes Contents;
        for (std::int32_t i = 1; i <= Count; ++i) {
            Contents.push_back(static_cast<std::uint8_t>(i));
            Contents.push_back(0);
        }
        return Session.WriteFile("foreign.tmp", Contents);
    }
    /// A document of 4500 samples that lie in the opened file; the file's name.
    std::string OpenedFile(std::int32_t Channels) {
        std::string Path = Session.WriteFile(
            "a.wav", WavFile{.Channels = Channels,
                             .Rate = 1000,
                             .Data = AudioBytes(Noise(4500 * Channels, 16, 3), 16)}
                         .Whole());
        bool Loaded = false;
        OpenSaveClass().FileLoadWave(*WaveStore, Path, Loaded);
        EXPECT_TRUE(Loaded);
        WaveStore->UndoInfoReset();
        return Path;
    }
    void ExpectRefused(const char* Why) {
        Document({1, 2});
        const std::int32_t Used = MemoryUsed;
        PasteAt(PasteInsert, 1);
        EXPECT_THAT(Messages.Texts(), ::testing::SizeIs(1)) << Why;
        for (const std::string& Text : Messages.TakeTexts())
            EXPECT_TRUE(Text.starts_with("Get Wave Form from Clipboard Failed|")) << Text;
        EXPECT_THAT(Left(), ::testing::ElementsAre(1, 2)) << Why;
        EXPECT_EQ(WaveStore->UndoCount(), 0) << Why;
        EXPECT_EQ(MemoryUsed, Used) << Why;
        EXPECT_EQ(BrokenRule(*WaveStore), "") << Why;
    }
};

} // namespace quoril::test
