#!/usr/bin/python3
"""The windows as a person meets them: by keyboard, mouse and screen reader, on a real screen."""
import time
import unittest

import discs
import eyes
import report
from harness import Desktop, wait_for

TRANSPORT = ["Previous track", "Next track", "Play", "Pause", "Stop", "Eject"]


def setUpModule():
    global desktop, sight, disc
    desktop = unittest.enterModuleContext(Desktop(report.program()))
    sight = eyes.open_eyes(desktop)
    disc = discs.gapped_disc(desktop.new_folder(), seconds=(20, 10, 10))


def player(**settings):
    """The program with a disc in its drive."""
    return desktop.running("--insert", f"D={disc.cue}", **settings)


def await_player(running):
    """Waits until the player is up, with its disc playing, and is the only window."""
    sight.find(running, "Next track")
    wait_for("play", lambda: sight.text(running, "Play") == "lit")
    wait_for("one window", lambda: len(running.windows()) == 1)
    return running.await_window()


def icon_of(running, window):
    """The minimised window that stands for a hidden one; nothing when there is none."""
    named = desktop.run("xdotool", "search", "--all", "--pid", running.pid, "--name", "^Tessarel").split()
    width = running.geometry(window)[2]
    return [int(one) for one in named if int(one) not in running.windows() and running.geometry(one)[2] < width / 2]


def walk(running):
    """Names of the controls that the Tab key comes by, until it has come round."""
    names = []
    for _ in range(150):
        before = sight.focused(running)
        desktop.key("Tab")
        here = wait_for("the next control", lambda: moved(running, before))
        name = (here.get_name(), here.get_role_name(), tuple(sight.place(here)))
        if name in names:
            return names[names.index(name):]
        names.append(name)
    raise AssertionError(f"Tab does not come round: {names}")


def moved(running, before):
    here = sight.focused(running)
    return here if here is not None and here != before else None


class TheWaitingWindow(unittest.TestCase):
    def test_opens_on_a_fresh_home_without_a_disc(self):
        with desktop.running() as running:
            window = running.await_window()
            self.assertEqual(running.title(window), "Tessarel")
            wait_for("its names", lambda: {"Insert disc image...", "Minimise", "Exit"} <= set(sight.names(running)))
            self.assertEqual(sight.text(running, "What to do"), "Please Insert an Audio CD")
            self.assertEqual(sight.text(running, "Where to put it"), "or a CD-ROM into the Drive...")

    def test_ends_on_escape_with_status_0(self):
        with desktop.running() as running:
            self.assertEqual(running.close_by_escape(), 0)

    def test_ends_when_the_window_manager_closes_it(self):
        with desktop.running() as running:
            running.focus()
            desktop.key("alt+F4")  # openbox's own key: it asks the window to close
            self.assertEqual(running.await_end(), 0)

    def test_lets_tab_come_by_everything_that_takes_the_keyboard(self):
        with desktop.running() as running:
            running.focus()
            self.assertEqual({name for name, *_ in walk(running)}, {node.get_name() for node in sight.focusable(running)})

    def test_takes_an_image_from_the_file_dialog(self):
        with desktop.running() as running:
            self.choose(running, disc.cue)
            await_player(running)

    def test_tells_why_a_chosen_file_is_no_disc(self):
        wrong = desktop.new_folder() / "wrong.cue"
        wrong.write_text('FILE "nowhere.bin" BINARY\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n', encoding="utf-8")
        with desktop.running() as running:
            self.choose(running, wrong)
            self.assertIn("nowhere.bin", wait_for("the reason", lambda: reason(running)))
            sight.answer(running, "OK")
            wait_for("the waiting window alone", lambda: len(running.windows()) == 1)
            self.assertTrue(running.up())

    def choose(self, running, file):
        """By the keyboard, as the dialog has it: the name, and Enter."""
        running.focus()
        sight.press_without_waiting(running, "Insert disc image...")
        wait_for("the dialog's box for the name", lambda: sight.role_of_focused(running) == "text")
        desktop.run("xdotool", "type", "--delay", "5", str(file))
        desktop.key("Return")


def reason(running):
    text = sight.message(running)
    return text if "nowhere" in text else None


class ThePlayer(unittest.TestCase):
    def test_starts_an_inserted_disc_within_a_second(self):
        with desktop.sound.recording() as heard:
            before = time.monotonic()
            with player() as running:
                heard.first_sound()
                took = time.monotonic() - before
                self.assertLess(took, 1.0)
                self.assertEqual(sight.text(running, "Play"), "lit")

    def test_names_its_keys_and_lets_them_be_pressed(self):
        with player() as running:
            await_player(running)
            for name in [*TRANSPORT, "Track 1", "Track 2", "Track 3", "Single track", "Whole disc", "Exit", "Minimise"]:
                with self.subTest(name):
                    self.assertIn("Press", sight.actions(sight.find(running, name)))

    def test_leaves_no_control_without_a_name(self):
        with player() as running:
            await_player(running)
            unnamed = [(node.get_role_name(), node.get_description()) for node in sight.all(running)
                       if not node.get_name() and node.get_role_name() not in ("frame", "filler", "panel")]
            self.assertEqual(unnamed, [])

    def test_does_what_its_pressed_keys_say(self):
        with player() as running:
            await_player(running)
            wait_for("the first seconds", lambda: sight.text(running, "Time") in [f"0:{second:02}" for second in range(1, 60)])
            sight.press(running, "Pause")
            self.assertEqual([sight.text(running, name) for name in ("Play", "Pause")], ["Play (Space)", "lit"])
            sight.press(running, "Play")
            self.assertEqual([sight.text(running, name) for name in ("Play", "Pause")], ["lit", "Pause (Space)"])
            sight.press(running, "Next track")
            wait_for("track 2", lambda: sight.find(running, "Track").get_description() == "2")
            sight.press(running, "Previous track")
            wait_for("track 1", lambda: sight.text(running, "Track") == "1")
            sight.press(running, "Track 3")
            wait_for("track 3", lambda: sight.text(running, "Track") == "3")
            sight.press(running, "Stop")
            self.assertEqual([sight.text(running, name) for name in ("Play", "Stop", "Time")], ["Play (Space)", "dim", "00:00"])
            sight.press(running, "Eject")
            sight.find(running, "Insert disc image...")

    def test_tells_the_time_as_it_goes(self):
        with player() as running:
            await_player(running)
            told = [f"0:{second:02}" for second in range(1, 60)]
            wait_for("the first seconds", lambda: sight.text(running, "Time") in told)
            first = told.index(sight.text(running, "Time"))
            wait_for("later seconds", lambda: sight.text(running, "Time") in told[first + 1:first + 8])

    def test_lets_tab_come_by_everything_that_takes_the_keyboard(self):
        with player() as running:
            await_player(running)
            running.focus()
            come_by = walk(running)
            missed = {(node.get_name(), tuple(sight.place(node))) for node in sight.focusable(running)}
            missed -= {(name, place) for name, _, place in come_by}
            self.assertEqual(missed, set())
            self.assertLessEqual({*TRANSPORT, "Track 1", "Volume left", "Exit"}, {name for name, *_ in come_by})

    def test_takes_space_on_a_key_as_a_press(self):
        with player() as running:
            await_player(running)
            running.focus()
            self.tab_to(running, "Pause")
            desktop.key("space")
            wait_for("the pause", lambda: sight.text(running, "Pause") == "lit")
            self.tab_to(running, "Play")
            desktop.key("space")
            wait_for("play", lambda: sight.text(running, "Play") == "lit")

    def test_takes_space_for_play_and_pause_wherever_no_ring_shows(self):
        with player() as running:
            await_player(running)
            running.focus()
            desktop.key("space")
            wait_for("the pause", lambda: sight.text(running, "Pause") == "lit")
            desktop.key("space")
            wait_for("play", lambda: sight.text(running, "Play") == "lit")

    def test_picks_tracks_and_stops_by_the_keyboard(self):
        with player() as running:
            await_player(running)
            running.focus()
            desktop.key("3")
            wait_for("track 3", lambda: sight.text(running, "Track") == "3")
            desktop.key("ctrl+Left")
            wait_for("track 2", lambda: sight.find(running, "Track").get_description() == "2")
            desktop.key("s")
            wait_for("the stop", lambda: sight.text(running, "Stop") == "dim")

    def tab_to(self, running, name):
        for _ in range(100):
            here = sight.focused(running)
            if here is not None and here.get_name() == name:
                return
            desktop.key("Tab")
            wait_for("the next control", lambda: moved(running, here))
        self.fail(f"Tab does not come to {name}")

    def test_takes_a_click_of_the_mouse(self):
        with player() as running:
            await_player(running)
            x, y, width, height = sight.place(sight.find(running, "Pause"))
            desktop.run("xdotool", "mousemove", x + width // 2, y + height // 2, "click", 1)
            wait_for("the pause", lambda: sight.text(running, "Pause") == "lit")

    def test_ends_on_escape_with_status_0(self):
        with player() as running:
            await_player(running)
            self.assertEqual(running.close_by_escape(), 0)

    def test_comes_back_from_its_icon(self):
        with player() as running:
            window = await_player(running)
            sight.press(running, "Stop")
            sight.press(running, "Minimise")
            wait_for("the window to go", lambda: window not in running.windows())
            icon = wait_for("the icon", lambda: icon_of(running, window))[0]
            time.sleep(1)  # it must not open again by itself
            self.assertNotIn(window, running.windows())
            desktop.run("xdotool", "windowmap", icon)
            wait_for("the window to come", lambda: window in running.windows())
            wait_for("the icon to go", lambda: not icon_of(running, window))

    def test_leaves_a_small_window_that_goes_on_with_the_disc(self):
        with player() as running:
            window = await_player(running)
            sight.press(running, "Stop")
            sight.press(running, "Play")
            sight.press(running, "Minimise")
            wait_for("the window to go", lambda: window not in running.windows())
            small = wait_for("the small window", lambda: [w for w in running.windows() if running.title(w) == "TSL Volume"])
            sight.press(running, "Show the display")
            wait_for("its clock", lambda: sight.find(running, "Time").get_description().startswith("0:02"))
            sight.press(running, "Next track")
            wait_for("the next track", lambda: sight.find(running, "Track").get_description() == "2")
            desktop.key("Escape")
            wait_for("the window to come", lambda: window in running.windows())
            self.assertNotIn(small[0], running.windows())
            wait_for("its clock", lambda: sight.find(running, "Track").get_description() == "2")


class TheScreen(unittest.TestCase):
    def assert_painted(self, running, window):
        """Many colours, and none of them the whole window."""
        def painted():
            colours = running.colours(window)
            return len(colours) > 100 and max(colours.values()) < 0.8 * sum(colours.values())
        wait_for("a painted window", painted)

    def test_shows_a_painted_player(self):
        with player() as running:
            self.assert_painted(running, await_player(running))

    def test_shows_a_painted_waiting_window(self):
        with desktop.running() as running:
            self.assert_painted(running, running.await_window())

    def test_is_filled_at_twice_the_scale(self):
        """On a screen that is large enough; all keys lie inside the window."""
        with player() as running:
            *_, width, height = running.geometry(await_player(running))
        with player(env={"QT_SCALE_FACTOR": "2"}) as running:
            window = await_player(running)
            left, top, wide, high = running.geometry(window)
            self.assertEqual((wide, high), (2 * width, 2 * height))
            self.assert_painted(running, window)
            for name in [*TRANSPORT, "Track 1", "Track 20", "Exit", "Volume right"]:
                x, y, w, h = sight.place(sight.find(running, name))
                # The bus tells places in the application's own measure.
                self.assertTrue(0 <= x - left / 2 <= width - w and 0 <= y - top / 2 <= height - h, f"{name} lies outside")


if __name__ == "__main__":
    report.main()
