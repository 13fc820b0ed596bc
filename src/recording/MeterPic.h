// A level meter.
#pragma once

#include <QWidget>

#include <cstdint>

namespace quoril {

/// A filled bar up from the bottom.
class MeterPic final : public QWidget {
  public:
    explicit MeterPic(QWidget* Parent);
    /// `Bits` tells full scale; the colour is red or blue.
    void Show(std::int32_t Peak, std::int32_t Bits, bool Red);

  protected:
    void paintEvent(QPaintEvent* Event) override;

  private:
    std::int32_t PeakShown = 0;
    std::int32_t BitsShown = 16;
    bool RedShown = false;
};

} // namespace quoril
