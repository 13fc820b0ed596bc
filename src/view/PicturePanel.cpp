#include "view/PicturePanel.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QRegion>

#include <cmath>

namespace quoril {

QColor ColorFromBgr(std::int32_t Color) {
    return QColor(Color & 0xFF, (Color >> 8) & 0xFF, (Color >> 16) & 0xFF);
}

namespace {

/// Takes every scale off a painter and puts its origin on a pixel of the screen, so that an image
/// or a line drawn with it meets the screen's pixels exactly.
void ToScreenPixels(QPainter& Painter) {
    const QTransform Device = Painter.deviceTransform();
    const QPointF Origin = Device.map(QPointF(0, 0));
    const QPointF Snapped(std::round(Origin.x()), std::round(Origin.y()));
    Painter.setTransform(QTransform::fromTranslate((Snapped.x() - Origin.x()) / Device.m11(),
                                                   (Snapped.y() - Origin.y()) / Device.m22()),
                         true);
    Painter.scale(1.0 / Device.m11(), 1.0 / Device.m22());
}

} // namespace

PicturePanel::PicturePanel(const QString& Name, QWidget* Parent)
    : QWidget(Parent), Back(Qt::black) {
    setObjectName(Name);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
}

int PicturePanel::ScaleWidth() const {
    return int(std::lround(width() * PixelRatio()));
}
int PicturePanel::ScaleHeight() const {
    return int(std::lround(InnerRect().height() * PixelRatio()));
}
void PicturePanel::SetEdges(int Above, int Below) {
    EdgeAbove = Above;
    EdgeBelow = Below;
}
QRect PicturePanel::InnerRect() const {
    return {0, EdgeAbove, width(), std::max(height() - EdgeAbove - EdgeBelow, 0)};
}

QPoint PicturePanel::PixelAt(const QPointF& MousePos) const {
    return {int(std::floor(MousePos.x() * PixelRatio())),
            int(std::floor((MousePos.y() - EdgeAbove) * PixelRatio()))};
}

QPointF PicturePanel::PlaceOf(const QMouseEvent& Event) const {
    // The first event after a widget that tells of hovering bears the scene position of that.
    const QPointF Scene = mapFrom(window(), Event.scenePosition());
    const QPointF Rounded = mapFromGlobal(Event.globalPosition());
    constexpr double Nearly = 2;
    return (Scene - Rounded).manhattanLength() < Nearly ? Scene : Rounded;
}

void PicturePanel::SetBackColor(std::int32_t Color) {
    Back = ColorFromBgr(Color);
    if (Image.isNull())
        update();
}

QImage& PicturePanel::Picture() {
    const QSize Size(std::max(ScaleWidth(), 1), std::max(ScaleHeight(), 1));
    if (Image.size() != Size) {
        Image = QImage(Size, QImage::Format_RGB32);
        Image.fill(Back);
    }
    return Image;
}

void PicturePanel::Clear() {
    Picture().fill(Back);
    update();
}

void PicturePanel::paintEvent(QPaintEvent* Event) {
    QPainter Painter(this);
    const QRect Inner = InnerRect();
    for (const QRect& Edge : QRegion(rect()).subtracted(Inner))
        Painter.fillRect(Edge, palette().color(QPalette::Dark));
    ToScreenPixels(Painter);
    const double Ratio = PixelRatio();
    const QRectF Seen = Event->rect().intersected(Inner).translated(0, -EdgeAbove);
    const QRect Part =
        QRectF(Seen.x() * Ratio, Seen.y() * Ratio, Seen.width() * Ratio, Seen.height() * Ratio)
            .toAlignedRect();
    const QPoint Origin(0, int(std::lround(EdgeAbove * Ratio)));
    Painter.drawImage(Part.topLeft() + Origin, Picture(), Part);
}

void PicturePanel::resizeEvent(QResizeEvent* Event) {
    QWidget::resizeEvent(Event);
    update();
}

PanelLine::PanelLine(const QString& Name, PicturePanel* Panel) : QWidget(Panel), Owner(Panel) {
    setObjectName(Name);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    Panel->installEventFilter(this);
    Place();
}

void PanelLine::SetX(int Pixel) {
    if (Pixel == Column)
        return;
    Column = Pixel;
    Place();
}

void PanelLine::SetColor(std::int32_t Color) {
    LineColor = ColorFromBgr(Color);
    update();
}

void PanelLine::Place() {
    // The widget covers every pixel of the window system that the column touches.
    const double Ratio = Owner->PixelRatio();
    const int Left = int(std::floor(Column / Ratio));
    const int Right = int(std::ceil((Column + Thick()) / Ratio));
    setGeometry(Left, 0, std::max(Right - Left, 1), Owner->height());
    update();
}

void PanelLine::paintEvent(QPaintEvent*) {
    QPainter Painter(this);
    ToScreenPixels(Painter);
    const double Ratio = Owner->PixelRatio();
    const int Left = int(std::lround(x() * Ratio));
    Painter.fillRect(QRect(Column - Left, 0, Thick(), Owner->ScaleHeight()), LineColor);
}

bool PanelLine::eventFilter(QObject* Watched, QEvent* Event) {
    if (Watched == Owner && Event->type() == QEvent::Resize)
        Place();
    return QWidget::eventFilter(Watched, Event);
}

} // namespace quoril
