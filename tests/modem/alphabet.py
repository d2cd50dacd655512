"""The default alphabet of short messages (3GPP TS 23.038) and its packing into septets."""

DEFAULT = ("@£$¥èéùìòÇ\nØø\rÅåΔ_ΦΓΛΩΠΨΣΘΞ\x1bÆæßÉ !\"#¤%&'()*+,-./0123456789:;<=>?"
           "¡ABCDEFGHIJKLMNOPQRSTUVWXYZÄÖÑÜ§¿abcdefghijklmnopqrstuvwxyzäöñüà")
EXTENSION = {0x0A: "\f", 0x14: "^", 0x28: "{", 0x29: "}", 0x2F: "\\", 0x3C: "[", 0x3D: "~", 0x3E: "]", 0x40: "|",
             0x65: "€"}
ESCAPE = 0x1B

_SEPTETS = {character: [code] for code, character in enumerate(DEFAULT) if code != ESCAPE}
_SEPTETS.update({character: [ESCAPE, code] for code, character in EXTENSION.items()})


def holds(text):
    return all(character in _SEPTETS for character in text)


def septets(text):
    """The text's septets; raises KeyError for a character that the alphabet lacks."""
    return [code for character in text for code in _SEPTETS[character]]


def text(codes):
    found, escaped = "", False
    for code in codes:
        if escaped:
            found += EXTENSION.get(code, DEFAULT[code])
            escaped = False
        elif code == ESCAPE:
            escaped = True
        else:
            found += DEFAULT[code]
    return found


def pack(codes, fill_bits=0):
    """Septets as octets, behind so many bits that fill up a header."""
    bits, length = 0, fill_bits
    for code in codes:
        bits |= code << length
        length += 7
    return bits.to_bytes((length + 7) // 8, "little")


def unpack(octets, count, fill_bits=0):
    bits = int.from_bytes(octets, "little") >> fill_bits
    return [bits >> 7 * i & 0x7F for i in range(count)]
