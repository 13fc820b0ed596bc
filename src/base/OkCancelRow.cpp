#include "base/OkCancelRow.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace quoril {

void AddOkCancelRow(QDialog& Dialog, QVBoxLayout& Column, bool& OkClicked, const char* OkCaption) {
    auto* Buttons = new QDialogButtonBox(&Dialog);
    QPushButton* OkBtn = Buttons->addButton(QLatin1String(OkCaption), QDialogButtonBox::AcceptRole);
    OkBtn->setObjectName(QStringLiteral("OkBtn"));
    OkBtn->setDefault(true);
    QPushButton* CancelBtn =
        Buttons->addButton(QStringLiteral("&Cancel"), QDialogButtonBox::RejectRole);
    CancelBtn->setObjectName(QStringLiteral("CancelBtn"));
    QObject::connect(OkBtn, &QPushButton::clicked, &Dialog, [&Dialog, &OkClicked] {
        OkClicked = true;
        Dialog.accept();
    });
    QObject::connect(CancelBtn, &QPushButton::clicked, &Dialog, &QDialog::reject);
    Column.addWidget(Buttons);
}

} // namespace quoril
