#!/usr/bin/env python3
"""Mail that tries to break out of what the program makes of it: hostile_mail_test.py --bin DIR [--only CASE] [--large]

Every value that a sender chooses holds markup, file names or line ends that would do harm. Each page is opened in
Chromium, beside a listener that all hostile addresses lead to: no script may run, nothing be fetched, no page be left.
No file may arise outside of the target, and each attachment must get a name that Windows can bear.
"""

import argparse
import base64
import email.parser
import email.policy
import os
import pathlib
import re
import shutil
import socketserver
import subprocess
import sys
import tempfile
import threading
import time
import unicodedata

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import bad_input_test  # noqa: E402
import chromium  # noqa: E402
import hostile_markup  # noqa: E402
import mail_archive  # noqa: E402
import workplace  # noqa: E402
from bad_input_test import DONE, WITH_ERRORS  # noqa: E402

ALL = "saveatt=y\nsaveeml=y\nsavesmtp=y\nsavecmt=y\nmakeidx=y\n"
PIXEL = base64.b64decode("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==")


class Listener:
    """Answers nothing, remembers who came: the first line of each request, or "" of a mere connection."""

    def __init__(self):
        seen = self.seen = []

        class Handler(socketserver.BaseRequestHandler):
            def handle(self):
                seen.append("")
                number = len(seen) - 1
                self.request.settimeout(0.3)
                try:
                    seen[number] = self.request.recv(400).split(b"\r\n")[0].decode("latin-1")
                except (OSError, IndexError):
                    pass  # no more than a connection, or the page has been judged

        socketserver.ThreadingTCPServer.daemon_threads = True
        self.server = socketserver.ThreadingTCPServer(("127.0.0.1", 0), Handler)
        self.host = "127.0.0.1:%d" % self.server.server_address[1]
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def close(self):
        self.server.shutdown()
        self.server.server_close()


class Case(bad_input_test.Case):
    """A case that also looks at what lies beside the target."""

    def snapshot(self):
        """Everything in the scratch directory but the target and what the program keeps for itself."""
        own = [self.place.directory / name for name in ("config", "state", "temp", "steuer.txt")]
        found = {}
        for path in self.place.directory.rglob("*"):
            if self.place.archive in path.parents or any(path == top or top in path.parents for top in own):
                continue
            found[path] = None if path.is_dir() else (path.stat().st_size, path.stat().st_mtime_ns)
        return found

    def export_and_look(self, text, status=DONE):
        canary = self.place.directory / "Kanarienvogel.txt"
        canary.write_text("unverändert")
        before = self.snapshot()
        self.export(status, text)
        after = self.snapshot()
        told = [line for line in self.log.split("\n") if line and not any(reason in line for reason in KNOWN_REASONS)]
        self.expect(not told, f"log: {told[:5]}")
        changed = [path for path in before.keys() | after.keys() if before.get(path, 0) != after.get(path, 0)]
        self.expect(not [path for path in changed if "store" not in path.parts], f"changed outside of the target: {changed}")
        new = [path for path in after.keys() - before.keys()]
        self.expect(not new, f"new in the store: {new}")
        self.names_are_sound()
        self.texts_are_sound()

    def put(self, command, archive, options, *files):
        arguments = [f"--{name}={value}" for name, value in options.items()]
        self.place.run("velmoractl", "store", command, "--archive", archive, *arguments, *files)

    def archive_has(self, count):
        found = sum(1 for path in self.place.archive.rglob("*.add") if path.parent.name != "Attachments")
        self.expect(found == count, f"{found} entries, not {count}")

    def rows_are_whole(self, directory, book):
        """One address is one card, one line or one row of the address book, or three lines of one: two end in its notes."""
        cards = sum(1 for _ in directory.rglob("*.vcf"))
        lines = sum(path.read_bytes().count(b"\r\n") for path in directory.glob("Adressbuch.[cn]*"))
        bare = sum(len(re.findall(rb"(?<!\r)\n|\r(?!\n)", path.read_bytes())) for path in directory.glob("Adressbuch.[cn]*"))
        wanted = {1: (0, len(ARCHIVES) + 1), 2: (0, 0), 3: (0, 3 * len(ARCHIVES) + 1), 4: (len(ARCHIVES), 0)}[book]
        self.expect((cards, lines) == wanted and bare == 0, f"{cards} cards, {lines} lines, {bare} bare line ends")

    def names_are_sound(self):
        for path in self.place.archive.rglob("*"):
            problem = name_problem(path.name)
            # Names made of subjects and of archives keep what Windows may refuse; archives written before have them, too.
            if path.parent.name != "Attachments" and problem in (DEVICE, BAD_END):
                continue
            self.expect(not problem, f"{problem}: {path.relative_to(self.place.archive)!s}")
        for directory in {path.parent for path in self.place.archive.rglob("*")}:
            folded = [unicodedata.normalize("NFC", path.name).lower() for path in directory.iterdir()]
            self.expect(len(folded) == len(set(folded)), f"one name twice for Windows in {directory}")

    def texts_are_sound(self):
        """Markers, descriptors, autorun files and cards have the lines that the program writes, and no more."""
        for path in self.place.archive.rglob("*"):
            if path.suffix == ".add" and path.parent.name != "Attachments":
                lines = path.read_bytes().decode("cp1252").split("\r\n")
                keys = [line.partition("=")[0] for line in lines[:-1]]
                self.expect(lines[-1] == "" and keys in DESCRIPTOR_KEYS, f"{path.name}: keys {keys}")
                descriptor = mail_archive.Descriptor(path)
                self.expect(not descriptor.problems, f"{path.name}: {descriptor.problems}")
                for key in ("MailArcEntry", "HTML", "FAX", "VOICE", "EML", "SMTP", "COMMENT"):
                    self.expect(not descriptor[key] or descriptor.file(descriptor[key]), f"{path.name}: {key}={descriptor[key]}")
                self.expect(all(map(descriptor.file, descriptor.attachments())), f"{path.name}: attachments")
            elif path.name in MARKERS:
                lines = path.read_bytes().decode("cp1252").split("\r\n")
                keys = [line.partition("=")[0] for line in lines[1:]]
                self.expect(lines[0].startswith(";Velmora ") and keys in MARKER_KEYS, f"{path}: {lines}")
            elif path == self.place.archive / "autorun.inf":
                lines = path.read_bytes().decode("cp1252").split("\r\n")
                self.expect(len(lines) == 7 and lines[1] == "open=shellexec.exe index.html", f"autorun.inf: {lines}")
            elif path.suffix == ".vcf" and path.parent.name == "VCards":
                names = [re.split("[:;]", line)[0] for line in path.read_bytes().decode("cp1252").split("\r\n")]
                self.expect(names == CARD_LINES, f"{path.name}: {names}")


# What the log may tell: these do not come of a sender's values.
KNOWN_REASONS = ["Sprachnachrichten werden nur mit ihren Attachments gespeichert", "Der Eintrag ist keine Mail",
                 "Zeichen, die es in Textdateien nicht gibt"]
DESCRIPTOR_HEAD = ["Sortaddr", "Subject", "Date", "From", "To", "Flags", "MailArcEntry", "MailArcAdd"]
DESCRIPTOR_KEYS = [DESCRIPTOR_HEAD + tail for tail in (["HTML", "EML", "SMTP", "COMMENT"], ["FAX", "COMMENT"], ["VOICE"],
                                                      ["HTML", "EML", "SMTP", "COMMENT", "Attachments"])]
MARKERS = ["VelmoraRootArc.vla", "VelmoraSubArc.vla", "VelmoraDataArc.vla", "VelmoraAddrArc.vla"]
MARKER_KEYS = [["", ""], ["ArchiveDisplayName", "ArchiveFullPath", "ArchiveDirName", "ArchiveComment",
                          "ArchiveCopyRight", "", ""]]
CARD_LINES = ("BEGIN VERSION FN N ORG TITLE TEL TEL TEL TEL TEL TEL X-DAVID-VoiceBox X-DAVID-CATEGORY X-DAVID-2EMAIL "
              "X-DAVID-DEFAULTADDR X-DAVID-PDACategory EMAIL URL ADR LABEL BDAY X-DAVID-BDAY NOTE REV End").split() + [""]
DEVICES = re.compile(r"(CON|PRN|AUX|NUL|CONIN\$|CONOUT\$|(COM|LPT)[0-9¹²³])[ ]*(\..*)?", re.IGNORECASE | re.DOTALL)

DEVICE, BAD_END = "name of a device", "ends with a blank or a point"


def name_problem(name):
    """What Windows would not bear in the name of a file or folder."""
    if re.search(r'[<>:"/\\|?*\x00-\x1f]', name):
        return "forbidden character"
    if any("\udc80" <= letter <= "\udcff" for letter in name):
        return "no UTF-8"
    if name.endswith((" ", ".")):
        return BAD_END
    if DEVICES.fullmatch(name):
        return DEVICE
    if len(name.encode("utf-16-le")) > 2 * 255:
        return "too long"
    if any(unicodedata.bidirectional(letter) in ("RLE", "LRE", "RLO", "LRO", "PDF", "RLI", "LRI", "FSI", "PDI") for letter in name):
        return "turns the direction of writing"
    return ""


def word(text):
    """An encoded word, which may hold what no header line can."""
    return "=?utf-8?B?" + base64.b64encode(text.encode()).decode() + "?="


def parameter(name, value):
    return f"{name}*=utf-8''" + "".join(f"%{byte:02X}" for byte in value.encode())


def part(kind, data, *headers):
    lines = [f"Content-Type: {kind}", "Content-Transfer-Encoding: base64", *headers, "", base64.encodebytes(data).decode()]
    return "\r\n".join(lines)


def multipart(subject, parts, *headers, kind="mixed", **values):
    body = "".join(f"--grenze\r\n{text}\r\n" for text in parts) + "--grenze--\r\n"
    return mail(subject, body, "MIME-Version: 1.0", f'Content-Type: multipart/{kind}; boundary="grenze"', *headers, **values)


def mail(subject, body, *headers, sender="anna@example.org", to="bernd@example.org"):
    lines = [f"From: {sender}", f"To: {to}", f"Subject: {subject}", "Date: Mon, 5 Jan 2026 10:00:00 +0100", *headers, "", body]
    return "\r\n".join(lines).encode()


def attachment(name, data=b"x", kind="application/octet-stream", *headers):
    return part(kind, data, "Content-Disposition: attachment; " + parameter("filename", name), *headers)


def tricks(listener, suffix):
    for name, text in hostile_markup.MARKUP:
        yield name, hostile_markup.filled(text, listener.host, f"{name}-{suffix}")


def plain_mails(listener):
    """Each trick in every value of a plain mail."""
    for name, text in tricks(listener, "plain"):
        quoted = text.replace("\0", "").replace("\\", "\\\\").replace('"', '\\"').replace("\r", " ").replace("\n", " ")
        yield multipart(word(text), [part("text/plain; charset=utf-8", text.encode()),
                                     attachment(f"{text[-90:]}.txt"), attachment(f"{name}.{text[:60]}")],
                        f"X-{name}: {word(text)}", f"Cc: {word(text)} <c@example.org>",
                        sender=f'{word(text)} <"{quoted}"@example.org>', to=f'{word(text)} <"{quoted}"@example.org>')


def html_mails(listener):
    """Each trick as an HTML body: as it is, behind a head of its own, and in other character sets."""
    for number, (name, text) in enumerate(tricks(listener, "html")):
        subject = f"H {name}"
        yield multipart(subject, [part("text/html; charset=utf-8", text.encode()),
                                  part("image/png; name=bild.png", PIXEL, "Content-ID: <bild>")], kind="related")
        if number % 4 != 0 and not name.startswith("hidden"):
            continue
        page = f"<!DOCTYPE html><html><head><title>a</title></head><body background='cid:bild'>{text}</body></html>"
        yield multipart(f"{subject} body", [part("text/html", page.encode()),
                                            part("image/png; name=bild.png", PIXEL, "Content-ID: <bild>")], kind="related")
    for name in ("script", "meta-refresh", "iframe", "img-onerror"):
        text = hostile_markup.filled(dict(hostile_markup.MARKUP)[name], listener.host, f"{name}-charset")
        for charset, coded in (("utf-16", text.encode("utf-16")), ("utf-16le", text.encode("utf-16-le")), ("utf-16", text.encode("utf-16-be")),
                               ("utf-7", text.encode("utf-7")), ("utf-7", text.replace("<", "+ADw-").replace(">", "+AD4-").encode()),
                               ("utf-32", text.encode("utf-32")), ("iso-2022-jp", text.encode()), ("hz-gb-2312", text.encode()),
                               ("gibts-nicht", b"\xfe\xff" + text.encode("utf-16-be")), ("us-ascii", b"\xff\xfe" + text.encode("utf-16-le")),
                               ("utf-8", b"\xef\xbb\xbf" + text.encode()), ("ebcdic-cp-us", text.encode("cp500"))):
            yield mail(f"H {name} {charset}", base64.encodebytes(coded).decode(), "MIME-Version: 1.0",
                       f"Content-Type: text/html; charset={charset}", "Content-Transfer-Encoding: base64")


# How the program refers to inline parts, and references that point elsewhere.
OUTSIDE_REFERENCES = ["cid:../../../../etc/hostname", "cid:..%2f..%2fx", "cid:bild%00x", "cid:", "cid:%22onerror=SCRIPT x=%22",
                      "../../../../../../etc/hostname", "00000001.$01", "..\\..\\a.$01", "x.$99", ".$01", "/etc/hostname.$01",
                      "velmora-part:01", "../Attachments/../../../Kanarienvogel.txt"]


def reference_mails(listener):
    for reference in OUTSIDE_REFERENCES:
        reference = hostile_markup.filled(reference, listener.host)
        html = f'<p style="background:url({reference})"><img src="{reference}"><a href="{reference}">x</a></p>'
        yield multipart("Verweis", [part("text/html; charset=utf-8", html.encode()),
                                    part("image/png; name*=utf-8''..%2F..%2Fbild%27%20onerror=x.png", PIXEL,
                                         f"Content-ID: <{reference[4:]}>")], kind="related")


def markup_entries(case, listener):
    """Each tenth trick in every value of faxes, voice mails, text messages, addresses and archives' names."""
    wave, picture = case.place.directory / "a.wav", case.place.directory / "a.tif"
    wave.write_bytes(b"RIFF$\0\0\0WAVEfmt \x10\0\0\0\1\0\1\0@\x1f\0\0@\x1f\0\0\1\0\x08\0data\0\0\0\0")
    picture.write_bytes(b"II*\0\x08\0\0\0\0\0\0\0\0\0")
    chosen = [pair for number, pair in enumerate(tricks(listener, "entry")) if number % 8 == 0 or "meta" in pair[0]]
    for number, (name, text) in enumerate(chosen):
        text = text.replace("\0", "")
        values = {"subject": text, "from": text, "from-name": text, "to": text, "comment": text, "text": text}
        for command, files in (("put-fax", [picture]), ("put-voice", [wave]), ("put-sms", [])):
            case.put(command, "Gemeinsam/Einträge", values, *files)
        case.put("put-address", "Gemeinsam/Adressen", {key: text for key in ADDRESS_OPTIONS})
        directory = f"Namen/{text.replace('/', '|')[:200]}" if number % 3 == 0 else "Namen"
        case.put("put-sms", f"Gemeinsam/{directory}", {"subject": name, "text": name})
    return len(chosen)


ADDRESS_OPTIONS = ("display-name last-name first-name middle-initial salutation title birthday company street postal-code city country "
                   "state web-address business-phone home-phone mobile-phone second-fax e-mail voice-box pager notes second-e-mail "
                   "pda-category address-categories photo").split()

# Everything that a person's pointer could set off; nothing that only a wanted click on an address would.
TOUCH = """(() => {
  const kinds = ['mouseover', 'mouseenter', 'pointerover', 'focus', 'error', 'load', 'toggle', 'animationstart', 'beforetoggle'];
  for (const element of [...document.querySelectorAll('*')].slice(0, 3000)) {
    for (const kind of kinds) element.dispatchEvent(new Event(kind));
    const scheme = element.protocol || element.getAttribute('href') || element.getAttribute('xlink:href') || '';
    if (element.matches('button, input, summary, [onclick]') || /^(javascript|data):/.test(scheme)) {
      element.dispatchEvent(new MouseEvent('click', {bubbles: true, cancelable: true}));
    }
  }
  for (const form of document.querySelectorAll('form')) HTMLFormElement.prototype.submit.call(form);
})()"""
LOOK = """(() => {
  const probe = document.createElement('script');
  probe.textContent = 'window.probe = 1';
  document.documentElement.append(probe);
  probe.remove();
  return {place: location.href, title: Document.prototype.__lookupGetter__('title').call(document), canary: window.angriff === 1,
          probe: window.probe === 1, charset: document.characterSet};
})()"""


def page_starts(designs):
    """The beginnings that a page may have, up to the end of its policy."""
    for form in designs.glob("*.htm"):
        text = form.read_bytes()
        yield text[:text.index(b">", text.index(b"Content-Security-Policy")) + 1]
    yield b"<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none';"


def look_at_pages(case, listener, pages):
    """Opens each page and touches all that stands in it; tells of what it could do."""
    root = case.place.archive
    starts = set(page_starts(case.place.programs / "Designs"))
    with chromium.Chromium() as browser:
        reach_of_the_browser(case, listener, browser)
        for page in pages:
            name = page.relative_to(root)
            policy = [start for start in starts if page.read_bytes().startswith(start)]
            case.expect(policy and b"%" not in policy[0], f"{name}: something stands before the policy")
            url = page.as_uri()
            before = len(listener.seen)
            browser.open(url)
            try:
                browser.evaluate(TOUCH)
                time.sleep(0.01)
                seen = browser.evaluate(LOOK)
            except RuntimeError as error:
                case.expect(False, f"{name}: {error}")
                continue
            # What goes to the listener is its to tell; a body may show files of the computer on which it is opened.
            allowed = (root.as_uri() + "/", "data:", "about:", "mailto:", f"http://{listener.host}/") + (("file:///",) if is_body(page) else ())
            outside = [one for one in set(browser.asked()) if not one.startswith(allowed)]
            case.expect(not outside, f"{name}: asks for {outside[:5]}")
            case.expect(seen and seen["place"].split("#")[0] == url, f"{name}: has gone to {seen and seen['place']}")
            case.expect(seen and not seen["canary"] and seen["title"] != "ANGRIFF", f"{name}: a script has run")
            case.expect(seen and not seen["probe"], f"{name}: its policy is not in force")
            case.expect(seen and seen["charset"] == ("UTF-8" if is_body(page) else "windows-1252"), f"{name}: character set {seen and seen['charset']}")
            case.expect(len(listener.seen) == before, f"{name} (or the page before): connections {listener.seen[before:]}")
        time.sleep(1)
        case.expect(not listener.seen, f"connections in all: {listener.seen}")


def reach_of_the_browser(case, listener, browser):
    """Without a policy the tricks do work: else this whole script would prove nothing."""
    works = {}
    for name in ("script", "img-onerror", "img-src", "meta-refresh", "iframe", "css-import", "hidden-svg-style",
                 "hidden-noscript-comment", "hidden-svg-cdata", "link-preconnect"):
        page = case.place.directory / "Beweis.html"
        page.write_bytes(hostile_markup.filled(dict(hostile_markup.MARKUP)[name], listener.host, name).encode())
        before = len(listener.seen)
        browser.open(page.as_uri())
        time.sleep(0.3)
        works[name] = len(listener.seen) > before or browser.evaluate("window.angriff") == 1
        browser.open("about:blank")
    case.expect(all(works.values()), f"tricks that the browser does not fall for: {[name for name in works if not works[name]]}")
    time.sleep(1)
    listener.seen.clear()


def is_body(page):
    return page.parent.name == "HTMLMails"


def pages_of(root):
    """All pages of the program, but of those that only lead to a body one for many."""
    pages = sorted(path for path in root.rglob("*.htm*") if path.parent.name != "Attachments")
    return [page for number, page in enumerate(pages) if not page.name.endswith("_inf.htm") or number % 20 == 0]


def test_markup_in_every_value(case):
    listener = Listener()
    plain, html = list(plain_mails(listener)), [*html_mails(listener), *reference_mails(listener)]
    case.deliver("Gemeinsam/Text", *plain)
    case.deliver("Gemeinsam/HTML", *html)
    entries = markup_entries(case, listener)
    case.place.run("velmora", "-i")
    set_option(case, "AddressExportFormat", 4)
    case.export_and_look(ALL + f"copyright={hostile_markup.filled('<script>SCRIPT</script>', listener.host)}\n"
                         f"comment={hostile_markup.filled('<meta http-equiv=refresh content=0;URL>', listener.host)}\n")
    case.archive_has(len(plain) + len(html) + 4 * entries)
    pages = pages_of(case.place.archive)
    look_at_pages(case, listener, pages)
    print(f"{len(hostile_markup.MARKUP)} tricks, {len(plain)} plain and {len(html)} HTML mails, {entries} of each other kind, {len(pages)} pages")
    listener.close()


LONG = "ä" * 300
ATTACHMENT_NAMES = [
    "../../../Kanarienvogel.txt", "..\\..\\Kanarienvogel.txt", "/etc/x.txt", "C:\\x.dll", "C:x.dll", "\\\\server\\share\\x.txt", "a.txt:x",
    "a.txt::$DATA", "a:b.txt", "CON", "con.txt", "NUL", "nul.tar.gz", "PRN.", "AUX .txt", "COM1", "COM1.pdf", "COM\u00b9.pdf", "lpt9.log",
    "CONIN$", "conout$.txt", "COM0.txt", "x.", "x. .", "x ", "x.txt.", "x.txt ", "x.txt. . ", "...", "..", ".", " ", "", "a" * 300, "a" * 300 + ".pdf",
    "x." + "b" * 300, "\U0001f642" * 300, "\U0001f642" * 300 + ".txt", LONG, LONG + ".txt", "\u202etxt.exe", "x\u202e\u2066txt.exe", "\u200fx.txt",
    "x\x01\x1f\x7fy.txt", "x\r\nZeile=2.txt", "x\0y.txt", "x\ty.txt", "gleich.txt", "GLEICH.TXT", "Gleich.Txt", "\u00e9.txt", "e\u0301.txt",
    "stra\u00dfe.txt", "STRASSE.txt", "\ufb01.txt", "\uff0e\uff0e\uff0fx", "index.html", "INDEX.HTML", "index2.html", "x.add", ".add", "X.ADD",
    "VelmoraRootArc.vla", "velmorasubarc.vla", "VelmoraDataArc", "VelmoraAddrArc.vla", "autorun.inf", "shellexec.exe", "Attachments",
    "HTMLMails", "Eml", "Comments", "FaxImages", "Velmora-Bilder", "VCards", "namen.htm", "Namen.add", "namen_inf.htm", "namen_inf.add",
    'a","..\\..\\b.txt', '","', "a\\", "a=b.txt", ";a.txt", "*.txt", "?.txt", "%VELMORA_TITLE%.txt", "%2e%2e%2fx.txt", "~1.txt", "x~1.txt", "-x",
    "desktop.ini", "Thumbs.db", ".htaccess", "a\u0080b.txt", "\ud7ff.txt", "\uffff.txt", "a&b#c?d.txt", "'x'.txt",
]
SUBJECTS = ["CON", "nul", "COM1", "COM", "AUX ", "PRN.", "Frage ?", "...", ".", "..", "../../Kanarienvogel", "C:\\x", "index", "index2", "INDEX3", "VelmoraRootArc",
            "autorun", "shellexec", "", " ", "\u202egpj.exe", "\U0001f642" * 300, LONG, "a" * 300, "x\0y", "\x01\x02", "e\u0301", "\u00e9", "A", "a",
            "%VELMORA_TO%", "%VELMORA_CONTENT%", "%VELMORA_FROM%%VELMORA_FROM%", "x_inf", "x", "\r\nFlags=4\r\nMailArcEntry=..\\x.htm", "a=b", "[Section]",
            "Attachments", "Eml", "a\u2028b\u2029c\u0085d", "a\x0b\x0c\x1c\x1d\x1eb"]


def named_mails():
    parts = [attachment(name, b"Anhang %d" % number) for number, name in enumerate(ATTACHMENT_NAMES)]
    yield multipart("Namen", parts)
    yield multipart("Namen", parts[::-1])
    yield multipart("Namen", [part("text/html", b"<p>x"), *parts])
    raw_names = [f'Content-Disposition: attachment; filename="{name}"' for name in ("..\\..\\x.txt", "../x.txt", "CON.txt", "x.txt:y")]
    yield multipart("Roh", [part(f'text/plain; name="{number}/../x.txt"', b"x", line) for number, line in enumerate(raw_names)])
    for number, subject in enumerate(SUBJECTS):
        yield mail(word(subject), f"Text {number}", sender=f"{word(subject)} <a@example.org>", to=f"{word(subject)} <b@example.org>")
        yield multipart(word(subject), [part("text/html", b"<p>x"), attachment(subject)])


ARCHIVES = ["CON", "nul", "Was?", "Ende ", "Punkt.", "...", "index.html", "Attachments", "EML", "Velmora-Bilder", "a:b", "C:", "x\u202etxt.exe", "autorun.inf",
            "COM1", "com1", "a|b<c>", "L" * 120, "\U0001f642" * 100, "e\u0301", "\u00e9", "a=b;c", "[Section]", "a\r\nArchiveFullPath=x", "{..}", "{CON}x", "'\""]
OPTIONS = {
    "alles": ALL, "nichts": "makeidx=y\n", "nur Originale": "onlyeml=y\nsaveeml=y\nsavesmtp=y\n", "nur Anhänge": "onlyatt=y\nsaveatt=y\n",
    "nur Kommentare": "onlycmt=y\nsavecmt=y\n", "beides": "onlyeml=y\nonlyatt=y\nonlycmt=y\nsaveatt=y\nsavecmt=y\nsaveeml=y\n",
}


def test_names(case):
    """With every option: nothing outside, nothing that Windows could not bear, nothing lost."""
    case.deliver("Gemeinsam/Namen", *named_mails())
    for name in ARCHIVES:
        case.put("put-sms", f"Gemeinsam/Archive/{name}", {"subject": name, "from": name, "to": name, "comment": name, "text": name})
        case.put("put-voice", "Gemeinsam/Anrufe", {"subject": name, "from": name, "to": name, "comment": name}, recording(case))
        case.put("put-address", "Gemeinsam/Adressen", {"display-name": name, "notes": f"a\r\nEnd:VCard\r\n{name}", "city": "a\r\nTEL:1\nTEL:2\rTEL:3"})
    case.place.run("velmora", "-i")
    for separate in (True, False):
        for book in (4, 1, 3) if separate else (2,):
            set_option(case, "AddressExportFormat", book)
            set_option(case, "SeparateAttachmentsFolder", str(separate).lower())
            for name, text in OPTIONS.items() if book in (4, 2) else list(OPTIONS.items())[:1]:
                case.name = f"{name}, {book}"
                empty(case.place.archive)
                case.export_and_look(text, (DONE, WITH_ERRORS))
                if not name.startswith("nur") and name != "beides":
                    voices = "saveatt" in text  # a voice mail has a page beside its recording only
                    case.archive_has(len(case.place.sources) + (1 + voices) * len(ARCHIVES))
                    case.rows_are_whole(case.place.archive / "Gemeinsam" / "Adressen", book)


def test_header_injection(case):
    """The result mail has the header lines that the program writes, whatever stands in the control file or the archive."""
    case.deliver("Gemeinsam/A\r\nBcc: x@example.org", mail("x", "Text"))
    text = ("sendmail=y\nmailto=a@example.org, b@example.org\x0bBcc: c@example.org,\"d\" <d@example.org>\x85\x0cX-Zeile: 1\n"
            "mailfrom=e@example.org\x0cX-Zeile: 2\nmailsubject=Betreff \\n\\r\\nX-Zeile: 3\x0b\x1cX-Zeile: 4\n"
            "mailbody=%5\\n\\nX-Zeile: 5\\n%9\\n.\\n%7\n")
    case.export(WITH_ERRORS, ALL + text)  # nobody of these has an archive in this store
    case.expect(case.log.count("\n") == 0 and "Ergebnismail" in case.log, f"log: {case.log}")
    found = [path.read_bytes() for path in pathlib.Path(case.place.environment["VELMORA_STORE"]).rglob("*.001") if b"Betreff" in path.read_bytes()]
    case.expect(len(found) == 1, f"{len(found)} result mails")
    for source in found:
        message = email.parser.BytesParser(policy=email.policy.compat32).parsebytes(source)
        names = sorted(name.lower() for name in message.keys())
        known = ["content-transfer-encoding", "content-type", "date", "from", "message-id", "mime-version", "subject", "to"]
        case.expect(names == known, f"header lines of the result mail: {names}")
        case.expect(not message.defects, f"{message.defects}")


def empty(directory):
    shutil.rmtree(directory)
    directory.mkdir()


def recording(case):
    path = case.place.directory / "leer.wav"
    if not path.exists():
        path.write_bytes(b"RIFF$\0\0\0WAVEfmt \x10\0\0\0\1\0\1\0@\x1f\0\0@\x1f\0\0\1\0\x08\0data\0\0\0\0")
    return path


def set_option(case, name, value):
    settings = case.place.directory / "config" / "settings.toml"
    lines = [line for line in settings.read_text().split("\n") if not line.startswith(f"{name} ")]
    lines.insert(lines.index("[Options]") + 1, f"{name} = {value}")
    settings.write_text("\n".join(lines))


def bombs(large):
    count = 100_000 if large else 20_000
    deep = "Text\r\n"
    for level in range(1000):
        deep = f'Content-Type: multipart/mixed; boundary="g{level}"\r\n\r\n--g{level}\r\n{deep}\r\n--g{level}--\r\n'
    head = "From: a@example.org\r\nTo: b@example.org\r\nDate: Mon, 5 Jan 2026 10:00:00 +0100\r\nMIME-Version: 1.0\r\n"
    yield "1000 levels", (head + "Subject: Tief\r\n" + deep).encode()
    letters = "Text\r\n"
    for _ in range(1000):
        letters = "Content-Type: message/rfc822\r\n\r\n" + letters
    yield "1000 letters in one another", (head + "Subject: Briefe\r\n" + letters).encode()
    parts = "--g\r\n\r\nx\r\n" * count
    yield f"{count} parts", (head + 'Subject: Breit\r\nContent-Type: multipart/mixed; boundary="g"\r\n\r\n' + parts + "--g--\r\n").encode()
    yield "header of 10 MB", (head + "Subject: Kopf\r\nX-Lang: " + "a " * 5_000_000 + "\r\n\r\nText").encode()
    yield "subject of 10 MB", (head + "Subject: " + "=?utf-8?Q?a_?= " * 650_000 + "\r\n\r\nText").encode()
    yield "300000 header lines", (head + "Subject: Zeilen\r\n" + "X-a: b\r\n" * 300_000 + "\r\nText").encode()
    people = ",\r\n ".join(f"Name {number} <n{number}@example.org>" for number in range(100_000))
    yield "100000 recipients", (f"Subject: Alle\r\nTo: {people}\r\nCc: {people}\r\n\r\nText").encode()
    yield "groups in one another", (head + "Subject: Gruppen\r\nCc: " + "a:" * 100_000 + ";" * 100_000 + "\r\n\r\nText").encode()
    yield "comments in one another", (head + "Subject: Klammern\r\nCc: " + "(" * 200_000 + "\r\n\r\nText").encode()
    yield "boundary without end", (head + "Subject: Grenze\r\nContent-Type: multipart/mixed; boundary=\"" + "g" * 1_000_000).encode()
    yield "boundary everywhere", (head + 'Subject: Striche\r\nContent-Type: multipart/mixed; boundary="-"\r\n\r\n' + "--" * 2_000_000).encode()
    yield "base64 without end", (head + "Subject: Base64\r\nContent-Transfer-Encoding: base64\r\n\r\n" + "QUJD" * 5_000_000).encode()
    yield "base64 of nothing", (head + "Subject: Leer\r\nContent-Transfer-Encoding: base64\r\n\r\n" + "=\r\n " * 3_000_000).encode()
    yield "uuencode without end", (head + "Subject: UU\r\nContent-Transfer-Encoding: x-uuencode\r\n\r\nbegin 644 x\r\n" + "M" * 10_000_000).encode()
    yield "parameters without end", (head + "Subject: Angaben\r\nContent-Type: text/plain" + "".join(f"; a*{number}*=%41" for number in range(100_000)) + "\r\n\r\nText").encode()
    yield "tags without end", (head + "Subject: HTML\r\nContent-Type: text/html\r\n\r\n" + "<a href='cid:x' style=\"" * 400_000).encode()
    yield "slashes without end", (head + "Subject: Striche\r\nContent-Type: text/html\r\n\r\n<p style='" + "/\\2f&#47;" * 1_000_000).encode()


def test_bombs(case):
    """Each ends in bounded time and memory. The bounds only tell an end from none; what it took is printed."""
    for name, source in bombs(case.large):
        file = case.place.directory / "Bombe.eml"
        file.write_bytes(source)
        empty(case.place.archive)
        archive = f"Gemeinsam/{name}"
        control = case.place.directory / "steuer.txt"
        control.write_text(f"command=archivecopymove\nsrcarchive=/Archive/{archive}\ndstdirectory={case.place.archive}\n{ALL}")
        told = [f"{name} ({len(source) / 1e6:.1f} MB):"]
        for command in (["velmoractl", "store", "deliver", "--archive", archive, file], ["velmora", f"-b:{control}"]):
            status, seconds, mebibytes = measured(case, command)
            told.append(f"{seconds:.1f} s, {mebibytes:.0f} MiB")
            case.expect(status == DONE, f"{name}: {command[0]} ended with {status}: {case.place.log_entries()[-3:]}")
            case.expect(mebibytes < 2000, f"{name}: {command[0]} took {mebibytes:.0f} MiB")
        print("   ", *told, flush=True)
        case.expect(any(path.read_bytes() == source for path in case.place.archive.rglob("*.eml") if path.stat().st_size == len(source)),
                    f"{name}: the original is not in the archive")
        case.names_are_sound()


def measured(case, command, longest=300):
    """Exit status, negative when it had to be ended; seconds of the processor; the most memory in MiB, at least ours."""
    running = subprocess.Popen([case.place.programs / command[0], *map(str, command[1:])], env=case.place.environment,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    stop = threading.Timer(longest, running.kill)
    stop.start()
    _, status, usage = os.wait4(running.pid, 0)
    stop.cancel()
    running.returncode = os.waitstatus_to_exitcode(status)
    return running.returncode, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", type=pathlib.Path, required=True, help="where the programs lie")
    parser.add_argument("--only", default="", help="the cases whose name holds this")
    parser.add_argument("--keep", type=pathlib.Path, help="work here and leave everything standing")
    parser.add_argument("--large", action="store_true", help="bombs of full size, which take minutes")
    options = parser.parse_args()

    def make_case(place, name):
        case = Case(place, name)
        case.large = options.large
        return case

    with tempfile.TemporaryDirectory() as directory:
        place = workplace.Workplace((options.keep or pathlib.Path(directory)).resolve(), options.bin.resolve(), [])
        problems = workplace.run_cases(place, make_case, dict(globals()), options.only)
    sys.exit(1 if problems else 0)


main()
