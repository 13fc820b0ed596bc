// What must hold of the block table at any time, and blocks and files for tests.
#pragma once

#include "storage/FileMemoClass.h"
#include "support/TestSession.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quoril::test {

/// The first rule of the block table that does not hold, in words; empty when all hold.
/// `Lists` are all lists of blocks there are: every block stands in exactly one.
[[nodiscard]] std::string BrokenRule(const std::vector<const BlockSet*>& Lists);
/// The same for a document and the carriers of a test.
[[nodiscard]] std::string BrokenRule(const FileMemoClass& Store,
                                     const std::vector<const BlockCarrBuffClass*>& Carriers = {});

/// The value of sample `Position` in test material: no two neighbours alike, no short period.
[[nodiscard]] std::int16_t TestSample(std::int32_t Position, std::int32_t Channel = 1);
/// TestSample(From) to TestSample(To).
[[nodiscard]] std::vector<std::int16_t> TestSamples(std::int32_t From, std::int32_t To,
                                                    std::int32_t Channel = 1);

/// A memory block (kind 2) of TestSample(Start) and so on, placed at `Start`.
std::int32_t MemoryBlock(std::int32_t Length, std::int32_t Start = 1);
/// The same moved to a work file (kind 3).
std::int32_t WorkFileBlock(std::int32_t Length, std::int32_t Start = 1);
/// A headerless file of `Frames` frames of test material, 8 or 16 bits, 1 or 2 channels.
std::string RawFile(const TestSession& Session, const std::string& Name, std::int32_t Frames,
                    std::int32_t Channels, std::int32_t Bits);
/// A block of kind 4 over the whole of a channel (1 or 2) of such a file.
std::int32_t OrgBlock(std::int32_t OrgNo, std::int32_t Frames, std::int32_t Channel,
                      std::int32_t Start = 1);
/// A carrier of `Length` samples of test material in memory.
void CarrierFill(BlockCarrBuffClass& Carrier, std::int32_t Length, std::int32_t Channel = 1);
/// All samples of a block, read without moving it.
[[nodiscard]] std::vector<std::int16_t> BlockSamples(std::int32_t BlockNo);
/// All samples of a channel of the document, read for display.
[[nodiscard]] std::vector<std::int16_t> ChannelSamples(const FileMemoClass& Store,
                                                       std::int32_t Channel);
[[nodiscard]] inline const BlockRec& Block(std::int32_t BlockNo) {
    return BlockTable.at(static_cast<std::size_t>(BlockNo));
}

} // namespace quoril::test
