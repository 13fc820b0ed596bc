// The dialog that asks what becomes of the bookmarks that are there when others are loaded.
#pragma once

#include "bookmarks/BookmarkFileMod.h"

#include <QDialog>

class QButtonGroup;

namespace quoril {

class BokMrkChosFrm final : public QDialog {
  public:
    explicit BokMrkChosFrm(const std::string& Label, QWidget* Parent = nullptr);

    [[nodiscard]] BokMrkChoices Choice() const;

  private:
    bool OkClicked = false;
    QButtonGroup* AddOpn;
};

/// Shows `BokMrkChosFrm` for the loading of bookmarks while it lives.
class BokMrkChosAsker final : public BokMrkChosDialog {
  public:
    BokMrkChosAsker() { SetBokMrkChosDialog(this); }
    ~BokMrkChosAsker() override { SetBokMrkChosDialog(nullptr); }
    BokMrkChosAsker(const BokMrkChosAsker&) = delete;
    BokMrkChosAsker& operator=(const BokMrkChosAsker&) = delete;
    BokMrkChoices ShowBokMrkChos(const std::string& Label) override;
};

} // namespace quoril
