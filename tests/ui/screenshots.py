#!/usr/bin/env python3
"""Pictures of the window, its dialogs and its viewers, for whoever judges how they look.

    screenshots.py --bin build/release/bin OUTPUT

Starts the program on a store with the demo's messages under Xvfb, drives it with the keyboard, and saves a picture of
each state: light and dark, at 100 % and 200 %. Needs xvfb, xdotool and the target grab_screen."""

import argparse
import contextlib
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "integration"))
import operations_test  # noqa: E402
from workplace import Workplace  # noqa: E402

# The colours of a dark desktop, as its settings hold them.
DARK = """[General]
ColorScheme=Dark
[Colors:Window]
BackgroundNormal=42,46,50
ForegroundNormal=252,252,252
[Colors:View]
BackgroundNormal=27,30,32
BackgroundAlternate=35,38,41
ForegroundNormal=252,252,252
ForegroundLink=29,153,243
ForegroundVisited=155,89,182
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
[Colors:Selection]
BackgroundNormal=61,174,233
ForegroundNormal=252,252,252
[Colors:Tooltip]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
"""


class Display:
    """A display of its own, its size in dots."""

    def __init__(self, width, height):
        read, write = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", f"{width}x{height}x24",
                                        "-nolisten", "tcp"], pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as number:
            self.name = ":" + number.readline().strip()

    def close(self):
        self.server.terminate()
        self.server.wait()


class Session:
    """The program on a display."""

    def __init__(self, place, output, prefix, scale=1, dark=False):
        self.output, self.prefix, self.programs = output, prefix, place.programs
        self.display = Display(1280 * scale, 800 * scale)
        self.environment = {**place.environment, "DISPLAY": self.display.name, "QT_SCALE_FACTOR": str(scale),
                            "LANG": "de_DE.UTF-8"}
        if dark:
            config = place.directory / "dark"
            config.mkdir(exist_ok=True)
            (config / "kdeglobals").write_text(DARK)
            self.environment.update(XDG_CONFIG_HOME=str(config), XDG_CURRENT_DESKTOP="KDE", KDE_SESSION_VERSION="5",
                                    KDE_FULL_SESSION="true")
        self.program = subprocess.Popen([place.programs / "velmora"], env=self.environment)
        self.xdotool("search", "--sync", "--onlyvisible", "--name", "Velmora", "windowfocus")
        time.sleep(1.5)

    def enlarge(self):
        """No window manager runs here: the window is moved and sized by its name."""
        window = ("search", "--onlyvisible", "--name", "Velmora")
        scale = int(self.environment["QT_SCALE_FACTOR"])
        self.xdotool(*window, "windowmove", 0, 0, "windowsize", 1280 * scale, 800 * scale)
        time.sleep(0.5)

    def back(self):
        """Closes what is open. Without a window manager nobody gives the focus back."""
        self.keys("Escape", "Escape")
        self.xdotool("search", "--onlyvisible", "--name", "Velmora", "windowfocus")

    def xdotool(self, *arguments):
        subprocess.run(["xdotool", *map(str, arguments)], env=self.environment, check=True, timeout=30,
                       stdout=subprocess.DEVNULL)

    def keys(self, *keys):
        for key in keys:
            self.xdotool("key", "--clearmodifiers", key)
            time.sleep(0.15)
        time.sleep(0.35)

    def type(self, text):
        self.xdotool("type", "--delay", "20", text)
        time.sleep(0.3)

    def shot(self, name):
        path = self.output / f"{self.prefix}-{name}.png"
        environment = {**self.environment, "QT_SCALE_FACTOR": "1"}
        subprocess.run([self.programs / "grab_screen", path], env=environment, check=True)
        print(path)

    def close(self):
        self.keys("alt+F4")
        try:
            status = self.program.wait(timeout=10)
        except subprocess.TimeoutExpired:
            self.program.kill()
            status = "none: it did not end"
        self.display.close()
        if status != 0:
            sys.exit(f"{self.prefix}: exit status {status}")


def enter(session, *names):
    """Goes down from the left root by type-ahead."""
    session.keys("ctrl+backslash", "Home")
    for name in names:
        session.type(name)
        session.keys("Return")


def take_files(session):
    """The right side: files, then a second archive."""
    session.keys("Tab", "Down")
    session.shot("files-active")
    session.keys("Menu")
    session.shot("files-context")
    session.back()
    session.keys("F7")
    session.shot("new-directory")
    session.back()
    session.keys("Tab")


# Each with the keys that open it from the left list, whose cursor stands on a message.
DIALOGS = {
    "filter": ["alt+f", "Return"],
    "options": ["alt+p", "Return"],
    "about": ["alt+h", "b"],
    "system": ["alt+h", "s"],
    "copy": ["F5"],
    "pattern": ["KP_Add"],
    "new-archive": ["F7"],
    "context": ["Menu"],
    "menu": ["alt+b"],
    "addresses": ["alt+x", "d", "e"],
    "tree": ["alt+x", "s"],
    "server": ["alt+x", "w"],
    "message": ["F3"],
}


def show_directory(session, path):
    """Types a path into the path field of the right side, which is active then."""
    session.keys("Tab", "ctrl+l")
    session.type(str(path))
    session.keys("Return")


# Each with the keys that open it from the file view, whose cursor stands on a page of a mail archive.
MAIL_ARCHIVE = {
    "mailarc-menu": ["alt+b", "m"],
    "mailarc-marker": ["alt+b", "m", "k"],
    "mailarc-descriptor": ["alt+b", "m", "d"],
    "mailarc-entry": ["alt+b", "m", "e"],
    "mailarc-index": ["alt+b", "m", "i"],
}


def take_mail_archive(session, directory):
    """A mail archive on the right, and what is done with it."""
    show_directory(session, directory)
    session.keys("Home", "Down", "Down")
    session.shot("mailarc")
    for name, keys in MAIL_ARCHIVE.items():
        session.keys(*keys)
        session.shot(name)
        session.back()
    session.keys("alt+b", "m", "k")
    session.keys(*["Tab"] * 9, "space")  # the button of the user information
    session.shot("mailarc-userinfo")
    session.back()
    session.back()
    session.keys("Tab")


DEMO = "/Archive/Gemeinsam/messages"
RECORD = 430  # bytes of an entry of archive.dir


def damage(place):
    """Rules, an archive that stands twice in its list, and an entry that leads back up."""
    case = operations_test.Case(place, "")
    case.put_rules(f"{DEMO}/Einkauf", [("Angebote", None), ("Mahnungen", None), ("Reste", [f"{DEMO}/Technik"])])
    directory = {path: directory for path, (directory, _) in case.archives().items()}
    records = lambda path: [path.read_bytes()[at:at + RECORD] for at in range(0, path.stat().st_size, RECORD)]  # noqa: E731
    demo = directory[DEMO] / "archive.dir"
    twice = next(record for record in records(demo) if b"Einkauf" in record)
    up = next(record for record in records(directory["/Archive/Gemeinsam"] / "archive.dir") if b"messages" in record)
    demo.write_bytes(demo.read_bytes() + twice)
    own = directory[f"{DEMO}/Einkauf"] / "archive.dir"
    own.write_bytes((own.read_bytes() if own.exists() else b"") + up)


def set_view(place, rules):
    """Both sides show archives when the program starts next, the left one its rules."""
    path = pathlib.Path(place.environment["VELMORA_CONFIG_DIR"]) / "settings.toml"
    text = path.read_text()
    for name, value in (("ViewMode", 0), ("LastActiveView", 0), ("LZEBViewModeRouting", int(rules))):
        text, changed = re.subn(rf"(?m)^{name} = .*$", f"{name} = {value}", text)
        if changed != 1:
            sys.exit(f"{path}: {name} stands there {changed} times")
    path.write_text(text)


# Each with the keys that open it from the left list, whose cursor stands on an archive.
STORE = {
    "store-copy": ["F5"],
    "store-move": ["F6"],
    "store-delete": ["F8"],
    "store-delete-linked": ["F8", "Tab", "Tab", "space", "Return"],
    "store-doubled": ["alt+b", "d"],
    "store-circular": ["alt+b", "z"],
    "store-entry": ["alt+b", "t"],
}
RULES = {"rules-copy": ["F5"], "rules-delete": ["F8"]}


def take_store(session, rules):
    session.enlarge()
    session.keys("Tab")
    enter(session, "gem")
    session.keys("Tab")
    enter(session, *(["gem", "mess", "ein"] if rules else ["gem", "mess"]))
    session.keys("Home", "Down")
    if rules:
        session.keys("Down", "shift+Down")  # two rules
    session.shot("rules" if rules else "store")
    for name, keys in (RULES if rules else STORE).items():
        session.keys(*keys)
        session.shot(name)
        session.back()
        session.back()


def take(session, brief):
    session.shot("default-size")
    session.enlarge()
    session.shot("main-files")
    enter(session, "gem", "mess", "ein")
    session.keys("Down")
    session.shot("messages")
    if not brief:
        take_files(session)
    for name, keys in DIALOGS.items():
        if not brief or name in ("filter", "options", "copy", "message"):
            session.keys(*keys)
            session.shot(name)
            session.back()


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", type=pathlib.Path, required=True)
    parser.add_argument("--only", help="one of the sets alone: light, dark, light2, dark2")
    parser.add_argument("--part", choices=["window", "store"], help="the window and its dialogs, or those of the store alone")
    parser.add_argument("output", type=pathlib.Path)
    options = parser.parse_args()
    options.output.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as directory:
        messages = pathlib.Path(directory) / "messages"
        subprocess.run([sys.executable, ROOT / "demo" / "make_messages.py", messages], check=True,
                       stdout=subprocess.DEVNULL)
        place = Workplace(pathlib.Path(directory), options.bin.resolve(), [messages])
        place.deliver()
        place.put_entries()
        place.export()
        sets = [one for one in [("light", 1, False), ("dark", 1, True), ("light2", 2, False), ("dark2", 2, True)]
                if options.only in (None, one[0])]
        for prefix, scale, dark in sets:
            with contextlib.closing(Session(place, options.output, prefix, scale, dark)) as session:
                if options.part == "store":
                    continue  # its end writes the settings
                take(session, brief=scale == 2)
                if scale == 1:
                    take_mail_archive(session, place.archive / "Gemeinsam" / "messages" / "Einkauf")
        if options.part == "window":
            return
        damage(place)
        for prefix, scale, dark in sets:
            for rules in (False, True):
                set_view(place, rules)
                with contextlib.closing(Session(place, options.output, prefix, scale, dark)) as session:
                    take_store(session, rules)


if __name__ == "__main__":
    main()
