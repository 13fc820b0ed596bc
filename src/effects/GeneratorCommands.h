// The commands that fill the selection with a tone or with noise, or multiply it by a tone.
#pragma once

#include <cstdint>
#include <string>

namespace quoril {

/// The texts of the question for one or two frequencies.
struct EntFrqEntry {
    std::string Start = "200"; ///< `EnterFrqTxt`(1)
    std::string End = "1000";  ///< `EnterFrqTxt`(2)
    bool UseTwo = true;        ///< `UseTwoChk`; otherwise the start counts for both
    friend bool operator==(const EntFrqEntry&, const EntFrqEntry&) = default;
};

struct EntFrqAnswer {
    bool OkClicked = false;
    EntFrqEntry Entry;
};

/// Implemented by `EntFrqFrm`, and by tests.
class EntFrqDialog {
  public:
    virtual ~EntFrqDialog() = default;
    /// Asks, beginning with the given texts.
    virtual EntFrqAnswer ShowEntFrq(const EntFrqEntry& Shown) = 0;
};

/// Names who asks from now on. The object must outlive its use; with null the question counts as
/// cancelled.
void SetEntFrqDialog(EntFrqDialog* Receiver) noexcept;

// Each works on the selection and is one undo step. A failure is told, and leaves the document as
// it was.

/// `DrawSine_Mnu`: asks for frequencies from 2 to 20000 Hz, and puts a tone in the place of the
/// samples.
void DrawSine();
/// `DrawNoise_Mnu`: puts noise in the place of the samples, the same in both channels.
void DrawNoise();
/// `Modulate_Mnu`: asks for frequencies likewise, and multiplies the samples by a tone. The tone is
/// as long as what is selected of the left channel, so the right channel alone stays as it is.
void Modulate();

} // namespace quoril
