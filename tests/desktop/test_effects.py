"""Commands that compute samples, chosen by keys from the menus of the real window. What each must
make of a file is worked out here, and compared with the bytes that the editor saves."""

import math
import random
import struct
import subprocess
import unittest

from menu_steps import MenuSteps
from test_play import Listener, players_of
from virtual_desktop import wait_until

FRAMES = 3001
RATE = 8000


def single(value):
    """The nearest number of single precision."""
    return struct.unpack("<f", struct.pack("<f", value))[0]


class Sound:
    """Two channels of whole numbers in the range of a depth."""

    def __init__(self, bits, left, right):
        self.bits = bits
        self.top = 127 if bits == 8 else 32767
        self.left = left
        self.right = right

    @classmethod
    def noise(cls, bits):
        choice = random.Random(bits)
        top = 127 if bits == 8 else 32767
        some = lambda: [choice.randint(-top - 1, top) for _ in range(FRAMES)]
        return cls(bits, some(), some())

    def limited(self, value):
        return max(-self.top - 1, min(self.top, value))

    def each(self, change):
        """The sound with `change(channel)` in the place of each channel."""
        return Sound(self.bits, change(self.left), change(self.right))

    def wav_bytes(self):
        frames = [sample for frame in zip(self.left, self.right) for sample in frame]
        data = (bytes(sample + 128 for sample in frames) if self.bits == 8 else
                struct.pack(f"<{len(frames)}h", *frames))
        size = self.bits // 8
        return (b"RIFF" + struct.pack("<I", 36 + len(data)) + b"WAVEfmt " +
                struct.pack("<IHHIIHH", 16, 1, 2, RATE, RATE * 2 * size, 2 * size, self.bits) +
                b"data" + struct.pack("<I", len(data)) + data)

    # ---- What the commands make of it

    def ramp(self, start, end):
        """`round` takes the nearest whole number, and of two the even one."""
        step = (end - start) / FRAMES
        return self.each(lambda channel: [self.limited(round((start + step * i) * sample))
                                          for i, sample in enumerate(channel)])

    def maximized(self):
        def change(channel):
            factor = single(1 / (max(map(abs, channel)) / self.top))
            return [self.limited(round(factor * sample)) for sample in channel]
        return self.each(change)

    def raised(self, percent):
        offset = round(percent / 100 * self.top)
        return self.each(lambda channel: [self.limited(sample + offset) for sample in channel])

    def mixed(self, left, right):
        pairs = list(zip(self.left, self.right))
        return Sound(self.bits, [self.limited(left(*pair)) for pair in pairs],
                     [self.limited(right(*pair)) for pair in pairs])


    def equalized(self, bands):
        """All samples through a cascade of moving averages, from the highest band to the lowest."""
        freqs = [20 * 10 ** (3 * i / (len(bands) - 1)) // 4 * 4 for i in range(len(bands))]
        def change(channel):
            signal, result = channel, [0] * FRAMES
            for value, freq in reversed(list(zip(bands, freqs))):
                half = round(RATE / freq / 2)
                if half < 1:
                    continue
                padded = [signal[0]] * half + signal + [signal[-1]] * half
                window = sum(padded[:2 * half])
                gain = single(1.03 ** value - 1.03 ** -50)
                low = []
                for i in range(FRAMES):
                    window += padded[i + 2 * half] - padded[i]
                    mean = round(window / (2 * half))
                    centre = signal[i] if i < FRAMES - half or i == FRAMES - 1 else \
                        signal[FRAMES - half - 1]
                    low.append(max(-self.top, min(self.top, mean)))
                    result[i] = max(-self.top, min(self.top,
                                                   round(gain * (centre - mean) + result[i])))
                signal = low
            return result
        return self.each(change)

    def stretched(self, start, end):
        """A step through the sound that changes evenly, and a curve between neighbours."""
        def change(channel):
            count = len(channel)
            first, last = 1 / (start / 100), 1 / (end / 100)
            slope = (last - first) / count
            a = b = c = channel[0]
            d = channel[1]
            result, place, k = [], 1.0, 1
            while place < count:
                step = slope * k + first
                a, b, c, d = b, c, d, channel[min(k + 2, count) - 1]
                points = (b, b + (c - a) / 5, c + (b - d) / 5, c)
                while True:
                    t = (100 - round((place - k) * 100)) / 100
                    u = 1 - t
                    weights = (t**3, 3 * t**2 * u, 3 * t * u**2, u**3)
                    result.append(self.limited(round(sum(map(float.__mul__, map(float, points),
                                                             weights)))))
                    place += step
                    if place > k + 1:
                        break
                k = int(place) if place > k + 2 else k + 1
            return result + [0]
        return self.each(change)

    def padded(self, count):
        """With silence up to that length."""
        return self.each(lambda channel: channel + [0] * (count - len(channel)))

    def echoed(self, first, following, repeats, percent, bands=None):
        """With delays that do not vary; with bands each repeat is equalized once more."""
        delays = [single(single(first) + single(following) * i) for i in range(repeats)]
        offsets = [round(delay * RATE) for delay in delays]
        mixes = [[0] * (FRAMES + max(offsets)) for _ in range(2)]
        repeat, gain = self, 1.0
        for offset in offsets:
            repeat = repeat.equalized(bands) if bands else repeat
            gain = single(gain * (percent / 100))
            for mix, channel in zip(mixes, (repeat.left, repeat.right)):
                for at, sample in enumerate(channel, offset):
                    mix[at] = self.limited(round(gain * sample + mix[at]))
        for mix, channel in zip(mixes, (self.left, self.right)):
            for at, sample in enumerate(channel):
                mix[at] = self.limited(mix[at] + sample)
        return Sound(self.bits, *mixes)


class Effects(MenuSteps):
    def open(self, bits):
        sound = Sound.noise(bits)
        self.open_sound(f"noise{bits}.wav", sound)
        return sound

    def test_fade_undo_mix_and_save(self):
        for bits in (16, 8):
            with self.subTest(bits=bits):
                sound = self.open(bits)
                self.step(sound, sound.ramp(0.0, 1.0), lambda: self.menu("alt+c", "v", "i"))
                # Both boxes begin with the average, the third of seven sources.
                def mix():
                    self.menu("alt+t", "c")
                    self.answer("Channel Mix", "Down", "alt+r", "End", "Up")
                mixed = sound.mixed(lambda l, r: l + r, lambda l, r: r - l)
                self.step(sound, mixed, mix)
                # The next time it comes up with the last sources.
                def mix_again():
                    self.menu("alt+t", "c")
                    self.answer("Channel Mix", "alt+l", "Up", "alt+r", "Home")
                average = sound.mixed(lambda l, r: round((l + r) / 2), lambda l, r: l)
                self.step(sound, average, mix_again)
                self.end()

    def test_the_commands_that_ask_for_numbers(self):
        sound = self.open(16)
        def volume():
            self.menu("alt+c", "v", "c", "e")
            self.answer("Quoril Wave Editor", *"120", "asciitilde", *"10")
        self.step(sound, sound.ramp(single(1.2), single(0.1)), volume)
        self.step(sound, sound.maximized(), lambda: self.menu("alt+c", "v", "m"))
        def raise_it():
            self.menu("alt+t", "u")
            self.answer("Quoril Wave Editor", *"33")
        self.step(sound, sound.raised(33), raise_it)
        self.step(sound, sound.each(lambda channel: channel[::-1]),
                  lambda: self.menu("alt+t", "r"))
        self.step(sound, sound.each(lambda channel: [sound.limited(-sample) for sample in channel]),
                  lambda: self.menu("alt+t", "i"))
        self.step(sound, Sound(16, sound.right, sound.left), lambda: self.menu("alt+t", "l"))
        self.end()

    def test_the_equalizer_and_the_band_filter(self):
        for bits in (16, 8):
            with self.subTest(bits=bits):
                sound = self.open(bits)
                def equalize():
                    self.menu("alt+c", "e")
                    self.answer("Equalizer", "Up", "Up", "Right", "Page_Down", "End", "Left", "Left",
                                "Page_Up", "Down")
                self.step(sound, sound.equalized([9, -3, 7, 7, 7, 16, 7, 7]), equalize)
                # As accepted the last time, but the highest band but two is stopped as well.
                def stop():
                    self.menu("alt+c", "p")
                    self.answer("Band Pass Filter", "End", "Left", "Left", "space")
                stops = sound.equalized([7, 7, 7, -50, -50, -50, 7, -50])
                self.step(sound, stops, stop)
                self.end()

    def test_stretch_and_speed(self):
        for bits in (16, 8):
            with self.subTest(bits=bits):
                sound = self.open(bits)
                def stretch():
                    self.menu("alt+c", "s")
                    self.answer("Enter Percentage to Stretch/Shrink", *"130", "period", "5")
                self.step(sound, sound.stretched(130.5, 130.5), stretch)
                # Two values and what follows are boxes below; the second value is then ready.
                def shrink():
                    self.menu("alt+c", "s")
                    self.answer("Enter Percentage to Stretch/Shrink", *"90", "Tab", "space",
                                "shift+Tab", *"20")
                self.step(sound, sound.stretched(90, 20).padded(FRAMES), shrink)
                def speed():
                    self.menu("alt+c", "c")
                    self.answer("Enter Percentage Tempo", *"200", "Tab", "Tab", "space", "Tab",
                                "space")
                self.step(sound, sound.stretched(50, 50), speed)
                # The next time it offers what the speed has made of the length.
                def the_same_again():
                    self.menu("alt+c", "c")
                    self.answer("Enter Percentage Tempo")
                self.step(sound, sound.stretched(200, 200), the_same_again)
                self.end()

    def test_the_echo(self):
        for bits in (16, 8):
            with self.subTest(bits=bits):
                sound = self.open(bits)
                def echo():
                    self.menu("alt+c", "h")
                    self.answer("Enter Echo Parameters:", "0", "period", *"05", "Tab", "0",
                                "period", *"03", "Tab", "3", "Tab", *"90", "Tab", "0")
                self.step(sound, sound.echoed(0.05, 0.03, 3, 90), echo)
                # All that was accepted is there again.
                def with_less_treble():
                    self.menu("alt+c", "h")
                    self.answer("Enter Echo Parameters:", "alt+h", *"60")
                self.step(sound, sound.echoed(0.05, 0.03, 3, 90, [0, -5, -10, -20]),
                          with_less_treble)
                self.end()
                settings = (self.program_folder / "quoril-wave-editor.ini").read_text()
                self.assertRegex(settings, "(?i)echo *= *0.05,0.03,3,90,0,60")

    def window_titled(self, title):
        """The window of that title, once it is there."""
        return wait_until(lambda: [window for window in self.desktop.windows(self.editor)
                                   if window.title == title], f'the window "{title}"')[0]

    def test_a_band_is_heard_alone_whatever_becomes_of_player_and_dialog(self):
        # A tone of 1000 Hz under a louder one of 50 Hz: only the band around 1032 Hz sounds like it.
        rate = 44100
        tones = [round(16000 * math.sin(2 * math.pi * 1000 * i / rate) +
                       16000 * math.sin(2 * math.pi * 50 * i / rate)) for i in range(3 * rate)]
        data = struct.pack(f"<{len(tones)}h", *tones)
        self.file = self.folder / "tones.wav"
        self.file.write_bytes(b"RIFF" + struct.pack("<I", 36 + len(data)) + b"WAVEfmt " +
                              struct.pack("<IHHIIHH", 16, 1, 1, rate, 2 * rate, 2, 16) + b"data" +
                              struct.pack("<I", len(data)) + data)
        listener = Listener(self.desktop)
        self.addCleanup(listener.stop)
        self.editor, self.window = self.start_editor(self.file)
        self.desktop.run("xdotool", "windowactivate", "--sync", self.window.id)
        self.keys("ctrl+a")
        self.menu("alt+c", "e")
        dialog = self.window_titled("Equalizer")
        self.desktop.run("xdotool", "windowactivate", "--sync", dialog.id)
        self.keys("Tab", "Right", "Right", "Right", "Right", "space")
        wait_until(listener.hears_tone, "the tone of the band")
        wait_until(listener.hears_nothing, "the end of two seconds")
        # The player goes while it sounds.
        self.keys("space")
        wait_until(listener.hears_tone, "the tone of the band once more")
        player, = players_of(self.editor)
        subprocess.run(["kill", "-9", str(player)], check=True)
        self.answer("Play failed")
        wait_until(listener.hears_nothing, "silence")
        # The dialog goes while another one sounds.
        self.desktop.run("xdotool", "windowactivate", "--sync", dialog.id)
        self.keys("space")
        wait_until(listener.hears_tone, "the tone from another player")
        self.assertNotEqual(players_of(self.editor), [player])
        self.desktop.close(dialog)
        wait_until(lambda: len(self.desktop.windows(self.editor)) == 1, "the end of the dialog")
        wait_until(listener.hears_nothing, "silence", 1)
        self.end()


if __name__ == "__main__":
    unittest.main()
