#include "shell/EncRunFrm.h"

#include "base/ModalWindow.h"
#include "base/ProgramTitle.h"
#include "base/QtText.h"
#include "view/ElidedLabel.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace quoril {

namespace {

constexpr int LookEachMs = 50;
constexpr int LettersInLine = 50;

} // namespace

EncRunFrm::EncRunFrm(const std::string& Encoder, std::function<bool()> HasEnded, QWidget* Parent)
    : QDialog(Parent), Ended(std::move(HasEnded)), TimeLbl(new QLabel(this)) {
    setObjectName(QStringLiteral("EncRunFrm"));
    setWindowTitle(QString::fromUtf8(ProgramTitle));
    auto* WorkLbl = new QLabel(QStringLiteral("The encoder is working:"), this);
    WorkLbl->setObjectName(QStringLiteral("WorkLbl"));
    auto* EncoderLbl = new ElidedLabel(this);
    EncoderLbl->setObjectName(QStringLiteral("EncoderLbl"));
    EncoderLbl->setTextFormat(Qt::PlainText);
    EncoderLbl->setText(ShownText(Encoder));
    EncoderLbl->setFixedWidth(fontMetrics().averageCharWidth() * LettersInLine);
    auto* WorkBar = new QProgressBar(this);
    WorkBar->setObjectName(QStringLiteral("WorkBar"));
    WorkBar->setAccessibleName(QStringLiteral("The encoder is working"));
    WorkBar->setRange(0, 0); // how far it has come is not known
    WorkBar->setTextVisible(false);
    TimeLbl->setObjectName(QStringLiteral("TimeLbl"));
    TimeLbl->setAccessibleName(QStringLiteral("Time that has passed"));
    auto* EndBtn = new QPushButton(QStringLiteral("&End the encoder"), this);
    EndBtn->setObjectName(QStringLiteral("EndBtn"));
    connect(EndBtn, &QPushButton::clicked, this, &QDialog::reject);
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(10);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    for (QWidget* Each : {static_cast<QWidget*>(WorkLbl), static_cast<QWidget*>(EncoderLbl),
                          static_cast<QWidget*>(WorkBar), static_cast<QWidget*>(TimeLbl)})
        Column->addWidget(Each);
    Column->addWidget(EndBtn, 0, Qt::AlignRight);
    // A Return that was meant for the dialog before must not end the work.
    EndBtn->setAutoDefault(false);
    TimeLbl->setFocusPolicy(Qt::StrongFocus);
    TimeLbl->setFocus();
    SinceStart.start();
    Look();
    connect(&LookTimer, &QTimer::timeout, this, [this] { Look(); });
    LookTimer.start(LookEachMs);
}

void EncRunFrm::Look() {
    constexpr qint64 MsInSecond = 1000;
    TimeLbl->setText(
        QStringLiteral("Time passed: %1 seconds").arg(SinceStart.elapsed() / MsInSecond));
    if (Ended())
        accept();
}

bool EncoderWaiter::WaitForEncoder(const std::string& Encoder,
                                   const std::function<bool()>& HasEnded) {
    EncRunFrm Window(Encoder, HasEnded, WindowInUse());
    return RunModal(Window) == QDialog::Accepted;
}

} // namespace quoril
