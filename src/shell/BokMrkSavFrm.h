// The dialog that asks which bookmarked parts go into files, and how these are called.
#pragma once

#include "shell/BookmarkPartsMod.h"

#include <QDialog>

class QListWidget;
class QVBoxLayout;

namespace quoril {

class PathText;

class BokMrkSavFrm final : public QDialog {
  public:
    /// `Dialogs` must outlive this object.
    BokMrkSavFrm(const BokMrkSaving& Saving, FileDialogs& UsedDialogs, QWidget* Parent = nullptr);

    bool OkClicked = false;
    /// Takes over what the user has made of it.
    void Store(BokMrkSaving& Saving) const;

  private:
    void UpdateForm(const BokMrkSaving& Saving);
    void AddSelectButtons(QVBoxLayout& Column);
    void AddPrefix(QVBoxLayout& Column);
    void CheckAll(bool Checked);
    void BrowseClicked();

    FileDialogs& Dialogs;
    QListWidget* BokMrkLst;
    PathText* PrefixTxt = nullptr;
};

/// Shows `BokMrkSavFrm` for the command while it lives.
class BokMrkSavAsker final : public BokMrkSavDialog {
  public:
    explicit BokMrkSavAsker(FileDialogs& UsedDialogs) : Dialogs(UsedDialogs) {
        SetBokMrkSavDialog(this);
    }
    ~BokMrkSavAsker() override { SetBokMrkSavDialog(nullptr); }
    BokMrkSavAsker(const BokMrkSavAsker&) = delete;
    BokMrkSavAsker& operator=(const BokMrkSavAsker&) = delete;
    void ShowBokMrkSav(BokMrkSaving& Saving) override;

  private:
    FileDialogs& Dialogs;
};

} // namespace quoril
