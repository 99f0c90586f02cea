"""Made rides in any number, for measures and tests of batches: an hour of a ride over hills as a device writes it, a record
a second, without power and cadence. Standard library alone."""

import math
import os
import pathlib
import struct

HOUR = 3600  # records


def crc(data):
    table = (0x0000, 0xCC01, 0xD801, 0x1400, 0xF001, 0x3C00, 0x2800, 0xE401,
             0xA001, 0x6C00, 0x7800, 0xB401, 0x5000, 0x9C01, 0x8801, 0x4400)
    value = 0
    for byte in data:
        for nibble in (byte & 15, byte >> 4):
            value = (value >> 4) & 0xFFF ^ table[value & 15] ^ table[nibble]
    return value


def definition(local, number, fields):
    return struct.pack("<BBBHB", 0x40 | local, 0, 0, number, len(fields)) + b"".join(bytes(f) for f in fields)


def ride(seed=0, records=HOUR, start=1_000_000_000):
    """The bytes of a FIT file."""
    data = definition(0, 0, [(0, 1, 0)]) + struct.pack("<BB", 0, 4)
    data += definition(1, 20, [(253, 4, 0x86), (0, 4, 0x85), (1, 4, 0x85), (2, 2, 0x84), (5, 4, 0x86), (6, 2, 0x84)])
    metres, altitude = 0.0, 400.0
    for second in range(records):
        slope = 0.05 * math.sin((metres + 700 * seed) / 900)
        speed = 7.5 - 60 * slope
        metres += speed
        altitude += slope * speed
        north = 46e0 + metres / 111_200
        data += struct.pack("<BIiiHIH", 1, start + second, int(north * 2**31 / 180), int(8 * 2**31 / 180),
                            int((altitude + 500) * 5), int(metres * 100), int(speed * 1000))
    data += definition(2, 18, [(253, 4, 0x86), (2, 4, 0x86), (5, 1, 0), (7, 4, 0x86), (9, 4, 0x86)])
    data += struct.pack("<BIIBII", 2, start + records - 1, start, 2, records * 1000, int(metres * 100))
    header = struct.pack("<BBHI4s", 14, 0x20, 2132, len(data), b".FIT")
    header += struct.pack("<H", crc(header))
    return header + data + struct.pack("<H", crc(header + data))


def fill(folder, count, different=20, records=HOUR):
    """Puts `count` rides into a folder; there are so many different ones, and the others are links to them."""
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    paths = [folder / f"ride-{number:06}.fit" for number in range(count)]
    for number, path in enumerate(paths):
        if number < different:
            path.write_bytes(ride(number, records))
        else:
            os.link(paths[number % different], path)
    return paths
