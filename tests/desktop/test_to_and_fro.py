"""Two editors copy and paste to and fro, at random."""

import unittest

from two_windows import TwoWindowsTest

ROUNDS = 100


class ToAndFro(TwoWindowsTest):
    def second_end(self, editor):
        """Whether an end of a range is where the point was: it must not drift to a border."""
        return editor.sound.has_range() and editor.sound.start == 1

    def copied(self, editor):
        """The clip of the selection, or of what lies before or behind the point. It is cut if the
        selection remains."""
        sound = editor.sound
        second = self.random.random() < 0.5
        end = sound.end if second or sound.has_range() else len(sound.samples)
        length = end - (sound.start if sound.has_range() or not second else 1) + 1
        return editor.copy(end <= len(sound.samples) - length, second)

    def rounds(self, seed):
        """A hundred clips, each pasted in the editor that copied the one before."""
        self.random.seed(seed)
        self.one.create(self.noise(1000))
        self.two.create(self.noise(700))
        source, target = self.one, self.two
        for number in range(ROUNDS):
            if number % 25 == 0:
                for editor in (self.one, self.two):
                    editor.select_some(self.random)
            clip = self.copied(source)
            mode = "Insert" if len(target.sound.samples) < 2000 else "Replace"
            if number % 10 == 5:
                target.paste(self.random.choice(["Mix", "Modulate", "Cross Fade"]), clip,
                             self.second_end(target))
                target.save()
                target.undo()
            target.paste(mode, clip, self.second_end(target))
            if number % 4 == 3:
                source.save()
                target.save()
            if number % 50 == 49:
                # An editor takes its clip along, and nothing else.
                source.save()
                source.close()
                self.assertEqual(len(self.session_folders()), 1)
                target.paste("Insert", None)
                target.save()
                source.start()
            source, target = target, source
        self.no_window_but_the_main_ones()
        for editor in (self.one, self.two):
            editor.save()
            editor.close()
        self.nothing_is_left()

    def test_the_first_hundred_rounds(self):
        self.rounds(1)

    def test_the_second_hundred_rounds(self):
        self.rounds(2)


if __name__ == "__main__":
    unittest.main()
