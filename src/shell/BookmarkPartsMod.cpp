#include "shell/BookmarkPartsMod.h"

#include "audiofile/AudioFileNames.h"
#include "audiofile/AudioFileTypes.h"
#include "base/BusyPointer.h"
#include "base/MsgBoxMod.h"
#include "bookmarks/BookmarkListMod.h"
#include "bookmarks/BookmarkRec.h"
#include "platform/FileSystem.h"
#include "platform/Text.h"
#include "settings/STD1.h"

#include <fmt/format.h>

#include <algorithm>

namespace quoril {

namespace {

BokMrkSavDialog* Dialog = nullptr;

/// One file to write.
struct Part {
    std::string FileName;
    SampleRange Range;
};

BokMrkSaving SavingOfDocument() {
    BokMrkSaving Saving;
    for (std::int32_t No = 1; No <= BookmarkNos(); ++No)
        Saving.Names.push_back(Bookmarks[static_cast<std::size_t>(No)].Name);
    Saving.Checked.assign(Saving.Names.size(), true);
    Saving.Prefix = WaveFilePath;
    return Saving;
}

std::vector<Part> PartsOf(const BokMrkSaving& Saving) {
    std::vector<Part> Parts;
    for (std::size_t Line = 0; Line < Saving.Names.size(); ++Line)
        if (Saving.Checked[Line])
            Parts.push_back({BookmarkPartFile(Saving.Prefix, Saving.Names[Line]),
                             BookmarkRange(Bookmarks[Line + 1])});
    return Parts;
}

/// False when the user wants to keep files that are there.
bool OldFilesMayGo(const std::vector<Part>& Parts) {
    const auto There =
        std::ranges::count_if(Parts, [](const Part& Each) { return FileThere(Each.FileName); });
    if (There == 0)
        return true;
    const std::string Question =
        There == 1
            ? "One of the files already exists.\nDo you want to replace it?"
            : fmt::format("{} of the files already exist.\nDo you want to replace them?", There);
    return MsgBox(Question, {}, MsgBoxButtons::YesNo, MsgBoxAnswer::No) == MsgBoxAnswer::Yes;
}

/// How many could be written.
int WriteParts(const std::vector<Part>& Parts) {
    const BusyPointer Busy;
    const std::int32_t WorkChn = WaveStore->WavFmtChannel == 2 ? 0 : 1;
    OpenSaveClass Files;
    int Written = 0;
    for (const Part& Each : Parts) {
        const AudioFileType* Type = AudioFileTypeOf(Each.FileName);
        if ((Files.*Type->WritePart)(*WaveStore, Each.Range.From, Each.Range.To, WorkChn,
                                     Each.FileName))
            ++Written;
    }
    return Written;
}

void TellWritten(int Count) {
    if (Count == 0)
        MsgBox("No file is saved");
    else if (Count == 1)
        MsgBox("One file saved");
    else
        MsgBox(fmt::format("{} part files are saved", Count));
}

} // namespace

void SetBokMrkSavDialog(BokMrkSavDialog* Receiver) noexcept {
    Dialog = Receiver;
}

std::string BookmarkPartFile(const std::string& Prefix, const std::string& Name) {
    std::string Whole = Trim(Prefix);
    if (Whole.empty())
        Whole = WaveFileName;
    Whole = PrefixOf(Whole);
    return Whole.substr(0, Whole.rfind('.')) + Name + "." + EndingOfPath(Whole);
}

FileDialogRequest PrefixRequest(const std::string& Prefix) {
    FileDialogRequest Request;
    Request.Title = "Select a wave file name as a prefix name to save";
    Request.Folder = FolderOfPath(Prefix);
    Request.FileName = NameOfPath(Prefix);
    Request.Filter = AudioFileFilter;
    Request.DefaultExtension = "wav";
    return Request;
}

std::string PrefixOf(const std::string& Chosen) {
    return IsAudioFileName(Chosen) ? Chosen : Chosen + ".wav";
}

void SaveBookmarkedParts(FileCommandsView& View) {
    if (BookmarkNos() == 0)
        MsgBox("No bookmark found\nPlease add few bookmarks before using this command");
    BokMrkSaving Saving = SavingOfDocument();
    if (Dialog != nullptr)
        Dialog->ShowBokMrkSav(Saving);
    if (!Saving.OkClicked || Saving.Names.empty())
        return;
    const std::vector<Part> Parts = PartsOf(Saving);
    if (!OldFilesMayGo(Parts))
        return;
    View.ReleasePlayingFiles(true);
    TellWritten(WriteParts(Parts));
}

} // namespace quoril
