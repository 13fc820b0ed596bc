"""A private desktop: an X server without a screen, a window manager, folders of its own, and on
request a sound server that plays to nowhere. Everything is waited for by its state, with a limit,
and everything ends with the block:

    with VirtualDesktop() as desktop:
        editor = desktop.start(["build/release/src/quoril-wave-editor"])
        window = desktop.wait_for_window(editor, lambda window: "Quoril" in window.title)
"""

import ctypes
import os
import select
import shutil
import signal
import subprocess
import tempfile
import time
from dataclasses import dataclass

LIMIT = 30.0  # seconds that anything may take to reach a state, unless told otherwise
PR_SET_PDEATHSIG = 1


class DesktopError(Exception):
    """Something on the desktop did not come to pass; the text says what, in whole words."""


@dataclass(frozen=True)
class Window:
    id: str
    pid: int
    title: str


def is_main_window(window):
    """True for the editor's main window, whatever file is open in it."""
    return window.title.endswith(" [Quoril Wave Editor]")


def _end_with_parent():
    ctypes.CDLL(None).prctl(PR_SET_PDEATHSIG, signal.SIGTERM)


def wait_until(state, what, limit=LIMIT, pause=0.05):
    """Asks `state()` until it gives something true, and gives that; fails after `limit` seconds.
    Between two askings there are `pause` seconds."""
    end = time.monotonic() + limit
    while True:
        result = state()
        if result:
            return result
        if time.monotonic() >= end:
            raise DesktopError(f"Waited {limit:g} seconds in vain for {what}.")
        time.sleep(pause)


class VirtualDesktop:
    """The desktop. `width` and `height` are in pixels; `env` holds the variables that programs on
    it are started with, and `folder` is its private folder, which goes at the end."""

    def __init__(self, width=1280, height=800):
        self._size = f"{width}x{height}x24"
        self._processes = []

    def __enter__(self):
        self.folder = tempfile.mkdtemp(prefix="quoril-desktop-")
        self.env = self._environment()
        self._log = open(os.path.join(self.folder, "desktop.log"), "wb")
        try:
            self._start_screen()
            self._start_window_manager()
        except BaseException:
            self.__exit__(None, None, None)
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self._processes):
            if process.poll() is None:
                process.terminate()
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        self._log.close()
        shutil.rmtree(self.folder, ignore_errors=True)

    def _environment(self):
        """The environment of whoever started us, without what belongs to a real desktop."""
        real = ("DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "PULSE_SERVER", "SESSION_MANAGER",
                "WAYLAND_DISPLAY", "XAUTHORITY")
        env = {name: value for name, value in os.environ.items()
               if name not in real and not name.startswith(("QT_", "XDG_"))}
        places = {"HOME": "home", "TMPDIR": "tmp", "XDG_CONFIG_HOME": "home/.config",
                  "XDG_DATA_HOME": "home/.local/share", "XDG_CACHE_HOME": "home/.cache",
                  "XDG_STATE_HOME": "home/.local/state", "XDG_RUNTIME_DIR": "runtime"}
        for name, place in places.items():
            env[name] = os.path.join(self.folder, place)
            os.makedirs(env[name], mode=0o700, exist_ok=True)
        env["LC_ALL"] = "C.UTF-8"
        env["QT_QPA_PLATFORM"] = "xcb"
        return env

    def _start(self, command, **options):
        try:
            process = subprocess.Popen(command, env=self.env, stdin=subprocess.DEVNULL,
                                       preexec_fn=_end_with_parent, **options)
        except OSError as error:
            raise DesktopError(f"{command[0]} cannot be started: {error.strerror}.") from error
        self._processes.append(process)
        return process

    def _start_screen(self):
        reading, writing = os.pipe()
        try:
            server = self._start(
                ["Xvfb", "-displayfd", str(writing), "-screen", "0", self._size, "-noreset",
                 "-nolisten", "tcp"], pass_fds=(writing,), stdout=self._log, stderr=self._log)
            os.close(writing)
            writing = -1
            number = b""
            end = time.monotonic() + LIMIT
            while not number.endswith(b"\n"):
                left = end - time.monotonic()
                ready = left > 0 and select.select([reading], [], [], left)[0]
                some = os.read(reading, 16) if ready else b""
                if not some:
                    raise DesktopError("The virtual screen (Xvfb) did not start"
                                       f"{self._last_words(server)}.")
                number += some
        finally:
            os.close(reading)
            if writing >= 0:
                os.close(writing)
        self.env["DISPLAY"] = ":" + number.decode().strip()

    def _start_window_manager(self):
        manager = self._start(["openbox", "--sm-disable"], stdout=self._log, stderr=self._log)
        wait_until(lambda: self._ask(["wmctrl", "-m"]) or manager.poll() is not None,
                   "the window manager (openbox)")
        if manager.poll() is not None:
            raise DesktopError(f"The window manager (openbox) did not start{self._last_words(manager)}.")

    def start_sound(self):
        """Starts a private sound server with one output, `quoril_out`, that nobody hears; what is
        played can be recorded from `quoril_out.monitor`. Gives its process."""
        socket = os.path.join(self.folder, "runtime", "sound")
        self.env["PULSE_SERVER"] = "unix:" + socket
        server = self._start(
            ["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
             "--high-priority=no", "--realtime=no", "--disable-shm",
             "--load=module-null-sink sink_name=quoril_out",
             f"--load=module-native-protocol-unix socket={socket} auth-anonymous=1"],
            stdout=self._log, stderr=self._log)
        wait_until(lambda: self._ask(["pactl", "info"]) or server.poll() is not None,
                   "the sound server (pulseaudio)")
        if server.poll() is not None:
            raise DesktopError("The sound server (pulseaudio) did not start"
                               f"{self._last_words(server)}.")
        return server

    def _last_words(self, process):
        self._log.flush()
        with open(self._log.name, errors="replace") as log:
            lines = [line.strip() for line in log if line.strip()]
        code = process.poll()
        words = "" if code is None else f" (exit code {code})"
        return words + (": " + "; ".join(lines[-3:]) if lines else "")

    def _ask(self, command):
        """The output of a command, or nothing when it fails."""
        answer = subprocess.run(command, env=self.env, stdin=subprocess.DEVNULL,
                                capture_output=True, text=True, errors="replace", timeout=LIMIT)
        return answer.stdout if answer.returncode == 0 else ""

    def run(self, *command):
        """Runs a command on the desktop, such as xdotool, and gives its output."""
        answer = subprocess.run(command, env=self.env, stdin=subprocess.DEVNULL,
                                capture_output=True, text=True, errors="replace", timeout=LIMIT)
        if answer.returncode != 0:
            raise DesktopError(f"{' '.join(command)} failed: {answer.stderr.strip()}")
        return answer.stdout

    def start(self, command):
        """Starts a program on the desktop. What it says goes where we say things."""
        return self._start(command)

    def windows(self, process):
        """The windows of a program that the window manager shows, the oldest first."""
        found = []
        for line in self._ask(["wmctrl", "-l", "-p"]).splitlines():
            fields = line.split(maxsplit=4)
            if len(fields) >= 3 and fields[2] == str(process.pid):
                found.append(Window(fields[0], process.pid, fields[4] if len(fields) > 4 else ""))
        return found

    def wait_for_window(self, process, fits=lambda window: True, limit=LIMIT):
        """The first window of a program that fits."""
        def state():
            if process.poll() is not None:
                raise DesktopError("The program ended before it showed its window "
                                   f"(exit code {process.returncode}).")
            return next((window for window in self.windows(process) if fits(window)), None)
        return wait_until(state, "the program's window", limit)

    def take_picture(self, window, path):
        """Keeps a picture of a window as PNG. The file is always whole, whoever else writes it."""
        beside = f"{path}.{os.getpid()}.png"
        try:
            self.run("import", "-silent", "-window", window.id, beside)
            os.replace(beside, path)
        finally:
            if os.path.exists(beside):
                os.remove(beside)

    def wait_for_picture(self, window, path, limit=LIMIT):
        """Keeps a picture of a window once it has been painted and stands still."""
        now = os.path.join(self.folder, "now.png")
        digests = [""]
        def state():
            self.take_picture(window, now)
            digests.append(picture_digest(now))
            return digests[-1] == digests[-2] and picture_colours(now) > 1
        wait_until(state, f'a steady picture of the window "{window.title}"', limit)
        self.take_picture(window, path)

    def close(self, window):
        """Asks a window politely to close, as a click on its closing button does."""
        # A window that has gone meanwhile needs no asking.
        self._ask(["wmctrl", "-i", "-c", window.id])

    def close_all(self, process, limit=LIMIT):
        """Closes a program's windows, those in front first, until it has ended; gives its exit
        code. A window that is blocked by another is asked again when the other one has gone."""
        asked = set()
        def state():
            if process.poll() is not None:
                return True
            windows = frozenset(self.windows(process))
            if windows and windows not in asked:
                asked.add(windows)
                self.close(self._in_front(windows))
            return False
        wait_until(state, "the end of the program after its windows were closed", limit)
        return process.returncode

    def _in_front(self, windows):
        order = self._ask(["xprop", "-root", "_NET_CLIENT_LIST_STACKING"])
        ids = [int(text.strip(" ,"), 16) for text in order.split() if text.startswith("0x")]
        place = {id: index for index, id in enumerate(ids)}
        return max(windows, key=lambda window: place.get(int(window.id, 16), -1))


def picture_digest(path):
    """A number that two pictures share only when all their pixels are equal."""
    return _identify(path, "%#")


def picture_colours(path):
    """How many colours a picture has; 1 is a picture of nothing."""
    return int(_identify(path, "%k"))


def _identify(path, what):
    answer = subprocess.run(["identify", "-format", what, path], stdin=subprocess.DEVNULL,
                            capture_output=True, text=True, check=False, timeout=LIMIT)
    if answer.returncode != 0:
        raise DesktopError(f"The picture {path} cannot be read: {answer.stderr.strip()}")
    return answer.stdout
