"""Short messages as they travel (3GPP TS 23.040): written from the standard, and on its own, so that it can judge others.

Octets are with the service centre in front, as modems list and take them.
"""

import dataclasses
import re

import alphabet

SEPTETS, OCTETS, UCS2 = "7", "8", "16"


@dataclasses.dataclass
class Sms:
    """One message, or one part of a long one."""

    kind: str  # "deliver" or "submit"
    number: str
    coding: str
    body: bytes  # octets for coding 8 and 16; one septet to a byte for coding 7
    time: str = ""  # yyMMddhhmmss and two digits of zone, as digits on the air
    centre: str = ""
    reference: int = None  # of the long message, and which part of how many
    total: int = 1
    part: int = 1

    @property
    def text(self):
        return body_text(self.coding, self.body)


def body_text(coding, body):
    if coding == SEPTETS:
        return alphabet.text(body)
    return body.decode("utf-16-be", "replace") if coding == UCS2 else body.decode("latin-1")


def join(parts):
    """The whole text; what is in two parts (a surrogate pair) is put together first."""
    parts = sorted(parts, key=lambda sms: sms.part)
    return body_text(parts[0].coding, b"".join(sms.body for sms in parts))


def swapped(digits):
    """Digits as half octets, the first in the low half; filled up with F."""
    digits += "F" * (len(digits) % 2)
    return bytes.fromhex("".join(digits[i + 1] + digits[i] for i in range(0, len(digits), 2)))


def unswapped(octets):
    return "".join(f"{o & 15:X}{o >> 4:X}" for o in octets)


_DIALS = "0123456789*#ABC"


def _address(number):
    """Type and octets, and the number of half octets that are used."""
    if re.fullmatch(r"\+?[0-9*#]+", number):
        digits = number.lstrip("+")
        codes = "".join(f"{_DIALS.index(digit):X}" for digit in digits)
        return bytes([0x91 if number[0] == "+" else 0x81]) + swapped(codes), len(digits)
    codes = alphabet.septets(number)
    return b"\xd0" + alphabet.pack(codes), (len(codes) * 7 + 3) // 4


def _read_address(octets, halves):
    kind, rest = octets[0], octets[1:]
    if kind & 0x70 == 0x50:
        return alphabet.text(alphabet.unpack(rest, halves * 4 // 7))
    digits = "".join(_DIALS[int(d, 16)] for d in unswapped(rest)[:halves] if d != "F")
    return ("+" if kind & 0x70 == 0x10 else "") + digits


def _centre(number):
    if not number:
        return b"\0"
    octets = _address(number)[0]
    return bytes([len(octets)]) + octets


def _user_data(coding, body, header):
    """Length field and octets."""
    head = bytes([len(header)]) + header if header else b""
    if coding != SEPTETS:
        return bytes([len(head) + len(body)]) + head + body
    fill = -len(head) * 8 % 7
    return bytes([(len(head) * 8 + fill) // 7 + len(body)]) + head + alphabet.pack(body, fill)


def encode(sms):
    header = b""
    if sms.total > 1:
        header = (bytes([0, 3, sms.reference, sms.total, sms.part]) if sms.reference < 256 else
                  bytes([8, 4, sms.reference >> 8, sms.reference & 255, sms.total, sms.part]))
    address, halves = _address(sms.number)
    first = {"deliver": 0x04, "submit": 0x01}[sms.kind] | (0x40 if header else 0)
    octets = bytes([first]) + (b"\0" if sms.kind == "submit" else b"") + bytes([halves]) + address
    octets += bytes([0, {SEPTETS: 0, OCTETS: 4, UCS2: 8}[sms.coding]])
    if sms.kind == "deliver":
        octets += swapped(sms.time)
    return (_centre(sms.centre) + octets + _user_data(sms.coding, sms.body, header)).hex().upper()


def parts(kind, number, text, reference=1, **fields):
    """The PDUs of a text of any length, in the alphabet that it needs."""
    if alphabet.holds(text):
        coding, body, room, part_room = SEPTETS, bytes(alphabet.septets(text)), 160, 153 - (reference > 255)
    else:
        coding, body = UCS2, text.encode("utf-16-be")
        room, part_room = 140, 134 - 2 * (reference > 255)
    size = room if len(body) <= room else part_room
    pieces = [body[i:i + size] for i in range(0, len(body), size)] or [b""]
    return [encode(Sms(kind, number, coding, piece, reference=reference, total=len(pieces), part=i + 1, **fields))
            for i, piece in enumerate(pieces)]


def _coding(dcs):
    group = dcs >> 4
    if group < 8:
        return {4: OCTETS, 8: UCS2}.get(dcs & 0x0C, SEPTETS)
    if group == 0xE:
        return UCS2
    return OCTETS if group == 0xF and dcs & 4 else SEPTETS


class _Octets:
    def __init__(self, data):
        self.data = data

    def take(self, count):
        if count > len(self.data):
            raise ValueError("the PDU is too short")
        taken, self.data = self.data[:count], self.data[count:]
        return taken

    def one(self):
        return self.take(1)[0]


def decode(pdu):
    """The message in a PDU; ValueError when it is none."""
    octets = _Octets(bytes.fromhex(pdu))
    centre = octets.take(octets.one())
    first = octets.one()
    if first & 3 > 1:
        raise ValueError(f"neither deliver nor submit: {first:02X}")
    kind = "submit" if first & 1 else "deliver"
    if kind == "submit":
        octets.one()
    halves = octets.one()
    number = _read_address(octets.take(1 + (halves + 1) // 2), halves)
    octets.one()
    coding, time = _coding(octets.one()), ""
    if kind == "deliver":
        time = unswapped(octets.take(7))
    else:
        octets.take({0: 0, 0x10: 1}.get(first & 0x18, 7))
    sms = Sms(kind, number, coding, b"", time,
              _read_address(centre, len(centre) * 2 - 2) if centre else "")
    length = octets.one()
    data = octets.take((length * 7 + 7) // 8 if coding == SEPTETS else length)
    if octets.data:
        raise ValueError(f"{len(octets.data)} octets too many")
    _read_user_data(sms, data, length, first & 0x40)
    return sms


def _read_user_data(sms, data, length, has_header):
    head = data[:data[0] + 1] if has_header else b""
    elements = _Octets(head[1:])
    while elements.data:
        name, value = elements.one(), elements.take(elements.one())
        if name in (0, 8):
            sms.reference, sms.total, sms.part = int.from_bytes(value[:-2], "big"), value[-2], value[-1]
    if sms.coding == SEPTETS:
        fill = -len(head) * 8 % 7
        sms.body = bytes(alphabet.unpack(data[len(head):], length - (len(head) * 8 + fill) // 7, fill))
    else:
        sms.body = data[len(head):]
