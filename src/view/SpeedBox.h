// The panel with the two speed sliders, over the waveform.
#pragma once

#include <QFrame>

#include <array>
#include <cstdint>
#include <functional>

class QLabel;
class QSlider;
class QToolButton;

namespace quoril {

/// `SpeedBoxPic` with `PlaySpeedSlider_1` (forward), `PlaySpeedSlider_2` (reverse) and
/// `SpeedCloseBtn`. Fast is up. It does no arithmetic: values and texts come from outside.
class SpeedBox final : public QFrame {
  public:
    /// The values that the sliders may take, from the fastest to the slowest.
    SpeedBox(QWidget* Parent, std::int32_t Fastest, std::int32_t Slowest);

    /// Told when the user moves a slider: its index, 1 or 2, and its value.
    std::function<void(std::int32_t Index, std::int32_t Value)> Moved;

    /// Shows the box with the sliders at these values: left of `Right` and below `Top`, in pixels
    /// of its parent, but higher where it would be cut off otherwise.
    void ShowAt(int Right, int Top, std::int32_t ValueFor, std::int32_t ValueRev);
    /// The tool tip of a slider and the text below it.
    void SetText(std::int32_t Index, const QString& Text);

  protected:
    void keyPressEvent(QKeyEvent* Event) override;

  private:
    QSlider* MakeSlider(int Index, const QString& Name, std::int32_t Fastest, std::int32_t Slowest);

    std::array<QSlider*, 3> PlaySpeedSlider{};
    std::array<QLabel*, 3> ValueLbl{};
    QToolButton* SpeedCloseBtn;
    bool Setting = false;
};

} // namespace quoril
