"""The format changed from the menu of the real window: what each change must make of a file is worked
out here, and compared with the bytes that the editor saves. And the sound that plays meanwhile."""

import math
import random
import struct
import unittest

from menu_steps import MenuSteps
from test_play import Listener, tone_file
from virtual_desktop import is_main_window, wait_until

FRAMES = 3000
BITS_QUESTION = "Changing Bit format"
RATE_QUESTION = "Changing Sampling rate (Frequency format)"
RATE_MESSAGE = "Change Sampling rate - failed"


class Sound:
    """Channels of whole numbers in the range of a depth."""

    def __init__(self, bits, rate, *channels):
        self.bits = bits
        self.rate = rate
        self.channels = channels

    def limited(self, value):
        top = 127 if self.bits == 8 else 32767
        return max(-top - 1, min(top, value))

    def wav_bytes(self):
        samples = [sample for frame in zip(*self.channels) for sample in frame]
        data = (bytes(sample + 128 for sample in samples) if self.bits == 8 else
                struct.pack(f"<{len(samples)}h", *samples))
        frame = len(self.channels) * self.bits // 8
        return (b"RIFF" + struct.pack("<I", 36 + len(data)) + b"WAVEfmt " +
                struct.pack("<IHHIIHH", 16, 1, len(self.channels), self.rate, self.rate * frame,
                            frame, self.bits) + b"data" + struct.pack("<I", len(data)) + data)

    # ---- What the commands make of it. `round` takes the nearest whole number, and of two the even

    def narrow(self):
        return Sound(8, self.rate, *([min(127, round(sample / 256)) for sample in channel]
                                     for channel in self.channels))

    def wide(self):
        return Sound(16, self.rate, *([256 * sample for sample in channel]
                                      for channel in self.channels))

    def merged(self):
        return Sound(self.bits, self.rate, [self.limited(round((left + right) * 0.666))
                                            for left, right in zip(*self.channels)])

    def only(self, channel):
        return Sound(self.bits, self.rate, self.channels[channel])

    def doubled(self):
        return Sound(self.bits, self.rate, *self.channels, *self.channels)

    def at_rate(self, rate):
        return Sound(self.bits, rate, *(self._walked(channel, 1 / (rate * 100 / self.rate / 100))
                                        for channel in self.channels))

    def _walked(self, signal, step):
        """A read position goes through the signal; at each place stands a curve between neighbours.
        The four samples that it is drawn through move on by one for each stretch between two
        samples that is read from."""
        made, position, first = [], 1.0, 1
        a, b, c, d = 0, signal[0], signal[0], signal[1]
        while first < len(signal) and position < len(signal):
            a, b, c, d = b, c, d, signal[min(first + 2, len(signal)) - 1]
            points = (b, b + (c - a) / 5, c + (b - d) / 5, c)
            while True:
                t = (100 - max(0, min(100, round((position - first) * 100)))) / 100
                u = 1 - t
                weights = (t**3, 3 * t**2 * u, 3 * t * u**2, u**3)
                value = points[0] * weights[0] + points[1] * weights[1] + \
                    points[2] * weights[2] + points[3] * weights[3]
                made.append(self.limited(round(value)))
                position += step
                if position > first + 1:
                    break
            if position > first + 2:
                first = min(math.floor(position) - 1, len(signal) - 2)
            first += 1
        return made + [0]


class Format(MenuSteps):
    def open(self, bits, rate=44100):
        choice = random.Random(bits)
        top = 127 if bits == 8 else 32767
        sound = Sound(bits, rate, *([choice.randint(-top - 1, top) for _ in range(FRAMES)]
                                    for _ in range(2)))
        self.open_sound(f"noise{bits}.wav", sound)
        return sound

    def bits(self, key):
        self.menu("alt+m", key)
        self.answer(BITS_QUESTION)

    def mono(self, *keys):
        self.menu("alt+m", "m")
        self.answer("Convert to Mono", *keys)

    def stereo(self):
        self.menu("alt+m", "s")
        self.answer("Convert to Stereo")

    def rate(self, key):
        self.menu("alt+m", "r", key)
        self.answer(RATE_QUESTION)

    def other_rate(self, rate):
        self.menu("alt+m", "r", "o")
        self.answer("Sampling rate", *str(rate))

    def has_rate(self, rate):
        """Waits until the document has that rate: a key is lost while a command is at work."""
        def is_saved():
            self.keys("ctrl+s")
            try:
                return self.file.read_bytes()[24:28] == struct.pack("<I", rate)
            except FileNotFoundError:
                return False
        wait_until(is_saved, f"a file with {rate} Hz")

    def test_bits_and_channels(self):
        sound = self.open(16)
        self.step(sound, sound.narrow(), lambda: self.bits("8"))
        self.step(sound, sound.merged(), self.mono)
        self.step(sound, sound.only(1), lambda: self.mono("alt+l"))
        self.step(sound, sound.only(0), lambda: self.mono("Up", "Up"))
        # One upon the other, and all taken back.
        self.mono("alt+m")
        self.bits("8")
        self.stereo()
        self.bits("1")
        steps = [sound, sound.merged()]
        steps += [steps[-1].narrow(), steps[-1].narrow().doubled()]
        self.saved(steps[-1].wide())
        for step in reversed(steps):
            self.keys("ctrl+z")
            self.saved(step)
        self.end()

    def test_rates(self):
        for bits in (16, 8):
            with self.subTest(bits=bits):
                sound = self.open(bits)
                self.step(sound, sound.at_rate(22050), lambda: self.rate("2"))
                self.step(sound, sound.at_rate(48000), lambda: self.rate("z"))
                self.step(sound, sound.at_rate(6000), lambda: self.other_rate(6000))
                def far_below():
                    self.other_rate(500)
                    self.answer(RATE_MESSAGE)
                self.step(sound, sound.at_rate(500), far_below)
                self.end()

    def paste(self, *questions):
        """Puts the clip over the whole sound, and answers what is asked behind the place."""
        self.keys("ctrl+a", "ctrl+v")
        self.answer("Confirm Selection [Paste Replace]")
        for title, *keys in questions:
            self.answer(title, *keys)

    def test_a_clip_goes_to_a_window_whose_format_has_changed(self):
        loud = self.open(16)
        self.bits("8")
        self.saved(loud.narrow())
        self.bits("1")
        sound = loud.narrow().wide() # a clip of it can go to 8 bits as it is
        self.saved(sound)
        self.keys("ctrl+a", "ctrl+c")
        self.answer("Wave samples placed in private ClipBoard")
        self.bits("8") # what was copied stays as it was
        self.saved(sound.narrow())
        first = self.editor, self.window
        other = self.open(8)
        self.step(other, sound.narrow(), self.paste)
        self.bits("1")
        self.saved(other.wide())
        self.step(other.wide(), sound, self.paste)
        self.rate("2")
        slow = other.wide().at_rate(22050)
        self.saved(slow)
        # The clip is longer than the sound now, and keeps its samples at the other rate.
        self.step(slow, Sound(16, 22050, *sound.channels),
                  lambda: self.paste(("Quoril Wave Editor", "Left")))
        self.desktop.close(first[1])
        self.assertEqual(first[0].wait(10), 1)
        self.end()

    def test_what_plays_goes_on_while_the_format_changes(self):
        self.file = tone_file(self.folder / "tone.wav", 60)
        self.editor, self.window = self.start_editor(self.file)
        listener = Listener(self.desktop)
        self.addCleanup(listener.stop)
        def hear(seconds):
            end = listener.count() + seconds * 44100
            wait_until(lambda: listener.count() > end, f"{seconds} seconds of sound")
        self.keys("space")
        wait_until(listener.hears_tone, "the tone")
        for change in (lambda: self.bits("8"), self.stereo, lambda: self.rate("2"), self.mono):
            change()
            hear(0.5)
            self.assertTrue(listener.hears_tone())
        self.keys("space")
        wait_until(listener.hears_nothing, "silence")
        # What plays now has the new format, and undo does not stop it either.
        self.keys("space")
        wait_until(listener.hears_tone, "the tone in its new format")
        for _ in range(4):
            self.keys("ctrl+z")
        hear(0.5)
        self.assertTrue(listener.hears_tone())
        self.keys("space")
        wait_until(listener.hears_nothing, "silence")
        # A rate that the sound server can play although it is told; and one that it can not.
        self.other_rate(500)
        self.answer(RATE_MESSAGE)
        self.has_rate(500)
        self.keys("space")
        wait_until(lambda: not listener.hears_nothing(), "something of the tone")
        self.keys("space")
        wait_until(listener.hears_nothing, "silence")
        self.keys("ctrl+z")
        self.other_rate(300000)
        self.answer(RATE_MESSAGE)
        self.has_rate(300000)
        self.keys("space")
        self.answer("Play failed")
        self.keys("ctrl+z")
        self.has_rate(44100)
        self.keys("space")
        wait_until(listener.hears_tone, "the tone after undo")
        self.assertEqual([window for window in self.desktop.windows(self.editor)
                          if not is_main_window(window)], [])
        self.end()


if __name__ == "__main__":
    unittest.main()
