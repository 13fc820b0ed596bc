#include "shell/OptionsFrm.h"

#include "base/ModalWindow.h"
#include "base/PlayState.h"
#include "base/QtText.h"
#include "base/RadioFrame.h"
#include "view/PicturePanel.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFileDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

namespace quoril {

namespace {

std::int32_t BgrFromColor(const QColor& Color) {
    return Color.red() | Color.green() << 8 | Color.blue() << 16;
}

/// A square of a colour, sharp at every scale.
QIcon Swatch(std::int32_t Color, const QWidget& For) {
    constexpr int Side = 16;
    QPixmap Picture(QSize(Side, Side) * For.devicePixelRatioF());
    Picture.setDevicePixelRatio(For.devicePixelRatioF());
    Picture.fill(ColorFromBgr(Color));
    QPainter Painter(&Picture);
    Painter.setPen(QColor(0, 0, 0, 140));
    Painter.drawRect(0, 0, Side - 1, Side - 1);
    // The chosen entry shows its colour as it is, too.
    QIcon Icon(Picture);
    Icon.addPixmap(Picture, QIcon::Selected);
    return Icon;
}

QLabel* Note(const char* Text, QWidget* Parent) {
    auto* Label = new QLabel(QString::fromUtf8(Text), Parent);
    Label->setWordWrap(true);
    return Label;
}

/// A number that is typed beyond the range becomes the nearer end of it when the field is left,
/// rather than losing its last figures.
class LimitedBox final : public QDoubleSpinBox {
  public:
    using QDoubleSpinBox::QDoubleSpinBox;
    QValidator::State validate(QString& Input, int& Place) const override {
        const QValidator::State State = QDoubleSpinBox::validate(Input, Place);
        return State == QValidator::Invalid && Number(Input) ? QValidator::Intermediate : State;
    }
    void fixup(QString& Input) const override {
        if (const std::optional<double> Typed = Number(Input))
            Input = textFromValue(std::clamp(*Typed, minimum(), maximum()));
    }

  private:
    [[nodiscard]] std::optional<double> Number(const QString& Text) const {
        bool Valid = false;
        const double Found = locale().toDouble(Text, &Valid);
        return Valid && std::isfinite(Found) ? std::optional(Found) : std::nullopt;
    }
};

/// The state of the sound driver as a round lamp.
class DriverLamp final : public QWidget {
  public:
    explicit DriverLamp(QWidget* Parent) : QWidget(Parent) {
        setObjectName(QStringLiteral("DSoundOnImg"));
        setFixedSize(18, 18);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter Painter(this);
        Painter.setRenderHint(QPainter::Antialiasing);
        Painter.setPen(QColor(60, 60, 60));
        Painter.setBrush(SoundDriverState == 1   ? QColor(0, 190, 0)
                         : SoundDriverState == 2 ? QColor(150, 150, 150)
                                                 : QColor(220, 0, 0));
        Painter.drawEllipse(QRectF(rect()).adjusted(1, 1, -1, -1));
    }
};

} // namespace

OptionsFrm::OptionsFrm(OptionsEffects Wanted, QWidget* Parent)
    : QDialog(Parent), Effects(std::move(Wanted)), Choice(OptionsNow()),
      TabStrip1(new QTabWidget(this)) {
    setObjectName(QStringLiteral("OptionsFrm"));
    setWindowTitle(QStringLiteral("Options"));
    TabStrip1->setObjectName(QStringLiteral("TabStrip1"));
    TabStrip1->setAccessibleName(QStringLiteral("Groups of options"));

    BuildColors(AddPage(0, "&Colors"));
    BuildPlay(AddPage(1, "&Play"));
    BuildGuide(AddPage(2, "&User Guide"));
    BuildDisk(AddPage(3, "&Disk Usage"));
    BuildSound(AddPage(4, "&Sound Driver"));

    auto* Buttons = new QDialogButtonBox(this);
    QPushButton* OkBtn = Buttons->addButton(QStringLiteral("&OK"), QDialogButtonBox::AcceptRole);
    OkBtn->setObjectName(QStringLiteral("OkBtn"));
    OkBtn->setDefault(true);
    QPushButton* CancelBtn =
        Buttons->addButton(QStringLiteral("C&ancel"), QDialogButtonBox::RejectRole);
    CancelBtn->setObjectName(QStringLiteral("CancelBtn"));
    connect(Buttons, &QDialogButtonBox::accepted, this, &OptionsFrm::accept);
    connect(Buttons, &QDialogButtonBox::rejected, this, &OptionsFrm::reject);

    auto* Column = new QVBoxLayout(this);
    Column->addWidget(TabStrip1);
    Column->addWidget(Buttons);
}

QWidget* OptionsFrm::AddPage(int Index, const char* Caption) {
    auto* Page = new QWidget(TabStrip1);
    Page->setObjectName(QStringLiteral("TabFrame_%1").arg(Index));
    TabStrip1->addTab(Page, QString::fromLatin1(Caption));
    return Page;
}

// ---- Colours

void OptionsFrm::BuildColors(QWidget* Page) {
    ColorNmLst = new QListWidget(Page);
    ColorNmLst->setObjectName(QStringLiteral("ColorNmLst"));
    ColorNmLst->setAccessibleName(QStringLiteral("Colors of the wave view"));
    for (const WaveColorInfo& Info : WaveColorTable)
        ColorNmLst->addItem(QString::fromLatin1(Info.ListEntry));
    ColorNmLst->setCurrentRow(0);
    connect(ColorNmLst, &QListWidget::currentRowChanged, this, [this] { ShowColors(); });
    connect(ColorNmLst, &QListWidget::itemDoubleClicked, this, [this] { ChangeColor(); });

    auto* Side = new QVBoxLayout;
    ColorBtn = new QPushButton(QStringLiteral("Click here to c&hange"), Page);
    ColorBtn->setObjectName(QStringLiteral("ColorBtn"));
    connect(ColorBtn, &QPushButton::clicked, this, &OptionsFrm::ChangeColor);
    Side->addWidget(ColorBtn);
    Side->addSpacing(12);
    constexpr std::array<std::pair<const char*, const char*>, 3> Presets = {
        {{"Curre&nt", "All colors as they are in use"},
         {"D&efault", "The default of the chosen entry"},
         {"Default a&ll", "The defaults of all entries"}}};
    for (int Index = 0; Index < 3; ++Index) {
        const auto& [Caption, Accessible] = Presets.at(static_cast<std::size_t>(Index));
        auto* Button = new QPushButton(QString::fromLatin1(Caption), Page);
        Button->setObjectName(QStringLiteral("ColorPresetBtn_%1").arg(Index));
        Button->setAccessibleName(QString::fromLatin1(Accessible));
        connect(Button, &QPushButton::clicked, this, [this, Index] { UsePreset(Index); });
        Side->addWidget(Button);
    }
    Side->addStretch();

    DispStylCmb = new QComboBox(Page);
    DispStylCmb->setObjectName(QStringLiteral("DispStylCmb"));
    DispStylCmb->setAccessibleName(QStringLiteral("How the waveform is drawn"));
    for (const char* Name : WaveDrawStyleNames)
        DispStylCmb->addItem(QString::fromLatin1(Name));
    DispStylCmb->setCurrentIndex(Choice.DrawStyle - 1);
    auto* StyleLbl = new QLabel(QStringLiteral("Wave display s&tyle:"), Page);
    StyleLbl->setBuddy(DispStylCmb);

    auto* Top = new QHBoxLayout;
    Top->addWidget(ColorNmLst, 1);
    Top->addLayout(Side);
    auto* Bottom = new QHBoxLayout;
    Bottom->addWidget(StyleLbl);
    Bottom->addWidget(DispStylCmb, 1);
    auto* Column = new QVBoxLayout(Page);
    Column->addLayout(Top, 1);
    Column->addLayout(Bottom);
    ShowColors();
    ColorNmLst->setMinimumHeight(ColorNmLst->sizeHintForRow(0) * ColorNmLst->count() + 6);
    ColorNmLst->setMinimumWidth(ColorNmLst->sizeHintForColumn(0) + 30);
}

std::size_t OptionsFrm::ChosenColor() const {
    return static_cast<std::size_t>(std::max(ColorNmLst->currentRow(), 0));
}

void OptionsFrm::ShowColors() {
    for (std::size_t Index = 0; Index < WaveColorCount; ++Index)
        ColorNmLst->item(static_cast<int>(Index))->setIcon(Swatch(Choice.Colors.at(Index), *this));
    ColorBtn->setIcon(Swatch(Choice.Colors.at(ChosenColor()), *this));
}

void OptionsFrm::ChangeColor() {
    QColorDialog Dialog(ColorFromBgr(Choice.Colors.at(ChosenColor())), this);
    Dialog.setObjectName(QStringLiteral("ColorDialog"));
    Dialog.setWindowTitle(QString::fromLatin1(WaveColorTable.at(ChosenColor()).ListEntry));
    if (RunModal(Dialog) == QDialog::Accepted)
        Choice.Colors.at(ChosenColor()) = BgrFromColor(Dialog.selectedColor());
    ShowColors();
}

void OptionsFrm::UsePreset(int Index) {
    constexpr int Current = 0;
    constexpr int DefaultOne = 1;
    if (Index == Current)
        Choice.Colors = WaveColors;
    for (std::size_t Entry = 0; Entry < WaveColorCount && Index != Current; ++Entry)
        if (Index != DefaultOne || Entry == ChosenColor())
            Choice.Colors.at(Entry) = WaveColorTable.at(Entry).Default;
    ShowColors();
}

// ---- Play

QDoubleSpinBox* OptionsFrm::TempoField(int Index, const char* Accessible, double Percent) {
    auto* Field = new LimitedBox(TabStrip1);
    Field->setObjectName(QStringLiteral("TempoTxt_%1").arg(Index));
    Field->setAccessibleName(QString::fromLatin1(Accessible));
    Field->setLocale(QLocale::c());
    Field->setDecimals(1);
    Field->setRange(LowestTempoPercent, HighestTempoPercent);
    Field->setSingleStep(10);
    Field->setValue(Percent);
    Field->setMaximumWidth(fontMetrics().averageCharWidth() * 16);
    return Field;
}

void OptionsFrm::BuildPlay(QWidget* Page) {
    LoopPlay_Chk = new QCheckBox(QStringLiteral("&Loop play"), Page);
    LoopPlay_Chk->setObjectName(QStringLiteral("LoopPlay_Chk"));
    LoopPlay_Chk->setChecked(Choice.LoopPlay);
    QuickPlay_Chk =
        new QCheckBox(QStringLiteral("&Quick play: a click on the time scale plays"), Page);
    QuickPlay_Chk->setObjectName(QStringLiteral("QuickPlay_Chk"));
    QuickPlay_Chk->setChecked(Choice.QuickPlay);
    TempoForTxt = TempoField(1, "Tempo of forward play in percent", Choice.TempoForPercent);
    TempoRevTxt = TempoField(2, "Tempo of reverse play in percent", Choice.TempoRevPercent);

    auto* Form = new QFormLayout;
    Form->addRow(QStringLiteral("Tempo &forward (10 to 200 %):"), TempoForTxt);
    Form->addRow(QStringLiteral("Tempo &reverse (10 to 200 %):"), TempoRevTxt);
    auto* Column = new QVBoxLayout(Page);
    Column->setSpacing(10);
    Column->addWidget(LoopPlay_Chk);
    Column->addWidget(QuickPlay_Chk);
    Column->addLayout(Form);
    Column->addWidget(Note("Tempo will work if DirectX is used.", Page));
    Column->addStretch();
}

// ---- Guide

void OptionsFrm::BuildGuide(QWidget* Page) {
    constexpr std::array<const char*, 3> Captions = {
        "I am &normal (Show me only that i don't know)",
        "I am &experienced / dont like that (Don't show me any guide)",
        "I am ne&w user / learning (Show me all guides once again)"};
    Guide_Option = new QButtonGroup(Page);
    TabToTheChosen(*Guide_Option);
    auto* Column = new QVBoxLayout(Page);
    Column->setSpacing(10);
    for (int Index = 0; Index < 3; ++Index) {
        auto* Button = new QRadioButton(
            QString::fromLatin1(Captions.at(static_cast<std::size_t>(Index))), Page);
        Button->setObjectName(QStringLiteral("Guide_Option_%1").arg(Index));
        Guide_Option->addButton(Button, Index);
        Button->setChecked(Index == Choice.Guide);
        Column->addWidget(Button);
    }
    Column->addStretch();
}

// ---- Disk usage

void OptionsFrm::BuildDisk(QWidget* Page) {
    TempPathTxt = new QLineEdit(ShownText(Choice.TempPath), Page);
    TempPathTxt->setObjectName(QStringLiteral("TempPathTxt"));
    TempPathTxt->setAccessibleName(QStringLiteral("Path for temporary files"));
    auto* Heading = new QLabel(QStringLiteral("Path for &temporary files:"), Page);
    Heading->setBuddy(TempPathTxt);
    auto* BrowseBtn = new QPushButton(QStringLiteral("&Browse..."), Page);
    BrowseBtn->setObjectName(QStringLiteral("BrowseBtn"));
    BrowseBtn->setAccessibleName(QStringLiteral("Choose the folder for temporary files"));
    connect(BrowseBtn, &QPushButton::clicked, this, &OptionsFrm::BrowseTempPath);

    auto* Row = new QHBoxLayout;
    Row->addWidget(TempPathTxt, 1);
    Row->addWidget(BrowseBtn);
    auto* Column = new QVBoxLayout(Page);
    Column->setSpacing(10);
    Column->addWidget(Heading);
    Column->addLayout(Row);
    Column->addWidget(Note("If you have multiple hard disks, choose a path in a fastest hard disk "
                           "that has largest free space)",
                           Page));
    Column->addStretch();
}

void OptionsFrm::BrowseTempPath() {
    QFileDialog Dialog(this, QStringLiteral("Path for temporary files"), TempPathTxt->text());
    Dialog.setObjectName(QStringLiteral("FolderDialog"));
    Dialog.setFileMode(QFileDialog::Directory);
    Dialog.setOption(QFileDialog::ShowDirsOnly);
    if (RunModal(Dialog) == QDialog::Accepted && !Dialog.selectedFiles().isEmpty())
        TempPathTxt->setText(Dialog.selectedFiles().constFirst());
}

// ---- Sound driver

void OptionsFrm::BuildSound(QWidget* Page) {
    DSoundOnImg = new DriverLamp(Page);
    auto* Column = new QVBoxLayout(Page);
    Column->setSpacing(10);
    constexpr std::array<const char*, 3> Captions = {"Check D&irectX7", "Put O&ff", "Put O&n"};
    auto* Row = new QHBoxLayout;
    for (int Index = 0; Index < 3; ++Index) {
        auto* Button = new QPushButton(
            QString::fromLatin1(Captions.at(static_cast<std::size_t>(Index))), Page);
        Button->setObjectName(QStringLiteral("SoundDriverBtn_%1").arg(Index));
        Button->setEnabled(Index == 0 || Effects.SoundDriverSwitch != nullptr);
        connect(Button, &QPushButton::clicked, this, [this, Index] {
            if (Index == 0)
                DirectX7CheckAndInfo();
            else
                SwitchSound(Index == 2);
        });
        Row->addWidget(Button);
    }
    Row->addStretch();
    auto* Status = new QHBoxLayout;
    Status->addWidget(DSoundOnImg);
    Status->addWidget(
        Note("Status: Green = Using DirectX, Gray = Using WinApi, Red = Off / Fail", Page), 1);
    Column->addLayout(Row);
    Column->addLayout(Status);
    Column->addStretch();
    ShowSoundState();
}

void OptionsFrm::SwitchSound(bool On) {
    Effects.SoundDriverSwitch(On);
    ShowSoundState();
}

void OptionsFrm::ShowSoundState() {
    DSoundOnImg->setAccessibleName(SoundDriverState == 1   ? QStringLiteral("Using DirectX")
                                   : SoundDriverState == 2 ? QStringLiteral("Using WinApi")
                                                           : QStringLiteral("Off or failed"));
    DSoundOnImg->update();
}

void OptionsFrm::accept() {
    Choice.LoopPlay = LoopPlay_Chk->isChecked();
    Choice.QuickPlay = QuickPlay_Chk->isChecked();
    // The key of OK leaves the cursor in a field that is still being typed in.
    for (QDoubleSpinBox* Field : {TempoForTxt, TempoRevTxt})
        Field->interpretText();
    Choice.TempoForPercent = TempoForTxt->value();
    Choice.TempoRevPercent = TempoRevTxt->value();
    Choice.Guide = Guide_Option->checkedId();
    Choice.DrawStyle = DispStylCmb->currentIndex() + 1;
    // A path that was not touched keeps its bytes, which need not be text.
    if (TempPathTxt->text() != ShownText(Choice.TempPath))
        Choice.TempPath = QFile::encodeName(TempPathTxt->text()).toStdString();
    if (UpdateEditings(Choice, Effects)) {
        QDialog::accept();
        return;
    }
    TempPathTxt->setText(ShownText(Choice.TempPath));
    TabStrip1->setCurrentIndex(3);
    TempPathTxt->setFocus();
}

void ShowOptions(const OptionsEffects& Effects) {
    OptionsFrm Window(Effects, WindowInUse());
    RunModal(Window);
}

} // namespace quoril
