#!/usr/bin/env python3
"""How long a person waits for the window: from the start of the program to rows on the screen.

    window_start.py --bin build/release/bin [--runs 10] [--messages 1000]

Starts `velmora` under Xvfb, without a window manager, on a store of its own whose archive holds so many messages. Tells the
median and the span of the time until the window is mapped, and until rows of the left list stand on the screen."""

import argparse
import contextlib
import ctypes
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "tests" / "integration"), str(ROOT / "tests" / "ui")]
from screenshots import Display  # noqa: E402
from workplace import Workplace  # noqa: E402

SUBSTRUCTURE_NOTIFY, MAP_NOTIFY, Z_PIXMAP, ALL_PLANES = 1 << 19, 19, 2, ctypes.c_ulong(-1)
WIDTH, HEIGHT = 1280, 800
SMALLEST_WINDOW = 300  # dots; less is no main window
LIST_AREA = (150, 200, 200, 60)  # x, y, width, height: within the left list of a window of the default size
PATIENCE = 20  # seconds


class MapEvent(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("event", ctypes.c_ulong), ("window", ctypes.c_ulong),
                ("override_redirect", ctypes.c_int)]


class Image(ctypes.Structure):  # the head of XImage
    _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("xoffset", ctypes.c_int),
                ("format", ctypes.c_int), ("data", ctypes.POINTER(ctypes.c_ubyte))]


class Screen:
    """What stands on a display, as another program sees it."""

    def __init__(self, name):
        self.x = ctypes.CDLL("libX11.so.6")
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.x.XDefaultRootWindow.restype = ctypes.c_ulong
        self.x.XGetImage.restype = ctypes.POINTER(Image)
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(name.encode()))
        self.root = ctypes.c_ulong(self.x.XDefaultRootWindow(self.display))
        self.x.XSelectInput(self.display, self.root, ctypes.c_long(SUBSTRUCTURE_NOTIFY))
        self.x.XSync(self.display, 0)

    def wait_for_map(self, until):
        """Until a window of the size of a main window is mapped."""
        event = (ctypes.c_long * 24)()
        while time.monotonic() < until:
            while self.x.XPending(self.display):
                self.x.XNextEvent(self.display, event)
                mapped = ctypes.cast(event, ctypes.POINTER(MapEvent)).contents
                if mapped.type == MAP_NOTIFY and self.width_of(mapped.window) > SMALLEST_WINDOW:
                    return
            time.sleep(0.001)
        sys.exit("no window")

    def width_of(self, window):
        root, x, y, width, height, border, depth = (ctypes.c_ulong(), ctypes.c_int(), ctypes.c_int(), ctypes.c_uint(),
                                                    ctypes.c_uint(), ctypes.c_uint(), ctypes.c_uint())
        self.x.XGetGeometry(self.display, ctypes.c_ulong(window), *map(ctypes.byref,
                            (root, x, y, width, height, border, depth)))
        return width.value

    def colours(self, x, y, width, height):
        image = self.x.XGetImage(self.display, self.root, x, y, width, height, ALL_PLANES, Z_PIXMAP)
        data = bytes(image.contents.data[:width * height * 4])
        self.x.XDestroyImage(image)
        return len({data[i:i + 3] for i in range(0, len(data), 4)})

    def wait_for_rows(self, until):
        """Until there is more than an empty list: text has many shades."""
        while time.monotonic() < until:
            if self.colours(*LIST_AREA) > 8:
                return
            time.sleep(0.001)
        sys.exit("no rows")


def start_once(place, display, screen, archive):
    environment = {**place.environment, "DISPLAY": display.name, "LANG": "de_DE.UTF-8"}
    start = time.monotonic()
    program = subprocess.Popen([place.programs / "velmora", "-c", archive], env=environment)
    screen.wait_for_map(start + PATIENCE)
    mapped = time.monotonic() - start
    screen.wait_for_rows(start + PATIENCE)
    rows = time.monotonic() - start
    with open(f"/proc/{program.pid}/status") as status:
        memory = next(int(line.split()[1]) for line in status if line.startswith("VmRSS"))
    time.sleep(0.2)
    # A window that is asked to end saves its settings; this one is only measured.
    program.kill()
    program.wait()
    return mapped, rows, memory / 1024


def fill(place, directory, count):
    source = directory / "mails.mbox"
    with open(source, "w") as mbox:
        for i in range(count):
            mbox.write(f"From x Mon Mar  2 10:11:12 2026\nFrom: Jörg Müller <joerg{i % 97}@example.org>\n"
                       f"To: Liste <list@example.org>, anna@example.org\nSubject: Re: Angebot {i * 7919 % 100003:06}\n"
                       f"Date: Mon, {1 + i % 28} Mar 2026 10:11:12 +0100\nMessage-ID: <{i}@example.org>\n\nText\n\n")
    place.run("velmoractl", "store", "init", place.environment["VELMORA_STORE"], "--server", "DEMO")
    place.run("velmoractl", "store", "deliver", "--archive", "Gemeinsam/Ablage", source)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", type=pathlib.Path, required=True)
    parser.add_argument("--runs", type=int, default=10)
    parser.add_argument("--messages", type=int, default=1000)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as directory:
        place = Workplace(pathlib.Path(directory), options.bin.resolve(), [])
        fill(place, pathlib.Path(directory), options.messages)
        with contextlib.closing(Display(WIDTH, HEIGHT)) as display:
            screen = Screen(display.name)
            runs = [start_once(place, display, screen, "/Archive/Gemeinsam/Ablage") for _ in range(options.runs + 1)]
    runs = runs[1:]  # the first one reads the program from the disk and writes the first settings
    for name, unit, column in [("window mapped", "s", 0), ("rows on the screen", "s", 1), ("memory", "MiB", 2)]:
        figures = sorted(run[column] for run in runs)
        print(f"{name}: {statistics.median(figures):.3f} {unit} ({figures[0]:.3f} to {figures[-1]:.3f})")
    print(f"load: {os.getloadavg()[0]:.1f}")


if __name__ == "__main__":
    main()
