// The window that shows the help: contents, index and search at the left, the page at the right.
#pragma once

#include "shell/HelpSearch.h"

#include <QTemporaryFile>
#include <QUrl>
#include <QWidget>

#include <memory>
#include <string>
#include <vector>

class QHelpEngine;
class QLabel;
class QLineEdit;
class QListWidget;
class QTabWidget;
class QTextBrowser;

namespace quoril {

class HelpViewerFrm final : public QWidget {
  public:
    explicit HelpViewerFrm(QWidget* Parent = nullptr);
    ~HelpViewerFrm() override;
    HelpViewerFrm(const HelpViewerFrm&) = delete;
    HelpViewerFrm& operator=(const HelpViewerFrm&) = delete;

    /// Reads the compiled help; to be called once, before anything is shown. Neither it nor its
    /// folder is written to: what the reader has to note goes into a file of this window in
    /// `WorkFolder`, so that several editors use one help. Throws Failure when there is no such
    /// file or when it is damaged.
    void Load(const std::string& FileName, const std::string& WorkFolder);
    /// Shows a page by its name in the help, with or without a place on it ("view.html#zoom-in").
    void ShowPage(const std::string& Page);
    /// The page on show in the same form.
    [[nodiscard]] std::string Page() const;
    /// Looks a text up in all pages, shows what was found in the tab "Search".
    void Search(const QString& Text);

  protected:
    void keyPressEvent(QKeyEvent* Event) override;

  private:
    QWidget* BuildBar();
    void BuildIndexTab();
    void BuildSearchTab();
    void BuildKeys();
    void FollowInContents(const QUrl& Url);
    /// A place near the end of a page can not be scrolled to the top: its heading gets a ground of
    /// its own.
    void MarkHeading(const QUrl& Url);

    // The engine goes before the file that it keeps open.
    std::unique_ptr<QTemporaryFile> Notes;
    std::unique_ptr<QHelpEngine> Engine;
    QTextBrowser* PageBrowser = nullptr;
    QTabWidget* HelpTabs = nullptr;
    QLineEdit* IndexTxt = nullptr;
    QLineEdit* SearchTxt = nullptr;
    QLabel* FoundLbl = nullptr;
    QListWidget* SearchList = nullptr;
    std::vector<HelpSection> Sections; ///< of all pages, read at the first search
};

} // namespace quoril
