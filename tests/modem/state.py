"""What a simulated modem holds: messages and phonebooks of the card ("SM") and of the phone ("ME"), as JSON."""

import dataclasses
import json

import pdu

RECEIVED_UNREAD, RECEIVED_READ, STORED_UNSENT, STORED_SENT = range(4)


@dataclasses.dataclass
class State:
    # store -> {index: [status, PDU]}
    messages: dict = dataclasses.field(default_factory=lambda: {"SM": {}, "ME": {}})
    # store -> {index: [number, name]}
    contacts: dict = dataclasses.field(default_factory=lambda: {"SM": {}, "ME": {}})
    sizes: dict = dataclasses.field(default_factory=lambda: {"SM": 50, "ME": 1000})
    phonebook_sizes: dict = dataclasses.field(default_factory=lambda: {"SM": 100, "ME": 200})
    name_length: int = 16
    pin: str = ""  # wanted, as long as it is not empty
    manufacturer: str = "Quillet"
    model: str = "Test modem"
    revision: str = "1.0"
    serial: str = "490154203237518"
    centre: str = "+316540881000"

    def put(self, store, status, octets, index=None):
        """Stores one PDU; its index."""
        taken = self.messages[store]
        index = index or min(set(range(1, len(taken) + 2)) - taken.keys())
        taken[index] = [status, octets]
        return index

    def receive(self, store, number, text, time, status=RECEIVED_READ, reference=1):
        for octets in pdu.parts("deliver", number, text, reference, time=time, centre=self.centre):
            self.put(store, status, octets)

    def store(self, store, number, text, status=STORED_SENT, reference=1):
        for octets in pdu.parts("submit", number, text, reference):
            self.put(store, status, octets)

    def know(self, store, name, number):
        taken = self.contacts[store]
        taken[min(set(range(1, len(taken) + 2)) - taken.keys())] = [number, name]


def load(path):
    with open(path, encoding="utf-8") as file:
        fields = json.load(file)
    for name in ("messages", "contacts"):
        if name in fields:
            fields[name] = {store: {int(index): entry for index, entry in entries.items()}
                            for store, entries in fields[name].items()}
    return State(**fields)


def save(state, path):
    with open(path, "w", encoding="utf-8") as file:
        json.dump(dataclasses.asdict(state), file, ensure_ascii=False, indent=1)
