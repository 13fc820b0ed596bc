#include "view/WaveColumns.h"

#include "base/Arithmetic.h"
#include "base/Vectorised.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quoril {

std::int32_t PixelOf(double Coordinate) noexcept {
    return static_cast<std::int32_t>(
        std::clamp(RoundEven(Coordinate), -2147483648.0, 2147483647.0));
}

WaveColumns::WaveColumns(std::int32_t Width, std::int32_t Height)
    : PanelWidth(std::max(Width, 1)), PanelHeight(std::max(Height, 1)),
      FirstRow(static_cast<std::size_t>(PanelWidth), PanelHeight),
      LastRow(static_cast<std::size_t>(PanelWidth), -1) {}

std::int32_t WaveColumns::RowOf(double Y) const {
    return std::clamp(PixelOf(Y), 0, PanelHeight - 1);
}

void WaveColumns::Cover(std::int32_t Column, std::int32_t From, std::int32_t To) {
    if (Column < 0 || Column >= PanelWidth)
        return;
    const auto Index = static_cast<std::size_t>(Column);
    FirstRow[Index] = std::min(FirstRow[Index], From);
    LastRow[Index] = std::max(LastRow[Index], To);
}

void WaveColumns::AddBar(double X, double Y1, double Y2) {
    Cover(PixelOf(X), RowOf(std::min(Y1, Y2)), RowOf(std::max(Y1, Y2)));
}

void WaveColumns::AddLine(double X1, double Y1, double X2, double Y2) {
    if (std::abs(Y2 - Y1) > X2 - X1) {
        AddSteep(X1, Y1, X2, Y2);
        return;
    }
    const std::int32_t From = std::max(PixelOf(X1), 0);
    const std::int32_t To = std::min(PixelOf(X2), PanelWidth - 1);
    const double Slope = X2 > X1 ? (Y2 - Y1) / (X2 - X1) : 0.0;
    for (std::int32_t Column = From; Column <= To; ++Column) {
        const double X = std::clamp(static_cast<double>(Column), X1, X2);
        const std::int32_t Row = RowOf(Y1 + (X - X1) * Slope);
        Cover(Column, Row, Row);
    }
}

void WaveColumns::AddSteep(double X1, double Y1, double X2, double Y2) {
    const std::int32_t From = PixelOf(X1);
    const std::int32_t To = PixelOf(X2);
    if (From == To) {
        Cover(From, RowOf(std::min(Y1, Y2)), RowOf(std::max(Y1, Y2)));
        return;
    }
    // Each row belongs to the column that the line passes at the row's middle, so a column gets the
    // rows between the line's heights at its two edges.
    const double Slope = (Y2 - Y1) / (X2 - X1);
    const bool Down = Slope > 0;
    for (std::int32_t Column = From; Column <= To; ++Column) {
        const double Enter = Column == From ? Y1 : Y1 + (Column - 0.5 - X1) * Slope;
        const double Leave = Column == To ? Y2 : Y1 + (Column + 0.5 - X1) * Slope;
        const std::int32_t Start = Column == From ? PixelOf(Y1)
                                   : Down         ? PixelOf(std::ceil(Enter))
                                                  : PixelOf(std::floor(Enter));
        const std::int32_t End = Column == To ? PixelOf(Y2)
                                 : Down       ? PixelOf(std::ceil(Leave)) - 1
                                              : PixelOf(std::floor(Leave)) + 1;
        if (Down ? Start <= End : Start >= End)
            Cover(Column, std::clamp(std::min(Start, End), 0, PanelHeight - 1),
                  std::clamp(std::max(Start, End), 0, PanelHeight - 1));
    }
}

void WaveColumns::Thicken(std::int32_t Pixels) {
    if (Pixels <= 1)
        return;
    const std::vector<std::int32_t> ThinFirst = FirstRow;
    const std::vector<std::int32_t> ThinLast = LastRow;
    for (std::int32_t Column = 0; Column < PanelWidth; ++Column) {
        const auto Index = static_cast<std::size_t>(Column);
        if (ThinFirst[Index] > ThinLast[Index])
            continue;
        for (std::int32_t Right = 0; Right < Pixels; ++Right)
            Cover(Column + Right, ThinFirst[Index],
                  std::min(ThinLast[Index] + Pixels - 1, PanelHeight - 1));
    }
}

namespace {

QUORIL_VECTORISED
void FillRow(std::uint32_t* Pixels, const std::int32_t* First, const std::int32_t* Last,
             std::int32_t Width, std::int32_t Row, std::uint32_t Color) {
    for (std::int32_t Column = 0; Column < Width; ++Column) {
        const bool Inside = (First[Column] <= Row) & (Row <= Last[Column]);
        Pixels[Column] = Inside ? Color : Pixels[Column];
    }
}

} // namespace

void WaveColumns::Fill(const std::vector<WaveLayer>& Layers, std::uint32_t* Pixels,
                       std::ptrdiff_t Stride) {
    struct Extent {
        std::int32_t Top;
        std::int32_t Bottom;
    };
    std::vector<Extent> Extents;
    Extent All{std::numeric_limits<std::int32_t>::max(), -1};
    for (const WaveLayer& Each : Layers) {
        const WaveColumns& What = Each.Columns;
        Extents.push_back({*std::min_element(What.FirstRow.begin(), What.FirstRow.end()),
                           *std::max_element(What.LastRow.begin(), What.LastRow.end())});
        All.Top = std::min(All.Top, Extents.back().Top);
        All.Bottom = std::max(All.Bottom, Extents.back().Bottom);
    }
    // Row by row, so that a row is in the nearest memory for all its layers.
    for (std::int32_t Row = All.Top; Row <= All.Bottom; ++Row)
        for (std::size_t Index = 0; Index < Layers.size(); ++Index) {
            const WaveColumns& What = Layers[Index].Columns;
            if (Row >= Extents[Index].Top && Row <= Extents[Index].Bottom)
                FillRow(Pixels + Row * Stride, What.FirstRow.data(), What.LastRow.data(),
                        What.PanelWidth, Row, Layers[Index].Color);
        }
}

} // namespace quoril
