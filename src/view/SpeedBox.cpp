#include "view/SpeedBox.h"

#include "view/ToolIcon.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScopedValueRollback>
#include <QSlider>
#include <QToolButton>

#include <algorithm>

namespace quoril {

namespace {

constexpr int SliderHeight = 120;
constexpr int TickStep = 5;
constexpr int IconSize = 16;

} // namespace

SpeedBox::SpeedBox(QWidget* Parent, std::int32_t Fastest, std::int32_t Slowest)
    : QFrame(Parent), SpeedCloseBtn(new QToolButton(this)) {
    setObjectName(QStringLiteral("SpeedBoxPic"));
    setAccessibleName(QStringLiteral("Play speed"));
    setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    setAutoFillBackground(true);
    auto* Grid = new QGridLayout(this);
    auto* Title = new QLabel(QStringLiteral("Play speed"), this);
    SpeedCloseBtn->setObjectName(QStringLiteral("SpeedCloseBtn"));
    SpeedCloseBtn->setAccessibleName(QStringLiteral("Close the play speed"));
    SpeedCloseBtn->setToolTip(QStringLiteral("Close (Esc)"));
    SpeedCloseBtn->setText(QStringLiteral("\u00D7"));
    SpeedCloseBtn->setAutoRaise(true);
    connect(SpeedCloseBtn, &QToolButton::clicked, this, &QWidget::hide);
    auto* Head = new QHBoxLayout;
    Head->addWidget(Title, 1);
    Head->addWidget(SpeedCloseBtn);
    Grid->addLayout(Head, 0, 0, 1, 2);
    const std::array<const char*, 3> Icons = {"", "Play", "PlayRev"};
    const std::array<const char*, 3> Names = {"", "Play speed forward", "Play speed in reverse"};
    for (const int Index : {1, 2}) {
        const auto At = static_cast<std::size_t>(Index);
        auto* Arrow = new QLabel(this);
        Arrow->setPixmap(ToolIcon(QLatin1String(Icons.at(At)))
                             .pixmap(QSize(IconSize, IconSize), devicePixelRatioF()));
        PlaySpeedSlider.at(At) = MakeSlider(Index, QLatin1String(Names.at(At)), Fastest, Slowest);
        ValueLbl.at(At) = new QLabel(this);
        ValueLbl.at(At)->setAlignment(Qt::AlignCenter);
        ValueLbl.at(At)->setMinimumWidth(fontMetrics().horizontalAdvance(QLatin1String("200%")) +
                                         TickStep);
        const int Column = Index - 1;
        Grid->addWidget(Arrow, 1, Column, Qt::AlignHCenter);
        Grid->addWidget(PlaySpeedSlider.at(At), 2, Column, Qt::AlignHCenter);
        Grid->addWidget(ValueLbl.at(At), 3, Column);
    }
    hide();
}

QSlider* SpeedBox::MakeSlider(int Index, const QString& Name, std::int32_t Fastest,
                              std::int32_t Slowest) {
    auto* Slider = new QSlider(Qt::Vertical, this);
    Slider->setObjectName(QStringLiteral("PlaySpeedSlider_%1").arg(Index));
    Slider->setAccessibleName(Name);
    Slider->setRange(Fastest, Slowest);
    Slider->setPageStep(TickStep);
    Slider->setTickInterval(TickStep);
    Slider->setTickPosition(QSlider::TicksBothSides);
    Slider->setInvertedAppearance(true); // the least value, the fastest, is up
    Slider->setInvertedControls(true);   // and the key Up makes it faster
    Slider->setMinimumHeight(SliderHeight);
    connect(Slider, &QSlider::valueChanged, this, [this, Index](int Value) {
        if (!Setting && Moved)
            Moved(Index, Value);
    });
    return Slider;
}

void SpeedBox::ShowAt(int Right, int Top, std::int32_t ValueFor, std::int32_t ValueRev) {
    {
        const QScopedValueRollback<bool> Quiet(Setting, true);
        PlaySpeedSlider[1]->setValue(ValueFor);
        PlaySpeedSlider[2]->setValue(ValueRev);
    }
    adjustSize();
    move(std::max(0, Right - width()),
         std::max(0, std::min(Top, parentWidget()->height() - height())));
    show();
    raise();
    PlaySpeedSlider[1]->setFocus();
}

void SpeedBox::SetText(std::int32_t Index, const QString& Text) {
    const auto At = static_cast<std::size_t>(Index);
    PlaySpeedSlider.at(At)->setToolTip(Text);
    ValueLbl.at(At)->setText(Text);
}

void SpeedBox::keyPressEvent(QKeyEvent* Event) {
    if (Event->key() == Qt::Key_Escape)
        hide();
    else
        QFrame::keyPressEvent(Event);
}

} // namespace quoril
