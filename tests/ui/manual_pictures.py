#!/usr/bin/env python3
"""Makes the pictures of the window for README and manual anew: manual_pictures.py --bin build/release/bin docs/images

The demo's store is exported first, so that the right side has a mail archive to show."""

import argparse
import contextlib
import pathlib
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from screenshots import ROOT, Session, enter, show_directory  # noqa: E402
from workplace import Workplace  # noqa: E402


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", type=pathlib.Path, required=True)
    parser.add_argument("output", type=pathlib.Path)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="demo-") as directory:
        place = Workplace(pathlib.Path(directory), options.bin.resolve(), [])
        messages = place.directory / "messages"
        subprocess.run([sys.executable, ROOT / "demo" / "make_messages.py", messages], check=True)
        place.messages = sorted(path for path in messages.iterdir())
        place.deliver()
        place.put_entries()
        place.export()
        with contextlib.closing(Session(place, options.output, "window")) as session:
            session.enlarge()
            show_directory(session, place.archive / "Gemeinsam")
            session.keys("Tab")
            enter(session, "gem", "tech", "st")
            session.keys("Down", "Down", "Insert", "Insert", "Insert")
            session.shot("main")
            session.keys("F5")
            session.shot("copy")
            session.back()
            session.keys("Home", "Down", "Down", "Down", "F3")
            session.shot("message")
            session.back()


if __name__ == "__main__":
    main()
