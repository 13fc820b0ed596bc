#include "shell/CopiedFrm.h"

#include "base/QtText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quoril {

namespace {

constexpr int TextWidth = 380;

QLabel* Line(const char* Name, const std::string& Text, QWidget* Parent) {
    auto* Label = new QLabel(Breakable(ShownText(Text)), Parent);
    Label->setObjectName(QLatin1String(Name));
    Label->setAccessibleName(ShownText(Text));
    Label->setTextFormat(Qt::PlainText);
    Label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    Label->setWordWrap(true);
    Label->setMinimumWidth(TextWidth);
    Label->setHidden(Text.empty());
    return Label;
}

} // namespace

CopiedFrm::CopiedFrm(const CopiedLines& Lines, QWidget* Parent) : QDialog(Parent) {
    setObjectName(QStringLiteral("CopiedFrm"));
    setWindowTitle(QStringLiteral("Wave samples placed in private ClipBoard"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->addWidget(Line("CopiedLbl_0", Lines.First, this));
    Column->addWidget(Line("CopiedLbl_1", Lines.Second, this));
    Column->addSpacing(8);
    Column->addWidget(Line("CopiedLbl_2", Lines.Note, this));

    auto* OkBtn = new QPushButton(QStringLiteral("&OK"), this);
    OkBtn->setObjectName(QStringLiteral("OkBtn"));
    OkBtn->setAccessibleName(tr("Close this message"));
    OkBtn->setDefault(true);
    OkBtn->setFocus();
    connect(OkBtn, &QPushButton::clicked, this, &QDialog::accept);
    auto* Row = new QHBoxLayout;
    Row->addStretch();
    Row->addWidget(OkBtn);
    Row->addStretch();
    Column->addSpacing(8);
    Column->addLayout(Row);
}

} // namespace quoril
