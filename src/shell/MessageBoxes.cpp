#include "shell/MessageBoxes.h"

#include "base/ModalWindow.h"
#include "base/ProgramTitle.h"
#include "base/QtText.h"

#include <QAbstractButton>
#include <QInputDialog>
#include <QLayout>
#include <QMessageBox>
#include <QPushButton>
#include <array>

namespace quoril {

namespace {

struct AnswerRow {
    MsgBoxAnswer Answer;
    QMessageBox::StandardButton Button;
    const char* ObjectName;
    const char* Caption;
};

constexpr std::array<AnswerRow, 4> Answers = {
    {{MsgBoxAnswer::Ok, QMessageBox::Ok, "OkBtn", "&OK"},
     {MsgBoxAnswer::Cancel, QMessageBox::Cancel, "CancelBtn", "&Cancel"},
     {MsgBoxAnswer::Yes, QMessageBox::Yes, "YesBtn", "&Yes"},
     {MsgBoxAnswer::No, QMessageBox::No, "NoBtn", "&No"}}};

struct ButtonsRow {
    QMessageBox::StandardButtons Buttons;
    QMessageBox::StandardButton Escape;
    QMessageBox::Icon Icon;
};

ButtonsRow RowOf(MsgBoxButtons Buttons) {
    switch (Buttons) {
    case MsgBoxButtons::OkCancel:
        return {QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel, QMessageBox::Question};
    case MsgBoxButtons::YesNo:
        return {QMessageBox::Yes | QMessageBox::No, QMessageBox::No, QMessageBox::Question};
    case MsgBoxButtons::YesNoCancel:
        return {QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Cancel,
                QMessageBox::Question};
    case MsgBoxButtons::OkOnly:
        break;
    }
    return {QMessageBox::Ok, QMessageBox::Ok, QMessageBox::NoIcon};
}

QString TitleOr(const std::string& Title) {
    return Title.empty() ? QString::fromUtf8(ProgramTitle) : ShownText(Title);
}

} // namespace

MessageBoxesClass::MessageBoxesClass() {
    SetUserMessages(this);
}

MessageBoxesClass::~MessageBoxesClass() {
    SetUserMessages(nullptr);
}

MsgBoxAnswer MessageBoxesClass::MsgBox(const MsgBoxRequest& Request) {
    const ButtonsRow Row = RowOf(Request.Buttons);
    QMessageBox Box(Row.Icon, TitleOr(Request.Title), QString(), Row.Buttons, WindowInUse());
    Box.setObjectName(QStringLiteral("MsgBox"));
    Box.setTextFormat(Qt::PlainText);
    Box.setText(Breakable(ShownText(Request.Text)));
    Box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    for (const AnswerRow& Each : Answers)
        if (QAbstractButton* Button = Box.button(Each.Button)) {
            Button->setObjectName(QString::fromLatin1(Each.ObjectName));
            Button->setText(QString::fromLatin1(Each.Caption));
            Button->setIcon({}); // the buttons of the other windows have none
            if (Each.Answer == Request.Default)
                Box.setDefaultButton(Each.Button);
        }
    Box.setEscapeButton(Row.Escape);
    const int Pressed = RunModal(Box);
    for (const AnswerRow& Each : Answers)
        if (Each.Button == Pressed)
            return Each.Answer;
    return Request.Default;
}

InputBoxAnswer MessageBoxesClass::InputBox(const std::string& Prompt, const std::string& Title,
                                           const std::string& Proposed) {
    QInputDialog Box(WindowInUse());
    Box.setObjectName(QStringLiteral("InputBox"));
    Box.setWindowTitle(TitleOr(Title));
    Box.setLabelText(Breakable(ShownText(Prompt)));
    constexpr int LettersOfTitle = 40;
    Box.setMinimumWidth(Box.fontMetrics().averageCharWidth() * LettersOfTitle);
    Box.setTextValue(ShownText(Proposed));
    Box.setOkButtonText(QStringLiteral("&OK"));
    Box.setCancelButtonText(QStringLiteral("&Cancel"));
    (void)Box.sizeHint(); // makes the layout and its buttons
    Box.layout()->setContentsMargins(14, 12, 14, 12);
    Box.layout()->setSpacing(10);
    for (QPushButton* Button : Box.findChildren<QPushButton*>())
        Button->setIcon({});
    if (RunModal(Box) != QDialog::Accepted)
        return {};
    return {true, CoreText(Box.textValue())};
}

} // namespace quoril
