// Looking words up in the pages of the help.
#pragma once

#include <QString>
#include <QUrl>

#include <vector>

namespace quoril {

/// A heading and the text below it, up to the next heading.
struct HelpSection {
    QUrl Place;      ///< the page with the heading's anchor
    QString Heading; ///< as the reader sees it
    QString Text;    ///< plain, without the heading
};

/// The sections of a page in HTML. Text before the first heading has the page's title as heading.
[[nodiscard]] std::vector<HelpSection> HelpSectionsOf(const QUrl& Page, const QString& Html);

/// A section that was found, with a few words around the first place.
struct HelpHit {
    QUrl Place;
    QString Heading;
    QString Snippet;
};

/// The sections that hold every word of `Text`, in either case, also as the beginning or a part of
/// a longer word; those with a word in the heading come first. Nothing for a text without words.
[[nodiscard]] std::vector<HelpHit> HelpSearch(const std::vector<HelpSection>& Sections,
                                              const QString& Text);

} // namespace quoril
