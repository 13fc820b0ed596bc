#include "shell/ChkDskSpcFrm.h"

#include "base/CommandFailure.h"
#include "base/ModalWindow.h"
#include "base/QtText.h"
#include "storage/UndoClearMod.h"
#include "view/PicturePanel.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

namespace quoril {

namespace {

constexpr int AdviceWidth = 460;

} // namespace

ChkDskSpcFrm::ChkDskSpcFrm(QWidget* Parent)
    : QDialog(Parent), DskSpcNeedLbl0(AddNumber("DskSpcNeedLbl0", "Total disk space needed")),
      DskSpcNeedLbl1(AddNumber("DskSpcNeedLbl1", "Needed for memory and original files")),
      DskSpcNeedLbl2(AddNumber("DskSpcNeedLbl2", "Needed for this command")),
      DskSpcAvalLbl(AddNumber("DskSpcAvalLbl", "Free disk space")), Msg1Lbl(new QLabel(this)),
      TryAgainBtn(new QPushButton(this)), ChkTimer1(new QTimer(this)) {
    setObjectName(QStringLiteral("ChkDskSpcFrm"));
    setWindowTitle(QStringLiteral("Disk Free Space:"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(10);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    AddNumbers(*Column);
    AddAdvice(*Column);
    Msg1Lbl->setObjectName(QStringLiteral("Msg1Lbl"));
    Msg1Lbl->setAccessibleName(tr("Whether the disk space is enough"));
    Msg1Lbl->setAutoFillBackground(true);
    Msg1Lbl->setMargin(6);
    QFont Bold = Msg1Lbl->font();
    Bold.setBold(true);
    Msg1Lbl->setFont(Bold);
    Column->addWidget(Msg1Lbl);
    AddButtons(*Column);
    ShowState(DiskSpaceStateFirst());

    ChkTimer1->setObjectName(QStringLiteral("ChkTimer1"));
    ChkTimer1->setInterval(DiskSpaceTick);
    connect(ChkTimer1, &QTimer::timeout, this, [this] { ChkTimer1_Timer(); });
    connect(this, &QDialog::finished, ChkTimer1, &QTimer::stop);
}

QLabel* ChkDskSpcFrm::AddNumber(const char* Name, const char* Accessible) {
    auto* Label = new QLabel(this);
    Label->setObjectName(QLatin1String(Name));
    Label->setAccessibleName(QLatin1String(Accessible));
    Label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return Label;
}

void ChkDskSpcFrm::AddNumbers(QLayout& Column) {
    struct Row {
        const char* Caption;
        QLabel* Number;
    };
    const std::array<Row, 4> Rows = {
        {{"Total Needed:", DskSpcNeedLbl0},
         {"Required for transfering memory and original files:", DskSpcNeedLbl1},
         {"Additional requirement for this operation:", DskSpcNeedLbl2},
         {"Actual available:", DskSpcAvalLbl}}};
    auto* Numbers = new QWidget(this);
    auto* Grid = new QGridLayout(Numbers);
    Grid->setContentsMargins(0, 0, 0, 0);
    Grid->setHorizontalSpacing(16);
    Grid->setColumnStretch(0, 1);
    int Line = 0;
    for (const Row& Each : Rows) {
        Grid->addWidget(new QLabel(QLatin1String(Each.Caption), Numbers), Line, 0);
        Grid->addWidget(Each.Number, Line++, 1);
    }
    Column.addWidget(Numbers);
}

void ChkDskSpcFrm::AddAdvice(QLayout& Column) {
    constexpr std::array<const char*, 3> Lines = {
        "If you have more then one hard disk, you can change the temp. folder location to a bigger "
        "hard disk. (See menu Tools - Options - Disk Usage.)",
        "If you are editing a large file, you can reduce the disk space requirement by keeping the "
        "Undo \"Off\". (See menu Edit ...)",
        "You can clear undo backup data and try again."};
    for (const char* Line : Lines) {
        auto* Label = new QLabel(QLatin1String(Line), this);
        Label->setWordWrap(true);
        Label->setFixedWidth(AdviceWidth);
        Column.addWidget(Label);
    }
}

void ChkDskSpcFrm::AddButtons(QLayout& Column) {
    auto* ClearUndoDataBtn = new QPushButton(QStringLiteral("Clear &undo backup data"), this);
    auto* CancelBtn = new QPushButton(QStringLiteral("&Cancel"), this);
    TryAgainBtn->setObjectName(QStringLiteral("TryAgainBtn"));
    ClearUndoDataBtn->setObjectName(QStringLiteral("ClearUndoDataBtn"));
    CancelBtn->setObjectName(QStringLiteral("CancelBtn"));
    CancelBtn->setDefault(true);
    connect(TryAgainBtn, &QPushButton::clicked, this, [this] {
        ButtonClicked = 1;
        accept();
    });
    connect(ClearUndoDataBtn, &QPushButton::clicked, this, [this] { ClearUndoDataBtn_Click(); });
    connect(CancelBtn, &QPushButton::clicked, this, [this] {
        ButtonClicked = 0;
        reject();
    });
    auto* Buttons = new QWidget(this);
    auto* Line = new QHBoxLayout(Buttons);
    Line->setContentsMargins(0, 0, 0, 0);
    Line->addWidget(TryAgainBtn);
    Line->addWidget(ClearUndoDataBtn);
    Line->addStretch();
    Line->addWidget(CancelBtn);
    Column.addWidget(Buttons);
    setTabOrder(TryAgainBtn, ClearUndoDataBtn);
    setTabOrder(ClearUndoDataBtn, CancelBtn);
    CancelBtn->setFocus();
}

void ChkDskSpcFrm::Fill(const DiskSpaceNumbers& Numbers, const FreeBytesRoutine& FreeBytes) {
    DiskSpaceNeeded1 = Numbers.Needed1;
    DiskSpaceNeeded2 = Numbers.Needed2;
    DiskSpaceNeeded0 = Numbers.Needed0;
    DiskSpaceAvailable = Numbers.Available;
    DskSpcNeedLbl1->setText(ShownText(DiskSpaceText(DiskSpaceNeeded1)));
    DskSpcNeedLbl2->setText(ShownText(DiskSpaceText(DiskSpaceNeeded2)));
    DskSpcNeedLbl0->setText(ShownText(DiskSpaceText(DiskSpaceNeeded0)));
    DskSpcAvalLbl->setText(ShownText(DiskSpaceText(DiskSpaceAvailable)));
    ShowState(DiskSpaceStateFirst());
    ButtonClicked = 0;
    FreeNow = FreeBytes;
    ChkTimer1->start();
}

void ChkDskSpcFrm::ShowState(const DiskSpaceStateRec& State) {
    // One key for all captions that the button may have.
    TryAgainBtn->setText(WithAccessKey(State.TryAgainCaption, 't'));
    // A shorter caption must not move the other button while the user aims at it.
    TryAgainBtn->setMinimumWidth(
        std::max(TryAgainBtn->minimumWidth(), TryAgainBtn->sizeHint().width()));
    TryAgainBtn->setEnabled(State.TryAgainEnabled);
    Msg1Lbl->setText(QLatin1String(State.Message));
    const QColor Color = ColorFromBgr(State.MessageColor);
    // Behind a colour as bright as the green a light window would leave nothing to read.
    constexpr int Bright = 100;
    QPalette Colors = Msg1Lbl->palette();
    Colors.setColor(QPalette::WindowText, Color);
    Colors.setColor(QPalette::Window, qGray(Color.rgb()) > Bright ? QColor(0x20, 0x20, 0x20)
                                                                  : QColor(0xFF, 0xFF, 0xFF));
    Msg1Lbl->setPalette(Colors);
}

void ChkDskSpcFrm::ChkTimer1_Timer() {
    DiskSpaceAvailable = FreeNow();
    DskSpcAvalLbl->setText(ShownText(DiskSpaceText(DiskSpaceAvailable)));
    ShowState(DiskSpaceStateOf(
        {DiskSpaceNeeded1, DiskSpaceNeeded2, DiskSpaceNeeded0, DiskSpaceAvailable}));
}

void ChkDskSpcFrm::ClearUndoDataBtn_Click() {
    ChkTimer1->stop();
    RunCommand({}, [] { UndoClearFiles_UserAssisted(*WaveStore); });
    ChkTimer1->start();
}

std::int32_t ChkDskSpcAsker::ShowChkDskSpc(const DiskSpaceNumbers& Numbers,
                                           const FreeBytesRoutine& FreeBytes) {
    ChkDskSpcFrm Dialog(WindowInUse());
    Dialog.Fill(Numbers, FreeBytes);
    RunModal(Dialog);
    return Dialog.ButtonClicked;
}

} // namespace quoril
