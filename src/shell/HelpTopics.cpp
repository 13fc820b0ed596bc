#include "shell/HelpTopics.h"

#include "view/MenuTable.h"
#include "view/ToolbarTable.h"

#include <algorithm>

namespace quoril {

namespace {

/// The row of exactly that name; 0 without one.
int OwnContextOf(const std::string& Control) {
    for (const HelpPlace& Place : HelpPlaces())
        if (Control == Place.Control)
            return Place.Number;
    return 0;
}

/// The row of the name, or of the array that it is an element of.
int ContextOfArray(const std::string& Control) {
    if (const int Own = OwnContextOf(Control); Own != 0)
        return Own;
    const std::size_t Digits = Control.find_last_not_of("0123456789") + 1;
    if (Digits < 2 || Digits == Control.size() || Control[Digits - 1] != '_')
        return 0;
    return OwnContextOf(Control.substr(0, Digits - 1));
}

} // namespace

const std::vector<HelpTopic>& HelpTopics() {
    static const std::vector<HelpTopic> Table = {
        {HelpOverview, "index.html"},
        {HelpGettingStarted, "start.html"},
        {HelpMouseAndSelection, "mouse.html"},
        {HelpKeys, "keys.html"},
        {10, "window.html"},
        {11, "window.html#toolbars"},
        {12, "window.html#waveform"},
        {13, "window.html#time-scale"},
        {14, "window.html#overview-bar"},
        {15, "window.html#values"},
        {16, "window.html#status-bar"},
        {100, "files.html"},
        {101, "files.html#new"},
        {102, "files.html#open"},
        {103, "files.html#open-new-window"},
        {104, "files.html#another-window"},
        {106, "files.html#save"},
        {107, "files.html#save-as"},
        {108, "files.html#save-selected"},
        {109, "files.html#recent"},
        {110, "files.html#close"},
        {200, "view.html"},
        {201, "view.html#zoom-mouse"},
        {202, "view.html#zoom-at-mouse"},
        {203, "view.html#zoom-in"},
        {204, "view.html#zoom-out"},
        {205, "view.html#one-to-one"},
        {206, "view.html#view-all"},
        {207, "view.html#view-selection"},
        {208, "view.html#pan"},
        {209, "view.html#samples-or-time"},
        {210, "view.html#show-bookmarks"},
        {301, "mouse.html#tools"},
        {302, "mouse.html#select-all"},
        {303, "mouse.html#select-view"},
        {304, "mouse.html#select-play"},
        {305, "mouse.html#reset"},
        {306, "mouse.html#both"},
        {307, "mouse.html#other"},
        {350, "play.html"},
        {351, "play.html#start"},
        {352, "play.html#loop"},
        {353, "play.html#speed"},
        {370, "record.html"},
        {371, "record.html#begin"},
        {372, "record.html#buttons"},
        {373, "record.html#source"},
        {374, "record.html#level"},
        {375, "record.html#automatic"},
        {376, "record.html#trouble"},
        {377, "record.html#volume"},
        {401, "undo.html#undo"},
        {402, "undo.html#clear"},
        {403, "undo.html#on-off"},
        {451, "length.html#trim"},
        {452, "length.html#lap"},
        {453, "length.html#insert-silence"},
        {454, "length.html#size"},
        {471, "copy.html#copy"},
        {472, "copy.html#copy-file"},
        {473, "copy.html#cut"},
        {474, "copy.html#delete"},
        {475, "copy.html#paste"},
        {500, "volume.html"},
        {501, "volume.html#fades"},
        {502, "volume.html#maximize"},
        {503, "volume.html#change"},
        {504, "volume.html#optimize"},
        {505, "volume.html#silence"},
        {511, "filters.html#equalizer"},
        {512, "filters.html#listening"},
        {513, "filters.html#band-filter"},
        {514, "filters.html#band-splitter"},
        {515, "filters.html#choose-noise"},
        {516, "filters.html#noise-filter"},
        {520, "transform.html"},
        {521, "transform.html#reverse"},
        {522, "transform.html#invert"},
        {523, "transform.html#move-up-down"},
        {524, "transform.html#move-forward-back"},
        {525, "transform.html#interchange"},
        {526, "transform.html#channel-mix"},
        {560, "format.html"},
        {561, "format.html#mono"},
        {562, "format.html#stereo"},
        {563, "format.html#bits"},
        {564, "format.html#rate"},
        {601, "dialogs.html#choose-file"},
        {602, "dialogs.html#enter-value"},
        {603, "dialogs.html#confirm-selection"},
        {604, "dialogs.html#progress"},
        {605, "dialogs.html#tips"},
        {606, "dialogs.html#messages"},
        {607, "dialogs.html#disk-space"},
        {700, "bookmarks.html"},
        {701, "bookmarks.html#add"},
        {702, "bookmarks.html#edit"},
        {703, "bookmarks.html#list"},
        {704, "bookmarks.html#go-to"},
        {705, "bookmarks.html#delete"},
        {850, "options.html"},
        {851, "options.html#colors"},
        {852, "options.html#play"},
        {853, "options.html#guide"},
        {854, "options.html#disk"},
        {855, "options.html#sound"},
        {900, "help.html"},
        {910, "support.html"},
        {911, "cd.html"},
    };
    return Table;
}

const std::vector<HelpPlace>& HelpPlaces() {
    static const std::vector<HelpPlace> Table = {
        {"Help_Menu", HelpOverview},
        {"Help_Mnu_0", HelpOverview},
        {"Help_Mnu_1", HelpGettingStarted},
        {"Help_Mnu_2", HelpMouseAndSelection},
        {"Help_Mnu_3", HelpKeys},
        {"Select_Menu", HelpMouseAndSelection},
        {"WaveEditor_Frm", 10},
        {"TopFrame", 11},
        {"FileToolbar", 11},
        {"EditToolbar", 11},
        {"MouseToolbar", 11},
        {"ViewToolbar", 11},
        {"DrawToolbar", 11},
        {"Wave_Pic", 12},
        {"ScalePic", 13},
        {"HScrollPic", 14},
        {"InfoFrame", 15},
        {"SelectLbl", 15},
        {"ViewLbl", 15},
        {"PopMnu", 15},
        {"StatusBar1", 16},
        {"File_Menu", 100},
        {"New_Mnu", 101},
        {"Open_Mnu_0", 102},
        {"Open_Mnu_1", 103},
        {"OpenAnotherMnu", 104},
        {"Save_Mnu_0", 106},
        {"Save_Mnu_1", 107},
        {"Save_Selected_Mnu", 108},
        {"FileLastFilesMnu", 109},
        {"Close_Mnu", 110},
        {"View_Menu", 200},
        {"Zoom_Mnu_0", 201},
        {"Zoom_Mnu_1", 202},
        {"Zoom_Mnu_2", 203},
        {"Zoom_Mnu_3", 204},
        {"Zoom_Mnu_4", 205},
        {"ViewAll_Mnu", 206},
        {"ViewSelection_Mnu", 207},
        {"Pan_Mnu", 208},
        {"DisplayToggleMnu", 209},
        {"Bookmark_Show_Mnu", 210},
        {"SelectMouse_Mnu", 301},
        {"SelectAll_Mnu", 302},
        {"SelectView_Mnu", 303},
        {"SelectPlay_Mnu", 304},
        {"SelectReset_Mnu", 305},
        {"SelectBoth_Mnu", 306},
        {"MouseToolbar_SelChannel", 306},
        {"SelectOther_Mnu", 307},
        {"PlayToolbar", 350},
        {"PlayPosLbl", 351},
        {"PlayStatusLbl", 351},
        {"PlayToolbar_Loop", 352},
        {"SoundTmpoMnu", 353},
        {"SpeedBoxPic", 353},
        {"SpeedDispPic", 353},
        {"SpeedDispLbl", 353},
        {"Recd_Frm", 370},
        {"Record_Mnu", 371},
        {"Start_Btn", 372},
        {"DoneBtnFrame", 372},
        {"Dur_Lbl", 372},
        {"CaptureFrame", 373},
        {"SrcFrame", 373},
        {"SilenthresSlider", 374},
        {"RecShowLPic", 374},
        {"RecShowRPic", 374},
        {"StopAftRecChk", 375},
        {"StopAftRecTxt", 375},
        {"StopIfSilenChk", 375},
        {"StopIfSilenTxt", 375},
        {"PauseIfSilenChk", 375},
        {"PauseIfSilenTxt", 375},
        {"ContnIfNoSilenChk", 375},
        {"Rec_Stat_Lbl", 376},
        {"LossLbl", 376},
        {"SoundVolMnu", 377},
        {"Edit_Copy_Mnu", 471},
        {"CopiedFrm", 471},
        {"Edit_CopyF_Mnu", 472},
        {"Edit_Cut_Mnu", 473},
        {"Edit_Delete_Mnu", 474},
        {"Edit_PasteMother_Mnu", 475},
        {"Undo_Mnu_1", 401},
        {"Undo_Mnu_2", 402},
        {"UndoClearFrm", 402},
        {"ChkDskSpcFrm", 607},
        {"Edit_Trim_Mnu", 451},
        {"Edit_Lap_Mnu", 452},
        {"LapFrm", 452},
        {"Insert_Silence_Mnu", 453},
        {"Format_Size_Mnu", 454},
        {"Undo_Mnu_3", 403},
        {"Effects_Volume_Mnu", 500},
        {"Edit_VolFadeIn_Mnu", 501},
        {"Edit_VolFadeOut_Mnu", 501},
        {"Edit_VolMaximize_Mnu", 502},
        {"Edit_VolAdj_Mnu", 503},
        {"Edit_AdjVol_Mnu", 503},
        {"Edit_VolOpti_Mnu", 504},
        {"Edit_VolOpt_Mnu", 504},
        {"Edit_VolSilence_Mnu", 505},
        {"Silence_Mnu", 505},
        {"Equalize_Mnu_0", 511},
        {"EqlizFrm", 511},
        {"BandPlayPic", 512},
        {"Equalize_Mnu_1", 513},
        {"BandPassPic", 513},
        {"EqBandSplit_Mnu", 514},
        {"EffectNoisReduMotherMnu", 515},
        {"EffectNoisReduMnu_0", 515},
        {"EffectNoisReduMnu_1", 516},
        {"Transform_Menu", 520},
        {"Wave_Reverse_Mnu", 521},
        {"Wave_Invert_Mnu", 522},
        {"Wave_MoveUpDn_Mnu", 523},
        {"Wave_MoveFoBk_Mnu", 524},
        {"Interchange_Mnu", 525},
        {"ChannelMixMnu", 526},
        {"ChnMixFrm", 526},
        {"Format_Menu", 560},
        {"Format_Channel_Mono_Menu", 561},
        {"CompMonoFrm", 561},
        {"Format_Channel_Stereo_Menu", 562},
        {"Format_Bit_Menu", 563},
        {"Format_FrQMother_Menu", 564},
        {"Format_FrQ_Menu", 564},
        {"FileDialog", 601},
        {"DisplayEnterValMnu", 602},
        {"EntDurFrm", 602},
        {"SelConfFrm", 603},
        {"ProgressFrm", 604},
        {"UserGuideFrm", 605},
        {"MsgBox", 606},
        {"Bookmark_Menu", 700},
        {"Bookmark_Add_Mnu", 701},
        {"BokMrkEdtFrm", 702},
        {"BokMrkChosFrm", 703},
        {"BokMrkFrm", 703},
        {"Bookmark_Manage_Mnu", 703},
        {"Bookmark_Goto_Mnu", 704},
        {"ViewBookmark_Mnu", 704},
        {"SelectBookmark_Mnu", 704},
        {"Bookmark_Delete_Mnu", 705},
        {"Options_Mnu", 850},
        {"OptionsFrm", 850},
        {"TabFrame_0", 851},
        {"TabFrame_1", 852},
        {"TabFrame_2", 853},
        {"TabFrame_3", 854},
        {"TabFrame_4", 855},
        {"CheckDx7Frm", 855},
        {"ColorDialog", 851},
        {"FolderDialog", 854},
        {"HelpViewerFrm", 900},
        {"MnuWebsite_0", HelpOverview},
        {"MnuWebsite_1", 910},
        {"MnuCDRipper", 911},
    };
    return Table;
}

std::string HelpPageOf(int Number) {
    const std::vector<HelpTopic>& Topics = HelpTopics();
    const auto Found = std::ranges::find(Topics, Number, &HelpTopic::Number);
    return Found == Topics.end() ? HelpPageOf(HelpOverview) : Found->Page;
}

int HelpContextOf(const std::string& Control) {
    // Lines in menus have no names either.
    if (Control.empty())
        return 0;
    if (const int Own = ContextOfArray(Control); Own != 0)
        return Own;
    for (const ToolButtonRow& Button : ToolbarTable())
        if (Control == std::string(Button.Toolbar) + "_" + Button.Key && Control != Button.Command)
            return HelpContextOf(Button.Command);
    // Up through the menus that an entry stands in.
    for (const MenuRow* Row = MenuRowOf(Control); Row != nullptr && *Row->Parent != '\0';
         Row = MenuRowOf(Row->Parent))
        if (const int Inherited = OwnContextOf(Row->Parent); Inherited != 0)
            return Inherited;
    return 0;
}

} // namespace quoril
