#include "platform/FileHandle.h"
#include "base/Failure.h"
#include "platform/FileSystem.h"
#include "platform/SampleMemory.h"
#include "support/TestSession.h"

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quoril::test {
namespace {

using ::testing::HasSubstr;

std::string WordsOf(const std::function<void()>& What) {
    try {
        What();
    } catch (const Failure& Error) {
        return Error.what();
    }
    return "no failure";
}

TEST(FileHandle, WhatIsNoPlainFileIsRefusedAtOnce) {
    const TestSession Session;
    ASSERT_EQ(::mkfifo(Session.Path("pipe").c_str(), 0600), 0);
    EXPECT_THAT(WordsOf([&] { FileForReading{Session.Path("pipe")}; }), HasSubstr("plain file"));
    EXPECT_THAT(WordsOf([&] { FileForReading{Session.Path("qw1")}; }), HasSubstr("directory"));
    EXPECT_THAT(WordsOf([&] { FileForReading{Session.Path("none")}; }),
                HasSubstr(Session.Path("none")));
}

TEST(FileHandle, WritingWaitsForNobodyToReadAPipe) {
    const TestSession Session;
    const std::string Pipe = Session.Path("pipe");
    ASSERT_EQ(::mkfifo(Pipe.c_str(), 0600), 0);
    ::alarm(20); // waiting would be for ever
    for (const auto How : {FileForWriting::Mode::CreateNew, FileForWriting::Mode::Existing})
        EXPECT_THAT(WordsOf([&] { FileForWriting(Pipe, How); }), HasSubstr(Pipe));
    const int Reader = ::open(Pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(Reader, 0);
    EXPECT_THAT(WordsOf([&] {
                    FileForWriting File(Pipe, FileForWriting::Mode::CreateNew);
                    File.Write(0, "abc", 3);
                }),
                HasSubstr(Pipe));
    ::close(Reader);
    ::alarm(0);
}

TEST(FileHandle, ReadingBehindTheEndFailsAndReadsNothingForeign) {
    const TestSession Session;
    const FileForReading File(Session.WriteFile("a", {1, 2, 3}));
    std::uint8_t Buff[4] = {9, 9, 9, 9};
    EXPECT_EQ(File.ReadSome(1, Buff, 4), 2U);
    EXPECT_EQ(Buff[0], 2);
    EXPECT_EQ(Buff[2], 9);
    EXPECT_THAT(WordsOf([&] { File.Read(0, Buff, 4); }), HasSubstr("shorter"));
}

TEST(FileHandle, AFileThatIsOpenForReadingIsNotDeletedByUs) {
    const TestSession Session;
    const std::string Name = Session.WriteFile("a", {1, 2, 3});
    FileForReading File(Name);
    EXPECT_FALSE(DeleteFileIfFree(Name));
    EXPECT_TRUE(FileExists(Name));
    File.Close();
    EXPECT_TRUE(DeleteFileIfFree(Name));
}

TEST(FileHandle, AFileThatAnotherHoldsForWritingIsRefused) {
    const TestSession Session;
    const std::string Name = Session.WriteFile("a", {1, 2, 3});
    const int Other = ::open(Name.c_str(), O_RDWR | O_CLOEXEC);
    struct flock Lock = {};
    Lock.l_type = F_WRLCK;
    Lock.l_whence = SEEK_SET;
    ASSERT_EQ(::fcntl(Other, F_OFD_SETLK, &Lock), 0);
    EXPECT_THAT(WordsOf([&] { FileForReading{Name}; }), HasSubstr("another program\n" + Name));
    ::close(Other);
    EXPECT_EQ(WordsOf([&] { FileForReading{Name}; }), "no failure");
}

TEST(FileHandle, AFileThatMayGrowNoFurtherFailsWithTheSystemsWords) {
    const TestSession Session;
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit Before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &Before), 0);
    const rlimit Small{1000, Before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &Small), 0);
    FileForWriting File(Session.Path("a"), FileForWriting::Mode::CreateNew);
    const std::vector<char> Bytes(2000);
    EXPECT_THAT(WordsOf([&] { File.Write(0, Bytes.data(), Bytes.size()); }),
                HasSubstr("File too large"));
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &Before), 0);
}

TEST(FileHandle, IdentityTellsAChange) {
    const TestSession Session;
    const std::string Name = Session.WriteFile("a", {1, 2, 3});
    const FileIdentity Before = IdentityOfFile(Name);
    EXPECT_EQ(IdentityOfFile(Name), Before);
    Session.WriteFile("a", {1, 2, 3, 4});
    EXPECT_NE(IdentityOfFile(Name), Before);
    ASSERT_TRUE(DeleteFileIfFree(Name));
    Session.WriteFile("b", {1, 2, 3});
    Session.WriteFile("a", {1, 2, 3});
    EXPECT_NE(IdentityOfFile(Name), Before);
}

TEST(SampleMemory, IsZeroWhenAskedAlsoWhenUsedBefore) {
    for (const std::int32_t Count : {0, 1, 100, 200000, 3000000}) {
        for (int Round = 0; Round < 3; ++Round) {
            std::int16_t* const Samples = SampleMemoryTake(Count, true);
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(Samples) % 64, 0U);
            EXPECT_TRUE(std::all_of(Samples, Samples + Count, [](auto One) { return One == 0; }));
            std::fill_n(Samples, Count, std::int16_t{-1});
            SampleMemoryGive(Samples, Count);
        }
    }
    EXPECT_EQ(SampleMemoryInUse(), 0);
    SampleMemoryTrim();
}

} // namespace
} // namespace quoril::test
