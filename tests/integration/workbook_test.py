#!/usr/bin/env python3
"""Workbooks between Velmora, Gnumeric and LibreOffice: workbook_test.py --tool WORKBOOK_TOOL --designs DIR

Every cell of what one program wrote is compared with what the others read.
"""

import argparse
import datetime
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent))
from spreadsheets import DIGITS, Sheet, differences, gnumeric, libreoffice, read, run_tool, to_text, write  # noqa: E402

At = datetime.datetime
RECORD_DATA = 8224  # of the shared string table: where texts are cut
LONGEST = 32767

ADDRESS_COLUMNS = ["Anzeigename", "Fax", "Nachname", "Vorname", "Initialen", "Anrede", "Titel", "Geburtstag", "Firma",
                   "Straße", "PLZ", "Ort", "Land", "Bundesland", "WebSite", "Geschäftlich", "Privat", "Mobil", "AltFax",
                   "EMail", "VoiceBox", "SMS_Pager", "Kommentar", "Kategorien", "AltEMail", "PDA_Kategorie"]
USER_COLUMNS = ["Name", "UserID", "EMail", "UserDir"]


class Case:
    def __init__(self, directory, tool, designs):
        self.directory, self.tool, self.designs = directory, tool, designs
        self.problems = []
        directory.mkdir()

    def expect(self, holds, what):
        if not holds:
            self.problems.append(what)

    def same(self, expected, seen, who):
        digits = DIGITS if "LibreOffice" in who else None
        self.problems += [f"{who}: {problem}" for problem in differences(expected, seen, digits)]

    def all_agree(self, books):
        """{name: sheets}: we, Gnumeric and LibreOffice read from the written files what was to be written."""
        files = {self.directory / f"{name}.xls": sheets for name, sheets in books.items()}
        for path, sheets in files.items():
            write(self.tool, path, sheets)
            self.same(sheets, read(self.tool, path), f"{path.name} read back")
            self.same(sheets, gnumeric(path, self.directory), f"{path.name} in Gnumeric")
        for path, seen in libreoffice(list(files), self.directory).items():
            self.same(files[path], seen, f"{path.name} in LibreOffice")

    def append(self, path, sheet, *rows):
        return run_tool(self.tool, "append", path, sheet, text=to_text([Sheet.of_rows("x", rows)]))


def test_cells_of_every_type(case):
    texts = ["Größe", "5 €", "🙂", "Zeile 1\nZeile 2\n\nZeile 4", 'mit "Anführung" und \'Strich\'', "a\tb", "  innen   ",
             "Привет", "=1+1", "+49 30 1234", "@SUMME(A1)", "-5", "'0123", "0123", "<b>&amp;</b>", "日本語", "ﬀ",
             "a🙂b€c", "x" * LONGEST, "€" * LONGEST, "🙂" * (LONGEST // 2), "#DIV/0!", "WAHR", "31.12.2026"]
    numbers = [0.0, 1.0, -1.0, 0.1, 1 / 3, 1e300, -1e-300, 123456789012345.0, 2.0 ** 53, 1073741823.0, 12.34]
    dates = [At(1900, 1, 1), At(1900, 2, 28), At(1900, 3, 1), At(1969, 12, 31, 23, 59, 59), At(2000, 2, 29),
             At(2026, 12, 31, 23, 59, 58), At(2026, 6, 1), At(9999, 12, 31)]
    times = [datetime.timedelta(hours=6), datetime.timedelta(hours=23, minutes=59, seconds=59)]
    rows = [["Kopf", "Zahl €"], texts, [], numbers, [True, False], dates, times,
            [None, "hinter leer", None, None, 5.0], []]
    case.all_agree({"alles": [
        Sheet.of_rows("Alles", rows, header_rows=1), Sheet("Leer"),
        Sheet.of_rows("Umläute & €uro 🙂", [[None], [None, 1.0]]), Sheet.of_rows("Versteckt", [["x"]], hidden=True),
        Sheet.of_rows("x" * 31, [["letzter"]]), Sheet.of_rows("Weit", [[None] * 255 + ["rechts"]] + [[]] * 65534 + [["unten"]])]})


def test_ten_thousand_addresses(case):
    rows = [ADDRESS_COLUMNS]
    for n in range(10_000):
        rows.append([f"Müller {n}" if c == 0 else f"Wert {n * 26 + c} äöü" if c % 3 else "gleich €" if c % 2 else None
                     for c in range(26)])
    case.all_agree({"adressen": [Sheet.of_rows("Adressen", rows, header_rows=1)]})


def test_texts_across_record_ends(case):
    """A text begins, is cut and ends at every offset before the end of a record; and thousands anywhere."""
    rows = []
    for distance in range(70):
        # Eight bytes at the start of the table are its counts, three at that of a text its length and flags.
        filler = "f" * (RECORD_DATA - 8 - 3 - distance)
        rows.append((distance, [[filler, "schmal, äöü, bis hinter das Ende"], ["breit €🙂€🙂€🙂€🙂€🙂", "x", "€"]]))
    books = {f"ende{distance}": [Sheet.of_rows("Blatt", cells)] for distance, cells in rows}
    choice = random.Random(7)
    alphabets = ["abc xyz", "äöüß", "€ uro", "🙂😀a", "日本"]
    texts = ["".join(choice.choices(choice.choice(alphabets), k=choice.choice([1, 7, 50, 400, 3000, 9000])))
             for _ in range(3000)]
    books["viele"] = [Sheet.of_rows("Blatt", [[f"{n}:{text.strip()}"] for n, text in enumerate(texts)])]
    case.all_agree(books)


def test_templates(case):
    for file, sheet, columns in (("StdVelmoraAddressSheet.xls", "Adressen", ADDRESS_COLUMNS),
                                 ("StdVelmoraUserListSheet.xls", "Benutzer", USER_COLUMNS)):
        wanted = [Sheet.of_rows(sheet, [columns], header_rows=1)]
        case.same(wanted, read(case.tool, case.designs / file), file)
        case.same(wanted, gnumeric(case.designs / file, case.directory), f"{file} in Gnumeric")
        case.same(wanted, libreoffice([case.designs / file], case.directory)[case.designs / file], f"{file} in LibreOffice")


FOREIGN = """<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0" xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0"
 xmlns:number="urn:oasis:names:tc:opendocument:xmlns:datastyle:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:of="urn:oasis:names:tc:opendocument:xmlns:of:1.2" office:version="1.2" office:mimetype="application/vnd.oasis.opendocument.spreadsheet"><office:automatic-styles>
<number:date-style style:name="N1"><number:day number:style="long"/><number:text>. </number:text><number:month
 number:textual="true" number:style="long"/><number:text> </number:text><number:year number:style="long"/></number:date-style>
<number:date-style style:name="N2"><number:year number:style="long"/><number:text>-</number:text><number:month
 number:style="long"/><number:text>-</number:text><number:day number:style="long"/><number:text> </number:text><number:hours
 number:style="long"/><number:text>:</number:text><number:minutes number:style="long"/><number:text>:</number:text><number:seconds
 number:style="long"/></number:date-style><number:boolean-style style:name="N3"><number:boolean/></number:boolean-style>
<number:time-style style:name="N4"><number:hours number:style="long"/><number:text>:</number:text><number:minutes
 number:style="long"/></number:time-style>
<number:currency-style style:name="N5"><number:number number:decimal-places="2" number:min-integer-digits="1"/><number:text>
 </number:text><number:currency-symbol>€</number:currency-symbol></number:currency-style>
<style:style style:name="d" style:family="table-cell" style:data-style-name="N1"/>
<style:style style:name="dt" style:family="table-cell" style:data-style-name="N2"/>
<style:style style:name="b" style:family="table-cell" style:data-style-name="N3"/>
<style:style style:name="t" style:family="table-cell" style:data-style-name="N4"/>
<style:style style:name="e" style:family="table-cell" style:data-style-name="N5"/>
<style:style style:name="hidden" style:family="table"><style:table-properties table:display="false"/></style:style>
</office:automatic-styles><office:body><office:spreadsheet>
<table:table table:name="{sheet}"><table:table-row>{formulas}</table:table-row></table:table>
<table:table table:name="Adressen"><table:table-row>{header}</table:table-row><table:table-row>{first}</table:table-row></table:table>
<table:table table:name="Geheim" table:style-name="hidden"><table:table-row>{header}</table:table-row></table:table>
</office:spreadsheet></office:body></office:document>"""


def foreign_cell(kind=None, value="", style="", formula="", text=""):
    attribute = {"float": "value", "date": "date-value", "boolean": "boolean-value", "time": "time-value"}.get(kind)
    parts = [f'table:style-name="{style}"' if style else "", f'table:formula="of:={formula}"' if formula else "",
             f'office:value-type="{kind}"' if kind else "", f'office:{attribute}="{value}"' if attribute else ""]
    lines = "".join(f"<text:p>{line}</text:p>" for line in text.split("\n")) if text else ""
    return f"<table:table-cell {' '.join(filter(None, parts))}>{lines}</table:table-cell>"


def office_workbook(case, name, formulas, header, first, sheet="Rechnung €"):
    """A workbook of three sheets as LibreOffice writes it."""
    source = case.directory / f"{name}.fods"
    source.write_text(FOREIGN.format(sheet=sheet, formulas="".join(formulas), header="".join(header), first="".join(first)))
    return libreoffice([source], case.directory, "xls:MS Excel 97")[source]


def by_gnumeric(path, kind, name):
    target = path.with_name(f"{name}.xls")
    subprocess.run(["ssconvert", "-T", f"Gnumeric_Excel:{kind}", path, target], check=True, capture_output=True)
    return target


def append_to(case, path, reference):
    """Appends to the second sheet; all that the reference has, and the new record, must be there afterwards."""
    case.same(reference, read(case.tool, path), f"{path.name} read")
    done = case.append(path, "adressen", ["ORT", "Name"], ["Köln €", "=Neu"])
    case.expect(done.returncode == 0, f"{path.name}: {done.stderr}")
    first, second, third = reference
    wanted = [first, Sheet(second.name, second.cells | {(2, 0): "=Neu", (2, 4): "Köln €"}), third]
    case.same(wanted, gnumeric(path, case.directory), f"{path.name} appended to, in Gnumeric")
    case.same(wanted, libreoffice([path], case.directory)[path], f"{path.name} appended to, in LibreOffice")


def test_appending_to_foreign_workbooks(case):
    """LibreOffice writes the truth value of a formula as a number. Gnumeric cannot write long texts of formulas."""
    formulas = [foreign_cell("float", 3, formula="1+2"), foreign_cell("string", formula="&quot;a&quot;&amp;&quot;ö€🙂&quot;"),
                foreign_cell("boolean", "true", "b", formula="1&lt;2"), foreign_cell("float", 0, formula="1/0"),
                foreign_cell("float", 0, formula="SUM([.A1];[.G1])"), foreign_cell("float", 46387, "d", formula="DATE(2026;12;31)"),
                foreign_cell("float", 0.1), foreign_cell("string", formula="REPT(&quot;lang €&quot;;{count})")]
    header = [foreign_cell("string", text=text) for text in ("Name", "Geburtstag", "Name", "", "Ort")]
    first = [foreign_cell("string", text="Anna\nMüller"), foreign_cell("date", "2026-12-31", "d"),
             foreign_cell("date", "2026-12-31T23:59:01", "dt"), foreign_cell("boolean", "true", "b"),
             foreign_cell("time", "PT06H30M00S", "t"), foreign_cell("float", 12.5, "e"), foreign_cell("float", -7),
             foreign_cell(), foreign_cell("string", text="hinter leer 🙂")]
    names = ["Name", "Geburtstag", "Name", None, "Ort"]
    for count, make in ((1500, lambda path: path), (100, lambda path: by_gnumeric(path, "excel_biff8", "gnumeric"))):
        reference = [
            Sheet.of_rows("Rechnung €", [[3.0, "aö€🙂", 1.0, "#DIV/0!", 3.1, At(2026, 12, 31), 0.1, "lang €" * count]]),
            Sheet.of_rows("Adressen", [names, ["Anna\nMüller", At(2026, 12, 31), At(2026, 12, 31, 23, 59, 1), True,
                                               datetime.timedelta(hours=6, minutes=30), 12.5, -7.0, None, "hinter leer 🙂"]]),
            Sheet.of_rows("Geheim", [names], hidden=True)]
        counted = [cell.replace("{count}", str(count)) for cell in formulas]
        append_to(case, make(office_workbook(case, f"office{count}", counted, header, first)), reference)


def test_appending_to_a_workbook_of_excel_95(case):
    """Gnumeric cannot write characters beyond ASCII into such a workbook."""
    formulas = [foreign_cell("float", 3, formula="1+2"), foreign_cell("string", formula="&quot;a&quot;&amp;&quot;b&quot;")]
    header = [foreign_cell("string", text=text) for text in ("Name", "Geburtstag", "", "", "Ort")]
    first = [foreign_cell("string", text="Anna"), foreign_cell("date", "2026-12-31", "d"), foreign_cell("boolean", "true", "b")]
    reference = [Sheet.of_rows("Rechnung", [[3.0, "ab"]]),
                 Sheet.of_rows("Adressen", [["Name", "Geburtstag", None, None, "Ort"], ["Anna", At(2026, 12, 31), True]]),
                 Sheet.of_rows("Geheim", [["Name", "Geburtstag", None, None, "Ort"]], hidden=True)]
    office = office_workbook(case, "ascii", formulas, header, first, "Rechnung")
    append_to(case, by_gnumeric(office, "excel_biff7", "excel95"), reference)


def test_full_disk(case):
    """A workbook is appended to on a disk that has no room for its successor."""
    disk = case.directory / "platte"
    disk.mkdir()
    subprocess.run(["mount", "-t", "tmpfs", "-o", "size=1m", "tmpfs", disk], check=True)
    path = write(case.tool, disk / "a.xls", [Sheet.of_rows("Adressen", [["Name"], ["alt"]], header_rows=1)])
    old = path.read_bytes()
    too_much = [["Name"]] + [[f"{n} " + "x" * 1000] for n in range(3000)]
    done = case.append(path, "Adressen", *too_much)
    case.expect(done.returncode == 1 and done.stderr.startswith("61 "), f"full disk: {done.stderr}")
    case.expect(path.read_bytes() == old, "a full disk changed the workbook")
    case.expect([entry.name for entry in disk.iterdir()] == ["a.xls"], f"left on the disk: {list(disk.iterdir())}")
    case.expect(case.append(path, "Adressen", ["Name"], ["neu"]).returncode == 0, "no append when there is room again")
    subprocess.run(["mount", "-o", "remount,ro", disk], check=True)
    old = path.read_bytes()
    done = case.append(path, "Adressen", ["Name"], ["neu"])
    case.expect(done.returncode == 1 and path.read_bytes() == old, f"read-only disk: {done.stderr}")
    subprocess.run(["umount", disk], check=True)


def test_files_that_are_no_workbooks(case):
    good = write(case.tool, case.directory / "gut.xls",
                 [Sheet.of_rows("Adressen", [["Name"]] + [[f"Wert {n}"] for n in range(500)])]).read_bytes()
    encrypted = case.directory / "geheim.xls"
    contents = [b"", b"x", b"PK\x03\x04" + bytes(100), b"<html><table></table></html>", good[:512], good[:5000],
                random.Random(3).randbytes(20_000), good[:512] + random.Random(4).randbytes(len(good) - 512)]
    for content in contents:
        encrypted.write_bytes(content)
        done = case.append(encrypted, "Adressen", ["Name"], ["neu"])
        case.expect(done.returncode == 1 and done.stderr.startswith("3274 "), f"{content[:8]}: {done.stderr}")
        case.expect(encrypted.read_bytes() == content, "a file that is no workbook was changed")
    done = case.append(case.directory / "fehlt.xls", "Adressen", ["Name"], ["neu"])
    case.expect(done.returncode == 1 and done.stderr.startswith("53 "), done.stderr)


def main():
    if os.environ.pop("VELMORA_TEST_NAMESPACE", "") != "own":
        command = ["unshare", "--mount"] + ([] if os.geteuid() == 0 else ["--map-root-user"])
        if subprocess.run([*command, "true"], stderr=subprocess.DEVNULL).returncode != 0:
            command += ["--propagation", "unchanged"]  # a root directory that is no mount point, as after chroot
        os.environ["VELMORA_TEST_NAMESPACE"] = "own"
        os.execvp("unshare", [*command, sys.executable, *sys.argv])
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--tool", type=pathlib.Path, required=True, help="the program workbook_tool")
    parser.add_argument("--designs", type=pathlib.Path, required=True, help="where the templates lie")
    parser.add_argument("cases", nargs="*", help="the cases to run, all unless told")
    options = parser.parse_args()
    problems = 0
    with tempfile.TemporaryDirectory() as directory:
        os.environ["HOME"] = directory
        cases = {name[5:]: run for name, run in globals().items() if name.startswith("test_")}
        for name, run in cases.items():
            if options.cases and name not in options.cases:
                continue
            case = Case(pathlib.Path(directory).resolve() / name, options.tool.resolve(), options.designs.resolve())
            start = time.monotonic()
            run(case)
            print(f"{name.replace('_', ' ')}: {len(case.problems)} problems, {time.monotonic() - start:.1f} s", flush=True)
            for problem in case.problems:
                print("  " + problem)
            problems += len(case.problems)
    sys.exit(1 if problems else 0)


main()
