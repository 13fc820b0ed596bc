#include "view/StripDraw.h"

#include "base/QtText.h"
#include "view/ColorSettings.h"
#include "view/LineArt.h"
#include "view/WaveColumns.h"

namespace quoril {

namespace {

constexpr std::int32_t Red = 0x0000FF;
constexpr std::int32_t Gray = 0x808080;
constexpr std::int32_t Black = 0;

void DrawPlaySelection(LineArt& Art, const PlaySelectionShape& Shape, double Height) {
    if (Shape.Kind == MarkKind::Box) {
        Art.Box(Shape.X1, 0.0, Shape.X2, Height, Gray);
        Art.Outline(Shape.X1, 0.0, Shape.X2, Height - Art.Thick(), Red);
    }
    for (const WaveLine& Line : Shape.Lines)
        Art.Line(Line, Red);
}

} // namespace

void DrawPlayScale(QImage& Picture, const ScaleView& View, double PixelRatio, const QFont& Font) {
    LineArt Art(Picture, PixelRatio);
    const double Height = Picture.height();
    DrawPlaySelection(Art, PlaySelectionShapeOf(View, Picture.height()), Height);

    ScaleView EyeView = View;
    EyeView.Width = PixelOf(View.Width / PixelRatio);
    EyeView.PixelsPerSample = View.PixelsPerSample / PixelRatio;
    const ScaleTicks Ticks = ScaleTicksOf(EyeView);
    for (const ScaleTick& Tick : Ticks.Ticks) {
        const double X = Tick.X * PixelRatio;
        Art.Line({X, 0.0, X, Height}, Black);
        Art.Text(X + 3.0 * PixelRatio, 0.0, ShownText(Tick.Text), Qt::black, Font);
    }
    if (!Ticks.StartText.empty())
        Art.Text(3.0 * PixelRatio, 0.0, ShownText(Ticks.StartText), Qt::black, Font);
}

void DrawScrollScale(QImage& Picture, const ScrollScale& What, double PixelRatio) {
    LineArt Art(Picture, PixelRatio);
    const double Height = Picture.height();
    const ScrollBox& View = What.View;
    if (View.Kind == MarkKind::Box)
        Art.Box(View.X1, View.Y1, View.X2, View.Y2, ColorOf(WaveColor::NormalBackColor));
    const ScrollBox& Selection = What.Selection;
    if (Selection.Kind == MarkKind::Point)
        Art.Line({Selection.X1, 0.0, Selection.X1, Height}, ColorOf(WaveColor::OnePtSelLineColor),
                 LineStyle::Dotted);
    else if (Selection.Kind == MarkKind::Box)
        Art.Box(Selection.X1, Selection.Y1, Selection.X2, Selection.Y2,
                ColorOf(WaveColor::SelectBackColor));
    const ScrollBox& Play = What.PlaySelection;
    if (Play.Kind == MarkKind::Point)
        Art.Line({Play.X1, 0.0, Play.X1, Height}, Red);
    else if (Play.Kind == MarkKind::Box)
        Art.Outline(Play.X1, Play.Y1, Play.X2, Play.Y2, Red);
}

} // namespace quoril
