#!/usr/bin/python3
"""Measures the program against real parts and prints a table: sound_bench.py PROGRAM BARE_WINDOW DEMO.cue [part of a name ...]

Each figure is taken on a private screen and a private sound server, in one run with its peer. A busy machine spoils them: the
bench waits some minutes for a calm one, and tells the load at its beginning and end.
"""
import array
import contextlib
import ctypes
import ctypes.util
import os
import pathlib
import statistics
import subprocess
import sys
import threading
import time
import wave

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests/system"))
sys.dont_write_bytecode = True
import discs  # noqa: E402
import eyes  # noqa: E402
from harness import SAMPLE, SECOND, Desktop, differences, wait_for  # noqa: E402

CALM = 1.0  # load average of the last minute
CALM_WAIT = float(os.environ.get("TESSAREL_BENCH_WAIT", "180"))  # seconds
STARTS = 25
PLAYS = 10
CHANGES = int(os.environ.get("TESSAREL_BENCH_CHANGES", "200"))  # of discs
FIRST_CHANGES = 10  # fill what is kept for good
TICKS = os.sysconf("SC_CLK_TCK")


def load():
    return pathlib.Path("/proc/loadavg").read_text(encoding="ascii").split()[:2]


def await_calm():
    deadline = time.monotonic() + CALM_WAIT
    while float(load()[0]) > CALM and time.monotonic() < deadline:
        time.sleep(5)


def processor_seconds(pid):
    """User and system time of a process with all its threads."""
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text(encoding="ascii").rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / TICKS


def megabytes(pid, field):
    status = pathlib.Path(f"/proc/{pid}/status").read_text(encoding="ascii")
    return next(int(line.split()[1]) for line in status.splitlines() if line.startswith(field + ":")) / 1024


def peak_megabytes(pid):
    return megabytes(pid, "VmHWM")


def spread(values, unit="ms"):
    return f"median {statistics.median(values):.0f} {unit}, longest {max(values):.0f} {unit} of {len(values)}"


class Screen:
    """Looks at single pixels of the screen through the X library: an outside tool would take longer than what is measured."""

    def __init__(self, name):
        self._x = ctypes.CDLL(ctypes.util.find_library("X11"))
        pointer, number = ctypes.c_void_p, ctypes.c_int
        self._x.XOpenDisplay.restype = self._x.XGetImage.restype = pointer
        self._x.XDefaultRootWindow.restype = self._x.XGetPixel.restype = ctypes.c_ulong
        self._x.XDefaultRootWindow.argtypes = [pointer]
        self._x.XGetImage.argtypes = [pointer, ctypes.c_ulong, number, number, ctypes.c_uint, ctypes.c_uint, ctypes.c_ulong, number]
        self._x.XGetPixel.argtypes = [pointer, number, number]
        self._x.XDestroyImage.argtypes = [pointer]
        self._display = self._x.XOpenDisplay(name.encode())
        self._root = self._x.XDefaultRootWindow(self._display)

    def lit(self, x, y):
        """Whether a pixel is other than black."""
        image = self._x.XGetImage(self._display, self._root, x, y, 1, 1, 0xFFFFFF, 2)
        if not image:
            return False
        pixel = self._x.XGetPixel(image, 0, 0)
        self._x.XDestroyImage(image)
        return pixel & 0xFFFFFF != 0


class Bench:
    def __init__(self, desktop, bare_window, demo):
        self.desktop, self.bare_window, self.demo = desktop, bare_window, demo
        self.sight = eyes.open_eyes(desktop)
        self.rows = []

    def tell(self, what, figure, peer="", ratio=""):
        self.rows.append((what, figure, peer, ratio))
        print(f"  {what}: {figure} {peer} {ratio}", file=sys.stderr, flush=True)

    @contextlib.contextmanager
    def playing(self, cue, home=None, own_server=False):
        server = self.desktop.new_sound_server().start() if own_server else self.desktop.sound
        with server.recording() as heard, self.desktop.running("--insert", f"D={cue}", home=home,
                                                               env={"PULSE_SERVER": server.address}) as running:
            yield running, heard

    def quiet_home(self):
        """Nothing plays by itself."""
        home = self.desktop.new_home()
        home.set_line("TSLWIN1.INI", 7, 0)
        return home

    def exactness(self):
        """Both discs play at the same time, each into a server of its own."""
        twenty = discs.gapped_disc(self.desktop.new_folder(), seconds=[8] * 20, seed="twenty")
        plays = {"demo disc": (self.demo, self.demo_sound()), "20 tracks with gaps of 2 s": (twenty.cue, twenty.sound)}
        with contextlib.ExitStack() as stack:
            going_on = [(name, sound, stack.enter_context(self.playing(cue, own_server=True))[1])
                        for name, (cue, sound) in plays.items()]
            for name, sound, heard in reversed(going_on):
                heard.await_size(heard.first_sound() + len(sound) + SECOND, len(sound) / SECOND + 60)
                wrong = differences(heard.sound(), sound)
                self.tell(f"Whole disc, {name}, {len(sound) / SECOND:.0f} s",
                          "every sample" if wrong is None else f"WRONG: {wrong}")

    def demo_sound(self):
        """The image from its first track's start; its silent ends can't be told from no sound."""
        sound = self.demo.with_suffix(".bin").read_bytes()
        head = (len(sound) - len(sound.lstrip(b"\0"))) // SAMPLE * SAMPLE
        tail = -(-len(sound.rstrip(b"\0")) // SAMPLE) * SAMPLE
        return sound[head:tail]

    def reaction(self):
        disc = discs.gapped_disc(self.desktop.new_folder(), seconds=[30] * 3, seed="reaction")
        plays, nexts = [], []
        for _ in range(PLAYS):
            with self.playing(disc.cue, self.quiet_home()) as (running, heard):
                play = self.sight.find(running, "Play")
                press = self.sight.actions(play).index("Press")
                time.sleep(1)  # the disc has been read, and its lengths shown
                plays.append(self.until_sound(heard, lambda: play.get_action_iface().do_action(press), bytes(SAMPLE)))
                following = self.sight.find(running, "Next track")
                wait_for("the first time update", lambda: self.sight.text(running, "Time") == "0:01")
                clue = disc.sound[disc.starts[1]:disc.starts[1] + 64 * SAMPLE]
                nexts.append(self.until_sound(heard, lambda: following.get_action_iface().do_action(press), clue))
        self.tell("Play pressed to first sample", spread([value * 1000 for value in plays]))
        self.tell("Next pressed to first sample of the next track, less the wait of 300 ms",
                  spread([value * 1000 - 300 for value in nexts]))

    def slider(self):
        disc = discs.steady_disc(self.desktop.new_folder())
        took, jumps = [], []
        with self.playing(disc.cue) as (running, heard):
            heard.first_sound()
            slider = self.sight.find(running, "Volume left").get_value_iface()
            for i in range(PLAYS):
                time.sleep(1)  # at rest, and all that was recorded is on the disc
                before = heard.size()
                steady = heard.sound(before - SAMPLE)
                position = 40 * ((i + 1) % 2)
                took.append(self.until_change(heard, before, steady, lambda at=position: slider.set_current_value(at)))
                time.sleep(0.3)
                jumps.append(self.largest_jump(heard.sound(before - SAMPLE)))
            abrupt = self.abrupt_jump(heard)
        self.tell("Slider moved to first changed sample", spread([value * 1000 for value in took]))
        self.tell("Largest step between samples, a slider's move of 40", f"{max(jumps) * 100:.0f} % of the whole change",
                  f"by pactl {abrupt * 100:.0f} %")

    def abrupt_jump(self, heard):
        """The same change of the stream by the server's own tool, which does not glide."""
        before = heard.size()
        stream = self.desktop.run("pactl", "list", "short", "sink-inputs").split()[0]
        self.desktop.run("pactl", "set-sink-input-volume", stream, "60%")
        time.sleep(0.3)
        return self.largest_jump(heard.sound(before - SAMPLE))

    @staticmethod
    def until_change(heard, before, steady, move):
        """Seconds from a move to a sample that is another than before."""
        began = time.monotonic()
        moved = threading.Thread(target=move)
        moved.start()

        def look():
            sound = heard.sound(before)
            return sound != steady * (len(sound) // SAMPLE)
        wait_for("the change", look, every=0.002)
        seen = time.monotonic() - began
        moved.join()
        return seen

    @staticmethod
    def largest_jump(sound):
        """Between neighbouring samples of the left channel, as a part of the whole change."""
        left = array.array("h", sound)[::2]
        return max(abs(b - a) for a, b in zip(left, left[1:])) / abs(left[-1] - left[0])

    @staticmethod
    def until_sound(heard, press, clue):
        """Seconds from a press to a sound, by the recording's own clock: what had been recorded then, and where the sound is."""
        before, began = heard.size(), time.monotonic()
        pressed = threading.Thread(target=press)
        pressed.start()

        def look():
            sound = heard.sound(before)
            if clue.strip(b"\0"):
                return sound.find(clue) + 1
            silent = len(sound) - len(sound.lstrip(b"\0"))
            return silent + 1 if silent < len(sound) else 0
        wait_for("the sound", look, every=0.002)
        seen = time.monotonic() - began
        pressed.join()
        return seen

    def work(self):
        seconds, margin = 30, 3
        disc = discs.gapped_disc(self.desktop.new_folder(), seconds=[25, 25], seed="work")
        wav = self.desktop.new_folder() / "same.wav"
        with wave.open(str(wav), "wb") as out:
            out.setparams((2, 2, 44100, 0, "NONE", ""))
            out.writeframes(disc.sound)
        with self.playing(disc.cue) as (running, heard):
            heard.first_sound()
            time.sleep(margin)
            own, own_peak = self.used(running.pid, seconds), peak_megabytes(running.pid)
        with self.desktop.sound.recording() as heard:
            player = self.desktop.children.start(["mpv", "--no-video", "--ao=pulse", "--no-config", "--loop=no", "--no-terminal", wav],
                                                 self.desktop.env)
            heard.first_sound()
            time.sleep(margin)
            peer, peer_peak = self.used(player.pid, seconds), peak_megabytes(player.pid)
            self.desktop.children.end(player)
        self.tell(f"Processor time of {seconds} s of playing, window shown", f"{own:.2f} s", f"mpv without a window {peer:.2f} s",
                  f"{own / peer:.2f}")
        self.tell("Peak memory while playing", f"{own_peak:.0f} MB", f"mpv {peer_peak:.0f} MB", f"{own_peak / peer_peak:.2f}")

    @staticmethod
    def used(pid, seconds):
        before = processor_seconds(pid)
        time.sleep(seconds)
        return processor_seconds(pid) - before

    def minimised(self):
        """The same play twice: under the window, and with the window minimised by its own key."""
        seconds = 30
        disc = discs.gapped_disc(self.desktop.new_folder(), seconds=[40, 40], seed="minimised")
        with self.playing(disc.cue) as (running, heard):
            heard.first_sound()
            time.sleep(3)
            shown = self.used(running.pid, seconds)
            self.sight.press(running, "Minimise")
            time.sleep(1)
            hidden = self.used(running.pid, seconds)
        self.tell(f"Processor time of {seconds} s of playing, window minimised", f"{hidden:.2f} s", f"window shown {shown:.2f} s",
                  f"{hidden / shown:.2f}")

    def changes(self):
        """Memory in use before a disc is ejected, after the first changes and after all of them."""
        cues = [discs.gapped_disc(self.desktop.new_folder(), seconds=[6 + kind] * (3 + kind), seed=kind).cue for kind in range(3)]
        resident = []
        with self.desktop.running("--insert", f"D={cues[0]}") as running:
            for change in range(CHANGES):
                wait_for("play", lambda: self.sight.text(running, "Play") == "lit", 60)
                resident.append(megabytes(running.pid, "VmRSS"))
                self.sight.press_without_waiting(running, "Eject")
                self.sight.find(running, "Insert disc image...")
                self.sight.press_without_waiting(running, "Insert disc image...")
                wait_for("the dialog's box for the name", lambda: self.sight.role_of_focused(running) == "text")
                self.desktop.run("xdotool", "type", "--delay", "5", str(cues[(change + 1) % len(cues)]))
                self.desktop.key("Return")
                self.sight.find(running, "Next track")
        first, last = resident[min(FIRST_CHANGES, len(resident) - 1)], resident[-1]
        self.tell(f"Memory in use after {CHANGES} changes of the disc", f"{last:.1f} MB", f"after {FIRST_CHANGES}: {first:.1f} MB",
                  f"{last - first:+.1f} MB")

    def start(self):
        screen = Screen(self.desktop.env["DISPLAY"])
        width, height = (int(word) for word in self.desktop.run("xdotool", "getdisplaygeometry").split())
        middle = (width // 2 + 200, height // 2 + 90)  # inside of either window, and on neither's text
        own, bare = [], []
        home = self.desktop.new_home()
        for _ in range(STARTS):
            own.append(self.until_painted(screen, middle, [self.desktop.program, "--home", home.path]))
            bare.append(self.until_painted(screen, middle, [self.bare_window, "520", "240"]))
        self.tell("Start to first painted window", spread(own), f"bare Qt window {spread(bare)}",
                  f"{statistics.median(own) / statistics.median(bare):.2f}")

    def until_painted(self, screen, place, command):
        """Milliseconds until a pixel of the black screen is painted."""
        wait_for("an empty screen", lambda: not screen.lit(*place))
        began = time.monotonic()
        process = self.desktop.children.start(command, self.desktop.env)
        wait_for("a painted window", lambda: screen.lit(*place), every=0.001)
        took = time.monotonic() - began
        self.desktop.children.end(process)
        return took * 1000

    def waiting(self):
        seconds = 20
        with self.desktop.running() as running:
            self.sight.find(running, "Insert disc image...")
            time.sleep(2)
            used = self.used(running.pid, seconds)
            peak = peak_megabytes(running.pid)
        self.tell(f"Waiting for a disc, {seconds} s", f"{used / seconds * 100:.2f} % of a processor, peak memory {peak:.0f} MB")


def main():
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    program, bare_window, demo = (pathlib.Path(word).resolve() for word in sys.argv[1:4])
    wanted = sys.argv[4:]
    await_calm()
    first_load = load()
    with Desktop(program, screen="1280x800x24") as desktop:
        bench = Bench(desktop, bare_window, demo)
        for name in ("start", "waiting", "reaction", "slider", "work", "minimised", "changes", "exactness"):
            if not wanted or any(word in name for word in wanted):
                getattr(bench, name)()
    print("| What | Tessarel | Peer | Ratio |\n|---|---|---|---|")
    for row in bench.rows:
        print("| " + " | ".join(row) + " |")
    processor = subprocess.run(["uname", "-m"], capture_output=True, text=True, check=True).stdout.strip()
    print(f"\n{os.cpu_count()} processors ({processor}); load of the last 1 and 5 minutes: {' '.join(first_load)} at the beginning, "
          f"{' '.join(load())} at the end.")


main()
