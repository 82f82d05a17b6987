"""Windows and unattended runs on one store at the same time."""

import collections
import os
import pathlib
import shutil
import statistics
import subprocess
import threading
import time

import workplace
from load_mail import each_once, mailboxes, senders_of
from measured import memory_of

COMMON = "/Archive/Gemeinsam"
RESTING, PARTED, COMING = 200, 300, 20  # messages that rest, that are moved there and back, that come and go
REST, HERE, THERE, PLACE = (f"{COMMON}/{name}" for name in ("Ruhe", "Hin", "Her", "Werkstatt"))
BUSY, VANISHED = "1005", "1001"  # another process holds the store; an entry has been deleted by another run
LONGEST_WAIT = 30  # medians that a run may take
PATIENCE = 120  # seconds after which a window counts as stuck
MAY_GROW = 64 << 20  # bytes of a window between its first round and its last


class Worker:
    """A process environment of its own on the common store, and how its runs went."""

    def __init__(self, case, name):
        self.case, self.name = case, name
        self.place = workplace.Workplace(case.place.directory / name, case.place.programs, [])
        self.environment = {**self.place.environment, "VELMORA_STORE": case.place.environment["VELMORA_STORE"]}
        self.seconds, self.waits, self.round = [], 0, 0

    def run(self, program, *arguments, tolerated=(BUSY,)):
        start = time.monotonic()
        done = subprocess.run([self.place.programs / program, *map(str, arguments)], env=self.environment, capture_output=True,
                              text=True, stdin=subprocess.DEVNULL)
        self.seconds.append((time.monotonic() - start, f"{program} {' '.join(map(str, arguments))[:60]}"))
        if done.returncode == 0:
            return
        lines = self.place.log_entries()
        others = [line for line in lines if not any(f": {number} - " in line for number in tolerated)]
        if lines and not others and done.returncode == 1:
            self.waits += any(f": {BUSY} - " in line for line in lines)
        else:
            self.case.expect(False, f"{self.name}: {program} {arguments[:3]}: status {done.returncode}: "
                                    f"{others[:3]} {done.stdout[-300:]} {done.stderr[-300:]}")

    def unattended(self, tolerated=(BUSY,), **keys):
        control = self.place.directory / "steuerdatei.txt"
        control.write_text("command=archivecopymove\n" + "".join(f"{key}={value}\n" for key, value in keys.items()))
        self.run("velmora", f"-b:{control}", tolerated=tolerated)

    def expect_pages(self, archive, wanted):
        """After a run that was kept out of the store something may be missing, or come with the next one."""
        found = sum(name.endswith(".htm") for name in os.listdir(self.place.archive / archive))
        self.case.expect(self.waits or found == wanted, f"{self.name}, round {self.round}: {found} of {wanted} pages")

    def loop(self, step, until):
        try:
            while time.monotonic() < until and not self.case.problems:
                step(self)
                self.round += 1
        except (OSError, subprocess.SubprocessError) as problem:
            self.case.expect(False, f"{self.name}: {problem}")

    def tell(self):
        if not self.seconds:
            return self.case.expect(False, f"{self.name}: no run came to its end")
        by_command = collections.defaultdict(list)
        for seconds, command in self.seconds:
            by_command[command].append(seconds)
        for command, seconds in by_command.items():
            middle, longest = statistics.median(seconds), max(seconds)
            print(f"    {self.name}: {len(seconds)} times {command}: median {middle:.2f} s, longest {longest:.2f} s")
            if self.case.options.linear:
                self.case.expect(longest <= LONGEST_WAIT * middle, f"{self.name}: {command} was kept waiting")
        print(f"    {self.name}: {self.waits} runs ended because the store was busy", flush=True)


def export_what_rests(worker):
    worker.unattended(srcarchive=REST, dstdirectory=worker.place.archive, deletedst="y", saveeml="y")
    worker.expect_pages("Ruhe", RESTING)
    worker.unattended((BUSY, VANISHED), srcarchive=HERE, dstdirectory=worker.place.archive, deletedst="y")


def move_there_and_back(worker):
    worker.run("velmoractl", "move", "--messages", "--yes", HERE, THERE)
    worker.run("velmoractl", "move", "--messages", "--yes", THERE, HERE)


def bring_and_take_away(worker):
    worker.run("velmoractl", "store", "deliver", "--archive", f"{PLACE}/Neu", worker.place.directory / "neu.mbox")
    worker.run("velmoractl", "copy", REST, PLACE)
    worker.run("velmoractl", "delete", "--delete-archives", "--yes", f"{PLACE}/Ruhe")
    worker.unattended(srcarchive=f"{PLACE}/Neu", dstdirectory=worker.place.archive, copymode="mov", delarcs="n", saveeml="y")
    worker.expect_pages("Neu", COMING)
    shutil.rmtree(worker.place.archive / "Neu", ignore_errors=True)


class Window:
    """A window without a screen, and a person who calls the program again and again to show something else."""

    def __init__(self, worker):
        self.worker, self.case = worker, worker.case
        self.environment = {**worker.environment, "QT_QPA_PLATFORM": "offscreen"}
        with open(worker.place.directory / "said.txt", "wb") as said:
            self.program = subprocess.Popen([worker.place.programs / "velmora", "-c", REST], env=self.environment,
                                            stdout=said, stderr=said)
        self.waited, self.first = 0.0, 0
        self.wait_until(self.is_the_first, "starts")

    def wait_until(self, reached, what):
        start = time.monotonic()
        while not reached() and time.monotonic() < start + PATIENCE and self.program.poll() is None:
            time.sleep(0.1)
        self.case.expect(self.program.poll() is None, f"{self.worker.name} ended with {self.program.poll()}")
        self.case.expect(reached(), f"{self.worker.name} never {what}")
        return time.monotonic() - start

    def is_the_first(self):
        """Whether it is the one window of its settings: before, a call of the program would become it."""
        lock = pathlib.Path(self.environment["VELMORA_CONFIG_DIR"], "instance.lock")
        return lock.exists() and f":{lock.stat().st_ino} " in pathlib.Path("/proc/locks").read_text()

    def handed_over(self):
        return next(self.worker.place.directory.rglob("VelmoraDisplayParms.zeb"), None)

    def show_something_else(self, worker):
        start = time.monotonic()
        what = [("-c", REST), ("-c", HERE), ("-c", PLACE), (str(worker.place.archive),), ("-c", THERE)][worker.round % 5]
        subprocess.run([worker.place.programs / "velmora", *what], env=self.environment, check=True, timeout=PATIENCE,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait = self.wait_until(lambda: not self.handed_over(), f"answered when asked for {what}")
        self.waited = max(self.waited, wait)
        if worker.round == 5:
            self.first = memory_of(self.program)
        time.sleep(max(0.0, start + 1 - time.monotonic()))

    def close(self):
        if self.program.poll() is None:
            last = memory_of(self.program)
            first = self.first or last
            print(f"    {self.worker.name}: {self.worker.round} times asked, longest wait {self.waited:.1f} s, "
                  f"{first / (1 << 20):.0f} MiB of memory at first, {last / (1 << 20):.0f} MiB at last")
            self.case.expect(self.case.options.unweighed or last < first + MAY_GROW, f"{self.worker.name} grows")
        self.program.kill()
        self.program.wait()


def test_windows_and_runs(case):
    place = case.new_store(RESTING)
    counts = {REST: RESTING, HERE: PARTED, THERE: 0, PLACE: 0}
    for archive, count in counts.items():
        place.run("velmoractl", "store", "deliver", "--archive", archive, *mailboxes(place.directory, max(1, count)))
        if count == 0:
            place.run("velmoractl", "delete", "--messages", "--yes", archive)
    workers = {Worker(case, step.__name__): step for step in (export_what_rests, move_there_and_back, bring_and_take_away)}
    for worker in workers:
        mailboxes(worker.place.directory, COMING)[0].rename(worker.place.directory / "neu.mbox")
    windows = [Window(Worker(case, f"window_{number}")) for number in range(case.options.windows)]
    until = time.monotonic() + 60 * case.options.minutes
    threads = [threading.Thread(target=worker.loop, args=(step, until)) for worker, step in workers.items()]
    threads += [threading.Thread(target=window.worker.loop, args=(window.show_something_else, until)) for window in windows]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    for window in windows:
        window.close()
    for worker in workers:
        worker.tell()
    check_common_store(case, place, list(workers))


def check_common_store(case, place, workers):
    def listed(*archives):
        for archive in archives:
            output = place.directory / "listed.json"
            output.write_text(place.run("velmoractl", "store", "list", "--json", "--archive", archive))
            yield from senders_of(output)

    each_once(case, RESTING, listed(REST), "what rests")
    each_once(case, PARTED, listed(HERE, THERE), "what is moved there and back")
    waits = sum(worker.waits for worker in workers)
    case.expect(waits or not list(listed(PLACE, f"{PLACE}/Neu")), "something is left of what comes and goes")
    checked = subprocess.run([place.programs / "velmoractl", "store", "check"], env=place.environment, capture_output=True,
                             text=True)
    case.expect(checked.returncode == 0, f"the store is damaged: {checked.stdout[-1000:]}")
