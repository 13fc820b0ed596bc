// The keys of the main window that change view, selection and tool. The keys of playing are in the
// play controls.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace quoril {

class WaveMouseClass;

enum class MainKey : std::uint8_t {
    Escape,
    X,
    Z,
    F2,
    F3,
    F4,
    F5,
    Up,
    Down,
    Left,
    Right,
    Home,
    End,
    B,
    S,
    M
};

/// What a key needs of the window.
struct MainKeySurroundings {
    const WaveMouseClass& Mouse; ///< Esc does nothing while a range is dragged
    std::int32_t PanelWidth = 0; ///< of the first wave panel, in pixels
    /// Runs a menu entry, if it is enabled.
    std::function<void(const std::string&)> RunEntry;
};

/// A key was pressed, alone or with Ctrl or Shift. Every change of the view ends with a refresh,
/// which applies the limits. Throws Failure as the commands do.
void MainKeyPressed(MainKey Key, bool Ctrl, bool Shift, const MainKeySurroundings& Around);

} // namespace quoril
