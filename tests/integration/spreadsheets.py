"""Workbooks as the tool of the tests describes them, and as Gnumeric and LibreOffice see them.

A workbook is a list of sheets; a sheet is a Sheet with its cells by (row, column). A cell is a str, float, bool or
datetime; a time without a day is a timedelta.
"""

import dataclasses
import datetime
import math
import pathlib
import re
import subprocess
import xml.etree.ElementTree as ElementTree

NULL_DAY = datetime.datetime(1899, 12, 30)
FIRST_OF_MARCH_1900 = datetime.datetime(1900, 3, 1)


@dataclasses.dataclass
class Sheet:
    name: str
    cells: dict = dataclasses.field(default_factory=dict)
    header_rows: int = 0
    hidden: bool = False

    @classmethod
    def of_rows(cls, name, rows, **more):
        cells = {(r, c): value for r, row in enumerate(rows) for c, value in enumerate(row) if value is not None}
        return cls(name, cells, **more)


# --- Our side. ---

def cell_text(value):
    if value is None:
        return "empty"
    if isinstance(value, bool):
        return f"bool {int(value)}"
    if isinstance(value, str):
        return "text " + value.encode().hex()
    if isinstance(value, datetime.datetime):
        value -= NULL_DAY
    if isinstance(value, datetime.timedelta):
        return f"date {value.days * 86400 + value.seconds}"
    return f"number {float(value)!r}"


def to_text(sheets):
    lines = []
    for sheet in sheets:
        lines.append(f"sheet {sheet.header_rows} {int(sheet.hidden)} {sheet.name.encode().hex()}")
        columns = {}  # of each row that has any
        for row, column in sheet.cells:
            columns[row] = max(columns.get(row, 0), column + 1)
        for row in range(1 + max(columns, default=-1)):
            lines.append("row")
            lines += [cell_text(sheet.cells.get((row, column))) for column in range(columns.get(row, 0))]
    return "\n".join(lines) + "\n"


def from_text(text):
    sheets, row, column = [], -1, 0
    for line in text.splitlines():
        kind, _, value = line.partition(" ")
        if kind == "sheet":
            header, hidden, name = value.split(" ")
            sheets.append(Sheet(bytes.fromhex(name).decode(), {}, int(header), hidden == "true" or hidden == "1"))
            row = -1
        elif kind == "row":
            row, column = row + 1, 0
        else:
            if kind == "date":
                moment = datetime.timedelta(seconds=int(value))
                value = moment if moment.days == 0 else NULL_DAY + moment
            elif kind == "text":
                value = bytes.fromhex(value).decode()
            elif kind == "number":
                value = float(value)
            elif kind == "bool":
                value = value == "1"
            if kind != "empty":
                sheets[-1].cells[row, column] = value
            column += 1
    return sheets


# --- Gnumeric. ---

def gnumeric(workbook, directory):
    """The workbook as ssconvert reads it. It writes serial numbers, as Excel counts them, and formats."""
    target = directory / (workbook.stem + ".gnumeric-xml")
    subprocess.run(["ssconvert", "-T", "Gnumeric_XmlIO:sax:0", workbook, target], check=True, capture_output=True)
    space = "{http://www.gnumeric.org/v10.dtd}"
    sheets = []
    for node in ElementTree.parse(target).getroot().iter(space + "Sheet"):
        sheet = Sheet(node.findtext(space + "Name"), hidden="HIDDEN" in node.get("Visibility", ""))
        dates = [tuple(int(region.get(edge)) for edge in ("startRow", "endRow", "startCol", "endCol"))
                 for region in node.iter(space + "StyleRegion") if is_date_format(region.find(space + "Style").get("Format"))]
        for cell in node.iter(space + "Cell"):
            row, column = int(cell.get("Row")), int(cell.get("Col"))
            is_date = any(top <= row <= bottom and left <= column <= right for top, bottom, left, right in dates)
            sheet.cells[row, column] = gnumeric_value(cell.get("ValueType"), cell.text or "", is_date)
        sheets.append(sheet)
    return sheets


def is_date_format(code):
    return code != "General" and re.search("[ymdhs]", re.sub(r'"[^"]*"|\\.', "", code)) is not None


def gnumeric_value(kind, text, is_date):
    if kind == "20":
        return text == "TRUE"
    if kind in ("30", "40"):
        return from_serial(float(text)) if is_date else float(text)
    return text


def from_serial(serial):
    """Excel counts a 29.2.1900."""
    seconds = round(serial * 86400)
    if seconds < 86400:
        return datetime.timedelta(seconds=seconds)
    return NULL_DAY + datetime.timedelta(seconds=seconds, days=1 if serial < 60 else 0)


# --- LibreOffice. ---

def libreoffice(workbooks, directory, target_format="fods"):
    """Workbooks as LibreOffice reads them, in one run: {file: sheets}; of another format the files it made."""
    done = subprocess.run(["soffice", f"-env:UserInstallation=file://{directory}/profile", "--headless",
                           "--convert-to", target_format, "--outdir", directory, *workbooks], capture_output=True, text=True)
    made = {workbook: directory / (workbook.stem + "." + target_format.split(":")[0]) for workbook in workbooks}
    missing = [str(path) for path in made.values() if not path.exists()]
    if missing:
        raise RuntimeError(f"LibreOffice did not make {missing}: {done.stdout}{done.stderr}")
    return {workbook: read_fods(path) for workbook, path in made.items()} if target_format == "fods" else made


DIGITS = 15  # that LibreOffice writes of a number

SPACES = {"office": "urn:oasis:names:tc:opendocument:xmlns:office:1.0",
          "table": "urn:oasis:names:tc:opendocument:xmlns:table:1.0",
          "text": "urn:oasis:names:tc:opendocument:xmlns:text:1.0",
          "style": "urn:oasis:names:tc:opendocument:xmlns:style:1.0",
          "calcext": "urn:org:documentfoundation:names:experimental:calc:xmlns:calcext:1.0"}


def name(short):
    prefix, _, rest = short.partition(":")
    return f"{{{SPACES[prefix]}}}{rest}"


def read_fods(path):
    root = ElementTree.parse(path).getroot()
    hidden_styles = {style.get(name("style:name")) for style in root.iter(name("style:style"))
                     if any(part.get(name("table:display")) == "false" for part in style)}
    sheets = []
    for table in root.iter(name("table:table")):
        if table.get(name("table:name")) is None:
            continue
        sheet = Sheet(table.get(name("table:name")), hidden=table.get(name("table:style-name")) in hidden_styles)
        row = 0
        for line in table.iter(name("table:table-row")):
            column = 0
            for cell in line:
                repeated = int(cell.get(name("table:number-columns-repeated"), 1))
                value = fods_value(cell)
                if value is not None:
                    rows = int(line.get(name("table:number-rows-repeated"), 1))
                    sheet.cells.update({(row + r, column + c): value for r in range(rows) for c in range(repeated)})
                column += repeated
            row += int(line.get(name("table:number-rows-repeated"), 1))
        sheets.append(sheet)
    return sheets


def fods_value(cell):
    kind = cell.get(name("office:value-type"))
    if cell.get(name("table:formula")) in ("of:=TRUE()", "of:=FALSE()"):  # how it holds the truth values of a workbook
        return cell.get(name("table:formula")) == "of:=TRUE()"
    if kind == "boolean":
        return cell.get(name("office:boolean-value")) == "true"
    if kind in ("float", "percentage", "currency"):
        return float(cell.get(name("office:value")))
    if kind == "date":
        return libreoffice_date(cell.get(name("office:date-value")))
    if kind == "time":
        hours, minutes, seconds = re.fullmatch(r"PT(\d+)H(\d+)M([\d.,]+)S", cell.get(name("office:time-value"))).groups()
        return datetime.timedelta(hours=int(hours), minutes=int(minutes), seconds=round(float(seconds.replace(",", "."))))
    if kind == "string":
        return "\n".join(paragraph_text(part) for part in cell if part.tag == name("text:p"))
    return None


def libreoffice_date(text):
    """LibreOffice counts no 29.2.1900: what Excel calls a day before it, it calls the day ahead of that."""
    moment = datetime.datetime.fromisoformat(text[:19])
    return moment + datetime.timedelta(days=1) if moment < FIRST_OF_MARCH_1900 else moment


def paragraph_text(node):
    text = node.text or ""
    for part in node:
        if part.tag == name("text:s"):
            text += " " * int(part.get(name("text:c"), 1))
        elif part.tag == name("text:tab"):
            text += "\t"
        elif part.tag == name("text:line-break"):
            text += "\n"
        else:
            text += paragraph_text(part)
        text += part.tail or ""
    return text


# --- Comparing. ---

def is_same(a, b, digits):
    if type(a) is not type(b):
        return False
    return math.isclose(a, b, rel_tol=0.5 * 10.0 ** (1 - digits)) if isinstance(a, float) and digits else a == b


def differences(expected, seen, digits=None, most=5):
    """Where two workbooks differ, in every cell and every sheet; `digits`: how many of a number were told."""
    if [sheet.name for sheet in expected] != [sheet.name for sheet in seen]:
        return [f"sheets {[sheet.name for sheet in seen]}, not {[sheet.name for sheet in expected]}"]
    found = []
    for want, have in zip(expected, seen):
        if want.hidden != have.hidden:
            found.append(f"{want.name}: hidden is {have.hidden}")
        for place in sorted(want.cells.keys() | have.cells.keys()):
            a, b = want.cells.get(place), have.cells.get(place)
            if not is_same(a, b, digits):
                found.append(f"{want.name} {place}: {b!r:.120}, not {a!r:.120}")
    return found[:most] + ([f"and {len(found) - most} more"] if len(found) > most else [])


def run_tool(tool, *words, text=None):
    return subprocess.run([tool, *map(str, words)], input=text, capture_output=True, text=True)


def write(tool, path, sheets):
    done = run_tool(tool, "write", path, text=to_text(sheets))
    if done.returncode != 0:
        raise RuntimeError(f"{path}: {done.stderr}")
    return pathlib.Path(path)


def read(tool, path):
    done = run_tool(tool, "dump", path)
    if done.returncode != 0:
        raise RuntimeError(f"{path}: {done.stderr}")
    return from_text(done.stdout)
