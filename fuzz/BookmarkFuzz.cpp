// Any bytes as a file of bookmarks: it gives bookmarks or none, and at most one message; what was
// read is the same after it was saved and read again. The first byte tells the form: bit 0 the
// program's own, otherwise text.
#include "RunFolder.h"

#include "base/MsgBoxMod.h"
#include "bookmarks/BookmarkFileMod.h"
#include "bookmarks/BookmarkRec.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

using quoril::fuzz::Require;
using quoril::fuzz::RunFolder;

namespace {

class User final : public quoril::UserMessages, public quoril::BokMrkChosDialog {
  public:
    quoril::MsgBoxAnswer MsgBox(const quoril::MsgBoxRequest&) override {
        ++Messages;
        return quoril::MsgBoxAnswer::Ok;
    }
    quoril::InputBoxAnswer InputBox(const std::string&, const std::string&,
                                    const std::string&) override {
        return {};
    }
    quoril::BokMrkChoices ShowBokMrkChos(const std::string&) override {
        ++Questions;
        return quoril::BokMrkReplace;
    }
    int Messages = 0;
    int Questions = 0;
};

std::string NameIn(const char* Name) {
    static const RunFolder Folder;
    return Folder.Name + "/" + Name;
}

bool Equal(const quoril::BookmarkRec& A, const quoril::BookmarkRec& B) {
    return A.Name == B.Name && A.Text == B.Text && A.BokType == B.BokType && A.From == B.From &&
           A.To == B.To && A.Selected == B.Selected;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
    if (Size == 0)
        return 0;
    const bool OwnForm = (Data[0] & 1) != 0;
    const std::string Given = NameIn(OwnForm ? "given.bok" : "given.txt");
    std::ofstream(Given, std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(Data + 1), static_cast<std::streamsize>(Size - 1));
    User Asked;
    quoril::SetUserMessages(&Asked);
    quoril::SetBokMrkChosDialog(&Asked);
    quoril::WaveStore = std::make_unique<quoril::FileMemoClass>();
    quoril::Bookmarks.assign(1, {});

    quoril::LoadBookmarks(Given);
    const std::vector<quoril::BookmarkRec> Read = quoril::Bookmarks;
    Require(Asked.Messages <= (OwnForm ? 0 : 1) && Asked.Questions == 0);
    for (std::size_t No = 1; No < Read.size(); ++No)
        Require(Read[No].BokType ==
                (Read[No].From == Read[No].To ? quoril::BokPoint : quoril::BokRange));

    const std::string Saved = NameIn("saved.bok");
    quoril::SaveBookmarks(Saved);
    Require(std::filesystem::exists(Saved) == (Read.size() > 1));
    quoril::LoadBookmarks(Saved);
    Require(Asked.Questions == (Read.size() > 1 ? 1 : 0));
    Require(std::equal(Read.begin(), Read.end(), quoril::Bookmarks.begin(), quoril::Bookmarks.end(),
                       Equal));

    quoril::WaveStore.reset();
    quoril::SetBokMrkChosDialog(nullptr);
    quoril::SetUserMessages(nullptr);
    return 0;
}
