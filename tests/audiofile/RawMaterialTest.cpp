// Raw files that sox and ffmpeg make, and ours, read by them.
#include "audiofile/OpenSaveClass.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include "ScriptedDialogs.h"
#include "SoundTools.h"

#include <gmock/gmock.h>

namespace quoril {
namespace {

using test::Samples;

TEST(RawMaterial, FilesOfSoxAndFfmpegHaveTheirSamplesAndOursAreReadByThem) {
    const test::TestSession Session;
    const test::ScriptedMessages Messages;
    test::ScriptedRaw Dialog;
    FileMemoClass Store;
    for (const test::SampleForm& Form : test::SampleForms) {
        SCOPED_TRACE(test::NameOf(Form));
        const std::string Sound = Session.Path("sound.wav");
        const std::string Made = Session.Path("made.raw");
        ASSERT_NO_FATAL_FAILURE(
            test::MakeBySox(Sound, Form.Channels, 44100, {"-b", std::to_string(Form.Bits)}));
        for (const Samples& Expected : {test::ReadBySox(Sound, Form.Bits, Made),
                                        test::ReadByFfmpeg(Sound, Form.Bits, Made)}) {
            ASSERT_FALSE(Expected.empty());
            Dialog.Answer(Form.Channels, Form.Bits);
            bool Result = false;
            OpenSaveClass().FileLoadRaw(Store, Made, Result);
            ASSERT_TRUE(Result);
            EXPECT_TRUE(test::LeftOf(Store) ==
                        (Form.Channels == 2 ? test::EveryOther(Expected, 0) : Expected));
            const std::string Ours = Session.Path("ours.raw");
            ASSERT_TRUE(OpenSaveClass().FileWriteRaw(Store, Ours));
            const std::string Wav = Session.Path("back.wav");
            ASSERT_NO_FATAL_FAILURE(test::RunTool(
                {"sox", "-D", "-t", "raw", "-L", "-r", "44100", "-c", std::to_string(Form.Channels),
                 "-e", Form.Bits == 8 ? "unsigned-integer" : "signed-integer", "-b",
                 std::to_string(Form.Bits), Ours, Wav}));
            EXPECT_TRUE(test::ReadBySox(Wav, Form.Bits, Session.Path("back.raw")) == Expected);
        }
    }
    EXPECT_THAT(Messages.Texts(), ::testing::IsEmpty());
}

} // namespace
} // namespace quoril
