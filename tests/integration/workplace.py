"""A scratch directory with a store, a mail archive and a process environment that touches nothing outside of it."""

import argparse
import contextlib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

TIME_ZONE = "Europe/Berlin"  # of the programs and of those who judge them
os.environ["TZ"] = TIME_ZONE
time.tzset()


@contextlib.contextmanager
def from_command_line(usage):
    """--bin DIR [--keep DIR] MESSAGES...: a Workplace. Every directory below MESSAGES with *.eml files is an archive."""
    parser = argparse.ArgumentParser(description=usage, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", type=pathlib.Path, required=True, help="where the programs lie")
    parser.add_argument("--keep", type=pathlib.Path, help="work here and leave everything standing")
    parser.add_argument("messages", type=pathlib.Path, nargs="+")
    options = parser.parse_args()
    with contextlib.ExitStack() as stack:
        directory = options.keep or pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory()))
        directory.mkdir(exist_ok=True)
        yield Workplace(directory.resolve(), options.bin, options.messages)


def enter_mount_namespace():
    """Starts the script anew in a mount namespace of its own, where it may mount disks that are full or read-only."""
    if os.environ.pop("VELMORA_TEST_NAMESPACE", "") == "own":
        return
    command = ["unshare", "--mount"] + ([] if os.geteuid() == 0 else ["--map-root-user"])
    if subprocess.run([*command, "true"], stderr=subprocess.DEVNULL).returncode != 0:
        command += ["--propagation", "unchanged"]  # a root directory that is no mount point, as after chroot
    os.environ["VELMORA_TEST_NAMESPACE"] = "own"
    os.execvp("unshare", [*command, sys.executable, *sys.argv])


def run_cases(place, make_case, functions, only=""):
    """Runs each test_... of the functions on a case of its own, tells of it, and answers the problems of all."""
    problems = []
    for name, run in functions.items():
        if not name.startswith("test_") or only not in name:
            continue
        case = make_case(place, name[5:45])
        start = time.monotonic()
        run(case)
        seconds = time.monotonic() - start
        print(f"{name[5:].replace('_', ' ')}: {len(case.problems)} problems, {seconds:.1f} s", flush=True)
        for problem in case.problems:
            print(problem)
        problems += case.problems
        shutil.rmtree(case.place.directory)
    return problems


class Workplace:
    def __init__(self, directory, programs, messages):
        self.directory, self.programs, self.messages = directory, programs, messages
        self.archive = directory / "Mailarchiv"
        self.archive.mkdir(parents=True, exist_ok=True)
        self.sources = []  # the bytes of every message delivered
        keep = {key: value for key, value in os.environ.items() if key not in ("DISPLAY", "WAYLAND_DISPLAY")}
        own = {f"VELMORA_{name}_DIR": str(directory / name.lower())
               for name in ("CONFIG", "STATE", "DATA", "TEMP", "MACHINE_CONFIG")}
        self.environment = {**keep, **own, "VELMORA_STORE": str(directory / "store"), "HOME": str(directory),
                            "TZ": TIME_ZONE}

    def run(self, program, *arguments, status=0):
        """The output of a program that must end with this status."""
        command = [str(self.programs / program), *map(str, arguments)]
        done = subprocess.run(command, env=self.environment, capture_output=True, text=True)
        if done.returncode != status:
            sys.exit(f"{' '.join(command[:4])} ended with {done.returncode}\n{done.stdout}{done.stderr}")
        return done.stdout

    def deliver(self):
        self.run("velmoractl", "store", "init", self.environment["VELMORA_STORE"], "--server", "PRUEFUNG")
        for top in self.messages:
            for directory in sorted({path.parent for path in top.rglob("*.eml")}):
                files = sorted(directory.glob("*.eml"))
                self.sources += [file.read_bytes() for file in files]
                archive = pathlib.PurePosixPath("Gemeinsam", top.name, directory.relative_to(top))
                self.run("velmoractl", "store", "deliver", "--archive", archive, *files)

    def store_directory(self, physical):
        """Where an archive lies, by the ID that the store gives it."""
        path = pathlib.Path(self.environment["VELMORA_STORE"])
        for part in physical.split("\\")[4:]:
            path = next(entry for entry in path.iterdir() if entry.name.lower() == part.lower())
        return path

    def put_entries(self):
        """The faxes, voice mails, text messages and addresses of the demo, their files in `entries`."""
        demo = pathlib.Path(__file__).parents[2] / "demo" / "put_entries.py"
        done = subprocess.run([sys.executable, demo, self.programs / "velmoractl", self.directory / "entries"],
                              env=self.environment, capture_output=True, text=True)
        if done.returncode != 0:
            sys.exit(f"{demo.name} ended with {done.returncode}\n{done.stdout}{done.stderr}")

    def export(self):
        control = self.directory / "export.txt"
        control.write_text(f"command=archivecopymove\nsrcarchive=/Archive/Gemeinsam\ndstdirectory={self.archive}\n"
                           "saveatt=y\nsaveeml=y\nsavesmtp=y\nsavecmt=y\nmakeidx=y\n")
        self.run("velmora", f"-b:{control}")

    @property
    def log(self):
        return self.directory / "state" / "VelmoraError.log"

    def log_entries(self):
        """The entries of the error log, without its heading."""
        return self.log.read_text("cp1252").splitlines()[1:] if self.log.exists() else []
