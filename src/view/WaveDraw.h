// The picture of the document on the wave panels, drawn from the samples themselves.
//
// Numbers are pixels of the screen (see PicturePanel). What a picture costs is bounded by the width
// of the panel: the visited samples are read once for each channel, and nothing between them.
#pragma once

#include "bookmarks/BookmarkRec.h"
#include "view/WaveGeometry.h"
#include "view/WaveSource.h"

#include <QFont>
#include <QImage>

#include <cstdint>
#include <vector>

namespace quoril {

class LineArt;
class WaveColumns;

class WaveDraw {
  public:
    /// For panels of the size of the first one, `Width` x `Height`, and the view, selection,
    /// colours and style in use. The limits of the view have been applied.
    WaveDraw(const WaveSource& WhichSource, std::int32_t Width, std::int32_t Height,
             double PixelRatio);

    /// Draws channel 1 or 2 over a cleared panel: selection, then bookmarks, zero line, bars and
    /// lines, each over what is there. Where the samples cannot be read (the file is gone, or
    /// another program has changed it) the words of the failure stand in their place.
    void DrawPanel(QImage& Picture, std::int32_t Channel);

    /// Bookmarks to draw, from index 1; null draws none.
    void SetBookmarks(const std::vector<BookmarkRec>* List, const QFont& Font);

    [[nodiscard]] const WaveScale& Scale() const { return PanelScale; }

  private:
    void DrawSelection(LineArt& Art, std::int32_t Channel) const;
    void DrawBookmarks(LineArt& Art) const;
    void DrawSamples(QImage& Picture) const;
    void AddBars(WaveColumns& Bars) const;
    void AddLines(WaveColumns& Lines) const;
    void AddDots(WaveColumns& Dots) const;

    const WaveSource& Source;
    DocumentFacts Document;
    std::int32_t PanelWidth;
    std::int32_t PanelHeight;
    double Ratio;
    WaveScale PanelScale;
    std::int32_t ViewEnd;
    std::int32_t WorkChn;
    std::vector<std::int32_t> Visited;
    std::vector<std::int16_t> Samples;
    const std::vector<BookmarkRec>* BookmarkList = nullptr;
    QFont BookmarkFont;
};

} // namespace quoril
