// Tools that make and read sound files, for tests that compare with them.
#pragma once

#include "audiofile/WavMaker.h"

#include <string>
#include <vector>

namespace quoril::test {

/// Runs a tool; a missing or failing tool fails the test.
void RunTool(const std::vector<std::string>& Arguments);

/// The samples of raw bytes: 16-bit words, or bytes with 128 taken off.
[[nodiscard]] Samples SamplesOf(const Bytes& Raw, std::int32_t Bits);

/// The interleaved samples that a tool reads in a file, which it writes as `Raw` first.
[[nodiscard]] Samples ReadBySox(const std::string& Path, std::int32_t Bits, const std::string& Raw);
[[nodiscard]] Samples ReadByFfmpeg(const std::string& Path, std::int32_t Bits,
                                   const std::string& Raw);

/// Noise in the left channel and a tone in the right one, 0.311 seconds of it.
void MakeBySox(const std::string& Path, std::int32_t Channels, std::int32_t Rate,
               const std::vector<std::string>& Form);
void MakeByFfmpeg(const std::string& Path, std::int32_t Channels, std::int32_t Rate,
                  const std::string& Codec, const std::vector<std::string>& More = {});

} // namespace quoril::test
