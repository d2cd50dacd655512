"""The ways in which real modems differ from the standard, each with a name to switch it on by.

A quirk is on when its name is among the modem's quirks; one with a value is written name=value.
"""

QUIRKS = {
    # The line as a whole
    "silent": "answers nothing at all",
    "echo-only": "sends back what it gets and nothing else",
    "not-a-modem": "sends lines of its own that are no answers",
    "echo-stays": "ATE0 is confirmed but changes nothing",
    "leading-nuls": "two NULs before every answer",
    "unsolicited": "unsolicited lines before and in the middle of every answer of several lines",
    "vanishes-at": "=COMMAND: the port disappears in the middle of the answer to the first such command",
    "errors-as": "=TEXT: this final result in place of every ERROR, such as COMMAND NOT SUPPORT",
    "starting": "=N: the message stores are busy for the first N questions",
    # Character sets
    "hex-strings": "in UCS2 every quoted string is in hex, in answers and in parameters",
    "cscs-test": "=TEXT: what AT+CSCS=? answers behind its name, such as 0",
    "charsets": "=A/B: the character sets that there are, in place of GSM/IRA/UCS2",
    # Messages
    "cpms-test": "=TEXT: what AT+CPMS=? answers behind its name",
    "cpms-set-silent": "setting the stores answers OK and no counts",
    "cmgl-header": "=short|no-alpha: headers as 0,23 (status, length) or 17,3,35 (index, status, length)",
    "odd-hex": "the first message listed lacks its last hex digit",
    "quoted-pdu": "PDUs stand in quotes",
    "glued-cmgl": "every header but the first stands at the end of the line before",
    "garbage-first": "bytes of no meaning before a list",
    "bad-pdu": "the first message listed is no PDU",
    # Phonebooks
    "cpbr-other-index": "entries come with an index one higher than they have",
    "cpbr-broken-number": "a line break inside the first number",
    "cpbr-hex-nul": "names are unquoted hex with a NUL behind them",
    "cpbr-extra": "more fields behind the name",
    # Sending
    "bare-prompt": "the prompt is > without a blank",
    "no-prompt": "AT+CMGS is followed by nothing",
    "send-error": "=N: +CMS ERROR: N in place of +CMGS",
    "send-unsure": "OK without +CMGS",
    "send-silent": "nothing after the message",
}


class Quirks:
    def __init__(self, names=()):
        self.on = {}
        for name in names:
            name, _, value = name.partition("=")
            if name not in QUIRKS:
                raise ValueError(f"no such quirk: {name}")
            self.on[name] = value

    def __contains__(self, name):
        if name not in QUIRKS:
            raise KeyError(name)
        return name in self.on

    def value(self, name, otherwise=""):
        return self.on[name] if name in self else otherwise
