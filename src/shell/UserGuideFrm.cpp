#include "shell/UserGuideFrm.h"

#include "base/ModalWindow.h"
#include "base/ProgramTitle.h"
#include "base/QtText.h"

#include <QCheckBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>
#include <utility>

namespace quoril {

namespace {

constexpr const char* HintProperty = "GuideHint";

} // namespace

UserGuideFrm::UserGuideFrm(const GuideTip& Tip, QWidget* Parent)
    : QDialog(Parent), IKnowChk(new QCheckBox(QStringLiteral("I &know this"), this)) {
    setObjectName(QStringLiteral("UserGuideFrm"));
    setWindowTitle(QString::fromUtf8(ProgramTitle) + QStringLiteral(" - Guide"));

    auto* Icon = new QLabel(this);
    const int IconSize = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    Icon->setPixmap(
        style()->standardIcon(QStyle::SP_MessageBoxInformation).pixmap(QSize(IconSize, IconSize)));
    Icon->setAlignment(Qt::AlignTop);

    auto* GuideLbl = new QLabel(this);
    GuideLbl->setObjectName(QStringLiteral("GuideLbl"));
    GuideLbl->setTextFormat(Qt::PlainText);
    GuideLbl->setText(Breakable(ShownText(Tip.Message)));
    GuideLbl->setWordWrap(true);
    GuideLbl->setMinimumWidth(fontMetrics().averageCharWidth() * 56);

    IKnowChk->setObjectName(QStringLiteral("IKnowChk"));
    IKnowChk->setAccessibleName(tr("I know this: do not show this tip again"));
    IKnowChk->setChecked(Tip.IKnow);
    IKnowChk->setEnabled(Tip.IKnowEnabled);

    auto* OkBtn = new QPushButton(QStringLiteral("&OK"), this);
    OkBtn->setObjectName(QStringLiteral("OkBtn"));
    OkBtn->setDefault(true);
    connect(OkBtn, &QPushButton::clicked, this, &QDialog::accept);

    auto* StopThisLbl =
        new QLabel(QStringLiteral("<a href=\"#stop\">Stop showing these tips</a>"), this);
    StopThisLbl->setObjectName(QStringLiteral("StopThisLbl"));
    StopThisLbl->setAccessibleName(tr("How to stop these tips"));
    StopThisLbl->setTextInteractionFlags(Qt::LinksAccessibleByMouse |
                                         Qt::LinksAccessibleByKeyboard);
    connect(StopThisLbl, &QLabel::linkActivated, this, [] { GuideStopThis(); });

    for (const auto& [Control, Hint] : {std::pair<QWidget*, const char*>{GuideLbl, GuideLblHint},
                                        {IKnowChk, IKnowChkHint},
                                        {OkBtn, GuideOkBtnHint}}) {
        Control->setProperty(HintProperty, QString::fromUtf8(Hint));
        Control->installEventFilter(this);
    }

    auto* Top = new QHBoxLayout;
    Top->addWidget(Icon);
    Top->addWidget(GuideLbl, 1);
    auto* Bottom = new QHBoxLayout;
    Bottom->addWidget(IKnowChk);
    Bottom->addStretch();
    Bottom->addWidget(OkBtn);
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(14);
    Column->addLayout(Top, 1);
    Column->addLayout(Bottom);
    Column->addWidget(StopThisLbl);
    setTabOrder(IKnowChk, OkBtn);
    setTabOrder(OkBtn, StopThisLbl);
    OkBtn->setFocus();
}

bool UserGuideFrm::IKnow() const {
    return IKnowChk->isChecked();
}

bool UserGuideFrm::eventFilter(QObject* Watched, QEvent* Event) {
    if (Event->type() == QEvent::Enter)
        StatusGuide(CoreText(Watched->property(HintProperty).toString()));
    return QDialog::eventFilter(Watched, Event);
}

UserGuideWindows::UserGuideWindows(std::function<void(const std::string&)> ShowStatus)
    : SetStatus(std::move(ShowStatus)) {
    SetUserGuideWindow(this);
}

UserGuideWindows::~UserGuideWindows() {
    SetUserGuideWindow(nullptr);
}

bool UserGuideWindows::ShowGuideTip(const GuideTip& Tip) {
    UserGuideFrm Window(Tip, WindowInUse());
    RunModal(Window);
    return Window.IKnow();
}

void UserGuideWindows::ShowStatusGuide(const std::string& Message) {
    if (MainWindow() != nullptr && MainWindow()->isVisible())
        SetStatus(Message);
}

} // namespace quoril
