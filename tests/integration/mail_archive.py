"""Reads a mail archive with nothing but Python's own libraries and compares it with the messages it was made from.

check(archive, sources) yields one line per thing that is wrong.
"""

import collections
import datetime
import email.generator
import email.parser
import email.policy
import email.utils
import html
import io
import os
import pathlib
import re
import urllib.parse

INDEXES = ("index.html", "index2.html", "index3.html")


def text_of(data):
    """The program's text files are Windows-1252, further characters as decimal references."""
    return data.decode("cp1252", "replace")


def unreference(text):
    return re.sub(r"&#(\d+);", lambda m: chr(int(m[1])) if 255 < int(m[1]) < 0x110000 else m[0], text)


class Descriptor:
    def __init__(self, path):
        self.path = path
        raw = path.read_bytes()
        self.problems = [] if raw.endswith(b"\r\n") and b"\n" not in raw.replace(b"\r\n", b"") else ["line ends"]
        self.lines = [line.partition("=")[::2] for line in text_of(raw).split("\r\n") if line]
        self.values = {key: unreference(value) for key, value in self.lines}

    def __getitem__(self, key):
        return self.values.get(key, "").strip()

    def attachments(self):
        value = self["Attachments"]
        return [part.replace('"', "") for part in value.split('","')] if value else []

    def file(self, relative):
        """The file that a relative path of the descriptor names; None when there is none or it leads outside."""
        path = self.path.parent.joinpath(*relative.split("\\"))
        inside = path.resolve().is_relative_to(self.path.parent.resolve())
        return path if inside and path.is_file() else None



def leaves(message):
    """(content type, bytes) of every leaf; a forwarded message is one leaf."""
    kind = message.get_content_type()
    if kind == "message/rfc822" and message.is_multipart():
        out = io.BytesIO()
        email.generator.BytesGenerator(out, mangle_from_=False, maxheaderlen=0).flatten(message.get_payload(0))
        yield kind, out.getvalue()
    elif message.is_multipart():
        for part in message.get_payload():
            yield from leaves(part)
    else:
        yield kind, message.get_payload(decode=True) or b""


def without_blanks(data):
    """Python writes a forwarded message anew and may add line ends; all but white space must be the same."""
    return b"".join(data.split())


def has_defects(message):
    return any(part.defects for part in message.walk())


def compare_attachments(source, exported):
    """Every leaf is an attachment of the same bytes, but for one plain and one HTML text that serve as the body."""
    message = email.parser.BytesParser(policy=email.policy.compat32).parsebytes(source)
    if has_defects(message):
        return  # the two decoders may mend a broken message in different ways
    wanted, forwarded = collections.Counter(), collections.Counter()
    texts = collections.defaultdict(list)
    for kind, data in leaves(message):
        if kind == "message/rfc822":
            forwarded[without_blanks(data)] += 1
            continue
        wanted[data] += 1
        if kind in ("text/plain", "text/html"):
            texts[kind].append(data)
    found = collections.Counter()
    for data in exported:
        if data not in wanted and forwarded[without_blanks(data)]:
            forwarded[without_blanks(data)] -= 1
        else:
            found[data] += 1
    for data in +forwarded:
        yield f"forwarded message is missing ({data[:40]!r})"
    for data, count in (found - wanted).items():
        yield f"attachment of {len(data)} bytes that the message does not have ({data[:40]!r})"
    missing = wanted - found
    for kind in texts:
        body = next((data for data in texts[kind] if missing[data]), None)
        if body is not None:
            missing[body] -= 1
    for data in +missing:
        if data.strip():
            yield f"attachment of {len(data)} bytes is missing ({data[:40]!r})"


def plain_body(source):
    """The text that a plain mail's page must hold, or None where the message leaves room for opinions."""
    message = email.parser.BytesParser(policy=email.policy.compat32).parsebytes(source)
    if message.is_multipart() or message.get_content_type() != "text/plain" or has_defects(message):
        return None
    if re.search(r"=(?![0-9A-Fa-f]{2}|[ \t]*\r?\n)", message.get_payload()) and message["Content-Transfer-Encoding"]:
        return None  # a "=" that quoted-printable does not allow: kept here, dropped there
    charset = message.get_content_charset("us-ascii")
    if charset not in ("us-ascii", "utf-8", "iso-8859-1", "windows-1252"):
        return None
    try:
        text = (message.get_payload(decode=True) or b"").decode(charset)
    except UnicodeDecodeError:
        return None
    return None if re.search(r"<(meta|link|base)|[\x00-\x08\x0b-\x1f\x7f-\x9f]", text, re.I) else text.strip(" \t\r\n")


def page_holds(page, text):
    lines = [line.rstrip(" \t") for line in re.split(r"\r\n|\n", text)]
    wanted = "<br>".join(lines).encode("cp1252", "xmlcharrefreplace")
    have = b"<br>".join(line.rstrip(b" \t") for line in page.replace(b"<br>\r\n", b"\n").split(b"\n"))
    return wanted in have


def check_entry(descriptor, sources):
    name = descriptor.path.name
    yield from (f"{name}: {problem}" for problem in descriptor.problems)
    page = descriptor.file(descriptor["MailArcEntry"])
    if page is None or descriptor["MailArcAdd"] != name:
        yield f"{name}: page or descriptor is named wrongly"
        return
    eml = descriptor.file(descriptor["EML"])
    if eml is None:
        yield f"{name}: no original"
        return
    source = eml.read_bytes()
    if sources[source] == 0:
        yield f"{name}: the original is none of the messages, or stands twice"
        return
    sources[source] -= 1
    paths = descriptor.attachments()
    files = [descriptor.file(path) for path in paths]
    if None in files:
        yield f"{name}: attachment without a file: {paths[files.index(None)]}"
        return
    yield from (f"{name}: {problem}" for problem in compare_attachments(source, [file.read_bytes() for file in files]))
    header = descriptor.file(descriptor["SMTP"])
    if descriptor["SMTP"] and header is None:
        yield f"{name}: header file is missing"
    date = datetime.datetime.strptime(descriptor["Date"], "%d.%m.%Y %H:%M:%S")
    if abs(os.stat(page).st_mtime - date.timestamp()) > 1 and date.year >= 1902:
        yield f"{name}: page has another time than its message"
    sent = email.message_from_bytes(source)["Date"]
    try:
        parsed = email.utils.parsedate_to_datetime(sent)
        if parsed.tzinfo and parsed.astimezone().replace(tzinfo=None) != date:
            yield f"{name}: Date={descriptor['Date']} but the message says {sent}"
    except (TypeError, ValueError, OverflowError):
        pass
    content = page.read_bytes()
    if not descriptor["HTML"]:
        text = plain_body(source)
        if text and not page_holds(content, text):
            yield f"{name}: the page lacks the text of the message"
    elif descriptor.file(descriptor["HTML"]) is None:
        yield f"{name}: HTML body is missing"
    elif b"cid:" in content:
        yield f"{name}: page holds an unresolved reference"


def index_rows(path):
    """File names that the table of an index links to, in order."""
    names = re.findall(r'<a href="([^"/]*\.htm)">', text_of(path.read_bytes()))
    return [urllib.parse.unquote(html.unescape(name), "cp1252") for name in names]


def check_indexes(directory, descriptors):
    pages = collections.Counter(descriptor["MailArcEntry"] for descriptor in descriptors)
    by_page = {descriptor["MailArcEntry"]: descriptor for descriptor in descriptors}
    keys = {
        "index.html": lambda d: datetime.datetime.strptime(d["Date"], "%d.%m.%Y %H:%M:%S"),
        "index2.html": lambda d: d["MailArcEntry"].lower(),
        "index3.html": lambda d: d["Sortaddr"].lower(),
    }
    for name in INDEXES:
        path = directory / name
        if not path.is_file():
            yield f"{path}: missing"
            continue
        rows = index_rows(path)
        if collections.Counter(rows) != pages:
            yield f"{path}: lists {len(rows)} messages, {sum(pages.values())} are there, or others"
            continue
        order = [keys[name](by_page[row]) for row in rows]
        if order != sorted(order):
            yield f"{path}: not in order"


def check(archive, sources):
    """archive: the target directory; sources: the bytes of all messages that went in."""
    archive = pathlib.Path(archive)
    left = collections.Counter(sources)
    count = 0
    for directory in sorted({path.parent for path in archive.rglob("*.add")}):
        descriptors = [Descriptor(path) for path in sorted(directory.glob("*.add"))]
        count += len(descriptors)
        for descriptor in descriptors:
            yield from check_entry(descriptor, left)
        yield from check_indexes(directory, descriptors)
    if count != len(sources):
        yield f"{count} descriptors for {len(sources)} messages"
    for source in +left:
        yield f"message is not in the archive: {source[:80]!r}"
