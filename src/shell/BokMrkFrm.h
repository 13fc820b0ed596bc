// The window with the list of bookmarks.
#pragma once

#include "audiofile/FileCommands.h"
#include "bookmarks/BookmarkListMod.h"

#include <QDialog>

#include <array>
#include <functional>
#include <vector>

class QLabel;
class QListWidget;
class QVBoxLayout;

namespace quoril {

class BokMrkFrm final : public QDialog {
  public:
    /// `UsedDialogs` must outlive it.
    BokMrkFrm(BokMrkModes Mode, FileDialogs& UsedDialogs, QWidget* Parent = nullptr);

    bool OkClicked = false;
    BokMrkModes WorkingMode;

    /// The chosen bookmark, from 1; 0 for none.
    [[nodiscard]] std::int32_t ChosenNo() const;

  private:
    struct ButtonRow {
        const char* Name;
        const char* Caption;
        std::function<void()> Action;
    };
    void AddProperties(QVBoxLayout& Column);
    void AddButtons(QVBoxLayout& Column);
    QWidget* AddButtonsFrame(int Index, const std::vector<ButtonRow>& Rows);
    void FillUpForm();
    void ShowChosen();
    /// Runs a button's action on the list, and fills the window anew.
    void Act(const std::function<void()>& What, const char* ErrorTitle = "");
    void LoadClicked();
    void SaveClicked();

    FileDialogs& Dialogs;
    QListWidget* BookMarkLst;
    QLabel* NameLbl = nullptr;
    QLabel* RemarkLbl = nullptr;
    std::array<QLabel*, 3> FromToLbl{};
    std::array<QLabel*, 5> PosiLbl{};
    std::array<QWidget*, 2> ButtonsFrame{};
};

/// Shows `BokMrkFrm` for the commands while it lives.
class BokMrkAsker final : public BokMrkDialog {
  public:
    explicit BokMrkAsker(FileDialogs& UsedDialogs) : Dialogs(UsedDialogs) { SetBokMrkDialog(this); }
    ~BokMrkAsker() override { SetBokMrkDialog(nullptr); }
    BokMrkAsker(const BokMrkAsker&) = delete;
    BokMrkAsker& operator=(const BokMrkAsker&) = delete;
    std::int32_t ShowBokMrk(BokMrkModes WorkingMode) override;

  private:
    FileDialogs& Dialogs;
};

} // namespace quoril
