#include "shell/FileDialogWindows.h"

#include "base/ModalWindow.h"
#include "base/MsgBoxMod.h"
#include "base/QtText.h"
#include "platform/FileSystem.h"
#include "platform/ProgramPlaces.h"

#include <QFile>
#include <QFileDialog>

namespace quoril {

namespace {

/// A pattern whose letters match in either case: "*.wav" is "*.[wW][aA][vV]". File names here tell
/// cases apart, and not every desktop's dialog has a switch for it.
QString InEitherCase(const QString& Pattern) {
    if (Pattern == QStringLiteral("*.*"))
        return QStringLiteral("*");
    QString Result;
    for (const QChar Each : Pattern)
        Result += Each.isLetter() ? QStringLiteral("[%1%2]").arg(Each.toLower()).arg(Each.toUpper())
                                  : QString(Each);
    return Result;
}

std::string NameFromQt(const QString& Path) {
    return QFile::encodeName(Path).toStdString();
}
QString NameForQt(const std::string& Path) {
    return QFile::decodeName(Path.c_str());
}

void SetUp(QFileDialog& Dialog, const FileDialogRequest& Request) {
    Dialog.setObjectName(QStringLiteral("FileDialog"));
    Dialog.setWindowTitle(ShownText(Request.Title));
    Dialog.setNameFilters(FilterForQt(Request.Filter));
    // The captions say in their own words what the patterns are.
    Dialog.setOption(QFileDialog::HideNameFilterDetails);
    Dialog.setDirectory(
        NameForQt(FolderExists(Request.Folder) ? Request.Folder : FolderForSounds()));
    if (!Request.FileName.empty())
        Dialog.selectFile(NameForQt(Request.FileName));
}

/// Shows a dialog; nothing when it was cancelled.
std::optional<std::string> Chosen(QFileDialog& Dialog) {
    if (RunModal(Dialog) != QDialog::Accepted || Dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return NameFromQt(Dialog.selectedFiles().constFirst());
}

} // namespace

QStringList FilterForQt(const std::string& Filter) {
    const QStringList Words = ShownText(Filter).split(QLatin1Char('|'));
    QStringList Result;
    for (qsizetype Index = 0; Index + 1 < Words.size(); Index += 2) {
        QStringList Patterns = Words[Index + 1].split(QLatin1Char(';'));
        for (QString& Pattern : Patterns)
            Pattern = InEitherCase(Pattern);
        Result += Words[Index] + QStringLiteral(" (") + Patterns.join(QLatin1Char(' ')) +
                  QLatin1Char(')');
    }
    return Result;
}

std::optional<std::string> FileDialogWindows::OpenFile(const FileDialogRequest& Request) {
    QFileDialog Dialog(WindowInUse());
    SetUp(Dialog, Request);
    Dialog.setAcceptMode(QFileDialog::AcceptOpen);
    Dialog.setFileMode(Request.FileMustExist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    return Chosen(Dialog);
}

std::optional<std::string> FileDialogWindows::SaveFile(const FileDialogRequest& Request) {
    QFileDialog Dialog(WindowInUse());
    SetUp(Dialog, Request);
    Dialog.setAcceptMode(QFileDialog::AcceptSave);
    Dialog.setFileMode(QFileDialog::AnyFile);
    Dialog.setOption(QFileDialog::DontConfirmOverwrite, !Request.OverwritePrompt);
    for (;;) {
        std::optional<std::string> Path = Chosen(Dialog);
        if (!Path)
            return Path;
        if (Request.PathMustExist && !FolderExists(FolderOfPath(*Path))) {
            MsgBox(*Path + "\nPath does not exist.\nCheck the path and try again.", Request.Title);
            continue;
        }
        // The dialog has asked about the name as it was typed. With an ending added by itself it
        // would not ask again on every desktop.
        const bool Completed =
            NameOfPath(*Path).find('.') == std::string::npos && !Request.DefaultExtension.empty();
        if (Completed)
            *Path += "." + Request.DefaultExtension;
        if (!Completed || !Request.OverwritePrompt || OverwriteMayGo(*Path))
            return Path;
    }
}

} // namespace quoril
