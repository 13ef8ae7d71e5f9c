#!/usr/bin/python3
"""What is heard of a disc image, compared with the image sample by sample."""
import contextlib
import json
import subprocess
import time
import unittest

import discs
import eyes
import report
from harness import SAMPLE, SECOND, Desktop, differences, place_of, wait_for

ELAPSED, TOTAL = 0, 2  # time modes
CLUE = 1024 * SAMPLE  # so much sound tells its place on a disc


def setUpModule():
    global desktop, sight, disc
    desktop = unittest.enterModuleContext(Desktop(report.program()))
    sight = eyes.open_eyes(desktop)
    disc = discs.gapped_disc(desktop.new_folder(), seconds=(8, 8, 8), seed="short")


@contextlib.contextmanager
def playing(a_disc, mode=ELAPSED, settings=()):
    """Plays a disc from its start into a sound server of its own. Gives the program, the recording, and the server."""
    home = desktop.new_home()
    home.set_time_mode(mode)
    for name, line, value in settings:
        home.set_line(name, line, value)
    server = desktop.new_sound_server().start()
    with server.recording() as heard, desktop.running("--insert", f"D={a_disc.cue}", home=home,
                                                      env={"PULSE_SERVER": server.address}) as running:
        yield running, heard, server


def await_music(heard, seconds=2.0):
    """Waits until the disc has sounded for a while, and gives the offset of its first sample."""
    first = heard.first_sound()
    heard.await_size(first + int(seconds * SECOND), 30)
    return first


def await_silence(heard, seconds=0.5, within=10):
    """Waits until nothing has been heard for a while, and gives the offset from which on there is silence."""
    length = int(seconds * SECOND) // SAMPLE * SAMPLE
    wait_for("silence", lambda: heard.is_silent(max(heard.size() - length, 0)), within)
    sound = heard.sound()
    return -(-len(sound.rstrip(b"\0")) // SAMPLE) * SAMPLE


def digits(running, name):
    return sight.text(running, name)


class TheComparison(unittest.TestCase):
    """What the other tests rest on: it finds a single sample that is wrong."""

    def test_takes_the_disc_between_silences(self):
        self.assertIsNone(differences(bytes(400) + disc.sound + bytes(400), disc.sound))

    def test_finds_a_sample_that_is_missing_twice_there_or_changed(self):
        sound, at = disc.sound, len(disc.sound) // 2 // SAMPLE * SAMPLE
        for wrong in (sound[:at] + sound[at + SAMPLE:], sound[:at + SAMPLE] + sound[at:], sound[:at] + b"\1\2\3\4" + sound[at + SAMPLE:],
                      sound[:at] + bytes(SAMPLE) + sound[at:], sound[SAMPLE:], sound[:-SAMPLE]):
            self.assertIsNotNone(differences(bytes(400) + wrong + bytes(400), sound))

    def test_finds_sound_before_and_behind_the_disc(self):
        for wrong in (b"\1\0\0\0" + disc.sound, disc.sound + b"\0\0\0\1"):
            self.assertIsNotNone(differences(bytes(400) + wrong + bytes(400), disc.sound))


class AWholeDisc(unittest.TestCase):
    """All plays go on at the same time, each into a server of its own."""

    @classmethod
    def setUpClass(cls):
        makers = {"gaps": discs.gapped_disc, "files": discs.disc_of_files, "data": discs.disc_with_data_at_its_end}
        kinds = {kind: make(desktop.new_folder()) for kind, make in makers.items()}
        cls.outcome = {}
        with contextlib.ExitStack() as stack:
            plays = {(kind, mode): stack.enter_context(playing(kinds[kind], mode)) for mode in (ELAPSED, TOTAL) for kind in kinds}
            for (kind, mode), (running, heard, _) in plays.items():
                sound = kinds[kind].sound
                heard.await_size(heard.first_sound() + len(sound) + 3 * SECOND, 120)
                cls.outcome[kind, mode] = (differences(heard.sound(), sound), running.up(), digits(running, "Track"))

    def check(self, kind, mode):
        wrong, up, track = self.outcome[kind, mode]
        self.assertIsNone(wrong)
        self.assertTrue(up, "the program is no longer there")
        self.assertEqual(track, "0", "the digits do not tell that the disc has ended")

    def test_with_gaps_is_heard_to_the_last_sample_in_elapsed_time(self):
        self.check("gaps", ELAPSED)

    def test_with_gaps_is_heard_to_the_last_sample_in_total_time(self):
        self.check("gaps", TOTAL)

    def test_of_wav_and_flac_files_is_heard_with_its_pregaps_in_elapsed_time(self):
        self.check("files", ELAPSED)

    def test_of_wav_and_flac_files_is_heard_with_its_pregaps_in_total_time(self):
        self.check("files", TOTAL)

    def test_never_lets_its_data_track_sound_in_elapsed_time(self):
        self.check("data", ELAPSED)

    def test_never_lets_its_data_track_sound_in_total_time(self):
        self.check("data", TOTAL)


class TheKeys(unittest.TestCase):
    def assert_goes_on_from(self, heard, offset, place):
        """From `offset` on the recording holds a second of the disc from `place` on."""
        heard.await_size(offset + SECOND, 30)
        sound = heard.sound(offset)[:SECOND]
        self.assertEqual(place_of(sound[:CLUE], disc.sound), place, "this is another place of the disc")
        self.assertEqual(sound, disc.sound[place:place + SECOND])

    def test_next_jumps_to_the_first_sample_of_the_next_track(self):
        with playing(disc) as (running, heard, _):
            first = await_music(heard)
            sight.press(running, "Next track")
            silence = await_silence_between(heard, first)
            self.assertIsNone(differences(heard.sound(first)[:silence - first], disc.sound[:silence - first]))
            self.assert_goes_on_from(heard, heard.first_sound(silence), disc.starts[1])
            wait_for("the digits", lambda: digits(running, "Track") == "2")

    def test_previous_jumps_back_to_the_first_sample_of_the_track_before(self):
        with playing(disc) as (running, heard, _):
            first = await_music(heard)
            sight.press(running, "Track 3")
            wait_for("track 3", lambda: digits(running, "Track") == "3")
            before = heard.size()
            heard.await_size(before + 2 * SECOND, 30)
            sight.press(running, "Previous track")
            clue = disc.sound[disc.starts[1]:disc.starts[1] + CLUE]
            found = wait_for("track 2", lambda: max(heard.sound(before).find(clue), 0))
            self.assert_goes_on_from(heard, before + found, disc.starts[1])
            self.assertGreater(before, first)

    def test_a_cell_of_the_grid_plays_its_track_from_the_first_sample(self):
        with playing(disc) as (running, heard, _):
            await_music(heard)
            before = heard.size()
            sight.press(running, "Track 3")
            clue = disc.sound[disc.starts[2]:disc.starts[2] + CLUE]
            found = wait_for("track 3", lambda: max(heard.sound(before).find(clue), 0))
            self.assert_goes_on_from(heard, before + found, disc.starts[2])

    def test_play_after_pause_goes_on_at_the_very_next_sample(self):
        with playing(disc) as (running, heard, _):
            first = await_music(heard)
            sight.press(running, "Pause")
            silence = await_silence(heard, seconds=1.5)
            sight.press(running, "Play")
            self.assertIsNone(differences(heard.sound(first)[:silence - first], disc.sound[:silence - first]))
            self.assert_goes_on_from(heard, heard.first_sound(silence), silence - first)

    def test_a_paused_disc_keeps_its_time(self):
        with playing(disc) as (running, heard, _):
            await_music(heard)
            sight.press(running, "Pause")
            await_silence(heard)
            held = digits(running, "Time")
            before = heard.size()
            heard.await_size(before + 3 * SECOND, 30)
            self.assertEqual(digits(running, "Time"), held)
            self.assertTrue(heard.is_silent(before))

    def test_stop_is_silent_and_stays_so(self):
        with playing(disc) as (running, heard, _):
            first = await_music(heard)
            sight.press(running, "Stop")
            pressed = heard.size()
            silence = await_silence(heard, seconds=2)
            self.assertLess(silence, pressed + SECOND // 2, "it sounded on for half a second")
            self.assertIsNone(differences(heard.sound(first)[:silence - first], disc.sound[:silence - first]))

    def test_play_behind_an_ejected_disc_plays_nothing(self):
        with playing(disc) as (running, heard, _):
            await_music(heard)
            sight.press(running, "Eject")
            wait_for("the waiting window", lambda: sight.find(running, "Insert disc image..."))
            silence = await_silence(heard)
            with contextlib.suppress(AssertionError):  # a dead key need not have an action
                sight.press(running, "Play")
            before = heard.size()
            heard.await_size(before + 2 * SECOND, 30)
            self.assertTrue(heard.is_silent(silence))
            self.assertTrue(running.up())
            self.assertEqual(digits(running, "Track"), "0")


class TheEnd(unittest.TestCase):
    def test_escape_ends_the_sound_with_the_program(self):
        with playing(disc) as (running, heard, _):
            await_music(heard)
            self.assertEqual(running.close_by_escape(), 0)
            ended = heard.size()
            await_silence(heard)
            self.assertTrue(heard.is_silent(ended + SECOND // 2))

    def test_a_disc_plays_on_to_its_last_sample_behind_a_closed_window_when_the_settings_say_so(self):
        no_cues = ("TSLWIN4.INI", 5, 1)
        with playing(disc, settings=[("TSLWIN3.INI", 17, 1), no_cues]) as (running, heard, _):
            first = await_music(heard)
            running.focus()
            desktop.key("Escape")
            wait_for("the window to go", lambda: not running.windows())
            self.assertTrue(running.up(), "the process has ended with its window")
            heard.await_size(first + len(disc.sound) + SECOND, 60)
            self.assertIsNone(differences(heard.sound(), disc.sound))
            self.assertEqual(running.await_end(), 0)

    def test_a_signal_ends_the_program_while_it_plays(self):
        with playing(disc) as (running, heard, _):
            await_music(heard)
            running.process.terminate()
            running.await_end(5)
            await_silence(heard)


def seconds_shown(running):
    """Seconds of the time that the readout shows; 0 while it shows none."""
    minutes, _, seconds = digits(running, "Time").partition(":")
    return int(minutes) * 60 + int(seconds) if minutes.isdigit() and seconds.isdigit() else 0


def percent_of(server, what, *selection):
    """Left and right percent, and whether it is muted, as the desktop's mixer shows a stream or an output."""
    told = subprocess.run(["pactl", "--format=json", "list", what], env=desktop.env | {"PULSE_SERVER": server.address},
                          capture_output=True, check=True, timeout=20, text=True).stdout
    entries = [entry for entry in json.loads(told) if not selection or entry["name"] in selection]
    if not entries:
        return None
    left, right = (int(entries[0]["volume"][side]["value_percent"].rstrip("%")) for side in ("front-left", "front-right"))
    return left, right, entries[0]["mute"]


class TheSliders(unittest.TestCase):
    """In the program and in the desktop's mixer."""

    @classmethod
    def setUpClass(cls):
        cls.disc = discs.steady_disc(desktop.new_folder(), seconds=60)

    @staticmethod
    def mixer(server, *command):
        subprocess.run(["pactl", *command], env=desktop.env | {"PULSE_SERVER": server.address}, check=True, timeout=20)

    @staticmethod
    def stream(server):
        return subprocess.run(["pactl", "list", "short", "sink-inputs"], env=desktop.env | {"PULSE_SERVER": server.address},
                              capture_output=True, check=True, timeout=20, text=True).stdout.split()[0]

    def await_level(self, heard, level):
        """Waits until the sound stands at a part of its full swing, left and right."""
        def look():
            sound = heard.sound(max(heard.size() - SECOND // 20 // SAMPLE * SAMPLE, 0))
            last = [int.from_bytes(sound[-4 + 2 * side:][:2], "little", signed=True) / 28672 for side in (0, 1)]
            return sound == sound[-SAMPLE:] * (len(sound) // SAMPLE) and all(abs(a - b) < 0.01 for a, b in zip(last, level))
        wait_for(f"a level of {level}", look)

    def test_of_the_program_and_of_the_mixer_follow_each_other_and_the_sound_both(self):
        with playing(self.disc) as (running, heard, server):
            await_music(heard, 0.5)
            sight.find(running, "Volume left").get_value_iface().set_current_value(50)
            wait_for("the mixer", lambda: percent_of(server, "sink-inputs") == (50, 50, False))
            self.await_level(heard, (0.125, 0.125))
            self.mixer(server, "set-sink-input-volume", self.stream(server), "100%", "80%")
            wait_for("the left slider", lambda: sight.text(running, "Volume left") == "100 %")
            wait_for("the right slider", lambda: sight.text(running, "Volume right") == "80 %")
            self.await_level(heard, (1, 0.512))

    def test_mute_key_lifts_a_mute_of_the_mixer(self):
        with playing(self.disc) as (running, heard, server):
            await_music(heard, 0.5)
            self.mixer(server, "set-sink-input-mute", self.stream(server), "1")
            self.await_level(heard, (0, 0))
            wait_for("the lit key", lambda: sight.lit(sight.find(running, "Mute")))
            sight.press(running, "Mute")
            self.await_level(heard, (1, 1))
            self.assertEqual(percent_of(server, "sink-inputs"), (100, 100, False))

    def test_drive_the_default_output_in_mode_four_and_undo_its_mute_at_the_end(self):
        with playing(self.disc, settings=[("TSLWIN1.INI", 10, 4)]) as (running, heard, server):
            await_music(heard, 0.5)
            wait_for("the middle", lambda: percent_of(server, "sinks", "disc") == (50, 50, False))
            self.assertEqual(sight.text(running, "Volume left"), "50 %")
            self.assertEqual(percent_of(server, "sink-inputs"), (100, 100, False))
            left = sight.find(running, "Volume left")
            left.get_component_iface().grab_focus()
            wait_for("the keyboard on the slider", lambda: sight.focused(running) == left)
            desktop.key("Page_Up")
            wait_for("the output", lambda: percent_of(server, "sinks", "disc") == (60, 60, False))
            self.assertEqual(sight.text(running, "Volume right"), "60 %")
            self.mixer(server, "set-sink-volume", "disc", "20%")
            wait_for("the sliders", lambda: sight.text(running, "Volume right") == "20 %")
            sight.press(running, "Mute")
            wait_for("the output's mute", lambda: percent_of(server, "sinks", "disc") == (20, 20, True))
            self.assertEqual(running.close_by_escape(), 0)
            wait_for("the output's sound", lambda: percent_of(server, "sinks", "disc") == (20, 20, False))


class TheSoundServer(unittest.TestCase):
    def test_may_be_killed_and_come_back_and_the_disc_goes_on_at_its_place(self):
        with playing(disc) as (running, heard, server):
            first = await_music(heard, seconds=3)
            server.kill()
            known, then = heard.size() - first, time.monotonic()
            server.start()
            with server.recording() as heard_again:
                again = heard_again.first_sound()
                passed = time.monotonic() - then
                heard_again.await_size(again + SECOND, 30)
                place = place_of(heard_again.sound(again)[:CLUE], disc.sound)
                self.assertGreaterEqual(place, 0, "this is not of the disc")
                self.assertAlmostEqual((place - known) / SECOND, passed, delta=1.0)
                self.assertEqual(heard_again.sound(again)[:SECOND], disc.sound[place:place + SECOND])
            self.assertTrue(running.up())

    def test_may_be_missing_and_the_digits_run_all_the_same(self):
        with desktop.running("--insert", f"D={disc.cue}", env={"PULSE_SERVER": "unix:/nonexistent/native"}) as running:
            wait_for("some seconds of time", lambda: digits(running, "Track") == "1" and seconds_shown(running) >= 2)
            wait_for("the second track", lambda: digits(running, "Track") == "2", 30)
            self.assertEqual(running.close_by_escape(), 0)

    def test_may_come_late_and_the_disc_joins_in_at_its_place(self):
        server = desktop.new_sound_server()
        with desktop.running("--insert", f"D={disc.cue}", env={"PULSE_SERVER": server.address}) as running:
            wait_for("some seconds of time", lambda: digits(running, "Track") == "1" and seconds_shown(running) >= 2)
            began, then = seconds_shown(running), time.monotonic()
            server.start()
            with server.recording() as heard:
                first = heard.first_sound()
                passed = began + time.monotonic() - then
                heard.await_size(first + SECOND, 30)
                place = place_of(heard.sound(first)[:CLUE], disc.sound)
                self.assertGreaterEqual(place, 0, "this is not of the disc")
                self.assertAlmostEqual(place / SECOND, passed, delta=1.5)
                self.assertEqual(heard.sound(first)[:SECOND], disc.sound[place:place + SECOND])


def await_silence_between(heard, first):
    """The offset of the silence that a jump makes: the first run of zeros of 50 ms behind `first`."""
    hush = bytes(SECOND // 20)

    def look():
        at = heard.sound(first).find(hush)
        return None if at < 0 else (first + -(-at // SAMPLE) * SAMPLE,)
    return wait_for("the silence of the jump", look)[0]


if __name__ == "__main__":
    report.main()
