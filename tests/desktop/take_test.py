"""The frame of tests that record through the real window: known sound is played to a sink, and its
monitor is what the editor records."""

import random
import wave
from dataclasses import dataclass

from desktop_test import DesktopTest
from virtual_desktop import is_main_window, wait_until

SERVER, PLAIN = 1, 2  # the engines of the recording window


@dataclass(frozen=True)
class TakeFormat:
    engine: int = SERVER
    channels: int = 1
    bits: int = 16
    rate: int = 44100

    @property
    def frame(self):
        """Bytes of a frame."""
        return self.channels * self.bits // 8

    @property
    def silence(self):
        return b"\x80" if self.bits == 8 else b"\0"

    @property
    def name_of_samples(self):
        """What the sound server calls these samples."""
        return "u8" if self.bits == 8 else "s16le"


def known_sound(form, seconds):
    """Frames of noise in which every place can be told from every other, and no sample is silent."""
    count = seconds * form.rate * form.frame
    noise = random.Random(seconds).randbytes(count)
    if form.bits == 8:
        return noise.replace(b"\x80", b"\x81")
    odd = int.from_bytes(b"\1\0" * (count // 2), "little")
    return (int.from_bytes(noise, "little") | odd).to_bytes(count, "little")


def first_difference(heard, known, form):
    """Where what was heard goes wrong, and where it goes on: what a player lets out for want of time
    comes later, what a recorder loses comes too early."""
    place = next((at for at, (one, other) in enumerate(zip(heard, known)) if one != other),
                 min(len(heard), len(known)))
    place -= place % form.frame
    after = heard.find(known[place:place + 64 * form.frame], place)
    early = known.find(heard[place:place + 64 * form.frame], place)
    return (f"frame {place // form.frame} of {len(known) // form.frame} differs; what belongs there "
            f"comes {(after - place) // form.frame if after >= 0 else 'nowhere'} frames later; what "
            f"stands there belongs {(early - place) // form.frame if early >= 0 else 'nowhere'} "
            "frames further on")


class TakeTest(DesktopTest):
    def document(self, form):
        """A short silent file that a take goes into."""
        path = self.folder / "document.wav"
        with wave.open(str(path), "wb") as file:
            file.setnchannels(form.channels)
            file.setsampwidth(form.bits // 8)
            file.setframerate(form.rate)
            file.writeframes(form.silence * form.frame * 1000)
        return path

    def sink(self, form):
        """A sink of the document's format, whose monitor is what both engines record by themselves."""
        self.desktop.run("pactl", "load-module", "module-null-sink", "sink_name=known",
                         f"format={form.name_of_samples}", f"rate={form.rate}",
                         f"channels={form.channels}", "norewinds=1")
        self.desktop.run("pactl", "set-default-source", "known.monitor")
        plain = self.folder / "asound.conf"
        plain.write_text('pcm.!default { type pulse device "known.monitor" }\n')
        self.desktop.env["ALSA_CONFIG_PATH"] = str(plain)

    def open_window(self, path):
        """Opens the recording window at the start of the document, and gives editor and window."""
        editor, main = self.start_editor(path)
        self.keys(main, "ctrl+r")
        question = self.desktop.wait_for_window(editor, lambda window: "Record" in window.title)
        self.keys(question, "Return")

        def state():
            shown = [window for window in self.desktop.windows(editor)
                     if not is_main_window(window) and window != question]
            window = next((each for each in shown if each.title == "Record"), None)
            if window is None and shown:
                self.keys(shown[-1], "Return")  # the sound server takes no 8 bits, and says so
            return window
        return editor, wait_until(state, "the recording window", pause=0.2)

    def start_take(self, form):
        """Opens the window on a new document, chooses the engine, and records from then on. Gives
        editor, window and the document's path."""
        self.sink(form)
        path = self.document(form)
        editor, window = self.open_window(path)
        if form.engine == PLAIN:
            self.keys(window, "alt+w")

        def state():
            # A key of a button that waits for the device does nothing.
            self.keys(window, "alt+s")
            return self.work_bytes() > form.rate // 10
        wait_until(state, "the first block of the take", pause=0.3)
        return editor, window, path

    def keys(self, window, *keys):
        self.desktop.run("xdotool", "windowactivate", "--sync", window.id, "key",
                         "--clearmodifiers", *keys)

    def player(self, sound, form):
        raw = self.folder / "known.raw"
        raw.write_bytes(sound)
        return self.desktop.start(
            ["pacat", "--playback", "--raw", "--device=known", f"--format={form.name_of_samples}",
             f"--rate={form.rate}", f"--channels={form.channels}", "--latency-msec=2000", raw])

    def work_bytes(self):
        """How much the takes of the editors hold on the disk by now, 16 bits a sample."""
        return sum(path.stat().st_size for folder in self.session_folders()
                   for path in folder.glob("tm*.tmp"))

    def wait_until_stopped(self):
        """A take that does not grow any more, in the time of several blocks, is stopped."""
        sizes = [-1]

        def state():
            sizes.append(self.work_bytes())
            return sizes[-1] == sizes[-2]
        wait_until(state, "the end of the take", pause=0.5)

    def recorded_whole(self, form, seconds, meanwhile=lambda window: None):
        """Records known sound, and expects it in the saved file, whole, in order and once."""
        editor, window, path = self.start_take(form)
        known = known_sound(form, seconds)
        player = self.player(known, form)
        meanwhile(window)
        wait_until(lambda: player.poll() is not None, "the end of the sound", seconds + 30)
        played = self.work_bytes()
        wait_until(lambda: self.work_bytes() > played + form.rate * form.channels, "a silent end")
        self.keys(window, "alt+t")
        self.wait_until_stopped()
        self.keys(window, "alt+d")
        main = self.desktop.wait_for_window(editor, is_main_window)
        self.keys(main, "ctrl+s")
        wait_until(lambda: path.stat().st_size > len(known), "the saved file")
        self.assertEqual(self.desktop.close_all(editor), 1)
        with wave.open(str(path), "rb") as file:
            self.assertEqual((file.getnchannels(), file.getsampwidth(), file.getframerate()),
                             (form.channels, form.bits // 8, form.rate))
            heard = file.readframes(file.getnframes())
        first = len(heard) - len(heard.lstrip(form.silence))
        first -= first % form.frame  # a sample may begin with a silent byte
        self.assertTrue(heard[first:first + len(known)] == known,
                        first_difference(heard[first:], known, form))
        self.assertEqual(heard[first + len(known):].strip(form.silence), b"")
