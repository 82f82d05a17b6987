#!/usr/bin/env python3
"""Opens a mail archive in Chromium and follows every link: browser_test.py --bin DIR MESSAGES...

Each page must load, each link of the program's own must lead to a file of the archive, a message's page must link all
its parts, no script may run and nothing may be asked for from the network. What a sender wrote, links and HTML
attachments among it, leads where it leads.
"""

import pathlib
import sys
import urllib.parse

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import chromium  # noqa: E402
import mail_archive  # noqa: E402
import workplace  # noqa: E402

LOOK = """({
  links: [...document.querySelectorAll('a[href]')].map(a => [a.getAttribute('href'), a.href]),
  broken: [...document.images].filter(i => i.complete && !i.naturalWidth && !/^https?:/.test(i.src)).map(i => i.src),
  charset: document.characterSet, title: document.title, text: document.body.innerText.length})"""


def file_of(url):
    return pathlib.Path(urllib.parse.unquote(urllib.parse.urlsplit(url).path))


def is_page(path):
    """Whether the program made it: an index, a message's page or an HTML body; not a sender's attachment."""
    return path.name.endswith((".htm", ".html")) and path.parent.name != "Attachments"  # a page may be named ".htm"


def follow(links, root):
    """Problems of the program's own links, and the pages that they lead to."""
    problems, pages = [], []
    for written, url in links:
        target = file_of(url)
        if not target.is_relative_to(root):
            problems.append(f"link leaves the archive: {written}")
        elif not target.is_file():
            problems.append(f"dead link: {written}")
        elif is_page(target):
            pages.append(target)
    return problems, pages


def own_links(page, links):
    """The program's own of a page's links, and problems: a message's page must link every part of the message."""
    local = [(written, url) for written, url in links if url.startswith("file:")]
    if page.name in mail_archive.INDEXES:
        return local, []
    descriptor = mail_archive.Descriptor(page.with_suffix(".add") if page.stem != ".htm" else page.parent / ".add")
    parts = [descriptor[key] for key in ("HTML", "FAX", "VOICE", "EML", "COMMENT") if descriptor[key]] + descriptor.attachments()
    wanted = {descriptor.file(part) for part in parts}
    own = [(written, url) for written, url in local if file_of(url) in wanted]
    return own, [f"no link to {part}" for part in wanted - {file_of(url) for _, url in own}]


def look_at(browser, page, root, forms):
    """Problems of a page, and the pages that it leads to."""
    asked = browser.open(page.as_uri())
    problems = [f"asks for {url}" for url in asked if not url.startswith(("file:", "data:"))]
    seen = browser.evaluate(LOOK)
    if "angriff" in seen["title"] and "<script>" not in seen["title"]:
        problems.append("a script has run")
    if page.parent.name == "HTMLMails":
        return problems, []
    problems += [f"broken picture {url}" for url in seen["broken"] if (forms / file_of(url).name).is_file()]
    if seen["charset"] != "windows-1252":
        problems.append(f"character set is {seen['charset']}")
    own, missing = own_links(page, seen["links"])
    dead, pages = follow(own, root)
    return problems + missing + dead, pages


def walk(browser, root, forms):
    """Follows every link from the root's index; yields (page, problem) and ends with the pages that none led to."""
    todo, done = [root / "index.html"], set()
    while todo:
        page = todo.pop()
        if page in done:
            continue
        done.add(page)
        found, pages = look_at(browser, page, root, forms)
        todo += pages
        yield from ((page, problem) for problem in found)
    yield from ((page, "no link leads here") for page in sorted(set(filter(is_page, root.rglob("*.htm*"))) - done))


def main():
    with workplace.from_command_line(__doc__) as place, chromium.Chromium() as browser:
        place.deliver()
        place.put_entries()
        place.export()
        problems = list(walk(browser, place.archive, place.programs / "Designs"))
        for page, problem in problems:
            print(f"{page.relative_to(place.archive)}: {problem}")
        pages = sum(map(is_page, place.archive.rglob("*.htm*")))
    print(f"{pages} pages, {len(problems)} problems")
    sys.exit(1 if problems or not pages else 0)


main()
