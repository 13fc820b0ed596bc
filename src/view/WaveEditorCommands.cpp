// The commands of selection and view, and those of the value labels.
#include "selection/SelectionMod.h"
#include "settings/UserGuideMod.h"
#include "view/ValueEntry.h"
#include "view/WaveEditor_Frm.h"
#include "view/WavePanel.h"
#include "view/ZoomMod.h"

#include <QMenu>
#include <QToolButton>

#include <array>

namespace quoril {

void WaveEditor_Frm::RegisterOwnCommands() {
    Commands.Set("Close_Mnu", [this] { close(); });
    Commands.Set("DisplayEnterValMnu", [this] { LabelEntry(PopMnuLabel); });
    for (const int Index : {0, 1})
        Commands.Set("DisplayToggleMnu_" + std::to_string(Index), [this, Index] {
            DisplayToggle(Index);
            RefreshDisplayToggle();
        });
    Commands.Set("Bookmark_Show_Mnu", [this] {
        SetEntryChecked("Bookmark_Show_Mnu", !EntryChecked("Bookmark_Show_Mnu"));
        Refresh_Wave_View();
    });
    RegisterSelectCommands();
    RegisterViewCommands();
    RegisterDrawCommands();
}

namespace {

void ToolTipNowAndThen(int Tool) {
    constexpr double TipChance = 0.1;
    constexpr std::array<const char*, 3> Tips = {
        "", "This mouse pointer can be canceled with Esc - key if required",
        "This mouse pointer can be canceled with \"Esc\" key if required"};
    if (Tool != 0 && GuideChance(TipChance))
        UserGuide(Tips.at(std::size_t(Tool)));
}

} // namespace

void WaveEditor_Frm::RegisterSelectCommands() {
    for (const int Index : {0, 1, 2})
        Commands.Set("SelectMouse_Mnu_" + std::to_string(Index), [Index] {
            SelectMouse(Index);
            ToolTipNowAndThen(Index);
        });
    Commands.Set("SelectAll_Mnu", SelectAllSamples);
    Commands.Set("SelectView_Mnu", SelectView);
    Commands.Set("SelectPlay_Mnu", SelectPlay);
    Commands.Set("SelectReset_Mnu", ResetSelection);
    Commands.Set("SelectBoth_Mnu", [this] { SelectBoth(EntryChecked("SelectBoth_Mnu")); });
    Commands.Set("SelectOther_Mnu", SelectOther);
    Commands.Set("MouseToolbar_SelChannel", [this] {
        SelChannelButton(ToolButton("MouseToolbar", "SelChannel")->isChecked());
    });
}

void WaveEditor_Frm::RegisterViewCommands() {
    for (const int Index : {0, 1, 2, 3, 4})
        Commands.Set("Zoom_Mnu_" + std::to_string(Index),
                     [this, Index] { ZoomMenu(Index, Wave_Pic[1]->ScaleWidth()); });
    const auto Zoom = [this](std::int16_t Code) {
        return [this, Code] { ZoomCommand(Code, Wave_Pic[1]->ScaleWidth()); };
    };
    Commands.Set("ViewAll_Mnu", Zoom(ZoomCodeAll));
    Commands.Set("ViewSelection_Mnu", Zoom(ZoomCodeSelected));
    Commands.Set("Pan_Mnu", [] { ViewTool(ViewToolPan); });
}

void WaveEditor_Frm::RefreshDisplayToggle() {
    for (const int Index : {0, 1})
        SetEntryChecked("DisplayToggleMnu_" + std::to_string(Index), DisplayToggleChecked(Index));
}

void WaveEditor_Frm::AskValue(int Index) {
    PopMnuLabel = Index;
    RunCommand("DisplayEnterValMnu");
}

void WaveEditor_Frm::ShowPopMnu(int Index, const QPoint& Where) {
    PopMnuLabel = Index;
    PopMnu->popup(Where);
}

} // namespace quoril
