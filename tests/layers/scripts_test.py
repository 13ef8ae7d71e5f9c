#!/usr/bin/env python3
"""The scripts that judge tell failure from success. Usage: scripts_test.py SOURCE_DIR"""
import array
import math
import pathlib
import subprocess
import sys
import tempfile
import unittest
import wave

SCRIPTS = pathlib.Path(sys.argv[1]) / "scripts"
REPORT = """<testsuites><testsuite name="S">
<testcase classname="S" name="Good" status="run"/><testcase classname="S" name="Off" status="notrun"/>
<testcase classname="S" name="Skipped" status="run"><skipped/></testcase>{}</testsuite></testsuites>"""
BAD = '<testcase classname="S" name="Bad" status="run"><failure/></testcase>'


class Scratch(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)


class Counting(Scratch):
    def count(self, tests, reports):
        cases = "".join(f'<testcase name="{name}" status="{status}"/>' for name, status in tests)
        (self.folder / "ctest.junit").write_text(f"<testsuite>{cases}</testsuite>")
        for name, report in reports.items():
            (self.folder / f"{name}.xml").write_text(report)
        done = subprocess.run([SCRIPTS / "count-tests", self.folder / "ctest.junit", self.folder], check=True, capture_output=True, text=True)
        return done.stdout.strip(), done.stderr

    def test_takes_each_test_of_a_program_that_was_run(self):
        self.assertEqual(self.count([("a", "run")], {"a": REPORT.format("")})[0], "1 0")

    def test_names_the_test_that_failed(self):
        counts, names = self.count([("a", "fail")], {"a": REPORT.format(BAD)})
        self.assertEqual(counts, "1 1")
        self.assertIn("S.Bad", names)

    def test_takes_a_program_that_broke_off_for_a_failure(self):
        self.assertEqual(self.count([("a", "fail")], {})[0], "0 1")
        self.assertEqual(self.count([("a", "fail")], {"a": REPORT.format("")})[0], "1 1")

    def test_takes_any_other_test_for_one(self):
        self.assertEqual(self.count([("a", "run"), ("b", "fail"), ("c", "notrun")], {})[0], "1 2")


class Hearing(Scratch):
    def hear(self, samples):
        path = self.folder / "sound.wav"
        with wave.open(str(path), "wb") as out:
            out.setnchannels(2)
            out.setsampwidth(2)
            out.setframerate(44100)
            out.writeframes(array.array("h", samples).tobytes())
        done = subprocess.run([SCRIPTS / "what-was-heard", path], check=False, capture_output=True, text=True)
        return done.returncode, done.stdout

    def test_nothing_is_a_failure(self):
        self.assertEqual(self.hear([0] * 88200), (1, "Heard nothing in 1.0 s.\n"))
        self.assertEqual(self.hear([])[0], 1)

    def test_a_tone_is_told_with_its_start(self):
        tone = [round(16384 * math.sin(i / 20)) for i in range(88200)]
        status, text = self.hear([0] * 44100 + tone)
        self.assertEqual(status, 0)
        self.assertIn("Heard 1.0 s of sound in 1.5 s: first at 0.50 s, peak 0.50", text)


class Installing(Scratch):
    def test_nothing_to_install_is_quiet_and_an_unknown_section_installs_nothing(self):
        done = subprocess.run([SCRIPTS / "install-packages", "no-such-section"], check=True, capture_output=True, text=True)
        self.assertEqual(done.stdout, "")

    def test_every_package_stands_in_a_section_once(self):
        lines = [line.strip() for line in (SCRIPTS / "packages.txt").read_text().splitlines()]
        lines = [line for line in lines if line and not line.startswith("#")]
        self.assertTrue(lines[0].startswith("["))
        self.assertEqual(len(lines), len(set(lines)))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
