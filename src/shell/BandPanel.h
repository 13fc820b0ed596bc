// A picture with a column for each frequency band, worked by mouse and by keys.
#pragma once

#include "effects/BandPicture.h"
#include "view/PicturePanel.h"

#include <QAccessible>

#include <functional>

namespace quoril {

/// Tells what the user does, and shows what it is told. Keys are those that a picture of bands
/// takes: arrows, Page Up, Page Down, Home, End and Space.
class BandPanel final : public PicturePanel {
  public:
    /// For a screen reader it is a slider, a check box or a button.
    BandPanel(const QString& Name, const QString& AccessibleName, QAccessible::Role Role,
              QWidget* Parent);

    std::function<void(const QPoint& Pixel)> Pressed; ///< left button; pixels of the picture
    std::function<void(const QPoint& Pixel)> Moved;
    std::function<void(const QPoint& GlobalPos)> MenuWanted;
    std::function<void(int Key)> KeyPressed;
    std::function<void(int Percent)> ValueWanted; ///< by a screen reader, of a slider
    std::function<void()> Redraw;                 ///< another size, or the focus has come or gone

    /// What a screen reader tells of the chosen band: which one it is, and the percent of a slider
    /// or the mark of a check box, 1 or 0.
    void Tell(const QString& Band, int Value);
    [[nodiscard]] int SpokenValue() const noexcept { return Told; }
    [[nodiscard]] QAccessible::Role SpokenRole() const noexcept { return Kind; }
    /// The geometry of the picture for that many bands.
    [[nodiscard]] BandPicture Geometry(std::int32_t NoOfBands) const;

  protected:
    void mousePressEvent(QMouseEvent* Event) override;
    void mouseMoveEvent(QMouseEvent* Event) override;
    void contextMenuEvent(QContextMenuEvent* Event) override;
    void keyPressEvent(QKeyEvent* Event) override;
    void resizeEvent(QResizeEvent* Event) override;
    void focusInEvent(QFocusEvent* Event) override;
    void focusOutEvent(QFocusEvent* Event) override;

  private:
    QAccessible::Role Kind;
    int Told = 0;
};

} // namespace quoril
