#!/usr/bin/env python3
"""Commands that are killed at random moments: kills_test.py --bin DIR [--times N] [--seed N] [--only CASE]

Each case kills its command N times. After each kill the store must be sound and hold each message exactly once; in the
end the command, run again, completes.
"""

import argparse
import collections
import json
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import workplace  # noqa: E402

HERE, THERE = "/Archive/Gemeinsam/Hier", "/Archive/Gemeinsam/Dort"
MANY = 2000


class Case:
    def __init__(self, place, name):
        self.place = workplace.Workplace(place.directory / name, place.programs, place.messages)
        self.problems = []
        self.program = self.place.programs / "velmoractl"
        self.place.run("velmoractl", "store", "init", self.place.environment["VELMORA_STORE"], "--server", "PRUEFUNG")

    def expect(self, holds, what):
        if not holds:
            self.problems.append(f"    {what}")

    def mailbox(self, count, name="viele.mbox"):
        path = self.place.directory / name
        path.write_text("".join(f"From x@example.org Mon Nov  2 10:00:00 2026\nSubject: {number}\n\nText {number}\n\n"
                                for number in range(count)))
        return path

    def deliver(self, archive, count):
        self.place.run("velmoractl", "store", "deliver", "--archive", archive.removeprefix("/Archive/"),
                       self.mailbox(count))

    def kill(self, after, program, *arguments):
        """Whether the command was still running after so many seconds and was killed."""
        running = subprocess.Popen([self.place.programs / program, *map(str, arguments)], env=self.place.environment,
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            running.wait(after)
            return False
        except subprocess.TimeoutExpired:
            running.send_signal(signal.SIGKILL)
            running.wait()
            return True

    def duration(self, program, *arguments):
        start = time.monotonic()
        self.place.run(program, *arguments)
        return time.monotonic() - start

    def subjects(self, *archives):
        found = collections.Counter()
        for archive in archives:
            listed = subprocess.run([self.program, "store", "list", "--json", "--archive", archive],
                                    env=self.place.environment, capture_output=True, text=True)
            if listed.returncode == 0:
                found.update(entry["subject"] for entry in json.loads(listed.stdout))
        return found

    def sound(self, after):
        done = subprocess.run([self.program, "store", "check"], env=self.place.environment, capture_output=True, text=True)
        self.expect(done.returncode == 0, f"the store is damaged after {after}: {done.stdout}{done.stderr}"[:1000])

    def each_once(self, count, archives, after):
        found = self.subjects(*archives)
        lost = [str(number) for number in range(count) if str(number) not in found]
        twice = [subject for subject, times in found.items() if times > 1]
        self.expect(not lost, f"{after}: lost {lost[:20]}")
        self.expect(not twice, f"{after}: twice {len(twice)}: {twice[:20]}")


def moments(case, times, longest):
    return [case.random.uniform(0, longest) for _ in range(times)]


def test_messages_are_moved(case):
    case.deliver(HERE, MANY)
    case.place.run("velmoractl", "store", "deliver", "--archive", THERE.removeprefix("/Archive/"), case.mailbox(1))
    case.place.run("velmoractl", "delete", "--messages", "--yes", THERE)
    longest = case.duration("velmoractl", "move", "--messages", "--yes", HERE, THERE)
    killed, source, target = 0, THERE, HERE
    for number, moment in enumerate(moments(case, case.times, longest)):
        killed += case.kill(moment, "velmoractl", "move", "--messages", "--yes", source, target)
        case.sound(f"kill {number} at {moment:.3f} s")
        case.each_once(MANY, (HERE, THERE), f"kill {number} at {moment:.3f} s")
        if not case.subjects(source):
            source, target = target, source
    case.place.run("velmoractl", "move", "--messages", "--yes", source, target)
    case.each_once(MANY, (target,), "the last run")
    print(f"    {killed} of {case.times} killed")


def test_a_tree_is_moved(case):
    parts = [f"{HERE}/Baum"] + [f"{HERE}/Baum/{name}" for name in ("Eins", "Eins/Tief", "Zwei", "Drei")]
    case.place.run("velmoractl", "store", "deliver", "--archive", THERE.removeprefix("/Archive/"), case.mailbox(1))
    case.place.run("velmoractl", "delete", "--messages", "--yes", THERE)
    box = case.mailbox(MANY).read_text().split("From x@")[1:]
    for position, part in enumerate(parts):
        path = case.place.directory / "part.mbox"
        path.write_text("".join("From x@" + mail for mail in box[position::len(parts)]))
        case.place.run("velmoractl", "store", "deliver", "--archive", part.removeprefix("/Archive/"), path)
    move = ["velmoractl", "move", "--merge", "--delete-archives", "--yes"]
    longest = case.duration(*move, f"{HERE}/Baum", THERE)
    killed, source, target = 0, THERE, HERE
    for number, moment in enumerate(moments(case, case.times, longest)):
        killed += case.kill(moment, *move, f"{source}/Baum", target)
        case.sound(f"kill {number} at {moment:.3f} s")
        both = [part.replace(HERE, top) for part in parts for top in (HERE, THERE)]
        case.each_once(MANY, both, f"kill {number} at {moment:.3f} s")
        listed = json.loads(case.place.run("velmoractl", "store", "list", "--json"))
        if not any(row["path"] == f"{source}/Baum" for row in listed):
            source, target = target, source
    case.place.run(*move, f"{source}/Baum", target)
    case.each_once(MANY, [part.replace(HERE, target) for part in parts], "the last run")
    print(f"    {killed} of {case.times} killed")


def test_messages_are_deleted(case):
    """What is gone is gone, what is left is whole."""
    kept = pathlib.Path(case.place.environment["VELMORA_STORE"] + "-kept")
    case.deliver(HERE, MANY)
    store = pathlib.Path(case.place.environment["VELMORA_STORE"])
    shutil.copytree(store, kept)
    longest = case.duration("velmoractl", "delete", "--yes", HERE)
    killed = 0
    for number, moment in enumerate(moments(case, case.times, longest)):
        if not case.subjects(HERE):
            shutil.rmtree(store)
            shutil.copytree(kept, store)
        killed += case.kill(moment, "velmoractl", "delete", "--yes", HERE)
        case.sound(f"kill {number} at {moment:.3f} s")
        twice = [subject for subject, times in case.subjects(HERE).items() if times > 1]
        case.expect(not twice, f"kill {number}: twice {twice[:20]}")
    if case.subjects(HERE):
        case.place.run("velmoractl", "delete", "--yes", HERE)
    case.expect(not case.subjects(HERE), "the last run")
    print(f"    {killed} of {case.times} killed")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", type=pathlib.Path, required=True, help="where the programs lie")
    parser.add_argument("--times", type=int, default=6, help="kills per case")
    parser.add_argument("--seed", type=int, default=1, help="of the moments")
    parser.add_argument("--only", default="", help="the cases whose name holds this")
    options = parser.parse_args()

    def make_case(place, name):
        case = Case(place, name)
        case.times, case.random = options.times, random.Random(options.seed)
        return case

    with tempfile.TemporaryDirectory() as directory:
        place = workplace.Workplace(pathlib.Path(directory).resolve(), options.bin.resolve(), [])
        problems = workplace.run_cases(place, make_case, dict(globals()), options.only)
    sys.exit(1 if problems else 0)


main()
