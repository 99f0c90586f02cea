"""Writes activity files in the FIT format, byte by byte, for the tests: one session, one lap, a record a second."""

import math
import struct

START = 900000000  # s since the format's epoch
SEMICIRCLES_PER_METRE = 2**31 / 180 / 111195.0
ENUM, UINT16, SINT32, UINT32 = 0x00, 0x84, 0x85, 0x86
SIZES = {ENUM: 1, UINT16: 2, SINT32: 4, UINT32: 4}
CODES = {ENUM: "B", UINT16: "H", SINT32: "i", UINT32: "I"}


def crc(data):
    """CRC-16 with the reversed polynomial 0xA001, from 0."""
    value = 0
    for byte in data:
        value ^= byte
        for _ in range(8):
            value = (value >> 1) ^ (0xA001 if value & 1 else 0)
    return value


def definition(local, message, fields):
    header = struct.pack("<BBBHB", 0x40 | local, 0, 0, message, len(fields))
    return header + b"".join(bytes((number, SIZES[kind], kind)) for number, kind in fields)


def data(local, fields, values):
    return struct.pack("<B" + "".join(CODES[kind] for _, kind in fields), local, *values)


RECORD = ((253, UINT32), (0, SINT32), (1, SINT32), (2, UINT16), (5, UINT32), (6, UINT16))
LAP = ((253, UINT32), (2, UINT32), (7, UINT32), (8, UINT32), (9, UINT32), (25, ENUM))
SESSION = ((253, UINT32), (2, UINT32), (7, UINT32), (8, UINT32), (9, UINT32), (5, ENUM))
ACTIVITY = ((253, UINT32), (0, UINT32), (1, UINT16))


def record(second):
    """A rider on a wavy road, northward, between 6 and 10 m/s."""
    distance = 8.0 * second + 20.0 * (1 - math.cos(second / 10.0))
    speed = 8.0 + 2.0 * math.sin(second / 10.0)
    altitude = 100.0 + 10.0 * math.sin(second / 60.0)
    latitude = int(35.0 / 180 * 2**31 + distance * SEMICIRCLES_PER_METRE)
    values = (START + second, latitude, 1600000000, int((altitude + 500) * 5), int(distance * 100), int(speed * 1000))
    return data(1, RECORD, values)


def ride(seconds, more=b""):
    """The bytes of an activity with a record for each second; more messages stand behind its own."""
    end = START + seconds - 1
    summary = (end, START, seconds * 1000, seconds * 1000, int(8.0 * seconds * 100), 2)
    parts = [
        definition(0, 0, ((0, ENUM), (4, UINT32))), data(0, ((0, ENUM), (4, UINT32)), (4, START)),
        definition(1, 20, RECORD), *map(record, range(seconds)),
        definition(2, 19, LAP), data(2, LAP, summary),
        definition(3, 18, SESSION), data(3, SESSION, summary),
        definition(4, 34, ACTIVITY), data(4, ACTIVITY, (end, seconds * 1000, 1)),
    ]
    body = b"".join(parts) + more
    header = struct.pack("<BBHI4s", 14, 0x10, 2000, len(body), b".FIT")
    header += struct.pack("<H", crc(header))
    whole = header + body
    return whole + struct.pack("<H", crc(whole))
