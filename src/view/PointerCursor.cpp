#include "view/PointerCursor.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <map>
#include <utility>

namespace quoril {

namespace {

constexpr int Side = 32; // pixels of the window system
constexpr double LineWidth = 1.8;
constexpr double EdgeWidth = 4.4;

struct PointerShape {
    QPainterPath Lines;
    QPainterPath Fill;
    QString Letter;
    QPointF LetterAt;
    QPoint HotSpot;
};

/// An arrow head of that direction with its point at a place.
void AddHead(QPainterPath& Path, QPointF Point, QPointF Direction) {
    const QPointF Across(-Direction.y(), Direction.x());
    Path.moveTo(Point - Direction * 4 + Across * 4);
    Path.lineTo(Point);
    Path.lineTo(Point - Direction * 4 - Across * 4);
}

/// A cross of hairs at the hot spot, and a magnifying glass beside it with a sign in it.
PointerShape GlassShape(const QString& Letter) {
    PointerShape Shape;
    Shape.HotSpot = {7, 7};
    Shape.Lines.moveTo(7.5, 1);
    Shape.Lines.lineTo(7.5, 14);
    Shape.Lines.moveTo(1, 7.5);
    Shape.Lines.lineTo(14, 7.5);
    Shape.Lines.addEllipse(QPointF(19, 19), 6.5, 6.5);
    Shape.Lines.moveTo(24, 24);
    Shape.Lines.lineTo(29.5, 29.5);
    Shape.Letter = Letter;
    Shape.LetterAt = {19, 19};
    return Shape;
}

PointerShape PanShape() {
    PointerShape Shape;
    Shape.HotSpot = {15, 15};
    Shape.Lines.moveTo(3.5, 15.5);
    Shape.Lines.lineTo(27.5, 15.5);
    AddHead(Shape.Lines, {2.5, 15.5}, {-1, 0});
    AddHead(Shape.Lines, {28.5, 15.5}, {1, 0});
    Shape.Lines.moveTo(15.5, 9.5);
    Shape.Lines.lineTo(15.5, 21.5);
    return Shape;
}

/// A bracket at the hot spot that opens towards the selection, and an arrow into it.
PointerShape BracketShape(bool Start) {
    PointerShape Shape;
    Shape.HotSpot = {15, 15};
    const double Inward = Start ? 1 : -1;
    const QPointF Middle(15.5, 15.5);
    Shape.Lines.moveTo(Middle + QPointF(5 * Inward, -11));
    Shape.Lines.lineTo(Middle + QPointF(0, -11));
    Shape.Lines.lineTo(Middle + QPointF(0, 11));
    Shape.Lines.lineTo(Middle + QPointF(5 * Inward, 11));
    Shape.Lines.moveTo(Middle + QPointF(4 * Inward, 0));
    Shape.Lines.lineTo(Middle + QPointF(12 * Inward, 0));
    AddHead(Shape.Lines, Middle + QPointF(12.5 * Inward, 0), {Inward, 0});
    return Shape;
}

/// A pencil whose point is the hot spot.
PointerShape PencilShape() {
    PointerShape Shape;
    Shape.HotSpot = {3, 28};
    Shape.Lines.moveTo(3.5, 28.5);
    Shape.Lines.lineTo(6, 20);
    Shape.Lines.lineTo(22, 4);
    Shape.Lines.lineTo(28, 10);
    Shape.Lines.lineTo(12, 26);
    Shape.Lines.closeSubpath();
    Shape.Lines.moveTo(6, 20);
    Shape.Lines.lineTo(12, 26);
    Shape.Fill.moveTo(3.5, 28.5);
    Shape.Fill.lineTo(5, 24);
    Shape.Fill.lineTo(8, 27);
    Shape.Fill.closeSubpath();
    return Shape;
}

PointerShape ShapeOf(PointerImage Image) {
    switch (Image) {
    case PointerImage::ZoomStartMouseImg:
        return GlassShape(QStringLiteral("1"));
    case PointerImage::ZoomEndMouseImg:
        return GlassShape(QStringLiteral("2"));
    case PointerImage::ZoomInMouseImg:
        return GlassShape(QStringLiteral("+"));
    case PointerImage::PanMouseImg:
        return PanShape();
    case PointerImage::SelStartMouseImg:
        return BracketShape(true);
    case PointerImage::SelEndMouseImg:
        return BracketShape(false);
    case PointerImage::DrawMouseImg:
        return PencilShape();
    case PointerImage::Normal:
        break;
    }
    return {};
}

void DrawShape(QPainter& Painter, PointerShape& Shape) {
    if (!Shape.Letter.isEmpty()) {
        QFont Font = Painter.font();
        Font.setPixelSize(11);
        Font.setBold(true);
        QPainterPath Letter;
        Letter.addText(0, 0, Font, Shape.Letter);
        Letter.translate(Shape.LetterAt - Letter.boundingRect().center());
        Shape.Fill.addPath(Letter);
    }
    const auto Pen = [](const QColor& Color, double Width) {
        return QPen(Color, Width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    };
    Painter.strokePath(Shape.Lines, Pen(Qt::white, EdgeWidth));
    Painter.strokePath(Shape.Fill, Pen(Qt::white, EdgeWidth - LineWidth));
    Painter.strokePath(Shape.Lines, Pen(QColor(0x10, 0x18, 0x20), LineWidth));
    Painter.fillPath(Shape.Fill, QColor(0x10, 0x18, 0x20));
}

} // namespace

QCursor PointerCursor(PointerImage Image, double PixelRatio) {
    if (Image == PointerImage::Normal)
        return {Qt::ArrowCursor};
    static std::map<std::pair<PointerImage, double>, QCursor> Known;
    const auto Key = std::make_pair(Image, PixelRatio);
    if (const auto Found = Known.find(Key); Found != Known.end())
        return Found->second;
    QPixmap Picture((QSizeF(Side, Side) * PixelRatio).toSize());
    Picture.setDevicePixelRatio(PixelRatio);
    Picture.fill(Qt::transparent);
    PointerShape Shape = ShapeOf(Image);
    {
        QPainter Painter(&Picture);
        Painter.setRenderHint(QPainter::Antialiasing);
        DrawShape(Painter, Shape);
    }
    return Known.emplace(Key, QCursor(Picture, Shape.HotSpot.x(), Shape.HotSpot.y())).first->second;
}

} // namespace quoril
