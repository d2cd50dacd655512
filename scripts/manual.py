"""manual.py PAGE.md... >manual.html

Makes one page for a browser out of the manual's pages, with their pictures in it. Links between the pages stay
links; one to anything else that is not on the web is a mistake.
"""
import base64
import re
import sys
from pathlib import Path

import markdown

HEAD = """<!doctype html>
<html lang="en">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Quillet manual</title>
<style>
body { font: 16px/1.5 "Segoe UI", Tahoma, "DejaVu Sans", sans-serif; color: #17324d; background: #f7f9fb;
       max-width: 46em; margin: 2em auto; padding: 0 1em }
h1, h2, h3 { line-height: 1.2; color: #0b4f95; margin: 1.6em 0 .5em }
section + section { border-top: 1px solid #b9c6d4; margin-top: 3em }
a { color: #0b4f95 }
img { max-width: 100%; height: auto }
table { border-collapse: collapse; margin: 1em 0 }
th, td { border: 1px solid #b9c6d4; padding: .25em .6em; text-align: left; vertical-align: top }
th { background: #d4deea }
pre, code { font-family: Consolas, "DejaVu Sans Mono", monospace; font-size: .92em; background: #e8eef4 }
pre { padding: .6em 1em; overflow-x: auto }
</style>
"""


def page(path, names):
    """One page as a section; its headings are known by the page's name and theirs, so that no two are alike."""
    name = path.stem

    def target(match):
        file, _, heading = match[1].partition('#')
        to = Path(file).stem if file else name
        if to not in names:
            sys.exit(f'{path}: {match[1]} is not one of the pages')
        return f'href="#{to}{"--" + heading if heading else ""}"'

    def picture(match):
        data = base64.b64encode((path.parent / match[1]).read_bytes()).decode()
        return f'src="data:image/png;base64,{data}"'

    html = markdown.markdown(path.read_text('utf-8'), extensions=['tables', 'toc', 'sane_lists'])
    html = re.sub(r' id="([^"]*)"', rf' id="{name}--\1"', html)
    html = re.sub(r'href="(?!https?:)([^"]*)"', target, html)
    html = re.sub(r'src="([^"]*\.png)"', picture, html)
    known = set(re.findall(r'id="([^"]*)"', html))
    for wanted in re.findall(rf'href="#({name}--[^"]*)"', html):
        if wanted not in known:
            sys.exit(f'{path}: no heading is called {wanted}')
    return f'<section id="{name}">\n{html}\n</section>\n'


def main(paths):
    names = [path.stem for path in paths]
    sys.stdout.reconfigure(encoding='utf-8', newline='\n')
    sys.stdout.write(HEAD + ''.join(page(path, names) for path in paths) + '</html>\n')


if __name__ == '__main__':
    main([Path(name) for name in sys.argv[1:]])
