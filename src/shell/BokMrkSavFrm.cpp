#include "shell/BokMrkSavFrm.h"

#include "base/CommandFailure.h"
#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"
#include "base/QtText.h"
#include "shell/PathText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace quoril {

namespace {

constexpr int ListLines = 9;
constexpr int ListLetters = 50;

} // namespace

BokMrkSavFrm::BokMrkSavFrm(const BokMrkSaving& Saving, FileDialogs& UsedDialogs, QWidget* Parent)
    : QDialog(Parent), Dialogs(UsedDialogs), BokMrkLst(new QListWidget(this)) {
    setObjectName(QStringLiteral("BokMrkSavFrm"));
    setWindowTitle(QStringLiteral("Save bookmarked parts"));
    BokMrkLst->setObjectName(QStringLiteral("BokMrkLst"));
    BokMrkLst->setAccessibleName(QStringLiteral("Bookmarks to save"));
    BokMrkLst->setMinimumSize(fontMetrics().averageCharWidth() * ListLetters,
                              fontMetrics().height() * ListLines);
    auto* Desc = new QLabel(QStringLiteral("Choose &Bookmarks to save:"), this);
    Desc->setBuddy(BokMrkLst);
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(10);
    Column->addWidget(Desc);
    Column->addWidget(BokMrkLst, 1);
    AddSelectButtons(*Column);
    AddPrefix(*Column);
    AddOkCancelRow(*this, *Column, OkClicked);
    UpdateForm(Saving);
    BokMrkLst->setFocus();
}

void BokMrkSavFrm::AddSelectButtons(QVBoxLayout& Column) {
    auto* Row = new QHBoxLayout;
    int Index = 0;
    for (const char* Caption : {"&Select all", "C&lear all"}) {
        auto* SelectBtn = new QPushButton(QLatin1String(Caption), this);
        SelectBtn->setObjectName(QStringLiteral("SelectBtn_%1").arg(Index));
        const bool Checks = Index++ == 0;
        connect(SelectBtn, &QPushButton::clicked, this, [this, Checks] { CheckAll(Checks); });
        Row->addWidget(SelectBtn);
    }
    Row->addStretch(1);
    Column.addLayout(Row);
}

void BokMrkSavFrm::AddPrefix(QVBoxLayout& Column) {
    PrefixTxt = new PathText(this);
    PrefixTxt->setObjectName(QStringLiteral("PrefixTxt"));
    PrefixTxt->setAccessibleName(QStringLiteral("File name prefix"));
    auto* Desc = new QLabel(QStringLiteral("&File name prefix: (with path/folder name)"), this);
    Desc->setBuddy(PrefixTxt);
    auto* BrowseBtn = new QPushButton(QStringLiteral("B&rowse"), this);
    BrowseBtn->setObjectName(QStringLiteral("BrowseBtn"));
    connect(BrowseBtn, &QPushButton::clicked, this, [this] { BrowseClicked(); });
    auto* Row = new QHBoxLayout;
    Row->addWidget(PrefixTxt, 1);
    Row->addWidget(BrowseBtn);
    Column.addWidget(Desc);
    Column.addLayout(Row);
    Column.addWidget(new QLabel(QStringLiteral("Bookmark name will be added to this"), this));
}

void BokMrkSavFrm::UpdateForm(const BokMrkSaving& Saving) {
    BokMrkLst->clear();
    BokMrkLst->setEnabled(!Saving.Names.empty());
    if (Saving.Names.empty())
        BokMrkLst->addItem(QStringLiteral("No bookmarks"));
    for (std::size_t Line = 0; Line < Saving.Names.size(); ++Line) {
        auto* Item = new QListWidgetItem(ShownText(Saving.Names[Line]), BokMrkLst);
        Item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        Item->setCheckState(Saving.Checked[Line] ? Qt::Checked : Qt::Unchecked);
    }
    BokMrkLst->setCurrentRow(0);
    PrefixTxt->SetPath(Saving.Prefix);
}

void BokMrkSavFrm::CheckAll(bool Checked) {
    for (int Row = 0; Row < BokMrkLst->count() && BokMrkLst->isEnabled(); ++Row)
        BokMrkLst->item(Row)->setCheckState(Checked ? Qt::Checked : Qt::Unchecked);
}

void BokMrkSavFrm::BrowseClicked() {
    RunCommand({}, [this] {
        if (const auto Chosen = Dialogs.SaveFile(PrefixRequest(PrefixTxt->Path())))
            PrefixTxt->SetPath(PrefixOf(*Chosen));
    });
}

void BokMrkSavFrm::Store(BokMrkSaving& Saving) const {
    Saving.OkClicked = OkClicked;
    Saving.Prefix = PrefixTxt->Path();
    for (std::size_t Line = 0; Line < Saving.Checked.size(); ++Line)
        Saving.Checked[Line] = BokMrkLst->item(static_cast<int>(Line))->checkState() == Qt::Checked;
}

void BokMrkSavAsker::ShowBokMrkSav(BokMrkSaving& Saving) {
    BokMrkSavFrm Window(Saving, Dialogs, WindowInUse());
    RunModal(Window);
    Window.Store(Saving);
}

} // namespace quoril
