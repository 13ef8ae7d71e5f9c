#!/usr/bin/python3
"""The program as the desktop sees it: media keys by way of playerctl, the bus itself, notices, files that are opened."""
import contextlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import time
import unittest

import discs
import eyes
import report
from harness import PATIENCE, SECOND, Desktop, wait_for

HERE = pathlib.Path(__file__).resolve().parent
DATA = HERE.parents[1] / "data"
NAME = "org.mpris.MediaPlayer2.tessarel"
ROOT = "org.mpris.MediaPlayer2"
PLAYER = "org.mpris.MediaPlayer2.Player"
TITLES = ["Morning Song", "Noon & <Night>", None]


def setUpModule():
    global desktop, sight, disc, other, bus, Gio, GLib
    desktop = unittest.enterModuleContext(Desktop(report.program()))
    sight = eyes.open_eyes(desktop)
    from gi.repository import Gio as gio, GLib as glib  # once the bus is this process's own
    Gio, GLib = gio, glib
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    disc = speaking_disc(desktop.new_folder())
    other = discs.gapped_disc(desktop.new_folder(), seconds=(30, 30), seed=2)


def speaking_disc(folder):
    """A disc that says in its sheet what it is; of its third track it says nothing."""
    made = discs.gapped_disc(folder, seconds=(60, 40, 40))
    lines = made.cue.read_text(encoding="utf-8").splitlines()
    for number, title in enumerate(TITLES, 1):
        if title:
            at = lines.index(f"  TRACK {number:02} AUDIO") + 1
            lines[at:at] = [f'    TITLE "{title}"']
    lines[:0] = ['TITLE "Songs of a Day"', 'PERFORMER "The Clocks"']
    made.cue.write_text("\r\n".join([*lines, ""]), encoding="utf-8", newline="")
    return made


def claimed_types():
    text = (DATA / "org.tessarel.Tessarel.desktop").read_text(encoding="utf-8")
    return re.search("^MimeType=(.*);$", text, re.MULTILINE)[1].split(";")


def owned(name):
    return bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
                         GLib.Variant("(s)", (name,)), None, Gio.DBusCallFlags.NONE, -1, None).unpack()[0]


@contextlib.contextmanager
def player(*arguments, name=NAME, **settings):
    """The program with a disc in its drive, once it is on the bus and its first second has been played."""
    with desktop.running(*(arguments or ("--insert", f"D={disc.cue}")), **settings) as running:
        await_session(running, name)
        await_status("Playing", name)
        wait_for("keys that act", lambda: read(PLAYER, "CanGoNext", name=name))
        yield running


def await_session(running, name=NAME):
    def there():
        assert running.up(), "the program has ended: " + running.said()
        return owned(name)
    wait_for("the session", there)


def call(interface, method, signature="()", *arguments, name=NAME):
    return bus.call_sync(name, "/org/mpris/MediaPlayer2", interface, method, GLib.Variant(signature, arguments), None,
                         Gio.DBusCallFlags.NONE, int(PATIENCE * 1000), None).unpack()


def read(interface, what, name=NAME):
    return call("org.freedesktop.DBus.Properties", "Get", "(ss)", interface, what, name=name)[0]


def write(what, signature, value):
    call("org.freedesktop.DBus.Properties", "Set", "(ssv)", PLAYER, what, GLib.Variant(signature, value))


def playerctl(*words):
    done = subprocess.run(["playerctl", "--player=tessarel", *map(str, words)], env=desktop.env, capture_output=True, text=True,
                          timeout=PATIENCE, check=False)
    assert done.returncode == 0, f"playerctl {words}: {done.stderr}"
    return done.stdout.strip()


def await_status(wanted, name=NAME):
    wait_for(wanted, lambda: read(PLAYER, "PlaybackStatus", name=name) == wanted)


def await_track(number):
    wait_for(f"track {number}", lambda: read(PLAYER, "Metadata").get("xesam:trackNumber") == number)


def position():
    return float(playerctl("position"))


class Playerctl(unittest.TestCase):
    def test_finds_the_program(self):
        with player():
            self.assertIn("tessarel", playerctl("--list-all").split())

    def test_pauses_and_goes_on(self):
        with player() as running:
            playerctl("pause")
            await_status("Paused")
            self.assertEqual(playerctl("status"), "Paused")
            self.assertEqual(sight.text(running, "Pause"), "lit")
            playerctl("play")
            await_status("Playing")
            playerctl("play-pause")
            await_status("Paused")
            playerctl("play-pause")
            await_status("Playing")
            self.assertEqual(sight.text(running, "Play"), "lit")

    def test_is_heard(self):
        with desktop.sound.recording() as heard, player():
            heard.first_sound()
            playerctl("pause")
            await_status("Paused")
            time.sleep(0.5)
            quiet = heard.size()
            time.sleep(1)
            self.assertTrue(heard.is_silent(quiet), "there is sound in a pause")
            playerctl("play")
            heard.first_sound(quiet + SECOND)

    def test_moves_by_tracks(self):
        with player() as running:
            playerctl("next")
            await_track(2)
            wait_for("the digits", lambda: sight.text(running, "Track") == "2")
            playerctl("next")
            await_track(3)
            playerctl("previous")
            await_track(2)
            await_status("Playing")

    def test_stops(self):
        with player() as running:
            playerctl("stop")
            await_status("Stopped")
            self.assertEqual(sight.text(running, "Time"), "00:00")
            self.assertEqual(position(), 0)
            playerctl("play")
            await_status("Playing")

    def test_reads_and_sets_the_position(self):
        with player():
            wait_for("some seconds", lambda: position() > 1)
            playerctl("position", 20)
            wait_for("20 s", lambda: 20 <= position() < 24)
            before = position()
            playerctl("position", "5+")
            wait_for("5 s more", lambda: before + 4 <= position() < before + 9)
            playerctl("position", "15-")
            wait_for("15 s less", lambda: before - 12 <= position() < before - 4)
            time.sleep(1)
            self.assertLess(position(), before, "it goes on from there")

    def test_seeks_over_the_end_into_the_next_track(self):
        with player():
            playerctl("position", "59+")
            await_track(2)
            self.assertLess(position(), 5)

    def test_tells_what_the_disc_says_of_itself(self):
        with player():
            self.assertEqual(playerctl("metadata", "--format", "{{artist}}|{{album}}|{{title}}|{{xesam:trackNumber}}"),
                             "The Clocks|Songs of a Day|Morning Song|1")
            # The first track is 60 s and a frame, and the gap before the second.
            self.assertEqual(int(playerctl("metadata", "mpris:length")), (62 * 75 + 1) * 1_000_000 // 75 // 1000 * 1000)
            self.assertEqual(read(PLAYER, "Metadata")["xesam:albumArtist"], ["The Clocks"])
            playerctl("next")
            await_track(2)
            self.assertEqual(playerctl("metadata", "title"), "Noon & <Night>")
            playerctl("next")
            await_track(3)
            self.assertEqual(playerctl("metadata", "title"), "Track 3")

    def test_sets_the_loop(self):
        with player():
            self.assertEqual(playerctl("loop"), "None")
            for wanted in ("Playlist", "Track", "None"):
                playerctl("loop", wanted)
                wait_for(wanted, lambda: playerctl("loop") == wanted)  # pylint: disable=cell-var-from-loop
                await_status("Playing")

    def test_sets_shuffle(self):
        with player():
            self.assertEqual(playerctl("shuffle"), "Off")
            playerctl("shuffle", "On")
            wait_for("shuffle", lambda: playerctl("shuffle") == "On")
            await_status("Playing")
            playerctl("shuffle", "Toggle")
            wait_for("no shuffle", lambda: playerctl("shuffle") == "Off")

    def test_sets_the_volume(self):
        with player() as running:
            playerctl("volume", 0.4)
            wait_for("the volume", lambda: float(playerctl("volume")) == 0.4)
            self.assertEqual(sight.text(running, "Volume left figure"), "40")
            self.assertEqual(sight.text(running, "Volume right figure"), "40")
            playerctl("volume", "0.2+")
            wait_for("more", lambda: abs(float(playerctl("volume")) - 0.6) < 0.001)

    def test_follows(self):
        log = desktop.new_folder() / "followed"
        with player(), log.open("wb") as out:
            follower = desktop.children.start(["playerctl", "--player=tessarel", "--follow", "metadata", "--format",
                                               "{{status}} {{xesam:trackNumber}} {{title}}"], desktop.env, stdout=out)
            try:
                def lines():
                    return log.read_text(encoding="utf-8").split("\n")
                wait_for("the first line", lambda: "Playing 1 Morning Song" in lines())
                playerctl("next")
                wait_for("the second track", lambda: "Playing 2 Noon & <Night>" in lines())
                playerctl("pause")
                wait_for("the pause", lambda: "Paused 2 Noon & <Night>" in lines())
            finally:
                desktop.children.end(follower)

    def test_opens_an_image_in_the_place_of_the_disc(self):
        with player() as running:
            playerctl("open", other.cue)
            wait_for("the other disc", lambda: sight.text(running, "Disc") and "2 tracks" in sight.text(running, "Disc"))
            await_status("Playing")
            self.assertEqual(playerctl("metadata", "title"), "Track 1")

    def test_is_of_no_effect_without_a_disc(self):
        with desktop.running() as running:
            await_session(running)
            self.assertEqual(playerctl("status"), "Stopped")
            self.assertEqual(read(PLAYER, "Metadata"), {"mpris:trackid": "/org/mpris/MediaPlayer2/TrackList/NoTrack"})
            call(PLAYER, "Play")
            call(PLAYER, "Next")
            call(PLAYER, "Seek", "(x)", 5_000_000)
            time.sleep(0.5)
            self.assertEqual(playerctl("status"), "Stopped")
            self.assertTrue(running.up())
            playerctl("open", disc.cue)
            await_status("Playing")


class TheBus(unittest.TestCase):
    def test_has_every_member_of_a_player(self):
        with player():
            told = call("org.freedesktop.DBus.Introspectable", "Introspect")[0]
            interfaces = {each.name: each for each in Gio.DBusNodeInfo.new_for_xml(told).interfaces}
            self.assertEqual({m.name for m in interfaces[ROOT].methods}, {"Raise", "Quit"})
            self.assertEqual({m.name: [a.signature for a in m.in_args] for m in interfaces[PLAYER].methods},
                             {"Play": [], "Pause": [], "PlayPause": [], "Stop": [], "Next": [], "Previous": [], "Seek": ["x"],
                              "SetPosition": ["o", "x"], "OpenUri": ["s"]})
            self.assertEqual({s.name: [a.signature for a in s.args] for s in interfaces[PLAYER].signals}, {"Seeked": ["x"]})
            self.assertEqual({p.name: p.signature for p in interfaces[ROOT].properties},
                             {"CanQuit": "b", "CanRaise": "b", "HasTrackList": "b", "Identity": "s", "DesktopEntry": "s",
                              "SupportedUriSchemes": "as", "SupportedMimeTypes": "as"})
            writable = Gio.DBusPropertyInfoFlags.WRITABLE
            self.assertEqual({p.name: p.signature + ("!" if p.flags & writable else "") for p in interfaces[PLAYER].properties},
                             {"PlaybackStatus": "s", "LoopStatus": "s!", "Rate": "d!", "Shuffle": "b!", "Metadata": "a{sv}",
                              "Volume": "d!", "Position": "x", "MinimumRate": "d", "MaximumRate": "d", "CanGoNext": "b",
                              "CanGoPrevious": "b", "CanPlay": "b", "CanPause": "b", "CanSeek": "b", "CanControl": "b"})

    def test_tells_what_the_program_is_and_can(self):
        with player():
            told = call("org.freedesktop.DBus.Properties", "GetAll", "(s)", ROOT)[0]
            types = told.pop("SupportedMimeTypes")
            self.assertEqual(told, {"CanQuit": True, "CanRaise": True, "HasTrackList": False, "Identity": "Tessarel",
                                    "DesktopEntry": "org.tessarel.Tessarel", "SupportedUriSchemes": ["file"]})
            self.assertEqual(types, claimed_types())
            told = call("org.freedesktop.DBus.Properties", "GetAll", "(s)", PLAYER)[0]
            self.assertEqual({name: told[name] for name in ("Rate", "MinimumRate", "MaximumRate", "CanControl", "CanPlay", "CanPause",
                                                            "CanSeek", "CanGoNext", "CanGoPrevious")},
                             {"Rate": 1.0, "MinimumRate": 1.0, "MaximumRate": 1.0, "CanControl": True, "CanPlay": True, "CanPause": True,
                              "CanSeek": True, "CanGoNext": True, "CanGoPrevious": False})

    def test_hears_of_changes_and_jumps(self):
        with player():
            changes, jumps = [], []
            subscriptions = [
                bus.signal_subscribe(NAME, "org.freedesktop.DBus.Properties", "PropertiesChanged", "/org/mpris/MediaPlayer2", None,
                                     Gio.DBusSignalFlags.NONE, lambda *signal: changes.append(signal[5].unpack())),
                bus.signal_subscribe(NAME, PLAYER, "Seeked", "/org/mpris/MediaPlayer2", None, Gio.DBusSignalFlags.NONE,
                                     lambda *signal: jumps.append(signal[5].unpack()[0]))]
            self.addCleanup(lambda: [bus.signal_unsubscribe(each) for each in subscriptions])
            context = GLib.MainContext.default()

            def await_signal(what, condition):
                def look():
                    while context.iteration(False):
                        pass
                    return condition()
                return wait_for(what, look)
            call(PLAYER, "Pause")
            await_signal("the pause", lambda: changes)
            self.assertEqual(changes, [(PLAYER, {"PlaybackStatus": "Paused", "CanSeek": False}, [])])
            changes.clear()
            call(PLAYER, "PlayPause")
            await_signal("play", lambda: changes)
            self.assertEqual(changes, [(PLAYER, {"PlaybackStatus": "Playing", "CanSeek": True}, [])])
            track = read(PLAYER, "Metadata")["mpris:trackid"]
            call(PLAYER, "SetPosition", "(ox)", track, 30_000_000)
            await_signal("the jump", lambda: jumps)
            self.assertAlmostEqual(jumps[0] / 1e6, 30, delta=1)
            changes.clear()
            call(PLAYER, "Next")
            await_signal("the track", lambda: changes and "Metadata" in changes[-1][1])
            self.assertEqual(changes[-1][1]["Metadata"]["xesam:trackNumber"], 2)
            self.assertEqual(len(jumps), 1)
            call(PLAYER, "SetPosition", "(ox)", track, 5_000_000)  # of the track before: passed over
            time.sleep(1)
            await_signal("nothing", lambda: True)
            self.assertEqual(len(jumps), 1)

    def test_lets_nobody_change_what_is_only_read(self):
        with player():
            for what, signature, value in (("PlaybackStatus", "s", "Paused"), ("Position", "x", 5), ("CanSeek", "b", False)):
                with self.subTest(what), self.assertRaises(GLib.Error):
                    write(what, signature, value)
            write("LoopStatus", "s", "Sideways")
            write("Rate", "d", 2.0)
            write("Volume", "d", -3.0)
            wait_for("silence", lambda: read(PLAYER, "Volume") == 0)
            self.assertEqual((read(PLAYER, "LoopStatus"), read(PLAYER, "Rate")), ("None", 1.0))
            write("Rate", "d", 0.0)
            await_status("Paused")

    def test_refuses_what_is_no_local_file(self):
        with player():
            for address in ("http://localhost/disc.cue", "disc.cue", "", "file://elsewhere/disc.cue"):
                with self.subTest(address), self.assertRaises(GLib.Error) as refused:
                    call(PLAYER, "OpenUri", "(s)", address)
                self.assertIn("local files", str(refused.exception))
            await_status("Playing")

    def test_opens_addresses_with_escapes(self):
        folder = desktop.new_folder() / "größe & 100 %"
        folder.mkdir()
        made = discs.gapped_disc(folder, seconds=(10, 10, 10, 10), seed=3)
        with player() as running:
            call(PLAYER, "OpenUri", "(s)", made.cue.as_uri())
            wait_for("the other disc", lambda: sight.text(running, "Disc") and "4 tracks" in sight.text(running, "Disc"))
            await_status("Playing")

    def test_tells_a_person_why_a_file_is_no_disc(self):
        wrong = desktop.new_folder() / "wrong.cue"
        wrong.write_text("this is no sheet", encoding="utf-8")
        with player() as running:
            call(PLAYER, "OpenUri", "(s)", wrong.as_uri())
            self.assertIn("wrong.cue", sight.message(running))
            await_status("Playing")
            sight.answer(running, "OK")

    def test_raises_the_window(self):
        with player() as running:
            window = running.await_window()
            desktop.run("xdotool", "windowminimize", "--sync", window)
            wait_for("the window to go", lambda: window not in running.windows())
            call(ROOT, "Raise")
            wait_for("the window to come", lambda: window in running.windows())

    def test_ends_the_program(self):
        with player() as running:
            call(ROOT, "Quit")
            self.assertEqual(running.await_end(), 0)
        self.assertFalse(owned(NAME))
        with desktop.running() as running:
            await_session(running)
            call(ROOT, "Quit")
            self.assertEqual(running.await_end(), 0)

    def test_gives_a_second_process_a_name_of_its_own(self):
        with player():
            with desktop.running() as second:
                await_session(second, f"{NAME}.instance{second.pid}")
                self.assertEqual(read(PLAYER, "PlaybackStatus", name=f"{NAME}.instance{second.pid}"), "Stopped")
            await_status("Playing")

    def test_tells_a_picture_of_the_jacket_that_is_there(self):
        picture = desktop.new_folder() / "front cover.png"
        picture.write_bytes(b"not looked into")
        for name, wanted in ((picture, picture.as_uri()), (picture.with_name("gone.png"), None)):
            home = desktop.new_home()
            lines = ['"4"', "10"] + [value for image in ["Z:" + str(name).replace("/", "\\")] + [""] * 19 for value in (f'"{image}"', "0")]
            with player(home=home) as running:
                number = wait_for("the disc's number", lambda: sight.text(running, "Disc number")).removeprefix("No. ")  # pylint: disable=cell-var-from-loop
            folder = home.data / "datacd"
            folder.mkdir(exist_ok=True)
            (folder / f"{number}.CD1").write_bytes("\r\n".join([*lines, "0", ""]).encode())
            with self.subTest(name), player(home=home):
                self.assertEqual(read(PLAYER, "Metadata").get("mpris:artUrl"), wanted)


class Notices(unittest.TestCase):
    @contextlib.contextmanager
    def service(self, *capabilities):
        log = desktop.new_folder() / "notices"
        log.touch()
        service = desktop.children.start(["/usr/bin/python3", HERE / "notice_service.py", log, *capabilities], desktop.env)
        try:
            wait_for("the service", lambda: owned("org.freedesktop.Notifications"))
            yield lambda: [json.loads(line) for line in log.read_text(encoding="utf-8").splitlines()]
        finally:
            desktop.children.end(service)

    def leave(self, running):
        """Turns to another window."""
        window = running.focus()
        desktop.run("xdotool", "windowminimize", "--sync", window)
        wait_for("the window to go", lambda: window not in running.windows())

    def test_name_the_new_track_and_replace_each_other(self):
        with self.service() as notices, player() as running:
            self.leave(running)
            playerctl("next")
            wait_for("a notice", lambda: len(notices()) == 1)
            playerctl("next")
            wait_for("another", lambda: len(notices()) == 2)
            first, second = notices()
            self.assertEqual((first["application"], first["title"], first["text"]),
                             ("Tessarel", "Noon & <Night>", "The Clocks - Songs of a Day"))
            self.assertEqual((second["title"], second["replaces"]), ("Track 3", first["id"]))
            self.assertEqual(first["replaces"], 0)
            self.assertEqual(first["hints"]["desktop-entry"], "org.tessarel.Tessarel")

    def test_are_given_when_another_program_has_the_keyboard(self):
        with self.service() as notices, player() as running, desktop.running() as elsewhere:
            running.await_window()
            elsewhere.focus()
            playerctl("next")
            wait_for("a notice", lambda: [notice["title"] for notice in notices()] == ["Noon & <Night>"])

    def test_are_not_given_while_the_window_is_in_front(self):
        with self.service() as notices, player() as running:
            running.focus()
            playerctl("next")
            await_track(2)
            wait_for("some seconds", lambda: position() > 2)
            self.assertEqual(notices(), [])

    def test_escape_what_a_service_would_take_for_markup(self):
        folder = desktop.new_folder()
        made = discs.gapped_disc(folder, seconds=(20, 20), seed=4)
        made.cue.write_text('PERFORMER "A & <b>B</b>"\r\n' + made.cue.read_text(encoding="utf-8"), encoding="utf-8", newline="")
        for capabilities, wanted in ((["body-markup"], "A &amp; &lt;b&gt;B&lt;/b&gt;"), ([], "A & <b>B</b>")):
            with self.subTest(capabilities), self.service(*capabilities) as notices, player(made.cue) as running:
                self.leave(running)
                playerctl("next")
                self.assertEqual(wait_for("a notice", notices)[0]["text"], wanted)

    def test_are_missed_by_nobody_where_there_is_no_service(self):
        self.assertFalse(owned("org.freedesktop.Notifications"))
        with player() as running:
            self.leave(running)
            for _ in range(2):
                playerctl("next")
                wait_for("some seconds", lambda: position() > 1.5)
            self.assertEqual(running.said(), "")
            with self.service() as notices:  # one that comes later is used
                playerctl("previous")
                wait_for("a notice", lambda: len(notices()) == 1)


class WithoutABus(unittest.TestCase):
    def assert_plays(self, **env):
        with desktop.sound.recording() as heard:
            before = time.monotonic()
            with desktop.running("--insert", f"D={disc.cue}", env={"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "0", "NO_AT_BRIDGE": "1", **env}) as running:
                heard.first_sound()
                self.assertLess(time.monotonic() - before, 1.5)
                heard.await_size(heard.size() + 3 * SECOND, PATIENCE)
                self.assertTrue(running.up())
                self.assertEqual(running.said(), "")
                self.assertEqual(self.buses_of(running), [])
                start = heard.first_sound()
                played = heard.sound(start)
                self.assertEqual(played, disc.sound[:len(played)], "play was held up")

    def buses_of(self, running):
        """Buses that the program has started."""
        told = subprocess.run(["ps", "-e", "-o", "pid=,ppid=,args="], capture_output=True, text=True, check=True, timeout=PATIENCE).stdout
        return [line for line in told.splitlines() if "dbus-launch" in line and self.display() in line or f" {running.pid} dbus" in line]

    @staticmethod
    def display():
        return "--display " + desktop.env["DISPLAY"]

    def test_plays_and_says_nothing(self):
        self.assert_plays(DBUS_SESSION_BUS_ADDRESS="", XDG_RUNTIME_DIR=str(desktop.new_folder()))

    def test_plays_when_the_bus_is_dead(self):
        self.assert_plays(DBUS_SESSION_BUS_ADDRESS=f"unix:path={desktop.new_folder()}/none")


class TheDesktopFile(unittest.TestCase):
    def test_is_valid(self):
        self.assertEqual(desktop.run("desktop-file-validate", DATA / "org.tessarel.Tessarel.desktop"), "")

    def test_comes_with_valid_metainfo_that_claims_the_same_types(self):
        metainfo = DATA / "org.tessarel.Tessarel.metainfo.xml"
        desktop.run("appstreamcli", "validate", "--no-net", metainfo)
        types = re.findall("<mediatype>(.*)</mediatype>", metainfo.read_text(encoding="utf-8"))
        self.assertEqual(types, claimed_types())

    def test_claims_types_that_the_images_files_have(self):
        """By the desktop's own list of types, and the package that is installed beside it."""
        folder = desktop.new_folder()
        (folder / "mime/packages").mkdir(parents=True)
        shutil.copy(DATA / "org.tessarel.Tessarel.mime.xml", folder / "mime/packages/org.tessarel.Tessarel.xml")
        shutil.copy("/usr/share/mime/packages/freedesktop.org.xml", folder / "mime/packages")
        desktop.run("update-mime-database", folder / "mime")
        for name in ("disc.cue", "disc.toc", "disc.nrg", "disc.iso"):
            file = desktop.new_folder() / name
            file.write_bytes(b"\0" * 4096 if name.endswith(("nrg", "iso")) else b"CD_DA\n")
            told = subprocess.run(["gio", "info", "-a", "standard::content-type", file], env=desktop.env | {"XDG_DATA_DIRS": str(folder)},
                                  capture_output=True, text=True, check=True, timeout=PATIENCE).stdout
            with self.subTest(name):
                self.assertIn(re.search("content-type: (.*)", told)[1], claimed_types())

    def test_starts_the_program_as_its_line_says(self):
        lines = (DATA / "org.tessarel.Tessarel.desktop").read_text(encoding="utf-8").splitlines()
        self.assertEqual([line for line in lines if line.startswith("Exec=")], ["Exec=tessarel %U", "Exec=tessarel cdda:"])


class AnOpenedFile(unittest.TestCase):
    """As a file manager opens it."""

    def without_auto_start(self):
        home = desktop.new_home()
        home.set_line("TSLWIN1.INI", 7, 0)
        return home

    def test_plays(self):
        with player(disc.cue):
            pass

    def test_plays_though_discs_do_not_start_by_themselves(self):
        with player(disc.cue, home=self.without_auto_start()):
            pass

    def test_may_be_an_address(self):
        with player(disc.cue.as_uri(), home=self.without_auto_start()):
            self.assertEqual(playerctl("metadata", "title"), "Morning Song")

    def test_may_be_the_disc_that_is_in_the_drive(self):
        with player("--insert", f"D={disc.cue}", "cdda://sr0/", home=self.without_auto_start()):
            pass

    def test_may_be_a_folder_that_holds_one(self):
        with player(disc.cue.parent.as_uri(), home=self.without_auto_start()):
            self.assertEqual(playerctl("metadata", "title"), "Morning Song")

    def test_plays_though_the_settings_begin_with_another_window(self):
        home = self.without_auto_start()
        home.set_line("TSLWIN1.INI", 2, 0)
        with player(disc.cue, home=home):
            pass

    def test_comes_with_others_in_the_drives_behind_it(self):
        with player(disc.cue, other.cue) as running:
            self.assertEqual(playerctl("metadata", "title"), "Morning Song")
            self.assertEqual(len(running.windows()), 1)
            opened = {os.path.realpath(file) for file in pathlib.Path(f"/proc/{running.pid}/fd").iterdir()}
            self.assertLessEqual({str(disc.cue.with_suffix(".bin")), str(other.cue.with_suffix(".bin"))}, opened)

    def test_that_is_refused_plays_nothing(self):
        wrong = desktop.new_folder() / "wrong.cue"
        wrong.write_text("this is no sheet", encoding="utf-8")
        with desktop.running(wrong, "--insert", f"E={disc.cue}") as running:
            self.assertIn("wrong.cue", sight.message(running))
            sight.answer(running, "OK")
            sight.find(running, "Insert disc image...")
            await_session(running)
            self.assertEqual(playerctl("status"), "Stopped")

    def test_plays_in_a_process_of_its_own_beside_another(self):
        with player():
            with desktop.running(other.cue) as second:
                name = f"{NAME}.instance{second.pid}"
                await_session(second, name)
                wait_for("play", lambda: read(PLAYER, "PlaybackStatus", name=name) == "Playing")
            await_status("Playing")

    def test_plays_when_it_is_opened_in_a_running_program_that_does_not_start_discs(self):
        with desktop.running(home=self.without_auto_start()) as running:
            await_session(running)
            playerctl("open", disc.cue)
            await_status("Playing")

    def test_is_not_what_is_inserted(self):
        """A disc that is only put in is left to the settings."""
        with desktop.running("--insert", f"D={disc.cue}", home=self.without_auto_start()) as running:
            await_session(running)
            sight.find(running, "Next track")
            time.sleep(1.5)
            self.assertEqual(playerctl("status"), "Stopped")


if __name__ == "__main__":
    report.main()
