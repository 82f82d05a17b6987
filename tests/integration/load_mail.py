"""Very many messages, each known by its sender, and what became of each of them."""

import json
import random
import re

WORDS = ("Angebot Auftrag Rechnung Lieferung Termin Besprechung Protokoll Kunde Vertrieb Einkauf Technik Lager Urlaub "
         "Vertrag Mahnung Gutschrift Übergabe Prüfung Änderung Größe").split()


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


def rows_of(listing):
    """The entries of a list in JSON, one at a time: each stands on a line of its own."""
    with open(listing, encoding="utf-8") as lines:
        for line in lines:
            if line.startswith("  {"):
                yield json.loads(line.rstrip().removesuffix(","))
