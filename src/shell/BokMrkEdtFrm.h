// The dialog that edits one bookmark.
#pragma once

#include "bookmarks/BookmarkEditMod.h"

#include <QDialog>

#include <array>

class QButtonGroup;
class QLineEdit;
class QVBoxLayout;

namespace quoril {

class BokMrkEdtFrm final : public QDialog {
  public:
    /// Shows `Shown` and changes it as the user does; it must outlive the dialog.
    explicit BokMrkEdtFrm(BookmarkEditing& Shown, QWidget* Parent = nullptr);

  private:
    QLineEdit* AddBox(const QString& Name, const QString& Accessible);
    void AddTexts(QVBoxLayout& Column);
    void AddPositions(QVBoxLayout& Column);
    /// Brings the controls into line with what they show.
    void UpdateFromTo();
    template <class ChangeType>
    void Change(ChangeType&& What);

    BookmarkEditing& Editing;
    bool Updating = false;
    QLineEdit* NameTxt = nullptr;
    QLineEdit* RemarkTxt = nullptr;
    QButtonGroup* TypOption = nullptr;
    QButtonGroup* SrcOption = nullptr;
    std::array<QLineEdit*, 3> EnterSamplesTxt{};
    std::array<QLineEdit*, 3> EnterTimeTxt{};
};

/// Shows `BokMrkEdtFrm` for the commands while it lives.
class BokMrkEdtAsker final : public BokMrkEdtDialog {
  public:
    BokMrkEdtAsker() { SetBokMrkEdtDialog(this); }
    ~BokMrkEdtAsker() override { SetBokMrkEdtDialog(nullptr); }
    BokMrkEdtAsker(const BokMrkEdtAsker&) = delete;
    BokMrkEdtAsker& operator=(const BokMrkEdtAsker&) = delete;
    void ShowBokMrkEdt(BookmarkEditing& Editing) override;
};

} // namespace quoril
