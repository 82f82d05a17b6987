"""What the scripts share that kill commands with SIGKILL: a store of messages that are known by their bytes, commands that
are killed at random moments of their run, and the looks at what stands afterwards.
"""

import argparse
import collections
import json
import pathlib
import random
import signal
import subprocess
import sys
import tempfile
import time

import workplace

HERE, THERE = "/Archive/Gemeinsam/Hier", "/Archive/Gemeinsam/Dort"
MANY = 2000
# What a process has written before it is killed stays with the kernel, on whatever file system. One in memory makes the
# runs all work and no waiting, so that more of the kills hit a write.
SCRATCH = next((path for path in (pathlib.Path("/dev/shm"),) if path.is_dir()), None)


def mail(number):
    """The bytes of a message that nothing else has: of another length, with text beyond ASCII."""
    return f"Subject: {number}\n\nGrüße {number}\n{'Zeile ' * (number % 37)}\n".encode()


class Case:
    def __init__(self, place, name):
        self.place = workplace.Workplace(place.directory / name, place.programs, place.messages)
        self.problems = []
        self.program = self.place.programs / "velmoractl"
        self.store = pathlib.Path(self.place.environment["VELMORA_STORE"])
        self.place.run("velmoractl", "store", "init", self.store, "--server", "PRUEFUNG")

    def expect(self, holds, what):
        if not holds:
            self.problems.append(f"    {what}")

    def mailbox(self, numbers, name="viele.mbox"):
        path = self.place.directory / name
        path.write_bytes(b"".join(b"From x@example.org Mon Nov  2 10:00:00 2026\n" + mail(number) + b"\n" for number in numbers))
        return path

    def deliver(self, archive, numbers):
        self.place.run("velmoractl", "store", "deliver", "--archive", archive.removeprefix("/Archive/"), self.mailbox(numbers))

    def make_archive(self, archive):
        """An archive without messages."""
        self.deliver(archive, range(1))
        self.place.run("velmoractl", "delete", "--messages", "--yes", archive)

    # --- Killing. ---

    def kill(self, after, program, *arguments, **streams):
        """Whether the command was still running after so many seconds and was killed."""
        running = subprocess.Popen([self.place.programs / program, *map(str, arguments)], env=self.place.environment,
                                   **{"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL} | streams)
        try:
            running.wait(after)
            return False
        except subprocess.TimeoutExpired:
            running.send_signal(signal.SIGKILL)
            running.wait()
            return True

    def kills(self, longest, command):
        """Kills what `command` answers `times` times at random moments up to `longest` seconds; yields after each."""
        killed = 0
        for number in range(self.times):
            moment = self.random.uniform(0, longest)
            killed += self.kill(moment, *command())
            yield f"kill {number} at {moment:.3f} s"
        print(f"    {killed} of {self.times} killed")

    def duration(self, program, *arguments):
        start = time.monotonic()
        self.place.run(program, *arguments)
        return time.monotonic() - start

    # --- Looking. ---

    def archives(self):
        """The paths of all archives, each with its directory. No two of these tests' archives bear one path."""
        listed = json.loads(self.place.run("velmoractl", "store", "list", "--json"))
        return {row["path"]: self.place.store_directory(row["id"]) for row in listed if not row["link"]}

    def entries(self, archive):
        """The entries of an archive, none when there is no such archive."""
        listed = subprocess.run([self.program, "store", "list", "--json", "--archive", archive],
                                env=self.place.environment, capture_output=True, text=True)
        return json.loads(listed.stdout) if listed.returncode == 0 else []

    def subjects(self, *archives):
        return collections.Counter(entry["subject"] for archive in archives for entry in self.entries(archive))

    def sources(self, *archives):
        """How often each source stands in the archives, as the entries name them."""
        directories = self.archives()
        return collections.Counter((directories[archive] / f"{entry['key']:08X}.001").read_bytes()
                                   for archive in archives for entry in self.entries(archive))

    def damage(self):
        """What a check of the store finds but for notes."""
        done = subprocess.run([self.program, "store", "check"], env=self.place.environment, capture_output=True, text=True)
        lines = done.stdout.splitlines()[:-1] + done.stderr.splitlines()
        return [line for line in lines if not line.startswith("Hinweis:")] if done.returncode != 0 else []

    def sound(self, after):
        damage = self.damage()
        self.expect(not damage, f"the store is damaged after {after}: {damage[:10]}")

    def each_once(self, count, archives, after):
        found = self.subjects(*archives)
        lost = [str(number) for number in range(count) if str(number) not in found]
        twice = [subject for subject, times in found.items() if times > 1]
        self.expect(not lost, f"{after}: lost {lost[:20]}")
        self.expect(not twice, f"{after}: twice {len(twice)}: {twice[:20]}")

    def whole(self, numbers, archives, after):
        """The messages of these numbers stand in the archives, each once and byte for byte, and nothing else."""
        found, wanted = self.sources(*archives), collections.Counter(map(mail, numbers))
        self.expect(found == wanted, f"{after}: {(wanted - found).total()} messages are missing, "
                                     f"{(found - wanted).total()} others are there: {list(found - wanted)[:3]}")


def run(usage, functions):
    """The command line of such a script, and its test_... functions."""
    parser = argparse.ArgumentParser(description=usage, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", type=pathlib.Path, required=True, help="where the programs lie")
    parser.add_argument("--times", type=int, default=5, help="kills per case")
    parser.add_argument("--seed", type=int, default=1, help="of the moments")
    parser.add_argument("--only", default="", help="the cases whose name holds this")
    options = parser.parse_args()

    def make_case(place, name):
        case = Case(place, name)
        case.times, case.random = options.times, random.Random(options.seed)
        return case

    with tempfile.TemporaryDirectory(dir=SCRATCH) as directory:
        place = workplace.Workplace(pathlib.Path(directory).resolve(), options.bin.resolve(), [])
        problems = workplace.run_cases(place, make_case, functions, options.only)
    sys.exit(1 if problems else 0)
