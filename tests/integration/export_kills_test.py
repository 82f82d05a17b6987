#!/usr/bin/env python3
"""Commands that write outside of a store, killed at random moments: export_kills_test.py --bin DIR [--times N] [--seed N]
[--only CASE]

Each case kills its program N times: exports of mail archives, address files, settings, records of archive lists. After each
kill every message stands at its source or whole in the mail archive, and every file that is replaced is the old or the new one.
"""

import collections
import json
import pathlib
import shutil
import sys
import tomllib

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import kills  # noqa: E402
import mail_archive  # noqa: E402
from kills import HERE  # noqa: E402

PARTS = ("", "/Eins", "/Eins/Tief")
MESSAGES = 300
ADDRESSES = 400
SAVED = ("LastUserRights", "LastUsedServer", "DefaultAddressbookName", "ArchiveFormComment", "MaxItemCount")
NOTHING_RAN = 2
RECORD, AREA, NAME_TAG = 430, slice(113, 386), 4


# --- Mail archives. ---

def message(number):
    """One in three is a plain mail, has an attachment, is an HTML mail with a picture; no two need one name of a file."""
    head = f"Subject: Nachricht {number}\nFrom: a@example.org\nTo: b@example.org\nDate: Mon, 02 Nov 2026 10:00:00 +0000\n"
    text = f"Text der Nachricht {number}\n" * (number % 30 + 1)
    if number % 3 == 0:
        return f"{head}\n{text}".encode()
    kind, name = ("plain", f"Anlage {number}.bin") if number % 3 == 1 else ("html", f"Bild {number}.png")
    body = text if kind == "plain" else f"<p>{text}</p><img src='cid:bild'>\n"
    content = f"Anlage der Nachricht {number} " * 300
    return (f'{head}Content-Type: multipart/{"mixed" if kind == "plain" else "related"}; boundary="xxx"\n\n'
            f"--xxx\nContent-Type: text/{kind}; charset=us-ascii\n\n{body}\n"
            f'--xxx\nContent-Type: application/octet-stream; name="{name}"\nContent-ID: <bild>\n'
            f"Content-Disposition: attachment; filename=\"{name}\"\n\n{content}\n--xxx--\n").encode()


def deliver(case):
    """MESSAGES in a small tree; their bytes."""
    for position, part in enumerate(PARTS):
        box = case.place.directory / "part.mbox"
        box.write_bytes(b"".join(b"From x@example.org Mon Nov  2 10:00:00 2026\n" + message(number) + b"\n"
                                 for number in range(position, MESSAGES, len(PARTS))))
        case.place.run("velmoractl", "store", "deliver", "--archive", f"{HERE}{part}".removeprefix("/Archive/"), box)
    return collections.Counter(map(message, range(MESSAGES)))


def export(case, mode, delarcs="n"):
    """The command of an export; a copy overwrites files of one name, a move never does."""
    control = case.place.directory / f"{mode}.txt"
    control.write_text(f"command=archivecopymove\nsrcarchive={HERE}\ndstdirectory={case.place.archive}\ncopymode={mode}\n"
                       f"dstnum=n\ndelarcs={delarcs}\nsaveatt=y\nsaveeml=y\nsavesmtp=y\nsavecmt=y\nmakeidx=y\n")
    return ["velmoractl", "run", control]


def at_source(case):
    there = case.archives()
    return case.sources(*(f"{HERE}{part}" for part in PARTS if f"{HERE}{part}" in there))


def exported(case, wanted):
    """How often each message stands whole in the mail archive: page, descriptor, original and attachments."""
    found = collections.Counter()
    for path in case.place.archive.rglob("*.add"):
        descriptor = mail_archive.Descriptor(path)
        original = descriptor.file(descriptor["EML"]) if descriptor["EML"] else None
        source = original.read_bytes() if original else b""
        if source in wanted and not list(mail_archive.check_entry(descriptor, collections.Counter([source]))):
            found[source] += 1
    return found


def unnamed(case):
    """The files of the mail archive that nothing leads to."""
    files = {path for path in case.place.archive.rglob("*") if path.is_file()}
    for path in case.place.archive.rglob("*.add"):
        descriptor = mail_archive.Descriptor(path)
        parts = [descriptor[key] for key in ("MailArcEntry", "HTML", "EML", "SMTP", "COMMENT")] + descriptor.attachments()
        files -= {path, *(descriptor.file(part) for part in parts if part)}
    allowed = {*mail_archive.INDEXES, "autorun.inf"}
    return sorted(path.name for path in files
                  if path.name not in allowed and path.suffix not in (".vla", ".gif", ".jpg", ".png", ".css", ".ico", ".svg", ".exe"))


def complete(case, wanted, after):
    """A finished mail archive: each message once, its indexes, nothing else."""
    problems = list(mail_archive.check(case.place.archive, list(wanted.elements())))
    case.expect(not problems, f"{after}: {problems[:5]}")
    case.expect(not unnamed(case), f"{after}: files that nothing leads to: {unnamed(case)[:10]}")
    markers = [path.read_bytes() for path in case.place.archive.rglob("*.vla")]
    case.expect(all(marker.startswith(b";Velmora") for marker in markers), f"{after}: markers without content")
    case.expect(case.place.log_entries() == [], f"{after}: {case.place.log_entries()[:3]}")


def empty(directory):
    shutil.rmtree(directory)
    directory.mkdir()


def test_a_copy_to_disc(case):
    """Over nothing, over what a killed run has left and over a whole mail archive: the next run completes it."""
    wanted = deliver(case)
    copy = export(case, "cpy")
    longest = case.duration(*copy)
    runs = 0

    def command():
        nonlocal runs
        runs += 1
        if runs % 3 != 0:
            empty(case.place.archive)
        return copy

    for after in case.kills(longest, command):
        case.sound(after)
        case.expect(at_source(case) == wanted, f"{after}: the source")
        case.place.run(*copy)
        complete(case, wanted, f"{after} and the next run")


def finish_move(case, move, wanted, after):
    """The run that does what the last kill prevented; where the archive has gone, it tells so and makes the indexes."""
    if HERE in case.archives():
        case.place.run(*move)
    else:
        case.place.run(*move, status=NOTHING_RAN)
        case.place.log.unlink()
    case.expect(not at_source(case), f"{after}: messages are left")
    complete(case, wanted, after)


def move_to_disc(case, move):
    """Each message stands at its source or whole in the mail archive, until the last run has moved them all."""
    wanted = deliver(case)
    kept = case.store.with_name("store-kept")
    shutil.copytree(case.store, kept)
    longest = case.duration(*move)
    complete(case, wanted, "the first run")

    def command():
        if not at_source(case):
            finish_move(case, move, wanted, "all runs")
            empty(case.place.archive)
            shutil.rmtree(case.store)
            shutil.copytree(kept, case.store)
        return move

    for after in case.kills(longest, command):
        case.sound(after)
        here, there = at_source(case), exported(case, wanted)
        case.expect(set(here) | set(there) == set(wanted), f"{after}: {len(set(wanted) - set(here) - set(there))} are lost")
        case.expect(all(times == 1 for times in (here + there - (here & there)).values()), f"{after}: twice")
    finish_move(case, move, wanted, "the last run")


def test_a_move_to_disc(case):
    move_to_disc(case, export(case, "mov"))


def test_a_move_to_disc_that_deletes_its_archives(case):
    move_to_disc(case, export(case, "mov", delarcs="y"))


# --- Address files. ---

def put_addresses(case):
    cards = case.place.directory / "cards.vcf"
    cards.write_text("".join(f"BEGIN:VCARD\nVERSION:3.0\nFN:Person {number}\nN:Person {number};;;;\nNOTE:{'Text ' * 200}\nEND:VCARD\n"
                             for number in range(ADDRESSES)))
    case.place.run("velmoractl", "store", "put-address", "--archive", HERE.removeprefix("/Archive/"), cards)


def test_address_files_are_replaced(case):
    """The old file or the new one; nothing else stays in the directory."""
    put_addresses(case)
    directory = case.place.directory / "Adressen"
    directory.mkdir()
    for number, suffix in enumerate(("csv", "nab", "xls")):
        target = directory / f"Adressbuch.{suffix}"
        command = ["velmoractl", "addresses", "export", "--overwrite", "--format", suffix, "--target", target, HERE]
        longest = case.duration(*command)
        new = target.read_bytes()
        old = new[:len(new) // 2]
        times, case.times = case.times, (case.times + 2 - number) // 3

        def begin():
            target.write_bytes(old)
            return command

        for after in case.kills(longest, begin):
            found = target.read_bytes()
            case.expect(found in (old, new), f"{suffix}, {after}: a file of {len(found)} bytes")
            case.place.run(*command)
            case.expect(target.read_bytes() == new, f"{suffix}, {after} and the next run")
            left = [path.name for path in directory.iterdir() if path != target]
            case.expect(not left, f"{suffix}, {after} and the next run: {left}")
        case.times = times
        target.unlink()


# --- Settings and records, saved again and again by a program that tells the number of each save. ---

def last_save(case, moment, what, *arguments):
    """The number of the last save that was told before the kill."""
    told = case.place.directory / "told.txt"
    with told.open("wb") as stream:
        killed = case.kill(moment, "saving_tool", what, *arguments, stdout=stream)
    case.expect(killed, f"{what}: the program ended by itself")
    return len(told.read_bytes().split(b"\n")) - 1


def save_once_at_least(case, what, *arguments):
    """On a busy machine a process may be killed before it has saved anything."""
    if not any(last_save(case, moment, what, *arguments) for moment in (0.1, 0.4, 1.6, 6.4, 25.6)):
        case.expect(False, f"{what}: nothing was saved within 25 s")


def test_settings_are_saved(case):
    directory = case.place.directory / "Einstellungen"
    for number in range(case.times):
        if number % 2 == 0:
            shutil.rmtree(directory, ignore_errors=True)
        before = values(directory / "settings.toml")
        told = last_save(case, case.random.uniform(0.005, 0.2), "settings", directory)
        found = values(directory / "settings.toml")
        case.expect(len(set(found)) <= 1 and len(found) in (0, len(SAVED)), f"kill {number}: half of a save: {found}")
        first = before[0] if before else 0
        saved = found[0] if found else 0
        case.expect(saved - first in (told, told + 1), f"kill {number}: {first} + {told} saves, but {saved} stands")
        left = names_in(directory) - {"settings.toml", "settings.lock"}
        case.expect(len(left) <= 1, f"kill {number}: {left}")
        save_once_at_least(case, "settings", directory)  # killed as well, it may leave a file of its own
        still = left & names_in(directory)
        case.expect(not still, f"kill {number} and the next saves: {still}")
    print(f"    {2 * case.times} killed")


def names_in(directory):
    """None where the program was killed before it made the directory."""
    return {path.name for path in directory.iterdir()} if directory.exists() else set()


def values(path):
    """The values that each save changes; none in a file that is not there."""
    if not path.exists():
        return []
    sections = tomllib.loads(path.read_text()).values()
    return [int(section[name]) for section in sections for name in SAVED if name in section]


def test_records_are_rewritten(case):
    names = [f"{HERE}/{number}" for number in range(5)]
    for name in names:
        case.make_archive(name)
    listed = json.loads(case.place.run("velmoractl", "store", "list", "--json"))
    physical = next(row["id"] for row in listed if row["path"] == HERE)
    directory = case.archives()[HERE]
    for number in range(case.times):
        case.place.run("velmoractl", "store", "check")
        told = last_save(case, case.random.uniform(0.005, 0.2), "records", physical, r"\\PRUEFUNG\DAVID", case.store)
        # Each run begins with the number 1 and gives it to one name after the other.
        content = (directory / "archive.dir").read_bytes()
        case.expect(len(content) == len(names) * RECORD, f"kill {number}: a list of {len(content)} bytes")
        found = [name_in(content[at:at + RECORD]) for at in range(0, len(content), RECORD)]
        saves = [(told + last) // len(names) + (position < (told + last) % len(names)) for last in (0, 1) for position in range(len(names))]
        wanted = [saves[:len(names)], saves[len(names):]]
        case.expect([numbers(name) for name in found] in wanted or told < len(names), f"kill {number}: {told} saves, but {found}")
        case.sound(f"kill {number}")
    print(f"    {case.times} killed")


def name_in(record):
    area = record[AREA]
    begin = area.index(bytes([NAME_TAG])) + 1
    return area[begin:area.index(b"\0", begin)].decode("cp1252")


def numbers(name):
    return int(name.split()[-1])


if __name__ == "__main__":
    kills.run(__doc__, dict(globals()))
