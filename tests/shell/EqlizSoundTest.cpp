// Listening to a band from the dialog of the bands, with a double of the player.
#include "effects/LiteralFilters.h"
#include "playback/PlaybackDoubles.h"
#include "shell/EqlizFixture.h"
#include "storage/StorageChecks.h"

#include <QLineEdit>

namespace quoril::test {
namespace {

class EqlizSoundTest : public EqlizFixture {
  protected:
    EqlizSoundTest() {
        DsPlayer = std::make_unique<DsPlayClass>(
            [this] { return std::make_unique<PlayerDouble>(Player); });
        SoundDriverState = 1;
        Player.Calls.clear();
    }
    ~EqlizSoundTest() override { DsPlayer = std::make_unique<DsPlayClass>(nullptr); }

    static Samples SamplesOf(const BlockCarrBuffClass& Carrier) {
        SampleArray Got(static_cast<std::size_t>(Carrier.WaveINos) + 1);
        Carrier.QuickBuffGet(1, Got);
        return {Got.begin() + 1, Got.end()};
    }
    [[nodiscard]] static Samples Band(std::int32_t Chn, std::size_t Which, std::int32_t NoOfBands) {
        return LiteralSplit(ChannelSamples(*WaveStore, Chn), 11025, 16, NoOfBands)[Which];
    }
    /// What of the calls to the player is heard.
    Lines TakeHeard() {
        Lines Heard;
        for (const std::string& Call : std::exchange(Player.Calls, {}))
            if (Call.starts_with("Play") || Call == "Stop")
                Heard.push_back(Call);
        return Heard;
    }
    static QRgb Corner(BandPanel* Picture, std::int32_t NoOfBands, std::int32_t Band) {
        return Picture->Picture().pixel(Picture->Geometry(NoOfBands).Left(Band), 0);
    }

    PlayerDouble::Answers Player;
};

/// Keeps what a picture showed at each of its paintings.
class PaintWatch final : public QObject {
  public:
    explicit PaintWatch(BandPanel* Watched) : Panel(Watched) { Panel->installEventFilter(this); }
    std::vector<QImage> Shown;

  protected:
    bool eventFilter(QObject* Watched, QEvent* Event) override {
        if (Event->type() == QEvent::Paint)
            Shown.push_back(Panel->Picture().copy());
        return QObject::eventFilter(Watched, Event);
    }

  private:
    BandPanel* Panel;
};

TEST_F(EqlizSoundTest, AClickPlaysItsBandAndTheEndOfTheDialogStopsIt) {
    for (const char* Command : {"Equalize_Mnu_0", "Equalize_Mnu_1"}) {
        With(Command, [&](QWidget* Dialog) {
            Click(Panel(Dialog, "BandPlayPic"), 8, 6);
            EXPECT_EQ(TakeHeard(), Lines{"PlayForward"});
            EXPECT_TRUE(SamplesOf(*PlayBuffL) == Band(1, 6, 8));
            EXPECT_TRUE(SamplesOf(*PlayBuffR) == Band(2, 6, 8));
            Click(Panel(Dialog, "BandPlayPic"), 8, 2);
            EXPECT_EQ(TakeHeard(), (Lines{"Stop", "PlayForward"}));
            EXPECT_TRUE(SamplesOf(*PlayBuffL) == Band(1, 2, 8));
            EXPECT_TRUE(SamplesOf(*PlayBuffR) == Band(2, 2, 8));
            Click(Panel(Dialog, "BandPlayPic"), 8, 6); // what was heard before can be heard again
            EXPECT_TRUE(SamplesOf(*PlayBuffR) == Band(2, 6, 8));
            (void)TakeHeard();
            Press(Dialog, "Cancel_Btn");
        });
        EXPECT_EQ(TakeHeard(), Lines{"Stop"});
    }
}

TEST_F(EqlizSoundTest, WhatPlaysIsStoppedWhenTheDialogComes) {
    DsPlayer->Component().PlayForward();
    (void)TakeHeard();
    With("Equalize_Mnu_0", [&](QWidget* Dialog) {
        EXPECT_EQ(TakeHeard(), Lines{"Stop"});
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizSoundTest, AnotherNumberOfBandsIsSplitAnewAndNoneOfThemIsFramed) {
    With("Equalize_Mnu_0", [&](QWidget* Dialog) {
        BandPanel* Picture = Panel(Dialog, "BandPlayPic");
        Click(Picture, 8, 2);
        EXPECT_EQ(Corner(Picture, 8, 2), Red);
        auto* Count = Part<QLineEdit>(Dialog, "NoofBand_Txt");
        Count->setFocus();
        Count->setText("4");
        QTest::keyClick(Count, Qt::Key_Return);
        for (const std::int32_t Each : {1, 2, 3, 4})
            EXPECT_NE(Corner(Picture, 4, Each), Red) << Each;
        Click(Picture, 4, 4);
        EXPECT_TRUE(SamplesOf(*PlayBuffL) == Band(1, 4, 4));
        EXPECT_EQ(Corner(Picture, 4, 4), Red);
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizSoundTest, WhileTheBandsAreSplitThePictureAsksToWait) {
    With("Equalize_Mnu_0", [&](QWidget* Dialog) {
        BandPanel* Picture = Panel(Dialog, "BandPlayPic");
        // Letters on a strip without columns.
        const auto Waits = [](const QImage& Shown) {
            const int Beside = Shown.width() * 3 / 16; // in the second column
            if (Shown.pixel(Beside, Shown.height() - 2) != White)
                return false;
            bool Letters = false;
            for (int X = 0; X < Shown.width(); ++X)
                for (int Y = 0; Y < Shown.height(); ++Y)
                    Letters = Letters || qGray(Shown.pixel(X, Y)) < 128;
            return Letters;
        };
        ASSERT_TRUE(QTest::qWaitForWindowExposed(Dialog));
        PaintWatch Watch(Picture);
        Click(Picture, 8, 3);
        EXPECT_EQ(std::ranges::count_if(Watch.Shown, Waits), 1);
        EXPECT_FALSE(Waits(Picture->Picture()));
        Watch.Shown.clear();
        Click(Picture, 8, 4); // this one is there
        EXPECT_EQ(std::ranges::count_if(Watch.Shown, Waits), 0);
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizSoundTest, WhatCannotBeSplitIsToldUnderTheTitleOfTheCommand) {
    std::filesystem::resize_file(Music() + "/a.wav", 100); // by another program
    const auto Listen = [&](const char* Command) {
        With(Command, [&](QWidget* Dialog) {
            Click(Panel(Dialog, "BandPlayPic"), 8, 3);
            EXPECT_NE(Corner(Panel(Dialog, "BandPlayPic"), 8, 3), Red);
            Press(Dialog, "Cancel_Btn");
        });
        EXPECT_TRUE(TakeHeard().empty());
        const Lines Told = Messages->TakeTexts();
        return Told.size() == 1 ? Told[0].substr(0, Told[0].find('|'))
                                : std::to_string(Told.size());
    };
    EXPECT_EQ(Listen("Equalize_Mnu_0"), "Equalizier Error");
    EXPECT_EQ(Listen("Equalize_Mnu_1"), "Band Pass Filter Error");
}

TEST_F(EqlizSoundTest, WithTheRightChannelAloneThatOneIsHeard) {
    SelBoth = false;
    SelSingle = 2;
    With("Equalize_Mnu_0", [&](QWidget* Dialog) {
        Click(Panel(Dialog, "BandPlayPic"), 8, 5);
        EXPECT_TRUE(SamplesOf(*PlayBuffL) == Band(2, 5, 8));
        EXPECT_EQ(PlayBuffR, nullptr);
        EXPECT_EQ(PlayChannels, 1);
        EXPECT_EQ(PlayWorkChn, 2);
        Press(Dialog, "Cancel_Btn");
    });
    SelBoth = true;
    SelSingle = 1;
}

} // namespace
} // namespace quoril::test
