#!/usr/bin/env python3
"""Makes the Debian package, unpacks it into a scratch root and works with what lies there: package_test.py --build DIR

Both programs run from the root with the design set and the manual that came with them; the desktop's own tools judge the
entry, the types, the description and the man pages.
"""

import argparse
import os
import pathlib
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import workplace  # noqa: E402

DEMO = pathlib.Path(__file__).parents[2] / "demo"
FILES = ["bin/velmora", "bin/velmoractl", "share/velmora/Designs/Standard.ini", "share/velmora/Designs/StdVelmoraFaxForm.htm",
         "share/velmora/Designs/StdVelmoraAddressSheet.xls",
         "share/velmora/Handbuch/index.html", "share/man/man1/velmora.1", "share/man/man1/velmoractl.1",
         "share/applications/velmora.desktop", "share/mime/packages/velmora.xml", "share/metainfo/velmora.metainfo.xml",
         "share/icons/hicolor/scalable/apps/velmora.svg"]


def run(*command, **options):
    done = subprocess.run(list(map(str, command)), capture_output=True, text=True, **options)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))} ended with {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout


def make_package(build, target):
    run("cpack", "--config", build / "CPackConfig.cmake", "-B", target)
    packages = list(target.glob("velmora_*.deb"))
    if len(packages) != 1:
        sys.exit(f"{len(packages)} packages")
    return packages[0]


def judge_desktop(share):
    """What the desktop's own tools say; each fails on a mistake."""
    run("desktop-file-validate", share / "applications/velmora.desktop")
    run("appstreamcli", "validate", "--no-net", share / "metainfo/velmora.metainfo.xml")
    run("update-mime-database", share / "mime")
    for page in ("velmora", "velmoractl"):
        told = run("man", "--warnings", "-l", "-Tutf8", share / f"man/man1/{page}.1", env={**os.environ, "MAN_KEEP_STDERR": "1"})
        if "Steuerdatei" not in told:
            sys.exit(f"man page {page} is empty")


def judge_programs(root, directory):
    place = workplace.Workplace(directory, root / "bin", [])
    run("python3", DEMO / "make_messages.py", directory / "messages")
    place.messages = [directory / "messages"]
    place.deliver()
    place.put_entries()
    place.export()
    problems = place.log_entries()
    for name in ("index.html", "Gemeinsam/Vertrieb/Faxe/Fax_Wartungsvertrag fuer zwei Eismaschinen.htm",
                 "Gemeinsam/Adressen/Adressbuch.xls"):
        problems += [] if (place.archive / name).is_file() else [f"the export has no {name}"]
    page = place.archive / "Gemeinsam/Vertrieb/Faxe/Fax_Wartungsvertrag fuer zwei Eismaschinen.htm"
    problems += [] if b"data:image/svg+xml," in page.read_bytes() else ["the design set was not found"]
    told = subprocess.run([root / "bin/velmora", "-h"], env=place.environment, capture_output=True, text=True)
    problems += [] if "-b:" in told.stdout + told.stderr else ["velmora -h tells nothing"]
    return problems


def judge_window(root, directory):
    """The window opens and stays open."""
    environment = {**workplace.Workplace(directory, root / "bin", []).environment, "QT_QPA_PLATFORM": "offscreen"}
    program = subprocess.Popen([root / "bin/velmora"], env=environment, stderr=subprocess.PIPE, text=True)
    try:
        _, told = program.communicate(timeout=5)
        return [f"the window ended with {program.returncode}: {told}"]
    except subprocess.TimeoutExpired:
        program.kill()
        program.communicate()
        return []


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as scratch:
        scratch = pathlib.Path(scratch)
        run("dpkg-deb", "-x", make_package(options.build, scratch / "package"), scratch / "root")
        root = scratch / "root/usr"
        problems = [f"no {name}" for name in FILES if not (root / name).is_file()]
        judge_desktop(root / "share")
        (scratch / "work").mkdir()
        problems += judge_programs(root, scratch / "work") + judge_window(root, scratch / "work")
    print("\n".join(problems + [f"{len(problems)} problems"]))
    sys.exit(1 if problems else 0)


main()
