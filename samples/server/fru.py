"""FRU information images as the Platform Management FRU Information Storage Definition 1.0 lays them out."""

import datetime
import struct

EPOCH = datetime.datetime(1996, 1, 1)  # manufacturing dates count the minutes since then
ENGLISH = 25
END_OF_FIELDS = b"\xc1"
BCD_PLUS = "0123456789 -."  # the sixteen codes of BCD plus as far as they are assigned


class Text:
    """A field in 8-bit ASCII."""

    type_code = 3

    def __init__(self, text):
        self.text = text

    def data(self):
        # A length of one in this type would read as the end of the fields.
        assert len(self.text) != 1, self.text
        return self.text.encode("latin-1")


class SixBit(Text):
    """A field in 6-bit ASCII: codes 20h to 5Fh, four characters in three bytes, the first in the lowest bits."""

    type_code = 2

    def data(self):
        bits = sum((ord(c) - 0x20) << (6 * i) for i, c in enumerate(self.text))
        return bits.to_bytes((6 * len(self.text) + 7) // 8, "little")


class Bcd(Text):
    """A field in BCD plus: two characters in a byte, the first in the upper half."""

    type_code = 1

    def data(self):
        padded = self.text + " " * (len(self.text) % 2)
        codes = [BCD_PLUS.index(c) for c in padded]
        return bytes(high << 4 | low for high, low in zip(codes[::2], codes[1::2]))


class Binary:
    """A field of plain bytes."""

    type_code = 0

    def __init__(self, data):
        self._data = data

    def data(self):
        return self._data


def field(value):
    """The field with its type/length byte; a plain string stands for 8-bit ASCII."""
    item = Text(value) if isinstance(value, str) else value
    data = item.data()
    assert len(data) < 64, value
    return bytes([item.type_code << 6 | len(data)]) + data


def checksum(data):
    """The byte that brings the sum of all bytes to zero."""
    return bytes([-sum(data) & 0xFF])


def area(head, fields):
    """An info area: version, length in units of eight bytes, `head`, the fields, padding and the checksum."""
    body = head + b"".join(map(field, fields)) + END_OF_FIELDS
    units = (2 + len(body) + 1 + 7) // 8
    data = (bytes([1, units]) + body).ljust(8 * units - 1, b"\0")
    return data + checksum(data)


def internal_use(data):
    return (b"\1" + data).ljust((1 + len(data) + 7) // 8 * 8, b"\0")


def chassis(kind, part, serial, *custom):
    return area(bytes([kind]), (part, serial, *custom))


def board(made, maker, product, serial, part, file_id, *custom):
    minutes = int((made - EPOCH).total_seconds()) // 60
    head = bytes([ENGLISH]) + minutes.to_bytes(3, "little")
    return area(head, (maker, product, serial, part, file_id, *custom))


def product(maker, name, part, version, serial, asset_tag, file_id, *custom):
    return area(bytes([ENGLISH]), (maker, name, part, version, serial, asset_tag, file_id, *custom))


def multi_records(*records):
    """The multi-record area of (type, data) pairs."""
    out = b""
    for i, (kind, data) in enumerate(records):
        last = 0x80 if i + 1 == len(records) else 0
        head = bytes([kind, last | 2, len(data)]) + checksum(data)
        out += head + checksum(head) + data
    return out


def power_supply_information(watts, peak_va, low_volts, high_volts):
    """The multi-record of type 00h; voltages in volts, stored in units of 10 mV."""
    return 0x00, struct.pack(
        "<HHBBHHHHBBBBHBHB",
        watts,
        peak_va,
        30, 5,  # inrush current in amperes, and how long it lasts in milliseconds
        low_volts * 100, high_volts * 100,
        0, 0,  # no second range of input voltage
        47, 63,  # input frequency in hertz
        12,  # A/C dropout tolerance in milliseconds
        0x0F,  # hot-swap support, autoswitch, power factor correction, predictive failure signal
        12 << 12 | watts,  # the peak may last 12 seconds
        0, 0,  # no combined wattage
        20,  # predictive failure below this many revolutions per second
    )


def image(size, internal=b"", chassis=b"", board=b"", product=b"", multi=b""):
    """The whole image of `size` bytes: the common header, the areas in this order, then FFh as in an erased EEPROM."""
    offsets, body = [], b""
    for data in (internal, chassis, board, product, multi):
        offsets.append((8 + len(body)) // 8 if data else 0)
        body += data
    header = bytes([1, *offsets, 0])
    whole = header + checksum(header) + body
    assert len(whole) <= size, f"{len(whole)} bytes do not fit into {size}"
    return whole.ljust(size, b"\xff")
