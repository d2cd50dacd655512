"""opened_files.py FOLDER COMMAND…: runs the command and prints how often a file of the folder was opened after
each opening of a file "mark-NAME", as NAME|count, in the order of the marks; the mark "none" ends a count."""
import ctypes
import os
import struct
import subprocess
import sys

IN_OPEN, IN_ISDIR, IN_NONBLOCK = 0x20, 0x40000000, 0o4000


def opened(watch):
    """The names of the files opened since the last call."""
    names = []
    while True:
        try:
            events = os.read(watch, 1 << 20)
        except BlockingIOError:
            return names
        while events:
            _, mask, _, length = struct.unpack_from("iIII", events)
            if mask & IN_OPEN and not mask & IN_ISDIR:
                names.append(events[16:16 + length].rstrip(b"\0").decode())
            events = events[16 + length:]


def main(folder, command):
    libc = ctypes.CDLL(None, use_errno=True)
    watch = libc.inotify_init1(IN_NONBLOCK)
    if watch < 0 or libc.inotify_add_watch(watch, os.fsencode(folder), IN_OPEN) < 0:
        sys.exit("cannot watch " + folder)
    names = []
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
    while True:
        try:
            code = process.wait(0.05)
        except subprocess.TimeoutExpired:
            code = None
        names += opened(watch)
        if code is not None:
            break
    counts, counted = {}, "none"
    for name in names:
        if name.startswith("mark-"):
            counted = name.removeprefix("mark-")
            counts[counted] = 0
        elif not name.lower().endswith((".exe", ".dll")):  # loaded by the system
            counts[counted] = counts.get(counted, 0) + 1
    counts.pop("none", None)
    for name, count in counts.items():
        print(f"{name}|{count}")
    return code


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:]))
