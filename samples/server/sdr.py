"""Sensor data records (IPMI 2.0, chapter 43) as sdrcomp text, and the simulator's commands for the same sensors."""

from dataclasses import dataclass, field

BMC = 0x20  # the controller's slave address, owner of the sensors unless another is named

# The thresholds in the order of their events and of the mask of readable thresholds.
THRESHOLDS = ("lnc", "lc", "lnr", "unc", "uc", "unr")


def record_text(kind, fields):
    """One record for sdrcomp; flags that are off are left out, since off is what sdrcomp takes."""
    shown = ((name, "true" if value is True else value) for name, value in fields.items() if value is not False)
    return f"sdr type {kind}\n" + "".join(f"  {name} {value}\n" for name, value in shown) + "endsdr\n\n"


def sensor_key(owner, number, entity, sensor_type, event_type):
    return {
        "sensor_owner_id": owner,
        "channel_number": 0,
        "sensor_owner_lun": 0,
        "sensor_number": number,
        "entity_id": entity[0],
        "entity_instance": entity[1],
        "sensor_type": sensor_type,
        "event_reading_type_code": event_type,
    }


INITIALISED = {
    "init_scanning": True,
    "init_events": True,
    "init_sensor_type": True,
    "default_event_gen_on": True,
    "default_sensor_scan_on": True,
    "sensor_auto_rearm": True,
    "sensor_event_msg_ctrl": "per_state",
}


def event_mask(bits):
    """The simulator's form of an event mask: fifteen binary digits, state 14 first."""
    return "".join("1" if bit in bits else "0" for bit in range(14, -1, -1))


@dataclass
class Full:
    """A full record: an analog sensor read as (m * raw + b * 10**b_exp) * 10**r_exp."""

    number: int
    name: str
    sensor_type: int
    entity: tuple
    unit: int
    reading: float
    m: int
    b: int = 0
    b_exp: int = 0
    r_exp: int = 0
    signed: bool = False  # raw values are 2's complement
    percent: bool = False
    normal: tuple = None  # lowest and highest normal reading
    limits: dict = field(default_factory=dict)  # threshold name -> value in the sensor's unit
    hysteresis: int = 0  # raw

    def raw(self, value):
        """The byte that reads as the value nearest to `value`."""
        raw = round((value / 10**self.r_exp - self.b * 10**self.b_exp) / self.m)
        assert (-128 <= raw <= 127) if self.signed else (0 <= raw <= 255), (self.name, value, raw)
        return raw & 0xFF

    def sdr(self):
        limits = self.limits
        fields = sensor_key(BMC, self.number, self.entity, self.sensor_type, 0x01) | INITIALISED
        fields |= {
            "init_thresholds": bool(limits),
            "init_hysteresis": bool(limits),
            "sensor_hysteresis": "settable" if limits else "no",
            "sensor_threshold_access": "settable" if limits else "no",
            "analog_data_format": "2s_complement" if self.signed else "unsigned",
            "base_unit": self.unit,
            "percentage": self.percent,
            "m": self.m,
            "b": self.b,
            "b_exp": self.b_exp,
            "r_exp": self.r_exp,
            "tolerance": 1,
            "accuracy": 200,  # 2 %
            "sensor_direction": "input",
            "nominal_specified": True,
            "nominal_reading": self.raw(self.reading),
            "sensor_maximum": 0x7F if self.signed else 0xFF,
            "sensor_minimum": 0x80 if self.signed else 0x00,
        }
        if self.normal:
            fields |= {
                "normal_min_specified": True,
                "normal_minimum": self.raw(self.normal[0]),
                "normal_max_specified": True,
                "normal_maximum": self.raw(self.normal[1]),
            }
        for name in limits:
            going = name + ("gl" if name[0] == "l" else "gh")
            fields |= {
                f"assert_{going}": True,
                f"deassert_{going}": True,
                f"return_{name}": True,
                f"{name}_thrsh_readable": True,
                f"{name}_thrsh_settable": True,
                f"{name}_thresh": self.raw(limits[name]),
            }
        if limits:
            fields |= {"positive_hysteresis": self.hysteresis, "negative_hysteresis": self.hysteresis}
        return record_text(1, fields | {"id_string": f'"{self.name}"'})

    def commands(self):
        sensor = f"{BMC:#x} 0 {self.number:#x}"
        yield f"sensor_add {sensor} {self.sensor_type:#x} 0x01"
        yield f"sensor_set_value {sensor} {self.raw(self.reading):#04x} 0"
        if self.limits:
            yield from self.threshold_commands(sensor)

    def threshold_commands(self, sensor):
        limits = self.limits
        # The simulator wants them from upper non-recoverable down, the upper three before the lower three.
        descending = THRESHOLDS[::-1]
        enabled = "".join("1" if name in limits else "0" for name in descending)
        values = " ".join(f"{self.raw(limits[name]) if name in limits else 0:#04x}" for name in descending)
        yield f"sensor_set_threshold {sensor} settable {enabled} {values}"
        yield f"sensor_set_hysteresis {sensor} settable {self.hysteresis} {self.hysteresis}"
        # Event 2i is threshold i going low, event 2i + 1 the same going high.
        events = event_mask({2 * i + (name[0] == "u") for i, name in enumerate(THRESHOLDS) if name in limits})
        yield f"sensor_set_event_support {sensor} enable scanning per-state {' '.join([events] * 4)}"


@dataclass
class Compact:
    """A compact record: a discrete sensor; `states` can be reported, `on` are those reported at the start."""

    number: int
    name: str
    sensor_type: int
    entity: tuple
    states: tuple
    on: tuple = ()
    event_type: int = 0x6F  # sensor-specific

    def sdr(self):
        fields = sensor_key(BMC, self.number, self.entity, self.sensor_type, self.event_type) | INITIALISED
        for state in self.states:
            fields |= {f"assert_event{state}": True, f"deassert_event{state}": True, f"event{state}_state_ret": True}
        return record_text(2, fields | {"share_count": 1, "id_string": f'"{self.name}"'})

    def commands(self):
        sensor = f"{BMC:#x} 0 {self.number:#x}"
        yield f"sensor_add {sensor} {self.sensor_type:#x} {self.event_type:#x}"
        yield f"sensor_set_event_support {sensor} enable scanning per-state {' '.join([event_mask(self.states)] * 4)}"
        for state in self.on:
            yield f"sensor_set_bit {sensor} {state} 1 0"


@dataclass
class EventOnly:
    """An event-only record: a source of events that cannot be read, here software and not the controller."""

    number: int
    name: str
    sensor_type: int
    entity: tuple
    owner: int
    event_type: int = 0x6F

    def sdr(self):
        fields = sensor_key(self.owner, self.number, self.entity, self.sensor_type, self.event_type)
        return record_text(3, fields | {"share_count": 1, "id_string": f'"{self.name}"'})


@dataclass
class FruLocator:
    """A FRU device locator record of a logical FRU device, which the controller reads for its callers."""

    fru_id: int
    name: str
    entity: tuple

    def sdr(self):
        fields = {
            "device_access_address": BMC,
            "fru_device_address": self.fru_id,
            "logical_fru": True,
            "device_type": 0x10,  # a logical FRU device
            "device_type_modifier": 0x00,
            "fru_entity_id": self.entity[0],
            "fru_entity_instance": self.entity[1],
            "id_string": f'"{self.name}"',
        }
        return record_text(17, fields)


@dataclass
class ControllerLocator:
    """The management controller's own locator record."""

    name: str
    entity: tuple

    def sdr(self):
        fields = {
            "device_slave_address": BMC,
            "device_channel_number": 0,
            "static_controller": True,
            "chassis": True,
            "fru_inventory": True,
            "sel": True,
            "sdr": True,
            "sensor": True,
            "entity_id": self.entity[0],
            "entity_instance": self.entity[1],
            "id_string": f'"{self.name}"',
        }
        return record_text(18, fields)
