#include "edit/ClipDescription.h"

#include "base/Arithmetic.h"
#include "base/Failure.h"
#include "platform/FileHandle.h"
#include "platform/FileSystem.h"
#include "storage/PackedText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <map>
#include <optional>
#include <utility>

namespace quoril {

namespace {

static_assert(std::endian::native == std::endian::little, "words go to the file as they lie");

constexpr std::size_t WordBytes = sizeof(std::int32_t);

/// A file's identity among words: four numbers, the low half of each first.
using IdentityWords = std::array<std::int32_t, 8>;

[[noreturn]] void FailDamaged() {
    throw Failure("The description of the copied sound is damaged");
}

/// Whether a file that nobody told about was written after its samples were described. Times that
/// lie within the coarsest step of a file system, or ahead of the clock, tell nothing.
bool WrittenSince(const FileIdentity& Now, std::int64_t DescribedNs) {
    constexpr std::int64_t CoarsestStepNs = 2000000000;
    return Now.ChangedNs > DescribedNs + CoarsestStepNs && Now.ChangedNs <= NowNs();
}

/// Whether an original file is another one than at the moment of the copy, or holds other samples.
bool ChangedSince(const std::string& FileName, const ClipMoment& Copied) {
    const FileIdentity Now = IdentityOfFile(FileName);
    const auto Then = std::ranges::find(Copied.Files, FileName, &EnteredFile::Name);
    return Then != Copied.Files.end() ? Then->Identity != Now : WrittenSince(Now, Copied.WrittenNs);
}

/// Sizes of files, each asked once.
class FileSizes {
  public:
    explicit FileSizes(const ClipMoment& When) : Copied(When) {}
    [[nodiscard]] std::int64_t Of(const PortableBlock& Block) {
        const auto Found = Sizes.find(Block.Name);
        if (Found != Sizes.end())
            return Found->second;
        const std::int64_t Bytes = FileForReading(Block.Name).Length();
        // Working files grow, and keep what was written.
        if (Block.Kind == BlockOrgFile && ChangedSince(Block.Name, Copied))
            throw Failure("This file was changed after its sound was copied\n" + Block.Name);
        Sizes.emplace(Block.Name, Bytes);
        return Bytes;
    }

  private:
    const ClipMoment& Copied;
    std::map<std::string, std::int64_t> Sizes;
};

void CheckInFile(const PortableBlock& Block, FileSizes& Sizes) {
    const bool Original = Block.Kind == BlockOrgFile;
    const std::int64_t SampleBytes = Original ? Block.Bits / 8 : 2;
    const std::int64_t Step = Original ? SampleBytes * Block.Channels : 2;
    const std::int64_t End =
        Block.FilePos - 1 + (std::int64_t{Block.Length} - 1) * Step + SampleBytes;
    if (Block.Length > 0 && End > Sizes.Of(Block))
        FailDamaged();
}

} // namespace

std::string ClipDescriptionName(const std::string& Folder, std::int32_t Channel) {
    return Folder + (Channel == 2 ? "/InfoRight.dat" : "/InfoLeft.dat");
}

std::string ClipFilesName(const std::string& Folder) {
    return Folder + "/InfoFiles.dat";
}

void ClipDescriptionWrite(const std::string& FileName, const std::vector<std::int32_t>& Words) {
    // Emptying a file that was just written can wait for the disk; making another one does not, and
    // whoever still reads the old one reads it to its end. A link is not followed.
    (void)DeleteFileAnyway(FileName);
    FileForWriting File(FileName, FileForWriting::Mode::CreateNew);
    File.Write(0, Words.data(), Words.size() * WordBytes);
    File.Close();
}

std::vector<std::int32_t> ClipDescriptionRead(const std::string& FileName) {
    const FileForReading File(FileName);
    std::int32_t LastIndex = 0;
    File.Read(0, &LastIndex, WordBytes);
    const std::int64_t Count = std::int64_t{LastIndex} + 1;
    if (LastIndex < 0 || Count * static_cast<std::int64_t>(WordBytes) > File.Length())
        FailDamaged();
    std::vector<std::int32_t> Words(static_cast<std::size_t>(Count));
    File.Read(0, Words.data(), Words.size() * WordBytes);
    return Words;
}

void ClipFilesWrite(const std::string& FileName, const std::vector<EnteredFile>& Files) {
    std::vector<std::int32_t> Words = {0, static_cast<std::int32_t>(Files.size())};
    for (const EnteredFile& Each : Files) {
        PackedTextPut(Each.Name, Words);
        const auto Numbers = std::bit_cast<IdentityWords>(Each.Identity);
        Words.insert(Words.end(), Numbers.begin(), Numbers.end());
    }
    Words[0] = static_cast<std::int32_t>(Words.size()) - 1;
    ClipDescriptionWrite(FileName, Words);
}

ClipMoment ClipMomentRead(const std::string& Folder) {
    ClipMoment Moment{IdentityOfFile(ClipDescriptionName(Folder, 1)).ChangedNs, {}};
    if (!FileExists(ClipFilesName(Folder)))
        return Moment;
    const std::vector<std::int32_t> Words = ClipDescriptionRead(ClipFilesName(Folder));
    std::size_t At = 2;
    while (At < Words.size()) {
        const std::optional<std::string> Name = PackedTextTake(Words, At);
        IdentityWords Numbers;
        if (!Name || Words.size() - At < Numbers.size())
            FailDamaged();
        std::copy_n(Words.begin() + static_cast<std::ptrdiff_t>(At), Numbers.size(),
                    Numbers.begin());
        At += Numbers.size();
        Moment.Files.push_back({*Name, std::bit_cast<FileIdentity>(Numbers)});
    }
    return Moment;
}

void ClipDescriptionCheck(const std::vector<std::int32_t>& Words, std::int32_t Length,
                          const ClipMoment& Copied) {
    if (Words.size() == 1) // what stands there for the right channel of a clip that has none
        FailDamaged();
    FileSizes Sizes(Copied);
    std::vector<std::pair<std::int32_t, std::int32_t>> Places; // start and length
    std::int64_t Sum = 0;
    for (PortableBlockReader Reader(Words); !Reader.AtEnd();) {
        const PortableBlock Block = Reader.NextBlock();
        if (Block.Kind == BlockWorkFile || Block.Kind == BlockOrgFile)
            CheckInFile(Block, Sizes);
        else if (Block.Kind != BlockSilence)
            FailDamaged();
        if (Block.Length > 0)
            Places.emplace_back(Block.Start, Block.Length);
        Sum += Block.Length;
    }
    std::ranges::sort(Places);
    std::int64_t Free = 1;
    for (const auto& [Start, BlockLength] : Places) {
        if (Start != Free)
            FailDamaged();
        Free = std::int64_t{Start} + BlockLength;
    }
    if (Sum > 2147483647 || (Length != 0 && Sum != Length))
        FailDamaged();
}

void ClipDescriptionImport(const std::vector<std::int32_t>& WordsL,
                           const std::vector<std::int32_t>& WordsR, BlockSet& BlocksL,
                           BlockSet& BlocksR) {
    if (WordsR.empty())
        LongsToBlockSet(WordsL, BlocksL, true);
    else
        ForeignLongsToBlockSets(WordsL, WordsR, BlocksL, BlocksR);
}

} // namespace quoril
