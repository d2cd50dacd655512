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
    # Character sets
    "hex-strings": "in UCS2 every quoted string is in hex, in answers and in parameters",
    # Messages
    "glued-cmgl": "every header but the first stands at the end of the line before",
    # Sending
    "send-error": "=N: +CMS ERROR: N in place of +CMGS",
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
