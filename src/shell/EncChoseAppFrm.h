// The dialog that asks where an encoder is.
#pragma once

#include "audiofile/Encoders.h"
#include "audiofile/FileCommands.h"

#include <QDialog>

class QLabel;
class QVBoxLayout;

namespace quoril {

class PathText;

class EncChoseAppFrm final : public QDialog {
  public:
    /// `Dialogs` must outlive this object.
    EncChoseAppFrm(std::int32_t Which, FileDialogs& UsedDialogs, QWidget* Parent = nullptr);

    const std::int32_t WhichEncoder;

  private:
    void InitilizeForm();
    void AddPath(QVBoxLayout& Column);
    void AddButtons(QVBoxLayout& Column);
    QLabel* AddLabel(QVBoxLayout& Column, const char* Name);
    void BrowseClicked();
    void OkClicked();

    FileDialogs& Dialogs;
    PathText* FileNameTxt = nullptr;
    QLabel* RemLbl = nullptr;
    QLabel* Rem2Lbl = nullptr;
};

/// Shows `EncChoseAppFrm` for the commands while it lives.
class EncChoseAppAsker final : public EncChoseAppDialog {
  public:
    explicit EncChoseAppAsker(FileDialogs& UsedDialogs) : Dialogs(UsedDialogs) {
        SetEncChoseAppDialog(this);
    }
    ~EncChoseAppAsker() override { SetEncChoseAppDialog(nullptr); }
    EncChoseAppAsker(const EncChoseAppAsker&) = delete;
    EncChoseAppAsker& operator=(const EncChoseAppAsker&) = delete;
    void ShowEncChoseApp(std::int32_t WhichEncoder) override;

  private:
    FileDialogs& Dialogs;
};

} // namespace quoril
