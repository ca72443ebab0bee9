"""Keyboards, pointing devices and buttons, as /proc/bus/input/devices has them of a 64-bit kernel."""

KEYBOARD_KEYS = "402000000 3803078f800d001 feffffdfffefffff fffffffffffffffe"
USB_KEYBOARD_KEYS = "1000000000007 ff9f207ac14057ff febeffdfffefffff fffffffffffffffe"


def device(bus, vendor, product, name, physical, folder, handlers, **bits):
    text = f"I: Bus={bus:04x} Vendor={vendor:04x} Product={product:04x} Version=0100\n"
    text += f'N: Name="{name}"\nP: Phys={physical}\nS: Sysfs=/devices/{folder}\nU: Uniq=\nH: Handlers={handlers} \n'
    return text + "".join(f"B: {kind}={words}\n" for kind, words in {"PROP": "0", **bits}.items()) + "\n"


def power_button(number=0):
    return device(0x19, 0, 1, "Power Button", "PNP0C0C/button/input0", f"LNXSYSTM:00/LNXPWRBN:00/input/input{number}",
                  f"kbd event{number}", EV="3", KEY="10000000000000 0")


def ps2_keyboard(number):
    return device(0x11, 1, 1, "AT Translated Set 2 keyboard", "isa0060/serio0/input0",
                  f"platform/i8042/serio0/input/input{number}", f"sysrq kbd leds event{number}", EV="120013",
                  KEY=KEYBOARD_KEYS, MSC="10", LED="7")


def install(machine, devices):
    machine.file("/proc/bus/input/devices", "".join(devices))


def repeat(machine, number, delay, period):
    machine.answer("keyboardRepeat", {"delay": delay, "period": period}, f"/dev/input/event{number}")
