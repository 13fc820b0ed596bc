#include "view/InfoStrip.h"

#include "view/FlowRow.h"

#include <QBoxLayout>
#include <QGridLayout>

#include <algorithm>

namespace quoril {

namespace {

constexpr int LineGap = 4;
constexpr int GroupGap = 12;
constexpr QMargins Edge(8, 5, 8, 5);
constexpr int EdgeOfValue = 2; // above and below the letters

/// The width of parts that lie side by side.
int FlatWidth(const QBoxLayout& Parts) {
    int Width = 0;
    for (int Index = 0; Index < Parts.count(); ++Index)
        Width += Parts.itemAt(Index)->minimumSize().width() + (Index > 0 ? Parts.spacing() : 0);
    return Width;
}

} // namespace

InfoStrip::InfoStrip(QWidget* Parent)
    : QWidget(Parent), Top(new QHBoxLayout), Below(new QWidget(this)),
      BelowRow(new FlowRow(Below, GroupGap, LineGap)) {
    setObjectName(QStringLiteral("InfoFrame"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(Edge);
    Column->setSpacing(LineGap);
    Top->setSpacing(GroupGap);
    BelowRow->setContentsMargins({});
    Column->addLayout(Top);
    Column->addWidget(Below);
    Below->hide();
}

int InfoStrip::ValueHeight() const {
    return fontMetrics().height() + 2 * EdgeOfValue;
}

QGridLayout* InfoStrip::AddGroup(int Share) {
    auto* Widget = new QWidget(this);
    auto* Grid = new QGridLayout(Widget);
    Grid->setContentsMargins({});
    Grid->setSpacing(LineGap);
    Grid->setRowMinimumHeight(0, std::max(fontMetrics().height(), HeadIcon));
    for (const int Row : {1, 2})
        Grid->setRowMinimumHeight(Row, ValueHeight());
    Groups.push_back({Widget, nullptr, Share});
    Top->addWidget(Widget, Share);
    return Grid;
}

QBoxLayout* InfoStrip::AddFlatGroup() {
    auto* Widget = new QWidget(this);
    auto* Parts = new QBoxLayout(QBoxLayout::TopToBottom, Widget);
    Parts->setContentsMargins({});
    Parts->setSpacing(LineGap);
    Groups.push_back({Widget, Parts, 0});
    Top->addWidget(Widget);
    return Parts;
}

void InfoStrip::Arrange(bool Flat) {
    IsFlat = Flat;
    for (const Group& Each : Groups) {
        Top->removeWidget(Each.Widget);
        BelowRow->removeWidget(Each.Widget);
        if (Each.Parts != nullptr)
            Each.Parts->setDirection(Flat ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
        if (Each.Parts != nullptr && Flat)
            BelowRow->addWidget(Each.Widget);
        else
            Top->addWidget(Each.Widget, Each.Share);
    }
    Below->setVisible(Flat);
}

int InfoStrip::FitTo(int Width) {
    if (!IsFlat)
        WidthInOneRow = layout()->minimumSize().width();
    if (IsFlat != (Width < WidthInOneRow))
        Arrange(!IsFlat);
    return layout()->hasHeightForWidth() ? layout()->heightForWidth(Width)
                                         : layout()->minimumSize().height();
}

int InfoStrip::LeastWidth() const {
    int Flat = 0;
    int Steady = -GroupGap;
    for (const Group& Each : Groups)
        if (Each.Parts != nullptr)
            Flat = std::max(Flat, FlatWidth(*Each.Parts));
        else
            Steady += GroupGap + Each.Widget->layout()->minimumSize().width();
    return std::max(Flat, Steady) + Edge.left() + Edge.right();
}

} // namespace quoril
