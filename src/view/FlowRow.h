// A layout that puts its items side by side and goes on in a further row where the width ends.
#pragma once

#include <QLayout>
#include <QList>

namespace quoril {

/// Rows are filled evenly: with two rows needed, the items are divided where both come out about
/// equally wide, so that no row holds a single straggler.
class FlowRow final : public QLayout {
  public:
    explicit FlowRow(QWidget* Parent, int HorizontalGap, int VerticalGap);
    ~FlowRow() override;
    FlowRow(const FlowRow&) = delete;
    FlowRow& operator=(const FlowRow&) = delete;

    void addItem(QLayoutItem* Item) override { Items.append(Item); }
    [[nodiscard]] int count() const override { return int(Items.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int Index) const override { return Items.value(Index); }
    QLayoutItem* takeAt(int Index) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int Width) const override;
    [[nodiscard]] QSize sizeHint() const override { return minimumSize(); }
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect& Rect) override;

  private:
    [[nodiscard]] QList<QList<QLayoutItem*>> Rows(int Width) const;
    [[nodiscard]] int RowWidth(const QList<QLayoutItem*>& Row) const;

    QList<QLayoutItem*> Items;
    int GapX;
    int GapY;
};

} // namespace quoril
