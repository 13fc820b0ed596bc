// The panels, labels and status bar of the main window.
#include "view/ArrowImage.h"
#include "view/ElidedLabel.h"
#include "view/StripMouse.h"
#include "view/WaveEditor_Frm.h"
#include "view/WavePanel.h"
#include "view/WavePanelMouse.h"

#include <QLabel>
#include <QStatusBar>

namespace quoril {

void WaveEditor_Frm::BuildPanels() {
    Client = new QWidget(this);
    Client->setObjectName(QStringLiteral("Client"));
    setCentralWidget(Client);
    Client->installEventFilter(this);

    TopFrame = new QWidget(Client);
    TopFrame->setObjectName(QStringLiteral("TopFrame"));
    TopFrame->setAccessibleName(QStringLiteral("Toolbars"));
    TopFrame->installEventFilter(this);

    for (const int Channel : {1, 2}) {
        auto* Panel = new WavePanel(Channel, Client);
        Panel->setAccessibleName(Channel == 1 ? QStringLiteral("Waveform, left channel")
                                              : QStringLiteral("Waveform, right channel"));
        Wave_Pic.at(std::size_t(Channel)) = Panel;
    }
    PanelMouse = std::make_unique<WavePanelMouse>(*this);
    PanelMouse->SetSource(Source);
    ScalePic = new PicturePanel(QStringLiteral("ScalePic"), Client);
    ScalePic->setAccessibleName(QStringLiteral("Time scale and play selection"));
    ScalePic->SetBackColor(0xE6E6E6);
    HScrollPic = new PicturePanel(QStringLiteral("HScrollPic"), Client);
    HScrollPic->SetEdges(2, 1);
    HScrollPic->setAccessibleName(QStringLiteral("Overview of the whole document"));
    for (const int Index : {0, 1})
        ArrowImg.at(std::size_t(Index)) = new ArrowImage(Index, HScrollPic);
    Strips = new StripMouse(*this);
    BuildInfoFrame();
}

void WaveEditor_Frm::BuildStatusBar() {
    QStatusBar* Bar = statusBar();
    Bar->setObjectName(QStringLiteral("StatusBar1"));
    Bar->installEventFilter(this);
    const std::array<std::pair<const char*, const char*>, 3> Panels = {
        {{"UserGuide", "Help line"}, {"Size", "Size of the document"}, {"Format", "Format"}}};
    for (const auto& [Name, Accessible] : Panels) {
        const bool Guide = std::string(Name) == "UserGuide";
        QLabel* Label = Guide ? new ElidedLabel(Bar) : new QLabel(Bar);
        Label->setObjectName(QStringLiteral("StatusBar1_") + QLatin1String(Name));
        Label->setAccessibleName(QLatin1String(Accessible));
        Label->setContentsMargins(6, 0, 6, 0);
        Bar->addWidget(Label, Guide ? 1 : 0);
        StatusPanels[Name] = Label;
    }
}

} // namespace quoril
