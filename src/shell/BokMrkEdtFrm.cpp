#include "shell/BokMrkEdtFrm.h"

#include "base/CommandFailure.h"
#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"
#include "base/QtText.h"
#include "base/RadioFrame.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace quoril {

BokMrkEdtFrm::BokMrkEdtFrm(BookmarkEditing& Shown, QWidget* Parent)
    : QDialog(Parent), Editing(Shown) {
    setObjectName(QStringLiteral("BokMrkEdtFrm"));
    setWindowTitle(ShownText(Editing.Caption));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(10);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    AddTexts(*Column);
    auto* Options = new QHBoxLayout;
    TypOption = AddRadioFrame(*this, *Options, "Type:", "TypOption", BookmarkTypeCaptions, 1);
    SrcOption = AddRadioFrame(*this, *Options, "Source:", "SrcOption", BookmarkSourceCaptions, 1);
    AddRadioFrame(*this, *Options, "Positioning:", "PosOption", BookmarkPositioningCaptions, 1)
        ->button(1)
        ->setChecked(true);
    Column->addLayout(Options);
    AddPositions(*Column);
    AddOkCancelRow(*this, *Column, Editing.OkClicked);
    UpdateFromTo();
    connect(TypOption, &QButtonGroup::idClicked, this,
            [this](int Index) { Change([&] { Editing.ChooseType(Index); }); });
    connect(SrcOption, &QButtonGroup::idClicked, this,
            [this](int Index) { Change([&] { Editing.ChooseSource(Index); }); });
    NameTxt->setFocus();
    NameTxt->selectAll();
}

QLineEdit* BokMrkEdtFrm::AddBox(const QString& Name, const QString& Accessible) {
    auto* Box = new QLineEdit(this);
    Box->setObjectName(Name);
    Box->setAccessibleName(Accessible);
    return Box;
}

void BokMrkEdtFrm::AddTexts(QVBoxLayout& Column) {
    NameTxt = AddBox(QStringLiteral("NameTxt"), QStringLiteral("Name of the bookmark"));
    RemarkTxt = AddBox(QStringLiteral("RemarkTxt"), QStringLiteral("Remark"));
    NameTxt->setText(ShownText(Editing.Name));
    RemarkTxt->setText(ShownText(Editing.Remark));
    auto* NameLbl = new QLabel(QStringLiteral("&Name:"), this);
    NameLbl->setBuddy(NameTxt);
    auto* RemarkLbl = new QLabel(QStringLiteral("&Remark:"), this);
    RemarkLbl->setBuddy(RemarkTxt);
    auto* Grid = new QGridLayout;
    Grid->setHorizontalSpacing(10);
    Grid->setVerticalSpacing(8);
    Grid->addWidget(NameLbl, 0, 0);
    Grid->addWidget(NameTxt, 0, 1);
    Grid->addWidget(RemarkLbl, 1, 0);
    Grid->addWidget(RemarkTxt, 1, 1);
    Column.addLayout(Grid);
    connect(NameTxt, &QLineEdit::textChanged, this,
            [this](const QString& Text) { Editing.Name = CoreText(Text); });
    connect(RemarkTxt, &QLineEdit::textChanged, this,
            [this](const QString& Text) { Editing.Remark = CoreText(Text); });
}

void BokMrkEdtFrm::AddPositions(QVBoxLayout& Column) {
    auto* Grid = new QGridLayout;
    Grid->setHorizontalSpacing(10);
    Grid->setVerticalSpacing(8);
    Grid->addWidget(new QLabel(QStringLiteral("Samples:"), this), 0, 1);
    Grid->addWidget(new QLabel(QStringLiteral("Time:(sec.)"), this), 0, 2);
    const std::array<QString, 3> Ends = {QString(), QStringLiteral("From"), QStringLiteral("To")};
    for (const std::size_t Index : {1U, 2U}) {
        const auto Number = static_cast<int>(Index);
        EnterSamplesTxt.at(Index) = AddBox(QStringLiteral("EnterSamplesTxt_%1").arg(Number),
                                           Ends.at(Index) + QStringLiteral(", in samples"));
        EnterTimeTxt.at(Index) = AddBox(QStringLiteral("EnterTimeTxt_%1").arg(Number),
                                        Ends.at(Index) + QStringLiteral(", in seconds"));
        auto* EndLbl = new QLabel(QStringLiteral("%1:").arg(Ends.at(Index)), this);
        Grid->addWidget(EndLbl, Number, 0);
        Grid->addWidget(EnterSamplesTxt.at(Index), Number, 1);
        Grid->addWidget(EnterTimeTxt.at(Index), Number, 2);
        connect(EnterSamplesTxt.at(Index), &QLineEdit::textChanged, this,
                [this, Index](const QString& Text) {
                    Change([&] { Editing.EditSamples(Index, CoreText(Text)); });
                });
        connect(EnterTimeTxt.at(Index), &QLineEdit::textChanged, this,
                [this, Index](const QString& Text) {
                    Change([&] { Editing.EditTime(Index, CoreText(Text)); });
                });
    }
    Column.addLayout(Grid);
}

template <class ChangeType>
void BokMrkEdtFrm::Change(ChangeType&& What) {
    if (Updating)
        return;
    RunCommand({}, std::forward<ChangeType>(What));
    UpdateFromTo();
}

void BokMrkEdtFrm::UpdateFromTo() {
    const QScopedValueRollback<bool> Quiet(Updating, true);
    TypOption->button(Editing.Type)->setChecked(true);
    for (const std::size_t Index : {1U, 2U, 3U, 4U})
        SrcOption->button(static_cast<int>(Index))->setEnabled(Editing.SourceEnabled.at(Index));
    SrcOption->button(Editing.Source)->setChecked(true);
    const auto Show = [](QLineEdit& Box, const std::string& Text, bool Enabled) {
        // A text that is there already is left alone, and the cursor in it.
        if (const QString Now = ShownText(Text); Box.text() != Now)
            Box.setText(Now);
        Box.setEnabled(Enabled);
    };
    for (const std::size_t Index : {1U, 2U}) {
        Show(*EnterSamplesTxt.at(Index), Editing.Samples.at(Index),
             Editing.PositionEnabled.at(Index));
        Show(*EnterTimeTxt.at(Index), Editing.Time.at(Index), Editing.PositionEnabled.at(Index));
    }
}

void BokMrkEdtAsker::ShowBokMrkEdt(BookmarkEditing& Editing) {
    BokMrkEdtFrm Dialog(Editing, WindowInUse());
    RunModal(Dialog);
}

} // namespace quoril
