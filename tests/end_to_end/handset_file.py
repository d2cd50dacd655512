"""What a handset.txt says the program must show, worked out here on its own. docs/simulated-handset.md has the format."""

import dataclasses
import re


@dataclasses.dataclass
class Handset:
    inbox: list  # rows: text, number, time as shown
    outbox: list


def shown_time(time):
    """A handset's time of 14 characters is made readable; any other text is shown as it stands."""
    if len(time) != 14:
        return time
    year, month, day, hour, minute, second = (time[i:i + 2] for i in range(0, 12, 2))
    return f"20{year}-{month}-{day} {hour}:{minute}:{second}"


def pieces(text):
    """An entry holds 160 characters of the code page or 80 UTF-16 units; a longer text takes further entries."""
    try:
        text.encode("cp1252")
        capacity = 160
    except UnicodeEncodeError:
        capacity = 80
    parts = [""]
    for character in text:
        if sum(units(c) for c in parts[-1]) + units(character) > capacity:
            parts.append("")
        parts[-1] += character
    return parts


def units(character):
    return 2 if ord(character) > 0xFFFF else 1


def unescaped(text):
    return re.sub(r"\\([n\\])", lambda match: "\n" if match[1] == "n" else "\\", text)


def messages(data):
    found, section = [], ""
    for line in data.decode("utf-8-sig").splitlines():
        line = line.strip(" \t\r")
        if line.startswith("["):
            section = line
            if section == "[message]":
                found.append({"store": "sim", "status": "received", "number": "", "time": "", "text": ""})
        elif "=" in line and line[0] not in "#;" and section == "[message]":
            name, value = (part.strip(" \t") for part in line.split("=", 1))
            found[-1][name] = unescaped(value) if name == "text" else value
    return found


def read(data):
    """The rows of both handset folders: the SIM card's messages first, then those of the phone's memory."""
    def rows(*statuses):
        return [[piece, message["number"], shown_time(message["time"])]
                for store in ("sim", "phone") for message in messages(data)
                if message["store"] == store and message["status"] in statuses
                for piece in pieces(message["text"])]
    return Handset(inbox=rows("received", "unread", "1", "3"), outbox=rows("outgoing", "7"))
