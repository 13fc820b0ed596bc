// A command over a 30-minute file from its call to the painted window, with the real progress
// window, and what that window costs.
#include "BenchSupport.h"
#include "base/ProgressReport.h"
#include "base/ViewState.h"
#include "effects/TransformCommands.h"
#include "effects/VolumeCommands.h"
#include "selection/ViewListener.h"
#include "shell/ProgressFrm.h"
#include "storage/FileMemoClass.h"
#include "view/WaveEditor_Frm.h"

#include <QApplication>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>

using namespace quoril;
using namespace quoril::bench;

namespace {

constexpr std::int32_t Frames = 30 * 60 * 44100;
constexpr int Rounds = 7;

/// Hands everything on to the window and takes the time that it needs for it.
class TimedProgress final : public ProgressReport {
  public:
    explicit TimedProgress(ProgressReport& Timed) : Behind(Timed) { SetProgressReport(this); }
    ~TimedProgress() override { SetProgressReport(&Behind); }
    TimedProgress(const TimedProgress&) = delete;
    TimedProgress& operator=(const TimedProgress&) = delete;
    void SetVisible(bool Visible) override { Behind.SetVisible(Visible); }
    void SetBarColor1(std::uint32_t Color) override { Behind.SetBarColor1(Color); }
    void SetCurrentProgress(float Value) override {
        Seconds += SecondsOf([&] { Behind.SetCurrentProgress(Value); });
    }
    [[nodiscard]] float CurrentProgress() const override { return Behind.CurrentProgress(); }
    void BlinkLamp() override { Behind.BlinkLamp(); }
    [[nodiscard]] bool IsOn() const override { return Behind.IsOn(); }
    void Suspend() override { Behind.Suspend(); }
    void Resume() override { Behind.Resume(); }

    double Seconds = 0;

  private:
    ProgressReport& Behind;
};

struct Case {
    const char* Name;
    void (*Run)();
    double Command = 1e9;
    double Undo = 1e9;
    double Share = 1;
};

void Measure(Case& Each, TimedProgress& Progress, const std::string& File) {
    OpenWav(*WaveStore, File);
    SelBoth = true;
    SelStart = 1;
    SelEnd = WaveStore->WavWaveINos;
    ViewAll = true;
    Refresh_Wave_View();
    QApplication::processEvents();
    Progress.Seconds = 0;
    const double Seconds = SecondsOf([&] {
        Each.Run();
        QApplication::processEvents();
    });
    if (WaveStore->UndoCount() == 0)
        std::exit(1);
    Each.Command = std::min(Each.Command, Seconds);
    Each.Share = std::min(Each.Share, Progress.Seconds / Seconds);
    Each.Undo = std::min(Each.Undo, SecondsOf([] {
                             WaveStore->Undo();
                             Refresh_Wave_View();
                             QApplication::processEvents();
                         }));
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication Application(argc, argv);
    const BenchFolder Folder;
    MemoryBudget = 536870912;
    const std::string File = Folder.Path("in.wav");
    MakeWav(File, 2, Frames, true);
    WaveStore = std::make_unique<FileMemoClass>();
    {
        WaveEditor_Frm Window;
        ProgressFrmClass Frm(&Window);
        TimedProgress Progress(Frm);
        Window.resize(1920, 1080);
        Window.show();
        QApplication::processEvents();
        Case Cases[] = {{"volume 50 %", [] { AdjustVolume(16); }},
                        {"Maximize", [] { OptimizeVolume(3); }},
                        {"Reverse", [] { WaveReverse(); }}};
        for (int Round = 0; Round < Rounds; ++Round)
            for (Case& Each : Cases)
                Measure(Each, Progress, File);
        for (const Case& Each : Cases) {
            const std::string Name = Each.Name;
            Report((Name + " of 318 MB, to the painted window").c_str(), Each.Command, "s", 0.6);
            Report((Name + ": its undo, to the painted window").c_str(), Each.Undo, "s", 0.05);
            Report((Name + ": share of the progress window").c_str(), 100 * Each.Share, "%", 1);
        }
    }
    WaveStore.reset();
    return 0;
}
