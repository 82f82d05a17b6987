#!/usr/bin/env python3
"""Writes the messages of the demo: make_messages.py TARGET

A small refrigeration firm in Lüneburg writes mail. Each sub-directory of TARGET stands for one archive and holds one
.eml file per message, numbered in the order of delivery. The same call always writes the same bytes.
"""

import datetime
import email.headerregistry
import email.message
import email.policy
import email.utils
import pathlib
import struct
import sys
import zlib

FIRM = "kaelte-brandt.example"
PEOPLE = {
    "heike": ("Heike Brandt", f"heike.brandt@{FIRM}"),
    "joerg": ("Jörg Süßmilch", f"joerg.suessmilch@{FIRM}"),
    "aylin": ("Aylin Öztürk", f"aylin.oeztuerk@{FIRM}"),
    "matthias": ("Matthias Groß", f"matthias.gross@{FIRM}"),
    "info": ("Kälte-Brandt", f"info@{FIRM}"),
    "kunde": ("Fleischerei Lütjens", "einkauf@luetjens.example"),
    "hotel": ("Hotel Zur Mühle", "rezeption@hotel-muehle.example"),
    "lieferant": ("Ventilwerk Nord AG", "vertrieb@ventilwerk.example"),
    "steuer": ("Kanzlei Dr. Weiß", "kanzlei@drweiss.example"),
    "olga": ("Ольга Петрова", "olga.petrova@holod.example"),
    "jose": ("José Núñez", "jose.nunez@frio.example"),
}
POLICY = email.policy.SMTP.clone(max_line_length=76)


def png(width, height, pixel):
    """A PNG picture; pixel(x, y) gives (red, green, blue)."""
    rows = b"".join(b"\0" + bytes(c for x in range(width) for c in pixel(x, y)) for y in range(height))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b"")


def logo():
    """A snow crystal of three bars on a blue ground."""
    def pixel(x, y):
        dx, dy = x - 60, y - 30
        if dx * dx + dy * dy > 26 * 26:
            return (18, 72, 120)
        on = abs(dx) < 3 or abs(dy * 2 - dx * 1.15) < 6 or abs(dy * 2 + dx * 1.15) < 6
        return (255, 255, 255) if on else (40, 120, 180)
    return png(120, 60, pixel)


def curve():
    """A temperature curve: flat, a rise, an alarm."""
    def pixel(x, y):
        level = 90 if x < 150 else max(20, 90 - (x - 150) // 2)
        if abs(y - level) < 2:
            return (200, 40, 40) if x > 220 else (20, 90, 160)
        return (225, 230, 235) if x % 40 == 0 or y % 20 == 0 else (250, 252, 254)
    return png(320, 120, pixel)


def pdf(title, lines):
    """A one-page PDF with a title and lines of text."""
    def text(value):
        return value.encode("cp1252", "replace").replace(b"\\", b"\\\\").replace(b"(", b"\\(").replace(b")", b"\\)")
    content = b"BT /F1 18 Tf 60 780 Td (" + text(title) + b") Tj /F1 11 Tf 0 -14 Td"
    for line in lines:
        content += b" 0 -16 Td (" + text(line) + b") Tj"
    content += b" ET"
    objects = [
        b"<< /Type /Catalog /Pages 2 0 R >>",
        b"<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
        b"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 4 0 R"
        b" /Resources << /Font << /F1 5 0 R >> >> >>",
        b"<< /Length %d >>\nstream\n%s\nendstream" % (len(content), content),
        b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>",
    ]
    out, places = b"%PDF-1.4\n", []
    for number, body in enumerate(objects, 1):
        places.append(len(out))
        out += b"%d 0 obj\n%s\nendobj\n" % (number, body)
    table = len(out)
    out += b"xref\n0 6\n0000000000 65535 f \n" + b"".join(b"%010d 00000 n \n" % place for place in places)
    return out + b"trailer\n<< /Size 6 /Root 1 0 R >>\nstartxref\n%d\n%%%%EOF\n" % table


class Box:
    """One archive's messages; each new one is an hour and some minutes after the last."""

    def __init__(self, target, archive, start):
        self.directory = pathlib.Path(target, *archive.split("/"))
        self.directory.mkdir(parents=True, exist_ok=True)
        self.time = datetime.datetime.fromisoformat(start).replace(tzinfo=datetime.timezone(datetime.timedelta(hours=1)))
        self.count = 0

    def date(self):
        self.time += datetime.timedelta(hours=1, minutes=17)
        return email.utils.format_datetime(self.time)

    def raw(self, data):
        self.count += 1
        self.directory.joinpath(f"{self.count:02}.eml").write_bytes(data)

    def mail(self, sender, to, subject, text, html=None, inline=(), files=()):
        """A sound message. inline: (content id, name, PNG bytes); files: (name, main type, sub type, bytes)."""
        message = email.message.EmailMessage(POLICY)
        message["From"] = email.headerregistry.Address(PEOPLE[sender][0], addr_spec=PEOPLE[sender][1])
        message["To"] = [email.headerregistry.Address(PEOPLE[name][0], addr_spec=PEOPLE[name][1]) for name in to.split()]
        if subject is not None:
            message["Subject"] = subject
        message["Date"] = self.date()
        message["Message-ID"] = f"<{self.directory.name.encode().hex()}.{self.count + 1}@{FIRM}>"
        message.set_content(text)
        if html:
            message.add_alternative(html, subtype="html")
            for content_id, name, data in inline:
                message.get_payload()[1].add_related(data, "image", "png", cid=f"<{content_id}>", filename=name,
                                                     disposition="inline")
        for name, main, sub, data in files:
            message.add_attachment(data, maintype=main, subtype=sub, filename=name)
        # Fixed boundaries keep the files the same from run to run.
        for number, part in enumerate(part for part in message.walk() if part.is_multipart()):
            part.set_boundary(f"=_kaelte_{self.count + 1}_{number}")
        self.raw(message.as_bytes())


def html_page(body):
    return ("<html><head><style>body{font-family:Calibri,Arial,sans-serif;color:#1b2a38} table{border-collapse:collapse}"
            " td,th{border:1px solid #b8c4d0;padding:4px 10px;text-align:left} th{background:#e6eef5}</style></head>"
            f"<body>{body}</body></html>")


def offers(target):
    box = Box(target, "Vertrieb/Angebote", "2026-02-02T08:05:00")
    box.mail("kunde", "info", "Anfrage Kühlzelle für unseren neuen Laden",
             "Guten Tag,\n\nwir eröffnen im Mai eine zweite Filiale und brauchen eine Kühlzelle, etwa 3,0 × 2,4 m,\n"
             "Temperatur 2 bis 4 °C. Könnten Sie uns bis Ende Februar ein Angebot machen?\n\n"
             "Mit freundlichen Grüßen\nSönke Lütjens\n")
    box.mail("joerg", "kunde", "Angebot 2026-0117: Kühlzelle 3,0 × 2,4 m",
             "Sehr geehrter Herr Lütjens,\n\nanbei unser Angebot. Gesamtpreis 8.940,00 € zzgl. MwSt.\n\n"
             "Freundliche Grüße\nJörg Süßmilch\n",
             html_page("<p>Sehr geehrter Herr Lütjens,</p><p>anbei unser Angebot:</p><table><tr><th>Pos.</th><th>Leistung"
                       "</th><th>Preis</th></tr><tr><td>1</td><td>Kühlzelle, 80&nbsp;mm Isolierung</td><td>5.480,00&nbsp;€"
                       "</td></tr><tr><td>2</td><td>Aggregat mit Fernmeldung</td><td>2.650,00&nbsp;€</td></tr><tr><td>3</td>"
                       "<td>Montage in Ihrer Filiale</td><td>810,00&nbsp;€</td></tr></table><p>Freundliche Grüße<br>"
                       "Jörg Süßmilch</p><p><img src=\"cid:logo@brandt\" alt=\"Kälte-Brandt\"></p>"),
             inline=[("logo@brandt", "logo.png", logo())],
             files=[("Angebot 2026-0117.pdf", "application", "pdf",
                     pdf("Angebot 2026-0117", ["Kühlzelle 3,0 x 2,4 m", "Gesamt 8.940,00 € zzgl. MwSt."]))])
    box.mail("kunde", "joerg", "AW: Angebot 2026-0117: Kühlzelle 3,0 × 2,4 m",
             "Moin Herr Süßmilch,\n\ndas passt. Geht die Montage auch an einem Sonntag?\n\nS. Lütjens\n")
    box.mail("joerg", "kunde", "AW: Angebot 2026-0117: Kühlzelle 3,0 × 2,4 m",
             "Moin,\n\nsonntags mit Zuschlag von 35 %, samstags ohne.\n\nJ. Süßmilch\n")
    box.mail("hotel", "info", "Angebot", "Bitte um ein Angebot für die Wartung unserer zwei Eismaschinen.\n")
    box.mail("kunde", "info", "Angebot", "Noch einmal: bitte auch ein Regal für die Zelle anbieten.\n")
    box.mail("olga", "joerg", "Запрос: холодильная камера для склада",
             "Здравствуйте!\n\nНам нужна камера 12 м², температура −18 °C. Пришлите, пожалуйста, предложение.\n\n"
             "С уважением\nОльга Петрова\n")
    box.mail("jose", "info", "Presupuesto cámara frigorífica 🧊",
             "Buenos días,\n\n¿pueden enviarnos un presupuesto? Saludos 😊\n\nJosé Núñez\n")
    box.mail("joerg", "heike aylin", "Kalkulation \"Mühle\": Preise / Rabatte? <intern>",
             "Hallo zusammen,\n\nbitte 10 % Rabatt auf Pos. 2 & 3 prüfen; Einkaufspreis < 400 €, Verkauf > 620 €.\n\nJörg\n",
             files=[("Kalkulation Mühle.csv", "text", "csv",
                     "Position;Menge;EK;VK\r\n1;2;398,50;621,00\r\n2;1;1.120,00;1.690,00\r\n".encode("cp1252"))])


def faults(target):
    box = Box(target, "Technik/Störungen", "2026-03-09T06:40:00")
    box.mail("hotel", "info", "Störung!!! Kühlhaus meldet +11 °C",
             "Hallo,\n\nseit 5:30 Uhr piept das Kühlhaus, Anzeige +11 °C. Bitte schnell kommen!\n\nRezeption\n")
    box.mail("matthias", "hotel aylin", "AW: Störung!!! Kühlhaus meldet +11 °C",
             "Guten Morgen, ich bin um 8 Uhr da.\n\nMatthias Groß\n")
    box.mail("info", "matthias", "Alarm 4711 Temperatur hoch", "Fühler 3: +11,2 °C, Grenze +6,0 °C.\n",
             html_page("<h3>Alarm 4711</h3><p>Fühler 3 über der Grenze.</p><p><img src=\"cid:kurve\" width=\"320\" "
                       "alt=\"Temperaturkurve\"></p><p>Diese Nachricht wurde automatisch erzeugt.</p>"),
             inline=[("kurve", "Temperaturkurve.png", curve())])
    box.mail("matthias", "aylin", "Bericht Kühlhaus Hotel Zur Mühle",
             "Lüfter vereist, Abtauheizung defekt, getauscht. 2,5 Std. + Material.\n\nFotos anbei.\n\nMatthias\n",
             files=[("Verdampfer vorher.png", "image", "png", curve()), ("Verdampfer nachher.png", "image", "png", logo()),
                    ("Arbeitsbericht 0311.pdf", "application", "pdf", pdf("Arbeitsbericht 0311", ["2,5 Std.", "Abtauheizung"]))])
    box.mail("aylin", "matthias", "Rückruf Frau Çelik, 04131 / 55 27 0", "Bitte heute noch anrufen, es tropft.\n")
    box.mail("matthias", "aylin", "AW: Rückruf Frau Çelik, 04131 / 55 27 0", "Erledigt, Siphon war verstopft.\n")
    box.mail("info", "matthias aylin heike",
             "Sehr langer Betreff aus der Leitstelle: " + ", ".join(f"Fühler {n} meldet {n + 3},5 °C" for n in range(1, 25)),
             "Sammelmeldung der Leitstelle, Einzelheiten im Betreff.\n")


def purchasing(target):
    box = Box(target, "Einkauf", "2026-04-13T09:10:00")
    box.mail("lieferant", "aylin", "Auftragsbestätigung 88213",
             "Sehr geehrte Frau Öztürk,\n\nwir bestätigen 40 Stück Magnetventil ½\" zum Preis von 31,90 €/Stück.\n",
             files=[("AB_88213.pdf", "application", "pdf", pdf("Auftragsbestätigung 88213", ["40 x Magnetventil"]))])
    box.mail("lieferant", "aylin", "Rechnung 26-4471", "Anbei unsere Rechnung.\n",
             files=[("Rechnung.pdf", "application", "pdf", pdf("Rechnung 26-4471", ["1.276,00 €"]))])
    box.mail("lieferant", "aylin", "Rechnung 26-4502", "Anbei unsere Rechnung.\n",
             files=[("Rechnung.pdf", "application", "pdf", pdf("Rechnung 26-4502", ["318,40 €"]))])
    box.mail("aylin", "heike", None, "Kannst du das bitte freigeben? Danke!\n\nAylin\n")
    box.mail("heike", "aylin", "", "Ja, ist freigegeben.\n")
    box.mail("aylin", "lieferant", "Reklamation: 3 Ventile undicht", "Siehe Foto.\n\nA. Öztürk\n",
             files=[("IMG_2041.PNG", "image", "png", curve())])
    forwarded = email.message.EmailMessage(POLICY)
    forwarded["From"], forwarded["To"] = "vertrieb@ventilwerk.example", PEOPLE["aylin"][1]
    forwarded["Subject"], forwarded["Date"] = "Preisliste ab 01.05.2026", "Mon, 13 Apr 2026 07:00:00 +0200"
    forwarded.set_content("Die neuen Preise gelten ab 1. Mai. Ihr Rabatt bleibt bei 12 %.\n")
    message = email.message.EmailMessage(POLICY)
    message["From"], message["To"] = PEOPLE["aylin"][1], PEOPLE["heike"][1]
    message["Subject"], message["Date"] = "WG: Preisliste ab 01.05.2026", box.date()
    message.set_content("Zur Kenntnis.\n")
    message.add_attachment(forwarded)
    message.set_boundary("=_kaelte_weiter")
    box.raw(message.as_bytes())


def staff(target):
    box = Box(target, "Personal", "2026-05-04T10:00:00")
    box.mail("heike", "joerg aylin matthias", "Betriebsausflug am 19. Juni 🎉",
             "Liebe Leute,\n\nwir fahren mit dem Rad nach Bleckede. Bitte bis 1. Juni zusagen: 🚲 oder 🚗?\n\nHeike\n")
    box.mail("matthias", "heike", "AW: Betriebsausflug am 19. Juni 🎉", "🚲 Bin dabei!\n")
    box.mail("aylin", "heike", "AW: Betriebsausflug am 19. Juni 🎉", "🚗, mein Knie... 😕\n")
    box.mail("steuer", "heike", "Lohnabrechnungen Mai", "Die Abrechnungen finden Sie im Anhang.\n\nDr. Weiß\n",
             files=[("Löhne_Mai_2026.pdf", "application", "pdf", pdf("Lohnjournal", ["Mai 2026"])),
                    ("Meldung.xml", "application", "xml", b"<?xml version='1.0'?>\n<meldung monat='05'/>\n")])
    box.mail("heike", "joerg", "Urlaub: 6.7.–24.7.?", "Geht klar, Jörg – trag's bitte in den Kalender ein…\n",
             files=[("Urlaub.ics", "text", "calendar",
                     b"BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VEVENT\r\nDTSTART;VALUE=DATE:20260706\r\n"
                     b"DTEND;VALUE=DATE:20260725\r\nSUMMARY:Urlaub\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n")])
    box.mail("heike", "matthias", "Führerscheinkontrolle", "Bitte am Montag vorlegen.\n\nSchöne Grüße\nHeike\n")


def odd(target):
    """What arrives in the field: old, broken and hostile messages."""
    box = Box(target, "Verschiedenes", "2026-06-01T07:30:00")
    date = box.date
    box.raw(b"From: alt@system.example\r\nTo: info@kaelte-brandt.example\r\nDate: " + date().encode() +
            b"\r\nSubject: Gr\xfc\xdfe ohne Kodierung\r\n\r\nDiese Nachricht hat Umlaute ohne jede Angabe: \xe4\xf6\xfc\xdf.\r\n")
    box.raw(b"From: kaputt@system.example\r\nTo: info@kaelte-brandt.example\r\nDate: " + date().encode() +
            b"\r\nSubject: Abgeschnittene Nachricht\r\nMIME-Version: 1.0\r\nContent-Type: multipart/mixed; boundary=\"xyz\"\r\n\r\n"
            b"--xyz\r\nContent-Type: text/plain; charset=utf-8\r\n\r\nDer Schluss fehlt.\r\n--xyz\r\n"
            b"Content-Type: application/octet-stream; name=\"daten.bin\"\r\nContent-Transfer-Encoding: base64\r\n\r\nAAECAwQF")
    box.raw(b"From: =?utf-8?Q?M=C3=BCller?= <mueller@system.example>\r\nTo: info@kaelte-brandt.example\r\nDate: kein Datum\r\n"
            b"Subject: =?unbekannt?Q?Unlesbarer_Zeichensatz?=\r\nContent-Type: text/plain; charset=klingonisch\r\n\r\n"
            b"Zeichensatz und Datum gibt es nicht.\r\n")
    box.raw(b"From: <>\r\nDate: " + date().encode() + b"\r\nSubject: Unzustellbar: R\xc3\xbcckl\xc3\xa4ufer\r\n\r\n"
            b"Die Nachricht konnte nicht zugestellt werden.\r\n")
    box.raw(b"From: boese@angreifer.example\r\nTo: info@kaelte-brandt.example\r\nDate: " + date().encode() +
            b"\r\nSubject: <script>document.title='angriff'</script> %VELMORA_TO%\r\nMIME-Version: 1.0\r\n"
            b"Content-Type: text/html; charset=utf-8\r\n\r\n<p onmouseover=\"document.title='angriff'\">Gewonnen!</p>"
            b"<img src=\"http://angreifer.example/zaehler.gif\"><script>document.title='angriff'</script>\r\n")
    box.raw(b"From: boese@angreifer.example\r\nTo: info@kaelte-brandt.example\r\nDate: " + date().encode() +
            b"\r\nSubject: Anhang mit Pfad\r\nMIME-Version: 1.0\r\nContent-Type: multipart/mixed; boundary=b\r\n\r\n"
            b"--b\r\nContent-Type: text/plain\r\n\r\nVier Anh\xe4nge mit seltsamen Namen.\r\n"
            b"--b\r\nContent-Disposition: attachment; filename=\"..\\..\\autorun.inf\"\r\n\r\neins\r\n"
            b"--b\r\nContent-Disposition: attachment; filename=\"/etc/passwd\"\r\n\r\nzwei\r\n"
            b"--b\r\nContent-Disposition: attachment; filename=\"CON\"\r\n\r\ndrei\r\n"
            b"--b\r\nContent-Type: image/png\r\nContent-Disposition: attachment\r\n\r\nvier\r\n--b--\r\n")
    box.raw(b"\r\nNur Text, keine Kopfzeilen.\r\n")
    box.raw("Subject: Punkt. Punkt: Komma/Strich\\ \"Gänsefüßchen\" | ~ * ? # <>\r\nFrom: zeichen@system.example\r\nDate: ".encode()
            + date().encode() + b"\r\n\r\nDer Betreff hat alle Zeichen, die ein Dateiname nicht haben darf.\r\n")
    box.raw(b"From: leer@system.example\r\nTo: info@kaelte-brandt.example\r\nDate: " + date().encode() +
            b"\r\nSubject:    \r\n\r\n")


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    for write in (offers, faults, purchasing, staff, odd):
        write(sys.argv[1])


main()
