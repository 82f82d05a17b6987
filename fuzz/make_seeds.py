#!/usr/bin/env python3
"""Seeds for the fuzz targets, a folder for each: make_seeds.py --bin DIR OUTPUT

What the programs write of the demo's messages (pages' descriptors, markers, lists of archives, settings, workbooks), and
small texts for the rest."""

import argparse
import pathlib
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests" / "integration"))
import workplace  # noqa: E402

COMMAND_LINES = ["", "-c/Archive/Gemeinsam", '-c "/Archive/Gemeinsam/Einkauf"', "-e\\\\S\\DAVID\\ARCHIVE\\COMMON\\0000001A.001", "-i", "-u",
                 "-r", "-w0", "-w1 -c/Archive", "-w2", "-wi", "-wa", "-w?", "-?", "-h", "-migrate", "-b:/etc/velmora/nachts.txt",
                 '-b:"Z:\\Mit Blank\\x.txt"', "Z:\\Mailarchiv\\index.html", "/srv/mailarchiv"]
CONTROL_FILES = [
    "command=archivecopymove\r\nsrcarchive=/Archive/Gemeinsam\r\nsrcarchive=/Archive/Benutzer\r\ndstdirectory=Z:\\srv\\m\r\n"
    "copymode=mov\r\ndelarcs=y\r\nsaveatt=y\r\nsaveeml=y\r\nsavesmtp=y\r\nsavecmt=y\r\nmakeidx=y\r\ndstnum=y\r\nlinkedarcs=n\r\n"
    "mailto=a@example.org\r\nmailsubject=%1 %2 %3\r\nmailtext=Zeile\r\n",
    "; Kommentar\r\ncommand=archivestatistics\r\nstatsarchive=/Archive\r\n",
    "command=copydavidlogs\r\ndstarchive=/Archive/System\r\n",
]
OPTION_FILES = [
    "[DvISE Archive Access Form]\r\nUserName=\r\nPassWord=\r\n[ArchiveProperties]\r\nLayoutFile=\r\n",
    "[DvISE Archive Access Form]\r\nUserName=anna\r\nPassWord=1234\r\nPasswordReplica=x\r\nLANGUAGE=de\r\nSPEECHTYPE=T2S\r\n"
    "[ArchiveProperties]\r\n layoutfile = x.htm \r\n; layoutfile=y\r\nKey=*wie es steht *\r\n",
]
CARDS = ["BEGIN:VCARD\r\nVERSION:2.1\r\nN;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:M=FCller;J=F6rg\r\nTEL;WORK;VOICE:+49 1\r\nEND:VCARD\r\n",
         "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Anna\r\nN:Muster;Anna;;;\r\nNOTE:Zeile\\nzwei\\, drei\r\n vier\r\nEND:VCARD\r\n"]


def record(path, name):
    text = b"\x03" + path.encode("cp1252") + b"\0\x04" + name.encode("cp1252") + b"\0"
    return b"VAR1" + bytes(109) + text.ljust(273, b"\0") + bytes(44)


class Seeds:
    def __init__(self, output):
        self.output = output

    def add(self, target, contents):
        folder = self.output / target
        folder.mkdir(parents=True, exist_ok=True)
        first = len(list(folder.iterdir()))
        for number, content in enumerate(dict.fromkeys(contents), first):
            (folder / f"{number:03}").write_bytes(content if isinstance(content, bytes) else content.encode("cp1252"))


def of_the_demo(seeds, programs, directory):
    messages = directory / "demo"
    subprocess.run([sys.executable, ROOT / "demo" / "make_messages.py", messages], check=True)
    place = workplace.Workplace(directory, programs, [messages])
    place.deliver()
    place.export()
    seeds.add("mail_parser", place.sources)
    seeds.add("descriptor", [path.read_bytes() for path in sorted(place.archive.rglob("*.add"))])
    seeds.add("marker", [path.read_bytes() for path in sorted(place.archive.rglob("*.vla"))])
    lists = [path.read_bytes() for path in sorted((directory / "store").rglob("archive.*")) if path.name.lower() in ("archive.dir", "archive.add")]
    for target in ("archive_record", "record_edit"):
        seeds.add(target, lists + [record("\\\\S\\DAVID\\ARCHIVE\\X", "X"), bytes(430), record("", "")[:429]])
    seeds.add("settings", [path.read_bytes() for path in sorted((directory / "config").rglob("*.toml"))] + ['[Options]\nA = "1"\n'])


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", type=pathlib.Path, required=True, help="where the programs lie")
    parser.add_argument("output", type=pathlib.Path)
    options = parser.parse_args()
    shutil.rmtree(options.output, ignore_errors=True)
    seeds = Seeds(options.output)
    with tempfile.TemporaryDirectory() as directory:
        of_the_demo(seeds, options.bin.resolve(), pathlib.Path(directory).resolve())
    designs = options.bin / "Designs"
    seeds.add("design", [path.read_bytes() for path in sorted(designs.rglob("*.ini"))])
    seeds.add("forms", [path.read_bytes() for path in sorted(designs.rglob("*.htm"))])
    seeds.add("workbook", [path.read_bytes() for path in sorted(designs.rglob("*.xls"))])
    seeds.add("control_file", CONTROL_FILES)
    seeds.add("command_line", COMMAND_LINES)
    seeds.add("hand_over", [line + "\r\n" for line in COMMAND_LINES])
    seeds.add("archive_ini", OPTION_FILES)
    seeds.add("vcard", [(ROOT / "demo" / "adressen.vcf").read_bytes()] + CARDS)


main()
