// The menus and toolbars of the main window.
#include "base/DocumentState.h"
#include "base/QtText.h"
#include "selection/SelectionMod.h"
#include "view/FlowRow.h"
#include "view/MenuTable.h"
#include "view/ToolIcon.h"
#include "view/ToolbarTable.h"
#include "view/WaveEditor_Frm.h"

#include <QAction>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

#include <stdexcept>

namespace quoril {

namespace {

QString Q(const std::string& Text) {
    return QString::fromStdString(Text);
}

/// A text that is not ours in a caption: its "&" are no mnemonics.
QString Literal(const std::string& Text) {
    return ShownText(Text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

constexpr int ToolIconSize = 20;

} // namespace

void WaveEditor_Frm::BuildMenus() {
    menuBar()->setObjectName(QStringLiteral("MenuBar"));
    PopMnu = new QMenu(this);
    PopMnu->setObjectName(QStringLiteral("PopMnu"));
    PopMnu->setAccessibleName(QStringLiteral("Value label menu"));
    Menus["PopMnu"] = PopMnu;
    BuildMenuRows(false);
    BuildMenuRows(true);
    // The way of showing values can be reached without a mouse, too.
    for (const char* Name : {"DisplayToggleMnu_0", "DisplayToggleMnu_1"})
        Menus.at("View_Menu")->addAction(Entries.at(Name));
}

void WaveEditor_Frm::BuildMenuRows(bool OfPopMnu) {
    for (const MenuRow& Row : OfPopMnu ? PopMnuTable() : MenuTable()) {
        const std::string Name = Row.Name;
        if (Row.Kind == MenuKind::Menu) {
            QMenu* Menu = std::string(Row.Parent).empty()
                              ? menuBar()->addMenu(Q(Row.Caption))
                              : Menus.at(Row.Parent)->addMenu(Q(Row.Caption));
            Menu->setObjectName(Q(Name));
            Menu->menuAction()->setObjectName(Q(Name));
            Menu->setIcon(ToolIcon(Q(Row.Icon)));
            Menus[Name] = Menu;
            continue;
        }
        QMenu* Menu = Menus.at(Row.Parent);
        if (Row.Kind == MenuKind::Separator || Row.Kind == MenuKind::Sections) {
            QAction* Line = Menu->addSeparator();
            Line->setObjectName(Q(Name));
            if (Row.Kind == MenuKind::Sections)
                LastFilesPlace = Line;
            continue;
        }
        QAction* Action = Menu->addAction(Q(Row.Caption));
        Action->setObjectName(Q(Name));
        Action->setStatusTip(Q(Row.Hint));
        Action->setIcon(ToolIcon(Q(Row.Icon)));
        if (*Row.Shortcut != '\0')
            Action->setShortcuts(QKeySequence::listFromString(Q(Row.Shortcut)));
        Action->setCheckable(Row.Kind == MenuKind::Check || Row.Kind == MenuKind::Radio);
        Action->setVisible(Row.Visible);
        Entries[Name] = Action;
        connect(Action, &QAction::triggered, this, [this, Name, Action](bool Checked) {
            // The mark is set by the command's owner, not by the click.
            if (Action->isCheckable())
                Action->setChecked(!Checked);
            RunCommand(Name);
        });
    }
}

void WaveEditor_Frm::BuildToolbars() {
    auto* Flow = new FlowRow(TopFrame, 6, 2);
    Flow->setContentsMargins(4, 2, 4, 2);
    for (const ToolbarRow& Row : Toolbars())
        Flow->addWidget(BuildToolbar(Row.Name, Row.Title));
}

QWidget* WaveEditor_Frm::BuildToolbar(const std::string& Name, const std::string& Title) {
    auto* Bar = new QToolBar(Q(Title), TopFrame);
    Bar->setObjectName(Q(Name));
    Bar->setAccessibleName(Q(Title));
    Bar->setMovable(false);
    Bar->setIconSize(QSize(ToolIconSize, ToolIconSize));
    for (const ToolButtonRow& Row : ToolbarTable()) {
        if (Name != Row.Toolbar)
            continue;
        auto* Button = new QToolButton(Bar);
        const std::string Control = Name + "_" + Row.Key;
        const std::string Command = Row.Command;
        Button->setObjectName(Q(Control));
        Button->setIcon(ToolIcon(Q(Row.Key == std::string("SelChannel") ? "SelBoth" : Row.Key)));
        Button->setToolTip(Q(Row.Tip));
        Button->setAccessibleName(Q(Row.Tip));
        Button->setAccessibleDescription(Q(Row.Hint));
        Button->setProperty("StatusHint", Q(Row.Hint));
        Button->installEventFilter(this);
        Button->setAutoRaise(true);
        Button->setFocusPolicy(Qt::TabFocus);
        Button->setCheckable(Row.Kind == ToolKind::TwoState);
        Buttons[Control] = Button;
        ButtonCommand[Control] = Command;
        if (Row.Kind == ToolKind::DropDown)
            BuildPasteButton(Button);
        else
            connect(Button, &QToolButton::clicked, this, [this, Command] { RunCommand(Command); });
        QAction* Place = Bar->addWidget(Button);
        Place->setVisible(Row.Visible);
    }
    return Bar;
}

void WaveEditor_Frm::BuildPasteButton(QToolButton* Button) {
    auto* List = new QMenu(Button);
    List->setObjectName(QStringLiteral("EditToolbar_PasteList"));
    int Mode = 0;
    for (const ToolDropRow& Row : PasteDropTable()) {
        ++Mode;
        QAction* Action = List->addAction(Q(Row.Entry));
        Action->setObjectName(Q(std::string("EditToolbar_Paste_") + Row.Entry));
        Action->setStatusTip(Q(MenuRowOf(Row.Command)->Hint));
        const std::string Command = Row.Command;
        connect(Action, &QAction::triggered, this, [this, Mode, Command] {
            ChoosePasteMode(Mode);
            RunCommand(Command);
        });
    }
    Button->setMenu(List);
    Button->setPopupMode(QToolButton::MenuButtonPopup);
    connect(Button, &QToolButton::clicked, this, [this] {
        RunCommand("Edit_Paste_Mnu_" + std::to_string(PasteModeChosen == 0 ? 1 : PasteModeChosen));
    });
    Entries.at("Edit_Paste_Mnu_1")->setShortcut(QKeySequence::Paste);
}

void WaveEditor_Frm::ChoosePasteMode(int Mode) {
    PasteModeChosen = Mode;
    const ToolDropRow& Row = PasteDropTable().at(std::size_t(Mode - 1));
    QToolButton* Button = ToolButton("EditToolbar", "Paste");
    Button->setToolTip(QStringLiteral("Paste(%1)").arg(QLatin1String(Row.Entry)));
    ButtonCommand.at("EditToolbar_Paste") = Row.Command;
    // The key does what the button does.
    for (const ToolDropRow& Other : PasteDropTable())
        Entries.at(Other.Command)->setShortcut(QKeySequence());
    Entries.at(Row.Command)->setShortcut(QKeySequence::Paste);
    RefreshCommands();
}

void WaveEditor_Frm::RefreshCommands() {
    const auto Usable = [this](const std::string& Name) {
        const auto Found = Allowed.find(Name);
        return Commands.Has(Name) && (Found == Allowed.end() || Found->second);
    };
    for (const auto& [Name, Action] : Entries)
        Action->setEnabled(Usable(Name));
    for (const auto& [Control, Button] : Buttons)
        Button->setEnabled(Usable(ButtonCommand.at(Control)));
    for (const auto& Row : PasteDropTable())
        if (auto* Action = findChild<QAction*>(Q(std::string("EditToolbar_Paste_") + Row.Entry)))
            Action->setEnabled(Usable(Row.Command));
}

void WaveEditor_Frm::SetEntryEnabled(const std::string& Name, bool Enabled) {
    Allowed[Name] = Enabled;
    RefreshCommands();
}

QAction* WaveEditor_Frm::Entry(const std::string& Name) const {
    const auto Found = Entries.find(Name);
    if (Found == Entries.end())
        throw std::out_of_range("no menu entry " + Name);
    return Found->second;
}

QToolButton* WaveEditor_Frm::ToolButton(const std::string& Toolbar, const std::string& Key) const {
    const auto Found = Buttons.find(Toolbar + "_" + Key);
    if (Found == Buttons.end())
        throw std::out_of_range("no button " + Key + " on " + Toolbar);
    return Found->second;
}

void WaveEditor_Frm::SetEntryChecked(const std::string& Name, bool Checked) {
    Entry(Name)->setChecked(Checked);
}

bool WaveEditor_Frm::EntryChecked(const std::string& Name) const {
    return Entry(Name)->isChecked();
}

void WaveEditor_Frm::SetRecentFiles(const std::vector<std::string>& Captions) {
    for (QAction* Action : LastFiles) {
        Entries.erase(Action->objectName().toStdString());
        delete Action;
    }
    LastFiles.clear();
    QMenu* Menu = Menus.at("File_Menu");
    for (std::size_t Index = 1; Index <= Captions.size(); ++Index) {
        const std::string Name = "FileLastFilesMnu_" + std::to_string(Index);
        auto* Action =
            new QAction(QStringLiteral("&%1 ").arg(Index) + Literal(Captions[Index - 1]), Menu);
        Action->setObjectName(Q(Name));
        Action->setStatusTip(QStringLiteral("Opens this file"));
        connect(Action, &QAction::triggered, this, [this, Name] { RunCommand(Name); });
        Menu->insertAction(LastFilesPlace, Action);
        Entries[Name] = Action;
        LastFiles.push_back(Action);
    }
    Entry("FileLastFilesMnu_0")->setVisible(Captions.empty());
    LastFilesPlace->setVisible(false);
    RefreshCommands();
}

void WaveEditor_Frm::SetMenu_To_DefaultFormat() {
    SetEntryChecked("Format_Bit_Menu_0", CurrentFormat.Bits == 8);
    SetEntryChecked("Format_Bit_Menu_1", CurrentFormat.Bits == 16);
    SetEntryChecked("Format_Channel_Mono_Menu", CurrentFormat.Channel == 1);
    SetEntryChecked("Format_Channel_Stereo_Menu", CurrentFormat.Channel == 2);
    for (std::size_t Index = 0; Index < MenuRates.size(); ++Index)
        SetEntryChecked("Format_FrQ_Menu_" + std::to_string(Index),
                        MenuRates.at(Index) == CurrentFormat.Freq);
    const std::int32_t Rate = CustomRate();
    QAction* Custom = Entry("Format_FrQ_Menu_9");
    Custom->setChecked(Rate != 0);
    Custom->setText(Rate == 0 ? QStringLiteral("Custom Hz") : QStringLiteral("%1 Hz").arg(Rate));
    Custom->setData(Rate);
    SetEntryEnabled("Format_FrQ_Menu_9", Rate != 0); // without a rate there is nothing to choose
    SetEntryEnabled("Interchange_Mnu", CurrentFormat.Channel == 2);
    RefreshChannelSelector();
    StatusPanels.at("Format")->setText(
        QStringLiteral("%1Hz, %2bits").arg(CurrentFormat.Freq).arg(CurrentFormat.Bits));
}

void WaveEditor_Frm::UndoMenuChanged(const UndoMenuState& State) {
    Entry("Undo_Mnu_1")->setText(QLatin1Char('&') + Literal(State.Caption));
    SetEntryChecked("Undo_Mnu_3", State.OptionChecked);
    SetEntryEnabled("Undo_Mnu_1", State.Enabled);
    SetEntryEnabled("Undo_Mnu_2", State.Enabled);
}

void WaveEditor_Frm::RefreshChannelSelector() {
    const ChannelSelectorState State = ChannelSelector();
    QToolButton* Button = ToolButton("MouseToolbar", "SelChannel");
    Button->setChecked(State.Pressed);
    Button->setIcon(ToolIcon(Q(State.ImageKey)));
    SetEntryChecked("SelectBoth_Mnu", State.SelectBothChecked);
    SetEntryEnabled("MouseToolbar_SelChannel", State.Enabled);
    SetEntryEnabled("SelectBoth_Mnu", State.Enabled);
    SetEntryEnabled("SelectOther_Mnu", State.SelectOtherEnabled);
}

} // namespace quoril
