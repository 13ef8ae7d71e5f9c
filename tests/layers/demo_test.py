#!/usr/bin/env python3
"""The demo disc's scores are sound and its record is the one that the program looks for. Usage: demo_test.py SOURCE_DIR"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
SOURCE = pathlib.Path(sys.argv[1])
sys.path.insert(0, str(SOURCE / "data/demo"))
import score  # noqa: E402
from pieces import PIECES  # noqa: E402


def seconds(piece):
    events, end = score.events_of(piece)
    tempos = [(tick, int.from_bytes(data[3:], "big") / 1e6) for tick, _, data in events if data[:2] == b"\xff\x51"]
    return sum((until - tick) / score.TICKS * quarter for (tick, quarter), until in zip(tempos, [t for t, _ in tempos[1:]] + [end]))


class TheScores(unittest.TestCase):
    def test_are_six_of_between_forty_and_seventy_five_seconds(self):
        self.assertEqual(len(PIECES), 6)
        for piece in PIECES:
            self.assertTrue(40 < seconds(piece) < 75, piece.title)

    def test_have_more_than_one_loudness_and_tempo_and_end_each_note(self):
        for piece in PIECES:
            events, _ = score.events_of(piece)
            on = [data for _, _, data in events if data[0] & 0xF0 == 0x90]
            off = [data for _, _, data in events if data[0] & 0xF0 == 0x80]
            self.assertEqual(sorted((d[0] & 15, d[1]) for d in on), sorted((d[0] & 15, d[1]) for d in off), piece.title)
            self.assertGreater(len({d[2] for d in on}), 10, piece.title)
            self.assertGreater(len({d for _, _, d in events if d[:2] == b"\xff\x51"}), 3, piece.title)

    def test_come_out_the_same_each_time(self):
        self.assertEqual([score.midi(piece) for piece in PIECES], [score.midi(piece) for piece in PIECES])

    def test_with_a_bar_that_is_not_full_are_refused(self):
        piece = score.Piece("Slip", "Nobody", 4, [score.Voice("C4:4 D4 E4 | C4:1")], [(1, 60)], [(1, 60)])
        with self.assertRaisesRegex(ValueError, "bar 1: 3.0 quarters for 4.0"):
            score.midi(piece)

    def test_read_names_lengths_and_marks_as_written(self):
        piece = score.Piece("Scale", "Nobody", 4, [score.Voice("C4:8 C#4 Bb3:4. r:8 A4+C5:4' | -:2&4 r:4")], [(1, 60)], [(1, 60)])
        notes = score.notes_of(piece, piece.voices[0], 0)
        self.assertEqual([note.pitch for note in notes], [60, 61, 58, 69, 72])
        self.assertEqual([note.length for note in notes], [230, 230, 691, 1680, 1680])


class TheRecord(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        (self.folder / "disc.cue").write_text(
            'TITLE "One, Two"\nPERFORMER "A ""B"""\nFILE "disc.bin" BINARY\n TRACK 01 AUDIO\n  TITLE "First, Last"\n'
            '  PERFORMER "X"\n  INDEX 01 00:00:00\n TRACK 02 AUDIO\n  TITLE "Ä"\n  PERFORMER "Y"\n  INDEX 00 00:02:00\n'
            '  INDEX 01 00:04:10\n', encoding="utf-8")
        with open(self.folder / "disc.bin", "wb") as image:
            image.truncate(2352 * (65 * 75 + 5))  # one minute, five seconds, five frames

    def write(self):
        subprocess.run([SOURCE / "scripts/make-demo-record", self.folder / "disc.cue", self.folder], check=True, stdout=subprocess.DEVNULL)
        return sorted(self.folder.glob("*.CD"))

    def test_is_named_by_the_disc_number(self):
        # 2 tracks; 0:04:10 is 0xA0400, 1:00:70 is 0x460001, and the disc's 1:05:05 is 0x50501, once for each track.
        number = 2 + 0xA0400 + 0x460001 + 2 * 0x50501
        self.assertEqual([path.name for path in self.write()], [f"{number:08}.CD"])

    def test_holds_fifty_three_values_with_commas_as_tildes(self):
        lines = self.write()[0].read_bytes().decode("utf-8").split("\r\n")
        self.assertEqual(lines[0], '"One~ Two"')
        self.assertEqual(lines[-7:], ['""', '"1:05,0:04,1:00,"', '"2"', '"Various"', '""', '"Classical"', ""])
        self.assertEqual(len(lines) - 1, 53 + 2)  # the notes run over three lines
        self.assertIn('"First~ Last"', lines)

    def test_that_is_there_already_stays(self):
        path = self.write()[0]
        path.write_bytes(b"mine")
        self.write()
        self.assertEqual(path.read_bytes(), b"mine")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
