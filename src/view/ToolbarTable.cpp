#include "view/ToolbarTable.h"

namespace quoril {

const std::vector<ToolbarRow>& Toolbars() {
    static const std::vector<ToolbarRow> Table = {
        {"FileToolbar", "File tools"}, {"EditToolbar", "Edit tools"},
        {"PlayToolbar", "Play tools"}, {"MouseToolbar", "Selection tools"},
        {"ViewToolbar", "View tools"}, {"DrawToolbar", "Drawing tools"},
    };
    return Table;
}

const std::vector<ToolButtonRow>& ToolbarTable() {
    using enum ToolKind;
    static const std::vector<ToolButtonRow> Table = {
        {"FileToolbar", "New", Plain, "New", "Use this button to create a new audio file",
         "New_Mnu"},
        {"FileToolbar", "Open", Plain, "Open", "Use this button to open an existing audio file",
         "Open_Mnu_0"},
        {"FileToolbar", "OpenNew", Plain, "Open in New Window",
         "Use this button to open an existing audio file in a new window", "Open_Mnu_1"},
        {"FileToolbar", "Save", Plain, "Save",
         "Use this button to save changes to the current audio file", "Save_Mnu_0"},
        {"FileToolbar", "SaveSel", Plain, "Save Selected Part",
         "Use this button to save selected audio to a new file", "Save_Selected_Mnu"},

        {"EditToolbar", "Undo", Plain, "Undo",
         "Use this button to reverse the last changes to the audio/waveform", "Undo_Mnu_1"},
        {"EditToolbar", "Copy", Plain, "Copy",
         "Use this button to copy the selected audio/waveform", "Edit_Copy_Mnu"},
        {"EditToolbar", "Paste", DropDown, "Paste",
         "Use this button to paste the copied audio/waveform at the selected location. Click on "
         "the arrow to choose.",
         "Edit_Paste_Mnu_1"},
        {"EditToolbar", "Cut", Plain, "Cut",
         "Use this button to cut the selected audio/waveform - (Delete and copy)", "Edit_Cut_Mnu"},
        {"EditToolbar", "Delete", Plain, "Delete",
         "Use this button to delete the selected audio/waveform", "Edit_Delete_Mnu"},
        {"EditToolbar", "Trim", Plain, "Trim",
         "Use this button to delete all but the selected audio/waveform", "Edit_Trim_Mnu"},

        {"PlayToolbar", "PlayNew", Plain, "Play selection (`)",
         "Use this button to play the selection, or all of the audio without a selection",
         "PlayToolbar_PlayNew"},
        {"PlayToolbar", "PlayNewRev", Plain, "Play selection in reverse",
         "Use this button to play the selection in reverse", "PlayToolbar_PlayNewRev", false},
        {"PlayToolbar", "Play", Plain, "Play (Space)",
         "Use this button to play the range on the time scale", "PlayToolbar_Play"},
        {"PlayToolbar", "PlayRev", Plain, "Play in reverse",
         "Use this button to play the range on the time scale in reverse", "PlayToolbar_PlayRev"},
        {"PlayToolbar", "Pause", Plain, "Pause", "Use this button to pause or continue playing",
         "PlayToolbar_Pause"},
        {"PlayToolbar", "Stop", Plain, "Stop (Space)", "Use this button to stop playing",
         "PlayToolbar_Stop"},
        {"PlayToolbar", "UTurn", Plain, "U-turn (U)",
         "Use this button to turn the direction of playing", "PlayToolbar_UTurn"},
        {"PlayToolbar", "Loop", TwoState, "Loop",
         "ON to play over and over again. OFF to play once.", "PlayToolbar_Loop"},
        {"PlayToolbar", "Record", Plain, "Record", "Use this button to record from the sound input",
         "Record_Mnu"},

        {"MouseToolbar", "Select", Plain, "Select",
         "Use this button to do a simple mouse select. Normal mode", "SelectMouse_Mnu_0"},
        {"MouseToolbar", "Start", Plain, "Select Start",
         "Use this button to do a select/adjust the start position selection.",
         "SelectMouse_Mnu_1"},
        {"MouseToolbar", "End", Plain, "Select End",
         "Use this button to do a select/adjust the end position selection.", "SelectMouse_Mnu_2"},
        {"MouseToolbar", "SelectAll", Plain, "Select All", "Use this button to do a select all.",
         "SelectAll_Mnu"},
        {"MouseToolbar", "SelectView", Plain, "Select View",
         "Use this button to do a select the current view.", "SelectView_Mnu"},
        {"MouseToolbar", "SelectPlay", Plain, "Select Play",
         "Use this button to select the range made on the time scale.", "SelectPlay_Mnu"},
        {"MouseToolbar", "Reset", Plain, "Reset selection (Esc)",
         "Use this button to clear all the previous selection.", "SelectReset_Mnu"},
        {"MouseToolbar", "SelChannel", TwoState, "Select both channels or one",
         "ON to select one channel. OFF to select both channels.", "MouseToolbar_SelChannel"},

        {"ViewToolbar", "Zoom", Plain, "Zoom with mouse (Z)",
         "Use this button and then click on the screen at two places to zoom/view that area.",
         "Zoom_Mnu_0"},
        {"ViewToolbar", "ZoomInM", Plain, "Zoom in at mouse (X)",
         "Use this button and then Left/Right click on the screen to zoom In/Out.", "Zoom_Mnu_1"},
        {"ViewToolbar", "ZoomIn", Plain, "Zoom in (F3)",
         "Use this button to zoom in at screen centre.", "Zoom_Mnu_2"},
        {"ViewToolbar", "ZoomOut", Plain, "Zoom out (F2)",
         "Use this button to zoom out at screen centre.", "Zoom_Mnu_3"},
        {"ViewToolbar", "Zoom1", Plain, "Zoom 1:1 (F4)",
         "Use this button to zoom in 1:1 at screen centre.", "Zoom_Mnu_4"},
        {"ViewToolbar", "ZoomAll", Plain, "View All (F5)",
         "Use this button to zoom all (view all).", "ViewAll_Mnu"},
        {"ViewToolbar", "ZoomSel", Plain, "View Selection",
         "Use this button to zoom/view the current selection.", "ViewSelection_Mnu"},
        {"ViewToolbar", "Pan", Plain, "Pan", "Use this button and then drag the view to pan.",
         "Pan_Mnu"},

        {"DrawToolbar", "Draw", Plain, "Draw (with mouse)",
         "Use this button to draw the waveform with the mouse.", "Draw_Mnu_1"},
        {"DrawToolbar", "DrawDone", Plain, "Draw Done",
         "Use this button after finishing drawing with the mouse.", "Draw_Mnu_2"},
    };
    return Table;
}

const std::vector<ToolDropRow>& PasteDropTable() {
    static const std::vector<ToolDropRow> Table = {
        {"Replace", "Edit_Paste_Mnu_1"},     {"Insert", "Edit_Paste_Mnu_2"},
        {"MultiInsert", "Edit_Paste_Mnu_3"}, {"Mix", "Edit_Paste_Mnu_4"},
        {"Modulate", "Edit_Paste_Mnu_5"},    {"CrossFade", "Edit_Paste_Mnu_6"},
    };
    return Table;
}

} // namespace quoril
