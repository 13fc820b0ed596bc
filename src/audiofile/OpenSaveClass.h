// The readers and writers of audio files.
#pragma once

#include "storage/FileMemoClass.h"

#include <cstdint>
#include <string>

namespace quoril {

/// Reads audio files into the store and writes them out of it. Made where it is needed. Everything
/// that goes wrong is told to the user by the operations themselves.
class OpenSaveClass {
  public:
    /// Takes MemoryBudget as it is: the chunk length of all readers and writers follows from it.
    OpenSaveClass();

    /// Opens a WAV file in place: PCM samples stay in the file, u-law is decoded. `Result` tells
    /// whether the file is in the store. From the check of the rate on, the old document is gone.
    void FileLoadWave(FileMemoClass& Store, const std::string& FileName, bool& Result);
    /// Writes the whole document with a canonical 44-byte header. False when the user was told
    /// that it could not be written.
    bool FileWriteWave(FileMemoClass& Store, const std::string& FileName);
    /// Writes frames `FromPos` to `ToPos`, both included; `WorkChn` 0 both, 1 left, 2 right.
    bool FileWriteWavePart(FileMemoClass& Store, std::int32_t FromPos, std::int32_t ToPos,
                           std::int32_t WorkChn, const std::string& FileName);

    /// Opens a Sun/NeXT file: its samples are decoded into memory. The old document stays until all
    /// checks are passed.
    void FileLoadAuSnd(FileMemoClass& Store, const std::string& FileName, bool& Result);
    /// Writes the document, or a part of it, as a Sun/NeXT file. The first time it asks for the
    /// mode of 16-bit samples. False when the user was told that it could not be written.
    bool FileWriteAuSnd(FileMemoClass& Store, const std::string& FileName);
    bool FileWriteAuSndPart(FileMemoClass& Store, std::int32_t FromPos, std::int32_t ToPos,
                            std::int32_t WorkChn, const std::string& FileName);

    /// Opens a file without a header, in the format that the user states; decoded into memory.
    void FileLoadRaw(FileMemoClass& Store, const std::string& FileName, bool& Result);
    /// Writes the samples and nothing else. False when the user was told that this failed.
    bool FileWriteRaw(FileMemoClass& Store, const std::string& FileName);
    bool FileWriteRawPart(FileMemoClass& Store, std::int32_t FromPos, std::int32_t ToPos,
                          std::int32_t WorkChn, const std::string& FileName);

    /// Opens an MP3 file by its decoder, in a WAV file of the session that goes with its last
    /// block. False also when the user cancelled or ended the decoder.
    void FileLoadMp3(FileMemoClass& Store, const std::string& FileName, bool& Result);
    /// Writes the document, or a part of it, by the MP3 encoder. With `UsePrevPrm` the parameters
    /// of the last time are taken where they fit. False when the file was not written: the user was
    /// told, or wanted that.
    bool FileWriteMp3(FileMemoClass& Store, const std::string& FileName, bool UsePrevPrm);
    bool FileWriteMp3Part(FileMemoClass& Store, std::int32_t FromPos, std::int32_t ToPos,
                          std::int32_t WorkChn, const std::string& FileName);
    /// Encodes a WAV file that exists, and deletes it.
    bool ConvertWaveFileToMp3File(const std::string& WavFileName1, const std::string& Mp3FileName1,
                                  bool UsePrevPrm);
    /// Exports the document by the WMA encoder; false as for MP3. Throws Failure when the encoder
    /// failed; a file that was there is unchanged then.
    bool FileWriteWma(FileMemoClass& Store, const std::string& FileName);

    std::int32_t FileBlockLength; ///< samples; the unit in which files are cut and written
};

/// The write mode of Sun/NeXT files that was chosen last: 0 not asked yet, 1 u-law, 2 8-bit,
/// 3 16-bit, as the header has them. Forgotten at every load and at every WAV write.
extern std::int32_t AuWriteMode;

/// Who is told the command line of an export to WMA before it runs; null for nobody.
void SetCommandLineRoutine(void (*Routine)(const std::string& Shown)) noexcept;

} // namespace quoril
