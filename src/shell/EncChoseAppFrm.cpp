#include "shell/EncChoseAppFrm.h"

#include "base/CommandFailure.h"
#include "base/ModalWindow.h"
#include "base/QtText.h"
#include "platform/FileSystem.h"
#include "platform/ProgramPlaces.h"
#include "shell/HelpTopics.h"
#include "shell/HelpViewer.h"
#include "shell/PathText.h"
#include "shell/WebLinks.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quoril {

namespace {

constexpr int LettersInLine = 64;

} // namespace

EncChoseAppFrm::EncChoseAppFrm(std::int32_t Which, FileDialogs& UsedDialogs, QWidget* Parent)
    : QDialog(Parent), WhichEncoder(Which), Dialogs(UsedDialogs) {
    setObjectName(QStringLiteral("EncChoseAppFrm"));
    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(14, 12, 14, 12);
    Column->setSpacing(10);
    Column->setSizeConstraint(QLayout::SetFixedSize);
    RemLbl = AddLabel(*Column, "RemLbl");
    AddPath(*Column);
    Rem2Lbl = AddLabel(*Column, "Rem2Lbl");
    QLabel* WebSiteLbl = AddLabel(*Column, "WebSiteLbl");
    WebSiteLbl->setText(QStringLiteral("<a href=\"encoders.html\">Where to get an encoder</a>"));
    WebSiteLbl->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    connect(WebSiteLbl, &QLabel::linkActivated, this, [](const QString& Page) {
        RunCommand({}, [&] { OpenPageInBrowser(FolderOfProgram(), CoreText(Page)); });
    });
    AddButtons(*Column);
    InitilizeForm();
    FileNameTxt->setFocus();
}

QLabel* EncChoseAppFrm::AddLabel(QVBoxLayout& Column, const char* Name) {
    auto* Label = new QLabel(this);
    Label->setObjectName(QLatin1String(Name));
    Label->setWordWrap(true);
    Label->setFixedWidth(fontMetrics().averageCharWidth() * LettersInLine);
    Column.addWidget(Label);
    return Label;
}

void EncChoseAppFrm::AddPath(QVBoxLayout& Column) {
    FileNameTxt = new PathText(this);
    FileNameTxt->setObjectName(QStringLiteral("FileNameTxt"));
    FileNameTxt->setAccessibleName(QStringLiteral("Path of the encoder"));
    auto* BrowseBtn = new QPushButton(QStringLiteral("&Browse"), this);
    BrowseBtn->setObjectName(QStringLiteral("BrowseBtn"));
    connect(BrowseBtn, &QPushButton::clicked, this, [this] { BrowseClicked(); });
    auto* Row = new QHBoxLayout;
    Row->addWidget(FileNameTxt, 1);
    Row->addWidget(BrowseBtn);
    Column.addLayout(Row);
}

void EncChoseAppFrm::AddButtons(QVBoxLayout& Column) {
    auto* Buttons = new QDialogButtonBox(this);
    const auto Add = [Buttons](const char* Name, const char* Caption,
                               QDialogButtonBox::ButtonRole Role) {
        QPushButton* Button = Buttons->addButton(QLatin1String(Caption), Role);
        Button->setObjectName(QLatin1String(Name));
        return Button;
    };
    QPushButton* OkBtn = Add("OkBtn", "&OK", QDialogButtonBox::AcceptRole);
    OkBtn->setDefault(true);
    connect(OkBtn, &QPushButton::clicked, this, [this] { OkClicked(); });
    connect(Add("CancelBtn", "&Cancel", QDialogButtonBox::RejectRole), &QPushButton::clicked, this,
            &QDialog::reject);
    connect(Add("HelpBtn", "&Help", QDialogButtonBox::HelpRole), &QPushButton::clicked, this,
            [] { (void)ShowHelp(HelpContextOf("EncChoseAppFrm")); });
    Column.addWidget(Buttons);
}

void EncChoseAppFrm::InitilizeForm() {
    const EncoderFacts& Facts = EncoderFactsOf(WhichEncoder);
    setWindowTitle(ShownText(Facts.Caption));
    RemLbl->setText(ShownText(Facts.Remark));
    FileNameTxt->SetPath(EncoderToPropose(WhichEncoder));
    const std::string Missing = EncoderMissing(WhichEncoder);
    Rem2Lbl->setText(ShownText(Missing));
    Rem2Lbl->setVisible(!Missing.empty());
}

void EncChoseAppFrm::BrowseClicked() {
    RunCommand("Select file Error", [this] {
        const std::string Now = FileNameTxt->Path();
        FileDialogRequest Request;
        Request.Title = std::string("Select a command line encoder exe ") +
                        EncoderFactsOf(WhichEncoder).BrowsedName + " file to use";
        Request.Folder = FolderOfPath(Now);
        Request.FileName = FileExists(Now) ? NameOfPath(Now) : std::string();
        Request.Filter = "Application file (*.Exe)|*.Exe|All files (*.*)|*.*";
        Request.FileMustExist = true;
        if (const auto Chosen = Dialogs.OpenFile(Request))
            FileNameTxt->SetPath(*Chosen);
    });
}

void EncChoseAppFrm::OkClicked() {
    if (RunCommand({}, [this] { ChooseEncoder(WhichEncoder, FileNameTxt->Path()); }))
        accept();
}

void EncChoseAppAsker::ShowEncChoseApp(std::int32_t WhichEncoder) {
    EncChoseAppFrm Dialog(WhichEncoder, Dialogs, WindowInUse());
    RunModal(Dialog);
}

} // namespace quoril
