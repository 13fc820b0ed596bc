// The play controls in the main window: buttons, keys, cursors, the speed panel.
#pragma once

#include "playback/PlayWindow.h"

#include <QObject>

class QTimer;

namespace quoril {

class SpeedBox;
class WaveEditor_Frm;

/// The main window as the play controls see it. One for each window, which must outlive it.
class PlayControls final : public QObject, public PlayWindow {
  public:
    explicit PlayControls(WaveEditor_Frm& MainWindow);
    ~PlayControls() override;
    PlayControls(const PlayControls&) = delete;
    PlayControls& operator=(const PlayControls&) = delete;

    bool ConfirmSelection(std::int32_t& FromPos, std::int32_t& ToPos, std::int32_t& WorkChn,
                          std::int32_t Need, const std::string& Operation) override;
    [[nodiscard]] std::string FormatDuration(float Seconds) const override;
    [[nodiscard]] std::int32_t Handle() const override;
    void RefreshPlayScale() override;
    void RefreshScrollScale() override;
    [[nodiscard]] bool PlayEnabled() const override;
    void EnablePlayButtons() override;
    void SetPause(bool Enabled, const std::string& ToolTip) override;
    void DisableStop() override;
    void SetLoopPressed(bool Pressed) override;
    void SetPlayPosTimer(bool On) override;
    void MovePlayPosShp(std::int32_t X1, std::int32_t X2) override;
    void SetPlayPosLbl(const std::string& Text) override;
    void SetPlayStatusLbl(const std::string& Text) override;
    void SetSpeedText(std::int32_t Index, const std::string& Text) override;
    void ShowSpeedBox(std::int32_t ValueFor, std::int32_t ValueRev) override;

  protected:
    bool eventFilter(QObject* Watched, QEvent* Event) override;

  private:
    void RegisterButtons();
    [[nodiscard]] int SpeedBoxTop() const;

    WaveEditor_Frm& Window;
    QTimer* PlayPosTimer;
    SpeedBox* SpeedBoxPic;
};

} // namespace quoril
