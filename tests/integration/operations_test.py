#!/usr/bin/env python3
"""Archives, messages and rules copied, moved and deleted within a store: operations_test.py --bin DIR [--only CASE] MESSAGES

Every message is known by the bytes of its source, so that what is lost or doubled shows. After each command the store
must be sound; a command that is interrupted or killed loses nothing.
"""

import argparse
import collections
import hashlib
import json
import os
import pathlib
import pty
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import workplace  # noqa: E402

DONE, WITH_ERRORS, WRONG_USAGE = 0, 1, 2
COMMON, USER = "/Archive/Gemeinsam", "/Archive/Benutzer/Bert Bauer"
MANY = 1500  # messages of a run that is long enough to be stopped in its middle

# The columns of the rules besides their names, with what a rule that forwards has in them.
RULE = {"forward_to": "chef@example.org", "replaced_sender": "", "include_before": "", "include_after": "", "valid_from": 0,
        "valid_until": 0, "last_used": 0, "forward_as": 0, "used_count": 0, "symbol": 0, "color_mark": 0}
ENABLED, ROUTE_AS_COPY, FORWARD = 1 << 0, 1 << 2, 1 << 4


class Case:
    def __init__(self, place, name):
        self.place = workplace.Workplace(place.directory / name, place.programs, place.messages)
        self.problems, self.name = [], name
        self.store = pathlib.Path(self.place.environment["VELMORA_STORE"])
        self.program = self.place.programs / "velmoractl"

    def deliver(self):
        self.place.deliver()
        self.place.run("velmoractl", "store", "add-user", "Bert Bauer", "--login", "bert")
        self.demo = f"{COMMON}/{self.place.messages[0].name}"

    def deliver_many(self):
        """MANY messages in `Gemeinsam/Viele` and its sub-archives."""
        self.place.run("velmoractl", "store", "init", self.store, "--server", "PRUEFUNG")
        self.place.run("velmoractl", "store", "deliver", "--archive", "Gemeinsam/Ziel", self.mail("Ziel", 0))
        for part in ("", "/Eins", "/Eins/Tief", "/Zwei"):
            box = self.place.directory / "viele.mbox"
            box.write_text("".join(f"From x@example.org Mon Nov  2 10:00:00 2026\nSubject: {part} {number}\n\nText {number}\n\n"
                                   for number in range(MANY // 4)))
            self.place.run("velmoractl", "store", "deliver", "--archive", f"Gemeinsam/Viele{part}", box)

    def mail(self, subject, number):
        path = self.place.directory / f"{number}.eml"
        path.write_text(f"Subject: {subject}\n\nText\n")
        return path

    def expect(self, holds, what):
        if not holds:
            self.problems.append(f"{self.name}: {what}")

    def equal(self, found, wanted, what):
        self.expect(found == wanted, f"{what}\n  found  {found!r}\n  wanted {wanted!r}")

    def ctl(self, status, *arguments):
        done = subprocess.run([self.program, *map(str, arguments)], env=self.place.environment, capture_output=True, text=True,
                              stdin=subprocess.DEVNULL)
        self.expect(done.returncode == status,
                    f"{arguments}: status {done.returncode}, not {status}: {done.stdout[-300:]}{done.stderr[-500:]}")
        self.sound(arguments)
        return done.stdout + done.stderr

    def sound(self, after, tolerated=None):
        """`tolerated`: what a killed process may leave behind, an archive that was emptied and taken out of its list."""
        done = subprocess.run([self.program, "store", "check"], env=self.place.environment, capture_output=True, text=True)
        lines = done.stdout.splitlines()[:-1] + done.stderr.splitlines()
        damage = [line for line in lines if not line.startswith("Hinweis:") and not (tolerated and line.endswith(tolerated))]
        self.expect(done.returncode == 0 or (tolerated and not damage), f"the store is damaged after {after}: {damage[:20]}")

    # --- Looking. ---

    def archives(self):
        """Path: (directory, number of messages)."""
        listed = json.loads(self.place.run("velmoractl", "store", "list", "--json"))
        return {row["path"]: (self.place.store_directory(row["id"]), row["messages"]) for row in listed if not row["link"]}

    def tree(self, top):
        """What lies at and below an archive: relative path: the digests of its messages, sorted."""
        return {path[len(top):]: self.digests(directory) for path, (directory, _) in self.archives().items()
                if path == top or path.startswith(top + "/")}

    @staticmethod
    def digests(directory):
        return sorted(hashlib.sha256(source.read_bytes()).hexdigest() for source in directory.glob("*.001"))

    def all_messages(self):
        """How often each message stands in the store, counted in the lists and not in the directories."""
        count = collections.Counter()
        for path, (_, messages) in self.archives().items():
            if messages == 0:
                continue
            for entry in json.loads(self.place.run("velmoractl", "store", "list", "--json", "--archive", path)):
                count[entry["subject"]] += 1
        return count

    def put_rules(self, archive, rules):
        """(name, destinations or None of one that forwards), as the store keeps them."""
        directory = self.archives()[archive][0]
        database = sqlite3.connect(directory / "archive.urt")
        database.executescript(
            "CREATE TABLE rules (id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL, forward_to TEXT NOT NULL,"
            " replaced_sender TEXT NOT NULL, include_before TEXT NOT NULL, include_after TEXT NOT NULL,"
            " valid_from INTEGER NOT NULL, valid_until INTEGER NOT NULL, last_used INTEGER NOT NULL,"
            " forward_as INTEGER NOT NULL, used_count INTEGER NOT NULL, symbol INTEGER NOT NULL,"
            " color_mark INTEGER NOT NULL, switches INTEGER NOT NULL);"
            "CREATE TABLE destinations (rule INTEGER NOT NULL, position INTEGER NOT NULL, path TEXT NOT NULL,"
            " PRIMARY KEY (rule, position)) WITHOUT ROWID;"
            "CREATE TABLE conditions (rule INTEGER NOT NULL, position INTEGER NOT NULL, object INTEGER NOT NULL,"
            " comparision INTEGER NOT NULL, value TEXT NOT NULL, operator INTEGER NOT NULL,"
            " PRIMARY KEY (rule, position)) WITHOUT ROWID;")
        for number, (name, destinations) in enumerate(rules, 1):
            switches = ENABLED | ROUTE_AS_COPY | (FORWARD if destinations is None else 0)
            row = RULE | {"id": number, "name": name, "switches": switches}
            database.execute(f"INSERT INTO rules ({', '.join(row)}) VALUES ({', '.join('?' * len(row))})", list(row.values()))
            for position, path in enumerate(destinations or []):
                database.execute("INSERT INTO destinations VALUES (?, ?, ?)", (number, position, path))
        database.commit()
        database.close()

    def rules(self, archive):
        path = self.archives()[archive][0] / "archive.urt"
        if not path.exists():
            return {}
        database = sqlite3.connect(path)
        names = database.execute("SELECT id, name FROM rules ORDER BY id").fetchall()
        rules = {name: [row[0] for row in database.execute("SELECT path FROM destinations WHERE rule = ? ORDER BY position",
                                                           (rule,))] for rule, name in names}
        database.close()
        return rules

    # --- Stopping a run. ---

    def stop(self, signal_number, share, directory, *arguments):
        """Starts a command and sends it a signal once less than that share of the sources is left; its exit status."""
        def left():
            # A directory may vanish while it is walked, which os.walk takes for an empty one.
            return sum(name.endswith(".001") for _, _, names in os.walk(directory) for name in names)
        enough = left() * share
        running = subprocess.Popen([self.program, *arguments], env=self.place.environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        while running.poll() is None and left() >= enough:
            time.sleep(0.001)
        running.send_signal(signal_number)
        return running.wait()


# --- Copying and moving. ---

def test_a_tree_goes_across_users(case):
    case.deliver()
    source, target = case.demo, f"{USER}/Eingang"
    before = case.tree(source)
    case.expect(sum(map(len, before.values())) > 30, f"too little to copy: {before}")
    said = case.ctl(DONE, "copy", "--properties", source, target)
    name = source.rsplit("/", 1)[1]
    case.equal(case.tree(f"{target}/{name}"), before, "the copy differs")
    case.equal(case.tree(source), before, "the source has changed")
    case.expect(f"{len(before)} Archiv(e)\n{sum(map(len, before.values()))} Message(s)\nmit 0 Fehler(n)\n" in said, said)
    case.equal(case.place.log_entries(), [], "the log")


def test_a_move_with_its_structure_leaves_nothing(case):
    case.deliver()
    before = case.tree(case.demo)
    case.ctl(DONE, "move", "--delete-archives", "--yes", case.demo, f"{USER}/Eingang")
    case.equal(case.tree(case.demo), {}, "the source")
    case.equal(case.tree(f"{USER}/Eingang/{case.demo.rsplit('/', 1)[1]}"), before, "the target")


def test_a_move_without_its_structure_leaves_empty_archives(case):
    case.deliver()
    before = case.tree(case.demo)
    case.ctl(DONE, "move", case.demo, f"{USER}/Eingang")
    case.equal(case.tree(case.demo), {path: [] for path in before}, "the source")


def test_only_the_structure(case):
    case.deliver()
    before = case.tree(case.demo)
    case.ctl(DONE, "copy", "--only-archives", case.demo, USER)
    case.equal(case.tree(f"{USER}/{case.demo.rsplit('/', 1)[1]}"), {path: [] for path in before}, "the copy")


def test_merging_minds_capitals(case):
    case.deliver()
    case.place.run("velmoractl", "store", "deliver", "--archive", "Gemeinsam/Ziel/Post", case.mail("Da", 1))
    case.place.run("velmoractl", "store", "deliver", "--archive", "Gemeinsam/Post", case.mail("Neu", 2))
    case.place.run("velmoractl", "store", "deliver", "--archive", "Gemeinsam/Klein/post", case.mail("Klein", 3))
    case.ctl(DONE, "copy", "--merge", f"{COMMON}/Post", f"{COMMON}/Ziel")
    case.equal([len(found) for found in case.tree(f"{COMMON}/Ziel").values()], [0, 2], "Post in Post")
    case.ctl(DONE, "copy", "--merge", f"{COMMON}/Klein/post", f"{COMMON}/Ziel")
    listed = json.loads(case.place.run("velmoractl", "store", "list", "--json"))
    case.equal([row["path"] for row in listed if row["path"].startswith(f"{COMMON}/Ziel/")],
               [f"{COMMON}/Ziel/Post", f"{COMMON}/Ziel/post"], "post beside Post")


def test_nothing_goes_into_itself(case):
    case.deliver()
    before = case.tree(COMMON)
    for options in ([], ["--merge"], ["--only-archives"], ["--properties", "--rules", "--keep-directories"]):
        for target in (case.demo, f"{case.demo}/Technik"):
            said = case.ctl(WITH_ERRORS, "copy", *options, case.demo, target)
            case.expect("Rekursive Kopie" in said and "kann nicht auf oder in sich selbst nach" in said, said)
    case.equal(case.tree(COMMON), before, "the store")


def test_messages_alone_and_single_ones(case):
    case.deliver()
    source = f"{case.demo}/Einkauf"
    before = case.tree(source)
    case.place.run("velmoractl", "store", "deliver", "--archive", "Gemeinsam/Ziel", case.mail("Da", 1))
    case.ctl(DONE, "copy", "--messages", source, f"{COMMON}/Ziel")
    case.expect(set(before[""]) < set(case.tree(f"{COMMON}/Ziel")[""]), "the messages")
    keys = [entry["key"] for entry in json.loads(case.place.run("velmoractl", "store", "list", "--json", "--archive", source))]
    case.ctl(DONE, "move", "--key", keys[0], "--key", keys[2], source, f"{COMMON}/Ziel")
    case.equal(len(case.tree(source)[""]), len(keys) - 2, "two were moved")
    said = case.ctl(WITH_ERRORS, "copy", "--key", "4000000", source, f"{COMMON}/Ziel")
    case.expect("mit 1 Fehler(n)" in said, said)


def test_wrong_lines_change_nothing(case):
    case.deliver()
    before = case.tree(COMMON)
    for status, *arguments in ((WRONG_USAGE, "copy", case.demo), (WRONG_USAGE, "copy"), (WRONG_USAGE, "delete"),
                               (WRONG_USAGE, "move", "--delete-archives", case.demo, USER),
                               (WRONG_USAGE, "delete", case.demo), (WRONG_USAGE, "rules", "move", case.demo, USER),
                               (WRONG_USAGE, "rules", "delete", case.demo),
                               (WRONG_USAGE, "copy", "--key", "x", case.demo, USER),
                               (WRONG_USAGE, "copy", "--key", "1", "--messages", case.demo, USER),
                               (WRONG_USAGE, "copy", "--key", "1", case.demo, USER, COMMON),
                               (WRONG_USAGE, "delete", "--physical", "--yes", case.demo),
                               (WRONG_USAGE, "rules", "copy", "--create-archives", case.demo, USER),
                               (WITH_ERRORS, "copy", case.demo, f"{COMMON}/Gibt es nicht"),
                               (WITH_ERRORS, "copy", case.demo, f"{COMMON}/Gibt es nicht", USER),
                               (WITH_ERRORS, "delete", "--yes", case.demo, f"{COMMON}/Gibt es nicht"),
                               (WITH_ERRORS, "delete", "--yes", "--delete-archives", "/Archive"),
                               (WITH_ERRORS, "move", "--yes", "--delete-archives", "/Archive", USER),
                               (WITH_ERRORS, "rules", "copy", case.demo, case.demo),
                               (WITH_ERRORS, "rules", "copy", "--rule", "7", case.demo, USER)):
        case.ctl(status, *arguments)
    case.equal(case.tree(COMMON), before, "the store")


# --- Deleting. ---

def test_deletions(case):
    case.deliver()
    before = case.tree(case.demo)
    case.ctl(DONE, "delete", "--yes", "--messages", f"{case.demo}/Einkauf")
    case.equal(case.tree(case.demo), before | {"/Einkauf": []}, "the messages of one archive")
    case.ctl(DONE, "delete", "--yes", f"{case.demo}/Technik")
    case.equal(case.tree(f"{case.demo}/Technik"), {"": [], "/Störungen": []}, "the messages, the archives stay")
    case.ctl(DONE, "delete", "--yes", "--delete-archives", f"{case.demo}/Technik", f"{case.demo}/Einkauf")
    case.expect(not any(path in ("/Technik", "/Einkauf") for path in case.tree(case.demo)), "archives that stayed")
    case.ctl(DONE, "delete", "--yes", "--delete-archives", "--physical", case.demo)
    case.equal(case.tree(case.demo), {}, "everything")


def test_an_archive_of_the_store_itself_stays(case):
    case.deliver()
    case.ctl(WITH_ERRORS, "delete", "--yes", "--delete-archives", "--physical", f"{USER}/Eingang")
    case.expect(f"{USER}/Eingang" in case.archives(), "the inbox is gone")


def test_a_terminal_is_asked_and_no_is_the_default(case):
    case.deliver()
    before = case.tree(case.demo)
    for typed, tree in (("n\n", before), ("\n", before), ("j\n", {})):
        said = ask(case, typed, "delete", "--delete-archives", case.demo)
        case.expect("wirklich löschen? [j/N]" in said, said)
        case.equal(case.tree(case.demo), tree, f"after {typed!r}")


def ask(case, typed, *arguments):
    leader, follower = pty.openpty()
    running = subprocess.Popen([case.program, *arguments], env=case.place.environment, stdin=follower, stdout=follower,
                               stderr=follower)
    os.close(follower)
    os.write(leader, typed.encode())
    said = b""
    while True:
        try:
            part = os.read(leader, 4096)
        except OSError:  # the other side is closed
            break
        if not part:
            break
        said += part
    running.wait()
    os.close(leader)
    return said.decode(errors="replace")


# --- Rules. ---

def test_rules_go_to_another_archive(case):
    case.deliver()
    source, target = case.demo, f"{USER}/Eingang"
    case.put_rules(source, [("Weiter", None), ("Innen", [f"{source}/Technik"]), ("Fest", [f"{COMMON}/Web"]),
                            ("Leer", []), ("Lückig", [f"{COMMON}/Weg", f"{COMMON}/Web"])])
    said = case.ctl(DONE, "rules", "list", source)
    case.expect("   1  Weiter\n" in said and "   5  Lückig\n" in said, said)
    said = case.ctl(WITH_ERRORS, "rules", "copy", source, target)
    case.equal(case.rules(target), {"Fest": [f"{COMMON}/Web"], "Innen": [f"{source}/Technik"], "Weiter": []}, "as they stand")
    case.equal(list(case.rules(target)), ["Fest", "Innen", "Weiter"], "in reversed order")
    case.expect("5 Regel(n)\nmit 2 Fehler(n)" in said, said)
    case.equal(case.place.log_entries(), [" Fehler: 0 - Lückig -> Regel hat kein Zielarchiv und wird nicht kopiert",
                                          " Fehler: 0 - Leer -> Regel hat kein Zielarchiv und wird nicht kopiert"], "the log")
    case.ctl(DONE, "rules", "delete", "--yes", target)
    case.equal(case.rules(target), {}, "deleted")
    case.ctl(DONE, "rules", "copy", "--drop-lost", "--adapt", "--create-archives", "--rule", "Innen", "--rule", "5", source, target)
    case.equal(case.rules(target), {"Lückig": [f"{COMMON}/Web"], "Innen": [f"{target}/Technik"]}, "adapted")
    case.expect(f"{target}/Technik" in case.archives(), "the archive was not made")


def test_moved_rules_leave_their_source(case):
    case.deliver()
    case.put_rules(case.demo, [("A", None), ("Leer", []), ("B", None)])
    case.ctl(WITH_ERRORS, "rules", "move", "--yes", case.demo, USER)
    case.equal(list(case.rules(USER)), ["B", "A"], "the target")
    case.equal(list(case.rules(case.demo)), ["Leer"], "the source")


def test_rules_come_with_their_archive(case):
    case.deliver()
    case.put_rules(f"{case.demo}/Einkauf", [("Bleibt wie es ist", [f"{case.demo}/Einkauf"])])
    case.ctl(DONE, "copy", "--rules", f"{case.demo}/Einkauf", USER)
    case.equal(case.rules(f"{USER}/Einkauf"), {"Bleibt wie es ist": [f"{case.demo}/Einkauf"]}, "the rules")
    case.ctl(DONE, "copy", f"{case.demo}/Einkauf", f"{USER}/Eingang")
    case.equal(case.rules(f"{USER}/Eingang/Einkauf"), {}, "without the option")


# --- Runs that are stopped. ---

MOVE = ("move", "--merge", "--delete-archives", "--yes", f"{COMMON}/Viele", f"{COMMON}/Ziel")


def test_an_interrupt_ends_a_move_in_good_order(case):
    case.deliver_many()
    before, many = case.all_messages(), case.archives()[f"{COMMON}/Viele"][0]
    status = case.stop(signal.SIGINT, 1, many, *MOVE)
    case.sound("an interrupt")
    case.equal(status, WITH_ERRORS, "the status of a run that was interrupted")
    case.equal(case.place.log_entries(), [" Fehler: -1 - CancelReq -> Abbruch durch Benutzer"], "the log")
    case.equal(case.all_messages(), before, "messages were lost or doubled")
    case.expect(any(case.tree(f"{COMMON}/Viele").values()), "nothing was left to be interrupted")
    case.ctl(DONE, *MOVE)
    case.equal(case.all_messages(), before, "the second run")
    case.equal(case.tree(f"{COMMON}/Viele"), {}, "the source")


def test_a_kill_loses_nothing(case):
    case.deliver_many()
    before, many = case.all_messages(), case.archives()[f"{COMMON}/Viele"][0]
    sources = {digest for digests in case.tree(COMMON).values() for digest in digests}
    for share in (1, 0.8, 0.6, 0.4):
        case.stop(signal.SIGKILL, share, many, *MOVE)
        case.sound(f"a kill at {share}", "Kein Archiveintrag nennt dieses Verzeichnis")
        now = case.all_messages()
        case.equal(before - now, collections.Counter(), f"lost by a kill at {share}")
        case.expect(len(now - before) < MANY // 2, f"messages that stand twice: {len(now - before)}")
        case.equal({digest for digests in case.tree(COMMON).values() for digest in digests}, sources, "sources")
        before = now
    case.expect(f"{COMMON}/Ziel/Viele/Zwei" in case.archives(), "none of the runs came far")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", type=pathlib.Path, required=True, help="where the programs lie")
    parser.add_argument("--only", default="", help="the cases whose name holds this")
    parser.add_argument("messages", type=pathlib.Path)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as directory:
        place = workplace.Workplace(pathlib.Path(directory).resolve(), options.bin.resolve(), [options.messages.resolve()])
        problems = workplace.run_cases(place, Case, dict(globals()), options.only)
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
