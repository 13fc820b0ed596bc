#include "shell/DelSilenFrm.h"

#include "base/ModalWindow.h"
#include "base/MsgBoxMod.h"
#include "base/OkCancelRow.h"
#include "base/QtText.h"
#include "base/RadioFrame.h"
#include "platform/Text.h"

#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <initializer_list>
#include <limits>

namespace quoril {

namespace {

// The rows of DelSilenFields.
constexpr std::size_t VolTxt = 0;
constexpr std::size_t DurTxt = 1;
constexpr std::size_t BalDurTxt = 2;
constexpr std::size_t BalPerTxt = 3;
constexpr std::size_t BalMinDurTxt = 4;
constexpr std::size_t BalMaxDurTxt = 5;

constexpr std::array<const char*, 2> StyleCaptions = {"Reduce to fixed duration",
                                                      "Percentage duration"};
constexpr std::array<char, 2> StyleKeys = {'R', 'P'};
constexpr std::array<const char*, 2> BalanceUnits = {"(Seconds)",
                                                     "(% of original silence duration)"};

/// What comes and goes leaves its room, so that the dialog stays as large as it is.
void KeepRoom(QWidget& Part) {
    QSizePolicy Policy = Part.sizePolicy();
    Policy.setRetainSizeWhenHidden(true);
    Part.setSizePolicy(Policy);
}

/// The reasons for which the focus goes when the user leaves a field.
bool LeftByUser(Qt::FocusReason Reason) {
    return Reason == Qt::MouseFocusReason || Reason == Qt::TabFocusReason ||
           Reason == Qt::BacktabFocusReason || Reason == Qt::ShortcutFocusReason;
}

} // namespace

DelSilenFrm::DelSilenFrm(const DelSilenChoice& Shown, QWidget* Parent) : QDialog(Parent) {
    setObjectName(QStringLiteral("DelSilenFrm"));
    setWindowTitle(QStringLiteral("Delete Silence / Low volume"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(8);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    AddThresholds(*Column, Shown);
    DetStylOpn = AddRadioFrame(*this, *Column, "Delete style :", "DetStylOpn", StyleCaptions, 1);
    for (std::size_t Index = 0; Index < StyleCaptions.size(); ++Index)
        DetStylOpn->button(static_cast<int>(Index) + 1)
            ->setText(WithAccessKey(StyleCaptions.at(Index), StyleKeys.at(Index)));
    AddBalance(*Column, Shown);
    AddOkCancelRow(*this, *Column, OkClicked);
    DetStylOpn->button(Shown.SilenDelStyl)->setChecked(true);
    connect(DetStylOpn, &QButtonGroup::idToggled, this, &DelSilenFrm::ShowStyle);
    ShowStyle();
    Fields[VolTxt]->setFocus();
    Fields[VolTxt]->selectAll();
}

QLabel* DelSilenFrm::AddLabel(const QString& Name, const QString& Text, QLineEdit* Buddy) {
    auto* Label = new QLabel(Text, this);
    Label->setObjectName(Name);
    Label->setBuddy(Buddy);
    KeepRoom(*Label);
    return Label;
}

QLabel* DelSilenFrm::AddErrorLabel(std::size_t Index) {
    const DelSilenField& Field = DelSilenFields().at(Index);
    QLabel* Label =
        AddLabel(QLatin1String(Field.ErrorLbl), QLatin1String(Field.ErrorText), nullptr);
    QPalette Colors = Label->palette();
    Colors.setColor(QPalette::WindowText, QColor(0xC0, 0, 0));
    Label->setPalette(Colors);
    return Label;
}

QLineEdit* DelSilenFrm::AddField(std::size_t Index, const char* AccessibleName,
                                 const DelSilenChoice& Shown) {
    constexpr int Decimals = 2;
    const DelSilenField& Row = DelSilenFields().at(Index);
    auto* Field = new QLineEdit(QString::number(Shown.*Row.Value, 'f', Decimals), this);
    Field->setObjectName(QLatin1String(Row.Control));
    Field->setAccessibleName(QLatin1String(AccessibleName));
    Field->setFixedWidth(Field->fontMetrics().horizontalAdvance(QStringLiteral("000000.00")) + 24);
    Field->installEventFilter(this);
    connect(Field, &QLineEdit::textChanged, this, &DelSilenFrm::ShowErrors);
    Fields.at(Index) = Field;
    return Field;
}

void DelSilenFrm::AddThresholds(QVBoxLayout& Column, const DelSilenChoice& Shown) {
    struct Row {
        std::size_t Field;
        const char* Caption;
        const char* AccessibleName;
        const char* Unit;
        const char* Meaning;
    };
    auto* Grid = new QGridLayout;
    Grid->setHorizontalSpacing(10);
    Grid->setVerticalSpacing(4);
    Grid->setColumnStretch(2, 1);
    for (const Row& Each :
         {Row{VolTxt, "&Volume threshold :", "Volume threshold, in percent",
              "(% of total waveform height)", "Less then this will be considered as silence"},
          Row{DurTxt, "&Duration threshold :", "Duration threshold, in seconds", "(Seconds)",
              "More then this will be taken for processing"}}) {
        const int Line = Grid->rowCount();
        QLineEdit* Field = AddField(Each.Field, Each.AccessibleName, Shown);
        Grid->addWidget(AddLabel({}, QLatin1String(Each.Caption), Field), Line, 0);
        Grid->addWidget(Field, Line, 1);
        Grid->addWidget(AddLabel({}, QLatin1String(Each.Unit), nullptr), Line, 2);
        Grid->addWidget(AddLabel({}, QLatin1String(Each.Meaning), nullptr), Line + 1, 0, 1, 3);
        Grid->addWidget(AddErrorLabel(Each.Field), Line + 2, 0, 1, 3);
    }
    Column.addLayout(Grid);
}

void DelSilenFrm::AddBalance(QVBoxLayout& Column, const DelSilenChoice& Shown) {
    const auto Add = [](QHBoxLayout& Line, std::initializer_list<QWidget*> Parts) {
        for (QWidget* Part : Parts)
            Line.addWidget(Part);
        Line.addStretch();
    };
    QLineEdit* Fixed = AddField(BalDurTxt, "Balance duration after deleting, in seconds", Shown);
    QLineEdit* Part = AddField(BalPerTxt, "Balance duration after deleting, in percent", Shown);
    QLineEdit* Least = AddField(BalMinDurTxt, "Least balance duration, in seconds", Shown);
    QLineEdit* Most = AddField(BalMaxDurTxt, "Largest balance duration, in seconds", Shown);
    KeepRoom(*Least);
    KeepRoom(*Most);
    BalDesLbl = AddLabel(QStringLiteral("BalDesLbl"),
                         QStringLiteral("&Balance duration after deleting :"), Fixed);
    BalUnitLbl = AddLabel(QStringLiteral("BalUnitLbl"), QLatin1String(BalanceUnits[1]), nullptr);
    auto* Balance = new QHBoxLayout;
    Add(*Balance, {BalDesLbl, Fixed, Part, BalUnitLbl});
    // The widest of what the label says gives its room.
    BalUnitLbl->setMinimumWidth(BalUnitLbl->sizeHint().width());
    auto* Ends = new QHBoxLayout;
    MinMaxLbl = {AddLabel(QStringLiteral("MinMaxLbl_1"), QStringLiteral("Mi&n.:"), Least),
                 AddLabel(QStringLiteral("MinMaxLbl_2"), QStringLiteral("Ma&x.:"), Most),
                 AddLabel(QStringLiteral("MinMaxLbl_3"), QStringLiteral("(Seconds)"), nullptr)};
    Add(*Ends, {MinMaxLbl[0], Least, AddErrorLabel(BalMinDurTxt), MinMaxLbl[1], Most, MinMaxLbl[2],
                AddErrorLabel(BalMaxDurTxt)});
    Column.addLayout(Balance);
    Column.addWidget(AddErrorLabel(BalDurTxt));
    Column.addLayout(Ends);
}

double DelSilenFrm::NumberIn(std::size_t Index) const {
    return NumberAlone(CoreText(Fields.at(Index)->text()))
        .value_or(std::numeric_limits<double>::quiet_NaN());
}

DelSilenChoice DelSilenFrm::Choice() const {
    DelSilenChoice Chosen;
    for (std::size_t Index = 0; Index < Fields.size(); ++Index)
        Chosen.*DelSilenFields().at(Index).Value = NumberIn(Index);
    Chosen.SilenDelStyl = Style();
    return Chosen;
}

std::int16_t DelSilenFrm::Style() const {
    return static_cast<std::int16_t>(DetStylOpn->checkedId());
}

void DelSilenFrm::ShowStyle() {
    const bool Fixed = Style() == 1;
    BalDesLbl->setBuddy(Fields.at(Fixed ? BalDurTxt : BalPerTxt));
    BalUnitLbl->setText(QLatin1String(BalanceUnits.at(Fixed ? 0 : 1)));
    for (std::size_t Index = 0; Index < Fields.size(); ++Index)
        Fields.at(Index)->setVisible(DelSilenFields().at(Index).InStyle(Style()));
    for (QLabel* Label : MinMaxLbl)
        Label->setVisible(!Fixed);
    ShowErrors();
}

void DelSilenFrm::ShowErrors() {
    const auto LabelOf = [this](const DelSilenField& Row) {
        return findChild<QLabel*>(QLatin1String(Row.ErrorLbl));
    };
    for (const DelSilenField& Row : DelSilenFields())
        LabelOf(Row)->hide();
    for (std::size_t Index = 0; Index < Fields.size(); ++Index) {
        const DelSilenField& Row = DelSilenFields().at(Index);
        if (Row.InStyle(Style()) && !Row.WhileEdited.Hold(NumberIn(Index)))
            LabelOf(Row)->show();
    }
}

bool DelSilenFrm::LeftWrong(std::size_t Index) const {
    const DelSilenField& Row = DelSilenFields().at(Index);
    return Row.InStyle(Style()) && !Row.WhenLeft.Hold(NumberIn(Index));
}

bool DelSilenFrm::eventFilter(QObject* Watched, QEvent* Event) {
    const auto Field = std::ranges::find(Fields, Watched);
    if (Field != Fields.end() && Event->type() == QEvent::FocusOut &&
        LeftByUser(static_cast<QFocusEvent*>(Event)->reason()))
        Leave(static_cast<std::size_t>(Field - Fields.begin()));
    return QDialog::eventFilter(Watched, Event);
}

void DelSilenFrm::Leave(std::size_t Index) {
    const QWidget* Next = QApplication::focusWidget();
    const bool BacksOut = Next != nullptr && Next->objectName() == QLatin1String("CancelBtn");
    if (BacksOut || !LeftWrong(Index))
        return;
    CalledBack = true;
    // After the click or key that moved the focus: a message in its midst would cut it in two.
    QTimer::singleShot(0, this, [this, Index] { CallBack(Index); });
}

void DelSilenFrm::CallBack(std::size_t Index) {
    CalledBack = false;
    if (!isVisible() || !LeftWrong(Index))
        return;
    for (QAbstractButton* Button : findChildren<QAbstractButton*>())
        Button->setDown(false);
    Fields.at(Index)->setFocus();
    Fields.at(Index)->selectAll();
    MsgBox(DelSilenFields().at(Index).Message);
}

void DelSilenFrm::accept() {
    OkClicked = false;
    if (CalledBack)
        return;
    const std::string Problem = DelSilenProblem(Choice());
    OkClicked = Problem.empty();
    if (OkClicked)
        QDialog::accept();
    else
        MsgBox(Problem, "Invalid entry");
}

DelSilenAnswer DelSilenAsker::ShowDelSilen(const DelSilenChoice& Shown) {
    DelSilenFrm Dialog(Shown, WindowInUse());
    RunModal(Dialog);
    return {Dialog.OkClicked, Dialog.Choice()};
}

} // namespace quoril
