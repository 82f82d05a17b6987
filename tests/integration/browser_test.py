#!/usr/bin/env python3
"""Opens a mail archive in Chromium and follows every link: browser_test.py --bin DIR MESSAGES...

Each page must load, each link and picture must lead to a file of the archive, no script may run and nothing may be
asked for from the network.
"""

import pathlib
import sys
import urllib.parse

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import chromium  # noqa: E402
import workplace  # noqa: E402

LOOK = """({
  links: [...document.querySelectorAll('a[href]')].map(a => [a.getAttribute('href'), a.href]),
  broken: [...document.images].filter(i => i.complete && !i.naturalWidth && !/^https?:/.test(i.src)).map(i => i.src),
  charset: document.characterSet, title: document.title, text: document.body.innerText.length})"""


def file_of(url):
    return pathlib.Path(urllib.parse.unquote(urllib.parse.urlsplit(url).path))


def look_at(browser, page, root):
    """Problems of a page, and the pages that it leads to."""
    problems, pages = [], []
    asked = browser.open(page.as_uri())
    problems += [f"asks for {url}" for url in asked if not url.startswith(("file:", "data:"))]
    seen = browser.evaluate(LOOK)
    is_body = page.parent.name == "HTMLMails"
    if "angriff" in seen["title"] and "<script>" not in seen["title"]:
        problems.append("a script has run")
    if not is_body:
        problems += [f"broken picture {url}" for url in seen["broken"]]
        if seen["charset"] != "windows-1252":
            problems.append(f"character set is {seen['charset']}")
    for written, url in seen["links"]:
        if not url.startswith("file:"):
            continue
        target = file_of(url)
        if is_body:  # links of a sender's making lead where they lead
            continue
        if not target.is_relative_to(root):
            problems.append(f"link leaves the archive: {written}")
        elif not target.is_file():
            problems.append(f"dead link: {written}")
        elif target.name.endswith((".htm", ".html")):  # a page may be named ".htm"
            pages.append(target)
    return problems, pages


def walk(browser, root):
    """Follows every link from the root's index; yields (page, problem) and ends with the pages that none led to."""
    todo, done = [root / "index.html"], set()
    while todo:
        page = todo.pop()
        if page in done:
            continue
        done.add(page)
        found, pages = look_at(browser, page, root)
        todo += pages
        yield from ((page, problem) for problem in found)
    yield from ((page, "no link leads here") for page in sorted(set(root.rglob("*.htm*")) - done))


def main():
    with workplace.from_command_line(__doc__) as place, chromium.Chromium() as browser:
        place.deliver()
        place.export()
        problems = list(walk(browser, place.archive))
        for page, problem in problems:
            print(f"{page.relative_to(place.archive)}: {problem}")
        pages = sum(1 for _ in place.archive.rglob("*.htm*"))
    print(f"{pages} pages, {len(problems)} problems")
    sys.exit(1 if problems or not pages else 0)


main()
