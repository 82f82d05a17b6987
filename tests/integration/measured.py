"""Programs that are timed and weighed, and what their times and weights at two sizes say about their growth."""

import dataclasses
import json
import os
import subprocess
import sys
import time

STEEPEST = 1.5  # what each may cost at ten times the number against what it cost before: 15 times as long in all
SLACK = 4 << 20  # bytes of memory by which two runs of one command differ anyway


@dataclasses.dataclass
class Figure:
    command: str
    size: int
    seconds: float  # on the clock
    busy: float  # seconds of a processor: what other programs do on the machine counts little there
    peak: int  # bytes of memory

    def __str__(self):
        return (f"    {self.command:<26} {self.size:>9,}  {self.seconds:8.2f} s, {self.busy:8.2f} s of a processor"
                f"  {self.peak / (1 << 20):7.1f} MiB")


def run_to_end(command, environment, output):
    """Exit status, and time and memory as in a Figure; what the program says goes into the file `output`."""
    # The kernel counts what starts a program as the program's own memory, so a process that holds little does it.
    launcher = [sys.executable, "-I", "-S", __file__, str(output), *map(str, command)]
    return json.loads(subprocess.run(launcher, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                     check=True).stdout)


def launch(output, *command):
    file = os.open(output, os.O_WRONLY | os.O_CREAT | os.O_TRUNC)
    start = time.monotonic()
    actions = [(os.POSIX_SPAWN_DUP2, file, 1), (os.POSIX_SPAWN_DUP2, file, 2)]
    process = os.posix_spawn(command[0], command, os.environ, file_actions=actions)
    _, status, usage = os.wait4(process, 0)
    print([os.waitstatus_to_exitcode(status), time.monotonic() - start, usage.ru_utime + usage.ru_stime,
           usage.ru_maxrss * 1024])


def memory_of(process):
    """What a running process holds, in bytes."""
    with open(f"/proc/{process.pid}/status") as status:
        return next(int(line.split()[1]) << 10 for line in status if line.startswith("VmRSS"))


class Figures:
    """One run of each command at one size, then at another. In bytes of memory: what a command may keep for each thing,
    and what it may keep however many there are."""

    def __init__(self, kept, once=0):
        self.kept, self.once, self.runs = kept, SLACK + once, {}

    def add(self, figure):
        self.runs.setdefault(figure.command, []).append(figure)
        print(figure, flush=True)

    def problems(self, timed, weighed):
        for command, (small, large) in self.runs.items():
            added = large.size - small.size
            each, kept = (large.peak - small.peak) / added, self.kept.get(command, 0)
            print(f"    {command}: {large.busy / max(small.busy, 0.01):.1f} times as long, {each:.0f} bytes each")
            if timed and large.busy / large.size > STEEPEST * small.busy / small.size:
                yield (f"{command}: {small.size:,} take {small.busy:.2f} s, {large.size:,} take {large.busy:.2f} s, "
                       "which is more than linear")
            if weighed and each * added > self.once + kept * added:
                yield f"{command}: {each:.0f} bytes of memory for each, of which {kept} are accounted for"


if __name__ == "__main__":
    launch(*sys.argv[1:])
