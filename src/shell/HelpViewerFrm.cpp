#include "shell/HelpViewerFrm.h"

#include "base/Failure.h"
#include "base/ProgramTitle.h"
#include "base/QtText.h"
#include "shell/HelpSearch.h"

#include <QAction>
#include <QHelpContentWidget>
#include <QHelpEngine>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>
#include <QVBoxLayout>

namespace quoril {

namespace {

// As in help/quoril.qhp.
const QString Namespace = QStringLiteral("org.quoril.waveeditor");
const QString Root = QStringLiteral("qthelp://org.quoril.waveeditor/help/pages/");

/// A text browser that takes its pages from the help.
class HelpBrowser final : public QTextBrowser {
  public:
    HelpBrowser(const QHelpEngine* Help, QWidget* Parent) : QTextBrowser(Parent), Engine(Help) {
        setObjectName(QStringLiteral("PageBrowser"));
        setAccessibleName(QStringLiteral("Page of the help"));
        setOpenExternalLinks(false);
        document()->setDocumentMargin(12);
    }

  protected:
    QVariant loadResource(int Type, const QUrl& Name) override {
        const QUrl Whole = Name.isRelative() ? source().resolved(Name) : Name;
        if (Whole.scheme() != QStringLiteral("qthelp"))
            return {};
        const QByteArray Bytes = Engine->fileData(Whole.adjusted(QUrl::RemoveFragment));
        if (Bytes.isEmpty() && Type == QTextDocument::HtmlResource)
            return QStringLiteral("<p>The help has no page %1.</p>")
                .arg(Whole.path().toHtmlEscaped());
        return Bytes;
    }

  private:
    const QHelpEngine* Engine;
};

QUrl UrlOf(const std::string& Page) {
    return QUrl(Root + QString::fromStdString(Page));
}

/// The entry of the contents that stands for a place, below `Parent`.
QModelIndex EntryOf(const QHelpContentModel* Contents, const QUrl& Url, const QModelIndex& Parent) {
    for (int Row = 0; Row < Contents->rowCount(Parent); ++Row) {
        const QModelIndex Each = Contents->index(Row, 0, Parent);
        if (Contents->contentItemAt(Each)->url() == Url)
            return Each;
        if (const QModelIndex Below = EntryOf(Contents, Url, Each); Below.isValid())
            return Below;
    }
    return {};
}

} // namespace

HelpViewerFrm::HelpViewerFrm(QWidget* Parent) : QWidget(Parent, Qt::Window) {
    setObjectName(QStringLiteral("HelpViewerFrm"));
    setWindowTitle(QStringLiteral("Help - ") + QLatin1String(ProgramTitle));
    setAttribute(Qt::WA_DeleteOnClose);
}

HelpViewerFrm::~HelpViewerFrm() {
    // The browser and the lists look into the engine.
    for (QObject* Child : QObjectList(children()))
        delete Child;
}

void HelpViewerFrm::Load(const std::string& FileName, const std::string& WorkFolder) {
    const QString File = QFile::decodeName(FileName.c_str());
    if (!QFile::exists(File))
        throw Failure("There is no help file " + FileName + ".");
    Notes = std::make_unique<QTemporaryFile>(QFile::decodeName(WorkFolder.c_str()) +
                                             QStringLiteral("/help-XXXXXX.qhc"));
    if (!Notes->open())
        throw Failure("The help can not be shown: no file can be made in " + WorkFolder + ".");
    Engine = std::make_unique<QHelpEngine>(Notes->fileName());
    Engine->setReadOnly(false);
    if (!Engine->setupData() || !Engine->registerDocumentation(File) ||
        Engine->fileData(UrlOf("index.html")).isEmpty())
        throw Failure("The help file " + FileName +
                      " is damaged or not a help file of this "
                      "program.");

    auto* Column = new QVBoxLayout(this);
    Column->setContentsMargins(6, 6, 6, 6);
    PageBrowser = new HelpBrowser(Engine.get(), this);
    Column->addWidget(BuildBar());
    HelpTabs = new QTabWidget(this);
    HelpTabs->setObjectName(QStringLiteral("HelpTabs"));
    HelpTabs->setAccessibleName(QStringLiteral("Ways to find a topic"));
    QHelpContentWidget* Contents = Engine->contentWidget();
    Contents->setObjectName(QStringLiteral("ContentsTree"));
    Contents->setAccessibleName(QStringLiteral("Contents"));
    HelpTabs->addTab(Contents, QStringLiteral("&Contents"));
    BuildIndexTab();
    BuildSearchTab();
    auto* Halves = new QSplitter(this);
    Halves->addWidget(HelpTabs);
    Halves->addWidget(PageBrowser);
    Halves->setStretchFactor(1, 1);
    Halves->setSizes({270, 630});
    Halves->setChildrenCollapsible(false);
    Column->addWidget(Halves, 1);

    const auto Show = [this](const QUrl& Url) { PageBrowser->setSource(Url); };
    connect(Contents, &QHelpContentWidget::linkActivated, this, Show);
    connect(Contents, &QAbstractItemView::clicked, this, [this, Show](const QModelIndex& Index) {
        Show(Engine->contentModel()->contentItemAt(Index)->url());
    });
    connect(PageBrowser, &QTextBrowser::sourceChanged, this, &HelpViewerFrm::FollowInContents);
    connect(PageBrowser, &QTextBrowser::sourceChanged, this, &HelpViewerFrm::MarkHeading);
    connect(Engine->contentModel(), &QHelpContentModel::contentsCreated, this,
            [this] { FollowInContents(PageBrowser->source()); });
    BuildKeys();
    const QSize Most = screen()->availableSize() * 9 / 10;
    resize(QSize(920, 660).boundedTo(Most));
    PageBrowser->setFocus();
}

QWidget* HelpViewerFrm::BuildBar() {
    auto* Bar = new QWidget(this);
    auto* Row = new QHBoxLayout(Bar);
    Row->setContentsMargins(0, 0, 0, 0);
    const auto Button = [&](const char* Name, const char* Text, QStyle::StandardPixmap Icon,
                            const QKeySequence& Key) {
        auto* New = new QToolButton(Bar);
        New->setObjectName(QLatin1String(Name));
        New->setText(QLatin1String(Text));
        New->setAccessibleName(QLatin1String(Text));
        New->setToolTip(QStringLiteral("%1 (%2)").arg(QLatin1String(Text),
                                                      Key.toString(QKeySequence::NativeText)));
        New->setIcon(style()->standardIcon(Icon));
        New->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        New->setAutoRaise(true);
        New->setShortcut(Key);
        Row->addWidget(New);
        return New;
    };
    QToolButton* Back =
        Button("BackBtn", "Back", QStyle::SP_ArrowBack, QKeySequence(Qt::ALT | Qt::Key_Left));
    QToolButton* Forward = Button("ForwardBtn", "Forward", QStyle::SP_ArrowForward,
                                  QKeySequence(Qt::ALT | Qt::Key_Right));
    QToolButton* Home =
        Button("HomeBtn", "Overview", QStyle::SP_DirHomeIcon, QKeySequence(Qt::ALT | Qt::Key_Home));
    Row->addStretch(1);
    Back->setEnabled(false);
    Forward->setEnabled(false);
    connect(Back, &QToolButton::clicked, PageBrowser, &QTextBrowser::backward);
    connect(Forward, &QToolButton::clicked, PageBrowser, &QTextBrowser::forward);
    connect(Home, &QToolButton::clicked, this, [this] { ShowPage("index.html"); });
    connect(PageBrowser, &QTextBrowser::backwardAvailable, Back, &QWidget::setEnabled);
    connect(PageBrowser, &QTextBrowser::forwardAvailable, Forward, &QWidget::setEnabled);
    return Bar;
}

void HelpViewerFrm::BuildIndexTab() {
    auto* Tab = new QWidget(this);
    auto* Column = new QVBoxLayout(Tab);
    IndexTxt = new QLineEdit(Tab);
    IndexTxt->setObjectName(QStringLiteral("IndexTxt"));
    IndexTxt->setAccessibleName(QStringLiteral("Words to look up in the index"));
    IndexTxt->setPlaceholderText(QStringLiteral("Look for"));
    IndexTxt->setClearButtonEnabled(true);
    QHelpIndexWidget* List = Engine->indexWidget();
    List->setObjectName(QStringLiteral("IndexList"));
    List->setAccessibleName(QStringLiteral("Index"));
    Column->addWidget(IndexTxt);
    Column->addWidget(List, 1);
    connect(IndexTxt, &QLineEdit::textChanged, List,
            [List](const QString& Text) { List->filterIndices(Text); });
    connect(IndexTxt, &QLineEdit::returnPressed, List, &QHelpIndexWidget::activateCurrentItem);
    connect(List, &QHelpIndexWidget::clicked, List, &QHelpIndexWidget::activateCurrentItem);
    connect(List, &QHelpIndexWidget::documentActivated, this,
            [this](const QHelpLink& Link) { PageBrowser->setSource(Link.url); });
    connect(List, &QHelpIndexWidget::documentsActivated, this,
            [this](const QList<QHelpLink>& Links) { PageBrowser->setSource(Links.first().url); });
    HelpTabs->addTab(Tab, QStringLiteral("&Index"));
}

void HelpViewerFrm::BuildSearchTab() {
    auto* Tab = new QWidget(this);
    auto* Column = new QVBoxLayout(Tab);
    SearchTxt = new QLineEdit(Tab);
    SearchTxt->setObjectName(QStringLiteral("SearchTxt"));
    SearchTxt->setAccessibleName(QStringLiteral("Words to search for in all pages"));
    SearchTxt->setPlaceholderText(QStringLiteral("Words to search for"));
    SearchTxt->setClearButtonEnabled(true);
    FoundLbl = new QLabel(Tab);
    FoundLbl->setObjectName(QStringLiteral("FoundLbl"));
    FoundLbl->setAccessibleName(QStringLiteral("Number of topics found"));
    SearchList = new QListWidget(Tab);
    SearchList->setObjectName(QStringLiteral("SearchList"));
    SearchList->setAccessibleName(QStringLiteral("Topics found"));
    SearchList->setWordWrap(true);
    SearchList->setAlternatingRowColors(true);
    SearchList->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    Column->addWidget(SearchTxt);
    Column->addWidget(FoundLbl);
    Column->addWidget(SearchList, 1);
    const auto Open = [this](const QListWidgetItem* Item) {
        PageBrowser->setSource(Item->data(Qt::UserRole).toUrl());
    };
    connect(SearchTxt, &QLineEdit::textChanged, this, &HelpViewerFrm::Search);
    connect(SearchTxt, &QLineEdit::returnPressed, this, [this, Open] {
        if (SearchList->count() > 0)
            Open(SearchList->item(0));
    });
    connect(SearchList, &QListWidget::itemClicked, this, Open);
    connect(SearchList, &QListWidget::itemActivated, this, Open);
    HelpTabs->addTab(Tab, QStringLiteral("&Search"));
}

void HelpViewerFrm::BuildKeys() {
    const auto Key = [this](const QKeySequence& Keys, auto What) {
        auto* Action = new QAction(this);
        Action->setShortcut(Keys);
        connect(Action, &QAction::triggered, this, What);
        addAction(Action);
    };
    Key(QKeySequence::Find, [this] {
        HelpTabs->setCurrentIndex(2);
        SearchTxt->setFocus();
        SearchTxt->selectAll();
    });
    connect(HelpTabs, &QTabWidget::currentChanged, this, [this](int Index) {
        if (Index == 1)
            IndexTxt->setFocus();
        else if (Index == 2)
            SearchTxt->setFocus();
    });
}

void HelpViewerFrm::ShowPage(const std::string& Page) {
    PageBrowser->setSource(UrlOf(Page));
}

std::string HelpViewerFrm::Page() const {
    return CoreText(PageBrowser->source().toString().mid(Root.size()));
}

void HelpViewerFrm::Search(const QString& Text) {
    if (Sections.empty())
        for (const QUrl& Url : Engine->files(Namespace, QString(), QStringLiteral("html"))) {
            const std::vector<HelpSection> OfPage =
                HelpSectionsOf(Url, QString::fromUtf8(Engine->fileData(Url)));
            Sections.insert(Sections.end(), OfPage.begin(), OfPage.end());
        }
    SearchList->clear();
    for (const HelpHit& Hit : HelpSearch(Sections, Text)) {
        auto* Item = new QListWidgetItem(Hit.Heading + QLatin1Char('\n') + Hit.Snippet, SearchList);
        Item->setData(Qt::UserRole, Hit.Place);
    }
    FoundLbl->setText(Text.trimmed().isEmpty()   ? QString()
                      : SearchList->count() == 0 ? QStringLiteral("Nothing found")
                      : SearchList->count() == 1
                          ? QStringLiteral("1 topic found")
                          : QStringLiteral("%1 topics found").arg(SearchList->count()));
}

void HelpViewerFrm::FollowInContents(const QUrl& Url) {
    QModelIndex Place = EntryOf(Engine->contentModel(), Url, {});
    if (!Place.isValid())
        Place = EntryOf(Engine->contentModel(), Url.adjusted(QUrl::RemoveFragment), {});
    if (!Place.isValid())
        return;
    Engine->contentWidget()->setCurrentIndex(Place);
    Engine->contentWidget()->expand(Place);
}

void HelpViewerFrm::MarkHeading(const QUrl& Url) {
    QList<QTextEdit::ExtraSelection> Marks;
    for (QTextBlock Block = PageBrowser->document()->begin(); Block.isValid(); Block = Block.next())
        if (Url.hasFragment() && Block.charFormat().anchorNames().contains(Url.fragment())) {
            QTextEdit::ExtraSelection Mark;
            Mark.cursor = QTextCursor(Block);
            QColor Ground = palette().color(QPalette::Highlight);
            Ground.setAlpha(60);
            Mark.format.setBackground(Ground);
            Mark.format.setProperty(QTextFormat::FullWidthSelection, true);
            Marks.append(Mark);
        }
    PageBrowser->setExtraSelections(Marks);
}

void HelpViewerFrm::keyPressEvent(QKeyEvent* Event) {
    if (Event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(Event);
}

} // namespace quoril
