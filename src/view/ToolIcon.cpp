#include "view/ToolIcon.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

static void LoadIconResource() {
    Q_INIT_RESOURCE(icons);
}

namespace quoril {

namespace {

// The three colours that the drawings are made with; each stands for a role.
constexpr const char* Ink = "#2b3440";
constexpr const char* Accent = "#1f6fd6";
constexpr const char* Alert = "#d62f3f";

QString DrawingOf(const QString& Key) {
    static const bool Loaded = [] {
        LoadIconResource();
        return true;
    }();
    Q_UNUSED(Loaded)
    QFile File(QStringLiteral(":/icons/%1.svg").arg(Key));
    if (Key.isEmpty() || !File.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(File.readAll());
}

class ToolIconEngine final : public QIconEngine {
  public:
    ToolIconEngine(QString WhichKey, QString WhatDrawing)
        : Key(std::move(WhichKey)), Drawing(std::move(WhatDrawing)) {}

    void paint(QPainter* Painter, const QRect& Rect, QIcon::Mode Mode, QIcon::State) override {
        const QPalette Palette = QGuiApplication::palette();
        const bool Dark = Palette.color(QPalette::Window).lightness() < 128;
        QString Text = Drawing;
        Text.replace(QLatin1String(Ink),
                     Palette.color(QPalette::Active, QPalette::ButtonText).name());
        if (Dark) {
            Text.replace(QLatin1String(Accent), QStringLiteral("#6fb1ff"));
            Text.replace(QLatin1String(Alert), QStringLiteral("#ff7683"));
        }
        QSvgRenderer Renderer(Text.toUtf8());
        const qreal Before = Painter->opacity();
        if (Mode == QIcon::Disabled)
            Painter->setOpacity(Before * 0.35);
        Renderer.render(Painter, Rect);
        Painter->setOpacity(Before);
    }

    QPixmap pixmap(const QSize& Size, QIcon::Mode Mode, QIcon::State State) override {
        const QString CacheKey = QStringLiteral("quoril-icon-%1-%2x%3-%4-%5")
                                     .arg(Key)
                                     .arg(Size.width())
                                     .arg(Size.height())
                                     .arg(int(Mode))
                                     .arg(QGuiApplication::palette().cacheKey());
        QPixmap Result;
        if (QPixmapCache::find(CacheKey, &Result))
            return Result;
        Result = QPixmap(Size);
        Result.fill(Qt::transparent);
        QPainter Painter(&Result);
        Painter.setRenderHint(QPainter::Antialiasing);
        if (Mode == QIcon::Disabled) {
            // Painted whole and then paled, so that overlapping lines do not show through.
            const QPixmap Full = pixmap(Size, QIcon::Normal, State);
            Painter.setOpacity(0.35);
            Painter.drawPixmap(0, 0, Full);
        } else {
            paint(&Painter, QRect(QPoint(0, 0), Size), Mode, State);
        }
        Painter.end();
        QPixmapCache::insert(CacheKey, Result);
        return Result;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new ToolIconEngine(Key, Drawing); }

  private:
    QString Key;
    QString Drawing;
};

} // namespace

QIcon ToolIcon(const QString& Key) {
    const QString Drawing = DrawingOf(Key);
    return Drawing.isEmpty() ? QIcon() : QIcon(new ToolIconEngine(Key, Drawing));
}

} // namespace quoril
