#!/usr/bin/env python3
"""The programs' main work under valgrind's memcheck: memcheck_test.py --bin DIR [--keep DIR] MESSAGES...

Delivers the folders, exports them with everything that belongs to a message, and works on the store, each process
under memcheck: no wrong access, no value used that was never set, nothing lost. Not for programs built with sanitizers."""

import sys

import workplace

MEMCHECK = ["valgrind", "--quiet", "--error-exitcode=99", "--leak-check=full", "--show-leak-kinds=definite",
            "--errors-for-leak-kinds=definite", "--num-callers=30"]


def watched(programs, directory):
    """A directory of programs that start those under memcheck; what it says goes into a file of each process there."""
    directory.mkdir()
    for name in ("velmora", "velmoractl"):
        starter = directory / name
        starter.write_text(f'#!/bin/sh\nexec {" ".join(MEMCHECK)} --log-file={directory}/{name}.%p.log {programs / name} "$@"\n')
        starter.chmod(0o755)
    return directory


def work(place):
    place.deliver()
    place.put_entries()
    place.export()
    top = f"/Archive/Gemeinsam/{place.messages[0].name}"
    goal = "/Archive/Gemeinsam/Ablage"
    place.run("velmoractl", "store", "deliver", "--archive", "Gemeinsam/Ablage/Post",
              next(place.messages[0].rglob("*.eml")))
    place.run("velmoractl", "store", "list", "--json", "--archive", f"{goal}/Post")
    place.run("velmoractl", "copy", top, goal)
    place.run("velmoractl", "move", "--merge", "--delete-archives", "--yes", top, goal)
    place.run("velmoractl", "tree", "check")
    place.run("velmoractl", "addresses", "export", "/Archive/Gemeinsam/Adressen", "--format", "xls", "--target",
              place.directory / "Adressbuch.xls")
    place.run("velmoractl", "delete", "--yes", goal)
    place.run("velmoractl", "store", "check")


def main():
    with workplace.from_command_line(__doc__) as plain:
        programs = watched(plain.programs.resolve(), plain.directory / "memcheck")
        place = workplace.Workplace(plain.directory, programs, plain.messages)
        work(place)
        logs = sorted(programs.glob("*.log"))
        problems = [f"{log.name}:\n{log.read_text()}" for log in logs if log.stat().st_size > 0]
        problems += [f"logged: {entry}" for entry in place.log_entries()]
        print(f"{len(logs)} processes under memcheck, {len(problems)} problems")
        for problem in problems:
            print(problem)
    sys.exit(1 if problems else 0)


main()
