// The plain numbers that say which part of the document the user means and sees. Data without
// behaviour, one instance for the process; the journal keeps some of them in its records.
#pragma once

#include <cstdint>

namespace quoril {

/// Positions are sample numbers of one channel from 1; 0 means none. Ranges are inclusive.
extern std::int32_t SelStart;      ///< first sample of the selection
extern std::int32_t SelEnd;        ///< last sample; equal to SelStart for a point
extern std::int32_t PlaySelStart;  ///< first sample of the range made on the time scale
extern std::int32_t PlaySelEnd;    ///< last sample of that range
extern std::int32_t ViewFrom;      ///< first sample at the left edge of the view
extern std::int32_t ViewTotal;     ///< samples across the view
extern bool ViewAll;               ///< the next refresh shows the whole document
extern bool SelBoth;               ///< both channels are selected
extern std::int16_t SelSingle;     ///< 1 left, 2 right: the channel meant while SelBoth is false
extern std::int32_t MouseMode;     ///< 0 select, 1 second point pending, 2 start, 3 end, 7 draw
extern std::int32_t ViewMouseMode; ///< 0 none, 4 and 5 zoom by clicks, 6 zoom at click, 8 pan
extern std::int32_t ZoomFrom;      ///< first click of the zoom tool
extern std::int32_t ZoomTo;        ///< second click of the zoom tool
extern double PixelsPerSample;     ///< (panel width in pixels - 1) / ViewTotal
extern std::int32_t ShowHhmmss;    ///< 1: labels show time, otherwise sample numbers

} // namespace quoril
