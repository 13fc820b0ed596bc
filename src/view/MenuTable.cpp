#include "view/MenuTable.h"

#include <algorithm>

namespace quoril {

namespace {

constexpr MenuRow Bar(const char* Name, const char* Caption) {
    return {MenuKind::Menu, Name, "", Caption, "", "", "", true};
}
constexpr MenuRow Sub(const char* Parent, const char* Name, const char* Caption,
                      const char* Icon = "") {
    return {MenuKind::Menu, Name, Parent, Caption, "", Icon, "", true};
}
constexpr MenuRow Line(const char* Parent, const char* Name = "") {
    return {MenuKind::Separator, Name, Parent, "", "", "", "", true};
}
constexpr MenuRow Cmd(const char* Parent, const char* Name, const char* Caption, const char* Hint,
                      const char* Shortcut = "", const char* Icon = "") {
    return {MenuKind::Command, Name, Parent, Caption, Shortcut, Icon, Hint, true};
}
constexpr MenuRow Check(const char* Parent, const char* Name, const char* Caption,
                        const char* Hint) {
    return {MenuKind::Check, Name, Parent, Caption, "", "", Hint, true};
}
constexpr MenuRow Radio(const char* Parent, const char* Name, const char* Caption,
                        const char* Hint) {
    return {MenuKind::Radio, Name, Parent, Caption, "", "", Hint, true};
}
constexpr MenuRow Hidden(const char* Parent, const char* Name, const char* Caption) {
    return {MenuKind::Command, Name, Parent, Caption, "", "", "", false};
}

void AddFile(std::vector<MenuRow>& T) {
    const char* P = "File_Menu";
    T.insert(
        T.end(),
        {
            Bar(P, "&File"),
            Cmd(P, "New_Mnu", "&New", "Creates a new audio file", "Ctrl+N", "New"),
            Cmd(P, "Open_Mnu_0", "&Open", "Opens an existing audio file", "Ctrl+O", "Open"),
            Cmd(P, "Open_Mnu_1", "Open in New &Window",
                "Opens an existing audio file in a window of its own", "Ctrl+Shift+O", "OpenNew"),
            Cmd(P, "OpenAnotherMnu", "Open ano&ther Window", "Opens a further, empty editor window",
                "Ctrl+Shift+N"),
            Line(P),
            Cmd(P, "Save_Mnu_0", "&Save", "Saves changes to the current audio file", "Ctrl+S",
                "Save"),
            Cmd(P, "Save_Mnu_1", "Save &As", "Saves the audio under another name or type",
                "Ctrl+Shift+S"),
            Cmd(P, "Save_Selected_Mnu", "Save Selected &Part",
                "Saves the selected audio to a new file", "", "SaveSel"),
            Cmd(P, "Save_Bookmark_Mnu", "Save &Bookmarked Parts",
                "Saves each bookmarked part to a file of its own"),
            Cmd(P, "ExportWma_Mnu", "&Export to Wma", "Writes the audio as a Windows media file"),
            Line(P),
            Sub(P, "File_Other_Mnu", "Othe&r"),
            Cmd("File_Other_Mnu", "File_OtherItem_Mnu_0", "Select File to &Read", ""),
            Cmd("File_Other_Mnu", "File_OtherItem_Mnu_1", "&Copy Part of File to ClipBoard", ""),
            Cmd("File_Other_Mnu", "File_OtherItem_Mnu_2", "&Save ClipBoard to New File", ""),
            Cmd("File_Other_Mnu", "File_OtherItem_Mnu_3", "Save &All Parts as New Files", ""),
            Hidden(P, "AutoDumpMnu", "Auto &Dump (D)"),
            Line(P),
            Cmd(P, "FileLastFilesMnu_0", "Open &Last File", "The files opened last stand here"),
            MenuRow{MenuKind::Sections, "FileLastFilesMnu", P, "", "", "", "", true},
            Line(P),
            Cmd(P, "Close_Mnu", "&Close", "Closes this window", "Ctrl+Q; Ctrl+W"),
        });
}

void AddEdit(std::vector<MenuRow>& T) {
    const char* P = "Edit_Menu";
    const char* Paste = "Edit_PasteMother_Mnu";
    const char* Draw = "Edit_Draw_Mnu";
    T.insert(
        T.end(),
        {
            Bar(P, "&Edit"),
            Cmd(P, "Undo_Mnu_1", "&Undo [Nothing]",
                "Reverses the last change to the audio/waveform", "Ctrl+Z", "Undo"),
            Cmd(P, "Undo_Mnu_2", "Clear Undo &Backup Data",
                "Gives back the disk space that undo takes"),
            Check(P, "Undo_Mnu_3", "Undo &On/Off",
                  "Off: changes can not be undone, and take less space"),
            Line(P),
            Cmd(P, "Edit_Cut_Mnu", "Cu&t", "Cuts the selected audio/waveform - (Delete and copy)",
                "Ctrl+X", "Cut"),
            Cmd(P, "Edit_Copy_Mnu", "&Copy", "Copies the selected audio/waveform", "Ctrl+C",
                "Copy"),
            Cmd(P, "Edit_CopyF_Mnu", "Copy - Another &file",
                "Copies the whole of another file, to paste it here"),
            Sub(P, Paste, "&Paste", "Paste"),
            Cmd(Paste, "Edit_Paste_Mnu_1", "&Replace",
                "Puts the copied audio in place of what follows the selected point"),
            Cmd(Paste, "Edit_Paste_Mnu_2", "&Insert",
                "Inserts the copied audio at the selected point"),
            Cmd(Paste, "Edit_Paste_Mnu_3", "M&ulti-Insert",
                "Inserts the copied audio a number of times"),
            Cmd(Paste, "Edit_Paste_Mnu_4", "&Mix", "Mixes the copied audio with what stands there"),
            Cmd(Paste, "Edit_Paste_Mnu_5", "Mo&dulate",
                "Modulates what stands there with the copied audio"),
            Cmd(Paste, "Edit_Paste_Mnu_6", "&Cross Fade",
                "Fades from the copied audio to what stands there"),
            Cmd(P, "Edit_Delete_Mnu", "&Delete", "Deletes the selected audio/waveform", "Del",
                "Delete"),
            Line(P),
            Cmd(P, "Edit_Trim_Mnu", "Tri&m", "Deletes everything but the selected audio/waveform",
                "", "Trim"),
            Cmd(P, "Edit_Lap_Mnu", "&Lap", "Cuts in two and lets the parts overlap"),
            Cmd(P, "Insert_Silence_Mnu", "Insert S&ilence",
                "Inserts silence at the selected point"),
            Cmd(P, "Silence_Mnu", "&Silence", "Makes the selected audio silent"),
            Line(P),
            Sub(P, Draw, "D&raw", "Draw"),
            Cmd(Draw, "Draw_Mnu_1", "&Draw (with mouse)", "Draws the waveform by hand", "", "Draw"),
            Cmd(Draw, "Draw_Mnu_2", "Draw D&one", "Ends drawing by hand", "", "DrawDone"),
            Line(Draw),
            Cmd(Draw, "DrawSine_Mnu", "&Sine Wave", "Fills the selection with a tone"),
            Cmd(Draw, "DrawNoise_Mnu", "&Noise", "Fills the selection with noise"),
        });
}

void AddView(std::vector<MenuRow>& T) {
    const char* P = "View_Menu";
    T.insert(
        T.end(),
        {
            Bar(P, "&View"),
            Cmd(P, "Zoom_Mnu_0", "Zoom with &mouse",
                "Click on the screen at two places to zoom/view that area", "", "Zoom"),
            Cmd(P, "Zoom_Mnu_1", "Zoom in a&t mouse",
                "Left/Right click on the screen to zoom In/Out", "", "ZoomInM"),
            Cmd(P, "Zoom_Mnu_2", "Zoom &in", "Zooms in at screen centre", "F3", "ZoomIn"),
            Cmd(P, "Zoom_Mnu_3", "Zoom &out", "Zooms out at screen centre", "F2", "ZoomOut"),
            Cmd(P, "Zoom_Mnu_4", "Zoom &1:1", "Zooms to one sample a pixel", "F4", "Zoom1"),
            Line(P),
            Cmd(P, "ViewAll_Mnu", "View &All", "Shows the whole document", "F5", "ZoomAll"),
            Cmd(P, "ViewSelection_Mnu", "View &Selection", "Zooms to the current selection", "",
                "ZoomSel"),
            Cmd(P, "ViewBookmark_Mnu", "View &Bookmark", "Shows a bookmark chosen from the list"),
            Line(P),
            Cmd(P, "Pan_Mnu", "&Pan", "Drag the view with the mouse to pan", "", "Pan"),
            Line(P, "View_LabelsLine"),
        });
}

void AddSelect(std::vector<MenuRow>& T) {
    const char* P = "Select_Menu";
    T.insert(
        T.end(),
        {
            Bar(P, "&Select"),
            Cmd(P, "SelectMouse_Mnu_0", "&Select", "Simple mouse select. Normal mode", "",
                "Select"),
            Cmd(P, "SelectMouse_Mnu_1", "Select S&tart", "Select/adjust the start of the selection",
                "", "Start"),
            Cmd(P, "SelectMouse_Mnu_2", "Select &End", "Select/adjust the end of the selection", "",
                "End"),
            Line(P),
            Cmd(P, "SelectAll_Mnu", "Select &All", "Selects the whole document", "Ctrl+A",
                "SelectAll"),
            Cmd(P, "SelectView_Mnu", "Select &View", "Selects what is on screen", "", "SelectView"),
            Cmd(P, "SelectPlay_Mnu", "Select &Play", "Selects the range made on the time scale", "",
                "SelectPlay"),
            Cmd(P, "SelectBookmark_Mnu", "Select &Bookmark",
                "Selects a bookmark chosen from the list"),
            Cmd(P, "SelectReset_Mnu", "&Reset", "Clears the selection", "", "Reset"),
            Line(P),
            Check(P, "SelectBoth_Mnu", "Select B&oth", "Selects both channels or one of them"),
            Cmd(P, "SelectOther_Mnu", "Select Ot&her", "Goes to the other channel"),
        });
}

void AddBookmark(std::vector<MenuRow>& T) {
    const char* P = "Bookmark_Menu";
    T.insert(
        T.end(),
        {
            Bar(P, "&Bookmark"),
            Cmd(P, "Bookmark_Add_Mnu_0", "&Add Selection (B)", "Makes a bookmark of the selection"),
            Cmd(P, "Bookmark_Add_Mnu_1", "Add &View", "Makes a bookmark of what is on screen"),
            Cmd(P, "Bookmark_Add_Mnu_2", "Add &Play",
                "Makes a bookmark of the range made on the time scale"),
            Cmd(P, "Bookmark_Add_Mnu_3", "Add - &Enter Value",
                "Makes a bookmark of typed positions"),
            Line(P),
            Cmd(P, "Bookmark_Delete_Mnu_0", "&Delete Selected",
                "Deletes the bookmarks that lie in the selection"),
            Cmd(P, "Bookmark_Delete_Mnu_1", "Delete &one from list", "Deletes a chosen bookmark"),
            Line(P),
            Cmd(P, "Bookmark_Goto_Mnu", "&Go to", "Shows a bookmark chosen from the list"),
            Cmd(P, "Bookmark_Manage_Mnu", "&Manage / Edit (M)", "Shows and changes all bookmarks"),
            Check(P, "Bookmark_Show_Mnu", "&Show Bookmarks", "Draws the bookmarks on the waveform"),
        });
}

void AddFormat(std::vector<MenuRow>& T) {
    const char* P = "Format_Menu";
    const char* Freq = "Format_FrQMother_Menu";
    const char* HintBits = "Changes the sample size of the document";
    const char* HintFreq = "Changes the sampling rate of the document";
    T.insert(T.end(),
             {
                 Bar(P, "For&mat"),
                 Radio(P, "Format_Channel_Mono_Menu", "&Mono", "Makes one channel of two"),
                 Radio(P, "Format_Channel_Stereo_Menu", "&Stereo", "Makes two channels of one"),
                 Line(P),
                 Radio(P, "Format_Bit_Menu_0", "&8 Bit", HintBits),
                 Radio(P, "Format_Bit_Menu_1", "&16 Bit", HintBits),
                 Line(P),
                 Sub(P, Freq, "Sampling &Rate"),
                 Radio(Freq, "Format_FrQ_Menu_0", "&11025 Hz", HintFreq),
                 Radio(Freq, "Format_FrQ_Menu_1", "&22050 Hz", HintFreq),
                 Radio(Freq, "Format_FrQ_Menu_2", "&44100 Hz", HintFreq),
                 Line(Freq),
                 Radio(Freq, "Format_FrQ_Menu_3", "&8000 Hz", HintFreq),
                 Radio(Freq, "Format_FrQ_Menu_4", "12&000 Hz", HintFreq),
                 Radio(Freq, "Format_FrQ_Menu_5", "1&6000 Hz", HintFreq),
                 Radio(Freq, "Format_FrQ_Menu_6", "24000 &Hz", HintFreq),
                 Radio(Freq, "Format_FrQ_Menu_7", "&32000 Hz", HintFreq),
                 Radio(Freq, "Format_FrQ_Menu_8", "48000 H&z", HintFreq),
                 Line(Freq),
                 Radio(Freq, "Format_FrQ_Menu_9", "Custom Hz", "The document's own sampling rate"),
                 Cmd(Freq, "Format_FrQ_Menu_10", "&Other Hz",
                     "Changes to a sampling rate that you type"),
                 Line(P),
                 Cmd(P, "Format_Size_Mnu", "Change Si&ze", "Makes the document longer or shorter"),
             });
}

void AddVolume(std::vector<MenuRow>& T, const char* Parent) {
    const char* P = "Effects_Volume_Mnu";
    const char* Adj = "Edit_VolAdj_Mnu";
    const char* Opt = "Edit_VolOpti_Mnu";
    const char* HintAdj = "Multiplies the volume of the selection";
    const char* HintOpt = "Brings the loudest place of the selection to this level";
    T.insert(T.end(),
             {
                 Sub(Parent, P, "&Volume"),
                 Cmd(P, "Edit_VolFadeIn_Mnu", "Fade &In", "From silence to the present volume"),
                 Cmd(P, "Edit_VolFadeOut_Mnu", "Fade &Out", "From the present volume to silence"),
                 Cmd(P, "Edit_VolMaximize_Mnu", "&Maximize", "As loud as it goes without clipping"),
                 Sub(P, Adj, "&Change .."),
                 Cmd(Adj, "Edit_AdjVol_Mnu_0", "&Enter %", HintAdj),
                 Line(Adj, "Edit_AdjVol_Mnu_10"),
                 Cmd(Adj, "Edit_AdjVol_Mnu_11", "&200%", HintAdj),
                 Cmd(Adj, "Edit_AdjVol_Mnu_12", "1&60%", HintAdj),
                 Cmd(Adj, "Edit_AdjVol_Mnu_13", "&120%", HintAdj),
                 Cmd(Adj, "Edit_AdjVol_Mnu_14", "&85%", HintAdj),
                 Cmd(Adj, "Edit_AdjVol_Mnu_15", "&70%", HintAdj),
                 Cmd(Adj, "Edit_AdjVol_Mnu_16", "&50%", HintAdj),
                 Cmd(Adj, "Edit_AdjVol_Mnu_17", "25&%", HintAdj),
                 Sub(P, Opt, "O&ptimize .."),
                 Cmd(Opt, "Edit_VolOpt_Mnu_0", "&Enter %", HintOpt),
                 Line(Opt, "Edit_VolOpt_Mnu_10"),
                 Cmd(Opt, "Edit_VolOpt_Mnu_11", "&200%", HintOpt),
                 Cmd(Opt, "Edit_VolOpt_Mnu_12", "1&60%", HintOpt),
                 Cmd(Opt, "Edit_VolOpt_Mnu_13", "&120%", HintOpt),
                 Cmd(Opt, "Edit_VolOpt_Mnu_14", "&85%", HintOpt),
                 Cmd(Opt, "Edit_VolOpt_Mnu_15", "&70%", HintOpt),
                 Cmd(Opt, "Edit_VolOpt_Mnu_16", "&50%", HintOpt),
                 Cmd(Opt, "Edit_VolOpt_Mnu_17", "25&%", HintOpt),
                 Line(Opt, "Edit_VolOpt_Mnu_20"),
                 Cmd(Opt, "Edit_VolOpt_Mnu_21", "100% = &Maximize", HintOpt),
                 Cmd(P, "Edit_VolSilence_Mnu", "&Silence", "Makes the selected audio silent"),
             });
}

void AddEffects(std::vector<MenuRow>& T) {
    const char* P = "Effects_Menu";
    T.push_back(Bar(P, "Effe&cts"));
    AddVolume(T, P);
    const char* Noise = "EffectNoisReduMotherMnu";
    T.insert(
        T.end(),
        {
            Line(P),
            Cmd(P, "Equalize_Mnu_0", "&Equalizer", "Changes the volume of each frequency band"),
            Cmd(P, "Equalize_Mnu_1", "Band &Pass/Stop Filter",
                "Lets frequency bands pass or stops them"),
            Cmd(P, "EqBandSplit_Mnu", "&Band Splitter", "Separates the audio of each band"),
            Line(P),
            Sub(P, Noise, "&Noise Reduction"),
            Cmd(Noise, "EffectNoisReduMnu_0", "&Choose Pure Noise",
                "Learns the noise of the selection"),
            Cmd(Noise, "EffectNoisReduMnu_1", "&Apply Noise Filter",
                "Takes the learnt noise out of the selection"),
            Cmd(P, "DeleteSilence_Mnu", "&Delete Silence", "Shortens silent stretches"),
            Line(P),
            Cmd(P, "Echo_Mnu", "Ec&ho", "Adds echoes"),
            Cmd(P, "Modulate_Mnu", "&Modulate", "Modulates the selection with a tone"),
            Line(P),
            Cmd(P, "Stretch_Mnu_0", "&Stretch / Shrink", "Changes length and pitch together"),
            Cmd(P, "Stretch_Mnu_1", "&Change Speed", "Changes the speed of the selection"),
        });
}

void AddTransform(std::vector<MenuRow>& T) {
    const char* P = "Transform_Menu";
    T.insert(
        T.end(),
        {
            Bar(P, "&Transform"),
            Cmd(P, "Wave_Reverse_Mnu", "&Reverse", "Turns the selection back to front"),
            Cmd(P, "Wave_Invert_Mnu", "&Invert", "Turns the selection upside down"),
            Cmd(P, "Wave_MoveUpDn_Mnu", "Move &Up/Down", "Moves the zero line of the selection"),
            Cmd(P, "Wave_MoveFoBk_Mnu", "Move &Forward/Back", "Moves the selection in time"),
            Line(P),
            Cmd(P, "Interchange_Mnu", "Interchange &Left-Right", "Exchanges the two channels"),
            Cmd(P, "ChannelMixMnu", "&Channel Mix", "Makes each channel from a mix of both"),
        });
}

void AddTools(std::vector<MenuRow>& T) {
    const char* P = "Tools_Menu";
    T.insert(
        T.end(),
        {
            Bar(P, "T&ools"),
            Cmd(P, "Record_Mnu", "&Record", "Records from the sound input", "Ctrl+R", "Record"),
            Line(P),
            Cmd(P, "SoundVolMnu", "Sound &Volume", "Opens the volume control of the system"),
            Cmd(P, "SoundTmpoMnu", "Play &Speed", "Shows the sliders for the play speed"),
            Line(P),
            Cmd(P, "MnuCDRipper", "&CD Ripper/Extractor", "Opens a page about CD rippers"),
            Hidden(P, "MnuRevSpchTech", "Reverse Speech Technology"),
            Hidden(P, "QTBoxMnu", "QT Box"),
            Hidden(P, "QTBoxZMnu", "QT Box Z"),
            Line(P),
            Cmd(P, "Options_Mnu", "&Options",
                "Colours, play, guide, temporary files, sound driver"),
        });
}

void AddHelp(std::vector<MenuRow>& T) {
    const char* P = "Help_Menu";
    T.insert(
        T.end(),
        {
            Bar(P, "&Help"),
            Cmd(P, "Help_Mnu_0", "&Contents", "Shows the help", "F1"),
            Cmd(P, "Help_Mnu_1", "&Getting started", "Shows the help on the first steps"),
            Cmd(P, "Help_Mnu_2", "&Mouse and selection", "Shows the help on the mouse tools"),
            Cmd(P, "Help_Mnu_3", "&Keys", "Shows the help on the keyboard"),
            Line(P),
            Sub(P, "MnuWebsiteMother", "&Web site"),
            Cmd("MnuWebsiteMother", "MnuWebsite_0", "&Home page", "Opens the program's web page"),
            Cmd("MnuWebsiteMother", "MnuWebsite_1", "&Support", "Opens the page on support"),
            Line(P),
            Cmd(P, "About_Menu", "&About Quoril Wave Editor", "Version and copyright"),
        });
}

} // namespace

const std::vector<MenuRow>& MenuTable() {
    static const std::vector<MenuRow> Table = [] {
        std::vector<MenuRow> T;
        AddFile(T);
        AddEdit(T);
        AddView(T);
        AddSelect(T);
        AddBookmark(T);
        AddFormat(T);
        AddEffects(T);
        AddTransform(T);
        AddTools(T);
        AddHelp(T);
        return T;
    }();
    return Table;
}

const std::vector<MenuRow>& PopMnuTable() {
    static const std::vector<MenuRow> Table = {
        Cmd("PopMnu", "DisplayEnterValMnu", "&Enter Value", "Types a new value"),
        Line("PopMnu"),
        Radio("PopMnu", "DisplayToggleMnu_0", "Samp&les", "The labels show sample numbers"),
        Radio("PopMnu", "DisplayToggleMnu_1", "Time (&hh:mm:ss.ss)", "The labels show time"),
    };
    return Table;
}

const MenuRow* MenuRowOf(const std::string& Name) {
    for (const std::vector<MenuRow>* Table : {&MenuTable(), &PopMnuTable()})
        for (const MenuRow& Row : *Table)
            if (Name == Row.Name)
                return &Row;
    return nullptr;
}

std::string CaptionWithoutMnemonic(const std::string& Caption) {
    std::string Result = Caption;
    std::erase(Result, '&');
    return Result;
}

} // namespace quoril
