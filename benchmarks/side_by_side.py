#!/usr/bin/env python3
"""Whole processes side by side on the same messages: Velmora's delivery and export against MHonArc writing HTML.

side_by_side.py --bin DIR --samples DIR [--sizes 1000,10000,15000,100000] [--mhonarc-up-to 15000]

Every size is one mbox of the sample messages, repeated as often as needed, in one archive. Prints a table.

Nothing is deleted before the last row is measured: ext4 makes new files several times slower for minutes after many old
ones were deleted on the same disk, and that would count against whoever comes second. For the same reason: no builds or
test runs just before.
"""

import argparse
import os
import pathlib
import subprocess
import sys
import tempfile
import time


def write_mbox(path, samples, size):
    """Messages in mboxrd form, each with a Message-ID of its own so that no reader takes them for copies."""
    with open(path, "wb") as out:
        for number in range(size):
            source = samples[number % len(samples)].replace(b"\r\n", b"\n")
            quoted = b"".join(b">" + line if line.lstrip(b">").startswith(b"From ") else line
                              for line in source.splitlines(keepends=True))
            out.write(b"From sender@example.org Mon Jan  5 10:00:00 2026\nMessage-ID: <%d@side.by.side>\n" % number)
            out.write(quoted.rstrip(b"\n") + b"\n\n")


def timed(command, environment):
    """(seconds, peak memory in MiB) of a process that must succeed."""
    start = time.monotonic()
    process = subprocess.Popen([str(part) for part in command], env=environment, stdout=subprocess.DEVNULL,
                               stderr=subprocess.PIPE)
    error = process.stderr.read()
    _, status, usage = os.wait4(process.pid, 0)
    if status != 0:
        sys.exit(f"{command[0]} failed: {error.decode(errors='replace')[-2000:]}")
    return time.monotonic() - start, usage.ru_maxrss / 1024


def measure_velmora(programs, directory, mbox):
    environment = dict(os.environ, HOME=str(directory), VELMORA_STORE=str(directory / "store"),
                       VELMORA_CONFIG_DIR=str(directory / "config"), VELMORA_STATE_DIR=str(directory / "state"),
                       VELMORA_DATA_DIR=str(directory / "data"), VELMORA_TEMP_DIR=str(directory / "temp"))
    target = directory / "Mailarchiv"
    target.mkdir()
    control = directory / "export.txt"
    control.write_text(f"command=archivecopymove\nsrcarchive=/Archive/Gemeinsam/Alle\ndstdirectory={target}\n"
                       "saveatt=y\nmakeidx=y\n")
    timed([programs / "velmoractl", "store", "init", directory / "store", "--server", "MESSUNG"], environment)
    delivery = timed([programs / "velmoractl", "store", "deliver", "--archive", "Gemeinsam/Alle", mbox], environment)
    export = timed([programs / "velmora", f"-b:{control}"], environment)
    pages = sum(1 for _ in (target / "Alle").glob("*.add"))
    return delivery, export, pages


def measure_mhonarc(directory, mbox):
    target = directory / "mhonarc"
    target.mkdir()
    return timed(["mhonarc", "-quiet", "-outdir", target, mbox], dict(os.environ))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", type=pathlib.Path, required=True)
    parser.add_argument("--samples", type=pathlib.Path, required=True)
    parser.add_argument("--sizes", default="1000,10000,15000,100000")
    parser.add_argument("--mhonarc-up-to", type=int, default=15000)
    options = parser.parse_args()
    samples = [path.read_bytes() for path in sorted(options.samples.rglob("*.eml"))]

    print("| messages | mbox MiB | deliver s | export s | export µs/message | export MiB | MHonArc s | export : MHonArc |"
          " deliver : MHonArc |")
    print("|---|---|---|---|---|---|---|---|---|")
    top = tempfile.TemporaryDirectory(prefix="velmora-side-by-side-")
    for size in map(int, options.sizes.split(",")):
        directory = pathlib.Path(top.name) / str(size)
        directory.mkdir()
        mbox = directory / "messages.mbox"
        write_mbox(mbox, samples, size)
        (deliver, _), (export, memory), pages = measure_velmora(options.bin, directory, mbox)
        if pages != size:
            sys.exit(f"{pages} pages for {size} messages")
        row = [size, f"{mbox.stat().st_size / 2**20:.0f}", f"{deliver:.2f}", f"{export:.2f}", f"{export / size * 1e6:.0f}",
               f"{memory:.0f}"]
        if size <= options.mhonarc_up_to:
            other, _ = measure_mhonarc(directory, mbox)
            row += [f"{other:.1f}", f"1 : {other / export:.1f}", f"1 : {other / deliver:.1f}"]
        else:
            row += ["", "", ""]
        print("| " + " | ".join(map(str, row)) + " |", flush=True)


main()
