#include "settings/UserGuideMod.h"

#include "base/MsgBoxMod.h"
#include "base/Random.h"
#include "platform/Text.h"
#include "settings/STD1.h"

namespace quoril {
namespace {

constexpr const char* Section = "I Know";
constexpr std::size_t LongestKey = 50;
constexpr std::int32_t TicksBeforeAdvice = 5;

UserGuideWindow* Window = nullptr;
std::optional<double> FixedDraw;

} // namespace

bool ShowNewUserGuide = true;
std::int32_t GuideIKnowRun = 0;

void SetUserGuideWindow(UserGuideWindow* Receiver) noexcept {
    Window = Receiver;
}

std::string UserGuideFileName() {
    return AppPath + "/UserGuide.ini";
}

void UserGuide(const std::string& Message, const std::string& GuideKey, bool ForceShow) {
    if (!ShowNewUserGuide)
        return;
    const std::string Key = GuideKey.empty() ? Message.substr(0, LongestKey) : GuideKey;
    const bool Ticked = ProfileGet(Section, Key, "No", UserGuideFileName()) == "Yes";
    if ((Ticked && !ForceShow) || Window == nullptr)
        return;
    if (Window->ShowGuideTip({Message, Ticked, !Ticked})) {
        ++GuideIKnowRun;
        ProfilePut(Section, Key, "Yes", UserGuideFileName());
    } else {
        GuideIKnowRun = 0;
    }
    if (GuideIKnowRun == TicksBeforeAdvice)
        UserGuide("If you dont like to see this guide message at all, go to Options through menu "
                  "and put this off.");
}

void StatusGuide(const std::string& Message) {
    if (Window != nullptr)
        Window->ShowStatusGuide(Message);
}

void UserGuideForget() {
    (void)FileDelete(UserGuideFileName());
}

void UserGuideSettingsRead() {
    ShowNewUserGuide = LeadingNumber(IniGet("General", "ShowNewUserGuide", "1")) != 0.0;
}

void GuideStopThis() {
    MsgBox("If you dont want to see these user-guide-tips any more\n"
           "you can put it off, see Menu-Tools-Option-UserGuide");
}

bool GuideChance(double Chance) {
    const double Draw = FixedDraw ? *FixedDraw : RandomDraw();
    return Draw < Chance;
}

void GuideChanceFix(std::optional<double> Draw) noexcept {
    FixedDraw = Draw;
}

} // namespace quoril
