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
import math
import os
import pathlib
import random
import re
import shutil
import sys
import tempfile
import urllib.parse

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import workplace  # noqa: E402
from load_mail import each_once, mailboxes, rows_of, senders_of  # noqa: E402
from measured import Figure, Figures, run_to_end  # noqa: E402
from shared_store import COMMON, test_windows_and_runs  # noqa: E402, F401 (a case like those below)

DEPTH = 12

# Bytes of memory that a command may keep for each message, archive or attachment. 200 are a name in the index of a
# directory; a page and its descriptor are two of them, and two more while a directory is listed.
KEPT_PER_MESSAGE = {
    "list": 30, "list of the copy": 30, "list of the moved": 30, "delete": 30,  # the key and its place in the order
    "list of archives": 250, "check": 250, "check after it": 250,
    "export": 700,
    "content index": 1100,  # besides the names, a row of the index with the texts that it is sorted by
    "copy": 300, "move": 300,
}
# An archive's record and those below it, and the paths by which they are found; some commands know two trees.
KEPT_PER_ARCHIVE = {
    **dict.fromkeys(("create", "list", "tree check", "check", "export with index", "move", "delete", "list after the deletion",
                     "list of the other", "check after it"), 3500),
    **dict.fromkeys(("copy", "list of both", "list after the move"), 6500),
}
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
            print(f"    problem: {what}", flush=True)  # a long run is not awaited to its end for it
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


# One archive of very many messages


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


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", type=pathlib.Path, required=True, help="where the programs lie")
    parser.add_argument("--messages", type=int, default=1500, help="in one archive")
    parser.add_argument("--archives", type=int, default=50, help="in one tree")
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
