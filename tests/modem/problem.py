"""Errors of a simulated modem."""

# Numbers of +CMS ERROR and +CME ERROR.
NOT_ALLOWED, NOT_IN_TEXT_MODE, PDU_PARAMETER, SIM_PIN, SIM_BUSY, INVALID_INDEX = 302, 303, 304, 311, 314, 321
CME_NOT_ALLOWED, CME_NOT_SUPPORTED, CME_PIN, CME_PASSWORD, CME_INDEX, CME_UNKNOWN = 3, 4, 11, 16, 21, 100


class Problem(Exception):
    """Ends a command with an error: of the messages ("CMS") or of the equipment ("CME")."""

    def __init__(self, number, kind="CMS"):
        super().__init__(f"+{kind} ERROR: {number}")
        self.number, self.kind = number, kind
