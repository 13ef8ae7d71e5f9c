#!/usr/bin/python3
"""Starts that do not go well, and what the command line answers."""
import os
import subprocess
import unittest

import discs
import eyes
import report
from harness import PATIENCE, Desktop, Home, wait_for

WAITING = "Insert disc image..."
PROMPT = "Location of Tessarel Data File(s) Not Found, Please Enter Full Path:    (e.g. C:\\Program Files\\Tessarel)"
# All but the two that tell where everything is, and which window comes first.
LESS_NEEDED = ["TSLWIN2.INI", "TSLWIN3.INI", "TSLWIN4.INI", "TSLWIN5.INI", "TSLWIN6.INI", "CDMAIN.INI",
               "modelast.dat", "tsllinks.ini", "cdposn.dat", "bmpdir.dat", "userdef.dat", "cddbol.dat"]
SPOILT = {"empty": b"", "truncated": b'"\r\n1\r', "binary": bytes(range(256)) * 40, "zeros": bytes(100_000),
          "over-long": b'"' + b"x" * 5_000_000, "not UTF-8": b'"\xe4\xf6\xfc\xff\xfe"\r\n' * 60,
          "full of large numbers": b"99999999999999999999\r\n-99999999999\r\n1e999\r\nNaN\r\n" * 20}


def setUpModule():
    global desktop, sight, disc
    desktop = unittest.enterModuleContext(Desktop(report.program()))
    sight = eyes.open_eyes(desktop)
    disc = discs.gapped_disc(desktop.new_folder(), seconds=(8, 8, 8))


def answer(*arguments, cwd=None):
    """What the program prints, for options that open no window."""
    return subprocess.run([str(report.program()), *map(str, arguments)], env=desktop.env, capture_output=True, text=True,
                          timeout=PATIENCE, cwd=cwd, check=False)


def await_play(running):
    wait_for("play", lambda: sight.text(running, "Play") == "lit")
    wait_for("the first seconds", lambda: sight.text(running, "Time") in [f"0:{second:02}" for second in range(1, 60)])


class BrokenSettings(unittest.TestCase):
    """Each start either plays the disc, or shows some window that can be left; none ends by a crash."""

    def assert_opens_and_ends(self, kind, *names):
        home = desktop.new_home()
        for name in names:
            home.file(name).write_bytes(SPOILT[kind])
        with self.subTest(kind=kind, files=names), desktop.running("--insert", f"D={disc.cue}", home=home) as running:
            sight.find(running, "Next track")
            self.assertEqual(running.close_by_escape(), 0)

    def test_of_the_start_file_still_open_a_window(self):
        for kind in SPOILT:
            home = desktop.new_home()
            home.file("TSLWIN1.INI").write_bytes(SPOILT[kind])
            with self.subTest(kind), desktop.running(home=home) as running:
                running.await_window(seconds=5)

    def test_of_any_kind_still_let_the_player_come_and_go(self):
        for kind in SPOILT:
            self.assert_opens_and_ends(kind, *LESS_NEEDED)

    def test_of_any_single_file_still_let_the_player_come_and_go(self):
        for name in LESS_NEEDED:
            self.assert_opens_and_ends("binary", name)

    def test_of_the_start_file_still_open_the_waiting_window(self):
        for kind, content in SPOILT.items():
            home = desktop.new_home()
            home.file("TSLWIN1.INI").write_bytes(content)
            with self.subTest(kind), desktop.running(home=home) as running:
                sight.find(running, WAITING)
                self.assertEqual(running.close_by_escape(), 0)

    def test_that_are_missing_but_for_the_needed_ones_still_play_the_disc(self):
        home = desktop.new_home()
        for name in LESS_NEEDED:
            home.file(name).unlink(missing_ok=True)
        with desktop.running("--insert", f"D={disc.cue}", home=home) as running:
            await_play(running)

    def test_with_only_their_tails_gone_still_play_the_disc(self):
        home = desktop.new_home()
        for name in ("TSLWIN3.INI", "TSLWIN5.INI", "TSLWIN6.INI"):
            whole = home.file(name).read_bytes()
            home.file(name).write_bytes(whole[:len(whole) // 2])
        with desktop.running("--insert", f"D={disc.cue}", home=home) as running:
            await_play(running)

    def test_without_the_first_file_ask_for_the_folder_and_end_on_cancel(self):
        home = desktop.new_home()
        home.file("TSLWIN.INI").unlink()
        with desktop.running(home=home) as running:
            self.assertEqual(sight.message(running), PROMPT)
            sight.answer(running, "Cancel")
            self.assertEqual(running.await_end(), 0)

    def test_whose_first_file_is_spoilt_ask_for_the_folder(self):
        for kind in ("empty", "truncated", "binary", "zeros", "over-long"):
            home = desktop.new_home()
            home.file("TSLWIN.INI").write_bytes(SPOILT[kind])
            with self.subTest(kind), desktop.running(home=home) as running:
                self.assertEqual(sight.message(running), PROMPT)
                sight.answer(running, "Cancel")
                self.assertEqual(running.await_end(), 0)

    def test_whose_first_file_names_no_folder_say_that_there_is_no_set_up(self):
        home = desktop.new_home()
        home.file("TSLWIN.INI").write_bytes(SPOILT["not UTF-8"])
        with desktop.running(home=home) as running:
            self.assertIn("Unable to start cdsetup.exe INITSETUP.", sight.message(running))
            sight.answer(running, "OK")
            self.assertEqual(running.await_end(), 0)

    def test_without_the_second_file_start_the_first_set_up_in_the_data_directory(self):
        home = desktop.new_home()
        home.file("TSLWIN1.INI").unlink()
        log = desktop.new_folder() / "started"
        home.alias("cdsetup.exe", log)
        with desktop.running(home=home) as running:
            self.assertEqual(running.await_end(), 0)
            wait_for("set-up", log.exists)
            self.assertEqual(log.read_text(encoding="utf-8").splitlines(), ["INITSETUP", str(home.data)])


class ABrokenRecord(unittest.TestCase):
    def test_does_not_keep_its_disc_from_playing(self):
        number = self.disc_number()
        for kind, content in SPOILT.items():
            home = desktop.new_home()
            for ending in (".CD", ".CD1", ".CD2", ".CD3", ".CD4", ".CD5"):
                (home.data / "datacd" / (number + ending)).write_bytes(content)
            with self.subTest(kind), desktop.running("--insert", f"D={disc.cue}", home=home) as running:
                wait_for("play", lambda: sight.text(running, "Play") == "lit")
                self.assertEqual(running.close_by_escape(), 0)

    def disc_number(self):
        with desktop.running("--insert", f"D={disc.cue}") as running:
            return wait_for("the disc's number", lambda: sight.text(running, "Disc number")).removeprefix("No. ")


@unittest.skipUnless(os.geteuid() == 0, "only the superuser makes small disks")
class AFullDisk(unittest.TestCase):
    def setUp(self):
        self.disk = desktop.new_folder()
        mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=1m", "tmpfs", str(self.disk)], capture_output=True, check=False)
        if mounted.returncode != 0:
            self.skipTest("this machine mounts nothing")
        self.addCleanup(subprocess.run, ["umount", "--lazy", str(self.disk)], check=True, timeout=PATIENCE)

    def fill(self):
        with (self.disk / "ballast").open("wb", buffering=0) as ballast:
            for size in (4096, 1):
                try:
                    while True:
                        ballast.write(bytes(size))
                except OSError:
                    pass

    def test_keeps_a_first_run_from_making_a_home_and_says_so(self):
        self.fill()
        home = Home(self.disk / "home")
        with desktop.running(home=home) as running:
            self.assertIn("space", sight.message(running).lower())
            sight.answer(running, "OK")
            self.assertEqual(running.await_end(), 1)
            self.assertIn("space", running.said().lower())
        self.assertFalse(home.drive.exists(), "half a home was left")

    def test_does_not_keep_a_disc_from_playing_or_hurt_the_settings(self):
        home = Home(self.disk / "home")
        made = desktop.new_home()
        subprocess.run(["cp", "-r", str(made.path), str(home.path)], check=True)
        self.fill()
        before = {file: file.read_bytes() for file in home.data.glob("*.INI")}
        with desktop.running("--insert", f"D={disc.cue}", home=home) as running:
            await_play(running)
            running.focus()
            sight.press_without_waiting(running, "Time mode")  # it would be kept
            self.assertIn("Unable to save", sight.message(running))
            sight.answer(running, "OK")
            wait_for("the player alone", lambda: len(running.windows()) == 1)
            self.assertTrue(running.up())
        self.assertEqual({file: file.read_bytes() for file in home.data.glob("*.INI")}, before)


class ARefusedImage(unittest.TestCase):
    def assert_refused(self, image, *words):
        with desktop.running("--insert", f"D={image}") as running:
            said = sight.message(running)
            for word in words:
                self.assertIn(word, said)
            sight.answer(running, "OK")
            wait_for("the waiting window", lambda: WAITING in sight.names(running))
            self.assertIn(words[0], running.said())
            self.assertEqual(running.close_by_escape(), 0)

    def cue(self, text, **files):
        folder = desktop.new_folder()
        for name, content in files.items():
            (folder / f"{name}.bin").write_bytes(content)
        cue = folder / "sheet.cue"
        cue.write_bytes(text if isinstance(text, bytes) else text.encode())
        return cue

    def test_that_is_not_there(self):
        self.assert_refused(desktop.new_folder() / "none.cue", "none.cue", "No such file")

    def test_whose_sound_file_is_missing(self):
        self.assert_refused(self.cue('FILE "lost.bin" BINARY\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n'), "lost.bin")

    def test_whose_sound_file_is_too_short(self):
        self.assert_refused(self.cue('FILE "short.bin" BINARY\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n'
                                     '  TRACK 02 AUDIO\n    INDEX 01 01:00:00\n', short=bytes(2352 * 75)), "sheet.cue")

    def test_whose_sheet_is_binary(self):
        self.assert_refused(self.cue(bytes(range(256)) * 100), "sheet.cue")

    def test_whose_sheet_is_empty(self):
        self.assert_refused(self.cue(""), "sheet.cue")

    def test_that_is_a_folder(self):
        folder = desktop.new_folder() / "folder.cue"
        folder.mkdir()
        self.assert_refused(folder, "folder.cue")


class TheCommandLine(unittest.TestCase):
    def test_takes_the_real_path_of_an_image_as_a_disc(self):
        with desktop.running(disc.cue) as running:
            await_play(running)
            self.assertEqual(sight.text(running, "Disc").split("  ·  ")[1], "3 tracks")

    def test_takes_the_path_of_an_image_from_the_working_directory_on(self):
        listed = answer("--list-drives", "--insert", f"E={disc.cue.name}", "--home", desktop.new_home().path, cwd=disc.cue.parent)
        self.assertEqual(listed.returncode, 0, listed.stderr)
        self.assertRegex(listed.stdout, r"(?m)^E:.*3 tracks")

    def test_names_every_option_in_its_help(self):
        told = answer("--help")
        self.assertEqual((told.returncode, told.stderr), (0, ""))
        self.assertTrue(told.stdout.startswith("Usage: tessarel"))
        for option in ("--home", "--insert", "--list-drives", "--help", "--version"):
            self.assertIn(option, told.stdout)

    def test_tells_its_version(self):
        told = answer("--version")
        self.assertEqual((told.returncode, told.stderr), (0, ""))
        self.assertRegex(told.stdout, r"^Tessarel \d+\.\d+\.\d+\n$")

    def test_lists_the_drives_and_what_is_in_them(self):
        home = desktop.new_home()
        told = answer("--home", home.path, "--insert", f"D={disc.cue}", "--list-drives")
        self.assertEqual(told.returncode, 0, told.stderr)
        self.assertIn(str(home.drive), told.stdout)
        self.assertRegex(told.stdout, r"(?m)^C:")
        self.assertRegex(told.stdout, r"(?m)^D:.*3 tracks")
        self.assertRegex(told.stdout, r"(?m)^Z:")

    def test_refuses_a_broken_image_in_its_list_with_status_1(self):
        told = answer("--home", desktop.new_home().path, "--insert", "D=none.cue", "--list-drives")
        self.assertEqual(told.returncode, 1)
        self.assertIn("none.cue", told.stderr)

    def test_refuses_what_it_does_not_know_with_status_2(self):
        for wrong in (["--sideways"], ["--insert"], ["--insert", "disc.cue"], ["--insert", "7=disc.cue"], ["--home="], ["--help=yes"]):
            with self.subTest(wrong):
                told = answer(*wrong)
                self.assertEqual((told.returncode, told.stdout), (2, ""))
                self.assertIn("Try --help.", told.stderr)

    def test_tells_of_a_window_that_is_not_there(self):
        for word in ("RDLIB", "MEDIA", "music.wav"):
            with self.subTest(word), desktop.running(word) as running:
                self.assertIn(word, sight.message(running))
                sight.answer(running, "OK")

    def test_says_so_when_there_is_no_display(self):
        env = {name: value for name, value in desktop.env.items() if name != "DISPLAY"}
        told = subprocess.run([str(report.program()), "--home", str(desktop.new_home().path)], env=env, capture_output=True, text=True,
                              timeout=PATIENCE, check=False)
        self.assertEqual(told.returncode, 1)
        self.assertIn("no display", told.stderr)


if __name__ == "__main__":
    report.main()
