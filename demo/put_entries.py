#!/usr/bin/env python3
"""Puts the demo's faxes, voice mails, text messages and addresses into the store: put_entries.py VELMORACTL WORK_DIRECTORY

The store is the one that VELMORA_STORE names. The files are made in WORK_DIRECTORY.
"""

import pathlib
import subprocess
import sys

HERE = pathlib.Path(__file__).parent
ARCHIVE = "Gemeinsam"

# Command, sub-archive, options, file.
ENTRIES = [
    ("put-fax", "Vertrieb/Faxe", {"subject": "Bestellung zum Angebot 2026-0117", "from": "04131 / 4 71 12", "to": "04131 / 55 27 99",
                                  "date": "02.02.2026 09:14:00", "comment": "Grundriss auf Seite 2.\r\nMontage samstags."},
     "faxes/bestellung.tif"),
    ("put-fax", "Vertrieb/Faxe", {"subject": "Wartungsvertrag für zwei Eismaschinen", "from": "04131 / 55 27 99",
                                  "to": "05823 / 99 10", "date": "09.02.2026 15:02:00"}, "faxes/wartung.tif"),
    ("put-fax", "Technik/Störungen", {"subject": "", "from": "05823 / 99 10", "to": "04131 / 55 27 99",
                                      "date": "09.03.2026 06:31:00"}, "faxes/stoerung.tif"),
    ("put-voice", "Technik/Anrufe", {"subject": "Anruf", "from": "04131 55270", "to": "30", "date": "10.03.2026 16:48:00",
                                     "comment": "Frau Çelik, Bäckerei Öz: Verdampfer tropft. Matthias ruft zurück."},
     "calls/rueckruf.wav"),
    ("put-voice", "Technik/Anrufe", {"subject": "Anruf", "from": "", "to": "40", "date": "09.03.2026 06:29:00"},
     "calls/stoerung.wav"),
    ("put-voice", "Einkauf", {"subject": "Anruf", "from": "0431 702033", "to": "30", "date": "14.04.2026 11:05:00"},
     "calls/liefertermin.wav"),
    ("put-sms", "Technik/Störungen", {"subject": "Bin in 20 Minuten da", "from": "0171 5527 040", "to": "0160 2200 118",
                                      "date": "09.03.2026 07:40:00", "text": "Bin in 20 Minuten da. Bitte Tür zulassen! MG"}, None),
    ("put-address", "Adressen", {}, HERE / "adressen.vcf"),
]


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    program, work = sys.argv[1], pathlib.Path(sys.argv[2])
    for maker, folder in (("make_faxes.py", "faxes"), ("make_calls.py", "calls")):
        subprocess.run([sys.executable, str(HERE / maker), str(work / folder)], check=True)
    for command, archive, options, file in ENTRIES:
        arguments = [part for name, value in options.items() for part in (f"--{name}", value)]
        arguments += [str(work / file)] if file else []
        subprocess.run([program, "store", command, "--archive", f"{ARCHIVE}/{archive}", *arguments], check=True)


if __name__ == "__main__":
    main()
