"""The commands that a simulated modem knows: a table of patterns and what each answers."""

import re

import state as states
from problem import (CME_INDEX, CME_NOT_ALLOWED, CME_NOT_SUPPORTED, CME_PASSWORD, INVALID_INDEX, NOT_ALLOWED,
                     NOT_IN_TEXT_MODE, SIM_BUSY, Problem)

STATUS_ALL = 4  # of +CMGL

_TABLE = []


def command(pattern):
    """Registers what follows for commands like `pattern`, whose groups become its arguments."""
    def register(handler):
        _TABLE.append((re.compile(pattern, re.IGNORECASE), handler))
        return handler
    return register


def find(text):
    for pattern, handler in _TABLE:
        match = pattern.fullmatch(text)
        if match:
            return handler, match.groups()
    return None, ()


# Settings

@command(r"E([01]?)")
def set_echo(modem, on):
    modem.echo = on == "1" or "echo-stays" in modem.quirks
    return []


@command(r"Z|V1|Q0|&F|\+CFUN=1|\+MODE=2|\+CHUP|\+(?:CNMI|CSMS|CREG|CLIP)=[0-9].*")
def accept(modem):
    return []


@command(r"\+CMEE=([012])")
def set_errors(modem, level):
    modem.verbose_errors = int(level)
    return []


@command(r"\+CMGF=([01])")
def set_format(modem, text_mode):
    modem.text_mode = text_mode == "1"
    return []


@command(r"\+CMGF=\?")
def formats(modem):
    return ["+CMGF: (0,1)"]


@command(r"\+(CGM[IMR]|CGSN|CIMI|GM[IMR])")
def identity(modem, which):
    if which.upper() == "CIMI":
        modem.need_pin()
        return ["204080123456789"]
    return [{"I": modem.state.manufacturer, "M": modem.state.model, "R": modem.state.revision,
             "N": modem.state.serial}[which[-1].upper()]]


@command(r"\+(CPROT|SYNCML|CHUP|CNMI|CSMS)=\?")
def offers(modem, name):
    known = {"CNMI": "(0-2),(0-3),(0,2),(0-2),(0,1)", "CSMS": "(0)"}
    if name not in known:
        raise Problem(CME_NOT_SUPPORTED, "CME")
    return [f"+{name}: {known[name]}"]


def charsets(modem):
    return modem.quirks.value("charsets", "GSM/IRA/UCS2").split("/")


@command(r"\+CSCS=\?")
def offered_charsets(modem):
    listed = ",".join(modem.quoted(name) for name in charsets(modem))
    return [f"+CSCS: {modem.quirks.value('cscs-test', f'({listed})')}"]


@command(r"\+CSCS\?")
def current_charset(modem):
    return [f"+CSCS: {modem.quoted(modem.charset)}"]


@command(r"\+CSCS=(.+)")
def set_charset(modem, text):
    wanted = modem.parameters(text)[0]
    if wanted not in charsets(modem):
        raise Problem(CME_NOT_ALLOWED, "CME")
    modem.charset = wanted
    return []


@command(r"\+CPIN\?")
def pin_state(modem):
    return [f"+CPIN: {'SIM PIN' if modem.state.pin else 'READY'}"]


@command(r"\+CPIN=(.+)")
def enter_pin(modem, text):
    if modem.parameters(text)[0] != modem.state.pin:
        raise Problem(CME_PASSWORD, "CME")
    modem.state.pin = ""
    return []


@command(r"\+CSCA\?")
def centre(modem):
    modem.need_pin("CMS")
    return [f"+CSCA: {modem.quoted(modem.state.centre)},145"]


# Messages

def _ready(modem):
    modem.need_pin("CMS")
    if modem.starting:
        modem.starting -= 1
        raise Problem(SIM_BUSY)


def _messages(modem):
    return modem.state.messages[modem.stores[0]]


def _counts(modem):
    return [f"{len(modem.state.messages[store])},{modem.state.sizes[store]}" for store in modem.stores]


@command(r"\+CPMS=\?")
def offered_stores(modem):
    _ready(modem)
    group = "(" + ",".join(modem.quoted(store) for store in modem.state.messages) + ")"
    return [f"+CPMS: {modem.quirks.value('cpms-test', ','.join([group] * 3))}"]


@command(r"\+CPMS\?")
def current_stores(modem):
    _ready(modem)
    return ["+CPMS: " + ",".join(f"{modem.quoted(store)},{count}" for store, count in
                                 zip(modem.stores, _counts(modem)))]


@command(r"\+CPMS=(.+)")
def set_stores(modem, text):
    _ready(modem)
    wanted = modem.parameters(text)
    if not set(wanted) <= modem.state.messages.keys():
        raise Problem(NOT_ALLOWED)
    modem.stores[:len(wanted)] = wanted
    return [] if "cpms-set-silent" in modem.quirks else ["+CPMS: " + ",".join(_counts(modem))]


def _no_text_mode(modem):
    if modem.text_mode:
        raise Problem(NOT_IN_TEXT_MODE)


def _tpdu_length(octets):
    return len(octets) // 2 - 1 - int(octets[:2], 16)


@command(r"\+CMGL=?(\d?)")
def list_messages(modem, wanted):
    _ready(modem)
    _no_text_mode(modem)
    wanted, quirks, lines = int(wanted or "0"), modem.quirks, []
    for index, entry in sorted(_messages(modem).items()):
        status, octets = entry
        if wanted not in (STATUS_ALL, status):
            continue
        header = {"short": f"{status},{_tpdu_length(octets)}",
                  "no-alpha": f"{index},{status},{_tpdu_length(octets)}"}.get(
                      quirks.value("cmgl-header"), f"{index},{status},,{_tpdu_length(octets)}")
        if "bad-pdu" in quirks and not lines:
            octets = "00FF99"
        if "odd-hex" in quirks and not lines:
            octets = octets[:-1]
        lines += [f"+CMGL: {header}", f'"{octets}"' if "quoted-pdu" in quirks else octets]
        if status == states.RECEIVED_UNREAD:
            entry[0] = states.RECEIVED_READ
    if "glued-cmgl" in quirks:
        lines = lines[:1] + [a + b for a, b in zip(lines[1:-1:2], lines[2::2])] + lines[-1:]
    return [b"\x0f\x81~#"] + lines if "garbage-first" in quirks else lines


@command(r"\+CMGR=(\d+)")
def read_message(modem, index):
    _ready(modem)
    _no_text_mode(modem)
    entry = _messages(modem).get(int(index))
    if entry is None:
        raise Problem(INVALID_INDEX)
    status = entry[0]
    if status == states.RECEIVED_UNREAD:
        entry[0] = states.RECEIVED_READ
    return [f"+CMGR: {status},,{_tpdu_length(entry[1])}", entry[1]]


@command(r"\+CMGD=(\d+)(?:,0)?")
def delete_message(modem, index):
    _ready(modem)
    if _messages(modem).pop(int(index), None) is None:
        raise Problem(INVALID_INDEX)
    return []


@command(r"\+CMGS=(\d+)")
def send_message(modem, length):
    modem.need_pin("CMS")
    _no_text_mode(modem)
    if "no-prompt" not in modem.quirks:
        modem.awaited = int(length)
        modem.send(b"\r\n>" if "bare-prompt" in modem.quirks else b"\r\n> ")


# Phonebooks

@command(r"\+CPBS=\?")
def offered_books(modem):
    modem.need_pin()
    return ["+CPBS: (" + ",".join(modem.quoted(book) for book in modem.state.contacts) + ")"]


@command(r"\+CPBS\?")
def current_book(modem):
    modem.need_pin()
    return [f"+CPBS: {modem.quoted(modem.book)},{len(modem.state.contacts[modem.book])},"
            f"{modem.state.phonebook_sizes[modem.book]}"]


@command(r"\+CPBS=([^?].*)")
def set_book(modem, text):
    modem.need_pin()
    wanted = modem.parameters(text)[0]
    if wanted not in modem.state.contacts:
        raise Problem(CME_NOT_ALLOWED, "CME")
    modem.book = wanted
    return []


@command(r"\+CPBR=\?")
def book_range(modem):
    modem.need_pin()
    return [f"+CPBR: (1-{modem.state.phonebook_sizes[modem.book]}),40,{modem.state.name_length}"]


@command(r"\+CPBR=(\d+)(?:,(\d+))?")
def read_book(modem, first, last):
    modem.need_pin()
    first, last = int(first), int(last or first)
    if not 1 <= first <= last <= modem.state.phonebook_sizes[modem.book]:
        raise Problem(CME_INDEX, "CME")
    lines, quirks = [], modem.quirks
    for index, (number, name) in sorted(modem.state.contacts[modem.book].items()):
        if not first <= index <= last:
            continue
        if "cpbr-broken-number" in quirks and not lines:
            number = number[:4] + "\r\n" + number[4:]
        written = modem.name(name)
        if "cpbr-hex-nul" in quirks:
            written = name.encode("utf-16-be").hex().upper().encode() + b"0000"
        kind = 145 if number.startswith("+") else 129
        line = f"+CPBR: {index + ('cpbr-other-index' in quirks)},{modem.quoted(number)},{kind},".encode() + written
        lines.append(line + (b',0,"","",0' if "cpbr-extra" in quirks else b""))
    return lines
