#!/usr/bin/env python3
"""What the window makes of bad input: pictures, and whether it lives on.

    hostile_input.py --bin build/release/bin [--only CASE] OUTPUT

Each case starts the program under Xvfb on a store of its own, does something bad to it, saves pictures of what a person
then sees, and ends the program as a person does: it must end with 0. Needs xvfb, xdotool and the target grab_screen."""

import argparse
import contextlib
import pathlib
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import time

from screenshots import ROOT, Session, enter  # noqa: F401 (finds workplace.py)
from workplace import Workplace

RIGHT_TO_LEFT = "\u202e"
MIB = 1 << 20
HEAD = "From: max@example.org\r\nTo: anna@example.org\r\nDate: Tue, 3 Mar 2026 10:00:00 +0100\r\n"


def mail(directory, name, subject, body, head=""):
    path = directory / f"{name}.eml"
    path.write_bytes((HEAD + f"Subject: {subject}\r\n{head}\r\n").encode() + body)
    return path


def deliver(place, archive, *files):
    place.run("velmoractl", "store", "deliver", "--archive", f"Gemeinsam/{archive}", *files)


def store_directory(place, name):
    """Where the store keeps the archive of that display name."""
    directories = [file.parent for file in (place.directory / "store").rglob("archive.dat")]
    for directory in directories:
        with contextlib.closing(sqlite3.connect(directory / "archive.dat")) as database:
            if database.execute("SELECT count(*) FROM entries WHERE subject = ?", (name,)).fetchone()[0]:
                return directory
    sys.exit(f"no archive holds {name}")


class Case:
    def __init__(self, place, output, name):
        self.place, self.output, self.name = place, output, name

    @contextlib.contextmanager
    def session(self):
        with contextlib.closing(Session(self.place, self.output, self.name)) as session:
            session.enlarge()
            yield session


def test_archive_vanishes(case):
    deliver(case.place, "Weg", mail(case.place.directory, "weg", "verschwindet", b"Text\r\n"))
    victim = store_directory(case.place, "verschwindet")
    with case.session() as session:
        enter(session, "gem", "weg")
        session.keys("Down")
        shutil.rmtree(victim)
        session.keys("F3")
        session.shot("f3")
        session.back()
        session.keys("F5")
        session.shot("f5")
        session.back()
        session.keys("ctrl+r")
        session.shot("refresh")
        session.back()
        session.keys("ctrl+backslash")
        session.shot("root")


def test_store_locked(case):
    deliver(case.place, "Gesperrt", mail(case.place.directory, "zu", "gesperrt", b"Text\r\n"))
    database = sqlite3.connect(store_directory(case.place, "gesperrt") / "archive.dat", isolation_level=None)
    with case.session() as session:
        enter(session, "gem")
        database.execute("BEGIN EXCLUSIVE")
        session.type("ges")
        session.keys("Return")
        session.shot("waiting")
        time.sleep(6)
        session.shot("told")
        session.back()
        database.execute("ROLLBACK")
        session.keys("ctrl+r")
        session.shot("free")
        session.back()
        database.close()


def test_strange_names(case):
    directory = case.place.directory / "aa\nZeile\x01\x1b[31m"
    directory.mkdir()
    (directory / f"rechnung{RIGHT_TO_LEFT}fdp.exe").write_text("x")
    (directory / "A B").write_text("x")
    (directory / ("L" * 250)).write_text("x")
    deliver(case.place, "Seltsam",
            mail(case.place.directory, "rtl", f"Angebot {RIGHT_TO_LEFT}gpj.exe", b"Text\r\n"),
            mail(case.place.directory, "ctl", "=?utf-8?q?a=01=1B[31mb=0D=0Ac=09d?=", b"Text\x07\x00\x1b[2J\r\n"),
            mail(case.place.directory, "att", "Anhang", b"--b\r\n\r\nText\r\n--b\r\nContent-Disposition: attachment;\r\n"
                 b" filename*=utf-8''%E2%80%AEgpj.%01exe\r\n\r\nx\r\n--b--\r\n",
                 "Content-Type: multipart/mixed; boundary=b\r\n"))
    with case.session() as session:
        enter(session, "gem", "selt")
        session.shot("list")
        for row in ("att", "ctl", "rtl"):
            session.keys("Home", "Down") if row == "att" else session.keys("Down")
            session.keys("F3")
            session.shot(row)
            session.back()


def test_long_body(case):
    line = b"Diese Zeile steht sehr oft in dieser Nachricht, und niemand liest sie.\r\n"
    deliver(case.place, "Lang", mail(case.place.directory, "plain", "A Text", line * (50 * MIB // len(line))),
            mail(case.place.directory, "line", "B eine Zeile", b"x" * (50 * MIB)),
            mail(case.place.directory, "html", "C HTML", b"<p>" + b"<b>fett</b> " * (50 * MIB // 12),
                 "Content-Type: text/html\r\n"))
    with case.session() as session:
        enter(session, "gem", "lang")
        for row in ("plain", "line", "html"):
            session.keys("Down")
            start = time.monotonic()
            session.keys("F3")
            session.xdotool("search", "--sync", "--onlyvisible", "--name", "A Text|B eine|C HTML")
            print(f"{case.name}: {row} is shown after {time.monotonic() - start:.1f} s")
            session.shot(row)
            session.keys("ctrl+End", "Prior")
            session.back()


def test_no_tiff(case):
    fax = case.place.directory / "fax.tif"
    fax.write_bytes(b"II*\0 this is no picture")
    shutil.copy(case.place.directory / "entries" / "faxes" / "bestellung.tif", case.place.directory / "echt.tif")
    for name, file in (("keins", fax), ("halb", case.place.directory / "echt.tif")):
        place_fax(case, name, file)
    for file in (case.place.directory / "store").rglob("*.001"):
        if file.read_bytes()[:2] in (b"II", b"MM") and file.stat().st_size > 1000 and file.parent == store_directory(
                case.place, "halb"):
            file.write_bytes(file.read_bytes()[:700])
    with case.session() as session:
        enter(session, "gem", "kaputt")
        for row in ("first", "second"):
            session.keys("Down", "F3")
            session.shot(row)
            session.back()


def place_fax(case, subject, file):
    case.place.run("velmoractl", "store", "put-fax", "--archive", "Gemeinsam/Kaputt", "--subject", subject, "--from", "1",
                   "--to", "2", "--date", "02.02.2026 09:14:00", file)


def settings_file(case):
    return case.place.directory / "config" / "settings.toml"


def test_settings_of_nonsense(case):
    settings_file(case).parent.mkdir(exist_ok=True)
    settings_file(case).write_text(
        "[Information]\nMajorVersion = 1\nMinorVersion = 0\n[GlobalSettings]\nViewMode = \"quer\"\nFrmWidth = -1\n"
        "FrmHeight = 2147483647\nFrmTop = 9000000\nWindowsState = 17\nVwWidth = -400\nDnWidth = 3.5\nLastActiveView = 99\n"
        "LZEBColumnWidths = \"x,-7,99999999999,,\"\nFSColumnWidths = 12\n[Options]\nLZEBSortingMode = 4711\nSizeCheck = -5\n")
    with case.session() as session:
        session.shot("window")


def test_settings_that_are_none(case):
    settings_file(case).parent.mkdir(exist_ok=True)
    settings_file(case).write_bytes(bytes(range(256)) * 4096)
    with case.session() as session:
        session.shot("window")


def test_hand_over_of_rubbish(case):
    lines = {"binary": bytes(range(256)) * 100, "huge": b"-c " + b"A" * (10 * MIB), "code-page": "-c Größe Öl 中文".encode(),
             "half": b"-e \\\\PRUEFUNG\\DAV", "empty": b"", "option": b"-b:nirgends", "zeros": b"\0" * 4096}
    with case.session() as session:
        file = case.place.directory / "temp" / "$$Velmora" / "VelmoraDisplayParms.zeb"
        for name, line in lines.items():
            file.write_bytes(line)
            time.sleep(1.6)
            if file.exists():
                sys.exit(f"{name}: the file still stands")
            session.shot(name)
            session.back()


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", type=pathlib.Path, required=True)
    parser.add_argument("--only", default="", help="the cases whose names hold this")
    parser.add_argument("output", type=pathlib.Path)
    options = parser.parse_args()
    options.output.mkdir(parents=True, exist_ok=True)
    for name, run in list(globals().items()):
        if not name.startswith("test_") or options.only not in name:
            continue
        with tempfile.TemporaryDirectory() as directory:
            place = Workplace(pathlib.Path(directory), options.bin.resolve(), [])
            place.deliver()
            place.put_entries()
            run(Case(place, options.output, name[5:]))


if __name__ == "__main__":
    main()
