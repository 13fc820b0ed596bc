#include "shell/ChnMixFrm.h"

#include "base/ModalWindow.h"
#include "base/OkCancelRow.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace quoril {

ChnMixFrm::ChnMixFrm(const ChnMixChoice& Chosen, QWidget* Parent) : QDialog(Parent) {
    setObjectName(QStringLiteral("ChnMixFrm"));
    setWindowTitle(QStringLiteral("Channel Mix"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(14);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    auto* Rows = new QGridLayout;
    Rows->setHorizontalSpacing(12);
    Rows->setVerticalSpacing(10);
    LeftSrcCmb = AddSource(*Rows, "Left", "New &left channel:", "New left channel", Chosen.LeftSrc);
    RightSrcCmb =
        AddSource(*Rows, "Right", "New &right channel:", "New right channel", Chosen.RightSrc);
    Column->addLayout(Rows);
    AddOkCancelRow(*this, *Column, OkClicked);
    LeftSrcCmb->setFocus();
}

QComboBox* ChnMixFrm::AddSource(QGridLayout& Rows, const char* Name, const char* Caption,
                                const char* AccessibleName, std::int32_t Chosen) {
    constexpr int FewestLetters = 18;
    auto* Desc = new QLabel(QLatin1String(Caption), this);
    Desc->setObjectName(QLatin1String(Name) + QStringLiteral("DescCmb"));
    auto* Source = new QComboBox(this);
    Source->setObjectName(QLatin1String(Name) + QStringLiteral("SrcCmb"));
    Source->setAccessibleName(QLatin1String(AccessibleName));
    Source->setMinimumContentsLength(FewestLetters);
    for (const char* Item : MixSourceNames)
        Source->addItem(QLatin1String(Item));
    Source->setCurrentIndex(Chosen);
    Desc->setBuddy(Source);
    const int Row = Rows.rowCount();
    Rows.addWidget(Desc, Row, 0);
    Rows.addWidget(Source, Row, 1);
    return Source;
}

ChnMixChoice ChnMixFrm::Choice() const {
    return {LeftSrcCmb->currentIndex(), RightSrcCmb->currentIndex()};
}

ChnMixAnswer ChnMixAsker::ShowChnMix(const ChnMixChoice& Last) {
    ChnMixFrm Dialog(Last, WindowInUse());
    RunModal(Dialog);
    return {Dialog.OkClicked, Dialog.Choice()};
}

} // namespace quoril
