#include "view/WaveDraw.h"

#include "base/Failure.h"
#include "base/QtText.h"
#include "base/ViewState.h"
#include "selection/SelectionMod.h"
#include "view/ColorSettings.h"
#include "view/LineArt.h"
#include "view/PicturePanel.h"
#include "view/WaveColumns.h"
#include "view/ZoomMod.h"

#include <QGuiApplication>

namespace quoril {

WaveDraw::WaveDraw(const WaveSource& WhichSource, std::int32_t Width, std::int32_t Height,
                   double PixelRatio)
    : Source(WhichSource), Document(WhichSource.Facts()), PanelWidth(Width), PanelHeight(Height),
      Ratio(PixelRatio), PanelScale(WaveScaleOf(Width, Height, Document.Bits)),
      ViewEnd(ViewEndOf(Document.Total)), WorkChn(WorkChannels(Document.Channel)),
      Visited(VisitedPositions(ViewFrom, ViewEnd, StepOf(PanelScale.PixelsPerSample))) {
    Source.WillNeed(Visited);
}

void WaveDraw::SetBookmarks(const std::vector<BookmarkRec>* List, const QFont& Font) {
    BookmarkList = List;
    BookmarkFont = Font;
}

void WaveDraw::DrawPanel(QImage& Picture, std::int32_t Channel) {
    LineArt Art(Picture, Ratio);
    DrawSelection(Art, Channel);
    DrawBookmarks(Art);
    const double Middle = PanelScale.ZeroLineY;
    Art.Line({0.0, Middle, static_cast<double>(PanelWidth), Middle},
             ColorOf(WaveColor::CenterLineColor));
    try {
        Source.SamplesAt(Channel, Visited, Samples);
    } catch (const Failure& What) {
        // The window stays usable: the document can be undone, and what is in memory saved.
        Art.Words(ShownText(What.what()),
                  ReadableOn(ColorFromBgr(ColorOf(WaveColor::NormalBackColor))),
                  QGuiApplication::font());
        return;
    }
    DrawSamples(Picture);
}

void WaveDraw::DrawSelection(LineArt& Art, std::int32_t Channel) const {
    const SelectionMark Mark = SelectionMarkOf(Channel, WorkChn, PanelScale, ViewEnd);
    if (Mark.Kind == MarkKind::Box)
        Art.Box(Mark.X1, -1.0, Mark.X2, PanelHeight, ColorOf(WaveColor::SelectBackColor));
    else if (Mark.Kind == MarkKind::Point)
        Art.Line({Mark.X1, 2.0, Mark.X1, PanelHeight - 2.0}, ColorOf(WaveColor::OnePtSelLineColor),
                 LineStyle::Dashed);
}

void WaveDraw::DrawBookmarks(LineArt& Art) const {
    if (BookmarkList == nullptr)
        return;
    // The flag's slant and the name's place are distances for the eye.
    WaveScale EyeScale = PanelScale;
    EyeScale.PixelsPerSample /= Ratio;
    const auto EyeHeight = PixelOf(PanelHeight / Ratio);
    const QColor TextColor = ReadableOn(ColorFromBgr(ColorOf(WaveColor::NormalBackColor)));
    for (std::size_t Index = 1; Index < BookmarkList->size(); ++Index) {
        const BookmarkRec& Bookmark = (*BookmarkList)[Index];
        const BookmarkShape Shape =
            BookmarkShapeOf(Bookmark.From, Bookmark.To, EyeScale, EyeHeight);
        Art.Text(Shape.TextX * Ratio, Shape.TextY * Ratio, ShownText(Bookmark.Name), TextColor,
                 BookmarkFont);
        for (const WaveLine& Line : Shape.Lines)
            Art.Line({Line.X1 * Ratio, Line.Y1 * Ratio, Line.X2 * Ratio, Line.Y2 * Ratio},
                     ColorOf(WaveColor::BookMarkColor), LineStyle::Dotted);
    }
}

void WaveDraw::DrawSamples(QImage& Picture) const {
    const std::uint32_t BarColor = ColorFromBgr(ColorOf(WaveColor::WaveFormNormalColor)).rgb();
    std::vector<WaveLayer> Layers;
    const auto Layer = [&](std::uint32_t Color) -> WaveColumns& {
        return Layers.emplace_back(WaveLayer{{Picture.width(), Picture.height()}, Color}).Columns;
    };
    if (StyleHasBars(WaveFormDrawStyle))
        AddBars(Layer(BarColor));
    if (StyleHasLines(WaveFormDrawStyle))
        AddLines(Layer(ColorFromBgr(ColorOf(WaveColor::WaveFormBetweenColor)).rgb()));
    if (StyleHasDots(WaveFormDrawStyle, PanelScale.PixelsPerSample))
        AddDots(Layer(BarColor));
    // Where samples stand apart, what is drawn of each is as thick as the screen's scale asks.
    if (PanelScale.PixelsPerSample > 1.0)
        for (WaveLayer& Each : Layers)
            Each.Columns.Thicken(static_cast<std::int32_t>(Ratio));
    WaveColumns::Fill(Layers, reinterpret_cast<std::uint32_t*>(Picture.bits()),
                      Picture.bytesPerLine() / 4);
}

void WaveDraw::AddBars(WaveColumns& Bars) const {
    const bool Uniform = StyleIsUniform(WaveFormDrawStyle);
    const double Middle = PanelScale.ZeroLineY;
    for (std::size_t Index = 0; Index < Visited.size(); ++Index) {
        const double Y = PanelScale.YOf(Samples[Index]);
        Bars.AddBar(PanelScale.XOf(Visited[Index]), Y, Uniform ? 2.0 * Middle - Y : Middle);
    }
}

void WaveDraw::AddLines(WaveColumns& Lines) const {
    std::size_t Previous = 0;
    for (std::size_t Index = 0; Index < Visited.size(); Previous = Index++)
        Lines.AddLine(PanelScale.XOf(Visited[Previous]), PanelScale.YOf(Samples[Previous]),
                      PanelScale.XOf(Visited[Index]), PanelScale.YOf(Samples[Index]));
}

void WaveDraw::AddDots(WaveColumns& Dots) const {
    // Every sample that a line starts from, as AddLines does; so the last one has no dot unless it
    // is the only one.
    std::size_t Previous = 0;
    for (std::size_t Index = 0; Index < Visited.size(); Previous = Index++) {
        const double Y = PanelScale.YOf(Samples[Previous]);
        Dots.AddBar(PanelScale.XOf(Visited[Previous]), Y, Y);
    }
}

} // namespace quoril
