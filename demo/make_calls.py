#!/usr/bin/env python3
"""Writes the voice mails of the demo: make_calls.py TARGET

Each .wav in TARGET is a call as a telephone system records it: one channel, 16 bit. Spoken by espeak-ng where it is
installed; otherwise each is a short melody of its own.
"""

import math
import pathlib
import shutil
import struct
import subprocess
import sys
import wave

RATE = 8000

# File name, what is said, notes of the melody in half tones above a'.
CALLS = [
    ("rueckruf", "Guten Tag, hier ist Frau Çelik. Bei uns tropft es wieder aus dem Verdampfer. "
                 "Bitte rufen Sie mich heute noch zurück. Meine Nummer haben Sie ja.", (0, 4, 7, 12)),
    ("liefertermin", "Moin, Ventilwerk Nord, Hansen. Die vierzig Magnetventile kommen am Donnerstag zwischen acht und zehn. "
                     "Tschüs!", (7, 5, 4, 2, 0)),
    ("stoerung", "Achtung. Hier ist die Leitstelle. Kühlhaus Hotel zur Mühle, Fühler drei: plus elf Grad.", (12, 12, 0, 12, 12, 0)),
]


def melody(path, notes):
    """Notes of a quarter of a second, each fading out."""
    count = RATE // 4
    samples = b"".join(
        struct.pack("<h", int(12000 * (1 - i / count) * math.sin(2 * math.pi * 440 * 2 ** (note / 12) * i / RATE)))
        for note in notes for i in range(count))
    with wave.open(str(path), "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(samples)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    target = pathlib.Path(sys.argv[1])
    target.mkdir(parents=True, exist_ok=True)
    for name, text, notes in CALLS:
        path = target / f"{name}.wav"
        if not shutil.which("espeak-ng"):
            melody(path, notes)
        else:
            subprocess.run(["espeak-ng", "-v", "de", "-s", "150", "-w", str(path), text], check=True)


if __name__ == "__main__":
    main()
