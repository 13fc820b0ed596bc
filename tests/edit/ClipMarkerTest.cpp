#include "edit/ClipMarker.h"

#include <gtest/gtest.h>

namespace quoril::test {

namespace {

ClipMarker Example() {
    ClipMarker Marker;
    Marker.Channels = 2;
    Marker.Length = 1000;
    Marker.Bits = 8;
    Marker.Freq = 44100;
    Marker.ClipPointer = 12345;
    Marker.Folder = "/home/me/sounds";
    return Marker;
}

TEST(ClipMarkerTest, TheLineHasSevenFieldsWithoutBlanks) {
    EXPECT_EQ(ClipMarkerLine(Example()),
              "QuorilWaveEditorClip,2,1000,8,44100,ClipPointer:12345,/home/me/sounds");
}

TEST(ClipMarkerTest, ALineIsReadBack) {
    const auto Read = ClipMarkerRead(ClipMarkerLine(Example()));
    ASSERT_TRUE(Read.has_value());
    EXPECT_EQ(Read->Channels, 2);
    EXPECT_EQ(Read->Length, 1000);
    EXPECT_EQ(Read->Bits, 8);
    EXPECT_EQ(Read->Freq, 44100);
    EXPECT_EQ(Read->FreqText, "44100");
    EXPECT_EQ(Read->ClipPointer, 12345);
    EXPECT_EQ(Read->Folder, "/home/me/sounds");
}

TEST(ClipMarkerTest, AFolderWithACommaMakesALineThatIsNone) {
    ClipMarker Marker = Example();
    Marker.Folder = "/home/me/rock, pop";
    EXPECT_FALSE(ClipMarkerRead(ClipMarkerLine(Marker)).has_value());
}

TEST(ClipMarkerTest, OtherTextsAndWrongFieldsAreNoMarker) {
    for (const char* Text :
         {"", "hello", ",,,,,,", "QuorilWaveEditorClip", "QuorilWaveEditorClip,1,10,16,8000,x",
          "quorilwaveeditorclip,1,10,16,8000,ClipPointer:1,/tmp",
          "QuorilWaveEditorClip,1,0,16,8000,ClipPointer:1,/tmp",
          "QuorilWaveEditorClip,1,-5,16,8000,ClipPointer:1,/tmp",
          "QuorilWaveEditorClip,1,99999999999,16,8000,ClipPointer:1,/tmp",
          "QuorilWaveEditorClip,0,10,16,8000,ClipPointer:1,/tmp",
          "QuorilWaveEditorClip,3,10,16,8000,ClipPointer:1,/tmp",
          "QuorilWaveEditorClip,1,10,16,8000,ClipPointer:1,/tmp,more"})
        EXPECT_FALSE(ClipMarkerRead(Text).has_value()) << Text;
}

TEST(ClipMarkerTest, ATextOfAnyLengthAndOfAnyBytesIsNoMarker) {
    std::string Line = ClipMarkerLine(Example());
    EXPECT_FALSE(ClipMarkerRead(Line + '\0').has_value());
    EXPECT_FALSE(ClipMarkerRead(Line + std::string(100000000, 'x')).has_value());
    EXPECT_FALSE(ClipMarkerRead(std::string(1000000, ',')).has_value());
    ClipMarker Marker = Example();
    Marker.Folder = std::string(4095, 'x'); // the longest that the system takes
    EXPECT_TRUE(ClipMarkerRead(ClipMarkerLine(Marker)).has_value());
}

TEST(ClipMarkerTest, AFieldWithoutANumberOfTheClipGives0) {
    for (const char* Field :
         {"", "ClipPointer", "ClipPointer:", "ClipPointer:abc", "ClipPointer:99999999999"}) {
        const auto Read =
            ClipMarkerRead(std::string("QuorilWaveEditorClip,1,10,16,8000,") + Field + ",/tmp");
        ASSERT_TRUE(Read.has_value()) << Field;
        EXPECT_EQ(Read->ClipPointer, 0) << Field;
    }
}

} // namespace

} // namespace quoril::test
