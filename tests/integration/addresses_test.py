#!/usr/bin/env python3
"""Addresses from a store in each format before readers that are not ours: addresses_test.py --bin DIR

Delimited text and GroupWise address books by Python's csv, vCards by vobject, workbooks by Gnumeric and LibreOffice.
"""

import argparse
import csv
import fcntl
import json
import os
import pathlib
import quopri
import re
import shutil
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import workplace  # noqa: E402

DONE, WITH_ERRORS, WRONG_USAGE, NO_SIGN_ON = 0, 1, 2, 3

# The columns of delimited text and sheets, each with the option of put-address that fills it.
COLUMNS = {
    "Anzeigename": "display-name", "Fax": "fax-number", "Nachname": "last-name", "Vorname": "first-name",
    "Initialen": "middle-initial", "Anrede": "salutation", "Titel": "title", "Geburtstag": "birthday",
    "Firma": "company", "Straße": "street", "PLZ": "postal-code", "Ort": "city", "Land": "country",
    "Bundesland": "state", "WebSite": "web-address", "Geschäftlich": "business-phone", "Privat": "home-phone",
    "Mobil": "mobile-phone", "AltFax": "second-fax", "EMail": "e-mail", "VoiceBox": "voice-box",
    "SMS_Pager": "pager", "Kommentar": "notes", "Kategorien": "categories", "AltEMail": "second-e-mail",
    "PDA_Kategorie": "pda-category",
}
# The columns of a GroupWise address book behind the type of the record.
TAGS = {
    "3001001E:Name": ["display-name"], "3A08001E:Telefonnummer (Büro)": ["business-phone"], "3A18001E:Abteilung": [],
    "3A23001E:Faxnummer": ["fax-number", "second-fax"], "3003001E:Email-Adresse": ["e-mail", "second-e-mail"],
    "3A06001E:Vorname": ["first-name", "middle-initial"], "3A11001E:Nachname": ["last-name"], "3A17001E:Titel": ["title"],
    "3A29001E:Adresse": ["street"], "3A27001E:Ort": ["city"], "3A28001E:Bundesland": ["state"],
    "3A26001E:Land": ["country"], "3A2A001E:Postleitzahl": ["postal-code"], "3002001E:Email-Typ": [],
    "3A19001E:Postverteiler": [], "3A09001E:Telefonnummer (Privat)": ["home-phone"],
    "3A1C001E:Mobiltelefonnummer": ["mobile-phone"], "3A21001E:Pager-Nummer": ["pager"], "3A1A001E:Telefonnummer": [],
    "600B001E:Anrede": ["salutation"], "600F001E:Eigentümer": [], "3A16001E:Organisation": ["company"],
    "3004001E:Kommentar": ["notes"], "3A00001E:Benutzer-ID": [], "6604001E:Domäne": [], "6609001E:Zusatzleitweg": [],
    "6605001E:Post-Office": [], "6603001E:GUID": [], "6607001E:Eindeutiger NDS-Name": [], "6608001E:Netzwerk-ID": [],
    "660D001E:Internet-Domäne": [], "660E001E:AIM/IM-Benutzername": [], "8000001E:Inhalt": [], "8000001E:URL": ["web-address"],
}
CARD_LINES = [
    "BEGIN", "VERSION", "FN", "N", "ORG", "TITLE", "TEL;WORK;VOICE", "TEL;HOME;VOICE", "TEL;CELL;VOICE", "TEL;PAGER;VOICE",
    "TEL;WORK;FAX", "TEL;HOME;FAX", "X-DAVID-VoiceBox", "X-DAVID-CATEGORY", "X-DAVID-2EMAIL", "X-DAVID-DEFAULTADDR",
    "X-DAVID-PDACategory", "EMAIL;PREF;INTERNET", "URL;WORK", "ADR;WORK;ENCODING=QUOTED-PRINTABLE",
    "LABEL;WORK;ENCODING=QUOTED-PRINTABLE", "BDAY", "X-DAVID-BDAY", "NOTE;ENCODING=QUOTED-PRINTABLE", "REV", "End",
]

TEXTS = [option for option in COLUMNS.values() if option != "categories"]
PLAIN = {option: f"Wert {number}" for number, option in enumerate(TEXTS)} | {
    "display-name": "Müller & Söhne", "birthday": "05.08.1970", "postal-code": "01067", "fax-number": "=1+1",
    "street": "Große Straße 1", "notes": "Erste Zeile\r\nZweite Zeile € ß", "categories": "5"}
# Whatever may break a line or a cell, in every field.
TRICKY = {option: f'{option} äß€ "A" \'B\' ; , |\t\x01\x1f\x7f 1\r\n2\r3\n4 🙂 Привет' for option in TEXTS} | {"categories": "65535"}
BARE = {"display-name": "Bare"}
ADDRESSES = sorted([PLAIN, TRICKY, BARE], key=lambda address: address["display-name"].lower())


def one_line(text):
    return re.sub(r"[\x00-\x1f\x7f-\x9f]", " ", text.replace("\r\n", " "))


def in_code_page(text):
    return text.encode("cp1252", "replace").decode("cp1252")


def value(address, option):
    """A field as a sheet has it."""
    if option == "categories":
        return ",".join(str(int(address.get(option, "0")) >> bit & 1) for bit in range(16))
    return one_line(address.get(option, ""))


def quoted(text):
    """What a text format makes of it."""
    return in_code_page(text.replace('"', "'"))


class Case:
    def __init__(self, place, name):
        self.place = workplace.Workplace(place.directory / name, place.programs, [])
        self.target = self.place.archive
        self.problems, self.name = [], name
        self.place.run("velmoractl", "store", "init", self.place.environment["VELMORA_STORE"], "--server", "PRUEFUNG")

    def expect(self, holds, what):
        if not holds:
            self.problems.append(f"{self.name}: {what}")

    def equal(self, found, wanted, what):
        self.expect(found == wanted, f"{what}\n  found  {found!r}\n  wanted {wanted!r}")

    def put(self, *addresses, archive="Gemeinsam/Kontakte"):
        for address in addresses:
            options = [text for option, value in address.items() for text in (f"--{option}", value)]
            self.place.run("velmoractl", "store", "put-address", "--archive", archive, *options)

    def export(self, status, *arguments, archive="Gemeinsam/Kontakte"):
        command = [self.place.programs / "velmoractl", "addresses", "export", *([archive] if archive else []), *arguments]
        done = subprocess.run(list(map(str, command)), env=self.place.environment, capture_output=True, text=True)
        self.expect(done.returncode == status, f"{arguments}: status {done.returncode}, not {status}: {done.stderr[-300:]}")
        self.log = "\n".join(self.place.log_entries())
        return done.stdout + done.stderr

    def log_names(self, *texts):
        for text in texts:
            self.expect(str(text) in self.log, f"the log does not name {str(text)!r}:\n{self.log[-1500:]}")

    def set_option(self, name, text):
        settings = self.place.directory / "config" / "settings.toml"
        lines = [line for line in settings.read_text().split("\n") if not line.startswith(name + " ")]
        settings.write_text("\n".join(lines).replace("[Options]\n", f"[Options]\n{name} = '{text}'\n"))

    def windows(self, path):
        return "Z:" + str(path).replace("/", "\\")

    def rows(self, path, separator):
        with open(path, encoding="cp1252", newline="") as file:
            return list(csv.reader(file, delimiter=separator, doublequote=False, strict=True))

    def names(self, folder="."):
        return sorted(path.name for path in (self.target / folder).iterdir() if path.suffix != ".vla")

    def is_delimited(self, path, addresses, separator=";"):
        wanted = [list(COLUMNS)] + [[quoted(value(a, o)) for o in COLUMNS.values()] for a in addresses]
        self.equal(self.rows(path, separator), wanted, path.name)

    def is_sheet(self, path, addresses):
        wanted = [list(COLUMNS)] + [[value(a, o) for o in COLUMNS.values()] for a in addresses]
        for reader in (by_gnumeric, by_libreoffice):
            self.equal(reader(path), wanted, f"{path.name} {reader.__name__}")


def read_sheet(folder):
    with open(next(folder.glob("*Adressen*.csv")), encoding="utf-8", newline="") as file:
        return list(csv.reader(file))


def by_gnumeric(path):
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["ssconvert", "-S", path, f"{folder}/%s.csv"], check=True, capture_output=True)
        return read_sheet(pathlib.Path(folder))


def by_libreoffice(path):
    with tempfile.TemporaryDirectory() as folder:
        # Every sheet, UTF-8, texts as they are.
        subprocess.run(["soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless", "--convert-to",
                        "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,false,false,false,false,-1",
                        "--outdir", folder, path], check=True, capture_output=True, env={**os.environ, "HOME": folder})
        return read_sheet(pathlib.Path(folder))


def test_delimited_text(case):
    case.put(*reversed(ADDRESSES))
    for separator, name in ((";", ";"), (",", ","), ("\t", "tab")):
        path = case.target / f"{name}.csv"
        said = case.export(WITH_ERRORS, "--format", "csv", "--separator", name, "--target", path)
        case.is_delimited(path, ADDRESSES, separator)
        case.expect("3 Adresse(n)" in said and "mit 1 Fehler(n)" in said, said)
    case.log_names("Warnung: 0 - 1 Adresse(n) mit Zeichen")  # the one that cp1252 cannot hold
    case.expect((case.target / ";.csv").read_bytes().count(b"\r\n") == 4, "a line break within a record")


def test_a_second_run_appends_with_one_header_and_overwriting_begins_anew(case):
    case.put(PLAIN)
    for name in ("a.csv", "a.nab", "a.xls"):
        for _ in range(2):
            case.export(DONE, "--format", name[2:], "--target", case.target / name)
    case.is_delimited(case.target / "a.csv", [PLAIN, PLAIN])
    case.is_sheet(case.target / "a.xls", [PLAIN, PLAIN])
    case.equal([row[0] for row in case.rows(case.target / "a.nab", ",")], [":::TAGMAP:::0FFE0003:***", "U", "U"], "nab")
    for name in ("a.csv", "a.nab", "a.xls"):
        case.export(DONE, "--format", name[2:], "--overwrite", "--target", case.target / name)
    case.is_delimited(case.target / "a.csv", [PLAIN])
    case.is_sheet(case.target / "a.xls", [PLAIN])
    case.equal(len(case.rows(case.target / "a.nab", ",")), 2, "records of the overwritten address book")


def test_groupwise(case):
    case.put(*ADDRESSES)
    path = case.target / "a.nab"
    case.export(WITH_ERRORS, "--format", "nab", "--target", path)
    head, *records = case.rows(path, ",")
    with open(path, encoding="cp1252", newline="") as file:
        tags = [":::TAGMAP:::0FFE0003:***"] + re.findall(r"[0-9A-F]{8}:[^,\r]*", file.readline().split("***", 1)[1])
    case.equal(head, tags, "tag map")
    case.equal(tags[1:], list(TAGS), "tags")
    for address, record in zip(ADDRESSES, records, strict=True):
        wanted = ["U"]
        for options in TAGS.values():
            if options == ["notes"]:
                text = f"{value(address, 'notes')}\r\nGeburtstag {value(address, 'birthday')}\r\nVoiceBox {value(address, 'voice-box')}"
            else:
                text = ",".join(value(address, option) for option in options)
            wanted.append(quoted(text))
        case.equal(record, wanted, address["display-name"])


def test_workbook(case):
    case.put(*ADDRESSES)
    path = case.target / "a.xls"
    case.export(DONE, "--format", "xls", "--target", path)  # nothing is lost here
    case.is_sheet(path, ADDRESSES)


def cards(case, folder="."):
    """What a foreign reader finds in each card of the folder."""
    files = sorted((case.target / folder).glob("*.vcf"))
    # The library is the system's, so the system's Python has to run it.
    reader = pathlib.Path(__file__).with_name("read_vcards.py")
    done = subprocess.run(["/usr/bin/python3", reader, *files], capture_output=True, text=True)
    case.expect(done.returncode == 0, f"a card cannot be read: {done.stderr[-1000:]}")
    return {pathlib.Path(name).name: card for name, card in json.loads(done.stdout or "{}").items()}


def test_vcards(case):
    case.put(*ADDRESSES)
    case.export(WITH_ERRORS, "--format", "vcf", "--target", case.target)
    found = cards(case)
    case.equal(len(found), 3, "cards")
    card = found["Mueller & Soehne.vcf"]
    same = ["display-name", "last-name", "first-name", "middle-initial", "salutation", "company", "title", "e-mail",
            "web-address", "street", "city", "state", "postal-code", "country", "voice-box", "notes", "categories"]
    case.equal([card[option] for option in same], [PLAIN[option] for option in same], "card")
    case.equal(card["phones"], [PLAIN[option] for option in ("business-phone", "home-phone", "mobile-phone", "pager",
                                                            "fax-number", "second-fax")], "telephones")
    case.equal((card["version"], card["bday"]), ("2.1", "19700805"), "version and birthday")
    # The library ends a text at its first comma, which means nothing in version 2.1.
    plain = (case.target / "Mueller & Soehne.vcf").read_bytes()
    label = quopri.decodestring(re.search(rb"\nLABEL;.*:(.*)\r\n", plain)[1]).decode("cp1252")
    case.equal(label, f"{PLAIN['street']}\r\n, {PLAIN['city']} {PLAIN['postal-code']}\r\n{PLAIN['country']}", "label")
    case.equal(found["Bare.vcf"]["bday"], "19000000", "no birthday")
    # Every value on its own line, whatever it holds.
    for path in case.target.glob("*.vcf"):
        lines = path.read_bytes().decode("cp1252").split("\r\n")
        case.equal([line.split(":", 1)[0] for line in lines], [*CARD_LINES, ""], f"lines of {path.name}")
        case.expect(not re.search(r"[\x00-\x1f]", "".join(lines)), f"a control character in {path.name}")
    tricky = next(path for path in case.target.glob("display*")).read_bytes().decode("cp1252")
    case.expect(f"\r\nFN:{in_code_page(value(TRICKY, 'display-name'))}\r\n" in tricky, "the name is not as it was")
    case.expect("1=0D=0A2=0D=0A3=0D=0A4 ? ??????\r\n" in tricky, "the notes have lost their line breaks")


def test_names_of_cards(case):
    names = ["Anna", "Anna", "x" * 70, "??*/\\:", "...", "#1~<a>|"]
    case.put(*({"display-name": name} for name in names))
    case.export(DONE, "--format", "vcf", "--target", case.target)
    wanted = sorted(["Anna.vcf", "Anna1.vcf", "x" * 59 + ".vcf", "  +---.vcf", "___.vcf", "_1-(a)-.vcf"])
    case.equal(case.names(), wanted, "names")
    case.equal(sorted(card["display-name"] for card in cards(case).values()), sorted(names), "nobody is missing")
    case.export(DONE, "--format", "vcf", "--overwrite", "--target", case.target)
    case.equal(len(case.names()), 2 * len(names), "cards of two runs")


def test_sub_archives(case):
    case.put({"display-name": "Oben"}, archive="Gemeinsam/Kontakte")
    case.put({"display-name": "Unten"}, archive="Gemeinsam/Kontakte/Mitte/Größe: 1")
    case.place.run("velmoractl", "store", "put-link", "--archive", "Gemeinsam/Kontakte/Leer", "--subject", "keine Adresse")
    arguments = ["--sub-archives", "--format", "csv", "--target", case.target]
    case.export(DONE, *arguments)
    case.export(DONE, *arguments)
    case.equal(case.names(), ["Kontakte", "Kontakte1"], "a second run has folders of its own")
    case.export(DONE, *arguments, "--overwrite")
    for top in case.names():
        case.equal(case.names(top), ["Adressbuch.csv", "Mitte"], f"an archive without addresses leaves nothing in {top}")
        case.is_delimited(case.target / top / "Adressbuch.csv", [{"display-name": "Oben"}])
        case.is_delimited(case.target / top / "Mitte" / "Groesse- 1" / "Adressbuch.csv", [{"display-name": "Unten"}])
    marker = (case.target / "Kontakte/Mitte/Groesse- 1/VelmoraAddrArc.vla").read_bytes().decode("cp1252").split("\r\n")
    case.equal(marker[:3], [";Velmora Address Archive", "ArchiveDisplayName=Größe: 1",
                            "ArchiveFullPath=/Archive/Gemeinsam/Kontakte/Mitte/Größe: 1"], "marker")


def test_address_books_and_the_default_target(case):
    case.put({"display-name": "Alle"}, archive="/Archive/Adressen")
    user = json.loads(case.place.run("velmoractl", "store", "list", "--json"))
    own = next(a for a in json.dumps(user, ensure_ascii=False).split('"') if re.fullmatch(r"/Archive/Benutzer/[^/]+/Adressen", a))
    case.put({"display-name": "Meine"}, archive=own)
    case.export(DONE, "--public", "--format", "csv", "--target", case.target / "alle", archive="")
    case.export(DONE, "--personal", "--format", "csv", "--target", case.target / "meine.txt", archive="")
    case.is_delimited(case.target / "alle.csv", [{"display-name": "Alle"}])
    case.is_delimited(case.target / "meine.txt", [{"display-name": "Meine"}])
    case.export(DONE, "--public", archive="")  # format, directory and name of the settings
    case.is_sheet(next(case.place.directory.rglob("Adressbuch.xls")), [{"display-name": "Alle"}])


def test_wrong_usage(case):
    case.export(WRONG_USAGE, archive="")
    case.export(WRONG_USAGE, "--public")
    case.export(WRONG_USAGE, "--format", "txt")
    case.export(WRONG_USAGE, "--format", "xls", "--separator", "tab")
    case.export(WRONG_USAGE, "--separator", ".")
    case.export(NO_SIGN_ON, "--store", case.target / "fehlt")
    case.export(WITH_ERRORS, archive="Gemeinsam/Fehlt")
    case.log_names("DvISE-Error", "Gemeinsam/Fehlt")
    case.equal(case.names(), [], "something was written")


def test_targets_that_cannot_be_written(case):
    case.put(PLAIN)
    for form in ("csv", "nab", "xls"):
        path = case.target / f"a.{form}"
        arguments = ["--format", form, "--target", path]
        case.export(DONE, *arguments)
        old = path.read_bytes()
        path.chmod(0o444)
        for more in ([], ["--overwrite"]):
            case.export(WITH_ERRORS, *arguments, *more)
            case.log_names("Fehler: 70 - ", case.windows(path))
        case.expect(path.read_bytes() == old, f"{path.name} has changed")
        path.chmod(0o644)
        with open(path, "rb") as holder:  # a lock of another program keeps nobody from appending, and breaks nothing
            fcntl.flock(holder, fcntl.LOCK_EX)
            case.export(DONE, *arguments)
        path.unlink()
        path.mkdir()
        (path / "x").write_text("x")
        case.export(WITH_ERRORS, "--format", form, "--target", case.target / "fehlt" / "a")
        case.log_names("Fehler: 76 - ")
        case.place.run("velmora", "-i")
        case.set_option({"csv": "CSVAddressForm", "nab": "GWAddressForm", "xls": "ExcelAddressForm"}[form], path.name)
        case.export(WITH_ERRORS, "--format", form, "--overwrite", "--target", case.target)
        case.log_names("Fehler: 70 - ", case.windows(path))
        case.expect((path / "x").read_text() == "x", "a directory in the place of the file has changed")
        shutil.rmtree(path)


def test_files_that_are_no_workbook_and_templates_that_are_missing(case):
    case.put(PLAIN)
    path = case.target / "a.xls"
    for content in (b"keine Arbeitsmappe", b"", bytes.fromhex("d0cf11e0a1b11ae1") + b"\xff" * 5000):
        path.write_bytes(content)
        case.export(WITH_ERRORS, "--format", "xls", "--target", path)
        case.log_names("Fehler: 3274 - ", case.windows(path))
        case.expect(path.read_bytes() == content, "a file that is no workbook has changed")
    case.export(DONE, "--format", "xls", "--overwrite", "--target", path)
    case.is_sheet(path, [PLAIN])
    designs = case.place.directory / "Designs"
    designs.mkdir()
    case.place.run("velmora", "-i")
    case.set_option("DesignPath", case.windows(designs))
    case.export(WITH_ERRORS, "--format", "xls", "--target", case.target / "b.xls")
    case.log_names("Fehler: 53 - ", "StdVelmoraAddressSheet.xls")
    case.is_sheet(case.target / "b.xls", [PLAIN])


def test_a_full_disk_leaves_the_old_file(case):
    for letter in "xyz":
        case.put({"display-name": "Groß", "notes": letter * 30_000})
    for form in ("csv", "nab", "xls"):
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=72k", "tmpfs", case.target], check=True)
        case.put(PLAIN, archive=f"Gemeinsam/{form}")
        path = case.target / f"a.{form}"
        case.export(DONE, "--format", form, "--target", path, archive=f"Gemeinsam/{form}")
        old = path.read_bytes()
        for more in ([], ["--overwrite"]):
            said = case.export(WITH_ERRORS, "--format", form, "--target", path, *more)
            case.log_names("Fehler: 61 - ", case.windows(path))
            case.expect("0 Adresse(n)" in said, f"addresses that are not in the file are counted: {said}")
            case.equal(path.read_bytes(), old, f"{form} {more}")
            case.equal(case.names(), [path.name], "something was left behind")
        subprocess.run(["umount", case.target], check=True)
    subprocess.run(["mount", "-t", "tmpfs", "-o", "size=72k", "tmpfs", case.target], check=True)
    said = case.export(WITH_ERRORS, "--format", "vcf", "--target", case.target)
    case.log_names("Fehler: 61 - ", case.windows(case.target / "Gross2.vcf"))
    case.expect("2 Adresse(n)" in said and case.names() == ["Gross.vcf", "Gross1.vcf"], "half a card")
    subprocess.run(["umount", case.target], check=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", type=pathlib.Path, required=True, help="where the programs lie")
    parser.add_argument("--only", default="", help="the cases whose name holds this")
    options = parser.parse_args()
    workplace.enter_mount_namespace()
    with tempfile.TemporaryDirectory() as directory:
        place = workplace.Workplace(pathlib.Path(directory).resolve(), options.bin.resolve(), [])
        problems = workplace.run_cases(place, Case, dict(globals()), options.only)
    sys.exit(1 if problems else 0)


main()
