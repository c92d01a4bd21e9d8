"""The server that the samples come from: an invented two-socket rack server and all that its controller knows."""

from datetime import datetime

import fru
from fru import Bcd, Binary, SixBit
from sdr import Compact, ControllerLocator, EventOnly, Full, FruLocator

# Entity IDs (IPMI 2.0, table 43-13).
PROCESSOR, CONTROLLER, SYSTEM_BOARD, POWER_SUPPLY, FRONT_PANEL = 3, 6, 7, 10, 12
POWER_UNIT, CHASSIS, DISK_BAY, FAN, COOLING_UNIT, MEMORY, BATTERY = 19, 23, 26, 29, 30, 32, 40

# Units (IPMI 2.0, table 43-15).
UNSPECIFIED, DEGREES_C, VOLTS, WATTS, RPM = 0, 1, 4, 6, 18

# Sensor types (IPMI 2.0, table 42-3).
TEMPERATURE, VOLTAGE, CURRENT, FAN_SPEED, INTRUSION = 0x01, 0x02, 0x03, 0x04, 0x05
PROCESSOR_STATE, POWER_SUPPLY_STATE, POWER_UNIT_STATE, OTHER_UNITS = 0x07, 0x08, 0x09, 0x0B
MEMORY_STATE, DRIVE_SLOT, EVENT_LOGGING, BUTTON = 0x0C, 0x0D, 0x10, 0x14
ACPI_STATE, WATCHDOG, BATTERY_STATE = 0x22, 0x23, 0x29

# Event/reading types (IPMI 2.0, table 42-2).
LIMIT_EXCEEDED, REDUNDANCY = 0x05, 0x0B

BIOS = 0x01  # software ID of the BIOS, as the owner of a sensor


def limits(lnr, lc, lnc, unc, uc, unr):
    return {"lnr": lnr, "lc": lc, "lnc": lnc, "unc": unc, "uc": uc, "unr": unr}


def temperature(number, name, entity, reading, unc, uc, unr):
    """One degree per count; the lower thresholds are the same everywhere."""
    return Full(number, name, TEMPERATURE, entity, DEGREES_C, reading, m=1, normal=(10, unc - 5),
                limits=limits(0, 3, 5, unc, uc, unr), hysteresis=2)


def voltage(number, name, reading, m, b=0, r_exp=-3, entity=(SYSTEM_BOARD, 1)):
    """Thresholds at 5, 8 and 10 % around the reading; on a negative rail the lowest is 10 % more than the reading."""
    around = sorted(reading * (1 + percent / 100) for percent in (-10, -8, -5, 5, 8, 10))
    return Full(number, name, VOLTAGE, entity, VOLTS, reading, m=m, b=b, r_exp=r_exp, normal=(around[2], around[3]),
                limits=limits(*around), hysteresis=1)


def fan(number, instance):
    """59 revolutions per minute and count; only too slow is a fault."""
    return Full(number, f"Fan {instance} Speed", FAN_SPEED, (FAN, instance), RPM, 5900, m=59, normal=(2360, 11800),
                limits={"lnc": 1770, "lc": 1180}, hysteresis=2)


def input_power(number, instance):
    """3.92 W per count: the multiplier needs all ten bits."""
    return Full(number, f"PS{instance} Input Power", OTHER_UNITS, (POWER_SUPPLY, instance), WATTS, 215, m=392, r_exp=-2,
                normal=(0, 784), limits={"unc": 850, "uc": 900}, hysteresis=3)


def load(number, instance):
    return Full(number, f"PS{instance} Load %", CURRENT, (POWER_SUPPLY, instance), UNSPECIFIED, 27, m=1, percent=True,
                normal=(0, 90), limits={"unc": 95, "uc": 100}, hysteresis=2)


def thermal_margin(number, instance, reading):
    """Degrees below the point where the processor slows down: negative, without thresholds."""
    return Full(number, f"P{instance} Therm Margin", TEMPERATURE, (PROCESSOR, instance), DEGREES_C, reading,
                m=1, signed=True)


FULL = [
    temperature(0x01, "P1 Temp", (PROCESSOR, 1), 46, 85, 92, 98),
    temperature(0x02, "P2 Temp", (PROCESSOR, 2), 44, 85, 92, 98),
    thermal_margin(0x03, 1, -52),
    thermal_margin(0x04, 2, -54),
    temperature(0x05, "Main Board Temp", (SYSTEM_BOARD, 1), 33, 60, 70, 80),
    temperature(0x06, "Inlet Temp", (FRONT_PANEL, 1), 23, 38, 42, 47),
    voltage(0x10, "MB +12V", 12.0, m=63),
    voltage(0x11, "MB +5V", 5.0, m=26),
    voltage(0x12, "MB +3.3V", 3.3, m=17),
    voltage(0x13, "MB -12V", -12.0, m=1, b=-200, r_exp=-1),
    voltage(0x14, "RTC Battery", 3.0, m=15, entity=(BATTERY, 1)),
    fan(0x20, 1),
    fan(0x21, 2),
    fan(0x22, 3),
    fan(0x23, 4),
    input_power(0x30, 1),
    input_power(0x31, 2),
    load(0x32, 1),
    load(0x33, 2),
]


def processor_state(number, instance):
    internal_error, thermal_trip, present, throttled = 0, 1, 7, 10
    return Compact(number, f"P{instance} Status", PROCESSOR_STATE, (PROCESSOR, instance),
                   (internal_error, thermal_trip, present, throttled), on=(present,))


def memory_state(number, slot, instance):
    correctable, uncorrectable, log_limit, present = 0, 1, 5, 6
    return Compact(number, f"DIMM {slot}", MEMORY_STATE, (MEMORY, instance),
                   (correctable, uncorrectable, log_limit, present), on=(present,))


def power_supply_state(number, instance):
    present, failure, predictive_failure, input_lost = 0, 1, 2, 3
    return Compact(number, f"PS{instance} Status", POWER_SUPPLY_STATE, (POWER_SUPPLY, instance),
                   (present, failure, predictive_failure, input_lost), on=(present,))


def redundancy(number, name, sensor_type, entity):
    full, lost = 0, 1
    return Compact(number, name, sensor_type, entity, (full, lost), on=(full,), event_type=REDUNDANCY)


def disk_bay(number, instance, used):
    present, fault, predictive_failure = 0, 1, 2
    return Compact(number, f"Disk Bay {instance}", DRIVE_SLOT, (DISK_BAY, instance),
                   (present, fault, predictive_failure), on=(present,) if used else ())


# The numbers of the states are those of IPMI 2.0, table 42-3.
COMPACT = [
    processor_state(0x40, 1),
    processor_state(0x41, 2),
    memory_state(0x48, "A1", 1),
    memory_state(0x49, "B1", 2),
    memory_state(0x4A, "C1", 3),
    memory_state(0x4B, "D1", 4),
    power_supply_state(0x50, 1),
    power_supply_state(0x51, 2),
    redundancy(0x52, "PS Redundancy", POWER_UNIT_STATE, (POWER_UNIT, 1)),
    redundancy(0x53, "Fan Redundancy", FAN_SPEED, (COOLING_UNIT, 1)),
    Compact(0x58, "Intrusion", INTRUSION, (CHASSIS, 1), (0,)),  # the chassis is open
    Compact(0x59, "Buttons", BUTTON, (FRONT_PANEL, 1), (0, 2)),  # power, reset
    disk_bay(0x60, 1, used=True),
    disk_bay(0x61, 2, used=True),
    disk_bay(0x62, 3, used=False),
    disk_bay(0x63, 4, used=False),
    Compact(0x70, "Watchdog", WATCHDOG, (CONTROLLER, 1), (0, 1, 2, 3, 8)),  # expired, three power actions, interrupt
    Compact(0x71, "Event Log", EVENT_LOGGING, (CONTROLLER, 1), (2, 4, 5)),  # cleared, full, almost full
    Compact(0x72, "ACPI State", ACPI_STATE, (SYSTEM_BOARD, 1), (0, 5), on=(0,)),  # S0, S5
    Compact(0x73, "VR Hot", TEMPERATURE, (SYSTEM_BOARD, 1), (0, 1), on=(0,), event_type=LIMIT_EXCEEDED),
    Compact(0x74, "Battery Status", BATTERY_STATE, (BATTERY, 1), (0, 1, 2), on=(2,)),  # low, failed, present
]

# The BIOS counts the memory errors and logs them itself.
EVENT_ONLY = [EventOnly(0x01, "BIOS Memory ECC", MEMORY_STATE, (MEMORY, 1), owner=BIOS)]

CONTROLLERS = [ControllerLocator("Example BMC", (CONTROLLER, 1))]

MAKER = "Example Systems"
MADE = datetime(2026, 3, 2, 8, 30)


def main_board():
    return fru.image(
        1024,
        internal=fru.internal_use(bytes(range(0x10, 0x1F))),
        chassis=fru.chassis(0x17, "ES-CH2U-800", "CH26A00117", "8 x 2.5in bays"),  # 17h: rack mount chassis
        board=fru.board(MADE, MAKER, "ES-MB2S Main Board", "MB26090042", SixBit("ESMB2S-R3.10"), Bcd("2026-03.02"),
                        "Assembly line 4", Binary(bytes.fromhex("00 1b 21 a0 42 01"))),
        product=fru.product(MAKER, "ES-2200 Rack Server", "ES2200-A1", "R3.1", "SN2200-260042", "RACK 7 UNIT 12",
                            Bcd("2026-03.02")),
    )


def front_panel():
    return fru.image(
        256,
        chassis=fru.chassis(0x17, SixBit("ES-CH2U-800"), Bcd("2600117")),
        board=fru.board(MADE, MAKER, "ES-FP2 Front Panel", "FP26010313", "ESFP2-R1", Bcd("2026-03.02")),
        product=fru.product(MAKER, "ES-FP2", "ESFP2-R1", "R1.0", "FP26010313", "", ""),
    )


def power_supply(instance):
    serial = f"PS26A0051{instance}"
    return fru.image(
        256,
        board=fru.board(MADE, MAKER, "ES-PS800 Supply", serial, SixBit("ESPS800-R2"), Bcd("2026-03.02")),
        product=fru.product(MAKER, "800 W Power Supply", "ESPS800-R2", "R2.0", serial, "", ""),
        multi=fru.multi_records(fru.power_supply_information(watts=800, peak_va=920, low_volts=90, high_volts=264)),
    )


def processor(instance):
    serial = f"CP26C770{instance}"
    return fru.image(
        256,
        board=fru.board(MADE, MAKER, "ES-CPU16 Carrier", serial, "ESCPU16-R1", Bcd("2026-03.02")),
        product=fru.product(MAKER, "16-core processor 2.4 GHz", "ESCPU16", "B1.2", serial, "", "",
                            "16 cores, 32 threads"),
    )


def memory(slot, instance):
    serial = Bcd(f"2609-00814.{instance}")
    return fru.image(
        256,
        board=fru.board(MADE, MAKER, "ES-DM16 Module", serial, SixBit("ESDM16-R4"), Bcd("2026-03.02")),
        product=fru.product(MAKER, "16 GiB DDR4 RDIMM", SixBit("ESDM16-R4"), "R4.0", serial, "", "", f"Slot {slot}"),
    )


# FRU device: its locator record and its image; the locator's FRU ID is the number in the image's file name.
FRU_DEVICES = [
    (FruLocator(0, "Main Board", (SYSTEM_BOARD, 1)), main_board()),
    (FruLocator(1, "Front Panel", (FRONT_PANEL, 1)), front_panel()),
    (FruLocator(2, "Power Supply 1", (POWER_SUPPLY, 1)), power_supply(1)),
    (FruLocator(3, "Power Supply 2", (POWER_SUPPLY, 2)), power_supply(2)),
    (FruLocator(4, "Processor 1", (PROCESSOR, 1)), processor(1)),
    (FruLocator(5, "Processor 2", (PROCESSOR, 2)), processor(2)),
    (FruLocator(6, "DIMM A1", (MEMORY, 1)), memory("A1", 1)),
    (FruLocator(7, "DIMM B1", (MEMORY, 2)), memory("B1", 2)),
    (FruLocator(8, "DIMM C1", (MEMORY, 3)), memory("C1", 3)),
    (FruLocator(9, "DIMM D1", (MEMORY, 4)), memory("D1", 4)),
]
