// A picture of bands as a screen reader sees it: the control that it is for its chosen band.
#pragma once

namespace quoril {

/// From now on every BandPanel is told to screen readers as the control that its role names, with
/// the value or the mark of the chosen band, and can be worked by them. May be called again.
void InstallSpokenPanels();

} // namespace quoril
