// Listening to one band of the first two seconds of the selection.
#pragma once

#include "storage/BlockCarrBuffClass.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace quoril {

class BandPreview {
  public:
    BandPreview() = default;
    /// Ends the sound and gives the bands back.
    ~BandPreview();
    BandPreview(const BandPreview&) = delete;
    BandPreview& operator=(const BandPreview&) = delete;

    /// Ends the sound, and takes the first two seconds of the selection unless they were taken.
    /// False when the user backs out of the question for a selection. Fails when they cannot be
    /// taken.
    bool Collect();
    /// Whether the bands must be split before one can be heard.
    [[nodiscard]] bool MustSplit() const noexcept { return !BandsReady; }
    /// Plays a band of that many. Fails when the bands cannot be split; what keeps the player from
    /// playing is told by the play controls.
    void Audition(std::int32_t Band, std::int32_t NoOfBands);
    /// The number of bands is another one.
    void BandsChanged() noexcept { BandsReady = false; }

  private:
    using Carriers = std::vector<std::unique_ptr<BlockCarrBuffClass>>;

    void Split(std::int32_t NoOfBands);

    std::int32_t From = 0;
    std::int32_t To = 0;
    std::int32_t WorkChn = 0;
    std::unique_ptr<BlockCarrBuffClass> PreviewL;
    std::unique_ptr<BlockCarrBuffClass> PreviewR;
    bool PreviewReady = false;
    Carriers BandCarrL; ///< a band each, lowest first; empty for a channel that is not in work
    Carriers BandCarrR;
    bool BandsReady = false;
};

} // namespace quoril
