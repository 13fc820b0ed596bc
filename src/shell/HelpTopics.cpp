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
    };
    return Table;
}

const std::vector<HelpPlace>& HelpPlaces() {
    static const std::vector<HelpPlace> Table = {
        {"Help_Mnu_0", HelpOverview},
        {"Help_Mnu_1", HelpGettingStarted},
        {"Help_Mnu_2", HelpMouseAndSelection},
        {"Help_Mnu_3", HelpKeys},
    };
    return Table;
}

std::string HelpPageOf(int Number) {
    const std::vector<HelpTopic>& Topics = HelpTopics();
    const auto Found = std::ranges::find(Topics, Number, &HelpTopic::Number);
    return Found == Topics.end() ? HelpPageOf(HelpOverview) : Found->Page;
}

int HelpContextOf(const std::string& Control) {
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
