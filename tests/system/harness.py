"""What the system tests start the real program with: a virtual screen, buses, a sound server whose output is recorded, homes,
discs, and hands and eyes by way of the accessibility bus and xdotool. Everything has a time limit, and no child outlives a test.
"""
import contextlib
import ctypes
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True

FRAME = 2352  # bytes of one CD frame
FRAMES_PER_SECOND = 75
SAMPLE = 4  # bytes of one stereo sample
SECOND = 44100 * SAMPLE  # bytes of one second of sound
PATIENCE = float(os.environ.get("TESSAREL_TEST_PATIENCE", "20"))  # seconds that any one thing may take on a busy machine

_libc = ctypes.CDLL(None)
_PR_SET_PDEATHSIG = 1


class TimedOut(AssertionError):
    """A condition did not come true in time."""


def wait_for(what, condition, seconds=PATIENCE, every=0.02):
    """The first true answer of `condition`. Raises TimedOut, which names `what`."""
    deadline = time.monotonic() + seconds
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > deadline:
            raise TimedOut(f"{what}: not within {seconds:g} s")
        time.sleep(every)


def _die_with_parent():
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL)


class Children:
    """Processes that end with this object, newest first, each with the group that it leads."""

    def __init__(self):
        self._all = []

    def start(self, command, env, log=None, **settings):
        settings.setdefault("stdin", subprocess.DEVNULL)
        settings.setdefault("stdout", log or subprocess.DEVNULL)
        settings.setdefault("stderr", log or subprocess.DEVNULL)
        child = subprocess.Popen([str(word) for word in command], env=env, start_new_session=True,
                                 preexec_fn=_die_with_parent, **settings)
        self._all.append(child)
        return child

    def end(self, child, gently=True):
        if child.poll() is None and gently:
            child.terminate()
            with contextlib.suppress(subprocess.TimeoutExpired):
                child.wait(3)
        with contextlib.suppress(ProcessLookupError, PermissionError):
            os.killpg(child.pid, signal.SIGKILL)
        child.wait(5)
        if child in self._all:
            self._all.remove(child)

    def end_all(self):
        while self._all:
            self.end(self._all[-1], gently=False)


class SoundServer:
    """A private sound server with a sink that nobody hears, and whose monitor gives every sample back."""

    def __init__(self, folder, children):
        self.folder, self._children, self._env = pathlib.Path(folder), children, dict(os.environ)
        self.folder.mkdir(mode=0o700, parents=True, exist_ok=True)
        self.socket = self.folder / "native"
        self.address = f"unix:{self.socket}"
        self._env |= {"XDG_RUNTIME_DIR": str(self.folder), "PULSE_SERVER": self.address, "HOME": str(self.folder)}
        for name in ("PULSE_SINK", "PULSE_SOURCE", "DISPLAY", "DBUS_SESSION_BUS_ADDRESS"):
            self._env.pop(name, None)
        self._process = None

    def start(self):
        self.socket.unlink(missing_ok=True)
        self._process = self._children.start(
            ["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1", "--disallow-exit",
             "--disable-shm=no", "-L", f"module-native-protocol-unix socket={self.socket} auth-anonymous=1",
             "-L", "module-null-sink sink_name=disc rate=44100 format=s16le channels=2"
             " channel_map=front-left,front-right norewinds=1"], self._env)
        wait_for("the sound server", self._answers)
        return self

    def _answers(self):
        return self.socket.exists() and subprocess.run(["pactl", "info"], env=self._env, stdout=subprocess.DEVNULL,
                                                       stderr=subprocess.DEVNULL, timeout=10, check=False).returncode == 0

    def kill(self):
        """Ends it without a farewell, as a crash would."""
        self._process.kill()
        self._children.end(self._process, gently=False)

    @contextlib.contextmanager
    def recording(self, path=None):
        """Records from now on; gives a Recording."""
        path = pathlib.Path(path or tempfile.mktemp(".raw", "heard-", self.folder))
        with path.open("wb") as out:
            recorder = self._children.start(["parec", "-d", "disc.monitor", "--rate=44100", "--channels=2", "--format=s16le",
                                             "--latency-msec=20", "--raw"], self._env, stdout=out)
        try:
            wait_for("the recording", lambda: path.stat().st_size > 0)
            yield Recording(path)
        finally:
            self._children.end(recorder)
            path.unlink(missing_ok=True)


class Recording:
    """The samples heard so far."""

    def __init__(self, path):
        self.path = path

    def size(self):
        return self.path.stat().st_size // SAMPLE * SAMPLE

    def sound(self, start=0):
        """The bytes from `start` on, whole samples."""
        with self.path.open("rb") as file:
            file.seek(start)
            heard = file.read()
        return heard[:len(heard) // SAMPLE * SAMPLE]

    def first_sound(self, start=0, seconds=PATIENCE):
        """Waits until anything is heard, and gives the offset of its first sample."""
        def look():
            heard = self.sound(start)
            quiet = len(heard) - len(heard.lstrip(b"\0"))
            return None if quiet == len(heard) else (start + quiet // SAMPLE * SAMPLE,)
        return wait_for("any sound", look, seconds)[0]

    def await_size(self, size, seconds):
        wait_for(f"{size / SECOND:.1f} s of recording", lambda: self.size() >= size, seconds, every=0.1)

    def is_silent(self, start):
        return not self.sound(start).strip(b"\0")


def differences(heard, wanted):
    """None when `heard` is `wanted` between silences; else words that tell where they part."""
    start = heard.find(wanted[:64 * SAMPLE])
    while start >= 0 and start % SAMPLE:
        start = heard.find(wanted[:64 * SAMPLE], start + 1)
    if start < 0:
        return f"the beginning was not heard in {len(heard) / SECOND:.2f} s; {_whence(heard, wanted)}"
    if heard[:start].strip(b"\0"):
        return "there was sound before the beginning"
    rest = heard[start:]
    if rest[:len(wanted)] == wanted:
        return "there was sound behind the end" if rest[len(wanted):].strip(b"\0") else None
    at = next(i for i in range(0, len(wanted), SAMPLE) if rest[i:i + SAMPLE] != wanted[i:i + SAMPLE])
    return f"they part at sample {at // SAMPLE} of {len(wanted) // SAMPLE} ({at / SECOND:.3f} s); {_whence(rest[at:], wanted)}"


def _whence(heard, wanted):
    quiet = (len(heard) - len(heard.lstrip(b"\0"))) // SAMPLE * SAMPLE
    found = wanted.find(heard[quiet:quiet + 64 * SAMPLE]) if quiet < len(heard) else -1
    if found < 0:
        return f"after {quiet // SAMPLE} silent samples comes nothing of the disc"
    return f"after {quiet // SAMPLE} silent samples comes sample {found // SAMPLE} of the disc"


def place_of(piece, disc):
    """The offset at which a piece of sound lies in the disc's, in whole samples; -1 when it doesn't."""
    at = disc.find(piece)
    while at >= 0 and at % SAMPLE:
        at = disc.find(piece, at + 1)
    return at


class Home:
    """A home of the program, provisioned by it; its drive C: is a plain folder."""

    def __init__(self, path):
        self.path = pathlib.Path(path)
        self.drive = self.path / "drive_c"
        self.data = self.drive / "Tessarel"

    def file(self, name):
        return self.drive / "WINDOWS/SYSTEM/TSLWIN.INI" if name.upper() == "TSLWIN.INI" else self.data / name

    def set_line(self, name, line, value):
        """Changes one line, counted from 1, of a settings file."""
        lines = self.file(name).read_bytes().decode().split("\r\n")
        lines[line - 1] = str(value)
        self.file(name).write_text("\r\n".join(lines), encoding="utf-8", newline="")

    def set_time_mode(self, mode):
        self.file("modelast.dat").write_bytes(f"{mode}\r\n0\r\n0\r\n".encode())

    def alias(self, name, log):
        """A program of the data directory that only notes its arguments and its folder, and ends."""
        script = self.data / name
        script.write_text(f'#!/bin/sh\nprintf "%s\\n%s\\n" "$*" "$PWD" > "{log}.new"\nmv "{log}.new" "{log}"\n', encoding="utf-8")
        script.chmod(0o755)


class Desktop:
    """A screen, a window manager, a session bus with the accessibility bus, and a sound server."""

    def __init__(self, program, screen="2560x1600x24", sound=True):
        self.program, self._screen, self._with_sound = pathlib.Path(program), screen, sound
        self.children = Children()

    def __enter__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="tessarel-system-"))
        try:
            self._start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        self.children.end_all()
        shutil.rmtree(self.folder, ignore_errors=True)

    def _start(self):
        runtime = self.folder / "run"
        runtime.mkdir(mode=0o700)
        (self.folder / "user").mkdir()
        self.env = {name: os.environ[name] for name in ("PATH", "LANG", "LC_ALL", "ASAN_OPTIONS") if name in os.environ}
        self.env |= {"HOME": str(self.folder / "user"), "XDG_RUNTIME_DIR": str(runtime), "NO_AT_BRIDGE": "0",
                     "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "XDG_CURRENT_DESKTOP": "test"}
        self._start_screen()
        self._start_bus()
        self.children.start(["openbox"], self.env)
        if self._with_sound:
            self.sound = self.new_sound_server().start()
            self.env["PULSE_SERVER"] = self.sound.address
        self.provisioned = self._provision()

    def _start_screen(self):
        read, write = os.pipe()
        self.children.start(["Xvfb", "-displayfd", write, "-screen", "0", self._screen, "-nolisten", "tcp", "-noreset"],
                            self.env, pass_fds=[write])
        os.close(write)
        self.env["DISPLAY"] = ":" + _line_of(read, "the virtual screen")

    def _start_bus(self):
        read, write = os.pipe()
        self.children.start(["dbus-daemon", "--session", "--nofork", "--nopidfile", f"--print-address={write}"], self.env,
                            pass_fds=[write])
        os.close(write)
        self.env["DBUS_SESSION_BUS_ADDRESS"] = _line_of(read, "the session bus")
        subprocess.run(["dbus-send", "--session", "--dest=org.a11y.Bus", "--print-reply", "/org/a11y/bus",
                        "org.a11y.Bus.GetAddress"], env=self.env, check=True, timeout=PATIENCE, stdout=subprocess.DEVNULL)

    def new_sound_server(self):
        return SoundServer(tempfile.mkdtemp(prefix="sound-", dir=self.folder), self.children)

    def _provision(self):
        """A home as a first run makes it. It is copied for each test."""
        home = Home(self.folder / "fresh")
        process = self.children.start([self.program, "--home", home.path], self.env)
        wait_for("a provisioned home", lambda: home.drive.is_dir() or process.poll() is not None)
        self.children.end(process)
        assert home.file("TSLWIN1.INI").exists(), "the first run left no settings"
        return home

    def new_home(self):
        """A fresh home, each with a name of its own."""
        path = pathlib.Path(tempfile.mkdtemp(prefix="home-", dir=self.folder))
        shutil.copytree(self.provisioned.drive, path / "drive_c", dirs_exist_ok=True)
        return Home(path)

    def new_folder(self):
        return pathlib.Path(tempfile.mkdtemp(prefix="files-", dir=self.folder))

    @contextlib.contextmanager
    def running(self, *arguments, home=None, env=None):
        """The program, until the block ends. Gives a Running."""
        home = home or self.new_home()
        log = self.folder / f"program-{time.monotonic_ns()}.log"
        with log.open("wb") as out:
            process = self.children.start([self.program, "--home", home.path, *arguments], self.env | (env or {}), log=out)
        try:
            yield Running(self, process, home, log)
        finally:
            self.children.end(process)

    def run(self, *command, **settings):
        """A short helper program's output."""
        done = subprocess.run([str(word) for word in command], env=self.env, check=True, timeout=PATIENCE,
                              capture_output=True, text=True, **settings)
        return done.stdout

    def key(self, *keys):
        self.run("xdotool", "key", "--clearmodifiers", *keys)


def _line_of(descriptor, what):
    """The first line that a child writes to a pipe."""
    import select  # only needed here
    with os.fdopen(descriptor, "rb") as pipe:
        if not select.select([pipe], [], [], PATIENCE)[0]:
            raise TimedOut(what)
        return pipe.readline().decode().strip()


class Running:
    """The program at work."""

    def __init__(self, desktop, process, home, log):
        self.desktop, self.process, self.home, self._log = desktop, process, home, log

    @property
    def pid(self):
        return self.process.pid

    def said(self):
        return self._log.read_text(encoding="utf-8", errors="replace")

    def up(self):
        return self.process.poll() is None

    def await_end(self, seconds=PATIENCE):
        wait_for("the program's end", lambda: not self.up(), seconds)
        return self.process.returncode

    def windows(self):
        """Identifiers of the windows that are on the screen."""
        found = subprocess.run(["xdotool", "search", "--all", "--onlyvisible", "--pid", str(self.pid), "--name", ".*"], env=self.desktop.env,
                               capture_output=True, text=True, timeout=PATIENCE, check=False).stdout.split()
        return [int(window) for window in found]

    def title(self, window):
        return self.desktop.run("xdotool", "getwindowname", window).strip()

    def await_window(self, seconds=PATIENCE):
        def look():
            assert self.up(), "the program has ended: " + self.said()
            return self.windows()
        return wait_for("a window", look, seconds)[0]

    def close_by_escape(self):
        self.focus()
        self.desktop.key("Escape")
        return self.await_end()

    def focus(self):
        """Brings a window of the program to the keyboard."""
        window = self.await_window()
        self.desktop.run("xdotool", "windowactivate", "--sync", window)
        wait_for("the keyboard", lambda: self.desktop.run("xdotool", "getactivewindow").strip() == str(window))
        return window

    def geometry(self, window):
        lines = self.desktop.run("xdotool", "getwindowgeometry", "--shell", window).split()
        values = dict(line.split("=") for line in lines)
        return tuple(int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))

    def colours(self, window):
        """How many pixels of a window have which colour."""
        import collections  # only needed here
        pixels = subprocess.run(["import", "-silent", "-window", str(window), "-depth", "8", "rgb:-"], env=self.desktop.env,
                                capture_output=True, check=True, timeout=PATIENCE).stdout
        return collections.Counter(pixels[i:i + 3] for i in range(0, len(pixels), 3))
