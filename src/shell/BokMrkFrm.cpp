#include "shell/BokMrkFrm.h"

#include "audiofile/AudioFileNames.h"
#include "base/CommandFailure.h"
#include "base/DocumentState.h"
#include "base/ModalWindow.h"
#include "base/MsgBoxMod.h"
#include "base/QtText.h"
#include "bookmarks/BookmarkFileMod.h"
#include "bookmarks/BookmarkRec.h"
#include "settings/STD1.h"
#include "shell/HelpTopics.h"
#include "shell/HelpViewer.h"
#include "view/ElidedLabel.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace quoril {

namespace {

constexpr const char* BookmarkFileFilter = "Bookmark files (*.bok)|*.bok|All files (*.*)|*.*";
constexpr int ListLines = 8;
constexpr int ListLetters = 44;
constexpr int RemarkLetters = 120; // the rest is in the tool tip

FileDialogRequest BookmarkFileRequest(const char* Title) {
    FileDialogRequest Request;
    Request.Title = Title;
    Request.Folder = WaveDir;
    Request.FileName = BookmarkFileOf(WaveFileName);
    Request.Filter = BookmarkFileFilter;
    Request.DefaultExtension = "bok";
    return Request;
}

} // namespace

BokMrkFrm::BokMrkFrm(BokMrkModes Mode, FileDialogs& UsedDialogs, QWidget* Parent)
    : QDialog(Parent), WorkingMode(Mode), Dialogs(UsedDialogs), BookMarkLst(new QListWidget(this)) {
    setObjectName(QStringLiteral("BokMrkFrm"));
    BookMarkLst->setObjectName(QStringLiteral("BookMarkLst"));
    BookMarkLst->setAccessibleName(QStringLiteral("Bookmarks"));
    BookMarkLst->setMinimumSize(fontMetrics().averageCharWidth() * ListLetters,
                                fontMetrics().height() * ListLines);
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(10);
    Column->addWidget(BookMarkLst, 1);
    AddProperties(*Column);
    AddButtons(*Column);
    connect(BookMarkLst, &QListWidget::itemSelectionChanged, this, [this] { ShowChosen(); });
    connect(BookMarkLst, &QListWidget::itemDoubleClicked, this, [this] {
        if (WorkingMode == BokMrkChoose)
            findChild<QPushButton*>(QStringLiteral("OkBtn"))->click();
    });
    FillUpForm();
    BookMarkLst->setFocus();
}

void BokMrkFrm::AddProperties(QVBoxLayout& Column) {
    const auto Label = [this](const QString& Name, const QString& Accessible,
                              QLabel* Made = nullptr) {
        if (Made == nullptr)
            Made = new QLabel(this);
        Made->setObjectName(Name);
        Made->setAccessibleName(Accessible);
        Made->setTextFormat(Qt::PlainText);
        return Made;
    };
    NameLbl = Label(QStringLiteral("NameLbl"), QStringLiteral("Name"), new ElidedLabel(this));
    QFont Bold = NameLbl->font();
    Bold.setBold(true);
    NameLbl->setFont(Bold);
    RemarkLbl = Label(QStringLiteral("RemarkLbl"), QStringLiteral("Remark"));
    RemarkLbl->setWordWrap(true);
    const std::array<QString, 3> Ends = {QString(), QStringLiteral("What the first position is"),
                                         QStringLiteral("What the second position is")};
    const std::array<QString, 5> Places = {
        QStringLiteral("First position in samples"), QStringLiteral("First position in seconds"),
        QStringLiteral("Second position in samples"), QStringLiteral("Second position in seconds"),
        QStringLiteral("Duration")};
    auto* Grid = new QGridLayout;
    Grid->setHorizontalSpacing(12);
    for (const std::size_t Index : {1U, 2U}) {
        FromToLbl.at(Index) = Label(QStringLiteral("FromToLbl_%1").arg(Index), Ends.at(Index));
        Grid->addWidget(FromToLbl.at(Index), static_cast<int>(Index) - 1, 0);
    }
    for (std::size_t Index = 0; Index < PosiLbl.size(); ++Index) {
        PosiLbl.at(Index) = Label(QStringLiteral("PosiLbl_%1").arg(Index), Places.at(Index));
        const auto Place = static_cast<int>(Index);
        if (Index < 4)
            Grid->addWidget(PosiLbl.at(Index), Place / 2, 1 + Place % 2, Qt::AlignRight);
    }
    Grid->addWidget(PosiLbl[4], 2, 0, 1, 3);
    Grid->setColumnStretch(3, 1);
    Column.addWidget(NameLbl);
    Column.addWidget(RemarkLbl);
    Column.addLayout(Grid);
}

void BokMrkFrm::AddButtons(QVBoxLayout& Column) {
    const auto Help = [] { (void)ShowHelp(HelpContextOf("BokMrkFrm")); };
    const auto Ok = [this] {
        OkClicked = true;
        accept();
    };
    ButtonsFrame[0] = AddButtonsFrame(
        0, {{"AddBtn", "&Add", [this] { Act(BookmarkListAdd); }},
            {"EditBtn", "&Edit", [this] { Act([this] { BookmarkListEdit(ChosenNo()); }); }},
            {"DeleteBtn", "&Delete", [this] { Act([this] { BookmarkListDelete(ChosenNo()); }); }},
            {"LoadBtn", "&Load", [this] { Act([this] { LoadClicked(); }, "Load Bookmark Error"); }},
            {"SaveBtn", "&Save", [this] { Act([this] { SaveClicked(); }, "Save Bookmark Error"); }},
            {"HelpBtn", "&Help", Help},
            {"CloseBtn", "&Close", [this] { reject(); }}});
    ButtonsFrame[1] = AddButtonsFrame(1, {{"OkBtn", "&OK", Ok},
                                          {"CancelBtn", "&Cancel", [this] { reject(); }},
                                          {"HelpBtn", "&Help", Help}});
    for (QWidget* Frame : ButtonsFrame)
        Column.addWidget(Frame);
}

QWidget* BokMrkFrm::AddButtonsFrame(int Index, const std::vector<ButtonRow>& Rows) {
    auto* Frame = new QWidget(this);
    Frame->setObjectName(QStringLiteral("ButtonsFrame_%1").arg(Index));
    auto* Row = new QHBoxLayout(Frame);
    Row->setContentsMargins(0, 0, 0, 0);
    if (Index == 1)
        Row->addStretch(1);
    for (const ButtonRow& Each : Rows) {
        auto* Button = new QPushButton(QLatin1String(Each.Caption), Frame);
        Button->setObjectName(QLatin1String(Each.Name));
        connect(Button, &QPushButton::clicked, this, Each.Action);
        Row->addWidget(Button);
    }
    return Frame;
}

void BokMrkFrm::FillUpForm() {
    const bool Choosing = WorkingMode == BokMrkChoose;
    setWindowTitle(Choosing ? QStringLiteral(" Choose a bookmark name")
                            : QStringLiteral(" Manage Book Marks"));
    ButtonsFrame[0]->setVisible(!Choosing);
    ButtonsFrame[1]->setVisible(Choosing);
    findChild<QPushButton*>(Choosing ? QStringLiteral("OkBtn") : QStringLiteral("CloseBtn"))
        ->setDefault(true);
    BookMarkLst->clear();
    for (std::int32_t No = 1; No <= BookmarkNos(); ++No)
        BookMarkLst->addItem(ShownText(Bookmarks.at(static_cast<std::size_t>(No)).Name));
    BookMarkLst->setCurrentRow(-1);
    ShowChosen();
}

std::int32_t BokMrkFrm::ChosenNo() const {
    // A list that gets the focus has a current line, though none was chosen.
    return BookMarkLst->selectedItems().isEmpty() ? 0 : BookMarkLst->currentRow() + 1;
}

void BokMrkFrm::ShowChosen() {
    const BookmarkShown Shown = BookmarkShownOf(ChosenNo());
    NameLbl->setText(ShownText(Shown.Name));
    const QString Remark = ShownText(Shown.Remark);
    const bool Whole = Remark.size() <= RemarkLetters;
    RemarkLbl->setText(
        Breakable(Whole ? Remark : Remark.left(RemarkLetters) + QStringLiteral(" ...")));
    RemarkLbl->setToolTip(Whole ? QString() : Remark);
    for (const std::size_t Index : {1U, 2U})
        FromToLbl.at(Index)->setText(ShownText(Shown.FromTo.at(Index)));
    for (std::size_t Index = 0; Index < PosiLbl.size(); ++Index)
        PosiLbl.at(Index)->setText(ShownText(Shown.Posi.at(Index)));
}

void BokMrkFrm::Act(const std::function<void()>& What, const char* ErrorTitle) {
    const std::int32_t Chosen = ChosenNo();
    const std::int32_t Before = BookmarkNos();
    RunCommand(ErrorTitle, What);
    FillUpForm();
    if (BookmarkNos() == Before)
        BookMarkLst->setCurrentRow(Chosen - 1);
}

void BokMrkFrm::LoadClicked() {
    const auto Chosen = Dialogs.OpenFile(BookmarkFileRequest("Choose a file to load Bookmark"));
    if (!Chosen)
        return;
    if (!FileThere(*Chosen))
        MsgBox("File Not found");
    else if (LoadBookmarks(*Chosen))
        BookmarkChanged = true;
}

void BokMrkFrm::SaveClicked() {
    FileDialogRequest Request = BookmarkFileRequest("Choose file name to save Bookmark");
    Request.OverwritePrompt = true;
    // The dialog has asked about a file that is there, whatever it holds.
    if (const auto Chosen = Dialogs.SaveFile(Request))
        SaveBookmarks(*Chosen, UnreadableFiles::Replace);
}

std::int32_t BokMrkAsker::ShowBokMrk(BokMrkModes WorkingMode) {
    BokMrkFrm Window(WorkingMode, Dialogs, WindowInUse());
    RunModal(Window);
    return WorkingMode == BokMrkChoose && Window.OkClicked ? Window.ChosenNo() : 0;
}

} // namespace quoril
