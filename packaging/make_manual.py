#!/usr/bin/env python3
"""Makes the manual a page of HTML: make_manual.py HANDBUCH.MD TARGET_DIRECTORY

cmark-gfm turns the Markdown into HTML; the headings become a table of contents, pictures are copied beside the page.
"""

import html
import pathlib
import re
import shutil
import subprocess
import sys

PAGE = """<!DOCTYPE html>
<html lang="de">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; img-src 'self'; style-src 'unsafe-inline'">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>{title}</title>
<style>
:root {{ --ink: #1b2430; --paper: #fff; --muted: #5a6675; --line: #d5dce4; --tint: #f2f6fa; --link: #0b57a4 }}
@media (prefers-color-scheme: dark) {{
  :root {{ --ink: #e2e8ef; --paper: #171c22; --muted: #9aa7b5; --line: #36404b; --tint: #1f2730; --link: #7db7f2 }}
}}
body {{ margin: 0 auto; padding: 1.5rem 1.5rem 4rem; max-width: 54rem; color: var(--ink); background: var(--paper);
  font: 1rem/1.55 "Segoe UI", system-ui, Roboto, "Helvetica Neue", Arial, sans-serif }}
h1, h2, h3 {{ line-height: 1.25; margin: 2.2em 0 0.6em }} h1 {{ margin-top: 0.5em }}
h2 {{ padding-bottom: 0.25em; border-bottom: 1px solid var(--line) }}
a {{ color: var(--link) }}
nav {{ padding: 0.75rem 1.25rem; background: var(--tint); border: 1px solid var(--line); border-radius: 8px }}
nav ul {{ margin: 0; padding-left: 1.2rem }}
code {{ font: 0.92em ui-monospace, "DejaVu Sans Mono", Consolas, monospace; overflow-wrap: anywhere }}
pre {{ padding: 0.75rem 1rem; overflow-x: auto; background: var(--tint); border: 1px solid var(--line); border-radius: 6px }}
pre code {{ overflow-wrap: normal }}
table {{ border-collapse: collapse; display: block; overflow-x: auto }}
th, td {{ padding: 0.35rem 0.7rem; border: 1px solid var(--line); text-align: left; vertical-align: top }}
th {{ background: var(--tint) }} th:empty {{ padding: 0 }}
img {{ max-width: 100%; border: 1px solid var(--line); border-radius: 6px }}
@media print {{ nav {{ display: none }} a {{ color: inherit }} }}
</style>
</head>
<body>
{body}
</body>
</html>
"""


def anchor(title):
    return re.sub(r"[^a-z0-9äöüß]+", "-", title.lower()).strip("-")


def with_contents(body):
    """Names every heading and lists those of the second and third level before the first of them."""
    entries, used = [], {}

    def name(match):
        level, inner = int(match[1]), match[2]
        title = html.unescape(re.sub(r"<[^>]+>", "", inner))
        key = anchor(title)
        used[key] = used.get(key, 0) + 1
        key += f"-{used[key]}" if used[key] > 1 else ""
        entries.append((level, key, inner))
        return f'<h{level} id="{key}">{inner}</h{level}>'

    body = re.sub(r"<h([1-3])>(.*?)</h\1>", name, body)
    items, depth = [], 2
    for level, key, inner in (entry for entry in entries if entry[0] > 1):
        items.append("<ul>" if level > depth else "</ul>" if level < depth else "")
        depth = level
        items.append(f'<li><a href="#{key}">{re.sub("</?a[^>]*>", "", inner)}</a></li>')
    items.append("</ul>" * (depth - 2))
    contents = '<nav aria-label="Inhalt"><ul>' + "\n".join(filter(None, items)) + "</ul></nav>\n"
    head, rest = body.split("<h2", 1)
    head = re.sub(r"<ol>.*?</ol>\n", "", head, flags=re.S)  # the source's own list of its sections
    return f"{head}{contents}<h2{rest}"


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    source, target = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    done = subprocess.run(["cmark-gfm", "-e", "table", "-e", "autolink", source], capture_output=True, text=True, check=True)
    title = source.read_text("utf-8").split("\n", 1)[0].lstrip("# ")
    target.mkdir(parents=True, exist_ok=True)
    for picture in re.findall(r'<img src="([^":]+)"', done.stdout):
        copy = target / picture
        copy.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(source.parent / picture, copy)
    page = PAGE.format(title=html.escape(title), body=with_contents(done.stdout))
    (target / "index.html").write_text(page, "utf-8")


main()
