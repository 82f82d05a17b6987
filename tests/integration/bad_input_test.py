#!/usr/bin/env python3
"""What goes wrong in the field, with the whole programs: bad_input_test.py --bin DIR MESSAGES...

Every case says what must come out: the exit status, what the log names, and that everything else is exported.
Runs in a mount namespace of its own, since a full and a read-only disk are among the cases.
"""

import base64
import email.message
import email.policy
import hashlib
import json
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import mail_archive  # noqa: E402
import workplace  # noqa: E402

DONE, WITH_ERRORS, NOTHING_RAN = 0, 1, 2
COPY = "command=archivecopymove\n"
FULL = "saveatt=y\nsaveeml=y\nsavesmtp=y\nmakeidx=y\n"


def mail(subject="Betreff", text="Text\r\n", attachments=(), **headers):
    message = email.message.EmailMessage(policy=email.policy.SMTP)
    message["From"], message["To"] = "Anna <anna@example.org>", "bernd@example.org"
    message["Date"] = "Mon, 05 Jan 2026 10:00:00 +0100"
    message["Subject"] = subject
    for name, value in headers.items():
        message[name] = value
    message.set_content(text)
    for name, data in attachments:
        message.add_attachment(data, maintype="application", subtype="octet-stream", filename=name)
    return message.as_bytes()


def raw(subject, body, *headers):
    lines = ["From: anna@example.org", "To: bernd@example.org", f"Subject: {subject}",
             "Date: Mon, 5 Jan 2026 10:00:00 +0100", *headers, "", body]
    return "\r\n".join(lines).encode()


class Case:
    """A fresh store with a few archives, and what a run over it did."""

    def __init__(self, place, name):
        self.place = workplace.Workplace(place.directory / name, place.programs, [])
        self.problems, self.name = [], name
        self.place.run("velmoractl", "store", "init", self.place.environment["VELMORA_STORE"], "--server", "PRUEFUNG")

    def deliver(self, archive, *sources):
        directory = self.place.directory / "mails"
        directory.mkdir(exist_ok=True)
        paths = []
        for source in sources:
            paths.append(directory / f"{len(self.place.sources):05}.eml")
            paths[-1].write_bytes(source)
            self.place.sources.append(source)
        self.place.run("velmoractl", "store", "deliver", "--archive", archive, *paths)

    def expect(self, holds, what):
        if not holds:
            self.problems.append(f"{self.name}: {what}")

    def export(self, status, text=FULL, archives=("/Archive/Gemeinsam",), target=None):
        control = self.place.directory / "steuer.txt"
        sources = "".join(f"srcarchive={archive}\n" for archive in archives)
        control.write_text(f"{COPY}{sources}dstdirectory={target or self.place.archive}\n{text}")
        self.run(control, status)

    def run(self, control, status):
        done = subprocess.run([self.place.programs / "velmora", f"-b:{control}"], env=self.place.environment,
                              capture_output=True, text=True)
        allowed = status if isinstance(status, tuple) else (status,)
        self.expect(done.returncode in allowed, f"exit status {done.returncode}, not {status}: {done.stderr[-300:]}")
        self.log = "\n".join(self.place.log_entries())

    def log_names(self, *texts):
        for text in texts:
            self.expect(text in self.log, f"the log does not name {text!r}:\n{self.log[-1500:]}")

    def archive_is_right(self, sources=None):
        for problem in mail_archive.check(self.place.archive, self.place.sources if sources is None else sources):
            self.expect(False, problem)

    def store_is_right(self):
        self.place.run("velmoractl", "store", "check")

    def entries(self):
        """Pages in the mail archive."""
        return sum(1 for _ in self.place.archive.rglob("*.add"))


def store_file(case, archive_directory, name):
    top = pathlib.Path(case.place.environment["VELMORA_STORE"])
    return next(path for path in top.rglob("*") if path.parent.name.lower() == archive_directory.lower()
                and path.name.lower() == name)


def tree_hash(directory):
    digest = hashlib.sha256()
    for path in sorted(pathlib.Path(directory).rglob("*")):
        digest.update(str(path).encode())
        if path.is_file():
            digest.update(path.read_bytes())
    return digest.hexdigest()


def test_control_file_that_is_missing(case):
    case.run(case.place.directory / "fehlt.txt", NOTHING_RAN)
    case.log_names("fehlt.txt")


def test_control_file_with_an_unknown_command(case):
    control = case.place.directory / "steuer.txt"
    control.write_text(f"command=archivkopie\n{COPY}srcarchive=/Archive/Gemeinsam\ndstdirectory={case.place.archive}\n")
    case.run(control, NOTHING_RAN)
    case.log_names("archivkopie")
    case.expect(not any(case.place.archive.iterdir()), "something was written")


def test_control_file_of_random_bytes(case):
    control = case.place.directory / "steuer.txt"
    control.write_bytes(random.Random(1).randbytes(100_000))
    case.run(control, NOTHING_RAN)
    control.write_bytes(b"command=archivecopymove\n" + b"srcarchive=" + b"x" * 1_000_000 + b"\ndstdirectory=" +
                        bytes(case.place.archive) + b"\n")
    case.run(control, NOTHING_RAN)


def test_archive_that_is_not_there(case):
    case.deliver("Gemeinsam/Da", mail())
    case.export(WITH_ERRORS, archives=("/Archive/Gemeinsam/Weg", "/Archive/Gemeinsam/Da"))
    case.log_names("Gemeinsam/Weg")
    case.archive_is_right()


def test_target_that_is_missing(case):
    case.deliver("Gemeinsam/A", mail())
    case.export(NOTHING_RAN, target=case.place.directory / "fehlt")
    case.log_names("fehlt", "Zielverzeichnis")


def mount(case, options):
    subprocess.run(["mount", "-t", "tmpfs", "-o", options, "tmpfs", case.place.archive], check=True)


def test_target_that_is_read_only(case):
    case.deliver("Gemeinsam/A", mail())
    mount(case, "ro")
    case.export(NOTHING_RAN, text=FULL + "copymode=mov\ndelarcs=y\n")
    case.log_names(str(case.place.archive).replace("/", "\\"))
    case.store_is_right()
    subprocess.run(["umount", case.place.archive], check=True)
    case.export(DONE)
    case.archive_is_right()  # the move that could write nothing has deleted nothing


def test_target_on_a_full_disk(case):
    sources = [mail(f"Nummer {n}", "Text " * 400, [("a.bin", random.Random(n).randbytes(20_000))]) for n in range(60)]
    case.deliver("Gemeinsam/A", *sources)
    mount(case, "size=1m")
    case.export(WITH_ERRORS, text=FULL + "copymode=mov\ndelarcs=n\n")
    case.log_names("Nummer")
    whole = [path.read_bytes() for path in case.place.archive.rglob("*.eml")]
    case.expect(len(whole) < len(sources), "the disk was not full")
    # What is not whole on the disk must still stand in the store, to the byte.
    subprocess.run(["umount", case.place.archive], check=True)
    case.export(DONE)
    left = [path.read_bytes() for path in case.place.archive.rglob("*.eml")]
    missing = set(sources) - set(left) - set(whole)
    case.expect(not missing, f"{len(missing)} messages are lost")
    case.expect(all(source in sources for source in left), "a message has changed")
    case.expect(len(left) >= len(sources) - len(whole), "too few are left")
    case.store_is_right()


def test_archive_data_that_is_damaged(case):
    for name in ("Gut", "Kaputt", "Ende"):
        case.deliver(f"Gemeinsam/{name}", mail(f"Aus {name}"))
    data = store_file(case, "KAPUTT", "archive.dat")
    good = data.read_bytes()
    for damage in (b"keine Datenbank" * 1000, good[:5000], good[:4096] + b"\xff" * (len(good) - 4096), b"x"):
        data.write_bytes(damage)
        before = tree_hash(case.place.environment["VELMORA_STORE"])
        shutil.rmtree(case.place.archive)
        case.place.archive.mkdir()
        case.export(WITH_ERRORS)
        case.log_names("Kaputt")
        case.archive_is_right([source for source in case.place.sources if b"Aus Kaputt" not in source])
        case.expect(tree_hash(case.place.environment["VELMORA_STORE"]) == before, "the damaged store was changed")


def test_deliveries_that_are_killed(case):
    """What was reported as delivered stands; what was not leaves no more than a note of the check."""
    mbox = case.place.directory / "viele.mbox"
    with open(mbox, "wb") as out:
        for number in range(3000):
            out.write(b"From x\n" + mail(f"Nummer {number}").replace(b"\r\n", b"\n") + b"\n")
    moment = random.Random(4)
    deliver = [case.place.programs / "velmoractl", "store", "deliver", "--archive", "Gemeinsam/A", mbox]
    for _ in range(12):
        run = subprocess.Popen(deliver, env=case.place.environment, stdout=subprocess.DEVNULL)
        time.sleep(moment.uniform(0.01, 0.5))
        run.send_signal(signal.SIGKILL)
        run.wait()
        case.store_is_right()
    before = len(stored_entries(case))
    case.place.run("velmoractl", *deliver[1:])
    case.expect(len(stored_entries(case)) == before + 3000, "not all were delivered")
    case.export(DONE, text="saveeml=y\n")
    case.expect(sum(1 for _ in case.place.archive.rglob("*.eml")) == before + 3000, "not all were exported")


def test_form_that_is_missing(case):
    designs = case.place.directory / "Designs"
    shutil.copytree(case.place.programs / "Designs", designs)
    (designs / "StdVelmoraMailForm.htm").unlink()
    case.place.run("velmora", "-i")  # stores the version, without which all settings would be wiped
    settings = case.place.directory / "config" / "settings.toml"
    windows_path = "z:" + str(designs).replace("/", "\\")
    settings.write_text(settings.read_text().replace("[Options]\n", f"[Options]\nDesignPath = '{windows_path}'\n"))
    case.deliver("Gemeinsam/A", mail("Eins"), mail("Zwei"))
    case.export(WITH_ERRORS)
    case.expect(case.log.count("StdVelmoraMailForm.htm") == 2, f"not one entry per message:\n{case.log}")
    case.expect(case.entries() == 0, "a page without a form")


BROKEN = [
    raw("Grenze fehlt", "--x\r\nContent-Type: text/plain\r\n\r\nText", "MIME-Version: 1.0",
        "Content-Type: multipart/mixed"),
    raw("Ende fehlt", "--x\r\n\r\nText\r\n--x\r\nContent-Type: image/png\r\nContent-Transfer-Encoding: base64\r\n\r\niVB=R",
        "MIME-Version: 1.0", 'Content-Type: multipart/mixed; boundary="x"'),
    raw("Zeichensatz", "Text", "MIME-Version: 1.0", "Content-Type: text/plain; charset=gibts-nicht"),
    raw("Kodierung", "T=ZZ=E4=", "MIME-Version: 1.0", "Content-Type: text/plain; charset=utf-8",
        "Content-Transfer-Encoding: quoted-printable"),
    raw("=?utf-8?B?kaputt", "Text", "Content-Type: =;;=", "Content-Transfer-Encoding: x-unbekannt"),
    b"ohne Kopf und ohne Ende",
    b"Subject: nur ein Kopf",
    b"\r\n\r\nnur ein Text",
    b"\0\0\0\0",
    raw("Datum", "Text").replace(b"Mon, 5 Jan 2026 10:00:00 +0100", b"Fri, 99 Foo 99999 99:99:99 +9999"),
    b"Received: x\r\n" * 5000 + raw("Viele Zeilen", "Text"),
    raw("a\r\n b\r\n\tc", "Text"),
    b"From: x\x00y@z\r\nTo: \xff\xfe\r\nSubject: roh \xe4\xf6\xfc \xe2\x82\xac\r\n\r\nText \xe4 \x80\r\n",
]


def test_broken_mail(case):
    case.deliver("Gemeinsam/A", *BROKEN)
    case.export(DONE)
    case.expect(case.entries() == len(BROKEN), f"{case.entries()} of {len(BROKEN)}")
    originals = sorted(path.read_bytes() for path in case.place.archive.rglob("*.eml"))
    case.expect(originals == sorted(BROKEN), "an original is not what was delivered")
    case.store_is_right()


def test_odd_subjects(case):
    subjects = ["x" * 10_000, "ä" * 10_000, "\x01\x02\x03\x1f", "..", ".", "/", "\\", "CON", "nul.txt", "COM1", " ",
                "a" * 58 + "🙂🙂", "Привет", "\u202egpj.exe", "%VELMORA_TO%", "A", "a", "Ä", "ä",
                "</title><script>document.title='angriff'</script>"]
    sources = [raw("=?utf-8?B?" + base64.b64encode(s.encode()).decode() + "?=", "Text") for s in subjects]
    case.deliver("Gemeinsam/A", *sources)
    case.export(DONE)
    case.expect(case.entries() == len(subjects), f"{case.entries()} of {len(subjects)}")
    case.archive_is_right()
    case.store_is_right()


ATTACHMENT_NAMES = [
    "../../../etc/passwd", "..\\..\\boot.ini", "/etc/passwd", "C:\\Windows\\x.dll", "a:b.txt", "CON", "nul.txt", "COM1.pdf",
    "", " ", ".", "..", "ohne-punkt", "gleich.txt", "GLEICH.TXT", "gleich.txt", "a" * 300 + ".pdf", "ä€🙂.txt",
    "\u202efdp.exe", "x\r\ny.txt", "x\ty.txt", "punkt. ", "<b>.htm", 'a"b.txt', "a&amp;b.txt", "100%.txt", "a#b.txt",
]


def test_odd_attachment_names(case):
    parts = []
    for number, name in enumerate(ATTACHMENT_NAMES):
        encoded = "".join(f"%{byte:02X}" for byte in name.encode())
        lines = ["Content-Type: application/octet-stream", "Content-Transfer-Encoding: base64",
                 "Content-Disposition: attachment" + (f"; filename*=utf-8''{encoded}" if name else ""), "",
                 base64.b64encode(b"Anhang %d" % number).decode()]
        parts.append("\r\n".join(lines).encode())
    body = b"".join(b"--grenze\r\n" + part + b"\r\n" for part in parts) + b"--grenze--\r\n"
    source = raw("Namen", "", "MIME-Version: 1.0", 'Content-Type: multipart/mixed; boundary="grenze"') + body
    case.deliver("Gemeinsam/A", source)
    before = {path for path in case.place.directory.rglob("*") if case.place.archive not in path.parents}
    case.export(DONE)
    after = {path for path in case.place.directory.rglob("*") if case.place.archive not in path.parents}
    own = {case.place.directory / name for name in ("config", "state", "temp", "steuer.txt")}
    outside = [path for path in after - before if not own & {path, *path.parents}]
    case.expect(not outside, f"files outside of the target: {outside}")
    case.archive_is_right()


def test_mail_of_200_mib(case):
    data = random.Random(2).randbytes(1 << 20) * 146  # 200 MiB in base64
    case.deliver("Gemeinsam/A", mail("Riese", attachments=[("riese.bin", data)]), mail("Zwerg"))
    case.export(DONE)
    written = next(case.place.archive.rglob("riese.bin"))
    case.expect(written.stat().st_size == len(data) and written.read_bytes() == data, "the attachment differs")
    originals = {path.read_bytes() for path in case.place.archive.rglob("*.eml")}
    case.expect(originals == set(case.place.sources), "an original differs")


def whole_subjects(case):
    """Subjects of the entries of the mail archive that stand with all their parts."""
    descriptors = list(map(mail_archive.Descriptor, case.place.archive.rglob("*.add")))
    return {descriptor["Subject"] for descriptor in descriptors
            if (original := descriptor.file(descriptor["EML"])) and original.read_bytes() in case.place.sources
            and descriptor.file(descriptor["MailArcEntry"]) and all(map(descriptor.file, descriptor.attachments()))}


def stored_entries(case):
    return json.loads(case.place.run("velmoractl", "store", "list", "--archive", "Gemeinsam/A", "--json"))


def stored_subjects(case):
    return {entry["subject"] for entry in stored_entries(case)}


def test_a_killed_move_loses_nothing(case):
    """SIGKILL ever later in a move: what has left the store is whole in the target; a later run ends the work.

    The deletions of up to 200 ms share one commit, so what a killed run had exported last may stand in both places.
    """
    sources = [mail(f"Nummer {n}", attachments=[("a.txt", b"%d" % n)]) for n in range(300)]
    subjects = {f"Nummer {n}" for n in range(300)}
    case.deliver("Gemeinsam/A", *sources)
    start = time.monotonic()
    case.export(DONE)
    whole_run = time.monotonic() - start
    shutil.rmtree(case.place.archive)
    case.place.archive.mkdir()
    control = case.place.directory / "steuer.txt"
    control.write_text(control.read_text() + "copymode=mov\ndelarcs=n\n")
    for number in range(12):
        run = subprocess.Popen([case.place.programs / "velmora", f"-b:{control}"], env=case.place.environment)
        time.sleep(whole_run * (0.2 + 0.15 * number))
        run.send_signal(signal.SIGKILL)
        run.wait()
        case.store_is_right()
        case.expect(whole_subjects(case) | stored_subjects(case) == subjects, "a message is neither here nor there")
    case.expect(len(stored_subjects(case)) < len(subjects), "no run came as far as a deletion")
    case.run(control, DONE)
    # What was being written at a kill stands torn and without a descriptor; its message came with a later run.
    copies = {path.read_bytes() for path in case.place.archive.rglob("*.eml")}
    case.expect(copies >= set(sources), f"{len(set(sources) - copies)} messages are lost")
    case.expect(whole_subjects(case) == subjects, "not every message has an entry with all its parts")
    case.store_is_right()


def main():
    workplace.enter_mount_namespace()
    with workplace.from_command_line(__doc__) as place:
        problems = workplace.run_cases(place, Case, dict(globals()))
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
