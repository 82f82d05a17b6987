#!/usr/bin/env python3
"""Large numbers: load_test.py --bin DIR [--messages N] [--archives N] [--attachments N] [--minutes N] [--only CASE]

One archive of so many messages, a tree of so many archives, a message of so many attachments, and windows and unattended
runs on one store at the same time. Each command runs at a tenth of the number and at the whole, is timed and weighed, and
what it leaves is counted one by one. `--linear` makes times count, which needs large numbers and a machine to itself.
"""

import argparse
import base64
import collections
import email
import hashlib
import html.parser
import itertools
import json
import math
import os
import pathlib
import random
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
import threading
import time
import urllib.parse

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import workplace  # noqa: E402
from measured import Figure, Figures, memory_of, run_to_end  # noqa: E402

COMMON = "/Archive/Gemeinsam"
DEPTH = 12
WORDS = ("Angebot Auftrag Rechnung Lieferung Termin Besprechung Protokoll Kunde Vertrieb Einkauf Technik Lager Urlaub "
         "Vertrag Mahnung Gutschrift Übergabe Prüfung Änderung Größe").split()

# Bytes of memory that a command may keep for each message, archive or attachment. 200 are a name in the index of a
# directory; a page and its descriptor are two of them, and two more while a directory is listed.
KEPT_PER_MESSAGE = {
    "list": 30, "list of the copy": 30, "list of the moved": 30,  # the key and its place in the order
    "list of archives": 250, "check": 250, "check after it": 250,
    "export": 700,
    "content index": 1100,  # besides the names, a row of the index with the texts that it is sorted by
    "copy": 300, "move": 300,
}
# The list that names it, and while the tree is walked its path.
KEPT_PER_ARCHIVE = collections.defaultdict(lambda: 4000)
KEPT_PER_ATTACHMENT = {
    "deliver": 4000,  # of these 2,000 its own bytes
    **{f"{what} {where}": 1000 for what in ("list", "export") for where in ("as it came", "copied", "moved")},
    "copy": 500, "move": 500, "delete": 500, "check": 200,
}
OPEN_DATABASES = 64 << 17  # bytes of as many databases as are open at a time

class Case:
    def __init__(self, place, name, options):
        self.place = self.base = workplace.Workplace(place.directory / name, place.programs, [])
        self.options, self.problems = options, []

    def new_store(self, size):
        """A store of its own for each size, so that nothing is deleted between what is compared."""
        place = self.place = workplace.Workplace(self.base.directory / str(size), self.base.programs, [])
        place.run("velmoractl", "store", "init", place.environment["VELMORA_STORE"], "--server", "PRUEFUNG")
        return place

    def expect(self, holds, what):
        if not holds:
            self.problems.append(f"    {what}")

    def measure(self, figures, size, name, program, *arguments):
        """The file with what the program said."""
        output = self.place.directory / "output"
        status, *cost = run_to_end([self.place.programs / program, *arguments], self.place.environment, output)
        figures.add(Figure(name, size, *cost))
        if status != 0:
            with open(output, "rb") as said:
                said.seek(max(0, output.stat().st_size - 500))
                self.expect(False, f"{name}, {size}: status {status}: {said.read().decode('utf-8', 'replace')}")
        return output

    def judge(self, figures):
        self.place = self.base  # all of it is cleared away
        for problem in figures.problems(self.options.linear, not self.options.unweighed):
            self.expect(False, problem)


def export_keys(place, archive, target, **keys):
    return ["run", "command=archivecopymove", f"srcarchive={archive}", f"dstdirectory={target}",
            *(f"{key}={value}" for key, value in keys.items())]


def rows_of(listing):
    """The entries of a list in JSON, one at a time: each stands on a line of its own."""
    with open(listing, encoding="utf-8") as lines:
        for line in lines:
            if line.startswith("  {"):
                yield json.loads(line.rstrip().removesuffix(","))


# One archive of very many messages


def mail(number):
    """A message of 1 to 2 KB, known by its sender. Half of all bear one subject, as reports of machines do."""
    text = random.Random(number)
    subject = "Sicherung erfolgreich" if number % 2 else f"Re: {text.choice(WORDS)} {number % 1000}"
    lines = "".join(" ".join(text.choices(WORDS, k=9)) + "\n" for _ in range(12 + number % 13))
    return (f"From: Absender {number} <absender{number}@example.org>\nTo: anna@example.org\nSubject: {subject}\n"
            f"Date: {1 + number % 28:02} Mar 2026 {number % 24:02}:{number % 60:02}:00 +0100\n"
            f"Message-ID: <{number}@example.org>\nMIME-Version: 1.0\nContent-Type: text/plain; charset=utf-8\n"
            f"Content-Transfer-Encoding: 8bit\n\nKennung {number}.\n{lines}")


def mailboxes(directory, count, part=100_000):
    """Mailbox files of so many messages in all."""
    boxes = []
    for first in range(0, count, part):
        boxes.append(directory / f"{first}.mbox")
        with open(boxes[-1], "w", encoding="utf-8") as box:
            for number in range(first, min(first + part, count)):
                box.write(f"From x@example.org Mon Mar  2 10:00:00 2026\n{mail(number)}\n")
    return boxes


class Senders:
    """How often each message was seen, known by its sender."""

    def __init__(self, count):
        self.seen, self.strangers = bytearray(count), 0

    def note(self, address):
        number = re.fullmatch(r"absender(\d+)@example\.org", address)
        if number and int(number[1]) < len(self.seen):
            self.seen[int(number[1])] = min(255, self.seen[int(number[1])] + 1)
        else:
            self.strangers += 1

    def problem(self):
        wrong = len(self.seen) - self.seen.count(1)
        return f"{wrong} of {len(self.seen)} are not there exactly once" if wrong or self.strangers else ""


def each_once(case, size, addresses, where):
    senders = Senders(size)
    for address in addresses:
        senders.note(address)
    case.expect(not senders.problem(), f"{where}: {senders.problem()}")


def senders_of(listing):
    return (row["from"] for row in rows_of(listing))


def linked_senders(index):
    with open(index, encoding="cp1252") as lines:
        for line in lines:
            yield from re.findall(r"mailto:([^\"]+)\"", line)


def check_pages(case, target, size):
    """Every message has a page and a descriptor, and each hundredth page the text of the sender that it names."""
    pages = descriptors = 0
    for entry in os.scandir(target):
        descriptors += entry.name.endswith(".add")
        if not entry.name.endswith(".htm"):
            continue
        pages += 1
        if pages % 100 == 1:
            page = pathlib.Path(entry.path).read_text("cp1252")
            number = re.search(r"absender(\d+)@example\.org", page)
            case.expect(number and f"Kennung {number[1]}." in page, f"{entry.name} shows another message than it names")
    case.expect((pages, descriptors) == (size, size), f"{pages} pages and {descriptors} descriptors of {size} messages")


def run_one_archive(case, figures, size):
    place = case.new_store(size)
    here, there = f"{COMMON}/Viele", f"{COMMON}/Kopie"
    target = place.archive
    boxes = mailboxes(place.directory, size)

    def ctl(name, *arguments):
        return case.measure(figures, size, name, "velmoractl", *arguments)

    ctl("deliver", "store", "deliver", "--archive", here, *boxes)
    for box in boxes:
        box.unlink()
    each_once(case, size, senders_of(ctl("list", "store", "list", "--json", "--archive", here)), "the list")
    ctl("list of archives", "store", "list", "--json")
    ctl("check", "store", "check")
    ctl("export", *export_keys(place, here, target, makeidx="n"))
    check_pages(case, target / "Viele", size)
    ctl("content index", *export_keys(place, f"{COMMON}/Newsgroups", target, makeidx="y"))
    for index in ("index.html", "index2.html", "index3.html"):
        each_once(case, size, linked_senders(target / "Viele" / index), index)
    ctl("copy", "copy", here, f"{COMMON}/Web")
    there = f"{COMMON}/Web/Viele"
    each_once(case, size, senders_of(ctl("list of the copy", "store", "list", "--json", "--archive", there)), "the copy")
    ctl("delete", "delete", "--yes", here)
    case.expect(not any(senders_of(ctl("list of nothing", "store", "list", "--json", "--archive", here))), "not deleted")
    ctl("move", "move", "--messages", there, here)
    each_once(case, size, senders_of(ctl("list of the moved", "store", "list", "--json", "--archive", here)), "the moved")
    ctl("check after it", "store", "check")


def test_one_archive(case):
    figures = Figures(KEPT_PER_MESSAGE)
    for size in (case.options.messages // 10, case.options.messages):
        run_one_archive(case, figures, size)
    case.judge(figures)



# A tree of very many archives


def fan_outs(count):
    """How many sub-archives an archive has on each level, so that the tree has almost so many archives, and their number."""
    fans = [1] * DEPTH

    def total():
        return sum(math.prod(fans[:level]) for level in range(1, DEPTH + 1))

    for position in itertools.cycle(reversed(range(DEPTH))):
        fans[position] += 1
        if total() > count:
            fans[position] -= 1
            break
    while total() + math.prod(fans[:-1]) <= count:
        fans[-1] += 1
    return fans, total()


def grow_tree(case, fans, tree, message):
    """The tree from its leaves up: what is below one archive is copied under its siblings. What all of it costs."""
    place, output, costs = case.place, case.place.directory / "output", []

    def ctl(*arguments):
        status, *cost = run_to_end([place.programs / "velmoractl", *arguments], place.environment, output)
        case.expect(status == 0, f"{arguments[:2]}: status {status}: {output.read_text()[-500:]}")
        costs.append(cost)

    below = []
    for level in reversed(range(DEPTH)):
        top = tree if level == 0 else f"{COMMON}/Ebene {level}"
        names = [f"{top}/Ablage {number}" for number in range(fans[level])]
        for name in names:
            ctl("store", "deliver", "--archive", name, message)
        for name in names[:-1] if below else []:
            ctl("copy", *below, name)
        if below:
            ctl("move", "--delete-archives", "--yes", *below, names[-1])
        below = names
    seconds, busy, peaks = zip(*costs)
    return sum(seconds), sum(busy), max(peaks)


def archives_below(listing, top):
    """(archives, messages) in the list below an archive; each path must be new."""
    paths, messages = set(), 0
    for row in rows_of(listing):
        if row["path"].startswith(top + "/"):
            paths.add(hash(row["path"]))
            messages += row["messages"]
    return len(paths), messages


def check_exported_tree(case, top, count):
    """Each archive has its directory with a page of its one message, and an index that links to it."""
    found = collections.Counter()
    for directory, _, files in os.walk(top):
        found["markers"] += "VelmoraSubArc.vla" in files
        found["pages"] += sum(name.endswith(".htm") for name in files)
        found["descriptors"] += sum(name.endswith(".add") for name in files)
        if directory != str(top):
            index = pathlib.Path(directory, "index.html")
            found["links"] += index.is_file() and ">Kennung</a>" in index.read_text("cp1252")
    wanted = {"markers": count + 1, "pages": count, "descriptors": count, "links": count}
    case.expect(dict(found) == wanted, f"exported {dict(found)}, not {wanted}")


def run_tree(case, figures, wanted):
    fans, size = fan_outs(wanted)
    place, tree = case.new_store(wanted), f"{COMMON}/Baum"
    message = place.directory / "kennung.eml"
    message.write_text("From: a@example.org\nSubject: Kennung\nDate: Mon, 2 Mar 2026 10:00:00 +0100\n\nText\n")

    def ctl(name, *arguments):
        return case.measure(figures, size, name, "velmoractl", *arguments)

    def count(top, wanted, name):
        found = archives_below(ctl(name, "store", "list", "--json"), top)
        case.expect(found == (wanted, wanted), f"{name}: {found} archives and messages below {top}, not {wanted}")

    print(f"    {size} archives, on each level {fans}")
    figures.add(Figure("create", size, *grow_tree(case, fans, tree, message)))
    count(tree, size, "list")
    ctl("tree check", "tree", "check")
    ctl("check", "store", "check")
    ctl("export with index", *export_keys(place, tree, place.archive, makeidx="y"))
    check_exported_tree(case, place.archive / "Baum", size)
    shutil.rmtree(place.archive)
    ctl("copy", "copy", tree, f"{COMMON}/Web")
    count(f"{COMMON}/Web/Baum", size, "list of both")
    ctl("move", "move", "--delete-archives", "--yes", f"{COMMON}/Web/Baum", f"{COMMON}/Gruppen")
    count(f"{COMMON}/Gruppen/Baum", size, "list after the move")
    ctl("delete", "delete", "--delete-archives", "--yes", f"{COMMON}/Gruppen/Baum")
    count(f"{COMMON}/Gruppen", 0, "list after the deletion")
    count(tree, size, "list of the other")
    ctl("check after it", "store", "check")


def test_tree(case):
    figures = Figures(KEPT_PER_ARCHIVE, OPEN_DATABASES)
    for size in (case.options.archives // 10, case.options.archives):
        run_tree(case, figures, size)
    case.judge(figures)


# A message of very many attachments


def attached_message(count):
    """(source, contents of the attachments); every tenth attachment has a name that others have too."""
    chance = random.Random(count)
    contents = [b"%d " % number + chance.randbytes(chance.randrange(3000)) for number in range(count)]
    names = ["Bild.png" if number % 10 == 0 else f"Anhang {number:05}.bin" for number in range(count)]
    parts = "".join(f'--grenze\nContent-Type: application/octet-stream; name="{name}"\nContent-Transfer-Encoding: base64\n'
                    f'Content-Disposition: attachment; filename="{name}"\n\n{base64.encodebytes(content).decode()}'
                    for name, content in zip(names, contents))
    head = ('From: a@example.org\nTo: b@example.org\nSubject: Viele Anlagen\nDate: Mon, 2 Mar 2026 10:00:00 +0100\n'
            'MIME-Version: 1.0\nContent-Type: multipart/mixed; boundary="grenze"\n\n')
    return f"{head}--grenze\nContent-Type: text/plain\n\nText\n{parts}--grenze--\n".encode(), contents


def forwarding_message(source):
    head = ('From: b@example.org\nTo: c@example.org\nSubject: Weitergeleitet\nDate: Tue, 3 Mar 2026 10:00:00 +0100\n'
            'MIME-Version: 1.0\nContent-Type: multipart/mixed; boundary="aussen"\n\n--aussen\nContent-Type: text/plain\n\n'
            'Text\n--aussen\nContent-Type: message/rfc822\n\n')
    return head.encode() + source + b"\n--aussen--\n"


class Links(html.parser.HTMLParser):
    def __init__(self, page):
        super().__init__()
        self.paths = []
        self.feed(page.read_text("cp1252"))

    def handle_starttag(self, tag, attributes):
        address = dict(attributes).get("href") or ""
        if tag == "a" and not re.match(r"[a-z]+:", address):
            self.paths.append(urllib.parse.unquote(address, "cp1252"))


def digests(contents):
    return collections.Counter(hashlib.sha256(content).digest() for content in contents)


def check_exported_attachments(case, target, source, contents, subject):
    page = target / f"{subject}.htm"
    linked = [(page.parent / path).resolve() for path in Links(page).paths]
    files = [path for path in linked if path.parent.name == "Attachments"]
    case.expect(all(path.is_file() for path in linked), f"{subject}: the page links to files that are not there")
    case.expect(len(set(files)) == len(contents), f"{subject}: {len(set(files))} files are linked, not {len(contents)}")
    case.expect(digests(path.read_bytes() for path in files) == digests(contents), f"{subject}: other bytes than sent")
    originals = [path for path in (target / "Eml").iterdir() if path.read_bytes() == source]
    case.expect(len(originals) == 1, f"{subject}: {len(originals)} originals")
    decoded = [part.get_payload(decode=True) for part in email.message_from_bytes(originals[0].read_bytes()).walk()
               if part.get_content_type() == "application/octet-stream"] if originals else []
    wanted = contents if len(contents) > 1 else decoded
    case.expect(digests(decoded) == digests(wanted), f"{subject}: the original holds other attachments")


def run_attachments(case, figures, size):
    place, names = case.new_store(size), ("Viele Anlagen", "Weitergeleitet")
    source, contents = attached_message(size)
    sources = (source, forwarding_message(source))
    files = [place.directory / f"{name}.eml" for name in names]
    for file, content in zip(files, sources):
        file.write_bytes(content)

    def ctl(name, *arguments):
        return case.measure(figures, size, name, "velmoractl", *arguments)

    def check(archive, name):
        listed = {row["subject"]: len(row["attachments"])
                  for row in rows_of(ctl(f"list {name}", "store", "list", "--json", "--archive", archive))}
        case.expect(listed == {names[0]: size, names[1]: 1}, f"{name}: listed {listed}")
        target = place.directory / name
        target.mkdir()
        ctl(f"export {name}", *export_keys(place, archive, target, saveatt="y", saveeml="y", savesmtp="y"))
        check_exported_attachments(case, target / archive.split("/")[-1], source, contents, names[0])
        check_exported_attachments(case, target / archive.split("/")[-1], sources[1], [source], names[1])

    ctl("deliver", "store", "deliver", "--archive", f"{COMMON}/Anlagen", *files)
    check(f"{COMMON}/Anlagen", "as it came")
    ctl("copy", "copy", "--messages", f"{COMMON}/Anlagen", f"{COMMON}/Web")
    check(f"{COMMON}/Web", "copied")
    ctl("move", "move", "--messages", f"{COMMON}/Web", f"{COMMON}/Gruppen")
    check(f"{COMMON}/Gruppen", "moved")
    ctl("check", "store", "check")
    ctl("delete", "delete", "--yes", f"{COMMON}/Gruppen")


def test_attachments(case):
    figures = Figures(KEPT_PER_ATTACHMENT)
    for size in (case.options.attachments // 10, case.options.attachments):
        run_attachments(case, figures, size)
    case.judge(figures)


# Windows and unattended runs on one store at the same time

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

    def pages(self, archive):
        return sum(name.endswith(".htm") for name in os.listdir(self.place.archive / archive))

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
    worker.case.expect(worker.pages("Ruhe") == RESTING, f"round {worker.round}: {worker.pages('Ruhe')} of {RESTING} pages")
    worker.unattended((BUSY, VANISHED), srcarchive=HERE, dstdirectory=worker.place.archive, deletedst="y")


def move_there_and_back(worker):
    worker.run("velmoractl", "move", "--messages", "--yes", HERE, THERE)
    worker.run("velmoractl", "move", "--messages", "--yes", THERE, HERE)


def bring_and_take_away(worker):
    worker.run("velmoractl", "store", "deliver", "--archive", f"{PLACE}/Neu", worker.place.directory / "neu.mbox")
    worker.run("velmoractl", "copy", REST, PLACE)
    worker.run("velmoractl", "delete", "--delete-archives", "--yes", f"{PLACE}/Ruhe")
    worker.unattended(srcarchive=f"{PLACE}/Neu", dstdirectory=worker.place.archive, copymode="mov", delarcs="n", saveeml="y")
    worker.case.expect(worker.pages("Neu") == COMING, f"round {worker.round}: {worker.pages('Neu')} of {COMING} pages")
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
    case.expect(not list(listed(PLACE, f"{PLACE}/Neu")), "something is left of what comes and goes")
    checked = subprocess.run([place.programs / "velmoractl", "store", "check"], env=place.environment, capture_output=True,
                             text=True)
    case.expect(checked.returncode == 0, f"the store is damaged: {checked.stdout[-1000:]}")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", type=pathlib.Path, required=True, help="where the programs lie")
    parser.add_argument("--messages", type=int, default=2000, help="in one archive")
    parser.add_argument("--archives", type=int, default=100, help="in one tree")
    parser.add_argument("--attachments", type=int, default=200, help="of one message")
    parser.add_argument("--minutes", type=float, default=0.1, help="that windows and runs share a store")
    parser.add_argument("--windows", type=int, default=2, help="how many; 0 where no window is built")
    parser.add_argument("--only", default="", help="the cases whose name holds this")
    parser.add_argument("--linear", action="store_true", help="a time that grows more than linearly is a problem")
    parser.add_argument("--unweighed", action="store_true", help="memory is no problem: the programs' checks need their own")
    parser.add_argument("--directory", type=pathlib.Path, help="where to work, on the disk that is to be measured")
    options = parser.parse_args()

    def make_case(place, name):
        return Case(place, name, options)

    with tempfile.TemporaryDirectory(dir=options.directory) as directory:
        place = workplace.Workplace(pathlib.Path(directory).resolve(), options.bin.resolve(), [])
        problems = workplace.run_cases(place, make_case, dict(globals()), options.only)
    sys.exit(1 if problems else 0)


main()
