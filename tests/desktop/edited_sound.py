"""A sound as an editor must hold it, worked out sample by sample: mono, 16 bits, 1000 Hz, so that a
time in seconds tells a sample exactly."""

import array
import struct

RATE = 1000
MAX = 32767


def _single(value):
    """The nearest number of single precision."""
    return struct.unpack("<f", struct.pack("<f", value))[0]


def _limited(value):
    return max(-MAX, min(MAX, round(value)))


def _mixed(clip, doc):
    return [_limited(c + d) for c, d in zip(clip, doc)]


def _modulated(clip, doc):
    return [_limited(abs(0.95 / MAX * c) * d) for c, d in zip(clip, doc)]


def _cross_faded(clip, doc):
    shares = [_single((i + 1) / len(doc)) for i in range(len(doc))]
    return [_limited(x * d + _single(1 - x) * c) for x, c, d in zip(shares, clip, doc)]


COMPUTED = {"Mix": _mixed, "Modulate": _modulated, "Cross Fade": _cross_faded}


def wav_bytes(samples):
    """The WAV file of these samples."""
    data = array.array("h", samples).tobytes()
    return (b"RIFF" + struct.pack("<I", 36 + len(data)) + b"WAVEfmt " +
            struct.pack("<IHHIIHH", 16, 1, 1, RATE, 2 * RATE, 2, 16) + b"data" +
            struct.pack("<I", len(data)) + data)


class EditedSound:
    """`samples` and the selection `start` to `end`, counted from 1; 0 to 0 is none."""

    def __init__(self, samples):
        self.samples = list(samples)
        self.start = self.end = 0
        self._before = []

    def select(self, start, end):
        self.start, self.end = start, end

    def has_range(self):
        return self.start != self.end

    def has_point(self):
        return self.start == self.end != 0

    def copy(self, second=False):
        """The clip. Without a range one of the first two offers is taken: from a point to the end
        or from the start to the point; without a point all."""
        if not self.has_range():
            if self.has_point() and second:
                self.select(1, self.end)
            else:
                self.select(max(self.start, 1), len(self.samples))
        return self.samples[self.start - 1:self.end]

    def cut(self, second=False):
        clip = self.copy(second)
        self.delete()
        return clip

    def delete(self):
        """Takes the range out."""
        self._becomes(self.samples[:self.start - 1] + self.samples[self.end:])

    def paste(self, mode, clip, second=False):
        """Pastes at a point, or at what is offered: the start or the end of the range, or of the
        sound."""
        if not self.has_point():
            first, last = (self.start, self.end) if self.has_range() else (1, len(self.samples))
            place = last if second else first
            self.select(place, place)
        before, after = self.samples[:self.start - 1], self.samples[self.start - 1:]
        if mode in COMPUTED:
            doc = after[:len(clip)]
            clip = COMPUTED[mode](clip[:len(doc)], doc) + clip[len(doc):]
        self._becomes(before + clip + (after if mode == "Insert" else after[len(clip):]))

    def undo(self):
        self.samples, self.start, self.end = self._before.pop()
        self._limit()

    def _becomes(self, samples):
        self._before.append((self.samples, self.start, self.end))
        self.samples = samples
        self._limit()

    def _limit(self):
        if max(self.start, self.end) > len(self.samples):
            self.select(0, 0)
