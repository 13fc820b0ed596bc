"""test_demo_sound.py DEMO-SOUND: what the demonstration sound must be."""

import array
import subprocess
import sys
import tempfile
import unittest
import wave
from pathlib import Path

PROGRAM = sys.argv.pop()


class DemoSound(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = Path(folder.name)
        cls.file = cls.folder / "sound.wav"
        subprocess.run([PROGRAM, cls.file], check=True)
        with wave.open(str(cls.file)) as sound:
            cls.format = sound.getparams()
            samples = array.array("h", sound.readframes(sound.getnframes()))
        cls.channels = samples[0::2], samples[1::2]

    def test_it_is_twelve_seconds_of_stereo_at_44100_hz_and_16_bits(self):
        self.assertEqual(self.format[:4], (2, 2, 44100, 12 * 44100))

    def test_its_header_is_the_canonical_one_of_44_bytes(self):
        bytes = self.file.read_bytes()
        self.assertEqual(len(bytes), 44 + 12 * 44100 * 4)
        self.assertEqual(bytes[36:40], b"data")

    def test_it_is_loud_and_never_clips(self):
        loudest = max(max(map(abs, channel)) for channel in self.channels)
        self.assertGreater(loudest, 27000)
        self.assertLess(loudest, 28000)

    def test_it_holds_a_true_silence(self):
        for channel in self.channels:
            self.assertFalse(any(channel[round(8.25 * 44100):round(8.85 * 44100)]))

    def test_it_fades_to_nothing(self):
        for channel in self.channels:
            fade = [max(map(abs, channel[second * 22050:(second + 1) * 22050]))
                    for second in range(20, 24)]
            self.assertEqual(fade, sorted(fade, reverse=True))
            self.assertLess(fade[-1], fade[0] / 8)
            self.assertEqual(channel[-1], 0)

    def test_its_channels_differ(self):
        self.assertNotEqual(*self.channels)

    def test_each_run_makes_the_same_bytes_and_leaves_no_other_file(self):
        again = self.folder / "again" / "sound.wav"
        again.parent.mkdir()
        subprocess.run([PROGRAM, again], check=True)
        self.assertEqual(again.read_bytes(), self.file.read_bytes())
        self.assertEqual(list(again.parent.iterdir()), [again])

    def test_a_place_that_cannot_be_written_is_told(self):
        done = subprocess.run([PROGRAM, self.folder / "none" / "sound.wav"], capture_output=True,
                              text=True, check=False)
        self.assertEqual(done.returncode, 1)
        self.assertIn("cannot write", done.stderr)


if __name__ == "__main__":
    unittest.main()
