#include "shell/TwoValues.h"

#include "base/QtText.h"

#include <QCheckBox>
#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace quoril {

namespace {

constexpr int Letters = 18; ///< that a field shows: a third of a hundred with all its digits

/// A field with its caption above, in column `Number` of a grid.
QLineEdit* AddField(QDialog& Dialog, QGridLayout& Grid, int Number, const QString& Name,
                    const char* Caption, const QString& Spoken, const std::string& Text) {
    auto* StaEndLbl = new QLabel(QLatin1String(Caption), &Dialog);
    StaEndLbl->setObjectName(QStringLiteral("StaEndLbl_%1").arg(Number));
    auto* Field = new QLineEdit(ShownText(Text), &Dialog);
    Field->setObjectName(QStringLiteral("%1_%2").arg(Name).arg(Number));
    Field->setAccessibleName(Spoken);
    Field->setMinimumWidth(Field->fontMetrics().averageCharWidth() * Letters);
    StaEndLbl->setBuddy(Field);
    Grid.addWidget(StaEndLbl, 0, Number);
    Grid.addWidget(Field, 1, Number);
    return Field;
}

} // namespace

TwoValues::TwoValues(QDialog& Dialog, QVBoxLayout& Column, const char* Name, const char* Quantity,
                     const char* Range, const TwoTexts& Shown) {
    auto* Grid = new QGridLayout;
    Grid->setHorizontalSpacing(12);
    Grid->setVerticalSpacing(4);
    const QString Spoken = QStringLiteral("%1 at the %2, %3");
    const auto Add = [&](int Number, const char* Caption, const char* Which,
                         const std::string& Text) {
        return AddField(
            Dialog, *Grid, Number, QLatin1String(Name), Caption,
            Spoken.arg(QLatin1String(Quantity), QLatin1String(Which), QLatin1String(Range)), Text);
    };
    Start = Add(1, "&Start:", "start", Shown.Start);
    End = Add(2, "&End:", "end", Shown.End);
    Column.addLayout(Grid);
    UseTwoChk = new QCheckBox(QStringLiteral("&Use Two Values"), &Dialog);
    UseTwoChk->setObjectName(QStringLiteral("UseTwoChk"));
    UseTwoChk->setAccessibleName(QStringLiteral("Use Two Values"));
    UseTwoChk->setChecked(Shown.UseTwo);
    Column.addWidget(UseTwoChk);

    const auto Follow = [StartField = Start, EndField = End, Box = UseTwoChk] {
        EndField->setEnabled(Box->isChecked());
        if (!Box->isChecked())
            EndField->setText(StartField->text());
    };
    QObject::connect(UseTwoChk, &QCheckBox::toggled, End, Follow);
    QObject::connect(Start, &QLineEdit::textChanged, End, Follow);
    Follow();
    Start->selectAll();
    Start->setFocus();
}

TwoTexts TwoValues::Texts() const {
    return {CoreText(Start->text()), CoreText(End->text()), UseTwoChk->isChecked()};
}

} // namespace quoril
