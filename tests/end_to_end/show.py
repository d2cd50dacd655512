"""Says in words what the running window holds, and leaves a picture of it: show.py PICTURE.png"""

import json
import pathlib
import sys

from harness import Sight, take_picture, texts_of
from reporter import ask_reporter


def describe(sight):
    for dialog in sight.dialogs:
        yield f"box \"{dialog['title']}\": {' '.join(texts_of(dialog))}"
    if not sight.main:
        yield "no window"
        return
    yield f"window \"{sight.main['title']}\", {sight.main['rect'][2]} x {sight.main['rect'][3]}"
    yield "tree"
    for item in sight.items:
        yield "  " * (item["level"] + 1) + item["text"] + (" (selected)" if item["selected"] else "")
    yield "list: " + " | ".join(sight.titles)
    for row in sight.rows:
        yield "  " + " | ".join(text.replace("\n", "⏎") for text in row)
    yield "toolbar: " + " ".join(f"{b['command']}{'' if b['enabled'] else ' (grey)'}" for b in sight.buttons)
    yield "status bar: " + " | ".join(sight.control("msctls_statusbar32")["parts"])


def main():
    answer = ask_reporter("report")
    if answer.code:
        sys.exit(answer.text.decode(errors="replace"))
    sight = Sight(json.loads(answer.text))
    print("\n".join(describe(sight)))
    take_picture(pathlib.Path(sys.argv[1]), sight.main and sight.main["rect"])


if __name__ == "__main__":
    main()
