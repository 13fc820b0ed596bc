#include "shell/CheckDx7Frm.h"

#include "base/ModalWindow.h"
#include "base/PlayState.h"
#include "base/ProgramTitle.h"
#include "base/QtText.h"
#include "platform/Text.h"
#include "settings/STD1.h"
#include "settings/UserGuideMod.h"
#include "shell/OptionsMod.h"

#include <QLabel>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace quoril {

CheckDx7Frm::CheckDx7Frm(QWidget* Parent) : QDialog(Parent) {
    setObjectName(QStringLiteral("CheckDx7Frm"));
    setWindowTitle(QString::fromUtf8(ProgramTitle));

    auto* Msg1Lbl = new QLabel(ShownText(SoundSystemCheck().Text), this);
    Msg1Lbl->setObjectName(QStringLiteral("Msg1Lbl"));
    Msg1Lbl->setTextFormat(Qt::PlainText);

    auto* Dx7LinksTxt = new QTextBrowser(this);
    Dx7LinksTxt->setObjectName(QStringLiteral("Dx7LinksTxt"));
    Dx7LinksTxt->setAccessibleName(QStringLiteral("Links to sound servers"));
    Dx7LinksTxt->setOpenExternalLinks(true);
    Dx7LinksTxt->setHtml(QStringLiteral(
        "<p>What is called DirectX here is the sound server of the desktop. Your system offers one "
        "of these in its own packages:</p>"
        "<p><a href=\"https://pipewire.org\">PipeWire</a><br>"
        "<a href=\"https://www.freedesktop.org/wiki/Software/PulseAudio/\">PulseAudio</a></p>"));
    Dx7LinksTxt->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
    Dx7LinksTxt->setFixedHeight(fontMetrics().height() * 7);

    auto* OkBtn = new QPushButton(QStringLiteral("&OK"), this);
    OkBtn->setObjectName(QStringLiteral("OkBtn"));
    OkBtn->setDefault(true);
    connect(OkBtn, &QPushButton::clicked, this, &QDialog::accept);

    auto* Column = new QVBoxLayout(this);
    Column->setSpacing(12);
    Column->addWidget(Msg1Lbl);
    Column->addWidget(Dx7LinksTxt);
    Column->addWidget(OkBtn, 0, Qt::AlignRight);
    OkBtn->setFocus();
}

void OfferDx7Check() {
    constexpr std::int32_t SystemSound = 2;
    if (SoundDriverState != SystemSound || !GuideChance(0.1) ||
        LeadingNumber(IniGet("General", "Dx7Msg", "0")) == 0.0)
        return;
    CheckDx7Frm Window(WindowInUse());
    RunModal(Window);
    IniPut("General", "Dx7Msg", "1");
}

} // namespace quoril
