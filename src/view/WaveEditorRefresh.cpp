// What the main window shows of the document: layout, labels, pointer.
#include "base/ViewState.h"
#include "view/ArrowImage.h"
#include "view/ColorSettings.h"
#include "view/DocumentFacts.h"
#include "view/QtText.h"
#include "view/ValueEntry.h"
#include "view/ValueLabel.h"
#include "view/WaveEditor_Frm.h"
#include "view/WaveGeometry.h"
#include "view/WavePanel.h"

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
    const int InfoHeight = InfoFrame->sizeHint().height();
    InfoFrame->setGeometry(0, Height - InfoHeight, Width, InfoHeight);
    HScrollPic->setGeometry(0, Height - InfoHeight - ScrollHeight, Width, ScrollHeight);
    for (ArrowImage* Arrow : ArrowImg)
        Arrow->resize(Arrow->width(), ScrollHeight);
    ArrowImg[0]->move(HScrollPic->width() - ArrowImg[0]->width(), 0);

    const int ScaleHeight = fontMetrics().height() + 4;
    const WaveLayout Layout = WaveLayoutOf(TopFrame->y() + TopFrame->height(), HScrollPic->y(),
                                           ScaleHeight, Channels == 2);
    ScalePic->setGeometry(0, Layout.ScaleTop, Width, ScaleHeight);
    Wave_Pic[1]->setGeometry(0, Layout.Top1, Width, Layout.Height1);
    Wave_Pic[2]->setGeometry(0, Layout.Top2, Width, Layout.Height2);
    Wave_Pic[2]->setVisible(Layout.Visible2);
    Client->setMinimumHeight(TopFrame->height() + ScaleHeight + ScrollHeight + InfoHeight +
                             SmallestPanels);
}

void WaveEditor_Frm::Refresh_Wave_View() {
    LayoutPanels(CurrentDocument().Channel);
    for (const int Channel : {1, 2})
        Wave_Pic.at(std::size_t(Channel))->Clear();
    HScrollPic->Clear();
    ScalePic->Clear();
    DispFrqVolPic->Clear();
}

void WaveEditor_Frm::RefreshDisplayLabels(bool Dragging) {
    const DocumentFacts Document = CurrentDocument();
    if (!Dragging)
        StatusPanels.at("Size")->setText(ShownText(SizePanelText(Document)));
    const DragRange Drag{DragFrom, DragTo};
    const std::array<std::string, LabelCount> Texts =
        LabelTexts(Document.Freq, Dragging ? &Drag : nullptr);
    for (std::size_t Index = 0; Index < 3; ++Index) {
        SelectLbl.at(Index)->setText(ShownText(Texts.at(Index)));
        ViewLbl.at(Index)->setText(ShownText(Texts.at(Index + 3)));
    }
}

void WaveEditor_Frm::ClearMouseFlags() {
    MouseDownFlag = false;
    MoveWait = false;
}

namespace {

/// How a tool looks: its pointer, and whether and in which colour the line cursors follow it.
struct ToolLook {
    Qt::CursorShape Pointer;
    bool LineOn;
    WaveColor LineColor;
};

ToolLook LookOfTool() {
    switch (ViewMouseMode) {
    case 4:
        return {Qt::CrossCursor, true, WaveColor::LineCursorColor};
    case 5:
        return {Qt::CrossCursor, true, WaveColor::SecPtSelLineCursorColor};
    case 6:
        return {Qt::CrossCursor, true, WaveColor::LineCursorColor};
    case 8:
        return {Qt::OpenHandCursor, true, WaveColor::LineCursorColor};
    default:
        break;
    }
    switch (MouseMode) {
    case 2:
        return {Qt::SizeHorCursor, true, WaveColor::LineCursorColor};
    case 3:
        return {Qt::SizeHorCursor, true, WaveColor::SecPtSelLineCursorColor};
    case 7:
        return {Qt::CrossCursor, false, WaveColor::LineCursorColor};
    case 1:
        return {Qt::ArrowCursor, true, WaveColor::SecPtSelLineCursorColor};
    default:
        return {Qt::ArrowCursor, true, WaveColor::LineCursorColor};
    }
}

} // namespace

void WaveEditor_Frm::RefreshMousePointer() {
    const ToolLook Look = LookOfTool();
    for (const int Channel : {1, 2}) {
        WavePanel* Panel = Wave_Pic.at(std::size_t(Channel));
        Panel->setCursor(Look.Pointer);
        Panel->MouseLine->SetColor(ColorOf(Look.LineColor));
        if (!Look.LineOn)
            Panel->MouseLine->hide();
    }
}

} // namespace quoril
