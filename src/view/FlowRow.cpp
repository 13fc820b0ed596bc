#include "view/FlowRow.h"

#include <QWidget>

#include <algorithm>

namespace quoril {

FlowRow::FlowRow(QWidget* Parent, int HorizontalGap, int VerticalGap)
    : QLayout(Parent), GapX(HorizontalGap), GapY(VerticalGap) {}

FlowRow::~FlowRow() {
    qDeleteAll(Items);
}

QLayoutItem* FlowRow::takeAt(int Index) {
    return Index >= 0 && Index < Items.size() ? Items.takeAt(Index) : nullptr;
}

int FlowRow::RowWidth(const QList<QLayoutItem*>& Row) const {
    int Width = 0;
    for (const QLayoutItem* Item : Row)
        Width += Item->sizeHint().width() + (Width > 0 ? GapX : 0);
    return Width;
}

QList<QList<QLayoutItem*>> FlowRow::Rows(int Width) const {
    const auto Fill = [this](int Limit) {
        QList<QList<QLayoutItem*>> Result;
        for (QLayoutItem* Item : Items) {
            if (Item->isEmpty())
                continue;
            if (!Result.isEmpty() && RowWidth(Result.last() + QList<QLayoutItem*>{Item}) <= Limit)
                Result.last().append(Item);
            else
                Result.append({Item});
        }
        return Result;
    };
    QList<QList<QLayoutItem*>> Greedy = Fill(Width);
    if (Greedy.size() < 2)
        return Greedy;
    // The narrowest limit that needs no more rows fills them most evenly.
    int Low = 0;
    int High = Width;
    while (Low + 1 < High) {
        const int Middle = (Low + High) / 2;
        (Fill(Middle).size() <= Greedy.size() ? High : Low) = Middle;
    }
    return Fill(High);
}

int FlowRow::heightForWidth(int Width) const {
    const QMargins Edge = contentsMargins();
    int Height = Edge.top() + Edge.bottom();
    const auto AllRows = Rows(Width - Edge.left() - Edge.right());
    for (qsizetype Row = 0; Row < AllRows.size(); ++Row) {
        int Tallest = 0;
        for (const QLayoutItem* Item : AllRows[Row])
            Tallest = std::max(Tallest, Item->sizeHint().height());
        Height += Tallest + (Row > 0 ? GapY : 0);
    }
    return Height;
}

QSize FlowRow::minimumSize() const {
    QSize Size(0, 0);
    for (const QLayoutItem* Item : Items)
        Size = Size.expandedTo(Item->minimumSize());
    const QMargins Edge = contentsMargins();
    return Size + QSize(Edge.left() + Edge.right(), Edge.top() + Edge.bottom());
}

void FlowRow::setGeometry(const QRect& Rect) {
    QLayout::setGeometry(Rect);
    const QRect Inner = Rect.marginsRemoved(contentsMargins());
    int Y = Inner.top();
    for (const QList<QLayoutItem*>& Row : Rows(Inner.width())) {
        int X = Inner.left();
        int Tallest = 0;
        for (QLayoutItem* Item : Row) {
            // Alone in its row, an item can be wider than the row.
            Item->setGeometry(
                QRect(QPoint(X, Y), QSize(std::min(Item->sizeHint().width(), Inner.width()),
                                          Item->sizeHint().height())));
            X += Item->sizeHint().width() + GapX;
            Tallest = std::max(Tallest, Item->sizeHint().height());
        }
        Y += Tallest + GapY;
    }
}

} // namespace quoril
