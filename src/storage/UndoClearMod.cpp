#include "storage/UndoClearMod.h"

#include "base/MsgBoxMod.h"

namespace quoril {

namespace {

UndoClearDialog* Dialog = nullptr;

/// The end of the questions, also when a failure passes through.
class Questions {
  public:
    Questions() = default;
    ~Questions() {
        if (Dialog != nullptr)
            Dialog->UndoClearDone();
    }
    Questions(const Questions&) = delete;
    Questions& operator=(const Questions&) = delete;

    [[nodiscard]] static UndoClearAnswer Ask(const std::vector<std::string>& Names) {
        return Dialog == nullptr ? UndoClearAnswer{} : Dialog->ShowUndoClear(Names);
    }
};

/// Indexes of the records that end a step which can be undone.
std::vector<std::int32_t> StepRecords(const FileMemoClass& Store) {
    std::vector<std::int32_t> Records;
    for (std::int32_t No = Store.UndoReleased() + 1; No <= Store.UndoCount(); ++No) {
        const UndoRec& Record = Store.UndoRecords()[static_cast<std::size_t>(No)];
        if (Record.UndoIsLast && Record.UndoKind != UndoPadding)
            Records.push_back(No);
    }
    return Records;
}

/// Drops what the answer says; false when the user has had enough.
bool Drop(FileMemoClass& Store, const std::vector<std::int32_t>& Records,
          const UndoClearAnswer& Answer) {
    switch (Answer.Result) {
    case UndoClearFirst:
        Store.UndoInfoReleaseUpto(Records.front());
        return true;
    case UndoClearUpToSelected:
        Store.UndoInfoReleaseUpto(Records.at(Answer.Selected));
        return true;
    case UndoClearAll:
        Store.UndoInfoReset();
        return true;
    default:
        return false;
    }
}

} // namespace

void SetUndoClearDialog(UndoClearDialog* Receiver) noexcept {
    Dialog = Receiver;
}

void UndoClearFiles_UserAssisted(FileMemoClass& Store) {
    const Questions Asked;
    do {
        const std::vector<std::int32_t> Records = StepRecords(Store);
        if (Records.empty()) {
            MsgBox("No undo data is left to clear.");
            return;
        }
        std::vector<std::string> Names;
        Names.reserve(Records.size());
        for (const std::int32_t No : Records)
            Names.push_back(Store.UndoRecords()[static_cast<std::size_t>(No)].UndoName);
        if (!Drop(Store, Records, Questions::Ask(Names)))
            return;
    } while (Store.UndoReleased() < Store.UndoCount());
}

} // namespace quoril
