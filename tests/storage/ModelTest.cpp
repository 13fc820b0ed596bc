// The store against a plain array of samples for each channel, in long random runs of edits with a
// tiny budget, so that blocks spill all the time.
//
// QUORIL_MODEL_STEPS sets the number of operations, QUORIL_MODEL_SEED the first seed.

#include "StorageChecks.h"
#include "base/DocumentState.h"
#include "settings/STD1.h"
#include "storage/CarrierWalk.h"
#include "storage/UndoListener.h"
#include "support/FromEnvironment.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <random>

namespace quoril::test {
namespace {

using Samples = std::vector<std::int16_t>;

struct Document {
    std::array<Samples, 2> Channels;
    WaveFormat Format;
};

class Model {
  public:
    explicit Model(std::uint32_t Seed) : Random(Seed) {
        Store.WavFmtChannel = 2;
        Now.Format = {2, Store.WavFmtFreq, Store.WavFmtBits};
    }

    void Step() {
        struct Operation {
            const char* Name;
            int Weight;
            void (Model::*Run)();
        };
        static constexpr std::array<Operation, 15> Operations{{
            {"insert", 10, &Model::Insert},
            {"insert one channel", 5, &Model::InsertOne},
            {"copy and paste", 10, &Model::CopyPaste},
            {"delete", 14, &Model::Delete},
            {"delete one channel", 5, &Model::DeleteOne},
            {"replace", 8, &Model::Replace},
            {"change samples", 12, &Model::Change},
            {"change format", 3, &Model::ChangeFormat},
            {"collect", 8, &Model::Collect},
            {"play", 3, &Model::Play},
            {"undo", 14, &Model::Undo},
            {"release records", 3, &Model::Release},
            {"load a file", 2, &Model::Load},
            {"release the file", 2, &Model::ReleaseFile},
            {"single samples", 6, &Model::Single},
        }};
        int Total = 0;
        for (const Operation& One : Operations)
            Total += One.Weight;
        int Pick = Number(1, Total);
        const Operation* Chosen = Operations.data();
        while (Pick > Chosen->Weight) {
            Pick -= Chosen->Weight;
            ++Chosen;
        }
        Last = Chosen->Name;
        (this->*Chosen->Run)();
    }

    /// What differs between store and model, in words; empty when nothing does.
    [[nodiscard]] std::string Difference(bool Whole) {
        const std::array<std::int32_t, 2> Lengths{Store.WaveNosL(), Store.WaveNosR()};
        for (std::size_t c = 0; c < 2; ++c) {
            if (Lengths[c] != Length(c))
                return Last + ": length of channel " + std::to_string(c + 1);
            if (Whole && ChannelSamples(Store, static_cast<std::int32_t>(c) + 1) != Now.Channels[c])
                return Last + ": samples of channel " + std::to_string(c + 1);
        }
        if (Store.WavWaveINos != std::max(Lengths[0], Lengths[1]))
            return Last + ": WavWaveINos";
        if (WaveFormat{Store.WavFmtChannel, Store.WavFmtFreq, Store.WavFmtBits} != Now.Format)
            return Last + ": format";
        std::string Broken = BrokenRule(Store);
        return Broken.empty() ? Broken : Last + ": " + Broken;
    }

    void Finish() { Store.StorageReset(); }

  private:
    [[nodiscard]] std::int32_t Number(std::int32_t From, std::int32_t To) {
        return std::uniform_int_distribution<std::int32_t>(From, To)(Random);
    }
    [[nodiscard]] std::int32_t Length(std::size_t Channel) const {
        return static_cast<std::int32_t>(Now.Channels[Channel].size());
    }
    [[nodiscard]] std::int32_t Total() const { return Length(0); }
    [[nodiscard]] bool Stereo() const { return Now.Format.Channel == 2; }
    [[nodiscard]] std::int32_t BothChannels() const { return Stereo() ? 0 : 1; }

    /// Before an edit: what undo must bring back.
    void Remember() {
        if (UndoOptionON)
            Past.push_back(Now);
    }

    /// A carrier of new samples or of silence, and the samples that it holds.
    Samples Fill(BlockCarrBuffClass& Carrier, std::int32_t Count) {
        Carrier.ReDimSize(Count);
        Samples Expected(static_cast<std::size_t>(Count), 0);
        if (Number(0, 3) == 0)
            return Expected;
        for (std::int32_t p = 1; p <= Count; ++p) {
            const auto Value = static_cast<std::int16_t>(Number(-32768, 32767));
            Carrier.WaveLR(p, Value);
            Expected[static_cast<std::size_t>(p) - 1] = Value;
        }
        return Expected;
    }

    static void PutInto(Samples& Channel, std::int32_t Position, const Samples& What) {
        Channel.insert(Channel.begin() + (Position - 1), What.begin(), What.end());
    }
    static void TakeFrom(Samples& Channel, std::int32_t Position, std::int32_t Count) {
        Channel.erase(Channel.begin() + (Position - 1), Channel.begin() + (Position - 1 + Count));
    }
    void Pad() {
        if (!Stereo())
            return;
        const std::size_t Longer = std::max(Now.Channels[0].size(), Now.Channels[1].size());
        for (Samples& Channel : Now.Channels)
            Channel.resize(Longer, 0);
    }

    void Insert() {
        if (Total() > 6000)
            return Delete();
        Remember();
        const std::int32_t Position = Number(1, Total() + 1);
        const std::int32_t Count = Number(1, 400);
        BlockCarrBuffClass L;
        BlockCarrBuffClass R;
        const Samples NewL = Fill(L, Count);
        const Samples NewR = Fill(R, Count);
        Store.WaveDataInsert(Position, BothChannels(), &L, &R, "Insert", true);
        PutInto(Now.Channels[0], Position, NewL);
        if (Stereo())
            PutInto(Now.Channels[1], Position, NewR);
    }

    void InsertOne() {
        if (!Stereo() || Total() > 6000)
            return;
        Remember();
        const std::int32_t Position = Number(1, Total() + 1);
        BlockCarrBuffClass New;
        const Samples What = Fill(New, Number(1, 200));
        const std::int32_t Chn = Number(1, 2);
        Store.WaveDataInsert(Position, Chn, &New, &New, "Insert", true);
        PutInto(Now.Channels[static_cast<std::size_t>(Chn) - 1], Position, What);
        Pad();
    }

    bool Range(std::int32_t& From, std::int32_t& To) {
        if (Total() == 0)
            return false;
        From = Number(1, Total());
        To = std::min(Total(), From + Number(0, 500));
        return true;
    }

    void CopyPaste() {
        std::int32_t From = 0;
        std::int32_t To = 0;
        if (Total() > 6000 || !Range(From, To))
            return;
        Remember();
        std::unique_ptr<BlockCarrBuffClass> L;
        std::unique_ptr<BlockCarrBuffClass> R;
        Store.WaveCollectData(From, To, 0, L, R);
        const std::int32_t Position = Number(1, Total() + 1);
        Store.WaveDataInsert(Position, BothChannels(), L.get(), R.get(), "Paste", true);
        for (std::size_t c = 0; c < (Stereo() ? 2U : 1U); ++c) {
            const Samples Copy(Now.Channels[c].begin() + From - 1, Now.Channels[c].begin() + To);
            PutInto(Now.Channels[c], Position, Copy);
        }
    }

    void Delete() {
        std::int32_t From = 0;
        std::int32_t To = 0;
        if (!Range(From, To))
            return;
        Remember();
        Store.WaveDataDelete(From, BothChannels(), To - From + 1, "Delete", true);
        for (std::size_t c = 0; c < (Stereo() ? 2U : 1U); ++c)
            TakeFrom(Now.Channels[c], From, To - From + 1);
    }

    void DeleteOne() {
        std::int32_t From = 0;
        std::int32_t To = 0;
        if (!Stereo() || !Range(From, To))
            return;
        Remember();
        const std::int32_t Chn = Number(1, 2);
        Store.WaveDataDelete(From, Chn, To - From + 1, "Delete", true);
        TakeFrom(Now.Channels[static_cast<std::size_t>(Chn) - 1], From, To - From + 1);
        Pad();
    }

    void Replace() {
        if (Total() == 0)
            return;
        Remember();
        const std::int32_t Position = Number(1, Total());
        const std::int32_t Count = Number(1, 300);
        BlockCarrBuffClass L;
        BlockCarrBuffClass R;
        const std::array<Samples, 2> New{Fill(L, Count), Fill(R, Count)};
        Store.WaveDataReplace(Position, BothChannels(), &L, &R, "Replace", true);
        for (std::size_t c = 0; c < (Stereo() ? 2U : 1U); ++c) {
            const std::int32_t Gone = std::min(Count, Length(c) - Position + 1);
            TakeFrom(Now.Channels[c], Position, Gone);
            PutInto(Now.Channels[c], Position, New[c]);
        }
    }

    /// As an effect does it: take a stretch, change it by samples or by runs, put it back.
    void Change() {
        std::int32_t From = 0;
        std::int32_t To = 0;
        if (!Range(From, To))
            return;
        Remember();
        std::unique_ptr<BlockCarrBuffClass> L;
        std::unique_ptr<BlockCarrBuffClass> R;
        Store.WaveCollectData(From, To, 0, L, R);
        const std::array<BlockCarrBuffClass*, 2> Carriers{L.get(), R.get()};
        const auto Flip = [](std::int16_t Sample) { return static_cast<std::int16_t>(~Sample); };
        const auto FlipRun = [Flip](std::int32_t, std::span<const std::int16_t> In,
                                    std::span<std::int16_t> Out) {
            std::transform(In.begin(), In.end(), Out.begin(), Flip);
        };
        const int How = Number(0, 2);
        if (How == 0 && Stereo())
            ChangeSideBySide(
                std::array{ChannelChange{L.get(), FlipRun}, ChannelChange{R.get(), FlipRun}});
        for (std::size_t c = 0; c < (Stereo() ? 2U : 1U); ++c) {
            BlockCarrBuffClass& Carrier = *Carriers[c];
            if (How == 2)
                for (std::int32_t p = 1; p <= Carrier.WaveINos; ++p)
                    Carrier.WaveLR(p, Flip(Carrier.WaveLR(p)));
            else if (How == 1 || !Stereo())
                ChangeSideBySide(std::array{ChannelChange{&Carrier, FlipRun}});
            std::transform(Now.Channels[c].begin() + From - 1, Now.Channels[c].begin() + To,
                           Now.Channels[c].begin() + From - 1, Flip);
        }
        Store.WaveDataReplace(From, BothChannels(), L.get(), R.get(), "Invert", true);
    }

    void ChangeFormat() {
        if (Total() == 0)
            return;
        Remember();
        const std::int32_t Bits = Number(0, 1) == 0 ? 8 : 16;
        const std::int32_t Freq = Number(1000, 200000);
        Store.WaveDataChangeFmt(0, Bits, Freq, "Convert");
        Now.Format.Bits = Bits;
        Now.Format.Freq = Freq;
        BlockCarrBuffClass L;
        BlockCarrBuffClass R;
        const std::array<Samples, 2> New{Fill(L, 1), Fill(R, 1)};
        Store.WaveDataReplace(1, BothChannels(), &L, &R, "Convert", true);
        for (std::size_t c = 0; c < (Stereo() ? 2U : 1U); ++c)
            Now.Channels[c][0] = New[c][0];
    }

    void Collect() {
        std::int32_t From = 0;
        std::int32_t To = 0;
        if (!Range(From, To))
            return;
        SampleArray L;
        SampleArray R;
        Store.WaveCollectBuff(From, To, 0, L, R);
        EXPECT_TRUE(std::equal(L.begin() + 1, L.end(), Now.Channels[0].begin() + From - 1));
        if (Stereo()) {
            EXPECT_TRUE(std::equal(R.begin() + 1, R.end(), Now.Channels[1].begin() + From - 1));
        }
    }

    void Play() {
        std::int32_t From = 0;
        std::int32_t To = 0;
        if (!Range(From, To))
            return;
        std::unique_ptr<BlockCarrBuffClass> L;
        std::unique_ptr<BlockCarrBuffClass> R;
        Store.WaveCollectData_ForPlay(From, To, 0, L, R);
        EXPECT_EQ(L->WaveINos, To - From + 1);
        for (const std::int32_t BlockNo : L->Blocks().Numbers())
            EXPECT_NE(Block(BlockNo).BlockKind, 2);
    }

    void Undo() {
        if (Past.empty())
            return;
        Store.Undo();
        Now = Past.back();
        Past.pop_back();
        EXPECT_EQ(Store.UndoMenu().Enabled, !Past.empty());
    }

    void Release() {
        if (Past.empty())
            return;
        if (Number(0, 4) == 0) {
            Store.UndoInfoReset();
            Past.clear();
            return;
        }
        // The oldest step ends at the first record that is the last of its step.
        std::int32_t No = Store.UndoReleased() + 1;
        while (!Store.UndoRecords()[static_cast<std::size_t>(No)].UndoIsLast)
            ++No;
        Store.UndoInfoReleaseUpto(No);
        Past.erase(Past.begin());
    }

    /// Opens an interleaved file in place, as a reader does.
    void Load() {
        Store.StorageReset();
        Past.clear();
        const std::int32_t Channels = Number(1, 2);
        const std::int32_t Bits = Number(0, 1) == 0 ? 8 : 16;
        const std::int32_t Frames = Number(1, 3000);
        FileName =
            RawFile(Session, "doc" + std::to_string(++FileCount) + ".raw", Frames, Channels, Bits);
        const std::int32_t OrgNo = OrgFileAdd(FileName, Channels, Bits);
        Store.WavFmtChannel = Channels;
        Store.WavFmtBits = Bits;
        Now.Format = {Channels, Store.WavFmtFreq, Bits};
        BlockCarrBuffClass L;
        BlockCarrBuffClass R;
        const std::int32_t Left = OrgBlock(OrgNo, Frames, 1);
        if (Channels == 2) {
            const std::int32_t Right = OrgBlock(OrgNo, Frames, 2);
            OrgPairAdd(Left, Right);
            R.BuffBlocksPutFresh({Right});
        }
        L.BuffBlocksPutFresh({Left});
        Store.SwitchUndoOff = true;
        Store.WaveDataInsert(1, Channels == 2 ? 0 : 1, &L, &R, "", true);
        Store.SwitchUndoOff = false;
        for (std::int32_t c = 1; c <= 2; ++c) {
            Samples& Channel = Now.Channels[static_cast<std::size_t>(c) - 1];
            Channel = c <= Channels ? TestSamples(1, Frames, c) : Samples();
            if (Bits == 8)
                for (std::int16_t& One : Channel)
                    One = static_cast<std::int16_t>((One & 255) - 128);
        }
    }

    void ReleaseFile() {
        OrgFileReleaseByName(FileName);
        EXPECT_TRUE(FileDelete(FileName));
    }

    void Single() {
        if (Total() == 0)
            return;
        for (int i = 0; i < 5; ++i) {
            const std::int32_t p = Number(1, Total());
            EXPECT_EQ(Store.WaveL(p), Now.Channels[0][static_cast<std::size_t>(p) - 1]);
            EXPECT_EQ(Store.WaveR(p),
                      Stereo() ? Now.Channels[1][static_cast<std::size_t>(p) - 1] : 0);
        }
    }

    TestSession Session{20000};
    ScriptedMessages Messages;
    FileMemoClass Store;
    std::mt19937 Random;
    Document Now;
    std::vector<Document> Past;
    std::string Last = "start";
    std::string FileName;
    int FileCount = 0;
};

class StoreModel : public ::testing::TestWithParam<std::uint32_t> {};

TEST_P(StoreModel, AgreesWithPlainArraysAfterEveryOperation) {
    constexpr std::uint32_t Runs = 4;
    const std::uint32_t Seed = FromEnvironment("QUORIL_MODEL_SEED", 20240) + GetParam();
    const std::uint32_t Steps = FromEnvironment("QUORIL_MODEL_STEPS", 120000) / Runs;
    std::printf("seed %u, %u steps\n", Seed, Steps);
    Model Checked(Seed);
    for (std::uint32_t i = 0; i < Steps; ++i) {
        Checked.Step();
        const std::string Difference = Checked.Difference(true);
        ASSERT_EQ(Difference, "") << "seed " << Seed << ", step " << i;
        ASSERT_FALSE(HasFailure()) << "seed " << Seed << ", step " << i;
    }
    Checked.Finish();
    EXPECT_EQ(TestSession::SessionFiles(), std::vector<std::string>());
    EXPECT_EQ(BrokenRule(std::vector<const BlockSet*>{}), "");
}

INSTANTIATE_TEST_SUITE_P(Seeds, StoreModel, ::testing::Range(1U, 5U));

} // namespace
} // namespace quoril::test
