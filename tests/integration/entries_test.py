#!/usr/bin/env python3
"""Exports the demo's faxes, voice mails and addresses beside mails and judges the files: entries_test.py --bin DIR MESSAGES...

Images and recordings are compared with what was put into the store, and opened by libtiff and by Python's wave; the
address book is read by Gnumeric and compared with the vCards by vobject.
"""

import csv
import io
import json
import pathlib
import subprocess
import sys
import wave

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import mail_archive  # noqa: E402
import workplace  # noqa: E402

DEMO = pathlib.Path(__file__).parents[2] / "demo"
FAX, VOICE = 4, 8  # of a descriptor's flags

# Sub-archive, kind, key of the content, its source, subject, sender, recipient, comment.
ENTRIES = [
    ("Vertrieb/Faxe", FAX, "FAX", "faxes/bestellung.tif", "Bestellung zum Angebot 2026-0117", "04131 / 4 71 12",
     "04131 / 55 27 99", "Grundriss auf Seite 2.\r\nMontage samstags."),
    ("Vertrieb/Faxe", FAX, "FAX", "faxes/wartung.tif", "Wartungsvertrag für zwei Eismaschinen", "04131 / 55 27 99",
     "05823 / 99 10", ""),
    ("Technik/Stoerungen", FAX, "FAX", "faxes/stoerung.tif", "04131 / 55 27 99", "05823 / 99 10", "04131 / 55 27 99", ""),
    ("Technik/Anrufe", VOICE, "VOICE", "calls/rueckruf.wav", "Anruf_Call-from-04131 55270-to-30", "04131 55270", "30",
     "Frau Çelik, Bäckerei Öz: Verdampfer tropft. Matthias ruft zurück."),
    ("Technik/Anrufe", VOICE, "VOICE", "calls/stoerung.wav", "Anruf_Call-from-unbekannt-to-40", "unbekannt", "40", ""),
    ("Einkauf", VOICE, "VOICE", "calls/liefertermin.wav", "Anruf_Call-from-0431 702033-to-30", "0431 702033", "30", ""),
]
PAGES = {"faxes/bestellung.tif": 2, "faxes/wartung.tif": 3, "faxes/stoerung.tif": 1}


def descriptors(directory):
    return [mail_archive.Descriptor(path) for path in directory.glob("*.add")]


def judge_content(source, path):
    """Problems of an exported image or recording."""
    if path is None:
        return ["the content is missing"]
    problems = [] if path.read_bytes() == source.read_bytes() else ["the content differs"]
    if path.suffix == ".tif":
        told = subprocess.run(["tiffinfo", path], capture_output=True, text=True)
        pages = told.stdout.count("CCITT Group 4")
        problems += [] if pages == PAGES["/".join(source.parts[-2:])] else [f"libtiff sees {pages} pages: {told.stderr}"]
    else:
        with wave.open(str(path)) as recording:
            problems += [] if recording.getnframes() > 0 else ["an empty recording"]
    return problems


def judge_entry(place, entry):
    archive, kind, key, source, subject, sender, recipient, comment = entry
    directory = place.archive / "Gemeinsam" / archive
    found = [d for d in descriptors(directory) if d["Subject"] == subject and int(d["Flags"]) & kind]
    if len(found) != 1:
        return [f"{len(found)} descriptors"]
    descriptor = found[0]
    problems = descriptor.problems + judge_content(place.directory / "entries" / source, descriptor.file(descriptor[key]))
    problems += [f"{name} is {descriptor[name]}" for name, value in (("From", sender), ("To", recipient)) if descriptor[name] != value]
    page = mail_archive.text_of((directory / descriptor["MailArcEntry"]).read_bytes())
    for text in (subject, sender, recipient):
        problems += [] if text in page else [f"the page lacks {text}"]
    name = descriptor.path.stem + ".txt"
    written = directory / "Comments" / name
    if comment and (not written.exists() or written.read_bytes().decode("cp1252") != comment):
        problems.append("the comment differs")
    if written.exists() != bool(comment) or f"Comments/{name}" in page and not comment:
        problems.append("a comment without need")
    if bool(comment) != ("Comments/" in page):
        problems.append("the page's link to the comment")
    return problems


def cards():
    """Display name, first name, city and note of the demo's addresses by a reader that is not ours."""
    reader = ("import sys, json, vobject; print(json.dumps([[c.fn.value, c.n.value.given, c.adr.value.city if 'adr' in "
              "c.contents else '', c.note.value if 'note' in c.contents else ''] for c in "
              "vobject.readComponents(open(sys.argv[1], encoding='utf-8', newline='').read())]))")
    done = subprocess.run(["/usr/bin/python3", "-c", reader, DEMO / "adressen.vcf"], capture_output=True, text=True, check=True)
    return json.loads(done.stdout)


def judge_addresses(place):
    book = place.archive / "Gemeinsam" / "Adressen" / "Adressbuch.xls"
    if not book.exists():
        return ["no address book"]
    done = subprocess.run(["ssconvert", "-T", "Gnumeric_stf:stf_csv", book, "fd://1"], capture_output=True, text=True,
                          env=place.environment)
    rows = list(csv.DictReader(io.StringIO(done.stdout)))
    written = sorted([row["Anzeigename"], row["Vorname"], row["Ort"], row["Kommentar"]] for row in rows)
    wanted = sorted([name, given, city, note.replace("\n", " ")] for name, given, city, note in cards())
    return [f"{got} instead of {want}" for got, want in zip(written, wanted) if got != want] + (
        [] if len(rows) == len(wanted) == 25 else [f"{len(rows)} addresses of {len(wanted)}"])


def main():
    problems = []
    with workplace.from_command_line(__doc__) as place:
        place.deliver()
        place.put_entries()
        place.export()
        for entry in ENTRIES:
            problems += [f"{entry[3]}: {problem}" for problem in judge_entry(place, entry)]
        problems += [f"addresses: {problem}" for problem in judge_addresses(place)]
        problems += [f"log: {line}" for line in place.log_entries()]
    print("\n".join(problems + [f"{len(problems)} problems"]))
    sys.exit(1 if problems else 0)


main()
