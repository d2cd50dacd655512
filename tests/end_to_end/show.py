"""Starts the shipped program, says in words what its window holds, leaves a picture and closes it: show.py PICTURE.png"""

import pathlib
import sys

from harness import SHIPPED, Program, take_picture, texts_of


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


def show(folder, picture):
    """Starts the program in its folder, shows it and closes it; its exit code."""
    program = Program(folder)
    try:
        program.wait_for_window(25)
        problem = None
    except AssertionError as found:
        problem = found
    sight = program.look()
    print("\n".join(describe(sight)))
    take_picture(picture, sight.main and sight.main["rect"])
    if problem:
        program.process.kill()
        sys.exit(str(problem).splitlines()[0])
    return program.close()


if __name__ == "__main__":
    sys.exit(show(SHIPPED, pathlib.Path(sys.argv[1])))
