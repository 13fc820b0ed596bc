// A label of one line that ends in dots where it does not fit.
#pragma once

#include <QLabel>
#include <QPainter>
#include <QStyle>

namespace quoril {

/// The whole text is its text(), and its tool tip while it is cut off.
class ElidedLabel final : public QLabel {
  public:
    using QLabel::QLabel;
    [[nodiscard]] QSize minimumSizeHint() const override {
        return {fontMetrics().averageCharWidth() * 4, QLabel::minimumSizeHint().height()};
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter Painter(this);
        const QString Shown =
            fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
        setToolTip(Shown == text() ? QString() : text());
        style()->drawItemText(&Painter, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, palette(),
                              isEnabled(), Shown, foregroundRole());
    }
};

} // namespace quoril
