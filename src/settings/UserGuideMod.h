// Guide tips: small advice that the user can tick off, and the one-line help of the status bar.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quoril {

extern bool ShowNewUserGuide;      ///< switches all tips
extern std::int32_t GuideIKnowRun; ///< how many tips in a row the user has ticked

/// One tip as the window shows it.
struct GuideTip {
    std::string Message;      ///< `GuideLbl`
    bool IKnow = false;       ///< `IKnowChk` is ticked
    bool IKnowEnabled = true; ///< `IKnowChk` can be changed
};

/// Implemented by the windows, and by tests.
class UserGuideWindow {
  public:
    virtual ~UserGuideWindow() = default;
    /// Shows a tip modally; gives whether `IKnowChk` was ticked in the end.
    virtual bool ShowGuideTip(const GuideTip& Tip) = 0;
    /// Sets the panel "UserGuide" of the status bar.
    virtual void ShowStatusGuide(const std::string& Message) = 0;
};

/// Names who shows tips from now on; without one no tip is shown and nothing is remembered. The
/// object must outlive its use.
void SetUserGuideWindow(UserGuideWindow* Receiver) noexcept;

/// Shows a tip unless tips are off or the user has ticked this one. An empty `GuideKey` becomes the
/// message, or its first 50 characters. `ForceShow` shows a ticked tip too, with its box locked.
/// After five ticked tips in a row one more tells how to switch them off.
void UserGuide(const std::string& Message, const std::string& GuideKey = {},
               bool ForceShow = false);
/// Sets the one-line help of the status bar; empty clears it.
void StatusGuide(const std::string& Message);

/// The file of the user's answers, and its deletion: every tip shows again.
[[nodiscard]] std::string UserGuideFileName();
void UserGuideForget();
/// Reads `ShowNewUserGuide` at the start of the program: 0 is off, anything else on.
void UserGuideSettingsRead();

// ---- Words of the tip window

/// Shown in the status panel while the pointer is over the control.
inline constexpr const char* GuideLblHint =
    "Optional guide. If you dont want to see any guide message, set that in \"Options\".";
inline constexpr const char* IKnowChkHint =
    "Check this ON if you dont want to see this particular message again.";
inline constexpr const char* GuideOkBtnHint = "Click OK to proceed.";
/// A click on `StopThisLbl`: a message tells where tips are switched off.
void GuideStopThis();

// ---- Chance

/// True with the given chance, 0 never to 1 always.
[[nodiscard]] bool GuideChance(double Chance);
/// For certainty: every draw gives this number, from 0 to below 1, and a chance above it holds.
/// Nothing goes back to the sequence.
void GuideChanceFix(std::optional<double> Draw) noexcept;

} // namespace quoril
