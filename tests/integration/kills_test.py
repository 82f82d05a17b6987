#!/usr/bin/env python3
"""Commands on a store that are killed at random moments: kills_test.py --bin DIR [--times N] [--seed N] [--only CASE]

Each case kills its command N times. After each kill the store must be sound and hold whole messages only; a moved one
stands exactly once, what is copied is untouched. In the end the command, run again, completes.
"""

import pathlib
import shutil
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import kills  # noqa: E402
from kills import HERE, MANY, THERE  # noqa: E402

TREE = ("", "/Eins", "/Eins/Tief", "/Zwei", "/Drei")


def deliver_tree(case):
    """MANY messages in the archives of a tree, dealt one by one."""
    for position, part in enumerate(TREE):
        case.deliver(f"{HERE}/Baum{part}", range(position, MANY, len(TREE)))


def in_tree(top):
    return [f"{top}/Baum{part}" for part in TREE]


# --- Delivered. ---

def test_a_mailbox_is_delivered(case):
    """What stands is whole and is the mailbox's beginning, so that the rest of it can be delivered."""
    case.make_archive(HERE)
    deliver = ["velmoractl", "store", "deliver", "--archive", HERE.removeprefix("/Archive/")]
    longest = case.duration(*deliver, case.mailbox(range(MANY)))
    done = MANY

    def command():
        nonlocal done
        if done >= MANY:
            case.place.run("velmoractl", "delete", "--messages", "--yes", HERE)
            done = 0
        return [*deliver, case.mailbox(range(done, done + MANY))]

    for after in case.kills(longest, command):
        case.sound(after)
        done = case.subjects(HERE).total()
        case.whole(range(done), [HERE], after)
    case.deliver(HERE, range(done, 2 * MANY))
    case.whole(range(2 * MANY), [HERE], "the rest")
    # Nothing remembers what was delivered: a mailbox delivered twice stands twice.
    case.deliver(HERE, range(2 * MANY))
    case.whole([*range(2 * MANY)] * 2, [HERE], "the mailbox once more")
    case.sound("the mailbox once more")


# --- Moved. ---

def test_messages_are_moved(case):
    case.deliver(HERE, range(MANY))
    case.make_archive(THERE)
    source, target = HERE, THERE
    longest = case.duration("velmoractl", "move", "--messages", "--yes", source, target)

    def command():
        nonlocal source, target
        if not case.subjects(source):
            source, target = target, source
        return ["velmoractl", "move", "--messages", "--yes", source, target]

    for after in case.kills(longest, command):
        case.sound(after)
        case.each_once(MANY, (HERE, THERE), after)
    case.place.run("velmoractl", "move", "--messages", "--yes", source, target)
    case.whole(range(MANY), [target], "the last run")


def test_a_tree_is_moved(case):
    deliver_tree(case)
    case.make_archive(THERE)
    source, target = HERE, THERE
    move = ["velmoractl", "move", "--merge", "--delete-archives", "--yes"]
    longest = case.duration(*move, f"{source}/Baum", target)

    def command():
        nonlocal source, target
        if f"{source}/Baum" not in case.archives():
            source, target = target, source
        return [*move, f"{source}/Baum", target]

    for after in case.kills(longest, command):
        case.sound(after)
        case.each_once(MANY, in_tree(HERE) + in_tree(THERE), after)
    if f"{source}/Baum" in case.archives():
        case.place.run(*move, f"{source}/Baum", target)
    case.whole(range(MANY), in_tree(target), "the last run")


# --- Copied. ---

def copied(case, copy, sources, targets):
    """After each kill the source is as it was and the target holds whole messages; emptied, it takes them all."""
    def empty():
        there = case.archives()
        case.place.run("velmoractl", "delete", "--messages", "--yes", *(target for target in targets if target in there))

    longest = case.duration(*copy)

    def command():
        empty()
        return copy

    for after in case.kills(longest, command):
        case.sound(after)
        case.whole(range(MANY), sources, after)
        there = case.archives()
        found = case.sources(*(target for target in targets if target in there))
        case.expect(set(found) <= set(map(kills.mail, range(MANY))), f"{after}: messages that are not whole")
        case.expect(all(times == 1 for times in found.values()), f"{after}: messages that stand twice")
    empty()
    case.place.run(*copy)
    case.whole(range(MANY), sources, "the last run")
    case.whole(range(MANY), targets, "the last run")


def test_messages_are_copied(case):
    case.deliver(HERE, range(MANY))
    case.make_archive(THERE)
    copied(case, ["velmoractl", "copy", "--messages", HERE, THERE], [HERE], [THERE])


def test_a_tree_is_copied(case):
    deliver_tree(case)
    case.make_archive(f"{THERE}/Baum")
    copied(case, ["velmoractl", "copy", "--merge", f"{HERE}/Baum", THERE], in_tree(HERE), in_tree(THERE))


# --- Deleted: what is gone is gone, what is left is whole. ---

def refilled(case):
    """Fills the store again as it is now, on each call of what it answers."""
    kept = case.store.with_name("store-kept")
    shutil.copytree(case.store, kept)

    def refill():
        shutil.rmtree(case.store)
        shutil.copytree(kept, case.store)

    return refill


def test_messages_are_deleted(case):
    case.deliver(HERE, range(MANY))
    refill = refilled(case)
    delete = ["velmoractl", "delete", "--yes", HERE]
    longest = case.duration(*delete)

    def command():
        if not case.subjects(HERE):
            refill()
        return delete

    for after in case.kills(longest, command):
        case.sound(after)
        found, all_of_them = case.sources(HERE), set(map(kills.mail, range(MANY)))
        case.expect(set(found) <= all_of_them and found.total() == len(found), f"{after}: not whole, or twice")
    case.place.run(*delete)
    case.expect(not case.subjects(HERE), "the last run")
    case.sound("the last run")


def test_a_tree_is_erased(case):
    """Where directories are deleted as such, the archives half gone are damaged, but only they; the next run ends it."""
    deliver_tree(case)
    case.deliver(THERE, range(MANY))
    refill = refilled(case)
    erase = ["velmoractl", "delete", "--delete-archives", "--physical", "--yes", f"{HERE}/Baum"]
    longest = case.duration(*erase)
    doomed = "\\".join(["HIER", "BAUM"])

    def command():
        refill()
        return erase

    for after in case.kills(longest, command):
        elsewhere = [line for line in case.damage() if doomed not in line]
        case.expect(not elsewhere, f"{after}: damage elsewhere: {elsewhere[:10]}")
        case.kill(60, *erase)  # refused where nothing is left to erase
        case.expect(f"{HERE}/Baum" not in case.archives(), f"{after}: erased again, the tree stands")
        case.whole(range(MANY), [THERE], after)
        case.sound(f"{after} and the next run")


# --- Lists of archives. ---

def test_archives_are_made_and_deleted(case):
    """Each of these archives is a rewrite of a list: the old or the new one stands."""
    names = [f"/{number}" for number in range(12)]
    case.make_archive(f"{HERE}/Baum")
    for name in names:
        case.make_archive(f"{HERE}/Baum{name}")
    for name in names[1:]:
        case.place.run("velmoractl", "copy", "--only-archives", f"{HERE}/Baum/0", f"{HERE}/Baum{name}")
    case.place.run("velmoractl", "copy", "--only-archives", *(f"{HERE}/Baum{name}" for name in names[1:]), f"{HERE}/Baum/0")
    case.make_archive(THERE)
    make = ["velmoractl", "copy", "--only-archives", "--merge", f"{HERE}/Baum", THERE]
    delete = ["velmoractl", "delete", "--delete-archives", "--yes", f"{THERE}/Baum"]
    longest = max(case.duration(*make), case.duration(*delete))
    below = {path.removeprefix(HERE) for path in case.archives() if path.startswith(f"{HERE}/Baum")}
    case.expect(len(below) > 30, f"{len(below)} archives")
    makes = True

    def there():
        return {path.removeprefix(THERE) for path in case.archives() if path.startswith(f"{THERE}/Baum")}

    def command():
        nonlocal makes
        makes = there() != below if makes else not there()
        return make if makes else delete

    for after in case.kills(longest, command):
        case.sound(after)
        case.expect(there() <= below, f"{after}: {there() - below}")
        case.expect({path.removeprefix(HERE) for path in case.archives() if path.startswith(f"{HERE}/Baum")} == below, f"{after}: the source")
    case.place.run(*make)
    case.expect(there() == below, f"the last run: {below - there()}")
    case.place.run(*delete)
    case.expect(not there(), f"the last deletion: {there()}")
    case.sound("the last deletion")


def test_a_tree_is_repaired(case):
    """Doubled entries go list by list; no archive loses its last one."""
    record = 430
    deliver_tree(case)
    wanted = set(case.archives())
    lists = [path for path in case.store.rglob("archive.dir") if path.stat().st_size > 0]
    for path in lists:
        path.write_bytes(path.read_bytes() * 20)
    refill = refilled(case)
    repair = ["velmoractl", "tree", "repair", "--yes"]
    longest = case.duration(*repair)

    def command():
        refill()
        return repair

    for after in case.kills(longest, command):
        other = [line for line in case.damage() if "ist doppelt" not in line]
        case.expect(not other, f"{after}: {other[:10]}")
        case.expect(all(path.stat().st_size % record == 0 for path in lists), f"{after}: torn lists")
        case.expect(set(case.archives()) == wanted, f"{after}: other archives")
        case.place.run(*repair)
        case.expect(set(case.archives()) == wanted, f"{after}: other archives after the next run")
        case.sound(f"{after} and the next run")
    case.whole(range(MANY), in_tree(HERE), "the last run")


def test_a_store_is_made(case):
    init = ["velmoractl", "store", "init", case.store, "--server", "PRUEFUNG"]
    wanted = set(case.archives())

    def clear():
        shutil.rmtree(case.store)
        return init

    clear()
    longest = case.duration(*init)
    for after in case.kills(longest, clear):
        case.kill(60, *init)  # refused where the first run had come to its end
        case.expect(set(case.archives()) == wanted, f"{after}: other archives")
        case.sound(f"{after} and the next run")


if __name__ == "__main__":
    kills.run(__doc__, dict(globals()))
