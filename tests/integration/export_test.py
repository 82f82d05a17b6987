#!/usr/bin/env python3
"""Delivers messages into a fresh store, exports it by a control file and checks the mail archive with independent
readers: export_test.py --bin DIR MESSAGES...
"""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import mail_archive  # noqa: E402
import workplace  # noqa: E402


def main():
    with workplace.from_command_line(__doc__) as place:
        place.deliver()
        place.export()
        place.run("velmoractl", "store", "check")
        problems = place.log_entries()
        problems += mail_archive.check(place.archive, place.sources)
    for problem in problems:
        print(problem)
    print(f"{len(place.sources)} messages, {len(problems)} problems")
    sys.exit(1 if problems or not place.sources else 0)


main()
