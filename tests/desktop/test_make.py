"""Tones, noise, the shortening of silence and drawing by hand in the real window. What each must make
of a file is worked out here, and compared with the bytes that the editor saves."""

import array
import math
import random
import struct
import unittest
import wave

from menu_steps import MenuSteps
from virtual_desktop import wait_until

RATE = 8000
TURN = 6.28318530717958


def typed(text):
    """The keys of a number."""
    return ["period" if letter == "." else letter for letter in text]


def tone(samples, amplitude, start, end):
    step, last = TURN / (RATE / start), TURN / (RATE / end)
    ratio = (last / step) ** (1 / samples)
    phase, made = 0.0, []
    for _ in range(samples):
        made.append(round(math.sin(phase) * amplitude))
        step *= ratio
        phase += step
        if phase > TURN:
            phase -= TURN
    return made


class Sound:
    """Channels of 16 bits."""

    def __init__(self, *channels):
        self.channels = channels

    def wav_bytes(self):
        count = len(self.channels)
        data = array.array("h", [sample for frame in zip(*self.channels)
                                 for sample in frame]).tobytes()
        return (b"RIFF" + struct.pack("<I", 36 + len(data)) + b"WAVEfmt " +
                struct.pack("<IHHIIHH", 16, 1, count, RATE, RATE * 2 * count, 2 * count, 16) +
                b"data" + struct.pack("<I", len(data)) + data)

    def modulated(self, start, end):
        with_tone = tone(len(self.channels[0]), 15000, start, end)
        return Sound(*([min(round(t / 15000 * sample), 32767)
                        for t, sample in zip(with_tone, channel)] for channel in self.channels))

    def without_silence(self, volume, duration, kept_of):
        """`kept_of(run)` tells how many samples of a quiet run remain."""
        frames = list(zip(*self.channels))
        threshold = round(volume / 100 * 32767)
        least = round(RATE * duration)
        kept, run = [], []
        def close():
            keep = kept_of(len(run))
            if len(run) >= least and len(run) > keep:
                first, last = run[0], run[-1]
                if keep > 0:
                    kept.extend(range(first, round(keep / 2 + first - 1) + 1))
                    kept.extend(range(round(last - keep / 2 + 1), last + 1))
            else:
                kept.extend(run)
            run.clear()
        for place, frame in enumerate(frames, 1):
            if all(abs(sample) < threshold for sample in frame):
                run.append(place)
            else:
                close()
                kept.append(place)
        close()
        return Sound(*([channel[place - 1] for place in kept] for channel in self.channels))


def speech(seed):
    """Loud and quiet stretches in turns."""
    choice = random.Random(seed)
    left, right = [], []
    for turn in range(24):
        top = 20000 if turn % 2 == 0 else 300
        for _ in range(choice.randint(200, 3000)):
            left.append(choice.randint(-top, top))
            right.append(choice.randint(-top, top))
    return Sound(left, right)


class Make(MenuSteps):
    def frequencies(self, *keys):
        self.answer("Enter Frequency", *keys)

    def test_a_tone_noise_and_modulation(self):
        choice = random.Random(1)
        some = lambda: [choice.randint(-32768, 32767) for _ in range(5001)]
        sound = Sound(some(), some())
        self.open_sound("noise.wav", sound)
        def sine():
            self.menu("alt+e", "r", "s")
            self.frequencies(*"300", "Tab", *"2500")
        made = tone(5001, 22937, 300, 2500)
        self.step(sound, Sound(made, made), sine)
        # With what was entered the last time, and only one value.
        def sine_again():
            self.menu("alt+e", "r", "s")
            self.frequencies("Tab", "Tab", "space")
        made = tone(5001, 22937, 300, 300)
        self.step(sound, Sound(made, made), sine_again)
        def modulate():
            self.menu("alt+c", "m")
            self.frequencies(*"7")
        self.step(sound, sound.modulated(7, 1000), modulate)
        self.noise(5001)
        self.keys("ctrl+z")
        self.saved(sound)
        self.end()

    def noise(self, samples):
        """A walk of steps up to 9830, within 9830, the same in both channels."""
        before = self.file.read_bytes()
        self.menu("alt+e", "r", "n")
        self.answer("Noise Generated")
        self.keys("ctrl+s")
        def made():
            try:
                bytes_now = self.file.read_bytes()
            except FileNotFoundError:
                return False
            return bytes_now != before and len(bytes_now) == len(before) and bytes_now
        frames = array.array("h", wait_until(made, "another sound in the file")[44:])
        left, right = frames[::2], frames[1::2]
        self.assertEqual(left, right)
        self.assertEqual(len(left), samples)
        self.assertLessEqual(max(map(abs, left)), 9830)
        self.assertGreater(max(map(abs, left)), 9000)
        self.assertLessEqual(max(abs(b - a) for a, b in zip([0, *left], left)), 9830)

    def test_silence_is_shortened_in_both_styles(self):
        sound = speech(2)
        self.open_sound("speech.wav", sound)
        def fixed():
            self.menu("alt+c", "d")
            self.answer("Delete Silence / Low volume", "alt+d", "ctrl+a", *typed("0.05"),
                        "alt+b", "ctrl+a", *typed("0.037"))
        self.step(sound, sound.without_silence(1, 0.05, lambda run: round(RATE * 0.037)), fixed)
        def part():
            self.menu("alt+c", "d")
            self.answer("Delete Silence / Low volume", "Tab", "Tab", "Down", "alt+b", "ctrl+a",
                        *"21", "alt+x", "ctrl+a", *typed("0.03"))
        self.step(sound, sound.without_silence(
            1, 0.05, lambda run: min(round(run * (21 / 100)), round(RATE * 0.03))), part)
        self.end()

    def test_a_wrong_number_keeps_the_focus_and_the_dialog(self):
        sound = speech(3)
        self.open_sound("speech.wav", sound)
        self.menu("alt+c", "d")
        title = "Delete Silence / Low volume"
        dialog = self.desktop.wait_for_window(self.editor, lambda window: window.title == title)
        self.desktop.run("xdotool", "windowactivate", "--sync", dialog.id)
        self.keys("ctrl+a", *"100", "Tab")
        self.answer("Quoril Wave Editor") # "Volume threshold is not valid"
        self.desktop.run("xdotool", "windowactivate", "--sync", dialog.id)
        self.keys("ctrl+a", *typed("100.5"), "Return")
        self.answer("Invalid entry")
        self.desktop.run("xdotool", "windowactivate", "--sync", dialog.id)
        # The focus was in the field all the time.
        self.keys("ctrl+a", *"2", "Return")
        self.saved(sound.without_silence(2, 0.1, lambda run: RATE))
        self.end()

    def test_a_stroke_of_the_mouse_is_a_straight_line_of_samples(self):
        silent = Sound([0] * 4000)
        self.open_sound("silent.wav", silent)
        self.keys("Escape", "Up", "Up", "Up", "Up", "Up", "Up")
        self.menu("alt+e", "r", "d")
        for button in (1, 3):
            self.desktop.run("xdotool", "mousemove", "--window", self.window.id, "200", "200",
                             "mousedown", str(button), "sleep", "0.3",
                             "mousemove", "--window", self.window.id, "700", "420",
                             "sleep", "0.2", "mouseup", str(button))
            samples = self.drawn(silent)
            first = next(i for i, sample in enumerate(samples) if sample)
            last = max(i for i, sample in enumerate(samples) if sample)
            start, end = samples[first], samples[last]
            self.assertGreater(last - first, 20)
            self.assertGreater(start, 3000)
            self.assertLess(end, -1000)
            for place in range(first, last + 1):
                line = (place - first) / (last - first) * (end - start) + start
                self.assertEqual(samples[place], round(line), place)
            self.keys("ctrl+z")
            self.saved(silent)
        self.keys("Escape")
        self.end()

    def drawn(self, before):
        """The samples of the file once they are others."""
        self.desktop.run("xdotool", "windowactivate", "--sync", self.window.id)
        self.keys("ctrl+s")
        def changed():
            try:
                with wave.open(str(self.file)) as sound:
                    samples = array.array("h", sound.readframes(sound.getnframes())).tolist()
            except (EOFError, OSError, wave.Error):
                return False
            return samples != before.channels[0] and len(samples) == 4000 and samples
        return wait_until(changed, "drawn samples in the file")


if __name__ == "__main__":
    unittest.main()
