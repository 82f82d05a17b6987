#!/usr/bin/env python3
"""Writes the faxes of the demo: make_faxes.py TARGET

Each .tif in TARGET is what a fax machine sends: pages of one bit per pixel in Group 4 coding, 204 by 196 dots per
inch. The pages are set in PostScript and rastered by Ghostscript.
"""

import pathlib
import subprocess
import sys

FONTS = """
/latin { findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall
  /Encoding ISOLatin1Encoding def currentdict end definefont pop } bind def
/Sans /Helvetica latin /SansBold /Helvetica-Bold latin /Mono /Courier latin /Hand /ZapfChancery-MediumItalic latin
"""


def string(text):
    """A PostScript string; what Latin-1 lacks has no place on these faxes."""
    escaped = text.replace("\\", r"\\").replace("(", r"\(").replace(")", r"\)")
    return "(" + "".join(c if ord(c) < 128 else f"\\{ord(c):03o}" for c in escaped) + ")"


class Page:
    """An A4 page that is written from the top down."""

    def __init__(self, sender, number, count):
        self.lines = []
        self.y = 806
        self.text(36, f"{sender}    Seite {number} von {count}", "Mono", 9)
        self.y = 770

    def text(self, x, text, font="Sans", size=11):
        self.lines.append(f"/{font} findfont {size} scalefont setfont {x} {self.y} moveto {string(text)} show")

    def down(self, text="", font="Sans", size=11):
        self.y -= size * 1.5
        self.text(60, text, font, size)

    def row(self, *cells):
        self.y -= 18
        for x, cell in zip((60, 110, 330, 440), cells):
            self.text(x, cell)
        self.draw(f"60 {self.y - 5} moveto 530 {self.y - 5} lineto 0.5 setlinewidth stroke")

    def draw(self, commands):
        self.lines.append(commands)

    def head(self, firm, *address):
        self.draw(f"60 {self.y + 6} moveto 530 {self.y + 6} lineto 3 setlinewidth stroke")
        self.y -= 22
        self.text(60, firm, "SansBold", 20)
        for line in address:
            self.down(line, size=9)
        self.y -= 26

    def signature(self, name):
        self.y -= 50
        self.draw(f"gsave 70 {self.y} translate 4 rotate /Hand findfont 34 scalefont setfont 0 0 moveto {string(name)} "
                  "show grestore")


def order(page, number):
    if number == 1:
        page.head("Fleischerei Lütjens", "Am Sande 12 · 21335 Lüneburg · Telefax 04131 / 4 71 12")
        page.down("An Kälte-Brandt, Herrn Süßmilch", "SansBold")
        page.down("Bestellung zum Angebot 2026-0117", "SansBold", 14)
        page.down()
        page.down("Sehr geehrter Herr Süßmilch,")
        page.down()
        page.down("hiermit bestellen wir die Kühlzelle 3,0 x 2,4 m wie angeboten, dazu zwei Regale.")
        page.down("Die Montage bitte an einem Samstag, ab 7 Uhr. Den Grundriss finden Sie auf Seite 2.")
        page.down()
        page.row("Pos.", "Leistung", "Menge", "Preis")
        page.row("1", "Kühlzelle, 80 mm Isolierung", "1", "5.480,00 EUR")
        page.row("2", "Aggregat mit Fernmeldung", "1", "2.650,00 EUR")
        page.row("3", "Regal, Edelstahl, 2,0 m", "2", "790,00 EUR")
        page.down()
        page.down("Mit freundlichen Grüßen")
        page.signature("Sönke Lütjens")
        return
    page.down("Grundriss (Maße in cm)", "SansBold", 14)
    page.draw("gsave 100 330 translate 4 setlinewidth 0 0 360 288 rectstroke 1 setlinewidth 14 14 332 260 rectstroke "
              "6 setlinewidth 1 setgray 130 0 moveto 230 0 lineto stroke 0 setgray 1 setlinewidth 230 0 moveto "
              "230 0 100 180 120 arcn stroke [6 4] 0 setdash 30 230 300 30 rectstroke 30 30 40 180 rectstroke grestore")
    for x, y, label in ((250, 640, "300"), (480, 470, "240"), (265, 575, "Regal 1"), (150, 450, "Regal 2"), (265, 315, "Tür")):
        page.y = y
        page.text(x, label)


def offer(page, number):
    if number == 1:
        page.head("Kälte-Brandt", "Bleckeder Landstraße 40 · 21337 Lüneburg · Telefax 04131 / 55 27 99")
        page.down("An Hotel Zur Mühle, Rezeption", "SansBold")
        page.down("Wartungsvertrag für zwei Eismaschinen", "SansBold", 14)
        page.down()
        page.down("Guten Tag,")
        page.down()
        page.down("wie am Telefon besprochen erhalten Sie unser Angebot über die jährliche Wartung.")
        page.down("Bitte senden Sie Seite 3 unterschrieben zurück.")
        page.down()
        page.down("Mit freundlichen Grüßen")
        page.signature("Jörg Süßmilch")
    elif number == 2:
        page.down("Leistungen", "SansBold", 14)
        page.down()
        page.row("Pos.", "Leistung", "je Jahr", "Preis")
        for place, (what, often, price) in enumerate((("Verflüssiger reinigen", "2", "96,00 EUR"),
                                                      ("Kältemittel prüfen (EU 517/2014)", "1", "74,50 EUR"),
                                                      ("Wasserfilter tauschen", "2", "58,00 EUR"),
                                                      ("Dichtungen prüfen", "2", "inklusive"),
                                                      ("Anfahrt, Zone 1", "2", "35,00 EUR")), 1):
            page.row(str(place), what, often, price)
    else:
        page.down("Auftrag", "SansBold", 14)
        page.down()
        page.down("Hiermit beauftragen wir die Wartung wie angeboten ab dem  ____ . ____ . 2026.")
        page.y -= 70
        page.text(60, "_____________________________          _____________________________")
        page.down("Ort, Datum                                              Unterschrift", size=9)


def alarm(page, number):
    page.head("Hotel Zur Mühle", "Mühlenweg 3 · 29553 Bienenbüttel")
    page.down("!!! STÖRUNG Kühlhaus !!!", "SansBold", 26)
    page.down()
    page.down("Temperatur +11 °C seit 5:30 Uhr. Telefon ist auch gestört.", "SansBold", 14)
    page.down("Bitte SOFORT kommen!", "SansBold", 14)
    page.signature("R. Petersen")


# File name, line at the top of each page, pages, what draws a page.
FAXES = [
    ("bestellung", "02.02.2026 09:14   FLEISCHEREI LUETJENS  +49 4131 47112", 2, order),
    ("wartung", "09.02.2026 15:02   KAELTE-BRANDT  +49 4131 552799", 3, offer),
    ("stoerung", "09.03.2026 06:31   HOTEL ZUR MUEHLE  +49 5823 9910", 1, alarm),
]


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    target = pathlib.Path(sys.argv[1])
    target.mkdir(parents=True, exist_ok=True)
    for name, sender, count, draw in FAXES:
        document = "%!PS-Adobe-3.0\n" + FONTS
        for number in range(1, count + 1):
            page = Page(sender, number, count)
            draw(page, number)
            document += "\n".join(page.lines) + "\nshowpage\n"
        subprocess.run(["gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=tiffg4", "-r204x196", "-sPAPERSIZE=a4",
                        f"-sOutputFile={target / name}.tif", "-"], input=document.encode("ascii"), check=True)


if __name__ == "__main__":
    main()
