// Which pixels of a panel the waveform covers: one stretch of rows for each column.
//
// Bars stand on the zero line or are mirrored about it, and the lines between samples never turn
// back in time, so what either of them covers in one column is a single stretch. Collecting the
// stretches first and colouring the rows afterwards costs the same whatever the sound is like.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quoril {

/// The pixel column or row of a coordinate: nearest, ties to even, kept within 32 bits.
[[nodiscard]] std::int32_t PixelOf(double Coordinate) noexcept;

struct WaveLayer;

class WaveColumns {
  public:
    /// For a panel of `Width` x `Height` pixels, both at least 1.
    WaveColumns(std::int32_t Width, std::int32_t Height);

    /// A vertical line at X. Rows outside the panel count as its edge, so that a full-scale sample
    /// stays visible; a column outside is left out.
    void AddBar(double X, double Y1, double Y2);
    /// A line between two points, X1 <= X2, one pixel thick: one row a column where it is flatter
    /// than 45 degrees, otherwise one column a row.
    void AddLine(double X1, double Y1, double X2, double Y2);
    /// Makes everything `Pixels` thick, to the right and downward; 1 changes nothing.
    void Thicken(std::int32_t Pixels);

    /// The rows covered in a column, 0 to width - 1; First > Last where nothing is.
    [[nodiscard]] std::int32_t First(std::int32_t Column) const {
        return FirstRow[static_cast<std::size_t>(Column)];
    }
    [[nodiscard]] std::int32_t Last(std::int32_t Column) const {
        return LastRow[static_cast<std::size_t>(Column)];
    }

    /// Colours the covered pixels of an image of this size, each layer over those before it.
    /// `Stride` is the distance between two rows, in pixels.
    static void Fill(const std::vector<WaveLayer>& Layers, std::uint32_t* Pixels,
                     std::ptrdiff_t Stride);

  private:
    void Cover(std::int32_t Column, std::int32_t From, std::int32_t To);
    [[nodiscard]] std::int32_t RowOf(double Y) const;
    void AddSteep(double X1, double Y1, double X2, double Y2);

    std::int32_t PanelWidth;
    std::int32_t PanelHeight;
    std::vector<std::int32_t> FirstRow;
    std::vector<std::int32_t> LastRow;
};

/// One drawing of a picture, and its colour.
struct WaveLayer {
    WaveColumns Columns;
    std::uint32_t Color;
};

} // namespace quoril
