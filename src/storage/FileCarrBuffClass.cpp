#include "storage/FileCarrBuffClass.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "platform/FileHandle.h"
#include "platform/FileSystem.h"
#include "settings/STD1.h"
#include "storage/WoroFileBlockMod.h"

#include <algorithm>
#include <utility>

namespace quoril {

namespace {

void OutOfLimit() {
    MsgBox("Out of limit - Error");
}

std::int64_t BytesBefore(std::int64_t Samples) {
    return Samples * 2;
}

} // namespace

FileCarrBuffClass::FileCarrBuffClass() : Window(1), LongestWindow(BudgetShare(262144)) {}

FileCarrBuffClass::~FileCarrBuffClass() {
    FileDrop();
}

void FileCarrBuffClass::FileDrop() noexcept {
    if (std::exchange(FileMade, false))
        (void)FileDelete(FileName);
}

void FileCarrBuffClass::NameMake() {
    std::int32_t Number = SecondsSinceMidnight();
    do {
        ++Number;
        FileName = SessionDir + "/tm" + std::to_string(Number) + ".tmp";
    } while (FileThere(FileName));
}

void FileCarrBuffClass::FileMakeIfNone() {
    if (FileMade)
        return;
    if (FileName.empty())
        NameMake();
    // The name may have been reserved for long, and another may bear it by now.
    while (!MakeNewFile(FileName))
        NameMake();
    FileMade = true;
    try {
        const std::int32_t Samples = std::max(WaveINos, 1);
        FileForWriting File(FileName, FileForWriting::Mode::Existing);
        File.SetLength(BytesBefore(Samples));
        File.Close();
        WaveINos = Samples;
    } catch (...) {
        FileDrop();
        throw;
    }
}

void FileCarrBuffClass::Flush() {
    if (!WindowDirty)
        return;
    FileForWriting File(FileName, FileForWriting::Mode::Existing);
    File.Write(BytesBefore(ZeroPtr), Window.data() + 1,
               static_cast<std::size_t>(BytesBefore(WindowLen)));
    File.Close();
    WindowDirty = false;
}

void FileCarrBuffClass::BuffLength(std::int32_t NewSz) {
    if (NewSz < 1) {
        OutOfLimit();
        return;
    }
    MovePointer(0, NewSz);
}

void FileCarrBuffClass::MovePointer(std::int32_t NewZeroPtr, std::int32_t NewRange) {
    FileMakeIfNone();
    Flush();
    if (NewRange != 0)
        LongestWindow = NewRange;
    const std::int32_t Length = std::max(0, std::min(LongestWindow, WaveINos - NewZeroPtr));
    // Until the new samples are read the window is empty, so that a failure leaves no wrong ones.
    WindowLen = 0;
    ZeroPtr = NewZeroPtr;
    Window.resize(static_cast<std::size_t>(Length) + 1);
    if (Length > 0)
        FileForReading(FileName).Read(BytesBefore(ZeroPtr), Window.data() + 1,
                                      static_cast<std::size_t>(BytesBefore(Length)));
    WindowLen = Length;
}

void FileCarrBuffClass::ReDimSize(std::int32_t NewSz, bool DoInitilize) {
    FileMakeIfNone();
    if (NewSz <= WaveINos) {
        if (NewSz <= ZeroPtr)
            WindowDirty = false; // what is cut off need not reach the file, which may have no room
        if (std::int64_t{ZeroPtr} + WindowLen > NewSz)
            MovePointer(0, 0);
        FileForWriting File(FileName, FileForWriting::Mode::Existing);
        File.SetLength(BytesBefore(NewSz));
        File.Close();
        WaveINos = NewSz;
        // The window was filled from the longer file.
        WindowLen = std::max(0, std::min(WindowLen, NewSz - ZeroPtr));
        return;
    }
    FileForWriting File(FileName, FileForWriting::Mode::Existing);
    if (DoInitilize) {
        const std::vector<std::int16_t> Zeros(static_cast<std::size_t>(LongestWindow));
        for (std::int64_t Pos = WaveINos; Pos < NewSz; Pos += LongestWindow)
            File.Write(BytesBefore(Pos), Zeros.data(),
                       static_cast<std::size_t>(
                           BytesBefore(std::min<std::int64_t>(LongestWindow, NewSz - Pos))));
    } else {
        constexpr std::int16_t Zero = 0;
        File.Write(BytesBefore(NewSz - 1), &Zero, sizeof Zero);
    }
    File.Close();
    WaveINos = NewSz;
}

void FileCarrBuffClass::FileRelease() {
    Flush();
    NameMake();
    FileMade = false;
    WindowLen = 0; // the window was a window on the file that is gone
}

std::string FileCarrBuffClass::FileName1() {
    Flush();
    return FileName;
}

void FileCarrBuffClass::FileName1(const std::string& NewName) {
    FileDrop();
    WaveINos = 0;
    WindowDirty = false;
    WindowLen = 0;
    ZeroPtr = 0;
    const bool Exists = FileThere(NewName);
    FileMade = FileNameUseItNotCopy && Exists;
    FileName = FileMade ? NewName : std::string();
    if (!FileNameUseItNotCopy) {
        FileMakeIfNone();
        if (Exists)
            CopyFileContents(NewName, FileName);
    }
    if (!Exists)
        return;
    WaveINos = ToLong(IdentityOfFile(FileName).Bytes / 2);
    if (WaveINos > 0)
        MovePointer(0, 0);
}

void FileCarrBuffClass::BuffPut(std::int32_t WavPos, const std::vector<std::int16_t>& PutData) {
    const auto Count = static_cast<std::int64_t>(PutData.size()) - 1;
    if (Count < 1)
        return;
    if (WavPos < 1 || Count > LongestWindow) {
        OutOfLimit();
        return;
    }
    const std::int32_t End = ToLong(WavPos + Count - 1);
    if (End > WaveINos)
        ReDimSize(End, false);
    if (WavPos <= ZeroPtr || End > ZeroPtr + WindowLen)
        MovePointer(WavPos - 1, 0);
    std::copy(PutData.begin() + 1, PutData.end(), Window.begin() + (WavPos - ZeroPtr));
    WindowDirty = true;
}

void FileCarrBuffClass::BuffGet(std::int32_t WavPos, std::vector<std::int16_t>& GetData) {
    const auto Count = static_cast<std::int64_t>(GetData.size()) - 1;
    if (Count < 1)
        return;
    const std::int64_t End = WavPos + Count - 1;
    if (WavPos < 1 || Count > LongestWindow || End > WaveINos) {
        OutOfLimit();
        return;
    }
    if (WavPos <= ZeroPtr || End > ZeroPtr + WindowLen)
        MovePointer(WavPos - 1, 0);
    std::copy_n(Window.begin() + (WavPos - ZeroPtr), Count, GetData.begin() + 1);
}

std::int16_t* FileCarrBuffClass::Reach(std::int32_t WavPos) {
    if (WavPos == 0)
        return &ZeroSample;
    if (WavPos < 1 || WavPos > WaveINos) {
        OutOfLimit();
        return nullptr;
    }
    if (WavPos <= ZeroPtr || WavPos > ZeroPtr + WindowLen)
        MovePointer(WavPos - 1, 0);
    return &Window[static_cast<std::size_t>(WavPos - ZeroPtr)];
}

std::int16_t FileCarrBuffClass::WaveLR(std::int32_t WavPos) {
    const std::int16_t* const Place = Reach(WavPos);
    return Place == nullptr ? std::int16_t{0} : *Place;
}

void FileCarrBuffClass::WaveLR(std::int32_t WavPos, std::int16_t Sample) {
    std::int16_t* const Place = Reach(WavPos);
    if (Place == nullptr)
        return;
    *Place = Sample;
    WindowDirty = WindowDirty || WavPos != 0;
}

} // namespace quoril
