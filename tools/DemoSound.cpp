// Makes the demonstration sound: demo-sound FILE writes a WAV file of 12 seconds, 44100 Hz,
// stereo, 16 bits. It holds what an editor of waveforms shows well: single plucked notes that move
// from left to right, a sweep through five octaves, a true silence, and a chord that fades out.
// Each run makes the same file.
#include "base/Arithmetic.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <numbers>
#include <numeric>
#include <span>
#include <string>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace {

using namespace quoril;

constexpr std::int32_t Rate = 44100;
constexpr std::size_t Frames = 12 * static_cast<std::size_t>(Rate);
constexpr double Peak = 0.85 * 32767.0; // loudest sample of the file

struct Stereo {
    std::vector<double> Left = std::vector<double>(Frames, 0.0);
    std::vector<double> Right = std::vector<double>(Frames, 0.0);

    /// Adds one value at a frame; `Place` is 0 for the left side, 1 for the right. The loudness is
    /// the same at every place.
    void Add(std::size_t Frame, double Value, double Place) {
        const double Angle = Place * std::numbers::pi / 2.0;
        Left[Frame] += Value * std::cos(Angle);
        Right[Frame] += Value * std::sin(Angle);
    }
};

std::size_t FrameAt(double Seconds) {
    return static_cast<std::size_t>(RoundToLong(Seconds * Rate));
}

/// White noise from -1 to 1, the same in every run.
class Noise {
  public:
    explicit Noise(std::uint32_t Seed) : State(Seed) {}
    double Next() {
        State ^= State << 13;
        State ^= State >> 17;
        State ^= State << 5;
        return State / 2147483648.0 - 1.0;
    }

  private:
    std::uint32_t State;
};

/// A plucked string (Karplus and Strong): a burst of noise goes round in a delay line as long as
/// one period, and loses its high frequencies on every round. `Keeps` is how much of the rest
/// stays.
void Pluck(Stereo& Sound, double Start, double End, double Hertz, double Keeps, double Place) {
    constexpr double Loudness = 0.5;
    Noise Burst(static_cast<std::uint32_t>(RoundToLong(Hertz * 1000.0)));
    std::vector<double> Line(static_cast<std::size_t>(RoundToLong(Rate / Hertz - 0.5)));
    double Smooth = 0.0; // a softer burst sounds like a finger, a hard one like a plectrum
    for (double& Value : Line) {
        Smooth = 0.4 * Smooth + 0.6 * Burst.Next();
        Value = Smooth;
    }
    // A string has no offset of its own; the delay line would keep one for long.
    const double Mean =
        std::accumulate(Line.begin(), Line.end(), 0.0) / static_cast<double>(Line.size());
    for (double& Value : Line)
        Value -= Mean;
    std::size_t At = 0;
    for (std::size_t Frame = FrameAt(Start); Frame < FrameAt(End); ++Frame) {
        const std::size_t Next = At + 1 == Line.size() ? 0 : At + 1;
        Sound.Add(Frame, Loudness * Line[At], Place);
        Line[At] = Keeps / 2.0 * (Line[At] + Line[Next]);
        At = Next;
    }
}

/// A sine whose pitch rises by the same interval in each second, swelling and dying away, from
/// the left side to the right.
void Sweep(Stereo& Sound, double Start, double End, double FromHertz, double ToHertz,
           double Loudness) {
    const std::size_t First = FrameAt(Start);
    const std::size_t Count = FrameAt(End) - First;
    double Phase = 0.0;
    for (std::size_t Index = 0; Index < Count; ++Index) {
        const double Done = static_cast<double>(Index) / static_cast<double>(Count);
        const double Swell = std::sin(std::numbers::pi * Done);
        Sound.Add(First + Index, Loudness * Swell * std::sin(Phase), Done);
        Phase += 2.0 * std::numbers::pi * FromHertz * std::pow(ToHertz / FromHertz, Done) / Rate;
    }
}

/// Lets both channels die away to nothing.
void Fade(Stereo& Sound, double Start, double End) {
    const std::size_t First = FrameAt(Start);
    const std::size_t Count = FrameAt(End) - First;
    for (std::size_t Index = 0; Index < Count; ++Index) {
        const double Left = 1.0 - static_cast<double>(Index + 1) / static_cast<double>(Count);
        Sound.Left[First + Index] *= Left * Left;
        Sound.Right[First + Index] *= Left * Left;
    }
}

Stereo Compose() {
    Stereo Sound;
    constexpr std::array<double, 7> Melody = {164.81, 220.0, 261.63, 329.63, 440.0, 392.0, 329.63};
    for (std::size_t Note = 0; Note < Melody.size(); ++Note) {
        const double Start = 0.1 + 0.7 * static_cast<double>(Note);
        Pluck(Sound, Start, 5.5, Melody[Note], 0.992, 0.2 + 0.1 * static_cast<double>(Note));
    }
    Fade(Sound, 5.1, 5.5);
    Sweep(Sound, 5.6, 8.2, 110.0, 3520.0, 0.4);
    // From 8.2 to 8.9 seconds there is nothing at all.
    constexpr std::array<double, 4> Chord = {110.0, 164.81, 277.18, 440.0};
    for (std::size_t Note = 0; Note < Chord.size(); ++Note)
        Pluck(Sound, 8.9 + 0.04 * static_cast<double>(Note), 12.0, Chord[Note], 0.999,
              0.35 + 0.1 * static_cast<double>(Note));
    Fade(Sound, 10.0, 12.0);
    return Sound;
}

void PutNumber(std::string& Out, std::uint32_t Value, int Bytes) {
    for (int Byte = 0; Byte < Bytes; ++Byte)
        Out.push_back(static_cast<char>(Value >> (8 * Byte) & 0xFFU));
}

std::string WavHeader(std::uint32_t DataBytes) {
    constexpr std::uint32_t Channels = 2;
    constexpr std::uint32_t FrameBytes = 4;
    std::string Out = "RIFF";
    PutNumber(Out, 36 + DataBytes, 4);
    Out += "WAVEfmt ";
    PutNumber(Out, 16, 4);
    PutNumber(Out, 1, 2); // plain samples
    PutNumber(Out, Channels, 2);
    PutNumber(Out, Rate, 4);
    PutNumber(Out, Rate * FrameBytes, 4);
    PutNumber(Out, FrameBytes, 2);
    PutNumber(Out, 16, 2);
    Out += "data";
    PutNumber(Out, DataBytes, 4);
    return Out;
}

std::string WavFile(const Stereo& Sound) {
    double Loudest = 0.0;
    for (std::size_t Frame = 0; Frame < Frames; ++Frame)
        Loudest = std::max({Loudest, std::abs(Sound.Left[Frame]), std::abs(Sound.Right[Frame])});
    std::string Out = WavHeader(static_cast<std::uint32_t>(Frames * 4));
    Out.reserve(Out.size() + Frames * 4);
    for (std::size_t Frame = 0; Frame < Frames; ++Frame)
        for (const double Value : {Sound.Left[Frame], Sound.Right[Frame]})
            PutNumber(Out, static_cast<std::uint32_t>(RoundToLong(Value / Loudest * Peak)), 2);
    return Out;
}

/// Writes beside the file and renames, so that nobody ever opens half a file.
void WriteWhole(const std::string& FileName, const std::string& Bytes) {
    const std::string Beside = FileName + "." + std::to_string(::getpid());
    std::ofstream Out(Beside, std::ios::binary);
    Out.write(Bytes.data(), static_cast<std::streamsize>(Bytes.size()));
    Out.close();
    if (!Out)
        throw Failure("cannot write " + Beside);
    std::filesystem::rename(Beside, FileName);
}

} // namespace

int main(int argc, char** argv) {
    const std::span<char*> Arguments(argv, static_cast<std::size_t>(argc));
    if (Arguments.size() != 2) {
        std::cerr << "Usage: demo-sound FILE\n";
        return EXIT_FAILURE;
    }
    try {
        WriteWhole(Arguments[1], WavFile(Compose()));
    } catch (const std::exception& Error) {
        std::cerr << "demo-sound: " << Error.what() << "\n";
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
