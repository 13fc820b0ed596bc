// What the main window shows of the document: layout, labels, pointer.
#include "base/QtText.h"
#include "base/ViewState.h"
#include "bookmarks/BookmarkRec.h"
#include "selection/DurationText.h"
#include "selection/SelectionMod.h"
#include "view/ArrowImage.h"
#include "view/BandDisplay.h"
#include "view/InfoStrip.h"
#include "view/StripDraw.h"
#include "view/StripMouse.h"
#include "view/ValueEntry.h"
#include "view/ValueLabel.h"
#include "view/WaveDraw.h"
#include "view/WaveEditor_Frm.h"
#include "view/WaveGeometry.h"
#include "view/WavePanel.h"
#include "view/WavePanelMouse.h"
#include "view/ZoomMod.h"

#include <QGuiApplication>
#include <QLabel>
#include <QLayout>

namespace quoril {

namespace {

constexpr int ScrollHeight = 26;
constexpr int SmallestPanels = 80;

} // namespace

void WaveEditor_Frm::LayoutPanels(int Channels) {
    const int Width = Client->width();
    const int Height = Client->height();
    TopFrame->setGeometry(0, 0, Width, TopFrame->layout()->heightForWidth(Width));
    const int InfoHeight = InfoFrame->FitTo(Width);
    InfoFrame->setGeometry(0, Height - InfoHeight, Width, InfoHeight);
    HScrollPic->setGeometry(0, Height - InfoHeight - ScrollHeight, Width, ScrollHeight);
    for (ArrowImage* Arrow : ArrowImg)
        Arrow->setGeometry(HScrollPic->InnerRect().adjusted(0, 0, Arrow->width() - Width, 0));
    ArrowImg[0]->move(Width - ArrowImg[0]->width(), ArrowImg[0]->y());

    const int ScaleHeight = fontMetrics().height() + 4;
    const WaveLayout Layout = WaveLayoutOf(TopFrame->y() + TopFrame->height(), HScrollPic->y(),
                                           ScaleHeight, Channels == 2);
    ScalePic->setGeometry(0, Layout.ScaleTop, Width, ScaleHeight);
    Wave_Pic[1]->setGeometry(0, Layout.Top1, Width, Layout.Height1);
    Wave_Pic[2]->setGeometry(0, Layout.Top2, Width, Layout.Height2);
    Wave_Pic[2]->setVisible(Layout.Visible2);
    Client->setMinimumSize(InfoFrame->LeastWidth(), TopFrame->height() + ScaleHeight +
                                                        ScrollHeight + InfoHeight + SmallestPanels);
}

namespace {

/// The hourglass for the length of a scope.
class Hourglass {
  public:
    explicit Hourglass(bool Wanted) : Shown(Wanted) {
        if (Shown)
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
    ~Hourglass() {
        if (Shown)
            QGuiApplication::restoreOverrideCursor();
    }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

  private:
    bool Shown;
};

} // namespace

void WaveEditor_Frm::Refresh_Wave_View() {
    const DocumentFacts Document = Source->Facts();
    LayoutPanels(Document.Channel);
    const std::int32_t Channels = Document.Channel == 2 ? 2 : 1;
    for (const int Channel : {1, 2})
        Wave_Pic.at(std::size_t(Channel))->Clear();
    if (Document.Total < 1) {
        PanelMouse->PictureRefreshed();
        Strips->PictureRefreshed();
        return;
    }
    ViewLimitsApply(Document.Total);
    const Hourglass Pointer(ViewTotal > HourglassViewTotal);
    SelectionLimit(Document.Total);

    WavePanel* First = Wave_Pic[1];
    WaveDraw Draw(*Source, First->ScaleWidth(), First->ScaleHeight(), First->PixelRatio());
    PanelScale = Draw.Scale();
    PixelsPerSample = PanelScale.PixelsPerSample;
    if (EntryChecked("Bookmark_Show_Mnu"))
        Draw.SetBookmarks(&Bookmarks, font());
    for (std::int32_t Channel = 1; Channel <= Channels; ++Channel) {
        WavePanel* Panel = Wave_Pic.at(std::size_t(Channel));
        Draw.DrawPanel(Panel->Picture(), Channel);
        Panel->update();
    }
    RefreshScrollScale();
    RefreshPlayScale();
    RefreshDisplayLabels(false);
    DrawToolLimit(Document.Freq);
    for (std::int32_t Channel = 1; Channel <= Channels; ++Channel)
        Wave_Pic.at(std::size_t(Channel))->TakeSnapshot();
    DescribePanels();
    PanelMouse->PictureRefreshed();
    Strips->PictureRefreshed();
}

ScaleView WaveEditor_Frm::CurrentScaleView() const {
    const DocumentFacts Document = Source->Facts();
    return {ViewFrom,       ViewTotal, Document.Total, Document.Freq, Wave_Pic[1]->ScaleWidth(),
            PixelsPerSample};
}

void WaveEditor_Frm::RefreshScrollScale() {
    HScrollPic->Clear();
    const ScaleView View = CurrentScaleView();
    if (View.Total < 1)
        return;
    const ScrollScale What =
        ScrollScaleOf(View, HScrollPic->ScaleWidth(), HScrollPic->ScaleHeight());
    ScrollEdge[1] = What.Edge1;
    ScrollEdge[2] = What.Edge2;
    DrawScrollScale(HScrollPic->Picture(), What, HScrollPic->PixelRatio());
}

void WaveEditor_Frm::RefreshPlayScale() {
    ScalePic->Clear();
    const ScaleView View = CurrentScaleView();
    if (View.Total < 1)
        return;
    PlaySelectionLimit(View.Total);
    DrawPlayScale(ScalePic->Picture(), View, ScalePic->PixelRatio(), font());
}

void WaveEditor_Frm::DescribePanels() {
    const DocumentFacts Document = Source->Facts();
    const auto Range = [&](std::int32_t From, std::int32_t To) {
        return QStringLiteral("samples %1 to %2, %3 to %4")
            .arg(From)
            .arg(To)
            .arg(ShownText(FormatSamples(From, Document.Freq)),
                 ShownText(FormatSamples(To, Document.Freq)));
    };
    const std::int32_t WorkChn = WorkChannels(Document.Channel);
    for (const std::int32_t Channel : {1, 2}) {
        QString Text = QStringLiteral("Shows %1 of %2 samples. ")
                           .arg(Range(ViewFrom, std::min(ViewFrom + ViewTotal - 1, Document.Total)))
                           .arg(Document.Total);
        if (SelStart == 0 || (WorkChn != 0 && WorkChn != Channel))
            Text += QStringLiteral("Nothing is selected here.");
        else if (SelStart == SelEnd)
            Text += QStringLiteral("The point at sample %1 is selected.").arg(SelStart);
        else
            Text += QStringLiteral("Selected are %1.").arg(Range(SelStart, SelEnd));
        Wave_Pic.at(std::size_t(Channel))->setAccessibleDescription(Text);
    }
}

void WaveEditor_Frm::RefreshDisplayLabels(bool Dragging) {
    const DocumentFacts Document = Source->Facts();
    if (!Dragging)
        StatusPanels.at("Size")->setText(ShownText(SizePanelText(Document)));
    const DragRange Drag{PanelMouse->Mouse.DragFrom, PanelMouse->Mouse.DragTo};
    const std::array<std::string, LabelCount> Texts =
        LabelTexts(Document.Freq, Dragging ? &Drag : nullptr);
    for (std::size_t Index = 0; Index < 3; ++Index) {
        SelectLbl.at(Index)->setText(ShownText(Texts.at(Index)));
        ViewLbl.at(Index)->setText(ShownText(Texts.at(Index + 3)));
    }
}

void WaveEditor_Frm::SetSource(const WaveSource* What) {
    Source = What;
    PanelMouse->SetSource(What);
}

void WaveEditor_Frm::ShowBands(std::int32_t Pos, std::int32_t Channel) {
    Bands->Show(*Source, Pos, Channel);
}

void WaveEditor_Frm::ClearMouseFlags() {
    PanelMouse->Clear();
}

void WaveEditor_Frm::RefreshMousePointer() {
    PanelMouse->ShowTool();
}

} // namespace quoril
