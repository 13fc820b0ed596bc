// Copy, cut, paste and undo of a clip that lies in a file: what each takes in time, in bytes
// read, and in memory. Then the pastes that compute and the laps, beside the walk of a gain.
#include "BenchSupport.h"
#include "base/ViewState.h"
#include "edit/CopyPasteCommands.h"
#include "edit/LapMod.h"
#include "edit/PasteMixing.h"
#include "edit/PrivateClipboard.h"
#include "edit/SystemClipboard.h"
#include "effects/GainKernel.h"
#include "platform/SampleMemory.h"
#include "selection/SelectionMod.h"
#include "settings/STD1.h"
#include "storage/CarrierWalk.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace quoril;
using namespace quoril::bench;

// A clip in an original file counts four times against the 2 GiB that the disk guard can add up: in
// the document, in the clip before, in the carriers, and as what the copy asks for. One in work
// files counts once.
constexpr std::int32_t FileFrames = 140000000; // 560 MB
constexpr std::int32_t FileClip = 112500000;   // 450 MB
constexpr std::int32_t WorkFrames = 500000000; // 2 GB
constexpr std::int32_t WorkClip = 250000000;   // 1 GB
constexpr double Kibibyte = 1024;
constexpr double Mebibyte = 1024 * Kibibyte;

[[noreturn]] void Fail(const char* Why) {
    throw std::runtime_error(Why);
}

/// No file is chosen, nothing is shown.
struct Windows final : FileDialogs, CopyPasteView, LapDialog {
    std::optional<std::string> OpenFile(const FileDialogRequest&) override { return {}; }
    std::optional<std::string> SaveFile(const FileDialogRequest&) override { return {}; }
    void ShowCopied(const CopiedLines&) override { ++Copies; }
    LapAnswer ShowLap() override { return {true, {LapSelectionBoth, LapTransition}}; }
    int Copies = 0;
    std::int32_t LapTransition = LapSmooth;
};

void Select(std::int32_t From, std::int32_t To) {
    SelBoth = true;
    SelStart = From;
    SelEnd = To;
}

/// The worst of several runs of one operation.
struct Cost {
    double Seconds = 1e9;    ///< the shortest
    std::int64_t Bytes = 0;  ///< the most read
    std::int64_t Growth = 0; ///< the most memory added
    void Of(const std::function<void()>& What) {
        const std::int64_t Memory = SampleMemoryInUse();
        const std::int64_t Before = BytesRead();
        Seconds = std::min(Seconds, SecondsOf(What));
        Bytes = std::max(Bytes, BytesRead() - Before);
        Growth = std::max(Growth, SampleMemoryInUse() - Memory);
    }
    void Tell(const std::string& Name) const {
        Report((Name + ", shortest").c_str(), 1000 * Seconds, "ms", 5);
        Report((Name + ", most bytes read").c_str(), static_cast<double>(Bytes) / Mebibyte, "MiB",
               16);
        Report((Name + ", most memory added").c_str(), static_cast<double>(Growth) / Mebibyte,
               "MiB", 16);
    }
};

/// Has the selection recorded before a command asks for it.
void Record(const char* Operation) {
    std::int32_t From = 0;
    std::int32_t To = 0;
    std::int32_t WorkChn = 0;
    (void)ConfirmSelection(From, To, WorkChn, NeedOnePoint, Operation);
}

/// A fresh document each round, as a border stays once it is made.
void LargeClip(const std::function<void()>& Open, std::int32_t Frames, std::int32_t Clip,
               const std::string& Where) {
    Windows Shown;
    CopyPasteClass Commands(Shown, Shown);
    const std::int32_t From = (Frames - Clip) / 2 + 12345;
    Cost Copy;
    Cost Cut;
    Cost Insert;
    Cost Replace;
    Cost Undo;
    Cost Recorded;
    for (int Round = 0; Round < 5; ++Round) {
        Open();
        Select(From, From + Clip - 1);
        // A selection that is new goes to the settings file, and that waits for the disk.
        Recorded.Of([&] { Commands.Copy(); });
        Copy.Of([&] { Commands.Copy(); });
        Cut.Of([&] { Commands.Cut(); });
        if (Shown.Copies != 3 * (Round + 1) || WaveStore->WavWaveINos != Frames - Clip)
            throw std::runtime_error("the cut did nothing");
        Undo.Of([] { WaveStore->Undo(); });
        const auto Paste = [&](std::int32_t Mode, std::int32_t Position, Cost& Taken) {
            Select(Position, Position);
            Record(Mode == PasteInsert ? "Paste Insert" : "Paste Replace");
            Taken.Of([&] { Commands.Paste(Mode); });
            if (WaveStore->UndoCount() == 0)
                throw std::runtime_error("the paste did nothing");
            Undo.Of([] { WaveStore->Undo(); });
        };
        Paste(PasteInsert, From / 2, Insert);
        Paste(PasteReplace, From / 2 + 54321, Replace);
        if (WaveStore->WavWaveINos != Frames)
            throw std::runtime_error("the undo did nothing");
        ClearClipboard();
        WaveStore.reset();
    }
    Recorded.Tell("copy " + Where + ", with a new selection");
    Copy.Tell("copy " + Where);
    Cut.Tell("cut " + Where);
    Insert.Tell("paste insert " + Where);
    Replace.Tell("paste replace " + Where);
    Undo.Tell("undo of each " + Where);
}

/// The clip of another process, which copied it from a file that is not open here.
void Imported(const BenchFolder& Folder, const std::string& File) {
    int Told[2];
    int Held[2];
    if (::pipe(Told) != 0 || ::pipe(Held) != 0)
        Fail("no pipe");
    const ::pid_t Other = ::fork();
    if (Other == 0) {
        ::close(Held[1]);
        AppPath = SessionDir = Folder.Path("other");
        if (::mkdir(AppPath.c_str(), 0700) != 0)
            std::_Exit(1);
        Windows Shown;
        CopyPasteClass Commands(Shown, Shown);
        DocumentOf(File);
        Select(FileFrames / 8, FileFrames / 8 + FileClip - 1);
        Cost Copy;
        Copy.Of([&] { Commands.Copy(); });
        Copy.Of([&] { Commands.Copy(); });
        Copy.Tell("copy 450 MB for another process");
        const std::string Line = CurrentSystemClipboard().Text();
        if (::write(Told[1], Line.data(), Line.size()) != static_cast<::ssize_t>(Line.size()))
            std::_Exit(1);
        ::close(Told[1]);
        char Ignored = 0;
        while (::read(Held[0], &Ignored, 1) > 0) {
        }
        std::_Exit(0);
    }
    ::close(Told[1]);
    ::close(Held[0]);
    std::string Line(4096, ' ');
    const ::ssize_t Length = ::read(Told[0], Line.data(), Line.size());
    if (Length <= 0)
        Fail("the other process did not copy");
    Line.resize(static_cast<std::size_t>(Length));
    CurrentSystemClipboard().SetText(Line);
    Windows Shown;
    CopyPasteClass Commands(Shown, Shown);
    const std::string Small = Folder.Path("small.wav");
    MakeWav(Small, 2, 44100, true);
    DocumentOf(Small);
    Select(100, 100);
    const std::int64_t Before = BytesRead();
    const double Seconds = SecondsOf([&] { Commands.Paste(PasteInsert); });
    if (WaveStore->WavWaveINos != 44100 + FileClip)
        Fail("the import did nothing");
    Report("paste 450 MB of another process: bytes read / the clip's",
           static_cast<double>(BytesRead() - Before) / (4.0 * FileClip), "times", 1.05);
    Report("paste 450 MB of another process", Seconds, "s", 0);
    Cost Again;
    Again.Of([&] { Commands.Paste(PasteInsert); });
    Again.Tell("paste it once more");
    ClearClipboard();
    WaveStore.reset();
    ::close(Held[1]);
    int Status = 0;
    if (::waitpid(Other, &Status, 0) != Other || Status != 0)
        Fail("the other process failed");
}

// ---- The commands that compute

constexpr std::int32_t Walked = 32 << 20;

void FillCarrier(BlockCarrBuffClass& Carrier, std::int32_t Seed) {
    Carrier.ReDimSize(Walked);
    ChangeSideBySide(std::array{ChannelChange{
        &Carrier,
        [Seed](std::int32_t First, std::span<const std::int16_t>, std::span<std::int16_t> Out) {
            for (std::size_t i = 0; i < Out.size(); ++i)
                Out[i] = static_cast<std::int16_t>((static_cast<std::size_t>(First) + i) * 7919 +
                                                   static_cast<std::size_t>(Seed));
        }}});
}

double GainSeconds(BlockCarrBuffClass& Carrier) {
    return SecondsOf([&] {
        ChangeSideBySide(std::array{ChannelChange{
            &Carrier, [](std::int32_t, std::span<const std::int16_t> In,
                         std::span<std::int16_t> Out) { GainRun(In, Out, 0.999, 16); }}});
    });
}

/// A document whose samples lie in memory: `Length` samples in one channel.
void DocumentInMemory(const BlockCarrBuffClass& From) {
    WaveStore = std::make_unique<FileMemoClass>();
    WaveStore->WavFmtChannel = 1;
    WaveStore->WaveDataInsert(1, 1, &From, nullptr, "Fill", true);
    WaveStore->UndoInfoReset();
}

void Computing() {
    constexpr int Rounds = 61;
    BlockCarrBuffClass Clip;
    BlockCarrBuffClass Doc;
    FillCarrier(Clip, 1);
    FillCarrier(Doc, 12345);
    struct Paste {
        PasteMixMode Mode;
        const char* Name;
        double Walks; ///< over the clip
        double Best = 1e9;
    };
    Paste Pastes[] = {{PasteMixMode::Mix, "Mix", 1},
                      {PasteMixMode::Modulate, "Modulate", 1},
                      {PasteMixMode::CrossFade, "Cross Fade", 1}};
    double Gain = 1e9;
    for (int Round = 0; Round < Rounds; ++Round) {
        Gain = std::min(Gain, GainSeconds(Clip));
        for (Paste& Each : Pastes)
            Each.Best = std::min(Each.Best, SecondsOf([&] {
                                     PasteMixing(Each.Mode, 1, 16, &Clip, nullptr, &Doc, nullptr);
                                 }));
    }
    for (const Paste& Each : Pastes)
        Report((std::string("speed of ") + Each.Name + " / speed of the gain by runs").c_str(),
               Gain / Each.Best, "times", -0.5);
    Windows Shown;
    SetLapDialog(&Shown);
    double LapBest[2] = {1e9, 1e9};
    double Shared = 1e9;
    for (int Round = 0; Round < Rounds; ++Round) {
        {
            BlockSet Copies;
            Clip.BuffBlocksGetCopy(Copies);
            Shared = std::min(Shared, GainSeconds(Clip));
            BlockSetFree(Copies);
        }
        for (const std::int32_t Style : {LapSmooth, LapSimple}) {
            DocumentInMemory(Clip);
            Select(1, Walked);
            Shown.LapTransition = Style;
            double& Best = LapBest[Style == LapSmooth ? 0 : 1];
            Best = std::min(Best, SecondsOf([] { EditLap(); }));
            if (WaveStore->WavWaveINos != Walked / 2)
                Fail("the lap did nothing");
            WaveStore.reset();
        }
    }
    SetLapDialog(nullptr);
    // The lap makes half as many samples as it reads.
    Report("speed of Lap, smooth / speed of the gain by runs", Gain / 2 / LapBest[0], "times",
           -0.5);
    Report("speed of Lap, simple / speed of the gain by runs", Gain / 2 / LapBest[1], "times",
           -0.5);
    Report("speed of the gain on shared samples / of the gain by runs", Gain / Shared, "times", 0);
}

int Run(const std::string& What) {
    const BenchFolder Folder;
    if (What == "clip") {
        const std::string Large = Folder.Path("large.wav");
        MakeWav(Large, 2, FileFrames, true);
        ::sync(); // what waits to be written would be waited for by the settings file
        Imported(Folder, Large);
        LargeClip([&] { DocumentOf(Large); }, FileFrames, FileClip, "450 MB of an original file");
        MakeWav(Folder.Path("samples"), 1, WorkFrames, true);
        ::sync();
        LargeClip([&] { DocumentInWorkFiles(Folder.Path("samples"), WorkFrames); }, WorkFrames,
                  WorkClip, "1 GB in work files");
    } else if (What == "computing") {
        Computing();
    } else {
        std::fprintf(stderr, "usage: quoril_clip_bench clip|computing\n");
        return 2;
    }
    return 0;
}

} // namespace

// A negative limit is a lower one.
int main(int argc, char** argv) {
    MemoryBudget = 536870912;
    try {
        return Run(argc > 1 ? argv[1] : "");
    } catch (const std::exception& Why) {
        std::fprintf(stderr, "%s\n", Why.what());
        return 1;
    }
}
