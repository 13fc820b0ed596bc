#include "shell/HelpSearch.h"

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace quoril {

namespace {

QString AnchorOf(const QTextBlock& Block) {
    for (auto Piece = Block.begin(); !Piece.atEnd(); ++Piece)
        if (const QStringList Names = Piece.fragment().charFormat().anchorNames(); !Names.isEmpty())
            return Names.constFirst();
    return {};
}

/// A few words before and after a place.
QString SnippetAround(const QString& Text, qsizetype Place) {
    constexpr qsizetype Before = 30;
    constexpr qsizetype Most = 110;
    qsizetype From = std::max<qsizetype>(0, Place - Before);
    while (From > 0 && !Text[From - 1].isSpace())
        --From;
    qsizetype To = std::min(Text.size(), From + Most);
    while (To < Text.size() && !Text[To].isSpace())
        ++To;
    const QString Dots = QStringLiteral("…");
    return (From > 0 ? Dots : QString()) + Text.mid(From, To - From).simplified() +
           (To < Text.size() ? Dots : QString());
}

} // namespace

std::vector<HelpSection> HelpSectionsOf(const QUrl& Page, const QString& Html) {
    QTextDocument Document;
    Document.setHtml(Html);
    std::vector<HelpSection> Sections = {
        {Page, Document.metaInformation(QTextDocument::DocumentTitle), {}}};
    for (QTextBlock Block = Document.begin(); Block.isValid(); Block = Block.next()) {
        if (Block.blockFormat().headingLevel() == 0) {
            Sections.back().Text += Block.text() + QLatin1Char('\n');
            continue;
        }
        QUrl Place = Page;
        Place.setFragment(AnchorOf(Block));
        Sections.push_back({Place, Block.text(), {}});
    }
    if (Sections.front().Text.trimmed().isEmpty())
        Sections.erase(Sections.begin());
    return Sections;
}

std::vector<HelpHit> HelpSearch(const std::vector<HelpSection>& Sections, const QString& Text) {
    static const QRegularExpression Blanks(QStringLiteral("\\s+"));
    const QStringList Words = Text.split(Blanks, Qt::SkipEmptyParts);
    std::vector<HelpHit> InHeading;
    std::vector<HelpHit> InText;
    if (Words.isEmpty())
        return {};
    for (const HelpSection& Section : Sections) {
        const auto Holds = [](const QString& Where) {
            return
                [&Where](const QString& Word) { return Where.contains(Word, Qt::CaseInsensitive); };
        };
        const QString Whole = Section.Heading + QLatin1Char('\n') + Section.Text;
        if (!std::all_of(Words.begin(), Words.end(), Holds(Whole)))
            continue;
        // A word that stands only in the heading leaves the beginning of the text.
        qsizetype First = -1;
        for (const QString& Word : Words)
            if (const qsizetype At = Section.Text.indexOf(Word, 0, Qt::CaseInsensitive); At >= 0)
                First = First < 0 ? At : std::min(First, At);
        const HelpHit Hit = {Section.Place, Section.Heading,
                             SnippetAround(Section.Text, std::max<qsizetype>(First, 0))};
        const bool Headed = std::any_of(Words.begin(), Words.end(), Holds(Section.Heading));
        (Headed ? InHeading : InText).push_back(Hit);
    }
    InHeading.insert(InHeading.end(), InText.begin(), InText.end());
    return InHeading;
}

} // namespace quoril
