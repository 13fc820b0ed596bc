// A drawing surface that keeps what is drawn into it.
#pragma once

#include <QColor>
#include <QImage>
#include <QWidget>

#include <algorithm>
#include <cstdint>

class QMouseEvent;

namespace quoril {

/// A widget that shows an image. One pixel of the image is one pixel of the screen at every scale
/// of the desktop, and all arithmetic of the wave view is in these pixels: `W` and `H` are the
/// widget's size times the screen's scale, rounded. So the picture is sharp at any scale, and what
/// a drawing costs is bounded by the width of the screen. Distances that are meant for the eye (a
/// label's width, the slant of a bookmark) are multiplied by PixelRatio().
class PicturePanel : public QWidget {
  public:
    PicturePanel(const QString& Name, QWidget* Parent);

    /// Edges above and below the picture, in pixels of the window system.
    void SetEdges(int Above, int Below);
    /// The place of the picture in the widget.
    [[nodiscard]] QRect InnerRect() const;
    /// The inner size in pixels of the screen.
    [[nodiscard]] int ScaleWidth() const;
    [[nodiscard]] int ScaleHeight() const;
    /// The distance from the first column of pixels to the last, 1 at least.
    [[nodiscard]] double ScaleSpan() const { return std::max(ScaleWidth() - 1, 1); }
    /// Pixels of the screen for one pixel of the window system: 1, 1.25, 2 and so on.
    [[nodiscard]] double PixelRatio() const { return devicePixelRatioF(); }
    /// Where a mouse position lies in the picture.
    [[nodiscard]] QPoint PixelAt(const QPointF& MousePos) const;
    /// Where an event of the mouse, told to any widget of the window, happened on this one, to the
    /// pixel of the screen. The toolkit rounds the place in a widget to whole pixels of the window
    /// system, but not that in the window; where the latter is wrong, as in the first event after
    /// hovering over a button, it is the place on the screen. Turns of the wheel are told unrounded
    /// by themselves.
    [[nodiscard]] QPointF PlaceOf(const QMouseEvent& Event) const;

    /// The background, taken by the next Clear. 0x00BBGGRR.
    void SetBackColor(std::int32_t Color);
    [[nodiscard]] QColor BackColor() const { return Back; }

    /// The image, of the panel's present size. A changed size gives a cleared one. Whoever has
    /// drawn calls update().
    [[nodiscard]] QImage& Picture();
    void Clear();

  protected:
    void paintEvent(QPaintEvent* Event) override;
    void resizeEvent(QResizeEvent* Event) override;

  private:
    QColor Back;
    QImage Image;
    int EdgeAbove = 0;
    int EdgeBelow = 0;
};

/// A vertical line over a panel: a line cursor or the play position. It begins at one column of the
/// picture and is as wide as the whole part of the screen's scale. The mouse passes through it.
class PanelLine final : public QWidget {
  public:
    PanelLine(const QString& Name, PicturePanel* Panel);
    /// The column of the picture that the line covers; a negative one is out of sight.
    void SetX(int Pixel);
    [[nodiscard]] int X() const { return Column; }
    void SetColor(std::int32_t Color);
    [[nodiscard]] QColor Color() const { return LineColor; }

  protected:
    void paintEvent(QPaintEvent* Event) override;
    bool eventFilter(QObject* Watched, QEvent* Event) override;

  private:
    void Place();
    [[nodiscard]] int Thick() const { return std::max(1, static_cast<int>(Owner->PixelRatio())); }

    PicturePanel* Owner;
    QColor LineColor = Qt::white;
    int Column = -2;
};

/// 0x00BBGGRR as a colour of the toolkit.
[[nodiscard]] QColor ColorFromBgr(std::int32_t Color);

} // namespace quoril
